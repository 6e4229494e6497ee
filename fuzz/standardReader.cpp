// The companion library's reader and writer of XML 1.0. Whatever the document is, Expat and the reader agree on whether it is well formed,
// and all calls of the reader, mixed, come to an end. Of a document that is whole, the writer makes one that says the same.

#include "Fuzz.h"

#include <nyXmlKit/standard/NyXmlStandardReader.h>
#include <nyXmlKit/standard/NyXmlStandardWriter.h>

#include <expat.h>

#include <memory>
#include <sstream>
#include <vector>

namespace {

/// Follows no links: the files of this machine are nobody's input.
class Reader : public NyXmlStandardReader {
public:
    using NyXmlStandardReader::NyXmlStandardReader;

protected:
    bool openFileTest() override { return false; }
    bool checkVersion() override { return true; }
};

/// Everything that the events say, and if \p writer is not null the same document again.
std::string eventsOf(std::string const& document, NyXmlWriter* writer)
{
    std::istringstream stream(document);
    Reader reader("doc.xml", stream);
    std::string seen;
    for (;;) {
        auto const mode = reader.readXml();
        switch (mode) {
        case NyXmlFileReader::XML_READER_START_TAG:
        case NyXmlFileReader::XML_READER_EMPTY_TAG:
            seen += "<" + reader.element().token();
            if (writer != nullptr)
                writer->writeStartTag(NyToken(reader.elementNamespace(), reader.element().token()));
            while (reader.remainingNumOfAttributes() != 0) {
                NyToken const name(reader.attributeNamespace(reader.attributeName()), reader.attributeName().token());
                std::string const& value = reader.attributeValue();
                seen += " " + name.token() + "=" + value;
                if (writer != nullptr) {
                    writer->setAttributeName(name);
                    *writer << value;
                }
            }
            seen += ">";
            if (mode == NyXmlFileReader::XML_READER_START_TAG)
                break;
            seen += "/";
            if (writer != nullptr)
                writer->writeEndTag();
            break;
        case NyXmlFileReader::XML_READER_CONTENT:
            seen += reader.content() + "/";
            if (writer != nullptr) {
                *writer << reader.content();
                writer->writeEndTag();
            }
            break;
        case NyXmlFileReader::XML_READER_END_TAG:
            seen += "/";
            if (writer != nullptr)
                writer->writeEndTag();
            break;
        case NyXmlFileReader::XML_READER_EOF: return seen;
        case NyXmlFileReader::XML_READER_ERROR: return "error";
        }
    }
}

XML_Error verdictOf(std::string const& document)
{
    std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> const parser(XML_ParserCreate(nullptr), XML_ParserFree);
    XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), 1);
    return XML_GetErrorCode(parser.get());
}

void compare(std::string const& document)
{
    Said said;
    XML_Error const verdict = verdictOf(document);
    std::string const seen = eventsOf(document, nullptr);
    if (verdict != XML_ERROR_UNKNOWN_ENCODING && (seen == "error") != (verdict != XML_ERROR_NONE))
        fault("Expat says " + std::to_string(verdict) + ", the reader " + seen + said.text());
    if (seen == "error")
        return;
    std::ostringstream stream;
    NyXmlStandardWriter writer("doc.xml", stream);
    writer.setNoNil(true);
    eventsOf(document, &writer);
    std::string const written = stream.str();
    if (verdictOf(written) != XML_ERROR_NONE)
        fault("not well formed: " + written + said.text());
    std::string const again = eventsOf(written, nullptr);
    // Names of other scripts that only some editions of XML have are mended.
    if (again != seen && said.text().find("no name in XML") == std::string::npos)
        fault("--- read\n" + seen + "\n--- written\n" + written + "\n--- read again\n" + again);
}

void ask(NyXmlReader& reader, unsigned int question)
{
    switch (question) {
    case 0: reader.getChildrenAsString(); break;
    case 1: reader.nextMatchingEndTag(); break;
    case 2: reader.contentByWord(); break;
    case 3: reader.contentCount(); break;
    case 4: reader.setContentVectorFlag(true); break;
    case 5: reader.attributeValue(); break;
    case 6: reader.attributeValue(NyToken("b")); break;
    case 7: reader.getComplexStartTagFast(); break;
    case 8: reader.getSimpleStartTagFast(); break;
    case 9: reader.getAttributeValueFast(); break;
    case 10: reader.getLastAttributeValueFast(); break;
    case 11: reader.getContentByWordFast(); break;
    case 12: reader.getEndTagFast(); break;
    case 13: reader.isContentAvailable(); break;
    default: reader.content(); break;
    }
}

void callAll(Input choices)
{
    Said said;
    std::istringstream stream(choices.document());
    Reader reader("doc.xml", stream);
    for (unsigned int ends = 0; ends != 2;) {
        auto const mode = reader.readXml();
        ends += mode == NyXmlFileReader::XML_READER_EOF || mode == NyXmlFileReader::XML_READER_ERROR ? 1 : 0;
        for (unsigned int questions = choices.below(5); questions != 0; --questions)
            ask(reader, choices.below(20));
        if (reader.depth() < reader.openElements().size())
            fault("the depth is " + std::to_string(reader.depth()));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input const choices(data, size);
    compare(choices.document());
    callAll(choices);
    return 0;
}
