#include "Support.h"

#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/values/NyXmlVectorBasicType.h>
#include <nyXml/values/NyXmlVectorType.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

template <class T>
using B = NyXmlBasicType<T>;
template <class T>
using VB = NyXmlVectorBasicType<B<T>>;
template <class E>
using V = NyXmlVectorType<E>;

/// A reader of an application: whatever knows the library's reader by its type has to take the plain way with it.
class PlainReader : public NyXmlReader {
    using NyXmlReader::NyXmlReader;
};

template <class Reader = NyXmlReader>
bool readFrom(NyXmlObject& value, std::string const& document)
{
    std::istringstream stream(document);
    Reader reader("in.xml", stream);
    reader.readXml();
    bool const result = value.read(reader);
    while (reader.mode() != NyXmlFileReader::XML_READER_EOF && reader.mode() != NyXmlFileReader::XML_READER_ERROR)
        reader.readXml();
    return result;
}

/// From the value's own tag on, without the prologue.
std::string written(NyXmlObject const& value)
{
    std::ostringstream stream;
    {
        NyXmlWriter writer("out.xml", stream);
        writer.writeStartTag(NyToken("urn:t#root"));
        writer.writeStartTagUsingParentNamespace(NyToken("v"));
        value.write(writer);
        writer.writeEndTag();
        writer.writeEndTag();
    }
    std::string const document = stream.str();
    return document.substr(document.find("<v"), document.rfind("</root>") - document.find("<v"));
}

std::string sizeMessage(std::string const& family, int expected, int actual, int line = 1)
{
    return family + " Error: array size not equal to attribute value -- " + std::to_string(expected) + ", actual -- " +
           std::to_string(actual) + "\nFilename: in.xml, Line count: " + std::to_string(line) + "\n";
}

struct Row {
    std::string document;
    bool result;
    std::vector<int> items;
    std::string message;
    std::vector<int> types;
};

} // namespace

TEST(Sequences, EveryMixOfRunsAndElementsIsRead)
{
    std::string const noData = "NyXmlVectorBasicType Error: XML parser should be in data mode\n";
    std::string const family = "NyXmlVectorBasicType";
    Row const rows[] = {
        { "<a/>", true, {}, "", {} },
        { "<a size='5'/>", true, {}, "", {} },
        { "<a size='0'></a>", true, {}, "", {} },
        { "<a size='3'><group>1 2\n\t3</group></a>", true, { 1, 2, 3 }, "", {} },
        { "<a size='2'><group>1</group><element>2</element></a>", true, { 1, 2 }, "", {} },
        { "<a size='5'><x>1</x><group>2 3</group><y/><group>4</group></a>", true, { 1, 2, 3, 0, 4 }, "", {} },
        { "<a other='9' size='1' zebra='8'><group>1</group></a>", true, { 1 }, "", {} },
        { "<a size='2'><group>1 2 3</group></a>", true, { 1, 2, 3 }, sizeMessage(family, 2, 3), { 3 } },
        { "<a size='1'>\n</a>", true, {}, sizeMessage(family, 1, 0, 2), { 3 } },
        { "<a><group>1</group></a>", true, { 1 }, sizeMessage(family, 0, 1), { 3 } },
        { "<a size='1'>1</a>", true, {}, sizeMessage(family, 1, 0), { 3 } },
        { "<a size='1'><group></group></a>", false, {}, noData, { 4 } },
        { "<a size='2'><element>7</element><group/></a>", false, { 7 }, noData, { 4 } },
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.document);
        for (bool plain : { false, true }) {
            Messages messages;
            VB<int> sequence(3, 99); // what it held is gone in every case
            EXPECT_EQ(plain ? readFrom<PlainReader>(sequence, row.document) : readFrom(sequence, row.document), row.result);
            EXPECT_EQ(sequence.vectorContainer(), row.items);
            EXPECT_EQ(messages.text(), row.message);
            std::vector<int> types = messages.types();
            types.erase(std::unique(types.begin(), types.end()), types.end()); // one for each piece
            EXPECT_EQ(types, row.types);
        }
    }
}

TEST(Sequences, MessagesNameTheirFamilyAndTheMember)
{
    Messages messages;
    V<B<bool>> flags;
    EXPECT_TRUE(readFrom(flags, "<a size='2'><group>1</group></a>"));
    EXPECT_NE(messages.locations().front().find("NyXmlVectorType"), std::string::npos);
    EXPECT_NE(messages.locations().front().find("read"), std::string::npos);
    EXPECT_EQ(messages.take(), sizeMessage("NyXmlVectorType", 2, 1));
    EXPECT_FALSE(readFrom(flags, "<a><group/></a>"));
    EXPECT_EQ(messages.take(), "NyXmlVectorType Error: XML parser should be in data mode\n");
}

TEST(Sequences, AReaderErrorEndsTheReadWithoutAnotherMessage)
{
    Messages messages;
    VB<int> sequence;
    EXPECT_FALSE(readFrom(sequence, "<a size='9'><group>1 2</group>x</a>"));
    EXPECT_EQ(sequence.size(), 2u);
    EXPECT_EQ(messages.text().find("NyXmlVectorBasicType"), std::string::npos);
}

TEST(Sequences, ASizeIsNotTrustedWithTheMemory)
{
    VB<double> numbers;
    EXPECT_THROW(readFrom(numbers, "<a size='-1'><group>1</group></a>"), std::length_error);
    EXPECT_THROW(readFrom(numbers, "<a size='3000000000'><group>1</group></a>"), std::length_error);

    Messages messages;
    V<V<B<std::string>>> texts;
    EXPECT_TRUE(readFrom(texts, "<a size='2147483647'><element size='1'><element>x</element></element></a>"));
    EXPECT_EQ(texts.size(), 1u);
    EXPECT_LE(texts.vectorContainer().capacity() * sizeof(texts[0]), std::size_t(64) << 20);
    EXPECT_TRUE(readFrom(numbers, "<a size='1000'><group>1</group></a>"));
    EXPECT_GE(numbers.vectorContainer().capacity(), 1000u);
}

// The run of the library's own reader takes words without a copy; every other reader goes through one item's read() a word.
TEST(Sequences, BothWaysThroughARunAgree)
{
    std::mt19937 random(7);
    std::string const alphabet = "0123456789-+.exinfa";
    for (int round = 0; round < 60; ++round) {
        std::string run = "x";
        for (int i = round; i != 0; --i) {
            run += " \n\t\r"[random() % 4];
            for (std::size_t length = 1 + random() % 12; length != 0; --length)
                run += alphabet[random() % alphabet.size()];
        }
        std::string const document =
            "<a><element>5</element><group>" + run + "</group><element/><group>7 " + run + "</group></a>";
        Messages messages;
        auto const agree = [&](auto fast, auto plain) {
            EXPECT_TRUE(readFrom(fast, document));
            EXPECT_TRUE(readFrom<PlainReader>(plain, document));
            EXPECT_EQ(fast.size(), 2u * static_cast<unsigned int>(round) + 5u);
            // in their written form, since a NaN is unequal to itself
            EXPECT_EQ(written(fast), written(plain)) << document;
        };
        agree(VB<double>(), VB<double>());
        agree(VB<int>(), VB<int>());
        agree(VB<unsigned short>(), VB<unsigned short>());
        agree(VB<unsigned char>(), VB<unsigned char>());
        agree(VB<char>(), VB<char>());
        agree(VB<std::string>(), VB<std::string>());
    }
}

// An empty element leaves some scalars alone. In a sequence of plain values that is the item before, since one temporary serves
// them all; a sequence of objects makes each item afresh.
// A run that spans blocks is handed over as it comes, before it is known what follows. Whatever that is, the outcome is that of the
// plain way, and so it is wherever the edges of the blocks fall.
TEST(Sequences, ALongRunMayTurnOutToBeNone)
{
    std::string run;
    for (int i = 0; run.size() < 40000; ++i)
        run += std::to_string(i) + (i % 7 == 0 ? " \n" : " ");
    std::string const ends[] = {
        "</group></v>",
        "  </group ></v>",
        "<!-- c --></group></v>",
        "<!-- c -->7 8</group></v>",
        "<?p?> <!-- > --></group></v>",
        "<b/></group></v>",
        "</x></v>",
        "",
        "<",
        "</group",
        "</group>text</v>",
        "<!-- c --><b/>",
        "<NyInclude/></group></v>",
        "+7 0x10 1e999 x</group><group>9</group></v>",
    };
    for (std::string const& end : ends)
        for (std::size_t shift = 0; shift < 12; ++shift) {
            SCOPED_TRACE(end + " behind " + std::to_string(shift));
            std::string const document = "<v size='3'><group>" + std::string(shift, ' ') + run + end;
            Messages messages;
            VB<double> fast, plain;
            bool const fastResult = readFrom(fast, document);
            std::string const fastMessages = messages.take();
            EXPECT_EQ(readFrom<PlainReader>(plain, document), fastResult);
            EXPECT_EQ(messages.take(), fastMessages);
            EXPECT_EQ(fast.vectorContainer(), plain.vectorContainer());
        }
    std::string const oneWord(50000, '1'); // no blank to cut at
    VB<double> fast, plain;
    Messages messages;
    EXPECT_EQ(readFrom(fast, "<v><group>" + oneWord + " 2</group></v>"),
              readFrom<PlainReader>(plain, "<v><group>" + oneWord + " 2</group></v>"));
    EXPECT_EQ(fast.vectorContainer(), plain.vectorContainer());
}

TEST(Sequences, AnEmptyItemIsTheOneBeforeOrTheDefault)
{
    std::string const document = "<a size='3'><element/><group>1</group><element/></a>";
    for (bool plain : { false, true }) {
        VB<short> values;
        EXPECT_TRUE(plain ? readFrom<PlainReader>(values, document) : readFrom(values, document));
        EXPECT_EQ(values.vectorContainer(), (std::vector<short>{ 0, 1, 1 }));
    }
    V<B<bool>> objects;
    EXPECT_TRUE(readFrom(objects, document));
    EXPECT_EQ(objects.vectorContainer(), (std::vector<B<bool>>{ false, true, false }));
}

TEST(Sequences, WrittenForms)
{
    VB<double> numbers(std::vector<double>{ 1, 2.5, 3 });
    EXPECT_EQ(written(numbers), "<v size=\"3\">\n  <group>1 2.5 3</group>\n </v>\n");
    EXPECT_EQ(written(VB<unsigned char>(2, 7)), "<v size=\"2\">\n  <group>7 7</group>\n </v>\n");
    EXPECT_EQ(written(VB<int>()), "<v size=\"0\"/>\n");
    EXPECT_EQ(written(V<B<bool>>(2, true)), "<v size=\"2\">\n  <group>1 1</group>\n </v>\n");
    std::string const two = "<v size=\"2\">\n  <element>a b</element>\n  <element>a b</element>\n </v>\n";
    EXPECT_EQ(written(VB<std::string>(2, "a b")), two);
    EXPECT_EQ(written(V<B<std::string>>(2, std::string("a b"))), two);
    EXPECT_EQ(written(V<VB<int>>(1, VB<int>(1, 4))),
              "<v size=\"1\">\n  <element size=\"1\">\n   <group>4</group>\n  </element>\n </v>\n");
}

TEST(Sequences, WhatIsWrittenReadsBack)
{
    Messages messages;
    V<V<VB<double>>> tables(2);
    tables.vectorContainer()[1].pushBack(VB<double>(25, 0.1));
    tables.vectorContainer()[1].pushBack(VB<double>());
    V<V<VB<double>>> again;
    EXPECT_TRUE(readFrom(again, written(tables)));
    EXPECT_TRUE(again == tables);

    VB<std::string> texts(std::vector<std::string>{ "a  b", "", "c" });
    VB<std::string> textsAgain;
    EXPECT_TRUE(readFrom(textsAgain, written(texts)));
    EXPECT_TRUE(textsAgain == texts);
    EXPECT_EQ(messages.text(), "");
}

TEST(Sequences, PiecesMakeADocument)
{
    VB<int> const sequence(std::vector<int>{ 1, 2 });
    std::ostringstream stream;
    NyXmlWriter* writer = nullptr;
    ASSERT_TRUE(sequence.writeHeaderToStream(stream, writer, "out.xml", NyToken("urn:t#root")));
    EXPECT_TRUE(sequence.writeBodyToStream(writer) && sequence.appendElementToStream(writer, 3));
    EXPECT_TRUE(sequence.writeFooterToStream(writer));
    EXPECT_EQ(writer, nullptr);

    Messages messages;
    VB<int> again;
    EXPECT_TRUE(readFrom(again, stream.str()));
    EXPECT_EQ(again.vectorContainer(), (std::vector<int>{ 1, 2, 3 }));
    EXPECT_NE(messages.text().find("attribute value -- 2, actual -- 3"), std::string::npos);

    V<B<std::string>> const texts(1, std::string("a b"));
    std::ostringstream other;
    ASSERT_TRUE(texts.writeHeaderToStream(other, writer, "out.xml", NyToken("urn:t#root")));
    EXPECT_TRUE(texts.writeBodyToStream(writer) && texts.writeFooterToStream(writer));
    EXPECT_NE(other.str().find("size=\"1\">\n <element>a b</element>\n</root>\n"), std::string::npos);

    other.setstate(std::ios::failbit);
    EXPECT_FALSE(texts.writeHeaderToStream(other, writer, "out.xml", NyToken("urn:t#root")));
    EXPECT_FALSE(texts.writeBodyToStream(writer) || texts.appendElementToStream(writer, {}) || texts.writeFooterToStream(writer));
}

TEST(Sequences, RangesAreCheckedAndIndicesNamed)
{
    Messages messages;
    VB<int> items(std::vector<int>{ 0, 1, 2, 3, 4 });
    EXPECT_TRUE(items.erase(1, 3) && items.erase(2) && items.erase(2, 2));
    EXPECT_EQ(items.vectorContainer(), (std::vector<int>{ 0, 3 }));
    EXPECT_FALSE(items.erase(2) || items.erase(0, 3) || items.erase(2, 1));
    EXPECT_EQ(messages.take(), "NyXmlVectorBasicType<ElementType>::erase(): index (2) exceeds vector size (2).\n"
                               "index (3) exceeds vector size (2).\n"
                               "first (2) is bigger than last (1).\n");
    V<B<bool>> empty;
    EXPECT_TRUE(empty.erase(0, 0));
    EXPECT_FALSE(empty.erase(0) || empty.leftRotate(0));
    EXPECT_EQ(messages.take(), "NyXmlVectorType<ElementType>::erase(): index (0) exceeds vector size (0).\n");

    items.append(items);
    EXPECT_TRUE(items.leftRotate(1) && items.leftRotate(0));
    EXPECT_FALSE(items.leftRotate(4));
    items.resizeToAtLeast(5);
    items.resizeToAtLeast(2);
    EXPECT_EQ(items.vectorContainer(), (std::vector<int>{ 3, 0, 3, 0, 0 }));
}
