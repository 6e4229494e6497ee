#ifndef OSM_OSM_H
#define OSM_OSM_H

// OSM XML 0.6: nodes, ways and relations of a map, with their tags and their history.

#include <nyXmlKit/model/NyXmlDateTime.h>
#include <nyXmlKit/model/NyXmlEnum.h>
#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlOptional.h>
#include <nyXmlKit/model/NyXmlRepeated.h>

namespace osm {

using Text = NyXmlBasicType<std::string>;
using OptionalText = NyXmlOptional<std::string>;

enum class Kind { node, way, relation };
constexpr auto nyXmlWords(Kind)
{
    return nyXmlTable<Kind>({ { Kind::node, "node" }, { Kind::way, "way" }, { Kind::relation, "relation" } });
}

struct Tag : NyXmlModel<Tag> {
    static constexpr auto xmlName = "tag";
    void registerComponents() override { attributes("k", key, "v", value); }
    Text key, value;
};
struct Object : NyXmlModel<Object> { // what nodes, ways and relations have
    static constexpr auto xmlName = "object";
    static constexpr auto xmlOrder = NyXmlOrder::asRegistered;
    void registerComponents() override
    {
        attributes("id", id, "visible", visible, "version", version, "changeset", changeset, "timestamp", timestamp);
        attributes("user", user, "uid", uid, "action", action);
        element("tag", tags);
    }
    std::string tag(std::string const& key) const
    {
        for (Tag const& each : tags)
            if (each.key.value() == key)
                return each.value;
        return std::string();
    }
    NyXmlLong id;
    NyXmlOptional<NyXmlBoolean> visible;
    NyXmlOptional<long long> version, changeset, uid;
    NyXmlOptional<NyXmlDateTime> timestamp;
    OptionalText user, action;
    NyXmlRepeated<Tag> tags;
};
struct Node : NyXmlModel<Node, Object> {
    static constexpr auto xmlName = "node";
    void registerComponents() override { attributes("lat", lat, "lon", lon); }
    NyXmlDecimal lat, lon; // degrees
};
struct NodeRef : NyXmlModel<NodeRef> {
    static constexpr auto xmlName = "nd";
    void registerComponents() override { attribute("ref", ref); }
    NyXmlLong ref;
};
struct Way : NyXmlModel<Way, Object> {
    static constexpr auto xmlName = "way";
    void registerComponents() override { element("nd", nodes); }
    NyXmlRepeated<NodeRef> nodes;
};
struct Member : NyXmlModel<Member> {
    static constexpr auto xmlName = "member";
    void registerComponents() override { attributes("type", kind, "ref", ref, "role", role); }
    NyXmlEnum<Kind> kind;
    NyXmlLong ref;
    Text role;
};
struct Relation : NyXmlModel<Relation, Object> {
    static constexpr auto xmlName = "relation";
    void registerComponents() override { element("member", members); }
    NyXmlRepeated<Member> members;
};
struct Bounds : NyXmlModel<Bounds> {
    static constexpr auto xmlName = "bounds";
    void registerComponents() override { attributes("minlat", minlat, "minlon", minlon, "maxlat", maxlat, "maxlon", maxlon); }
    NyXmlDecimal minlat, minlon, maxlat, maxlon;
};
struct Osm : NyXmlModel<Osm> {
    static constexpr auto xmlName = "osm";
    static constexpr auto xmlOrder = NyXmlOrder::asRegistered;
    void registerComponents() override
    {
        attributes("version", version, "generator", generator);
        elements("bounds", bounds, "node", nodes, "way", ways, "relation", relations);
    }
    Text version = std::string("0.6");
    OptionalText generator;
    NyXmlOptional<Bounds> bounds;
    NyXmlRepeated<Node> nodes;
    NyXmlRepeated<Way> ways;
    NyXmlRepeated<Relation> relations;
};

} // namespace osm

#endif
