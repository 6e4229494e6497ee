#include "ValueSupport.h"

#include <nyXml/values/NyXmlListType.h>
#include <nyXml/values/NyXmlMapType.h>
#include <nyXml/values/NyXmlPairType.h>
#include <nyXml/values/NyXmlSetType.h>
#include <nyXml/values/NyXmlVectorType.h>

#include <gtest/gtest.h>

#include <list>
#include <map>
#include <set>
#include <string>

namespace {

template <class T>
using B = NyXmlBasicType<T>;
using Ids = NyXmlSetType<B<unsigned int>>;
using Row = NyXmlListType<B<unsigned int>>;
using Weights = NyXmlMapType<B<std::string>, B<double>>;
using Span = NyXmlPairType<B<double>, B<double>>;

std::string listed(Row const& row)
{
    std::string text;
    for (unsigned int item : row.listContainer())
        text += std::to_string(item) + " ";
    return text;
}

std::string listed(Ids const& ids)
{
    std::string text;
    for (unsigned int item : ids.setContainer())
        text += std::to_string(item) + " ";
    return text;
}

template <class Map>
std::string listed(Map const& map)
{
    std::ostringstream text;
    for (auto const& entry : map.mapContainer())
        text << entry.first.value() << "=" << entry.second.value() << " ";
    return text.str();
}

std::string sizeMessage(std::string const& word, int expected, int actual)
{
    return (word == "set" ? "NyXmlSetType Error: " : "NyXmlListType Error: ") + word + " size not equal to attribute value -- " +
           std::to_string(expected) + ", actual -- " + std::to_string(actual) + "\n";
}

std::string formatMessage(int line)
{
    return "NyXmlMapType Error: file not valid.\n\tKey map format not correct.\n\tFile: in.xml\n\tLine: " + std::to_string(line) +
           "\n";
}

} // namespace

TEST(Containers, SetsAndListsReadEveryMixOfRunsAndElements)
{
    struct {
        std::string document;
        bool result;
        std::string list;
        std::string set;
        int expected; // in the size message; -1 for no message
        int actual;
    } const rows[] = {
        { "<a/>", true, "", "", -1, 0 },
        { "<a size='2'/>", true, "", "", -1, 0 },
        { "<a></a>", true, "", "", -1, 0 },
        { "<a other='1' size='3'><group>5 1 2</group></a>", true, "5 1 2 ", "1 2 5 ", -1, 0 },
        { "<a size='4'><x>9</x><group>3 4</group><element>1</element></a>", true, "9 3 4 1 ", "1 3 4 9 ", -1, 0 },
        { "<a size='1'><group>7 7</group></a>", true, "7 7 ", "7 ", 1, 2 }, // what was there already counts
        { "<a><group>7</group></a>", true, "7 ", "7 ", 0, 1 },
        { "<a size='2'></a>", true, "", "", 2, 0 },
        { "<a size='2'><element>8</element>x</a>", false, "8 ", "8 ", -1, 0 },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        Row list;
        list.pushBack(99u); // is gone in every case
        Ids set;
        set.add(99u);
        Messages messages;
        EXPECT_EQ(readValue(list, row.document), row.result);
        EXPECT_EQ(listed(list), row.list);
        std::string const ofList = messages.take();
        EXPECT_EQ(readValue(set, row.document), row.result);
        EXPECT_EQ(listed(set), row.set);
        if (!row.result) {
            EXPECT_EQ(ofList.find("NyXmlListType"), std::string::npos); // the reader has said it
            continue;
        }
        EXPECT_EQ(ofList, row.expected < 0 ? "" : sizeMessage("list", row.expected, row.actual));
        if (row.expected >= 0) {
            EXPECT_EQ(messages.types().front(), 3);
            EXPECT_NE(messages.locations().front().find("NyXmlSetType"), std::string::npos);
        }
        EXPECT_EQ(messages.take(), row.expected < 0 ? "" : sizeMessage("set", row.expected, row.actual));
    }
}

TEST(Containers, ARunWithoutContentIsAFault)
{
    Messages messages;
    Row list;
    Ids set;
    EXPECT_FALSE(readValue(list, "<a size='2'><element>1</element><group/></a>"));
    EXPECT_EQ(messages.types().front(), 4);
    EXPECT_EQ(messages.take(), "NyXmlListType Error: XML parser should be in data mode\n");
    EXPECT_EQ(listed(list), "1 ");
    EXPECT_FALSE(readValue(set, "<a size='2'><group></group></a>"));
    EXPECT_EQ(messages.take(), "NyXmlSetType Error: XML parser should be in data mode\n");
}

// Where an empty element leaves a value alone, it is that of the item before; in a sequence each item starts anew.
TEST(Containers, OneItemServesAllReadsOfASetOrList)
{
    std::string const document = "<a size='3'><element>7</element><element/><element></element></a>";
    Row list;
    Ids set;
    NyXmlVectorType<B<unsigned int>> sequence;
    EXPECT_TRUE(readValue(list, document) && readValue(set, document) && readValue(sequence, document));
    EXPECT_EQ(listed(list), "7 7 7 ");
    EXPECT_EQ(listed(set), "7 ");
    EXPECT_EQ(sequence[1].value(), 0u);

    NyXmlListType<NyXmlVector> vectors;
    Messages messages;
    EXPECT_TRUE(readValue(vectors, "<a size='2'><element x='1' y='2' z='3'/><element x='9'/></a>"));
    EXPECT_TRUE(vectors.listContainer().back() == NyVector(9, 2, 3));
    NyXmlVectorType<NyXmlVector> anew;
    EXPECT_TRUE(readValue(anew, "<a size='2'><element x='1' y='2' z='3'/><element x='9'/></a>"));
    EXPECT_TRUE(anew[1] == NyVector(9, 0, 0));
}

TEST(Containers, ARunOfWhatTakesNoWordsEnds)
{
    Messages messages;
    NyXmlListType<NyXmlVector> list;
    EXPECT_TRUE(readValue(list, "<a size='1'><group q='1'>1 2 3</group></a>"));
    EXPECT_EQ(list.size(), 1u);
    NyXmlVectorType<NyXmlMapType<B<std::string>, B<double>>> maps;
    EXPECT_TRUE(readValue(maps, "<a size='1'><group>1 2 3</group></a>"));
    EXPECT_EQ(maps.size(), 1u);
    EXPECT_TRUE(readValue<ApplicationReader>(list, "<a size='1'><group>1 2 3</group></a>"));
}

TEST(Containers, SetsAndListsAreWrittenInTheirOrder)
{
    Ids set;
    Row list;
    EXPECT_EQ(writtenValue(set), "<v xsi:nil=\"true\"/>\n"); // empty: no size
    EXPECT_EQ(writtenValue(list), "<v xsi:nil=\"true\"/>\n");
    for (unsigned int item : { 5u, 1u, 5u }) {
        set.add(item);
        list.pushBack(item);
    }
    list.pushFront(8u);
    EXPECT_EQ(writtenValue(set), "<v size=\"2\">\n  <group>1 5</group>\n </v>\n");
    EXPECT_EQ(writtenValue(list), "<v size=\"4\">\n  <group>8 5 1 5</group>\n </v>\n");
    EXPECT_TRUE(list.erase(5u)); // the first of two, and no other
    EXPECT_FALSE(list.erase(7u));
    EXPECT_EQ(listed(list), "8 1 5 ");
    EXPECT_TRUE(set.erase(5u) && !set.erase(5u) && !set.find(5u) && set.find(1u));

    NyXmlListType<NyXmlVector> vectors;
    vectors.pushBack(NyVector(1, 2, 3));
    vectors.pushFront(NyVector());
    std::string const written = writtenValue(vectors);
    EXPECT_EQ(written, "<v size=\"2\">\n  <element x=\"0\" y=\"0\" z=\"0\"/>\n  <element x=\"1\" y=\"2\" z=\"3\"/>\n </v>\n");
    NyXmlListType<NyXmlVector> back;
    EXPECT_TRUE(readValue(back, written) && back == vectors && back.equality(&vectors) && !back.equality(&list));
}

TEST(Containers, Schemas)
{
    EXPECT_EQ(SchemaCalls::of(Ids()), "[2 element: [1 key: j ] ] ");
    EXPECT_EQ(SchemaCalls::of(NyXmlListType<NyXmlVector>()), "[2 element: [1 key: x=d y=d z=d ] ] ");
    EXPECT_EQ(SchemaCalls::of(NyXmlMapType<B<unsigned int>, Ids>()),
              "[2 element: [1 key: j ] [1 value: [2 element: [1 key: j ] ] ] ] ");
    Span span;
    span.setXmlTagNames("from", "to");
    EXPECT_EQ(SchemaCalls::of(span), "[1 from: d ] [1 to: d ] ");
}

TEST(Containers, MapsReadEntriesAndRefuseWhatIsNone)
{
    std::string const one = "<element><key>a</key><value>1</value></element>";
    std::string const received = "\tExpected element but received entry.\n";
    struct {
        std::string body;
        bool result;
        std::string entries;
        std::string message;
    } const rows[] = {
        { "", true, "", "" },
        { one, true, "a=1 ", "" },
        { one + "<element>\n<key>a</key> <value>2</value></element>", true, "a=2 ", "" }, // the later one stays
        { "<element><key>b b</key><value>2</value></element>" + one, true, "a=1 b b=2 ", "" },
        { "<element><key>a</key><value/></element>", true, "a=0 ", "" },
        { "<element><key></key><value></value></element>", true, "=0 ", "" },
        { "<element><any>a</any><other p='1' q='2'>3</other></element>" + one, true, "a=1 ",
          "" },                                         // names and attributes: no matter
        { one + "<element/>" + one, true, "a=1 ", "" }, // the map is over, in silence
        { one + "\n<entry><key>b</key></entry>", false, "a=1 ", formatMessage(2) + received },
        { one + "<element><key/><value>1</value></element>", false, "a=1 ", formatMessage(1) },
        { "<element></element>", false, "", formatMessage(1) },
        { "<element><key>a</key></element>", false, "a=0 ", formatMessage(1) },
        { "<element><key>a</key><value>1</value><value>2</value></element>", false, "a=1 ", formatMessage(1) },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.body);
        for (bool isPlain : { false, true }) {
            Messages messages;
            Weights map(std::string("old"), 9.0);
            std::string const document = "<m>" + row.body + "</m>";
            EXPECT_EQ(isPlain ? readValue<ApplicationReader>(map, document) : readValue(map, document), row.result);
            EXPECT_EQ(listed(map), row.entries);
            std::string const text = messages.text(); // behind a refusal the test itself reads on and may hear more
            EXPECT_EQ(text.substr(0, row.message.size()), row.message);
            EXPECT_EQ(text.empty(), row.message.empty()) << text;
            EXPECT_TRUE(row.message.empty() || messages.types().front() == 4);
        }
    }
}

// The library's own reader takes plain entries of basic values whole; nobody may see a difference, wherever the document is cut and wherever
// a block ends.
TEST(Containers, BothWaysThroughAMapAgree)
{
    std::string document = "<m a='1'>\n";
    for (char const* entry :
         { "<element><key> k1 </key><value>1.5</value></element>", "<element>\n<key>k2</key>\n<value>x</value>\n</element>",
           "<element><key>k0</key><value></value></element>", "<element><key>k1</key><value>7<!-- c --></value></element>",
           "<element ><key>k3</key><value>2</value></element>", "<element><key>k4</key><value u='1'>3</value></element>",
           "<!-- c --><element><key>k5</key><value>4</value></element>", "<element><key>k6</key><value>5</value></element >" })
        document += std::string(" ") + entry + "\n";
    document += "</m>\n";

    auto const seen = [](auto* reader, auto map, std::string const& text) {
        Messages messages;
        std::string events;
        bool const result = readValue<std::remove_pointer_t<decltype(reader)>>(map, text, &events);
        return std::to_string(result) + "\n" + listed(map) + "\n" + events + messages.text();
    };
    NyXmlReader* const fast = nullptr;
    ApplicationReader* const plain = nullptr;
    for (std::size_t size = 0; size <= document.size(); ++size) {
        SCOPED_TRACE(document.substr(0, size));
        ASSERT_EQ(seen(fast, Weights(), document.substr(0, size)), seen(plain, Weights(), document.substr(0, size)));
        std::string const padded = "<m>" + std::string(16383 - 3 - size, ' ') + document.substr(10);
        ASSERT_EQ(seen(fast, Weights(), padded), seen(plain, Weights(), padded));
    }
    NyXmlMapType<B<unsigned int>, B<std::string>> const numbered;
    ASSERT_EQ(seen(fast, numbered, document), seen(plain, numbered, document));
}

// One object serves all keys, and each value starts anew.
TEST(Containers, AKeyMayBeThatOfTheEntryBeforeAndAValueIsNot)
{
    NyXmlMapType<B<unsigned int>, B<unsigned int>> map;
    EXPECT_TRUE(readValue(map, "<m><element><key>4</key><value>9</value></element>"
                               "<element><key></key><value/></element></m>"));
    EXPECT_EQ(listed(map), "4=0 ");
}

TEST(Containers, MapsAreWrittenInKeyOrder)
{
    NyXmlMapType<B<unsigned int>, Ids> map;
    EXPECT_EQ(writtenValue(map), "<v xsi:nil=\"true\"/>\n");
    Ids ids;
    ids.add(3u);
    map.add(20u, ids);
    map.add(3u, Ids());
    std::string const written = writtenValue(map);
    EXPECT_EQ(written,
              "<v>\n  <element>\n   <key>3</key>\n   <value xsi:nil=\"true\"/>\n  </element>\n"
              "  <element>\n   <key>20</key>\n   <value size=\"1\">\n    <group>3</group>\n   </value>\n  </element>\n </v>\n");
    NyXmlMapType<B<unsigned int>, Ids> back;
    EXPECT_TRUE(readValue(back, written) && back == map && back.equality(&map) && !back.equality(&ids));
}

TEST(Containers, MapsFindKeysAndPlaces)
{
    Weights map(std::string("m"), 1.0);
    map.add(std::string("b"), 2.0);
    map.add(std::string("m"), 3.0);
    EXPECT_EQ(listed(map), "b=2 m=3 ");

    B<double> value = 7.0;
    B<std::string> key = std::string("x");
    unsigned int index = 9;
    EXPECT_FALSE(map.lookup(key, value) || map.indexKey(2, key) || map.keyIndex(key, index));
    EXPECT_TRUE(value == 7.0 && key == "x" && index == 2 && map.lookupPointer(key) == nullptr);
    EXPECT_TRUE(map.indexKey(1, key) && map.keyIndex(key, index) && map.lookup(key, value));
    EXPECT_TRUE(value == 3.0 && key == "m" && index == 1 && *map.lookupPointer(key) == 3.0);

    Weights other(map);
    *other.lookupPointer(key) = 4.0;
    EXPECT_FALSE(other == map);
    EXPECT_TRUE(other.erase(key) && !other.erase(key) && !(other == map));
    EXPECT_FALSE(Weights().keyIndex(key, index));
    EXPECT_EQ(index, 0u);
}

TEST(Containers, PairsReadTheirMembersByNameInAnyOrder)
{
    std::string const format = "NyXmlPairType Error: file not valid.\n\tFormat not correct.\n\tFile: in.xml\n\tLine: 1\n"
                               "\tExpected from or to but received ";
    struct {
        std::string document;
        bool result;
        double first;
        double second;
        std::string message;
    } const rows[] = {
        { "<a/>", true, 8, 9, "" },
        { "<a></a>", true, 8, 9, "" },
        { "<a><from>1</from><to>2</to></a>", true, 1, 2, "" },
        { "<a><to>2</to><from>1</from></a>", true, 1, 2, "" },
        { "<a><first>1</first><to>2</to><second>3</second></a>", true, 1, 3, "" }, // the plain names too; the last one wins
        { "<a><to>2</to></a>", true, 8, 2, "" },
        { "<a><from/></a>", true, 0, 9, "" },
        { "<a><from>1</from><x>5</x><to>2</to></a>", false, 1, 9, format + "x.\n" }, // ends at the content of what is not known
        { "<a><x/><from>1</from></a>", false, 1, 9, format + "x.\n" },
        { "<a><x><y><from>1</from></y></x></a>", false, 1, 9, format + "x.\n" + format + "y.\n" },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        Messages messages;
        Span span(8.0, 9.0);
        span.setXmlTagNames("from", "to");
        EXPECT_EQ(readValue(span, row.document), row.result);
        EXPECT_EQ(span.first(), row.first);
        EXPECT_EQ(span.second(), row.second);
        EXPECT_EQ(messages.text(), row.message);
        EXPECT_TRUE(row.message.empty() || messages.types().front() == 4);
    }
}

TEST(Containers, PairsAreWrittenUnderTheirTags)
{
    NyXmlPairType<NyXmlVector, NyXmlVector> span;
    span.set(NyVector(1, 2, 3), NyVector());
    EXPECT_EQ(writtenValue(span), "<v>\n  <first x=\"1\" y=\"2\" z=\"3\"/>\n  <second x=\"0\" y=\"0\" z=\"0\"/>\n </v>\n");
    span.setXmlTagNames("from", "to");
    NyXmlPairType<NyXmlVector, NyXmlVector> copy(span);
    EXPECT_EQ(writtenValue(copy), writtenValue(span));
    EXPECT_TRUE(copy == span && !(copy == copy.nullObject()));
    copy.pairContainer().second.setX(5);
    EXPECT_EQ(copy.second()[0], 5.0);
    EXPECT_FALSE(copy == span);
    copy.setXmlTagNames("a", "b");
    copy.setSecond(NyVector());
    EXPECT_TRUE(copy.equality(&span)); // the names take no part
}
