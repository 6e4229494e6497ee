#include <nyXmlKit/model/NyXmlVersioned.h>

#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXmlKit/model/detail/NyXmlRegistrar.h>

#include <charconv>
#include <string>

namespace {

constexpr unsigned int latest = NyXmlVersions::latest;

/// Of the document, or part of one, that this thread reads; and of the class that says so.
struct Versions {
    unsigned int ofDocument = latest;
    unsigned int ofClass = latest;
};
thread_local Versions theVersions;

/// Gives the thread its versions back.
class Restored {
public:
    Restored() : m_before(theVersions) {}
    ~Restored() { theVersions = m_before; }
    Restored(Restored const&) = delete;
    Restored& operator=(Restored const&) = delete;

private:
    Versions const m_before;
};

NyToken const& versionToken()
{
    static NyToken const token("formatVersion");
    return token;
}

unsigned int versionOf(NyXmlReader& reader)
{
    std::string const text = reader.remainingNumOfAttributes() == 0 ? std::string() : reader.attributeValue(versionToken());
    unsigned int version = 1;
    if (!text.empty() && std::from_chars(text.data(), text.data() + text.size(), version).ec != std::errc())
        Ny::Print::write(Ny::Print::FAULT, "NyXmlVersioned Error: file not valid.\n\tNo version found.\n\tFile: %s\n\tLine: %d\n",
                         reader.filename(), reader.lineCountOfFile());
    return version;
}

enum class Search {
    unversioned, ///< the name is registered for all versions, or not at all
    found,
    otherVersion, ///< the name means nothing in this version
};

Search findVersioned(NyXmlClass const& ofClass, bool isAttribute, NyToken const& token, NyXmlClass::Versioned const*& entry)
{
    entry = nullptr;
    bool hidesCurrent = false;
    for (NyXmlClass::Versioned const& each : ofClass.versioned()) {
        if (each.isAttribute != isAttribute || each.name != token.localName())
            continue;
        if (each.versions.hold(theVersions.ofDocument == latest ? ofClass.currentVersion() : theVersions.ofDocument)) {
            entry = &each;
            return Search::found;
        }
        hidesCurrent = hidesCurrent || each.versions.hold(ofClass.currentVersion());
    }
    return hidesCurrent ? Search::otherVersion : Search::unversioned;
}

} // namespace

NyXmlVersioned::~NyXmlVersioned() = default;

void NyXmlVersioned::lift(unsigned int) {}

NyXmlClass const& NyXmlVersioned::ofClass() const { return dynamic_cast<NyXmlModelKind const&>(*this).xmlClass(); }

bool NyXmlVersioned::read(NyXmlReader& reader)
{
    Restored const restored;
    if (unsigned int const known = ofClass().version()) {
        theVersions = { versionOf(reader), known };
        if (theVersions.ofDocument > known) {
            Ny::Print::write(
                Ny::Print::FAULT,
                "NyXmlVersioned Warning: the document is of version %u, the program knows %u.\n\tFile: %s\n\tLine: %d\n",
                theVersions.ofDocument, known, reader.filename(), reader.lineCountOfFile());
            theVersions.ofDocument = known;
        }
    }
    bool const result = NyXmlCompoundType::read(reader);
    if (result && ofClass().hasRequired())
        NyXmlModelWork::reportMissing(*this, ofClass(), reader, theVersions.ofDocument);
    if (theVersions.ofDocument < theVersions.ofClass)
        lift(theVersions.ofDocument);
    return result;
}

bool NyXmlVersioned::write(NyXmlWriter& writer) const
{
    NyXmlObject::write(writer);
    if (unsigned int const version = ofClass().version()) {
        writer.setAttributeName(versionToken());
        writer << version;
    }
    return NyXmlModelWork::write(*this, ofClass(), writer);
}

bool NyXmlVersioned::writeSchemaAttributes(NyXmlSchema& schema) const
{
    if (ofClass().version() != 0) {
        schema.setAttributeName(versionToken());
        schema.setType(typeid(unsigned int));
    }
    return NyXmlCompoundType::writeSchemaAttributes(schema);
}

std::vector<std::string> NyXmlVersioned::ownAttributes() const
{
    return ofClass().version() == 0 ? std::vector<std::string>() : std::vector<std::string>{ versionToken().token() };
}

bool NyXmlVersioned::readValueFromToken(NyToken const& token, NyXmlReader& reader)
{
    NyXmlClass::Versioned const* entry = nullptr;
    switch (findVersioned(ofClass(), false, token, entry)) {
    case Search::unversioned: return NyXmlCompoundType::readValueFromToken(token, reader);
    case Search::otherVersion: return readValueFromSpecialToken(token, reader);
    case Search::found: break;
    }
    if (!entry->read)
        return false; // of no use any more: the caller passes over it
    entry->read(*this, reader, false);
    return true;
}

bool NyXmlVersioned::readAttributeFromToken(NyToken const& token, NyXmlReader& reader)
{
    NyXmlClass::Versioned const* entry = nullptr;
    switch (findVersioned(ofClass(), true, token, entry)) {
    case Search::unversioned: return NyXmlCompoundType::readAttributeFromToken(token, reader);
    case Search::otherVersion:
        Ny::Print::write(Ny::Print::FAULT, "Bad attribute token: %s on line %d\n", token.c_str(), reader.lineCountOfFile());
        return false;
    case Search::found: break;
    }
    if (!entry->read)
        return false;
    entry->read(*this, reader, true);
    return true;
}
