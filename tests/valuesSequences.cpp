#include "ValueSupport.h"

#include <nyXml/values/NyXmlVectorBasicType.h>
#include <nyXml/values/NyXmlVectorType.h>

#include <algorithm>
#include <random>

namespace {

template <class T>
using B = NyXmlBasicType<T>;
template <class T>
using VB = NyXmlVectorBasicType<B<T>>;
template <class E>
using V = NyXmlVectorType<E>;

std::string sizeMessage(int expected, int actual, int line = 1)
{
    return "3:  Error: array size not equal to attribute value -- " + std::to_string(expected) + ", actual -- " +
           std::to_string(actual) + "\nFilename: in.xml, Line count: " + std::to_string(line) + "\n";
}

/// An item of an application, which is a thousandth of what stands in a document.
class Thousandth : public B<double> {
public:
    void setValueFromString(std::string const& text) override
    {
        B<double>::setValueFromString(text);
        setValue(value() / 1000);
    }
};

} // namespace

TEST(Sequences, EveryMixOfRunsAndElementsIsRead)
{
    std::string const noData = "4:  Error: XML parser should be in data mode\n";
    struct {
        std::string document;
        std::vector<int> items;
        std::string message;
    } const rows[] = {
        { "<a/>", {}, "" },
        { "<a size='5'/>", {}, "" },
        { "<a size='0'></a>", {}, "" },
        { "<a size='3'><group>1 2\n\t3</group></a>", { 1, 2, 3 }, "" },
        { "<a size='2'><group>1</group><element>2</element></a>", { 1, 2 }, "" },
        { "<a size='5'><x>1</x><group>2 3</group><y/><group>4</group></a>", { 1, 2, 3, 0, 4 }, "" },
        { "<a other='9' size='1' zebra='8'><group>1</group></a>", { 1 }, "" },
        { "<a size='2'><group>1 2 3</group></a>", { 1, 2, 3 }, sizeMessage(2, 3) },
        { "<a size='1'>\n</a>", {}, sizeMessage(1, 0, 2) },
        { "<a><group>1</group></a>", { 1 }, sizeMessage(0, 1) },
        { "<a size='1'>1</a>", {}, sizeMessage(1, 0) },
        { "<a size='1'><group></group></a>", {}, noData },
        { "<a size='2'><element>7</element><group/></a>", { 7 }, noData },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        auto const check = [&row](auto sequence, std::string const& family) { // what the sequence held is gone
            std::string message = row.message;
            EXPECT_EQ(saidOnReading(sequence, row.document), message.empty() ? message : message.insert(3, family));
            EXPECT_TRUE(std::equal(row.items.begin(), row.items.end(), sequence.vectorContainer().begin(),
                                   sequence.vectorContainer().end()));
        };
        VB<int> sequence(3, 99);
        check(sequence, "NyXmlVectorBasicType");
        check(V<B<int>>(3, 99), "NyXmlVectorType");
        expectBothWaysAgree(sequence, row.document);
    }
    Messages messages;
    VB<int> sequence;
    EXPECT_FALSE(readValue(sequence, "<a size='9'><group>1 2</group>x</a>"));
    EXPECT_EQ(sequence.vectorContainer(), (std::vector<int>{ 1, 2 }));
    EXPECT_EQ(messages.text().find("NyXmlVector"), std::string::npos); // the reader has said what is wrong
}

TEST(Sequences, ASizeIsNotTrustedWithTheMemory)
{
    VB<double> numbers;
    EXPECT_THROW(readValue(numbers, "<a size='-1'><group>1</group></a>"), std::length_error);
    EXPECT_THROW(readValue(numbers, "<a size='3000000000'><group>1</group></a>"), std::length_error);

    Messages messages;
    V<V<B<std::string>>> texts;
    EXPECT_TRUE(readValue(texts, "<a size='2147483647'><element size='1'><element>x</element></element></a>"));
    EXPECT_EQ(texts.size(), 1u);
    EXPECT_LE(texts.vectorContainer().capacity() * sizeof(texts[0]), std::size_t(64) << 20);
    EXPECT_TRUE(readValue(numbers, "<a size='1000'><group>1</group></a>"));
    EXPECT_GE(numbers.vectorContainer().capacity(), 1000u);
}

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
        SCOPED_TRACE(document);
        auto const agree = [&document](auto... sequences) { (expectBothWaysAgree(sequences, document), ...); };
        agree(VB<double>(), VB<int>(), VB<unsigned short>(), VB<unsigned char>(), VB<char>(), VB<std::string>());
    }
    NyXmlVectorBasicType<Thousandth> own;
    EXPECT_TRUE(readValue(own, "<a size='3'><group>500 1500</group><element>250</element></a>"));
    EXPECT_EQ(own.vectorContainer(), (std::vector<double>{ 0.5, 1.5, 0.25 }));
    EXPECT_EQ(writtenValue(own), writtenValue(VB<double>({ 0.5, 1.5, 0.25 })));
}

// A run that spans blocks is handed over as it comes, before it is known what follows. Whatever that is, the outcome is that of the
// plain way, and so it is wherever the edges of the blocks fall.
TEST(Sequences, ALongRunMayTurnOutToBeNone)
{
    VB<double> numbers;
    std::string run;
    for (int i = 0; run.size() < 40000; ++i)
        run += std::to_string(i) + (i % 7 == 0 ? " \n" : " ");
    for (std::string const& end : splitAtBars(
             "|</group></v>|  </group ></v>|<!-- c --></group></v>|<!-- c -->7 8</group></v>|<?p?> <!-- > --></group></v>|"
             "<b/></group></v>|</x></v>|<|</group|</group>text</v>|<!-- c --><b/>|<NyInclude/></group></v>|"
             "+7 0x10 1e999 x</group><group>9</group></v>"))
        for (std::size_t shift = 0; shift < 12; ++shift) {
            SCOPED_TRACE(end + " behind " + std::to_string(shift));
            expectBothWaysAgree(numbers, "<v size='3'><group>" + std::string(shift, ' ') + run + end);
        }
    expectBothWaysAgree(numbers, "<v><group>" + std::string(50000, '1') + " 2</group></v>"); // no blank to cut at
}

// An empty element leaves some scalars alone. In a sequence of plain values that is the item before, since one temporary serves
// them all; a sequence of objects makes each item afresh.
TEST(Sequences, AnEmptyItemIsTheOneBeforeOrTheDefault)
{
    std::string const document = "<a size='3'><element/><group>1</group><element/></a>";
    VB<short> values;
    V<B<bool>> objects;
    expectBothWaysAgree(values, document);
    expectBothWaysAgree(objects, document);
    EXPECT_EQ(values.vectorContainer(), (std::vector<short>{ 0, 1, 1 }));
    EXPECT_EQ(objects.vectorContainer(), (std::vector<B<bool>>{ false, true, false }));
}

// Runs of strings are never written, but they are read and therefore described.
TEST(Sequences, WhatIsWrittenReadsBackAndIsDescribed)
{
    Messages messages;
    auto const expectForm = [](auto const& sequence, std::string const& form, std::string const& description) {
        EXPECT_EQ(writtenValue(sequence), form);
        EXPECT_EQ(SchemaCalls::of(sequence), "size=j [2 element: " + description);
        auto again = sequence.nullObject();
        EXPECT_TRUE(readValue(again, form) && again == sequence);
    };
    expectForm(VB<double>(std::vector<double>{ 1, 2.5, 0.1 }),
               "<v size=\"3\">\n  <group>1 2.5 0.10000000000000000555</group>\n </v>\n", "d ] [1 group: d d ] ");
    expectForm(VB<unsigned char>(2, 7), "<v size=\"2\">\n  <group>7 7</group>\n </v>\n", "h ] [1 group: h h ] ");
    expectForm(VB<int>(), "<v size=\"0\"/>\n", "i ] [1 group: i i ] ");
    expectForm(V<B<bool>>(2, true), "<v size=\"2\">\n  <group>1 1</group>\n </v>\n", "b ] [1 group: b b ] ");
    std::string const texts = "<v size=\"2\">\n  <element>a  b</element>\n  <element></element>\n </v>\n";
    std::string const text = typeid(std::string).name();
    expectForm(VB<std::string>(std::vector<std::string>{ "a  b", "" }), texts,
               text + " ] [1 group: " + text + " " + text + " ] ");
    V<B<std::string>> strings(1, std::string("a  b"));
    strings.resize(2);
    expectForm(strings, texts, text + " ] ");
    V<V<B<bool>>> tables(2);
    tables.vectorContainer()[1].pushBack(true);
    expectForm(tables,
               "<v size=\"2\">\n  <element size=\"0\"/>\n  <element size=\"1\">\n   <group>1</group>\n  </element>\n"
               " </v>\n",
               "size=j [2 element: b ] [1 group: b b ] ] ");
    EXPECT_EQ(messages.text(), "");
}

TEST(Sequences, PiecesMakeADocument)
{
    auto const inPieces = [](auto const& sequence, auto const&... appended) {
        std::ostringstream stream;
        NyXmlWriter* writer = nullptr;
        EXPECT_TRUE(sequence.writeHeaderToStream(stream, writer, "out.xml", NyToken("urn:t#root")));
        EXPECT_TRUE(sequence.writeBodyToStream(writer) && (sequence.appendElementToStream(writer, appended) && ...));
        EXPECT_TRUE(sequence.writeFooterToStream(writer) && writer == nullptr);
        return stream.str().substr(stream.str().find(" size"));
    };
    EXPECT_EQ(inPieces(VB<int>(2, 1), 3), " size=\"2\">\n <group>1 1 3</group>\n</root>\n"); // the size is not known ahead
    V<B<std::string>> const texts(1, std::string("a b"));
    EXPECT_EQ(inPieces(texts, std::string("c")), " size=\"1\">\n <element>a b</element>\n <element>c</element>\n</root>\n");

    std::ostringstream failed;
    failed.setstate(std::ios::failbit);
    NyXmlWriter* writer = nullptr;
    EXPECT_FALSE(texts.writeHeaderToStream(failed, writer, "out.xml", NyToken("urn:t#root")));
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
