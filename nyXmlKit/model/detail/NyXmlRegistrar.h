// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_MODEL_DETAIL_NYXMLREGISTRAR_H
#define NYXMLKIT_MODEL_DETAIL_NYXMLREGISTRAR_H

#include <nyXml/platform/NyXmlExport.h>
#include <nyXmlKit/model/NyXmlClass.h>

#include <cstddef>
#include <vector>

class NyXmlReader;
class NyXmlSchema;
class NyXmlWriter;

/// Goes along with the registrations of one object, from its construction to its end: notes those of a class's first object, and
/// compares those of the others.
///
/// Hot: it lives once for each object that is read, and looks at each registration. Names are known by their address instead of being
/// made into tokens, and one look tells that all is as the last time.
class NYXML_EXPORT NyXmlRegistrar {
public:
    NyXmlRegistrar(NyXmlCompoundType& compound, NyXmlModelKind& kind);
    ~NyXmlRegistrar();
    NyXmlRegistrar(NyXmlRegistrar const&) = delete;
    NyXmlRegistrar& operator=(NyXmlRegistrar const&) = delete;

    /// Registers a member by its short name with registerComponent() or registerAttributeComponent().
    /// \param ofClass  of the compound, if the member is required; else null
    /// \param scope    name of the class, whose namespace is the element's
    static void enter(NyXmlCompoundType& compound, NyXmlClass const* ofClass, bool isAttribute, char const* scope,
                      char const* name, NyXmlObject* object);

    /// Notes a member that the document has in some versions alone.
    /// \return whether it is one of the present version, to be registered as well
    static bool enterVersioned(NyXmlCompoundType& compound, NyXmlClass const& ofClass, bool isRequired, bool isAttribute,
                               char const* name, NyXmlVersions versions, NyXmlObject* object);

    /// Notes a name of older versions. \param read  may be empty
    static void enterOld(NyXmlCompoundType& compound, bool isAttribute, char const* name, NyXmlVersions versions,
                         NyXmlClass::ReadOld read);

    /// Looks at a registration before the core does.
    static void note(NyXmlCompoundType const& compound, NyXmlModelKind const& kind, bool isAttribute, bool isReadOnly,
                     NyToken const& token, NyXmlObject* object);

private:
    void registerBasesOnce();
    static void enterAnew(NyXmlCompoundType& compound, NyXmlClass const* ofClass, bool isAttribute, char const* scope,
                          char const* name, NyXmlObject* object);
    static NyXmlRegistrar* noterOfVersions(NyXmlCompoundType const& compound);

    NyXmlCompoundType& m_theCompound;
    NyXmlModelKind& m_theKind;
    NyXmlClass const& m_theClass;
    NyXmlClass::Members const* m_theKnown;
    NyXmlRegistrar* m_theOuter;
    char const* m_theScope = nullptr; ///< of the registration that enter() makes
    char const* m_theName = nullptr;
    bool m_isRequired = false;                     ///< of the same
    bool m_isCompared = false;                     ///< enter() has looked at the registration that comes
    NyXmlClass::Member const* m_theNext = nullptr; ///< registration that is expected now
    NyXmlClass::Member const* m_theEnd = nullptr;
    bool m_hasBases = false; ///< registered, or being registered
    bool m_differs = false;
    std::vector<NyXmlClass::Member> m_theNoted;
    std::vector<NyXmlClass::Versioned> m_theVersioned;
};

/// What NyXmlModel does alike for every class.
namespace NyXmlModelWork {

/// "urn:x#name" for a name in the namespace of \p scope, or the name itself if it says its own.
NYXML_EXPORT NyToken tokenInScopeOf(char const* scope, char const* name);

NYXML_EXPORT bool sameMembers(NyXmlCompoundType const& one, NyXmlCompoundType const& two, NyXmlClass const& ofClass);

/// Before a reading: makes members absent that may be, and required ones unread.
NYXML_EXPORT void forget(NyXmlCompoundType& compound, NyXmlClass const& ofClass);

/// Behind a reading: says which required members the document did not have. Vectors, orientations and paths don't know whether they
/// were read.
/// \param version  of the document
NYXML_EXPORT void reportMissing(NyXmlCompoundType& compound, NyXmlClass const& ofClass, NyXmlReader const& reader,
                                unsigned int version = NyXmlVersions::latest);
NYXML_EXPORT bool tellsWhetherRead(NyXmlObject const& member);

/// What NyXmlCompoundType does, but an object that has required members is written also if it equals its default.
NYXML_EXPORT bool write(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, NyXmlWriter& writer);

/// Whether the core describes and writes the attributes, or elements, just as well.
NYXML_EXPORT bool describesAsCore(NyXmlCompoundType const& compound, NyXmlClass const& ofClass);
NYXML_EXPORT bool writesAsCore(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, NyXmlWriter const& writer);

/// Whether a member has a read-only mark: the compound's own answer.
using IsReadOnly = bool (*)(NyXmlCompoundType const& compound, NyToken const& token);
NYXML_EXPORT void writeAttributes(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, NyXmlWriter& writer,
                                  IsReadOnly isReadOnly);
NYXML_EXPORT void writeElements(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, NyXmlWriter& writer,
                                IsReadOnly isReadOnly);
NYXML_EXPORT void writeSchemaElements(NyXmlCompoundType const& compound, NyXmlClass const& ofClass, NyXmlSchema& schema);

} // namespace NyXmlModelWork

#endif
