#include "ValueSupport.h"

#include <nyXml/values/NyXmlEnumType.h>
#include <nyXml/values/NyXmlListType.h>
#include <nyXml/values/NyXmlMapType.h>
#include <nyXml/values/NyXmlOrientation.h>
#include <nyXml/values/NyXmlPairType.h>
#include <nyXml/values/NyXmlSetType.h>
#include <nyXml/values/NyXmlVectorType.h>

#include <map>
#include <type_traits>

namespace {

template <class T>
using B = NyXmlBasicType<T>;
using Ids = NyXmlSetType<B<unsigned int>>;
using Row = NyXmlListType<B<unsigned int>>;
using Weights = NyXmlMapType<B<std::string>, B<double>>;
using Span = NyXmlPairType<B<double>, B<double>>;

using Numbers = std::vector<unsigned int>;

std::string const fault =
    "4: NyXmlFileReader Error: file not well formed.\n\tContent can only follow start tag.\n\tFile: in.xml\n\tLine: 1\n";

/// The items of a container as plain values.
template <class Plain, class Container>
Plain plain(Container const& items)
{
    return Plain(items.begin(), items.end());
}

} // namespace

TEST(Containers, SetsAndListsReadEveryMixOfRunsAndElements)
{
    std::string const size = "3: NyXmlListType Error: list size not equal to attribute value -- ";
    struct {
        std::string document;
        Numbers items;
        std::string message;
    } const rows[] = {
        { "<a size='2'/>", {}, "" },
        { "<a></a>", {}, "" },
        { "<a other='1' size='3'><group>5 1 2</group></a>", { 5, 1, 2 }, "" },
        { "<a size='4'><x>9</x><group>3 4</group><element>1</element></a>", { 9, 3, 4, 1 }, "" },
        { "<a><group>7</group></a>", { 7 }, size + "0, actual -- 1\n" },
        { "<a size='2'></a>", {}, size + "2, actual -- 0\n" },
        { "<a size='-1'></a>", {}, size + "-1, actual -- 0\n" }, // no room is made ahead: a wrong size as any other
        { "<a><element>1</element><group/></a>", { 1 }, "4: NyXmlListType Error: XML parser should be in data mode\n" },
        { "<a><element>8</element>x</a>", { 8 }, fault },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        Row list;
        list.pushBack(99u); // is gone in every case
        EXPECT_EQ(saidOnReading(list, row.document), row.message);
        EXPECT_EQ(plain<Numbers>(list.listContainer()), row.items);
    }
    Ids set;
    set.add(99u);
    EXPECT_EQ(saidOnReading(set, "<a size='2'><group>7 5</group><element>7</element></a>"), // what was there already counts
              "3: NyXmlSetType Error: set size not equal to attribute value -- 2, actual -- 3\n");
    EXPECT_EQ(plain<Numbers>(set.setContainer()), (Numbers{ 5, 7 }));
    EXPECT_EQ(saidOnReading(set, "<a><group></group></a>"), "4: NyXmlSetType Error: XML parser should be in data mode\n");
}

// Where an empty element leaves a value alone, it is that of the item before. Each value of a map starts anew, as the items of a
// sequence do.
TEST(Containers, OneObjectServesAllItemsAndAllKeys)
{
    Row list;
    EXPECT_TRUE(readValue(list, "<a size='3'><element>7</element><element/><element></element></a>"));
    EXPECT_EQ(plain<Numbers>(list.listContainer()), (Numbers{ 7, 7, 7 }));

    Messages messages;
    NyXmlListType<NyXmlVector> vectors;
    EXPECT_TRUE(readValue(vectors, "<a size='2'><element x='1' y='2' z='3'/><element x='9'/></a>"));
    EXPECT_TRUE(vectors.listContainer().back() == NyVector(9, 2, 3));

    NyXmlMapType<B<unsigned int>, B<unsigned int>> map;
    EXPECT_TRUE(readValue(map, "<m><element><key>4</key><value>9</value></element>"
                               "<element><key></key><value/></element></m>"));
    EXPECT_EQ((NyXmlMapType<B<unsigned int>, B<unsigned int>>(4u, 0u)), map);
}

// The one object is initialised before the first item: words of a run come without.
TEST(Containers, ItemsKnowTheirTables)
{
    NyXmlListType<Mode> list;
    EXPECT_TRUE(readValue(list, "<a size='3'><group>fast slow</group><element>fast</element></a>"));
    EXPECT_EQ(plain<std::vector<int>>(list.listContainer()), (std::vector<int>{ 2, 1, 2 }));
}

TEST(Containers, SetsAndListsAreWrittenInTheirOrder)
{
    Ids set;
    Row list;
    EXPECT_EQ(writtenValue(set) + writtenValue(list), "<v xsi:nil=\"true\"/>\n<v xsi:nil=\"true\"/>\n"); // empty: no size
    for (unsigned int item : { 5u, 1u, 5u }) {
        set.add(item);
        list.pushBack(item);
    }
    list.pushFront(8u);
    EXPECT_EQ(writtenValue(set), "<v size=\"2\">\n  <group>1 5</group>\n </v>\n");
    EXPECT_EQ(writtenValue(list), "<v size=\"4\">\n  <group>8 5 1 5</group>\n </v>\n");
    EXPECT_TRUE(list.erase(5u) && !list.erase(7u) && set.erase(5u) && !set.erase(5u) && !set.find(5u));
    EXPECT_EQ(plain<Numbers>(list.listContainer()), (Numbers{ 8, 1, 5 })); // the first of two, and no other
}

template <class Value>
void expectUnequal(Value const& one, Value const& other)
{
    Value same(one), assigned(other), moved(other);
    EXPECT_TRUE(one == same && one.equality(&same) && !(one == other) && !one.equality(&other)) << typeid(Value).name();
    assigned = one;
    moved = std::move(same);
    EXPECT_TRUE(assigned == one && moved == one) << typeid(Value).name();
    same = one;
    if constexpr (std::is_same_v<Value, NyXmlVector> || std::is_same_v<Value, NyXmlOrientation>) {
        EXPECT_TRUE(one != other && !(one != same));
    }
}

TEST(Containers, EqualAreThoseWithEqualItems)
{
    Row list;
    Ids set;
    list.pushBack(1u);
    set.add(1u);
    expectUnequal(list, Row());
    expectUnequal(set, Ids());
    expectUnequal(Weights(std::string("a"), 1.0), Weights(std::string("a"), 2.0));
    expectUnequal(Weights(std::string("a"), 1.0), Weights(std::string("b"), 1.0));
    expectUnequal(Span(1.0, 2.0), Span(1.0, 3.0));
    expectUnequal(Span(1.0, 2.0), Span(3.0, 2.0));
    expectUnequal(B<double>(1.0), B<double>(2.0));
    expectUnequal(NyXmlVectorType<B<double>>(2, 1.0), NyXmlVectorType<B<double>>(2, 2.0));
    expectUnequal(NyXmlVectorBasicType<B<double>>(2, 1.0), NyXmlVectorBasicType<B<double>>(3, 1.0));
    NyVector const place(1, 2, 3);
    NyXmlVector vector, other(NyVector(1, 2, 4));
    vector = place;
    expectUnequal(vector, other);
    EXPECT_TRUE(vector == place && other != place && !(vector != place) && !(other == place));
    expectUnequal(NyXmlOrientation(NyOrientation(1, 0, 0, 0)), NyXmlOrientation(NyOrientation(0, 0, 0, 1)));
}

// None of these is compiled into the library: an application gets them from the headers.
TEST(Containers, ContainersNest)
{
    NyXmlListType<NyXmlVector> corners;
    corners.pushBack(NyVector(1, 2, 3));
    corners.pushFront(NyVector());
    NyXmlPairType<NyXmlListType<NyXmlVector>, Ids> shape(corners, Ids());
    NyXmlMapType<B<unsigned int>, decltype(shape)> map(20u, shape);
    std::string const written = writtenValue(map);
    EXPECT_EQ(written, "<v>\n  <element>\n   <key>20</key>\n   <value>\n    <first size=\"2\">\n"
                       "     <element x=\"0\" y=\"0\" z=\"0\"/>\n     <element x=\"1\" y=\"2\" z=\"3\"/>\n"
                       "    </first>\n    <second xsi:nil=\"true\"/>\n   </value>\n  </element>\n </v>\n");
    decltype(map) back;
    EXPECT_TRUE(readValue(back, written) && back.equality(&map) && !back.equality(&shape));
    EXPECT_EQ(SchemaCalls::of(map), "[2 element: [1 key: j ] [1 value: [1 first: [2 element: [1 key: x=d y=d z=d ] ] ] "
                                    "[1 second: [2 element: [1 key: j ] ] ] ] ] ");
}

TEST(Containers, MapsReadEntriesAndRefuseWhatIsNone)
{
    auto const format = [](int line) {
        return "4: NyXmlMapType Error: file not valid.\n\tKey map format not correct.\n\tFile: in.xml\n\tLine: " +
               std::to_string(line) + "\n";
    };
    std::string const one = "<element><key>a</key><value>1</value></element>";
    struct {
        std::string body;
        std::map<std::string, double> entries;
        std::string message;
    } const rows[] = {
        { "", {}, "" },
        { one + "<element>\n<key>a</key> <value>2</value></element>", { { "a", 2 } }, "" }, // the later one stays
        { "<element><key>b b</key><value>2</value></element>" + one, { { "a", 1 }, { "b b", 2 } }, "" },
        { "<element><key>a</key><value/></element>", { { "a", 0 } }, "" },
        { "<element><key></key><value></value></element>", { { "", 0 } }, "" },
        { "<element><k>b</k><v p='1' q='2'>3</v></element>" + one, { { "a", 1 }, { "b", 3 } }, "" }, // however they are called
        { one + "<element/>" + one, { { "a", 1 } }, "" }, // the map is over, in silence
        { one + "\n<entry><key>b</key></entry>", { { "a", 1 } }, format(2) + "\tExpected element but received entry.\n" },
        { one + "<element><key/><value>1</value></element>", { { "a", 1 } }, format(1) },
        { "<element></element>", {}, format(1) },
        { "<element><key>a</key></element>", { { "a", 0 } }, format(1) },
        { "<element><key>a</key><value>1</value><value>2</value></element>", { { "a", 1 } }, format(1) },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.body);
        Weights map(std::string("old"), 9.0);
        EXPECT_EQ(saidOnReading(map, "<m>" + row.body + "</m>"), row.message);
        EXPECT_EQ((plain<std::map<std::string, double>>(map.mapContainer())), row.entries);
    }
    Weights map(std::string("old"), 9.0);
    EXPECT_EQ(saidOnReading(map, "<m/>"), "");
    EXPECT_TRUE(map.mapContainer().empty());
}

// Plain entries of basic values are taken whole. The document is cut, and a block ends, at each of its characters.
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

    Weights weights;
    for (std::size_t size = 0; size <= document.size(); ++size) {
        SCOPED_TRACE(document.substr(0, size));
        expectBothWaysAgree(weights, document.substr(0, size));
        expectBothWaysAgree(weights, "<m>" + std::string(16383 - 3 - size, ' ') + document.substr(10));
    }
    NyXmlMapType<B<unsigned int>, B<std::string>> numbered;
    expectBothWaysAgree(numbered, document);
}

TEST(Containers, MapsFindKeysAndPlaces)
{
    Weights map(std::string("m"), 1.0);
    map.add(std::string("b"), 2.0);
    map.add(std::string("m"), 3.0);
    B<double> value = 7.0;
    B<std::string> key = std::string("x");
    unsigned int index = 9;
    EXPECT_FALSE(map.lookup(key, value) || map.indexKey(2, key) || map.keyIndex(key, index) || map.erase(key));
    EXPECT_TRUE(value == 7.0 && key == "x" && index == 2 && map.lookupPointer(key) == nullptr);
    EXPECT_TRUE(map.indexKey(1, key) && map.keyIndex(key, index) && map.lookup(key, value));
    EXPECT_TRUE(value == 3.0 && key == "m" && index == 1);
    Weights other(map);
    *other.lookupPointer(key) = 4.0;
    EXPECT_TRUE(!(other == map) && other.erase(key) && !(other == map));
}

TEST(Containers, PairsReadTheirMembersByNameInAnyOrder)
{
    std::string const format = "NyXmlPairType Error: file not valid.\n\tFormat not correct.\n\tFile: in.xml\n\tLine: 1\n"
                               "\tExpected from or to but received ";
    struct {
        std::string document;
        double first;
        double second;
        std::string message;
    } const rows[] = {
        { "<a/>", 8, 9, "" },
        { "<a><from>1</from><to>2</to></a>", 1, 2, "" },
        { "<a><to>2</to><from/></a>", 0, 2, "" },
        { "<a><first>1</first><to>2</to><second>3</second></a>", 1, 3, "" },          // the plain names too; the last one wins
        { "<a><from>1</from><x>5</x><to>2</to></a>", 1, 9, "4: " + format + "x.\n" }, // ends at the content of what is not known
        { "<a><x/><from>1</from></a>", 1, 9, "4: " + format + "x.\n" },
        { "<a><from>1</from>x</a>", 1, 9, fault },
        { "<a><x><y><from>1</from></y></x></a>", 1, 9, "4: " + format + "x.\n" + format + "y.\n" },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        Span span(8.0, 9.0);
        span.setXmlTagNames("from", "to");
        EXPECT_EQ(saidOnReading(span, row.document), row.message);
        EXPECT_TRUE(span == Span(row.first, row.second)) << span.first() << " " << span.second();
    }
}

TEST(Containers, ACopiedPairKeepsItsTagsAndTheyAreNoPartOfItsValue)
{
    Span span(1.0, 2.0);
    span.setXmlTagNames("from", "to");
    Span copy(span);
    EXPECT_EQ(writtenValue(copy), "<v>\n  <from>1</from>\n  <to>2</to>\n </v>\n");
    EXPECT_EQ(SchemaCalls::of(copy), "[1 from: d ] [1 to: d ] ");
    copy.setXmlTagNames("a", "b");
    EXPECT_TRUE(copy.equality(&span));
    copy.pairContainer().second = 5.0;
    EXPECT_FALSE(copy == span);
}
