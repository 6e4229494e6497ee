#ifndef ROBOTCELL_MODEL_H
#define ROBOTCELL_MODEL_H

// The data model of the example: a robot cell as a planner would keep it.
//
// Each class declares its members once, in registerComponents(). Reading, writing, comparing with the default and describing
// itself as a schema all follow from that.

#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>
#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlVectorBasicType.h>
#include <nyXml/values/NyXmlVectorType.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace robotCell {

using Text = NyXmlBasicType<std::string>;
using Number = NyXmlBasicType<double>;
using Count = NyXmlBasicType<unsigned int>;
using Switch = NyXmlBasicType<bool>;
using Numbers = NyXmlVectorBasicType<NyXmlBasicType<double>>;
using Texts = NyXmlVectorType<NyXmlBasicType<std::string>>;

/// The namespace of all elements of a cell's documents.
inline std::string const cellNamespace = "http://nyxml.org/examples/robotCell";

/// The name of an element in that namespace. Attributes have plain names.
inline NyToken element(std::string const& localName) { return NyToken(cellNamespace, localName); }

/// What every class of the model has in common: how it is copied, made anew and compared. \p Derived supplies
/// `static NyToken const& classToken()`, `operator==` and registerComponents().
template <class Derived>
class ModelClass : public NyXmlCompoundType {
public:
    NyXmlObject* clone() const override { return new Derived(self()); }
    NyXmlObject* newObject() const override { return new Derived; }
    NyToken const& token() const override { return Derived::classToken(); }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<Derived const*>(other);
        return same != nullptr && self() == *same;
    }

private:
    Derived const& self() const { return static_cast<Derived const&>(*this); }
};

/// <joint name="elbow"><lower>-1.5</lower><upper>1.5</upper></joint>
class Joint : public ModelClass<Joint> {
public:
    static NyToken const& classToken()
    {
        static NyToken const token = element("joint");
        return token;
    }
    bool operator==(Joint const& other) const { return name == other.name && lower == other.lower && upper == other.upper; }

    Text name;
    Number lower; ///< least angle, radians
    Number upper; ///< greatest angle, radians

protected:
    void registerComponents() override
    {
        registerAttributeComponent(NyToken("name"), &name);
        registerComponent(element("lower"), &lower);
        registerComponent(element("upper"), &upper);
    }
};

/// Where a robot stands: three lengths in metres and a turn about the vertical in radians.
class Base : public ModelClass<Base> {
public:
    static NyToken const& classToken()
    {
        static NyToken const token = element("base");
        return token;
    }
    bool operator==(Base const& other) const { return x == other.x && y == other.y && z == other.z && turn == other.turn; }

    Number x, y, z, turn;

protected:
    void registerComponents() override
    {
        registerAttributeComponent(NyToken("x"), &x);
        registerAttributeComponent(NyToken("y"), &y);
        registerAttributeComponent(NyToken("z"), &z);
        registerAttributeComponent(NyToken("turn"), &turn);
    }
};

/// One robot with its joints and the angles of its home position, one for each joint.
class Robot : public ModelClass<Robot> {
public:
    static NyToken const& classToken()
    {
        static NyToken const token = element("robot");
        return token;
    }
    bool operator==(Robot const& other) const
    {
        return id == other.id && model == other.model && enabled == other.enabled && base == other.base && home == other.home &&
               joints == other.joints;
    }

    Count id;
    Text model;
    Switch enabled;
    Base base;
    Numbers home; ///< radians
    NyXmlVectorType<Joint> joints;

protected:
    void registerComponents() override
    {
        registerAttributeComponent(NyToken("id"), &id);
        registerComponent(element("model"), &model);
        registerComponent(element("enabled"), &enabled);
        registerComponent(element("base"), &base);
        registerComponent(element("home"), &home);
        registerComponent(element("joints"), &joints);
    }
};

/// What the robots do, in order: a container whose members' classes are chosen by the document.
///
/// `move` and `wait` are known here. Others come from plug-ins that the document names: in a child's `library` attribute, or
/// in the element `addLibraries`.
class Tasks : public NyXmlBaseVariableCompoundType {
public:
    Tasks() = default;
    Tasks(Tasks const& other);
    Tasks& operator=(Tasks const& other);

    NyXmlObject* clone() const override { return new Tasks(*this); }
    NyXmlObject* newObject() const override { return new Tasks; }
    NyToken const& token() const override { return NyXml::NyVarVectorTypeToken; }
    bool equality(NyXmlObject const* other) const override;
    bool operator==(Tasks const& other) const;

    void registerComponents() override;
    bool readValueFromToken(NyToken const& element, NyXmlReader& reader) override;
    bool write(NyXmlWriter& writer) const override;

    std::vector<std::unique_ptr<NyXmlObject>> const& members() const { return m_theMembers; }

private:
    std::vector<std::unique_ptr<NyXmlObject>> m_theMembers;
};

/// The robots, each of which may live in a document of its own.
class Robots : public NyXmlVectorType<Robot> {
public:
    NyXmlObject* clone() const override { return new Robots(*this); }
    NyXmlObject* newObject() const override { return new Robots; }

    /// From now on write() puts each robot into a document in this folder and a link into the cell's. An empty path ends that.
    void setLinkFolder(std::filesystem::path const& folder) { m_theLinkFolder = folder; }

    bool write(NyXmlWriter& writer) const override;

private:
    void writeLink(NyXmlWriter& writer, Robot const& robot) const;

    std::filesystem::path m_theLinkFolder;
};

/// The whole cell: the root of the document.
class Cell : public ModelClass<Cell> {
public:
    static NyToken const& classToken()
    {
        static NyToken const token = element("cell");
        return token;
    }
    bool operator==(Cell const& other) const
    {
        return name == other.name && operators == other.operators && robots == other.robots && tasks == other.tasks;
    }

    Text name;
    Texts operators;
    Robots robots;
    Tasks tasks;

protected:
    void registerComponents() override
    {
        registerAttributeComponent(NyToken("name"), &name);
        registerComponent(element("operators"), &operators);
        registerComponent(element("robots"), &robots);
        registerComponent(element("tasks"), &tasks);
    }
};

} // namespace robotCell

#endif
