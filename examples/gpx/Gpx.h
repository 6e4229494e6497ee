#ifndef GPX_GPX_H
#define GPX_GPX_H
// The core of GPX 1.1: what a GPS receiver has recorded, members in the order that the format asks for. Reads GPX 1.0 as well.
#include <nyXmlKit/model/NyXmlDateTime.h>
#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlRepeated.h>
namespace gpx {
using Text = NyXmlOptional<std::string>;
template <class Self>
struct Part : NyXmlModel<Self> {
    static constexpr auto xmlOrder = NyXmlOrder::asRegistered;
};
struct Link : Part<Link> {
    static constexpr auto xmlName = "http://www.topografix.com/GPX/1/1#link";
    void registerComponents() override { attributes("href", href), elements("text", text, "type", type); }
    Text href, text, type;
};
struct Point : Part<Point> { // wpt, rtept or trkpt
    static constexpr auto xmlName = "http://www.topografix.com/GPX/1/1#wpt";
    void registerComponents() override
    {
        attributes("lat", lat, "lon", lon), elements("ele", ele, "time", time, "magvar", magvar, "geoidheight", geoidheight);
        elements("name", name, "cmt", cmt, "desc", desc, "src", src, "link", links, "sym", sym, "type", type, "fix", fix);
        elements("sat", sat, "hdop", hdop, "vdop", vdop, "pdop", pdop, "ageofdgpsdata", age, "dgpsid", station);
    }
    NyXmlDecimal lat, lon; // degrees
    NyXmlOptional<NyXmlDateTime> time;
    NyXmlOptional<NyXmlDecimal> ele, magvar, geoidheight, hdop, vdop, pdop, age; // ele and geoidheight in metres
    Text name, cmt, desc, src, sym, type, fix, sat, station;
    NyXmlRepeated<Link> links;
};
struct Segment : Part<Segment> {
    static constexpr auto xmlName = "http://www.topografix.com/GPX/1/1#trkseg";
    void registerComponents() override { element("trkpt", points); }
    NyXmlRepeated<Point> points;
};
struct Track : Part<Track> { // trk, of segments, or rte, of points
    static constexpr auto xmlName = "http://www.topografix.com/GPX/1/1#trk";
    void registerComponents() override
    {
        elements("name", name, "cmt", cmt, "desc", desc, "src", src, "link", links, "number", number, "type", type);
        elements("rtept", points, "trkseg", segments);
    }
    Text name, cmt, desc, src, number, type;
    NyXmlRepeated<Link> links;
    NyXmlRepeated<Point> points;
    NyXmlRepeated<Segment> segments;
};
struct Metadata : Part<Metadata> {
    static constexpr auto xmlName = "http://www.topografix.com/GPX/1/1#metadata";
    void registerComponents() override { elements("name", name, "desc", desc, "link", links, "time", time); }
    Text name, desc;
    NyXmlRepeated<Link> links;
    NyXmlOptional<NyXmlDateTime> time;
};
struct Gpx : Part<Gpx> {
    static constexpr auto xmlName = "http://www.topografix.com/GPX/1/1#gpx";
    void registerComponents() override
    {
        attributes("version", version, "creator", creator),
            elements("metadata", metadata, "wpt", waypoints, "rte", routes, "trk", tracks);
        registerComponentReadOnly("time", &metadata.time); // where GPX 1.0 has it
    }
    NyXmlBasicType<std::string> version = std::string("1.1"), creator;
    Metadata metadata;
    NyXmlRepeated<Point> waypoints;
    NyXmlRepeated<Track> routes, tracks;
};
} // namespace gpx
#endif
