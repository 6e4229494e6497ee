#ifndef NYXMLKIT_MODEL_NYXMLCLASS_H
#define NYXMLKIT_MODEL_NYXMLCLASS_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <typeinfo>
#include <vector>

class NyXmlCompoundType;
class NyXmlObject;
class NyXmlOccurrence;
class NyXmlReader;

/// In which order an object writes its attributes, and behind them its elements.
enum class NyXmlOrder {
    byName,       ///< in ascending byte order of their names, as every compound does
    asRegistered, ///< a derived class's behind those of its base
};

/// Versions of a document, both ends included.
struct NyXmlVersions {
    static constexpr unsigned int latest = ~0u;

    unsigned int first;
    unsigned int last;

    constexpr bool hold(unsigned int version) const noexcept { return first <= version && version <= last; }
};

/// What all objects of one class have in common: what they register, and where in the object each member lies.
///
/// The first object of a class that is initialised tells it. A class whose objects register different members, or members that lie
/// elsewhere, is varying: its objects are asked for their component maps each time instead, which hold the order of names.
///
/// Everything here may be asked from any thread.
class NYXML_EXPORT NyXmlClass {
public:
    struct Member {
        bool isAttribute;
        bool isReadOnly;
        NyToken token;
        std::ptrdiff_t distance;   ///< from the compound to the object
        char const* scope;         ///< whose short name it is, or null for one that was registered by its token
        char const* name;          ///< that short name, a literal
        std::ptrdiff_t occurrence; ///< from the compound to the member's NyXmlOccurrence, or noOccurrence
        bool isRequired = false;   ///< must stand in every document
    };
    static constexpr std::ptrdiff_t noOccurrence = PTRDIFF_MIN;

    struct Members {
        std::vector<Member> registered; ///< each registration, in its order
        std::vector<Member> attributes; ///< one for each name, in the order of writing
        std::vector<Member> elements;
        std::vector<Member> required; ///< those of the two above
        bool hasOccurrences = false;  ///< there are members that write themselves
        bool isInOrderOfCore = false; ///< and the order is that of names
        bool hasReadOnly = false;
    };

    /// Reads an element or an attribute into an object of the class.
    using ReadOld = std::function<void(NyXmlCompoundType& compound, NyXmlReader& reader, bool isAttribute)>;

    /// A name that was registered for some versions of the document alone, see NyXmlVersioned.
    struct Versioned {
        bool isAttribute;
        std::string name;
        NyXmlVersions versions;
        ReadOld read; ///< empty for what nobody wants any more
        bool isRequired = false;
        std::ptrdiff_t distance = 0; ///< of a required one, as in Member
    };

    /// \param size     of an object, in bytes
    /// \param version  of the documents that the class writes, or 0
    NyXmlClass(std::type_info const& type, NyXmlOrder order, std::size_t size, unsigned int version = 0) noexcept
        : m_theType(type),
          m_theOrder(order),
          m_theSize(size),
          m_theVersion(version)
    {}
    ~NyXmlClass();
    NyXmlClass(NyXmlClass const&) = delete;
    NyXmlClass& operator=(NyXmlClass const&) = delete;

    std::type_info const& type() const noexcept { return m_theType; }
    NyXmlOrder order() const noexcept { return m_theOrder; }
    unsigned int version() const noexcept { return m_theVersion; }
    /// The version that registrations are made for: ours, or the latest.
    unsigned int currentVersion() const noexcept { return m_theVersion == 0 ? NyXmlVersions::latest : m_theVersion; }

    /// As registered by the first object; none before.
    std::vector<Versioned> const& versioned() const noexcept;

    /// Null before the first object was initialised, and for a varying class.
    Members const* members() const noexcept
    {
        return m_isVarying.load(std::memory_order_relaxed) ? nullptr : m_theMembers.load(std::memory_order_acquire);
    }
    bool isVarying() const noexcept { return m_isVarying.load(std::memory_order_relaxed); }

    /// Whether a member is required. Of a varying class: in any of its objects so far.
    bool isRequired(bool isAttribute, std::string const& localName) const noexcept;
    /// Whether any has been.
    bool hasRequired() const noexcept { return m_theRequired.load(std::memory_order_acquire) != nullptr; }

    /// The member of an object of this class.
    static NyXmlObject& object(NyXmlCompoundType const& compound, Member const& member) noexcept;
    /// The same as what may be absent; null if it may not.
    static NyXmlOccurrence* occurrence(NyXmlCompoundType const& compound, Member const& member) noexcept;

private:
    friend class NyXmlRegistrar;
    void publish(NyXmlCompoundType const& compound, std::vector<Member> registered) const;
    void publish(std::vector<Versioned> versioned) const;
    void addRequired(bool isAttribute, std::string const& localName) const;
    bool isInside(NyXmlCompoundType const& compound, std::ptrdiff_t distance) const noexcept;
    void setVarying() const noexcept { m_isVarying.store(true, std::memory_order_relaxed); }

    /// A list that only grows, since others may be looking at it.
    struct RequiredName {
        bool isAttribute;
        std::string name;
        RequiredName const* next;
    };

    std::type_info const& m_theType;
    NyXmlOrder m_theOrder;
    std::size_t m_theSize;
    unsigned int m_theVersion;
    mutable std::atomic<Members const*> m_theMembers{ nullptr };                  ///< ours
    mutable std::atomic<std::vector<Versioned> const*> m_theVersioned{ nullptr }; ///< ours
    mutable std::atomic<RequiredName const*> m_theRequired{ nullptr };            ///< ours, to its end
    mutable std::atomic<bool> m_isVarying{ false };
};

/// What is asked of every class that derives from NyXmlModel. Found by dynamic_cast.
class NYXML_EXPORT NyXmlModelKind {
public:
    virtual ~NyXmlModelKind();

    /// Order and members of the class.
    virtual NyXmlClass const& xmlClass() const = 0;

    /// Registers what the bases have. Called ahead of an object's own first registration.
    virtual void registerBases() = 0;
};

#endif
