#ifndef NYXML_TESTS_READERSUPPORT_H
#define NYXML_TESTS_READERSUPPORT_H

#include "Support.h"

#include <nyXml/reader/NyXmlFileReader.h>

#include <sstream>
#include <string>

/// Goes the plain way: an override, any override, must see every step.
class PlainReader : public NyXmlFileReader {
public:
    using NyXmlFileReader::NyXmlFileReader;
};

/// All that a caller sees of the event that the reader stands on, attributes taken.
template <class Reader>
std::string seenAt(Reader& reader)
{
    static char const* const names[] = { "eof", "start", "end", "empty", "content", "error" };
    auto const mode = reader.mode();
    std::string seen = names[mode];
    if (mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG)
        seen += " " + reader.element().token();
    if (mode == NyXmlFileReader::XML_READER_CONTENT)
        seen += " " + reader.content();
    while (reader.remainingNumOfAttributes() != 0) {
        seen += " " + reader.attributeName().token() + "=";
        seen += reader.attributeValue();
    }
    return seen;
}

/// The events up to the first end or error, as "start a b=1 | content text | eof".
template <class Reader>
std::string eventsLeft(Reader& reader)
{
    std::string seen;
    do {
        reader.readXml();
        seen += (seen.empty() ? "" : " | ") + seenAt(reader);
    } while (reader.mode() != NyXmlFileReader::XML_READER_EOF && reader.mode() != NyXmlFileReader::XML_READER_ERROR);
    return seen;
}

/// The report of a document called doc.xml that is not well formed.
inline std::string complaint(std::string const& text, int line = 1)
{
    return "NyXmlFileReader Error: file not well formed.\n\t" + text + "\n\tFile: doc.xml\n\tLine: " + std::to_string(line) +
           "\n";
}

/// A reader with its stream, some events on.
template <class Reader = NyXmlFileReader>
struct Open {
    explicit Open(std::string const& document, int events = 0, std::string const& name = "doc.xml")
        : stream(document),
          reader(name, stream)
    {
        for (; events != 0; --events)
            reader.readXml();
    }
    std::istringstream stream;
    Reader reader;
};

template <class Reader = NyXmlFileReader>
std::string eventsOf(std::string const& document, std::string const& name = "doc.xml")
{
    Open<Reader> open(document, 0, name);
    return eventsLeft(open.reader);
}

#endif
