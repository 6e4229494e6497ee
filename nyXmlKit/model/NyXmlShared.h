#ifndef NYXMLKIT_MODEL_NYXMLSHARED_H
#define NYXMLKIT_MODEL_NYXMLSHARED_H

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>
#include <nyXmlKit/model/NyXmlObjectOf.h>
#include <nyXmlKit/model/NyXmlOptional.h>
#include <nyXmlKit/model/detail/NyXmlSharing.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

/// A member that several holders share, by pointer; or none.
///
/// \code
///     NyXmlShared<Tool> tool; // element("tool", tool);
///     other.tool = tool;      // one and the same Tool
/// \endcode
/// In a document the object stands where it is met first, with a number: `<tool sharedId="1" mass="2"/>`. Elsewhere stands
/// `<tool sharedRef="1"/>`, and whoever reads both holds one object again. An object that has one holder has no number. The document may
/// refer to an object ahead of it, and objects may hold each other in a circle. A number that no object has is reported (print
/// type 4) at the document's end, and stands for an object in its default state.
///
/// Copies share the object. Comparison looks at the objects, also in circles.
///
/// Numbers hold within the outermost model class that is read or written. Outside of any, nothing is shared.
///
/// \tparam T  a class of objects, the same for all holders; may be incomplete
template <class T>
class NYXML_EXPORT NyXmlShared : public NyXmlObject, public NyXmlOccurrence {
public:
    using Object = typename NyXmlObjectOf<T>::Type;

    NyXmlShared() { static_assert(NyXmlWholeClass<Object>::value); }
    NyXmlShared(std::shared_ptr<Object> object) : m_theObject(std::move(object)) {}

    std::shared_ptr<Object> const& pointer() const noexcept { return m_theObject; }
    explicit operator bool() const noexcept { return m_theObject != nullptr; }
    Object& operator*() const noexcept { return *m_theObject; } ///< only if it is there
    Object* operator->() const noexcept { return m_theObject.get(); }
    /// A new object of our own.
    Object& make()
    {
        m_theObject = std::make_shared<Object>();
        return *m_theObject;
    }
    void reset() noexcept { m_theObject.reset(); }
    bool operator==(NyXmlShared const& other) const { return equality(&other); }
    bool operator!=(NyXmlShared const& other) const { return !equality(&other); }

    // NyXmlObject
    /// Shows the object, at each of its holders; nothing if it is absent.
    void accept(NyXmlObjectVisitor* visitor) const override
    {
        if (m_theObject)
            m_theObject->accept(visitor);
    }
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlShared(*this); }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlShared; }
    bool read(NyXmlReader& reader) override
    {
        if (!NyXmlObject::read(reader))
            return false;
        bool isHere = true;
        std::shared_ptr<NyXmlObject> const object = NyXmlSharing::objectOfElement(
            reader, []() -> std::shared_ptr<NyXmlObject> { return std::make_shared<Object>(); }, isHere);
        m_theObject = std::dynamic_pointer_cast<Object>(object);
        return isHere && m_theObject ? m_theObject->read(reader) : NyXmlSharing::skip(reader, m_theObject != nullptr);
    }
    bool write(NyXmlWriter& writer) const override
    {
        if (!NyXmlObject::write(writer))
            return false;
        if (!m_theObject || !NyXmlSharing::beginsHere(writer, *m_theObject, m_theObject.use_count() > 1))
            return true;
        return m_theObject->write(writer);
    }
    bool writeSchema(NyXmlSchema& schema) const override
    {
        return NyXmlObject::writeSchema(schema) && Object().writeSchema(schema);
    }
    bool equalsDefault() const override { return !m_theObject; }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlShared const*>(other);
        return same != nullptr && NyXmlSharing::areEqual(m_theObject.get(), same->m_theObject.get());
    }
    /// That of the object.
    NyToken const& token() const override
    {
        static Object const theObject;
        return theObject.token();
    }

    // NyXmlMemberKind
    unsigned int minOccurs() const override { return 0; }
    std::unique_ptr<NyXmlObject> newItem() const override { return std::make_unique<Object>(); }
    std::vector<std::string> ownAttributes() const override { return { NyXmlSharing::numberName, NyXmlSharing::referenceName }; }

    // NyXmlOccurrence
    bool isAbsent() const override { return isInUse && !m_theObject; }
    void forget() override { m_theObject.reset(); }
    void writeElements(NyXmlWriter& writer, NyToken const& name) const override
    {
        if (m_theObject)
            NyXmlOccurrenceWork::writeElement(writer, name, *this);
    }

private:
    std::shared_ptr<Object> m_theObject;

    /// Set when the program is loaded, ahead of all documents.
    static inline bool const isInUse = NyXmlSharing::setInUse();
};

#endif
