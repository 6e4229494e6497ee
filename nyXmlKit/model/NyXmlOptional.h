#ifndef NYXMLKIT_MODEL_NYXMLOPTIONAL_H
#define NYXMLKIT_MODEL_NYXMLOPTIONAL_H

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>
#include <nyXmlKit/model/NyXmlObjectOf.h>

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

class NyXmlReader;
class NyXmlSchema;

/// The parts of NyXmlOptional and NyXmlRepeated that don't depend on their types. Not for applications.
namespace NyXmlOccurrenceWork {

/// Writes one element, tags included.
NYXML_EXPORT void writeElement(NyXmlWriter& writer, NyToken const& name, NyXmlObject const& object);

/// Whether the reader stands on an empty tag.
NYXML_EXPORT bool isEmptyTag(NyXmlReader const& reader);

} // namespace NyXmlOccurrenceWork

/// A value on the heap that is copied with its holder, and may be absent. What std::optional is for a class that is incomplete yet.
template <class Object>
class NyXmlBox {
public:
    NyXmlBox() = default;
    NyXmlBox(NyXmlBox const& other) : m_theObject(other ? std::make_unique<Object>(*other) : nullptr) {}
    NyXmlBox(NyXmlBox&&) noexcept = default;
    NyXmlBox& operator=(NyXmlBox const& other)
    {
        return *this = NyXmlBox(other); // a copy first: the source may lie in what we hold
    }
    NyXmlBox& operator=(NyXmlBox&&) noexcept = default;

    explicit operator bool() const noexcept { return m_theObject != nullptr; }
    Object& operator*() const noexcept { return *m_theObject; }
    template <class... Arguments>
    Object& emplace(Arguments&&... arguments)
    {
        m_theObject = std::make_unique<Object>(std::forward<Arguments>(arguments)...);
        return *m_theObject;
    }
    void reset() noexcept { m_theObject.reset(); }

private:
    std::unique_ptr<Object> m_theObject;
};

/// A member that is there or is not, and is written only if it is: an element or, if its class is one text, an attribute.
///
/// \code
///     NyXmlOptional<double> elevation;           // <ele>271.5</ele>, or nothing
///     elevation = 271.5;
///     if (elevation) plot(*elevation);           // the object; it converts to its value
///     double const height = elevation.valueOr(0);
///     elevation.reset();
/// \endcode
/// Copies and documents keep whether it is there. An object that is read anew forgets what it had. Of an element that stands several
/// times the last one counts. An empty tag in place of a number counts as absent.
///
/// In a class that derives from NyXmlCompoundType by hand an absent one is written as an empty element, unless defaults are left out, and
/// as an attribute without a value.
///
/// \tparam T        a plain value, an enumeration or a class of objects
/// \tparam Storage  where the object lives; NyXmlOwned is the form with a pointer
template <class T, class Storage = std::optional<typename NyXmlObjectOf<T>::Type>>
class NYXML_EXPORT NyXmlOptional : public NyXmlObject, public NyXmlOccurrence {
    static_assert(
        std::disjunction_v<std::is_same<Storage, NyXmlBox<typename NyXmlObjectOf<T>::Type>>, // that one need not be complete
                           NyXmlWholeClass<typename NyXmlObjectOf<T>::Type>>);

    // In this order: copies of an optional ask nothing of an object that is incomplete yet.
    template <template <class...> class Trait, class Target, class Value>
    static constexpr bool takes =
        std::conjunction_v<std::negation<std::is_same<Value, NyXmlOptional>>, Trait<Target, Value const&>>;

public:
    using Object = typename NyXmlObjectOf<T>::Type;
    static constexpr bool isOptional = true; ///< NyXmlModel refuses to require it

    NyXmlOptional() { static_assert(NyXmlWholeClass<Object>::value); }
    template <class Value, class = std::enable_if_t<takes<std::is_constructible, Object, Value>>>
    NyXmlOptional(Value const& value) // implicit, as values are
    {
        m_theStorage.emplace(value);
    }

    explicit operator bool() const noexcept { return static_cast<bool>(m_theStorage); }
    Object const& operator*() const noexcept { return *m_theStorage; } ///< only if it is there
    Object& operator*() noexcept { return *m_theStorage; }
    Object const* operator->() const noexcept { return &*m_theStorage; }
    Object* operator->() noexcept { return &*m_theStorage; }
    /// The object, made in its default state if it was absent.
    Object& make() { return m_theStorage ? *m_theStorage : m_theStorage.emplace(); }
    void reset() noexcept { m_theStorage.reset(); }
    /// The object converted, or \p other if it is absent.
    template <class Value>
    Value valueOr(Value other) const
    {
        return m_theStorage ? static_cast<Value>(*m_theStorage) : other;
    }
    template <class Value, class = std::enable_if_t<takes<std::is_assignable, Object&, Value>>>
    NyXmlOptional& operator=(Value const& value)
    {
        make() = value;
        return *this;
    }
    bool operator==(NyXmlOptional const& other) const { return equality(&other); }
    bool operator!=(NyXmlOptional const& other) const { return !equality(&other); }

    // NyXmlObject
    /// Shows the object; nothing if it is absent.
    void accept(NyXmlObjectVisitor* visitor) const override
    {
        if (m_theStorage)
            (*m_theStorage).accept(visitor);
    }
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlOptional(*this); }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlOptional; }
    bool read(NyXmlReader& reader) override
    {
        if (!NyXmlObject::read(reader))
            return false;
        m_theStorage.reset();
        if (isWord() && NyXmlOccurrenceWork::isEmptyTag(reader))
            return true;
        return m_theStorage.emplace().read(reader);
    }
    bool readAttribute(NyXmlReader& reader) override
    {
        if (!NyXmlObject::read(reader))
            return false;
        m_theStorage.reset();
        return m_theStorage.emplace().readAttribute(reader);
    }
    bool write(NyXmlWriter& writer) const override
    {
        return NyXmlObject::write(writer) && (!m_theStorage || (*m_theStorage).write(writer));
    }
    bool writeSchema(NyXmlSchema& schema) const override
    {
        return NyXmlObject::writeSchema(schema) && Object().writeSchema(schema);
    }
    bool equalsDefault() const override { return !m_theStorage; }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlOptional const*>(other);
        if (same == nullptr || !m_theStorage != !same->m_theStorage)
            return false;
        return !m_theStorage || (*m_theStorage).equality(&*same->m_theStorage);
    }
    /// That of the object.
    NyToken const& token() const override { return prototype().token(); }

    // NyXmlMemberKind
    unsigned int minOccurs() const override { return 0; }
    std::unique_ptr<NyXmlObject> newItem() const override { return std::make_unique<Object>(); }

    // NyXmlOccurrence
    bool isAbsent() const override { return !m_theStorage; }
    void forget() override { m_theStorage.reset(); }
    void writeElements(NyXmlWriter& writer, NyToken const& name) const override
    {
        if (m_theStorage)
            NyXmlOccurrenceWork::writeElement(writer, name, *m_theStorage);
    }

protected:
    Storage m_theStorage;

private:
    static Object const& prototype()
    {
        static Object const theObject;
        return theObject;
    }
    static bool isWord() { return prototype().isBasicType(); }
};

/// The same by a pointer that owns: costs 8 bytes where it is absent, and may hold the class that it is a member of.
/// \code
///     class Folder : public NyXmlModel<Folder> {
///         ...
///         NyXmlOwned<Folder> parent;
/// \endcode
template <class T>
using NyXmlOwned = NyXmlOptional<T, NyXmlBox<typename NyXmlObjectOf<T>::Type>>;

#endif
