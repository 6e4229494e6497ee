// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_COMPOUND_DETAIL_NYCOMPONENTSHAPE_H
#define NYXML_COMPOUND_DETAIL_NYCOMPONENTSHAPE_H

#include <nyXml/core/NyToken.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <typeinfo>
#include <utility>
#include <vector>

class NyXmlCompoundType;
class NyXmlObject;

enum class NyComponentKind : std::uint8_t { ELEMENT, ATTRIBUTE };

/// One entry of a shape.
struct NyComponent {
    NyToken token;
    std::uintptr_t distance; ///< from the compound to the component
    NyToken nameInDocuments; ///< the token without its namespace, as readers give it
    bool isPlainName;        ///< whether a tag of just the name's bytes is such an element
};

/// What tells the components of an object: the shape of its class, or maps of its own. The object has one pointer for both.
struct NyRegistered {
    explicit NyRegistered(bool shared) noexcept : isShape(shared) {}

    bool const isShape;
};

/// What the objects of one class register, shared by all of them: names, and where in its compound each component lies.
///
/// Hot: maps in every object cost 85 to 90 ns and 870 bytes for each compound of ten components. The first object of a class
/// fills its maps and leaves a shape; the later ones compare each of their registrations with it and go without maps as long as
/// all agree. So a shape promises nothing: a class whose objects differ, or whose components lie elsewhere, works with maps as
/// the first object did. A class that supplies its maps in its own way always does, and leaves an empty shape to say so.
///
/// Shapes are never changed and never freed; they are found and published from any thread, without a lock.
class NyComponentShape : public NyRegistered {
public:
    struct Registration {
        NyComponentKind kind;
        bool readOnly;
        NyToken token;
        std::uintptr_t distance;

        bool operator==(Registration const& other) const noexcept
        {
            return kind == other.kind && readOnly == other.readOnly && distance == other.distance && token == other.token;
        }
    };
    struct Mark {
        NyToken token;
        NyComponentKind kind;
    };

    /// A shape counts its registrations in 16 bits, as each compound does.
    static constexpr std::size_t maxRegistrations = 65535;

    /// What tells a class. Its type goes by address: that of one in a library that was unloaded may come again for another class,
    /// so the functions which the class runs for the operations that matter here go with it. At worst a class has two shapes, or
    /// its objects disagree with the one they find.
    struct Class {
        std::type_info const* type;
        std::array<std::uintptr_t, 10> operations;

        bool operator==(Class const& other) const noexcept { return type == other.type && operations == other.operations; }
    };

    NyComponentShape(Class const& ofClass, bool hasPlainLookup, std::vector<Registration> registrations);

    /// The shape of a class, or null.
    static NyComponentShape const* find(Class const& ofClass) noexcept;
    static NyComponentShape const& publish(Class const& ofClass, bool hasPlainLookup, std::vector<Registration> registrations);

    /// Whether an object of this type may go by this shape. One that its base class has initialised gets its own class's shape
    /// when it is looked into for the first time.
    bool isOf(std::type_info const& type) const noexcept { return m_class.type == &type; }

    /// Whether the class overrides none of the operations through which a document's names are looked up.
    bool hasPlainLookup() const noexcept { return m_hasPlainLookup; }

    /// In the order in which they are made.
    std::vector<Registration> const& registrations() const noexcept { return m_registrations; }

    /// By local name, one of each: what a component map would hold.
    std::vector<NyComponent> const& components(NyComponentKind kind) const noexcept
    {
        return kind == NyComponentKind::ELEMENT ? m_elements : m_attributes;
    }

    /// The read-only names, by local name.
    std::vector<Mark> const& marks() const noexcept { return m_marks; }

    /// The entry of this name, or null.
    template <class Entry>
    static Entry const* find(std::vector<Entry> const& entries, NyToken const& token) noexcept
    {
        auto const place = std::lower_bound(entries.begin(), entries.end(), token, isBefore<Entry>);
        return place == entries.end() || token < place->token ? nullptr : &*place;
    }
    template <class Entry>
    static bool isBefore(Entry const& entry, NyToken const& token) noexcept
    {
        return entry.token < token;
    }

    /// Where a component lies as seen from its compound. Modulo, so that it is defined for any two addresses: a component need
    /// not lie in its compound.
    static std::uintptr_t distance(NyXmlCompoundType const* from, NyXmlObject const* to) noexcept;
    static NyXmlObject* at(NyXmlCompoundType const* compound, std::uintptr_t distance) noexcept;

private:
    Class m_class;
    bool m_hasPlainLookup;
    std::vector<Registration> m_registrations;
    std::vector<NyComponent> m_elements;
    std::vector<NyComponent> m_attributes;
    std::vector<Mark> m_marks;
};

/// Notes what an object registers, from its construction to its end. Recorders of several objects may be nested.
class NyComponentRecorder {
public:
    explicit NyComponentRecorder(NyXmlCompoundType const& compound) noexcept;
    ~NyComponentRecorder();
    NyComponentRecorder(NyComponentRecorder const&) = delete;
    NyComponentRecorder& operator=(NyComponentRecorder const&) = delete;

    /// Does nothing if the innermost recorder is not the compound's. What is missed for that reason makes later objects disagree
    /// with the shape, nothing worse.
    static void note(NyXmlCompoundType const& compound, NyComponentKind kind, bool readOnly, NyToken const& token,
                     NyXmlObject const* object);

    std::vector<NyComponentShape::Registration> take() noexcept { return std::move(m_registrations); }

private:
    NyXmlCompoundType const& m_compound;
    NyComponentRecorder* m_outer;
    std::vector<NyComponentShape::Registration> m_registrations;
};

#endif
