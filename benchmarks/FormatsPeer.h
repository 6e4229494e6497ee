#ifndef FORMATSPEER_H
#define FORMATSPEER_H

// What the examples' models hold, as plain structs, and how somebody fills them from pugixml's tree. Each member that a model knows is
// taken, into the type that the model has for it.

#include "../examples/osm/Osm.h"
#include "../examples/urdf/Urdf.h"

#include <charconv>
#include <cstring>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <pugixml.hpp>

namespace peer {

using Text = std::optional<std::string>;
using Real = std::optional<double>;
using Time = std::optional<NyXmlDateTimeValue>;

template <class Number>
void take(Number& value, char const* text)
{
    std::from_chars(text, text + std::strlen(text), value);
}
inline void take(std::string& value, char const* text) { value = text; }
inline void take(bool& value, char const* text) { value = *text == 't' || *text == '1'; }
inline void take(NyXmlDateTimeValue& value, char const* text) { NyXmlDateTimeRules::take(value, text); } // whoever parses it
inline void take(urdf::Triple& value, char const* text)
{
    for (double& number : value) {
        text += std::strspn(text, " \t\r\n");
        text = std::from_chars(text, text + std::strlen(text), number).ptr;
    }
}
template <class Value>
void take(std::optional<Value>& value, char const* text)
{
    take(value.emplace(), text);
}
/// An element's text.
template <class Value>
void take(Value& value, pugi::xml_node node)
{
    take(value, node.text().get());
}
template <class Value>
void take(Value& value, pugi::xml_attribute attribute)
{
    take(value, attribute.value());
}
inline bool is(char const* name, char const* other) { return std::strcmp(name, other) == 0; }

/// Whatever its name, taken as it is.
struct Markup {
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string inside;
};
inline void take(Markup& markup, pugi::xml_node node)
{
    for (pugi::xml_attribute attribute : node.attributes())
        markup.attributes.emplace_back(attribute.name(), attribute.value());
    std::ostringstream text;
    for (pugi::xml_node child : node)
        child.print(text, "", pugi::format_raw);
    markup.inside = text.str();
}

// --- tracks ------------------------------------------------------------------------------------------------------------------------

struct Link {
    std::string href;
    Text text, type;
};
struct Point {
    double lat = 0, lon = 0;
    Real ele, magvar, geoid, hdop, vdop, pdop, age;
    Text name, cmt, desc, src, type, sym, fix, sat, id;
    Time time;
    std::vector<Link> links;
    std::unique_ptr<Markup> more;
};
struct Segment {
    std::vector<Point> points;
    std::unique_ptr<Markup> more;
};
struct Track {
    Text name, cmt, desc, src, number, type;
    std::vector<Link> links;
    std::vector<Point> points;
    std::vector<Segment> segments;
    std::unique_ptr<Markup> more;
};
struct Gpx {
    std::string version, creator;
    Text name, desc;
    Time time;
    std::vector<Link> links;
    std::unique_ptr<Markup> author, copyright, keywords, bounds, more, moreMetadata;
    std::vector<Point> waypoints;
    std::vector<Track> routes, tracks;
};

inline void take(std::unique_ptr<Markup>& markup, pugi::xml_node node)
{
    markup = std::make_unique<Markup>();
    take(*markup, node);
}
inline void take(Link& link, pugi::xml_node node)
{
    take(link.href, node.attribute("href"));
    for (pugi::xml_node child : node) {
        char const* const name = child.name();
        if (is(name, "text"))
            take(link.text, child);
        else if (is(name, "type"))
            take(link.type, child);
    }
}
inline void take(Point& point, pugi::xml_node node)
{
    take(point.lat, node.attribute("lat"));
    take(point.lon, node.attribute("lon"));
    for (pugi::xml_node child : node) {
        char const* const name = child.name();
        if (is(name, "ele"))
            take(point.ele, child);
        else if (is(name, "time"))
            take(point.time, child);
        else if (is(name, "magvar"))
            take(point.magvar, child);
        else if (is(name, "geoidheight"))
            take(point.geoid, child);
        else if (is(name, "name"))
            take(point.name, child);
        else if (is(name, "cmt"))
            take(point.cmt, child);
        else if (is(name, "desc"))
            take(point.desc, child);
        else if (is(name, "src"))
            take(point.src, child);
        else if (is(name, "link"))
            take(point.links.emplace_back(), child);
        else if (is(name, "sym"))
            take(point.sym, child);
        else if (is(name, "type"))
            take(point.type, child);
        else if (is(name, "fix"))
            take(point.fix, child);
        else if (is(name, "sat"))
            take(point.sat, child);
        else if (is(name, "hdop"))
            take(point.hdop, child);
        else if (is(name, "vdop"))
            take(point.vdop, child);
        else if (is(name, "pdop"))
            take(point.pdop, child);
        else if (is(name, "ageofdgpsdata"))
            take(point.age, child);
        else if (is(name, "dgpsid"))
            take(point.id, child);
        else if (is(name, "extensions"))
            take(point.more, child);
    }
}
inline void take(Segment& segment, pugi::xml_node node)
{
    for (pugi::xml_node child : node) {
        if (is(child.name(), "trkpt"))
            take(segment.points.emplace_back(), child);
        else if (is(child.name(), "extensions"))
            take(segment.more, child);
    }
}
inline void take(Track& track, pugi::xml_node node)
{
    for (pugi::xml_node child : node) {
        char const* const name = child.name();
        if (is(name, "name"))
            take(track.name, child);
        else if (is(name, "cmt"))
            take(track.cmt, child);
        else if (is(name, "desc"))
            take(track.desc, child);
        else if (is(name, "src"))
            take(track.src, child);
        else if (is(name, "link"))
            take(track.links.emplace_back(), child);
        else if (is(name, "number"))
            take(track.number, child);
        else if (is(name, "type"))
            take(track.type, child);
        else if (is(name, "extensions"))
            take(track.more, child);
        else if (is(name, "rtept"))
            take(track.points.emplace_back(), child);
        else if (is(name, "trkseg"))
            take(track.segments.emplace_back(), child);
    }
}
inline void take(Gpx& gpx, pugi::xml_node node)
{
    take(gpx.version, node.attribute("version"));
    take(gpx.creator, node.attribute("creator"));
    auto const takeShared = [&gpx](char const* name, pugi::xml_node child) {
        if (is(name, "time"))
            take(gpx.time, child);
        else if (is(name, "bounds"))
            take(gpx.bounds, child);
    };
    for (pugi::xml_node child : node) {
        char const* const name = child.name();
        if (is(name, "wpt"))
            take(gpx.waypoints.emplace_back(), child);
        else if (is(name, "rte"))
            take(gpx.routes.emplace_back(), child);
        else if (is(name, "trk"))
            take(gpx.tracks.emplace_back(), child);
        else if (is(name, "extensions"))
            take(gpx.more, child);
        else if (!is(name, "metadata"))
            takeShared(name, child);
        else
            for (pugi::xml_node part : child) {
                char const* const partName = part.name();
                if (is(partName, "name"))
                    take(gpx.name, part);
                else if (is(partName, "desc"))
                    take(gpx.desc, part);
                else if (is(partName, "author"))
                    take(gpx.author, part);
                else if (is(partName, "copyright"))
                    take(gpx.copyright, part);
                else if (is(partName, "link"))
                    take(gpx.links.emplace_back(), part);
                else if (is(partName, "keywords"))
                    take(gpx.keywords, part);
                else if (is(partName, "extensions"))
                    take(gpx.moreMetadata, part);
                else
                    takeShared(partName, part);
            }
    }
}

// --- maps --------------------------------------------------------------------------------------------------------------------------

struct Tag {
    std::string key, value;
};
struct Object {
    long long id = 0;
    std::optional<bool> visible;
    std::optional<long long> version, changeset, uid;
    Time timestamp;
    Text user, action;
    std::vector<Tag> tags;
};
struct Node : Object {
    double lat = 0, lon = 0;
};
struct Way : Object {
    std::vector<long long> nodes;
};
struct Member {
    osm::Kind kind = osm::Kind::node;
    long long ref = 0;
    std::string role;
};
struct Relation : Object {
    std::vector<Member> members;
};
struct Osm {
    std::string version;
    Text generator;
    std::optional<std::array<double, 4>> bounds;
    std::vector<Node> nodes;
    std::vector<Way> ways;
    std::vector<Relation> relations;
};

inline bool takePart(Object& object, pugi::xml_attribute attribute)
{
    char const* const name = attribute.name();
    if (is(name, "id"))
        take(object.id, attribute);
    else if (is(name, "visible"))
        take(object.visible, attribute);
    else if (is(name, "version"))
        take(object.version, attribute);
    else if (is(name, "changeset"))
        take(object.changeset, attribute);
    else if (is(name, "timestamp"))
        take(object.timestamp, attribute);
    else if (is(name, "user"))
        take(object.user, attribute);
    else if (is(name, "uid"))
        take(object.uid, attribute);
    else if (is(name, "action"))
        take(object.action, attribute);
    else
        return false;
    return true;
}
inline bool takePart(Object& object, pugi::xml_node child)
{
    if (!is(child.name(), "tag"))
        return false;
    Tag& tag = object.tags.emplace_back();
    take(tag.key, child.attribute("k"));
    take(tag.value, child.attribute("v"));
    return true;
}
inline void take(Node& node, pugi::xml_node element)
{
    for (pugi::xml_attribute attribute : element.attributes())
        if (!takePart(node, attribute)) {
            if (is(attribute.name(), "lat"))
                take(node.lat, attribute);
            else if (is(attribute.name(), "lon"))
                take(node.lon, attribute);
        }
    for (pugi::xml_node child : element)
        takePart(node, child);
}
inline void take(Way& way, pugi::xml_node element)
{
    for (pugi::xml_attribute attribute : element.attributes())
        takePart(way, attribute);
    for (pugi::xml_node child : element)
        if (!takePart(way, child) && is(child.name(), "nd"))
            take(way.nodes.emplace_back(), child.attribute("ref"));
}
inline void take(Relation& relation, pugi::xml_node element)
{
    for (pugi::xml_attribute attribute : element.attributes())
        takePart(relation, attribute);
    for (pugi::xml_node child : element)
        if (!takePart(relation, child) && is(child.name(), "member")) {
            Member& member = relation.members.emplace_back();
            char const* const kind = child.attribute("type").value();
            member.kind = is(kind, "node") ? osm::Kind::node : is(kind, "way") ? osm::Kind::way : osm::Kind::relation;
            take(member.ref, child.attribute("ref"));
            take(member.role, child.attribute("role"));
        }
}
inline void take(Osm& map, pugi::xml_node element)
{
    take(map.version, element.attribute("version"));
    if (pugi::xml_attribute const generator = element.attribute("generator"))
        take(map.generator, generator);
    for (pugi::xml_node child : element) {
        char const* const name = child.name();
        if (is(name, "node"))
            take(map.nodes.emplace_back(), child);
        else if (is(name, "way"))
            take(map.ways.emplace_back(), child);
        else if (is(name, "relation"))
            take(map.relations.emplace_back(), child);
        else if (is(name, "bounds")) {
            auto& bounds = map.bounds.emplace();
            take(bounds[0], child.attribute("minlat"));
            take(bounds[1], child.attribute("minlon"));
            take(bounds[2], child.attribute("maxlat"));
            take(bounds[3], child.attribute("maxlon"));
        }
    }
}

// --- robots ------------------------------------------------------------------------------------------------------------------------

using Triple = std::optional<urdf::Triple>;

struct Origin {
    Triple xyz, rpy;
};
struct Inertial {
    std::optional<Origin> origin;
    Real mass;
    std::optional<std::array<double, 6>> inertia;
};
struct Shape {
    virtual ~Shape() = default;
};
struct Box : Shape {
    urdf::Triple size{};
};
struct Cylinder : Shape {
    double radius = 0, length = 0;
};
struct Sphere : Shape {
    double radius = 0;
};
struct Mesh : Shape {
    std::string filename;
    Triple scale;
};
struct Material {
    std::string name;
    Text colour, texture;
};
struct Body {
    Text name, group;
    std::optional<Origin> origin;
    std::unique_ptr<Shape> geometry;
    std::optional<Material> material;
};
struct RobotLink {
    std::string name;
    std::optional<Inertial> inertial;
    std::vector<Body> visuals, collisions;
};
struct Numbers4 {
    Real first, second, third, fourth;
};
struct Joint {
    std::string name, parent, child;
    urdf::JointKind kind = urdf::JointKind::fixed;
    std::optional<Origin> origin;
    Triple axis;
    std::optional<Numbers4> limit, dynamics, mimic, safety;
    std::string mimicked;
};
struct Robot {
    std::string name;
    std::vector<Material> materials;
    std::vector<RobotLink> links;
    std::vector<Joint> joints;
    std::vector<Markup> transmissions, gazebos;
};

template <class Value>
void takeIfThere(std::optional<Value>& value, pugi::xml_attribute attribute)
{
    if (attribute)
        take(value, attribute);
}
inline void take(std::optional<Origin>& origin, pugi::xml_node node)
{
    takeIfThere(origin.emplace().xyz, node.attribute("xyz"));
    takeIfThere(origin->rpy, node.attribute("rpy"));
}
inline void take(Inertial& inertial, pugi::xml_node node)
{
    for (pugi::xml_node child : node) {
        if (is(child.name(), "origin"))
            take(inertial.origin, child);
        else if (is(child.name(), "mass"))
            take(inertial.mass, child.attribute("value"));
        else if (is(child.name(), "inertia")) {
            double* number = inertial.inertia.emplace().data();
            for (char const* const name : { "ixx", "ixy", "ixz", "iyy", "iyz", "izz" })
                take(*number++, child.attribute(name));
        }
    }
}
inline void take(Material& material, pugi::xml_node node)
{
    take(material.name, node.attribute("name"));
    for (pugi::xml_node child : node) {
        if (is(child.name(), "color"))
            take(material.colour, child.attribute("rgba"));
        else if (is(child.name(), "texture"))
            take(material.texture, child.attribute("filename"));
    }
}
inline void take(std::unique_ptr<Shape>& shape, pugi::xml_node node)
{
    for (pugi::xml_node child : node) {
        if (is(child.name(), "box")) {
            auto box = std::make_unique<Box>();
            take(box->size, child.attribute("size"));
            shape = std::move(box);
        } else if (is(child.name(), "cylinder")) {
            auto cylinder = std::make_unique<Cylinder>();
            take(cylinder->radius, child.attribute("radius"));
            take(cylinder->length, child.attribute("length"));
            shape = std::move(cylinder);
        } else if (is(child.name(), "sphere")) {
            auto sphere = std::make_unique<Sphere>();
            take(sphere->radius, child.attribute("radius"));
            shape = std::move(sphere);
        } else if (is(child.name(), "mesh")) {
            auto mesh = std::make_unique<Mesh>();
            take(mesh->filename, child.attribute("filename"));
            takeIfThere(mesh->scale, child.attribute("scale"));
            shape = std::move(mesh);
        }
    }
}
inline void take(Body& body, pugi::xml_node node)
{
    takeIfThere(body.name, node.attribute("name"));
    takeIfThere(body.group, node.attribute("group"));
    for (pugi::xml_node child : node) {
        if (is(child.name(), "origin"))
            take(body.origin, child);
        else if (is(child.name(), "geometry"))
            take(body.geometry, child);
        else if (is(child.name(), "material"))
            take(body.material.emplace(), child);
    }
}
inline void take(RobotLink& link, pugi::xml_node node)
{
    take(link.name, node.attribute("name"));
    for (pugi::xml_node child : node) {
        if (is(child.name(), "inertial"))
            take(link.inertial.emplace(), child);
        else if (is(child.name(), "visual"))
            take(link.visuals.emplace_back(), child);
        else if (is(child.name(), "collision"))
            take(link.collisions.emplace_back(), child);
    }
}
inline void take(std::optional<Numbers4>& numbers, pugi::xml_node node, std::array<char const*, 4> const& names)
{
    takeIfThere(numbers.emplace().first, node.attribute(names[0]));
    takeIfThere(numbers->second, node.attribute(names[1]));
    takeIfThere(numbers->third, node.attribute(names[2]));
    takeIfThere(numbers->fourth, node.attribute(names[3]));
}
inline void take(Joint& joint, pugi::xml_node node)
{
    take(joint.name, node.attribute("name"));
    char const* const kinds[] = { "fixed", "revolute", "continuous", "prismatic", "floating", "planar" };
    for (int kind = 0; kind < 6; ++kind)
        if (is(node.attribute("type").value(), kinds[kind]))
            joint.kind = static_cast<urdf::JointKind>(kind);
    for (pugi::xml_node child : node) {
        char const* const name = child.name();
        if (is(name, "origin"))
            take(joint.origin, child);
        else if (is(name, "parent"))
            take(joint.parent, child.attribute("link"));
        else if (is(name, "child"))
            take(joint.child, child.attribute("link"));
        else if (is(name, "axis"))
            take(joint.axis, child.attribute("xyz"));
        else if (is(name, "limit"))
            take(joint.limit, child, { "lower", "upper", "effort", "velocity" });
        else if (is(name, "dynamics"))
            take(joint.dynamics, child, { "damping", "friction", "", "" });
        else if (is(name, "mimic")) {
            take(joint.mimicked, child.attribute("joint"));
            take(joint.mimic, child, { "multiplier", "offset", "", "" });
        } else if (is(name, "safety_controller"))
            take(joint.safety, child, { "soft_lower_limit", "soft_upper_limit", "k_position", "k_velocity" });
    }
}
inline void take(Robot& robot, pugi::xml_node node)
{
    take(robot.name, node.attribute("name"));
    for (pugi::xml_node child : node) {
        char const* const name = child.name();
        if (is(name, "material"))
            take(robot.materials.emplace_back(), child);
        else if (is(name, "link"))
            take(robot.links.emplace_back(), child);
        else if (is(name, "joint"))
            take(robot.joints.emplace_back(), child);
        else if (is(name, "transmission"))
            take(robot.transmissions.emplace_back(), child);
        else if (is(name, "gazebo"))
            take(robot.gazebos.emplace_back(), child);
    }
}

} // namespace peer

#endif
