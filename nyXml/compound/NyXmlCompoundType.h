#ifndef NYXML_COMPOUND_NYXMLCOMPOUNDTYPE_H
#define NYXML_COMPOUND_NYXMLCOMPOUNDTYPE_H

#include <nyXml/core/NyToken.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyXmlExport.h>

#include <cstdint>
#include <map>
#include <memory>
#include <type_traits>

class NyComponentShape;
struct NyComponent;
struct NyRegistered;
enum class NyComponentKind : std::uint8_t;

/// An object made of components: child elements and attributes, each a member that reads and writes itself.
///
/// A subclass says once which member answers to which name; reading, writing and describing need no code of its own:
/// \code
///     class Joint : public NyXmlCompoundType {
///     public:
///         NyXmlObject* clone() const override { return new Joint(*this); }
///         NyXmlObject* newObject() const override { return new Joint; }
///         NyToken const& token() const override { static NyToken const name("urn:demo/robots", "joint"); return name; }
///         bool operator==(Joint const& other) const { return m_id == other.m_id && m_angle == other.m_angle; }
///         bool equality(NyXmlObject const* other) const override
///         {
///             auto const* joint = dynamic_cast<Joint const*>(other);
///             return joint != nullptr && *this == *joint;
///         }
///         void registerComponents() override
///         {
///             static NyToken const id("id"), angle("urn:demo/robots", "angle");
///             registerAttributeComponent(id, &m_id);
///             registerComponent(angle, &m_angle);
///         }
///     private:
///         NyXmlBasicType<unsigned int> m_id;
///         NyXmlBasicType<double> m_angle;
///     };
/// \endcode
///
/// Sequences and other classes compare with operator==: without one of its own, a class has the one below, for which all its objects
/// are equal.
///
/// Components go by local name: two tokens that differ in their namespace alone are one component. They are written in ascending
/// byte order of their names, attributes first, whatever the order of registration.
///
/// An element or attribute that no component answers to is reported (print type 4) and skipped; the read goes on and succeeds.
/// What a component's own read returns is not looked at.
///
/// Registered objects are not owned. Usually they are members; in any case they live as long as this object and are never null.
class NYXML_EXPORT NyXmlCompoundType : public NyXmlObject {
public:
    using ComponentMap = std::map<NyToken, NyXmlObject*>;
    using SpecialDescriptorMap = std::map<NyToken, unsigned int>;

    NyXmlCompoundType();

    /// A copy knows no components: the source's lie in the source. It registers its own on first use.
    NyXmlCompoundType(NyXmlCompoundType const& other);

    // NyXmlObject

    ~NyXmlCompoundType() override;
    void accept(NyXmlObjectVisitor* visitor) const override;

    /// Calls registerComponents().
    bool xmlInit() override;

    /// Takes the attributes, then the children. False only if the reader has failed.
    bool read(NyXmlReader& reader) override;

    /// Writes the attributes, then the children. Writes nothing for an object that equals its default, unless the writer's
    /// writeDefaultDataFlag() is set.
    bool write(NyXmlWriter& writer) const override;
    bool writeSchema(NyXmlSchema& schema) const override;

    // NyXmlCompoundType

    /// Initialises the object if need be, marks it specified and hands each attribute to readAttributeFromToken(). One that is
    /// still there afterwards is consumed, so that those behind it are met.
    virtual bool readAttributes(NyXmlReader& reader);

    /// Hands each child to readValueFromToken() and skips those that it refuses. Text between children ends the loop as the end
    /// tag does.
    virtual bool readElements(NyXmlReader& reader);

    /// Writes every attribute that is not read-only, whatever its value.
    virtual bool writeAttributes(NyXmlWriter& writer) const;

    /// Writes every child that is not read-only and that is basic or differs from its default, or every one if the writer's
    /// writeDefaultDataFlag() is set. \return true
    virtual bool writeElements(NyXmlWriter& writer) const;

    virtual bool writeSchemaAttributes(NyXmlSchema& schema) const;
    virtual bool writeSchemaElements(NyXmlSchema& schema) const;

    /// The place to say which member answers to which name. Runs with xmlInit().
    virtual void registerComponents() = 0;

    /// The object answers to the child element of this name. A name that is known gets the new object and keeps its first token.
    virtual void registerComponent(NyToken const& token, NyXmlObject* object);

    /// The same for an element that is read and described, but never written.
    virtual void registerComponentReadOnly(NyToken const& token, NyXmlObject* object);

    /// A member that is no object does not answer to a name: says so where it is compiled.
    template <class Member, std::enable_if_t<!std::is_convertible_v<Member*, NyXmlObject*>, int> = 0>
    void registerComponent(NyToken const&, Member*)
    {
        static_assert(sizeof(Member*) == 0,
                      "a member that is registered derives from NyXmlObject: wrap a plain one in NyXmlBasicType");
    }
    template <class Member, std::enable_if_t<!std::is_convertible_v<Member*, NyXmlObject*>, int> = 0>
    void registerAttributeComponent(NyToken const& token, Member* member)
    {
        registerComponent(token, member);
    }

    /// Child elements by name; empty until the object is initialised. Valid as long as the object.
    virtual ComponentMap const& componentMap() const;

    virtual void registerAttributeComponent(NyToken const& token, NyXmlObject* object);
    virtual void registerAttributeComponentReadOnly(NyToken const& token, NyXmlObject* object);

    /// Attributes by name; empty until the object is initialised. Valid as long as the object.
    virtual ComponentMap const& attributeComponentMap();

    /// Read-only names: 0 marks an element, 1 an attribute. One map for both: of an element and an attribute of the same name
    /// only the one registered later counts as read-only.
    virtual SpecialDescriptorMap const& specialDescriptorMap();

    /// Whether components are registered now; initialises nothing.
    virtual bool hasChildren() const;
    virtual bool hasAttributes() const;

protected:
    /// Reads the child that the reader stands on. False if it was not taken: the caller skips it.
    virtual bool readValueFromToken(NyToken const& token, NyXmlReader& reader);

    /// Asked about children that no component answers to. The default reports "Bad token" and refuses. An override that takes the
    /// child reads it whole and returns true.
    virtual bool readValueFromSpecialToken(NyToken const& token, NyXmlReader& reader);

    /// Reads the first remaining attribute. False, with a report, if no component answers to it.
    virtual bool readAttributeFromToken(NyToken const& token, NyXmlReader& reader);

    /// Where maps come from, for subclasses that supply them another way. The map becomes this object's; new elements and
    /// attributes are entered into what is in it.
    virtual ComponentMap* newComponentMap() const;
    virtual SpecialDescriptorMap* newSpecialDescriptorMap();

    /// Called before the first entry of each kind, and by the accessors of the maps. Do nothing if there is a map.
    virtual void createComponentMap() const;
    virtual void createAttributeComponentMap();
    virtual void createSpecialDescriptorMap();

    virtual bool isReadOnlyComponent(NyToken token) const;
    virtual bool isReadOnlyAttribute(NyToken token) const;

public:
    /// Marks the target specified; its components stay, since they are its own.
    NyXmlCompoundType& operator=(NyXmlCompoundType const& other);

    /// Compares shapes and not values: names of elements with their namespaces, and read-only marks. True if one of the two is
    /// not initialised yet. A subclass compares its members in its equality().
    bool operator==(NyXmlCompoundType const& other) const;

private:
    struct Maps;
    struct Operations;

    void registerAll();
    void registerFirst();
    void registerAlong(NyComponentShape const& shape);
    void enter(NyComponentKind kind, bool readOnly, NyToken const& token, NyXmlObject* object);
    bool isNextOfShape(NyComponentKind kind, bool readOnly, NyToken const& token, NyXmlObject* object) const;
    void goByOwnClass() const;
    void leaveShape() const;

    NyComponentShape const* shape() const noexcept;
    Maps* ownMaps() const noexcept;
    Maps& maps() const;
    ComponentMap const* mapOf(NyComponentKind kind) const;
    bool hasComponents(NyComponentKind kind) const;
    bool hasMarks() const;
    bool isReadOnly(NyComponentKind kind, NyToken const& token) const;
    template <class Action>
    void forEach(NyComponentKind kind, Action action) const;
    NyXmlObject* find(NyComponentKind kind, NyToken const& token);
    NyComponentShape const* ownShape();
    void readLeaves(NyXmlReader& reader);
    NyComponent const* nextOfShape(NyComponentKind kind, NyToken const& token);
    NyToken const& lastingName(NyComponentKind kind, NyToken const& name, NyToken& copy);

    // The small fields lie behind the base's flags: all of them, and the table's address, take 24 bytes. Mutable: a const write
    // initialises.

    mutable bool m_isRegistering = false; ///< while our registrations are compared with the shape
    std::uint16_t m_theFollowed = 0;      ///< registrations of the shape that we made, too
    std::uint16_t m_theNext = 0;          ///< component of the shape that the document is expected to hold next

    /// Deletes maps, which are ours; shapes are nobody's.
    struct Release {
        void operator()(NyRegistered const* registered) const noexcept;
    };

    /// What all objects of our class register, for as long as that is just what we registered and nobody asked for a map; or maps of
    /// our own, to objects that lie in the derived object. Null until the first registration.
    mutable std::unique_ptr<NyRegistered const, Release> m_theRegistered;
};

#endif
