#ifndef URDF_URDF_H
#define URDF_URDF_H

// The core of URDF: a robot of links and joints. Values of three numbers are a word of our own; what simulators and controllers add is kept
// as it is.

#include "../common/Markup.h"

#include <nyXmlKit/model/NyXmlEnum.h>
#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlOptional.h>
#include <nyXmlKit/model/NyXmlPolymorphic.h>
#include <nyXmlKit/model/NyXmlRepeated.h>

#include <algorithm>
#include <array>
#include <istream>
#include <ostream>

namespace urdf {

using Text = NyXmlBasicType<std::string>;
using OptionalText = NyXmlOptional<std::string>;
using Number = NyXmlOptional<NyXmlReal>;

struct Triple : std::array<double, 3> {};
std::ostream& operator<<(std::ostream& stream, Triple const& triple);
std::istream& operator>>(std::istream& stream, Triple& triple);
struct TripleRules : NyXmlWordRules<Triple> {
    static constexpr char const* typeWord = "string";
    static bool take(Triple& value, std::string_view text);
    static std::string give(Triple const& value);
};
using Numbers3 = NyXmlWord<TripleRules>;

enum class JointKind { fixed, revolute, continuous, prismatic, floating, planar };
constexpr auto nyXmlWords(JointKind)
{
    return nyXmlTable<JointKind>({
        { JointKind::fixed, "fixed" },
        { JointKind::revolute, "revolute" },
        { JointKind::continuous, "continuous" },
        { JointKind::prismatic, "prismatic" },
        { JointKind::floating, "floating" },
        { JointKind::planar, "planar" },
    });
}

/// Place and turn in the frame around it: metres, and radians about x, y, z.
struct Origin : NyXmlModel<Origin> {
    static constexpr auto xmlName = "origin";
    void registerComponents() override { attributes("xyz", xyz, "rpy", rpy); }
    NyXmlOptional<Numbers3> xyz, rpy;
};
struct Value : NyXmlModel<Value> {
    static constexpr auto xmlName = "mass";
    void registerComponents() override { attribute("value", value); }
    NyXmlReal value;
};
struct Inertia : NyXmlModel<Inertia> {
    static constexpr auto xmlName = "inertia";
    void registerComponents() override { attributes("ixx", ixx, "ixy", ixy, "ixz", ixz, "iyy", iyy, "iyz", iyz, "izz", izz); }
    NyXmlReal ixx, ixy, ixz, iyy, iyz, izz;
};
struct Inertial : NyXmlModel<Inertial> {
    static constexpr auto xmlName = "inertial";
    void registerComponents() override { elements("origin", origin, "mass", mass, "inertia", inertia); }
    NyXmlOptional<Origin> origin;
    NyXmlOptional<Value> mass;
    NyXmlOptional<Inertia> inertia;
};

struct Shape : NyXmlModel<Shape> {
    static constexpr auto xmlName = "shape";
    virtual char const* word() const = 0;
};
struct Box : NyXmlModel<Box, Shape> {
    static constexpr auto xmlName = "box";
    void registerComponents() override { attribute("size", size); }
    char const* word() const override { return "box"; }
    Numbers3 size;
};
struct Cylinder : NyXmlModel<Cylinder, Shape> {
    static constexpr auto xmlName = "cylinder";
    void registerComponents() override { attributes("radius", radius, "length", length); }
    char const* word() const override { return "cylinder"; }
    NyXmlReal radius, length;
};
struct Sphere : NyXmlModel<Sphere, Shape> {
    static constexpr auto xmlName = "sphere";
    void registerComponents() override { attribute("radius", radius); }
    char const* word() const override { return "sphere"; }
    NyXmlReal radius;
};
struct Mesh : NyXmlModel<Mesh, Shape> {
    static constexpr auto xmlName = "mesh";
    void registerComponents() override { attributes("filename", filename, "scale", scale); }
    char const* word() const override { return "mesh"; }
    Text filename;
    NyXmlOptional<Numbers3> scale;
};
using Geometry = NyXmlOneOf<Shape, Box, Cylinder, Sphere, Mesh>;

struct Colour : NyXmlModel<Colour> {
    static constexpr auto xmlName = "color";
    void registerComponents() override { attribute("rgba", rgba); }
    Text rgba;
};
struct Texture : NyXmlModel<Texture> {
    static constexpr auto xmlName = "texture";
    void registerComponents() override { attribute("filename", filename); }
    Text filename;
};
struct Material : NyXmlModel<Material> {
    static constexpr auto xmlName = "material";
    void registerComponents() override { attributes("name", name), elements("color", colour, "texture", texture); }
    Text name;
    NyXmlOptional<Colour> colour;
    NyXmlOptional<Texture> texture;
};
struct Body : NyXmlModel<Body> { // what is seen, or touched
    static constexpr auto xmlName = "visual";
    void registerComponents() override
    {
        attributes("name", name, "group", group);
        elements("origin", origin, "geometry", geometry, "material", material);
    }
    OptionalText name, group;
    NyXmlOptional<Origin> origin;
    Geometry geometry;
    NyXmlOptional<Material> material;
};
struct Link : NyXmlModel<Link> {
    static constexpr auto xmlName = "link";
    void registerComponents() override
    {
        attribute("name", name);
        elements("inertial", inertial, "visual", visuals, "collision", collisions);
    }
    Text name;
    NyXmlOptional<Inertial> inertial;
    NyXmlRepeated<Body> visuals, collisions;
};

struct LinkName : NyXmlModel<LinkName> {
    static constexpr auto xmlName = "parent";
    void registerComponents() override { attribute("link", link); }
    Text link;
};
struct Axis : NyXmlModel<Axis> {
    static constexpr auto xmlName = "axis";
    void registerComponents() override { attribute("xyz", xyz); }
    Numbers3 xyz;
};
struct Limit : NyXmlModel<Limit> {
    static constexpr auto xmlName = "limit";
    void registerComponents() override { attributes("lower", lower, "upper", upper, "effort", effort, "velocity", velocity); }
    Number lower, upper, effort, velocity;
};
struct Dynamics : NyXmlModel<Dynamics> {
    static constexpr auto xmlName = "dynamics";
    void registerComponents() override { attributes("damping", damping, "friction", friction); }
    Number damping, friction;
};
struct Mimic : NyXmlModel<Mimic> {
    static constexpr auto xmlName = "mimic";
    void registerComponents() override { attributes("joint", joint, "multiplier", multiplier, "offset", offset); }
    Text joint;
    Number multiplier, offset;
};
struct Safety : NyXmlModel<Safety> {
    static constexpr auto xmlName = "safety_controller";
    void registerComponents() override
    {
        attributes("soft_lower_limit", lower, "soft_upper_limit", upper, "k_position", position, "k_velocity", velocity);
    }
    Number lower, upper, position, velocity;
};
struct Joint : NyXmlModel<Joint> {
    static constexpr auto xmlName = "joint";
    void registerComponents() override
    {
        attributes("name", name, "type", kind);
        elements("origin", origin, "parent", parent, "child", child, "axis", axis, "limit", limit, "dynamics", dynamics);
        elements("mimic", mimic, "safety_controller", safety);
    }
    Text name;
    NyXmlEnum<JointKind> kind;
    NyXmlOptional<Origin> origin;
    LinkName parent, child;
    NyXmlOptional<Axis> axis;
    NyXmlOptional<Limit> limit;
    NyXmlOptional<Dynamics> dynamics;
    NyXmlOptional<Mimic> mimic;
    NyXmlOptional<Safety> safety;
};
struct Robot : NyXmlModel<Robot> {
    static constexpr auto xmlName = "robot";
    static constexpr auto xmlOrder = NyXmlOrder::asRegistered;
    void registerComponents() override
    {
        attribute("name", name);
        elements("material", materials, "link", links, "joint", joints, "transmission", transmissions, "gazebo", gazebos);
    }
    Text name;
    NyXmlRepeated<Material> materials;
    NyXmlRepeated<Link> links;
    NyXmlRepeated<Joint> joints;
    NyXmlRepeated<Markup> transmissions, gazebos;
};

// --- the word of three numbers ---------------------------------------------------------------------------------------------------

inline std::ostream& operator<<(std::ostream& stream, Triple const& triple) { return stream << TripleRules::give(triple); }
inline std::istream& operator>>(std::istream& stream, Triple& triple) { return stream >> triple[0] >> triple[1] >> triple[2]; }
inline bool TripleRules::take(Triple& value, std::string_view text)
{
    Triple taken{};
    for (double& number : taken) {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
        std::size_t const end = std::min(text.find_first_of(" \t\r\n"), text.size());
        if (!NyXmlRealRules::take(number, text.substr(0, end)))
            return false;
        text.remove_prefix(end);
    }
    if (text.find_first_not_of(" \t\r\n") != std::string_view::npos)
        return false;
    value = taken;
    return true;
}
inline std::string TripleRules::give(Triple const& value)
{
    return NyXmlRealRules::give(value[0]) + ' ' + NyXmlRealRules::give(value[1]) + ' ' + NyXmlRealRules::give(value[2]);
}

} // namespace urdf

#endif
