// A piece of a map: reads it, says what is on it, draws its ways, adds a relation of all ways that lead in a circle, and writes it back.
//
//     osm <in.osm> <out.osm> <picture.svg>

#include "../common/Document.h"
#include "../common/Picture.h"
#include "Osm.h"

#include <cmath>
#include <iostream>
#include <map>
#include <unordered_map>

namespace {

using Nodes = std::unordered_map<long long, osm::Node const*>;

// Metres between the ends of a way's pieces, on a sphere that is flat for so short a piece.
double lengthOf(osm::Way const& way, Nodes const& nodes)
{
    constexpr double metresOfDegree = 111195;
    double metres = 0;
    osm::Node const* before = nullptr;
    for (osm::NodeRef const& each : way.nodes) {
        auto const found = nodes.find(each.ref);
        if (found == nodes.end())
            continue;
        if (before != nullptr)
            metres +=
                metresOfDegree * std::hypot(found->second->lat - before->lat,
                                            (found->second->lon - before->lon) * std::cos(before->lat * 0.017453292519943295));
        before = found->second;
    }
    return metres;
}

Picture drawn(osm::Osm const& map, Nodes const& nodes)
{
    std::map<std::string, std::string> const colours = { { "road_border", "#c0392b" },
                                                         { "line_thin", "#2471a3" },
                                                         { "line_thick", "#1a5276" },
                                                         { "virtual", "#d0d0d0" },
                                                         { "curbstone", "#239b56" } };
    Picture picture;
    for (osm::Way const& way : map.ways) {
        std::vector<Picture::Place> places;
        for (osm::NodeRef const& each : way.nodes)
            if (auto const found = nodes.find(each.ref); found != nodes.end())
                places.emplace_back(found->second->lon * std::cos(found->second->lat * 0.017453292519943295), found->second->lat);
        auto const colour = colours.find(way.tag("type"));
        picture.addLine(std::move(places), colour == colours.end() ? "#707070" : colour->second, 1);
    }
    return picture;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "osm <in.osm> <out.osm> <picture.svg>\n";
        return 2;
    }
    osm::Osm map;
    if (!readDocument(argv[1], map))
        return 1;
    Nodes nodes;
    for (osm::Node const& node : map.nodes)
        nodes[node.id] = &node;
    double metres = 0;
    osm::Relation circles;
    circles.id = -1; // new objects have negative numbers
    for (osm::Way const& way : map.ways) {
        metres += lengthOf(way, nodes);
        if (way.nodes.size() < 3 || way.nodes[0] != way.nodes[way.nodes.size() - 1])
            continue;
        osm::Member& member = circles.members.append();
        member.kind = osm::Kind::way;
        member.ref = way.id;
    }
    std::cout << map.nodes.size() << " nodes, " << map.ways.size() << " ways of " << std::lround(metres) << " m, "
              << map.relations.size() << " relations; " << circles.members.size() << " ways lead in a circle\n";
    Picture const picture = drawn(map, nodes);
    if (!circles.members.empty()) {
        osm::Tag& tag = circles.tags.append();
        tag.key = "type";
        tag.value = "circles";
        map.relations.append(std::move(circles));
    }
    return writeDocument(argv[2], map) && picture.write(argv[3]) ? 0 : 1;
}
