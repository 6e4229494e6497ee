#ifndef GPX_SUMMARY_H
#define GPX_SUMMARY_H

#include "Gpx.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace gpx {

inline constexpr double radians = 0.017453292519943295;

template <class Place> // with lat and lon
double metresBetween(Place const& one, Place const& two)
{
    double const latitude = std::sin((two.lat - one.lat) * radians / 2), longitude = std::sin((two.lon - one.lon) * radians / 2);
    double const part = latitude * latitude + std::cos(one.lat * radians) * std::cos(two.lat * radians) * longitude * longitude;
    return 2 * 6371000 * std::asin(std::sqrt(part));
}

/// What the tracks of a document come to.
struct Summary {
    std::size_t points = 0;
    double metres = 0, climb = 0;
    Point const* highest = nullptr; ///< in the document; null if no point tells its height
};

inline Summary summaryOf(Gpx const& document)
{
    Summary summary;
    for (Track const& track : document.tracks)
        for (Segment const& segment : track.segments)
            for (std::size_t i = 0; i < segment.points.size(); ++i) {
                Point const& point = segment.points[i];
                ++summary.points;
                if (point.ele && (summary.highest == nullptr || point.ele.valueOr(0.0) > summary.highest->ele.valueOr(0.0)))
                    summary.highest = &point;
                if (i == 0)
                    continue;
                Point const& before = segment.points[i - 1];
                summary.metres += metresBetween(before, point);
                if (point.ele && before.ele)
                    summary.climb += std::max(0.0, *point.ele - *before.ele);
            }
    return summary;
}

} // namespace gpx

#endif
