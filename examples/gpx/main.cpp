// What a GPS receiver has recorded: reads it, says how long and how high, draws it, marks the highest point, and writes it back.
//
//     gpx <in.gpx> <out.gpx> <picture.svg>

#include "../common/Document.h"
#include "../common/Picture.h"
#include "Gpx.h"

#include <cmath>
#include <iomanip>
#include <iostream>

namespace {

constexpr double radians = 0.017453292519943295;

double metresBetween(gpx::Point const& one, gpx::Point const& two)
{
    double const latitude = std::sin((two.lat - one.lat) * radians / 2), longitude = std::sin((two.lon - one.lon) * radians / 2);
    double const part = latitude * latitude + std::cos(one.lat * radians) * std::cos(two.lat * radians) * longitude * longitude;
    return 2 * 6371000 * std::asin(std::sqrt(part));
}

struct Summary {
    std::size_t points = 0;
    double metres = 0, climb = 0;
    gpx::Point const* highest = nullptr;
};

Summary summaryOf(gpx::Gpx const& document)
{
    Summary summary;
    for (gpx::Track const& track : document.tracks)
        for (gpx::Segment const& segment : track.segments)
            for (std::size_t i = 0; i < segment.points.size(); ++i) {
                gpx::Point const& point = segment.points[i];
                ++summary.points;
                if (point.ele && (summary.highest == nullptr || point.ele.valueOr(0.0) > summary.highest->ele.valueOr(0.0)))
                    summary.highest = &point;
                if (i == 0)
                    continue;
                gpx::Point const& before = segment.points[i - 1];
                summary.metres += metresBetween(before, point);
                if (point.ele && before.ele)
                    summary.climb += std::max(0.0, *point.ele - *before.ele);
            }
    return summary;
}

Picture drawn(gpx::Gpx const& document)
{
    char const* const colours[] = { "#c0392b", "#2471a3", "#239b56", "#b9770e" };
    Picture picture;
    auto const placeOf = [](gpx::Point const& point) {
        return Picture::Place(point.lon * std::cos(point.lat * radians), point.lat);
    };
    std::size_t count = 0;
    for (gpx::Track const& track : document.tracks) {
        for (gpx::Segment const& segment : track.segments) {
            std::vector<Picture::Place> places;
            for (gpx::Point const& point : segment.points)
                places.push_back(placeOf(point));
            if (!places.empty())
                picture.addLine(std::move(places), colours[count % 4]);
        }
        ++count;
    }
    for (gpx::Point const& point : document.waypoints)
        picture.addDot(placeOf(point), "black", point.name.valueOr(std::string()));
    return picture;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "gpx <in.gpx> <out.gpx> <picture.svg>\n";
        return 2;
    }
    gpx::Gpx document;
    if (!readDocument(argv[1], document))
        return 1;
    Summary const summary = summaryOf(document);
    std::cout << document.tracks.size() << " tracks, " << document.routes.size() << " routes, " << document.waypoints.size()
              << " waypoints; " << summary.points << " track points, " << std::fixed << std::setprecision(1)
              << summary.metres / 1000 << " km, " << summary.climb << " m up\n";
    if (summary.highest != nullptr) {
        gpx::Point& mark = document.waypoints.append(*summary.highest);
        mark.name = "highest";
    }
    bool const isWritten = writeDocument(argv[2], document) && drawn(document).write(argv[3]);
    return isWritten ? 0 : 1;
}
