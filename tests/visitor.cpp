#include "CompoundSupport.h"

#include <nyXml/nyXml.h>

namespace {

using Number = NyXmlBasicType<double>;
using Text = NyXmlBasicType<std::string>;

// One line for each report, indented by the stack; "<" and ">" for the depth operations.
class Transcript : public NyXmlObjectVisitor {
public:
    explicit Transcript(char const* root, std::string const& refused = {}) : m_refused(refused)
    {
        m_theCurrentToken = NyToken(root);
    }

    std::string lines;
    std::string typeNames;
    bool isBalanced() const { return m_theObjectStack.empty(); }

protected:
    bool visitCurrentObject() override
    {
        lines += std::string(m_theObjectStack.size(), '.') + m_theCurrentToken.token() + ":";
        auto line = m_theMessages.begin();
        typeNames += *line + " ";
        while (++line != m_theMessages.end())
            lines += " [" + *line + "]";
        lines += "\n";
        EXPECT_NE(m_theCurrentObject, nullptr);
        return m_theCurrentToken.token() != m_refused;
    }
    bool checkDepthTraversal(NyXmlObject const* object) override
    {
        lines += "<";
        return NyXmlObjectVisitor::checkDepthTraversal(object);
    }
    void afterDepthTraversal() override
    {
        lines += ">";
        NyXmlObjectVisitor::afterDepthTraversal();
    }

private:
    std::string m_refused;
};

/// A compound with elements a, b, c...
Compound<> tree(std::vector<NyXmlObject*> const& objects)
{
    Compound<>::Members members;
    for (NyXmlObject* object : objects)
        members.emplace_back(NyToken(ns, std::string(1, static_cast<char>('a' + members.size()))), object);
    return Compound<>(members);
}

std::string walk(NyXmlObject const& root, int depth = -1, std::string const& refused = {})
{
    Transcript transcript("root", refused);
    transcript.setTraversalDepth(depth);
    root.accept(&transcript);
    EXPECT_TRUE(transcript.isBalanced());
    return transcript.lines;
}

// Every family tells itself in its own words; the walk enters what it enters and nothing else.
TEST(Visitor, EveryFamilyHasItsReport)
{
    GroupedNumbers const grouped;
    Number number(1234.5);
    NyXmlEnumType<int> word(2);
    word.setEnumString(1, "slow");
    word.setEnumString(2, "fast");
    NyXmlMapType<Text, Number> map;
    map.add(Text("b"), 2);
    map.add(Text("a"), 1);
    NyXmlPairType<Text, Text> pair(Text("one"), Text("two words"));
    pair.setXmlTagNames("from", "to");
    NyXmlVectorVector path(2, NyVector(1, 0.25, 1e30));
    NyXmlVector vector(NyVector(1, -2.5, 3));
    NyXmlOrientation orientation;
    NyXmlVectorType<Text> texts(1, Text("x"));
    NyXmlVectorType<Number> nothing;
    Compound<1> inner({ { "hidden", &number } });
    EXPECT_EQ(walk(tree({ &number, &word, &map, &pair, &path, &vector, &orientation, &texts, &nothing, &inner })),
              "root: [root (10)]\n"
              "<.a: [a] [1234.5]\n"
              ".b: [b] [fast]\n"
              ".c: [c (2)]\n"
              "<..key: [key] [a]\n..value: [value] [1]\n..key: [key] [b]\n..value: [value] [2]\n>"
              ".d: [d]\n"
              "<..first: [first] [one]\n..second: [second] [two words]\n>"
              ".e: [e (2)]\n"
              "..x: [x] [1]\n..y: [y] [0.25]\n..z: [z] [1e+30]\n..x: [x] [1]\n..y: [y] [0.25]\n..z: [z] [1e+30]\n"
              ".f: [f] [x=1 y=-2.5 z=3]\n"
              ".g: [g] [q0=1 q1=0 q2=0 q3=0]\n"
              ".h: [h (1)]\n"
              "<..element: [element] [x]\n>"
              ".i: [i (0)]\n"
              "<>.j: [has attributes] [j (0)]\n>");
    Transcript transcript("root");
    path.accept(&transcript);
    number.accept(&transcript);
    EXPECT_EQ(transcript.typeNames.find(typeid(NyXmlVectorVector const*).name() + std::string(" ")), 0u);
    EXPECT_NE(transcript.typeNames.find(typeid(Number const*).name()), std::string::npos);
}

TEST(Visitor, DepthAndRefusal)
{
    NyXmlVectorType<Number> numbers(1, Number(5));
    NyXmlVectorType<NyXmlVectorType<Number>> rows(2, numbers);
    NyXmlVectorVector path(1);
    Compound<1> leaf;
    Compound<> const root = tree({ &leaf, &path, &rows });
    EXPECT_EQ(walk(root, 0), "root: [root (3)]\n<>");
    EXPECT_EQ(walk(root, 1), "root: [root (3)]\n<>");
    std::string const top = "root: [root (3)]\n<.a: [a (0)]\n.b: [b (1)]\n..x: [x] [0]\n..y: [y] [0]\n..z: [z] [0]\n"
                            ".c: [c (2)]\n<";
    EXPECT_EQ(walk(root, 2), top + ">>");
    EXPECT_EQ(walk(root, 3), top + "..element: [element (1)]\n<>..element: [element (1)]\n<>>>");
    EXPECT_EQ(walk(root, -1, "element"), walk(root, 3)) << "refusing stops the descent and not the siblings";
    EXPECT_EQ(walk(root, -1, "x"), walk(root)) << "what is said to a coordinate does not matter";
    EXPECT_EQ(walk(root, -1, "root"), "root: [root (3)]\n");
}

TEST(Visitor, WhoHasNoVisitOrIsNullIsReported)
{
    Messages messages;
    NyXmlVectorBasicType<Number> numbers(3);
    NyXmlSetType<Number> set;
    NyXmlListType<Number> list;
    for (NyXmlObject const* object : std::initializer_list<NyXmlObject const*>{ &numbers, &set, &list }) {
        EXPECT_EQ(walk(*object), "root: [This class has not been specialized.\n]\n");
        EXPECT_EQ(messages.take(), "object = " + std::string(typeid(NyXmlObject const*).name()) + "\n");
    }
    Number number(1);
    EXPECT_EQ(walk(tree({ nullptr, &number })), "root: [root (2)]\n<.b: [b] [1]\n>");
    EXPECT_EQ(messages.text(), "Visitor: NyXmlCompoundType 0 is non-NyXmlObject\n");
}

class Container : public Model<Container, NyXmlBaseVariableCompoundType> {
public:
    NyToken const& token() const override { return NyXml::NyVarVectorTypeToken; }
    void registerComponents() override {}
    bool readValueFromToken(NyToken const&, NyXmlReader&) override { return false; }
};

class Node : public Model<Node, NyBaseExpressionTreeElement> {
public:
    explicit Node(NyXmlBaseVariableCompoundType const* container = nullptr) : Model(container)
    {
        registerComponent("operand", &operand);
    }
    Number operand;
};

// Once as a node, with its container in between, and once as a compound under the name that the walk has left.
TEST(Visitor, ANodeIsReportedTwice)
{
    Container container;
    container.setAddLibraries({ 1, Text("extra") });
    EXPECT_EQ(walk(container), "root: [root (1)]\n<.addLibraries: [addLibraries] [extra]\n>");
    EXPECT_EQ(walk(container, -1, "root"), "root: [root (1)]\n");

    Node held(&container);
    EXPECT_EQ(walk(Node()), "root: [root]\n<.root: [root (1)]\n<..operand: [operand] [0]\n>>");
    EXPECT_EQ(walk(held), "root: [root]\n<.varVectorType: [varVectorType (1)]\n<..addLibraries: [addLibraries] [extra]\n>"
                          ".addLibraries: [addLibraries (1)]\n<..operand: [operand] [0]\n>>");
    EXPECT_EQ(walk(held, 1), "root: [root]\n<.root: [root (1)]\n<>>")
        << "the container lies too deep, the second report does not";
}

} // namespace
