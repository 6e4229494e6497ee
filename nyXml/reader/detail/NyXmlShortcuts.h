// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_READER_DETAIL_NYXMLSHORTCUTS_H
#define NYXML_READER_DETAIL_NYXMLSHORTCUTS_H

#include <nyXml/reader/NyXmlFileReader.h>

#include <cstddef>
#include <string_view>
#include <typeinfo>

class NyToken;
class NyXmlReader;
class NyXmlWordSink;

/// What a subclass of NyXmlReader gives past its events, see NyXmlReader::offerShortcuts(). One for each class, which is why a copy of a
/// reader may go on with it.
struct NyXmlShortcuts {
    std::type_info const* reader; ///< a class derived from it may want to see every event
    bool (*takeText)(NyXmlReader& reader, NyToken const& name, std::string_view& text);
    bool (*takeAttributes)(NyXmlReader& reader, NyToken const& name, NyToken const* const* attributes, std::string_view* values,
                           std::size_t count);
    NyXmlFileReader::XML_READER_MODE (*readRun)(NyXmlReader& reader, NyXmlWordSink& words);
    std::string_view (*takeContent)(NyXmlReader& reader);
};

#endif
