// The pull parser: all its public calls, mixed, on a reader of exactly the class and on one of a subclass, which goes the plain way. Both
// must give the same, whatever the document is.

#include "Fuzz.h"

#include <nyXml/reader/NyXmlFileReader.h>

#include <istream>
#include <sstream>
#include <streambuf>

namespace {

class PlainReader : public NyXmlFileReader {
public:
    using NyXmlFileReader::NyXmlFileReader;
};

/// A document, and behind it elements without end.
class Endless : public std::streambuf {
public:
    explicit Endless(std::string text) : m_text(std::move(text))
    {
        setg(m_text.data(), m_text.data(), m_text.data() + m_text.size());
    }

private:
    int_type underflow() override
    {
        m_text = "<t a=\"1\" b=\"2\"> w </t>\n<!-- c -->";
        setg(m_text.data(), m_text.data(), m_text.data() + m_text.size());
        return traits_type::to_int_type(m_text.front());
    }

    std::string m_text;
};

std::string ask(NyXmlFileReader& reader, unsigned int question)
{
    switch (question) {
    case 0: return "inside " + (reader.mode() == NyXmlFileReader::XML_READER_START_TAG ? reader.getChildrenAsString() : "");
    case 1: return reader.element().token().empty() ? "" : "skipped " + std::to_string(reader.nextMatchingEndTag());
    case 2: return "word " + reader.contentByWord();
    case 3: return "count " + std::to_string(reader.contentCount());
    case 4: reader.setContentVectorFlag(true); return "words";
    case 5: return "first " + reader.attributeName().namespaceAndToken() + "=" + reader.attributeValue();
    case 6: return "b " + reader.attributeName(NyToken("b")).token() + "=" + reader.attributeValue(NyToken("b"));
    case 7:
        return "left " + std::to_string(reader.remainingNumOfAttributes()) + " of " + std::to_string(reader.numOfAttributes());
    case 8: return "line " + std::to_string(reader.lineCountOfFile());
    case 9: return "complex " + reader.getComplexStartTagFast();
    case 10: return "simple " + reader.getSimpleStartTagFast();
    case 11: return "attribute " + reader.getAttributeValueFast();
    case 12: return "last attribute " + reader.getLastAttributeValueFast();
    case 13: return "fast word " + reader.getContentByWordFast();
    case 14: reader.getEndTagFast(); return "end";
    case 15: reader.setErrorCode(0); return "code cleared";
    case 16: return "available " + std::to_string(reader.isContentAvailable());
    default: return "content " + reader.content();
    }
}

template <class Reader>
std::string transcript(Input choices)
{
    std::string seen;
    Said said;
    // The fast paths trust that their token is there and look for it without end, so then neither has the document one.
    bool const fastPaths = choices.below(4) == 0;
    int const steps = fastPaths ? 50 : 100000;
    {
        std::istringstream once(choices.document());
        Endless text(choices.document());
        std::istream endless(&text);
        Reader reader("doc.xml", fastPaths ? endless : once);
        Reader other(reader);
        for (int step = 0, ends = 0; step < steps && ends < 2; ++step) {
            auto const mode = reader.readXml();
            ends += mode == NyXmlFileReader::XML_READER_EOF || mode == NyXmlFileReader::XML_READER_ERROR ? 1 : 0;
            seen += "\n" + std::to_string(mode) + " " + reader.element().namespaceAndToken() + " code " +
                    std::to_string(reader.errorCode());
            for (unsigned int questions = choices.below(4); questions != 0 && ends == 0; --questions) {
                unsigned int const question = choices.below(24);
                bool const looksForName = question < 2;
                bool const looksForToken = question >= 9 && question <= 14;
                if (fastPaths ? !looksForName : !looksForToken)
                    seen += " | " + ask(reader, question);
            }
            if (choices.below(32) == 0) {
                other = reader; // the source's place in its text, and the own stream, which is the same
                reader = other;
            }
        }
    }
    return seen + '\n' + said.text();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input const choices(data, size);
    std::string const inPlace = transcript<NyXmlFileReader>(choices);
    std::string const plain = transcript<PlainReader>(choices);
    if (inPlace != plain)
        fault("the two ways differ\n--- in place\n" + inPlace + "\n--- plain\n" + plain);
    return 0;
}
