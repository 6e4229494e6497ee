// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_VALUES_DETAIL_NYXMLENTRIES_H
#define NYXML_VALUES_DETAIL_NYXMLENTRIES_H

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyXmlExport.h>

#include <string>
#include <string_view>

/// Where a map puts what is read: the one thing in which maps differ.
class NYXML_EXPORT NyXmlEntrySink {
public:
    /// Reads a key and enters a default value under it, over any that stood there: the entry is there even if no value comes.
    virtual void readKey(NyXmlReader& reader) = 0;
    /// Reads that value in place.
    virtual void readValue(NyXmlReader& reader) = 0;

    /// Whether keys and values are the library's own basic values, so that an entry may come as two texts.
    virtual bool isOfTexts() const = 0;
    /// Does what readKey() and readValue() do in front of elements that hold these texts. \param reader  is not moved
    virtual void take(NyXmlReader& reader, std::string_view key, std::string_view value) = 0;

protected:
    ~NyXmlEntrySink() = default;
};

/// Where a pair puts what is read.
class NYXML_EXPORT NyXmlMemberSink {
public:
    virtual void readFirst(NyXmlReader& reader) = 0;
    virtual void readSecond(NyXmlReader& reader) = 0;

protected:
    ~NyXmlMemberSink() = default;
};

/// The document format of maps and pairs, for the families' own use: loops and messages, once for all types.
///
/// \code
///     <weights><element><key>left</key><value>1.5</value></element></weights>
///     <span><first>1</first><second>2</second></span>
/// \endcode
/// `where` is the signature of the reporting member.
namespace NyXmlEntries {

/// Reads the body of a map. \return false at the first child that is no entry, which is reported, and for an error of the reader
NYXML_EXPORT bool readMap(NyXmlReader& reader, char const* where, NyXmlEntrySink& sink);
NYXML_EXPORT void writeEntry(NyXmlWriter& writer, NyXmlObject const& key, NyXmlObject const& value);
/// \param key, value  default ones
NYXML_EXPORT void writeMapSchema(NyXmlSchema& schema, NyXmlObject const& key, NyXmlObject const& value);

/// Reads the body of a pair. A member answers to its tag and to its plain name, `first` or `second`.
/// \return false if there was another child, which is reported, and for an error of the reader
NYXML_EXPORT bool readPair(NyXmlReader& reader, char const* where, std::string const& firstTag, std::string const& secondTag,
                           NyXmlMemberSink& sink);
NYXML_EXPORT void writeMember(NyXmlWriter& writer, std::string const& tag, NyXmlObject const& member);
/// \param member  a default one
NYXML_EXPORT void writeMemberSchema(NyXmlSchema& schema, std::string const& tag, NyXmlObject const& member);

} // namespace NyXmlEntries

#endif
