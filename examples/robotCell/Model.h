#ifndef ROBOTCELL_MODEL_H
#define ROBOTCELL_MODEL_H

// The data model of the example: a robot cell as a planner would keep it.
//
// Each class declares its members once, in registerComponents(). Reading, writing, comparing with the default and describing
// itself as a schema all follow from that.

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlVectorBasicType.h>
#include <nyXml/values/NyXmlVectorType.h>

#include <memory>
#include <string>

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

/// The whole cell: the root of the document.
///
/// Besides its own members it takes one tool whose class it doesn't know: the reader's factory makes it from the element's name.
class Cell : public ModelClass<Cell> {
public:
    Cell() = default;
    Cell(Cell const& other);
    Cell& operator=(Cell const& other);

    static NyToken const& classToken()
    {
        static NyToken const token = element("cell");
        return token;
    }
    bool operator==(Cell const& other) const;

    /// The tool at the flange, of a class from a plug-in; null if the document has none. The cell owns it.
    NyXmlObject const* tool() const { return m_theTool.get(); }

    bool writeElements(NyXmlWriter& writer) const override;

    Text name;
    Texts operators;
    NyXmlVectorType<Robot> robots;

protected:
    void registerComponents() override;
    bool readValueFromSpecialToken(NyToken const& token, NyXmlReader& reader) override;

private:
    std::unique_ptr<NyXmlObject> m_theTool;
};

} // namespace robotCell

#endif
