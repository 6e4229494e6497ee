// The two ways through a document are one to every caller: a reader of exactly the class and one of a subclass go over the same generated
// and damaged documents, are asked the same, and must answer the same: events, attributes, words, messages, codes and lines.

#include "ReaderSupport.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using Random = std::minstd_rand;

std::string oneOf(Random& random, std::vector<std::string> const& texts) { return texts[random() % texts.size()]; }

std::string aside(Random& random)
{
    return oneOf(random, { "", "", "", "\n  ", "<!-- c -->", "<!-- <x> - y='1' --->", "<?pi x?>" });
}

void addElement(Random& random, std::string& document, int depth)
{
    std::string const name = oneOf(random, { "a", "b", "x:a", "p:q:r", "u#n", "a-name-too-long-for-a-short-string" });
    document += "<" + name;
    for (auto count = random() % 4; count != 0; --count) {
        std::string const quote = oneOf(random, { "'", "\"" });
        document += oneOf(random, { " ", "\n" }) + oneOf(random, { "b", "c", "x:b", "xmlns", "xmlns:x", "xsi:t" }) +
                    oneOf(random, { "=", " = " }) + quote +
                    oneOf(random, { "1", "", "a#b", "p q", "two\nlines", NyXmlFileReader::m_schemaInstanceNamespace }) + quote;
    }
    auto const shape = random() % 10;
    document += shape == 0 ? "/>" : ">";
    if (shape == 0)
        return;
    document += aside(random);
    if (shape < 5 || depth > 5)
        document += oneOf(random, { "text", " 1 2  3 ", "", "\n1 2\n", "&amp;" }) + aside(random);
    else
        for (auto count = random() % 4; count != 0; --count) {
            addElement(random, document, depth + 1);
            document += aside(random);
        }
    document += "</" + name + oneOf(random, { ">", ">", " >", "\n>" });
}

void damage(Random& random, std::string& document)
{
    std::string const bytes("<<>>//'\"=!-?#: a\n\0\xef", 20);
    for (auto count = random() % 4; count != 0 && !document.empty(); --count) {
        std::size_t const place = random() % document.size();
        switch (random() % 4) {
        case 0: document.erase(place, 1 + random() % 4); break;
        case 1: document.insert(place, 1, bytes[random() % bytes.size()]); break;
        case 2: document[place] = bytes[random() % bytes.size()]; break;
        case 3: document.insert(place, document.substr(random() % document.size(), random() % 20)); break;
        }
    }
}

std::string generated(Random& random)
{
    std::string document = oneOf(random, { "", "<?xml version='1.0'?>\n" });
    addElement(random, document, 0);
    if (random() % 4 != 0)
        damage(random, document);
    if (random() % 4 == 0) // brings the end of the first read into the document
        document.insert(random() % (document.size() + 1), 16383 - random() % 400, " \nx"[random() % 3]);
    return document;
}

// All answers to one series of questions.
template <class Reader>
std::string transcript(std::string const& document, unsigned int seed, Messages& messages)
{
    std::string said;
    Random random(seed);
    {
        Open<Reader> open(document);
        Reader& reader = open.reader;
        for (int ends = 0; ends != 2;) {
            auto const mode = reader.readXml();
            ends += mode == NyXmlFileReader::XML_READER_EOF || mode == NyXmlFileReader::XML_READER_ERROR ? 1 : 0;
            said += std::to_string(mode) + " " + reader.element().namespaceAndToken();
            auto const question = random() % 9;
            if (question == 0)
                said += " skipped " + std::to_string(reader.nextMatchingEndTag());
            else if (question == 1 && mode == NyXmlFileReader::XML_READER_START_TAG)
                said += " inside " + reader.getChildrenAsString();
            else if (question == 2)
                said += " word " + reader.contentByWord() + " of " + std::to_string(reader.contentCount());
            else if (question == 3) {
                reader.setContentVectorFlag(true);
                said += " words " + reader.content();
                (said += " ") += reader.takeContentWord();
                said += " more " + std::to_string(reader.isContentAvailable());
            } else if (question != 4)
                said += " " + seenAt(reader);
            said += " of " + std::to_string(reader.numOfAttributes()) + " code " + std::to_string(reader.errorCode());
            if (random() % 2 == 0)
                said += " line " + std::to_string(reader.lineCountOfFile());
            said += "\n";
        }
    }
    return said + messages.take();
}

TEST(ReaderTwins, AgreeOnEveryInput)
{
    Messages messages;
    for (unsigned int seed = 0; seed < 6000; ++seed) {
        Random random(seed * 7919 + 1);
        std::string const document = generated(random);
        std::string const inPlace = transcript<NyXmlFileReader>(document, seed, messages);
        std::string const plain = transcript<PlainReader>(document, seed, messages);
        ASSERT_TRUE(inPlace == plain) << "seed " << seed << "\n" << document.substr(0, 2000) << "\n" << inPlace.substr(0, 2000);
    }
}

} // namespace
