// The two ways through a document are one to every caller: a reader of exactly the class and one of a subclass go over the same generated
// and damaged documents, are asked the same, and must answer the same: events, attributes, words, messages, codes and lines.

#include "CompoundSupport.h"
#include "ReaderSupport.h"

#include <nyXml/values/NyXmlListType.h>
#include <nyXml/values/NyXmlVectorType.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using Random = std::minstd_rand;

std::string oneOf(Random& random, std::vector<std::string> const& texts) { return texts[random() % texts.size()]; }

std::string aside(Random& random)
{
    return oneOf(random,
                 { "", "", "", "\n  ", "\r\n", "\n                    ", "<!-- c -->", "<!-- <x> - y='1' --->", "<?pi x?>" });
}

void addElement(Random& random, std::string& document, int depth)
{
    std::string const name = oneOf(random, { "a", "a", "b", "ab", "eight-by", "eight-bytes", "eight-bytez", "x:a", "p:q:r", "u#n",
                                             "a-name-too-long-for-a-short-string" });
    document += "<" + name;
    for (auto count = random() % 4; count != 0; --count) {
        std::string const quote = oneOf(random, { "'", "\"" });
        document += oneOf(random, { " ", "\n" }) +
                    oneOf(random, { "b", "c", "cc", "x:b", "xmlns", "xmlns:x", "xmlnsx", "xsi:t" }) +
                    oneOf(random, { "=", " = " }) + quote +
                    oneOf(random, { "1", "", "a#b", "a#b#c", "'", "\"", "p q", "two\nlines", "sixteen & more",
                                    "one & two#and # more than thirty-two bytes", NyXmlFileReader::m_schemaInstanceNamespace }) +
                    quote;
    }
    auto const shape = random() % 10;
    document += shape == 0 ? "/>" : ">";
    if (shape == 0)
        return;
    document += aside(random);
    if (shape < 5 || depth > 5)
        document += oneOf(random, { "text", " 1 2  3 ", "", "\n1 2\n", "&amp;", "sixteen bytes too",
                                    " a text of more than thirty-two bytes " }) +
                    aside(random);
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
    std::string document = oneOf(random, { "", "<?xml v='1.0'?>\n" });
    addElement(random, document, 0);
    if (random() % 64 == 0) { // more names than a reader remembers, twice
        std::string names;
        for (int i = 0; i != 700; ++i)
            names += "<n" + std::to_string(i % 350) + " k" + std::to_string(i % 350) + "='1'/>" + std::string(i % 350 == 0, '\n');
        document = "<" + std::string(70, 'n') + ">" + names + "</" + std::string(70, 'n') + ">";
    }
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
            auto const question = random() % 10;
            if (question == 9)
                said +=
                    " named " + reader.attributeName("b").token() + reader.attributeValue("b") + reader.attributeName().token();
            else if (question == 0)
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
            said += " of " + std::to_string(reader.numOfAttributes()) + " code " + std::to_string(reader.errorCode()) +
                    reader.filename();
            if (random() % 2 == 0)
                said += " line " + std::to_string(reader.lineCountOfFile());
            said += "\n";
        }
    }
    return said + messages.take();
}

// A value that overrides what it is asked through, and shows where the reader stands when it is.
class Watching : public NyXmlBasicType<int> {
public:
    bool read(NyXmlReader& reader) override
    {
        m_seen = std::to_string(reader.mode()) + reader.element().token() + " " + std::to_string(reader.lineCountOfFile()) +
                 reader.content() + std::to_string(reader.numOfAttributes());
        return NyXmlBasicType<int>::read(reader);
    }
    std::string m_seen;
};

// Leaves of every kind, beside what is no leaf.
class Leaves : public Model<Leaves> {
public:
    void registerComponents() override
    {
        registerAttributeComponent("id", &m_id);
        registerComponent(NyToken(ns, "a"), &m_text);
        registerComponent(NyToken(ns, "b"), &m_number);
        registerComponent(NyToken(ns, "c"), &m_watching);
        registerComponent(NyToken(ns, "d"), &m_place);
        registerComponent(NyToken(ns, "e"), &m_texts);
        registerComponent(NyToken(ns, "f"), &m_places);
        registerComponent(NyToken(ns, "g"), &m_ids);
        registerComponent(NyToken(ns, "h"), &m_flag);
        registerComponent(NyToken(ns, "NyInclude"), &m_id);
        registerComponent(NyToken(ns, "x:b"), &m_id);
    }
    std::string seen() const { return m_watching.m_seen + (m_flag.specified() ? " given" : "") + writtenValue(*this, true); }

private:
    NyXmlBasicType<unsigned int> m_id;
    NyXmlBasicType<double> m_number;
    NyXmlBasicType<std::string> m_text;
    Watching m_watching;
    NyXmlVector m_place;
    NyXmlVectorBasicType<NyXmlBasicType<std::string>> m_texts;
    NyXmlVectorType<NyXmlVector> m_places;
    NyXmlListType<NyXmlBasicType<unsigned int>> m_ids;
    NyXmlBasicType<bool> m_flag;
};
// The same with the lookup overridden, so that every child has to pass it.
class LeavesAskedFor : public Leaves {
public:
    std::string seen() const { return m_asked + Leaves::seen(); }

protected:
    bool readValueFromToken(NyToken const& token, NyXmlReader& reader) override
    {
        m_asked += token.token() + std::to_string(reader.lineCountOfFile());
        return Leaves::readValueFromToken(token, reader);
    }

private:
    std::string m_asked;
};

void addLeaf(Random& random, std::string& document, std::string const& name)
{
    std::string const text = oneOf(random, { "1", " 2.5 ", "2.5", "0.125", "3.5e1", "a b", "0", "", "x > y", "1\n" });
    std::string const place = oneOf(random, { "x=\"1\" y=\"2\" z=\"3\"", "x='1' y='2' z='3'", "y=\"2\" x=\"1\" z=\"3\"",
                                              "x=\"1.5\" y=\"0.25\" z=\"12.0625\"", "x=\"1.5\" y=\"2.5 \" z=\"3.5>\"",
                                              "x=\"1#4\" y=\"2\" z=\"\"", "x=\"1\" y=\"2\"" });
    bool const isInclude = name == "NyInclude"; // its attributes would be reported without end
    switch (isInclude ? 9 : random() % 9) {
    case 0: document += "<" + name + "/>"; break;
    case 1: document += "<" + name + " " + place + oneOf(random, { ">", "/>" }); break;
    case 2: document += "<" + name + ">" + text + "<!-- c -->" + text + "</" + name + " >"; break;
    case 3: document += "<p:" + name + ">" + text + "</p:" + name + ">"; break;
    case 4:
        document += "<" + name + ">" + text;
        addLeaf(random, document, "element");
        document += "</" + name + ">";
        break;
    default:
        if (name == "d" || (name == "element" && random() % 2 == 0))
            document += "<" + name + " " + place + "/>";
        else
            document += "<" + name + ">" + text + "</" + name + (random() % 32 == 0 ? "s>" : ">");
    }
}

std::string generatedLeaves(Random& random)
{
    std::vector<std::string> const names = { "a", "b", "c", "d", "e", "f", "g", "h", "NyInclude", "x:b", "other" };
    std::string document = "<v id='7'" + oneOf(random, { ">", " k='1'>" });
    bool const isInOrder = random() % 4 != 0;
    for (std::size_t i = 0; i != names.size(); ++i) {
        std::string const name = isInOrder ? names[i] : oneOf(random, names);
        document += aside(random);
        if (random() % 8 == 0 || (i > 7 && random() % 4 != 0))
            continue;
        if (name == "e" || name == "f" || name == "g") {
            document += "<" + name + " size='2'>" + aside(random);
            for (auto count = random() % 4; count != 0; --count)
                addLeaf(random, document, "element");
            document += "</" + name + ">";
        } else {
            addLeaf(random, document, name);
        }
    }
    document += "</v>";
    if (random() % 3 == 0)
        damage(random, document);
    if (random() % 3 == 0)
        document.insert(document.find('>') + 1, 16383 - random() % 400, " \n"[random() % 2]);
    return document;
}

template <class Reader, class Value>
std::string readLeaves(std::string const& document, Messages& messages)
{
    Value value;
    std::string said;
    {
        Open<Reader> open(document, 1);
        Reader& reader = open.reader;
        said += std::to_string(value.read(reader));
        for (int events = 0; events != 3; ++events) {
            said += " " + std::to_string(reader.mode()) + reader.element().token() + " '" + reader.content() + "' " +
                    std::to_string(reader.contentCount()) + " " + std::to_string(reader.lineCountOfFile()) + " " +
                    std::to_string(reader.numOfAttributes()) + reader.attributeName().token() +
                    std::to_string(reader.errorCode());
            reader.readXml();
        }
    }
    return said + value.seen() + messages.take();
}

TEST(ReaderTwins, ObjectsAreTheSameEitherWay)
{
    Messages messages;
    for (unsigned int seed = 0; seed < 3000; ++seed) {
        Random random(seed * 104729 + 1);
        std::string const document = generatedLeaves(random);
        auto const seen = readLeaves<NyXmlReader, Leaves>(document, messages);
        auto const asked = readLeaves<NyXmlReader, LeavesAskedFor>(document, messages);
        ASSERT_EQ(seen, (readLeaves<ApplicationReader, Leaves>(document, messages))) << "seed " << seed << "\n" << document;
        ASSERT_EQ(asked, (readLeaves<ApplicationReader, LeavesAskedFor>(document, messages))) << "seed " << seed << "\n"
                                                                                              << document;
    }
}

TEST(ReaderTwins, AgreeOnEveryInput)
{
    Messages messages;
    for (unsigned int seed = 0; seed < 6000; ++seed) {
        Random random(seed * 7919 + 1);
        std::string const document = generated(random);
        std::string const inPlace = transcript<NyXmlFileReader>(document, seed, messages);
        std::string const plain = transcript<PlainReader>(document, seed, messages);
        std::string const front = transcript<NyXmlReader>(document, seed, messages);
        ASSERT_TRUE(inPlace == plain && inPlace == front) << "seed " << seed << "\n"
                                                          << document.substr(0, 2000) << "\n"
                                                          << inPlace.substr(0, 2000);
    }
}

// A copy, and a reader that is assigned to in the middle of something else, stand where their source stands and see what it would see.
template <class Reader>
void expectCopiesToGoOn()
{
    std::string const document = "<p:r version='9.1' xmlns:p='u' k='0'><a b='1' c='2'/><d> 1 22\n3 </d>\n<e f='x'><g>t</g></e>"
                                 "<!-- c -->\n<p:h i='7'>9 8</p:h></p:r>\n";
    auto const readTo = [](Reader& reader, int events, int habit) {
        for (; events != 0; --events)
            reader.readXml();
        if (habit == 1 && reader.remainingNumOfAttributes() != 0)
            reader.attributeValue();
        if (habit == 1)
            reader.contentByWord();
        if (habit == 2)
            reader.setContentVectorFlag(true);
    };
    auto const left = [](Reader& reader) {
        std::string said = std::to_string(reader.mode()) + reader.element().namespaceAndToken() + reader.attributeName().token();
        auto const ask = [&] {
            said += " " + std::to_string(reader.numOfAttributes()) + std::to_string(reader.errorCode()) + reader.filename() +
                    std::to_string(reader.lineCountOfFile()) + std::to_string(reader.contentCount());
            if constexpr (std::is_base_of_v<NyXmlReader, Reader>)
                said += std::to_string(reader.versionFlag());
            said += reader.content() + "," + reader.content() + std::to_string(reader.isContentAvailable());
        };
        ask();
        for (int events = 0; events != 12; ++events) {
            reader.readXml();
            ask();
            said += seenAt(reader);
        }
        return said;
    };
    Messages messages;
    for (int events = 0; events != 12; ++events)
        for (int habit = 0; habit != 3; ++habit) {
            SCOPED_TRACE(events * 10 + habit);
            Open<Reader> expected(document), source(document), target("<q>\n<s z='9'>7 8</s>", 2, "other.xml");
            readTo(expected.reader, events, habit);
            readTo(source.reader, events, habit);
            Reader copy(source.reader);
            target.reader = source.reader;
            EXPECT_EQ(&copy.stream(), &source.stream);
            EXPECT_EQ(&target.reader.stream(), &target.stream);
            std::string const rest = left(expected.reader);
            EXPECT_EQ(left(copy), rest);
            if (events == 0)
                continue; // the copy has read what they share
            EXPECT_EQ(left(source.reader), rest);
            EXPECT_EQ(left(target.reader), rest);
        }
}

TEST(ReaderTwins, CopiesGoOnAsTheirSource)
{
    expectCopiesToGoOn<NyXmlFileReader>();
    expectCopiesToGoOn<PlainReader>();
    expectCopiesToGoOn<NyXmlReader>();
}

} // namespace
