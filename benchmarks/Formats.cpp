// What the examples' reading costs beside pugixml's: a document of GPX, OSM or URDF is read from its file and summed up.
//
//     nyXmlFormats [rounds] <document>...
//
// Prints our processor time as a ratio to the peer's, medians of interleaved rounds. Ours takes all that the model knows into typed
// members. The peer does the same, into plain structs with the same members; and once more it makes its tree alone and takes from it what
// the sum asks for. All must come to the same before anything is timed.

#include "../examples/gpx/Summary.h"
#include "../examples/osm/Osm.h"
#include "../examples/urdf/Urdf.h"
#include "FormatsPeer.h"

#include <nyXml/platform/NyPrint.h>
#include <nyXmlKit/standard/NyXmlStandardReader.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include <pugixml.hpp>

namespace {

/// Two counts and a quantity, by which a document is known again.
struct Sum {
    std::size_t first = 0, second = 0;
    double quantity = 0;
    bool operator==(Sum const& other) const
    {
        return first == other.first && second == other.second && std::abs(quantity - other.quantity) <= 1e-9 * std::abs(quantity);
    }
};

double numberOf(char const* text)
{
    double number = 0;
    std::from_chars(text, text + std::strlen(text), number);
    return number;
}

pugi::xml_document parsed(std::string const& path)
{
    pugi::xml_document document;
    document.load_file(path.c_str(), pugi::parse_minimal | pugi::parse_escapes | pugi::parse_cdata);
    return document;
}

/// As the examples read. Whether all of it came is the sums' to say.
template <class Root>
Root readAs(std::string const& path)
{
    std::ifstream stream(path, std::ios::binary);
    NyXmlStandardReader reader(path, stream);
    Root root;
    reader.readXml();
    root.read(reader);
    return root;
}

/// What the peer fills with the same members.
template <class Root>
Root filled(std::string const& path, char const* name)
{
    pugi::xml_document const document = parsed(path);
    Root root;
    peer::take(root, document.child(name));
    return root;
}

// --- tracks: points, tracks, metres ------------------------------------------------------------------------------------------------

Sum ourTracks(std::string const& path)
{
    auto const document = readAs<gpx::Gpx>(path);
    gpx::Summary const summary = gpx::summaryOf(document);
    return { summary.points, document.tracks.size(), summary.metres };
}

Sum theirTypedTracks(std::string const& path)
{
    auto const document = filled<peer::Gpx>(path, "gpx");
    Sum sum{ 0, document.tracks.size(), 0 };
    for (peer::Track const& track : document.tracks)
        for (peer::Segment const& segment : track.segments)
            for (std::size_t i = 0; i < segment.points.size(); ++i, ++sum.first)
                if (i != 0)
                    sum.quantity += gpx::metresBetween(segment.points[i - 1], segment.points[i]);
    return sum;
}

Sum theirTracks(std::string const& path)
{
    pugi::xml_document const document = parsed(path);
    Sum sum;
    for (pugi::xml_node track : document.child("gpx").children("trk")) {
        ++sum.second;
        for (pugi::xml_node segment : track.children("trkseg")) {
            double latitude = 0, longitude = 0;
            bool isFirst = true;
            for (pugi::xml_node point : segment.children("trkpt")) {
                double const lat = numberOf(point.attribute("lat").value()), lon = numberOf(point.attribute("lon").value());
                ++sum.first;
                if (!isFirst) {
                    double const half = std::sin((lat - latitude) * gpx::radians / 2);
                    double const across = std::sin((lon - longitude) * gpx::radians / 2);
                    double const part =
                        half * half + std::cos(latitude * gpx::radians) * std::cos(lat * gpx::radians) * across * across;
                    sum.quantity += 2 * 6371000 * std::asin(std::sqrt(part));
                }
                isFirst = false;
                latitude = lat;
                longitude = lon;
            }
        }
    }
    return sum;
}

// --- maps: nodes, references of ways, all latitudes and longitudes -----------------------------------------------------------------

Sum ourMap(std::string const& path)
{
    auto const map = readAs<osm::Osm>(path);
    Sum sum;
    sum.first = map.nodes.size();
    for (osm::Way const& way : map.ways)
        sum.second += way.nodes.size();
    for (osm::Node const& node : map.nodes)
        sum.quantity += node.lat + node.lon;
    return sum;
}

Sum theirTypedMap(std::string const& path)
{
    auto const map = filled<peer::Osm>(path, "osm");
    Sum sum{ map.nodes.size(), 0, 0 };
    for (peer::Way const& way : map.ways)
        sum.second += way.nodes.size();
    for (peer::Node const& node : map.nodes)
        sum.quantity += node.lat + node.lon;
    return sum;
}

Sum theirMap(std::string const& path)
{
    pugi::xml_document const document = parsed(path);
    pugi::xml_node const map = document.child("osm");
    Sum sum;
    for (pugi::xml_node node : map.children("node")) {
        ++sum.first;
        sum.quantity += numberOf(node.attribute("lat").value()) + numberOf(node.attribute("lon").value());
    }
    for (pugi::xml_node way : map.children("way"))
        for ([[maybe_unused]] pugi::xml_node reference : way.children("nd"))
            ++sum.second;
    return sum;
}

// --- robots: links, joints, mass ---------------------------------------------------------------------------------------------------

Sum ourRobot(std::string const& path)
{
    auto const robot = readAs<urdf::Robot>(path);
    Sum sum = { robot.links.size(), robot.joints.size(), 0 };
    for (urdf::Link const& link : robot.links)
        if (link.inertial && link.inertial->mass)
            sum.quantity += link.inertial->mass->value;
    return sum;
}

Sum theirTypedRobot(std::string const& path)
{
    auto const robot = filled<peer::Robot>(path, "robot");
    Sum sum{ robot.links.size(), robot.joints.size(), 0 };
    for (peer::RobotLink const& link : robot.links)
        if (link.inertial && link.inertial->mass)
            sum.quantity += *link.inertial->mass;
    return sum;
}

Sum theirRobot(std::string const& path)
{
    pugi::xml_document const document = parsed(path);
    pugi::xml_node const robot = document.child("robot");
    Sum sum;
    for (pugi::xml_node link : robot.children("link")) {
        ++sum.first;
        sum.quantity += numberOf(link.child("inertial").child("mass").attribute("value").value());
    }
    for ([[maybe_unused]] pugi::xml_node joint : robot.children("joint"))
        ++sum.second;
    return sum;
}

// --- the comparison ----------------------------------------------------------------------------------------------------------------

using Reading = Sum (*)(std::string const& path);

double seconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double secondsOf(Reading reading, std::string const& path)
{
    double const start = seconds();
    reading(path);
    return seconds() - start;
}

double median(std::vector<double>& values)
{
    auto const middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

bool compare(std::string const& path, int rounds)
{
    std::string const ending = path.substr(path.rfind('.') + 1);
    bool const isTrack = ending == "gpx", isMap = ending == "osm";
    Reading const ours = isTrack ? ourTracks : isMap ? ourMap : ourRobot;
    Reading const theirs = isTrack ? theirTracks : isMap ? theirMap : theirRobot;
    Reading const theirsTyped = isTrack ? theirTypedTracks : isMap ? theirTypedMap : theirTypedRobot;
    Sum const sum = ours(path);
    if (sum.first == 0 || !(sum == theirs(path)) || !(sum == theirsTyped(path))) {
        std::fprintf(stderr, "%s: the two do not agree\n", path.c_str());
        return false;
    }
    std::vector<double> our, their, theirTyped;
    for (int round = 0; round < rounds; ++round) {
        our.push_back(secondsOf(ours, path));
        theirTyped.push_back(secondsOf(theirsTyped, path));
        their.push_back(secondsOf(theirs, path));
    }
    std::printf(
        "%-5s ours %.2f ms; pugixml into the same members %.2f ms, ratio %.2f; its tree and the sum alone %.2f ms, ratio %.2f\n",
        ending.c_str(), 1e3 * median(our), 1e3 * median(theirTyped), median(our) / median(theirTyped), 1e3 * median(their),
        median(our) / median(their));
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    int const rounds = argc > 1 ? std::atoi(argv[1]) : 0;
    Ny::Print::setHandler([](int, std::string const&, std::string const&) {}); // what the models do not know
    bool areSame = argc > 1;
    for (int i = rounds > 0 ? 2 : 1; i < argc; ++i)
        areSame = compare(argv[i], rounds > 0 ? rounds : 51) && areSame;
    return areSame ? 0 : 1;
}
