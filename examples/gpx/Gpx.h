#ifndef GPX_GPX_H
#define GPX_GPX_H // GPX 1.1: what a GPS receiver has recorded, members in the order that the format asks for. Reads GPX 1.0 as well.
#include "../common/Markup.h"
#include <nyXmlKit/model/NyXmlDateTime.h>
#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlRepeated.h>
namespace gpx {
using Text = NyXmlOptional<std::string>;
template <class Self>
struct Part : NyXmlModel<Self> { // what most parts have; each registers its own
    static constexpr auto xmlName = "http://www.topografix.com/GPX/1/1#part";
    static constexpr auto xmlOrder = NyXmlOrder::asRegistered;
    Text name, cmt, desc, src, type;
    NyXmlOptional<NyXmlDateTime> time;
    NyXmlRepeated<struct Link> links;
    NyXmlOwned<Markup> more; // kept as it is
};
struct Link : Part<Link> {
    void registerComponents() override { requiredAttributes("href", href), elements("text", text, "type", type); }
    NyXmlBasicType<std::string> href;
    Text text;
};
struct Point : Part<Point> { // wpt, rtept or trkpt
    void registerComponents() override
    {
        requiredAttributes("lat", lat, "lon", lon), elements("ele", ele, "time", time, "magvar", magvar, "geoidheight", geoid);
        elements("name", name, "cmt", cmt, "desc", desc, "src", src, "link", links, "sym", sym, "type", type, "fix", fix);
        elements("sat", sat, "hdop", hdop, "vdop", vdop, "pdop", pdop, "ageofdgpsdata", age, "dgpsid", id, "extensions", more);
    }
    NyXmlDecimal lat, lon;                                                 // degrees
    NyXmlOptional<NyXmlDecimal> ele, magvar, geoid, hdop, vdop, pdop, age; // ele and geoid in metres
    Text sym, fix, sat, id;
};
struct Segment : Part<Segment> {
    void registerComponents() override { elements("trkpt", points, "extensions", more); }
    NyXmlRepeated<Point> points;
};
struct Track : Part<Track> { // trk, of segments, or rte, of points
    void registerComponents() override
    {
        elements("name", name, "cmt", cmt, "desc", desc, "src", src, "link", links, "number", number, "type", type);
        elements("extensions", more, "rtept", points, "trkseg", segments);
    }
    Text number;
    NyXmlRepeated<Point> points;
    NyXmlRepeated<Segment> segments;
};
struct Metadata : Part<Metadata> {
    void registerComponents() override
    {
        elements("name", name, "desc", desc, "author", author, "copyright", copyright, "link", links, "time", time);
        elements("keywords", keywords, "bounds", bounds, "extensions", more);
    }
    NyXmlOwned<Markup> author, copyright, keywords, bounds;
};
struct Gpx : Part<Gpx> {
    static constexpr auto xmlName = "http://www.topografix.com/GPX/1/1#gpx";
    void registerComponents() override
    {
        attribute("version", version), requiredAttribute("creator", creator);
        elements("metadata", metadata, "wpt", waypoints, "rte", routes, "trk", tracks, "extensions", more);
        registerComponentReadOnly("time", &metadata.time), registerComponentReadOnly("bounds", &metadata.bounds); // of GPX 1.0
    }
    NyXmlBasicType<std::string> version = std::string("1.1"), creator;
    Metadata metadata;
    NyXmlRepeated<Point> waypoints;
    NyXmlRepeated<Track> routes, tracks;
};
} // namespace gpx
#endif
