// What a GPS receiver has recorded: reads it, says how long and how high, draws it, marks the highest point, and writes it back.
//
//     gpx <in.gpx> <out.gpx> <picture.svg>

#include "../common/Document.h"
#include "../common/Picture.h"
#include "Summary.h"

#include <cmath>
#include <iomanip>
#include <iostream>

namespace {

Picture drawn(gpx::Gpx const& document)
{
    char const* const colours[] = { "#c0392b", "#2471a3", "#239b56", "#b9770e" };
    Picture picture;
    auto const placeOf = [](gpx::Point const& point) {
        return Picture::Place(point.lon * std::cos(point.lat * gpx::radians), point.lat);
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
    gpx::Summary const summary = gpx::summaryOf(document);
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
