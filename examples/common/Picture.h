#ifndef COMMON_PICTURE_H
#define COMMON_PICTURE_H

#include <algorithm>
#include <fstream>
#include <limits>
#include <locale>
#include <string>
#include <utility>
#include <vector>

/// Lines and dots in a plane, drawn as an SVG of 800 points in width or height.
class Picture {
public:
    using Place = std::pair<double, double>; ///< x to the right, y upwards

    void addLine(std::vector<Place> places, std::string const& colour, double width = 1.5)
    {
        m_lines.push_back({ std::move(places), colour, width });
    }
    void addDot(Place place, std::string const& colour, std::string const& label = {})
    {
        m_dots.push_back({ place, colour, label });
    }

    /// False if the file could not be written.
    bool write(std::string const& path) const
    {
        Place least = { std::numeric_limits<double>::max(), std::numeric_limits<double>::max() };
        Place most = { std::numeric_limits<double>::lowest(), std::numeric_limits<double>::lowest() };
        auto const include = [&](Place const& place) {
            least = { std::min(least.first, place.first), std::min(least.second, place.second) };
            most = { std::max(most.first, place.first), std::max(most.second, place.second) };
        };
        for (Line const& line : m_lines)
            std::for_each(line.places.begin(), line.places.end(), include);
        for (Dot const& dot : m_dots)
            include(dot.place);
        if (m_lines.empty() && m_dots.empty())
            least = most = { 0, 0 };
        double const span = std::max({ most.first - least.first, most.second - least.second, 1e-9 });
        double const scale = 760 / span;
        auto const x = [&](Place const& place) { return 20 + (place.first - least.first) * scale; };
        auto const y = [&](Place const& place) { return 20 + (most.second - place.second) * scale; };

        std::ofstream file(path);
        file.imbue(std::locale::classic());
        double const width = 40 + (most.first - least.first) * scale, height = 40 + (most.second - least.second) * scale;
        file << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << width << "\" height=\"" << height << "\" viewBox=\"0 0 "
             << width << ' ' << height << "\">\n<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
        for (Line const& line : m_lines) {
            file << "<polyline fill=\"none\" stroke=\"" << line.colour << "\" stroke-width=\"" << line.width << "\" points=\"";
            for (Place const& place : line.places)
                file << x(place) << ',' << y(place) << ' ';
            file << "\"/>\n";
        }
        for (Dot const& dot : m_dots) {
            file << "<circle r=\"3\" fill=\"" << dot.colour << "\" cx=\"" << x(dot.place) << "\" cy=\"" << y(dot.place)
                 << "\"/>\n";
            if (!dot.label.empty())
                file << "<text font-size=\"11\" font-family=\"sans-serif\" x=\"" << x(dot.place) + 5 << "\" y=\""
                     << y(dot.place) - 5 << "\">" << escaped(dot.label) << "</text>\n";
        }
        file << "</svg>\n";
        return file.flush().good();
    }

private:
    struct Line {
        std::vector<Place> places;
        std::string colour;
        double width;
    };
    struct Dot {
        Place place;
        std::string colour;
        std::string label;
    };

    static std::string escaped(std::string const& text)
    {
        std::string result;
        for (char const c : text)
            result += c == '<' ? "&lt;" : c == '&' ? "&amp;" : std::string(1, c);
        return result;
    }

    std::vector<Line> m_lines;
    std::vector<Dot> m_dots;
};

#endif
