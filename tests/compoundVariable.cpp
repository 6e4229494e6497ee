#include "CompoundSupport.h"

#include <nyXml/compound/NyBaseExpressionTreeElement.h>
#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>
#include <nyXml/values/NyXmlBasicType.h>

#include <memory>

namespace {

std::string const shapes = std::string(NYXML_TEST_PLUGIN_DIR) + "/shapes";
std::string const loaded =
    "3: NyXmlFactory::loadLibrary -- loaded shared library: " + shapes + ".nyp  with  2 NyXmlObject creators \n";

// A container as an application writes it: it keeps its members in order and reads the list of libraries.
class Bag : public Model<Bag, NyXmlBaseVariableCompoundType> {
public:
    struct Member {
        NyToken name;
        std::shared_ptr<NyXmlObject> object;
    };
    bool values() const { return members.empty() && addLibraries().size() == 0; }
    void registerComponents() override;
    bool readValueFromToken(NyToken const& element, NyXmlReader& reader) override
    {
        asked += element.token() + " ";
        if (element == NyXml::NyAddLibrariesToken.token()) {
            m_AddLibraries.read(reader);
            processLibraries();
            return true;
        }
        std::shared_ptr<NyXmlObject> const object(newObjectFromToken(element));
        if (!object)
            return false;
        if (auto* const node = dynamic_cast<NyBaseExpressionTreeElement*>(object.get()))
            node->setContainer(this);
        object->read(reader);
        members.push_back({ element, object });
        return true;
    }
    bool write(NyXmlWriter& writer) const override
    {
        bool const result = NyXmlBaseVariableCompoundType::write(writer);
        for (Member const& member : members) {
            writer.writeStartTagUsingParentNamespace(member.name);
            member.object->write(writer);
            writer.writeEndTag();
        }
        return result;
    }
    std::vector<Member> members;
    std::string asked;
};

// Adds its value and those of its operands, which a container of its own holds.
class Sum : public Model<Sum, NyBaseExpressionTreeElement> {
public:
    void registerComponents() override
    {
        registerAttributeComponent("add", &m_value);
        registerComponent(NyToken(ns, "to"), &m_operands);
    }
    double result() const
    {
        double sum = m_value;
        for (Bag::Member const& operand : m_operands.members) {
            auto const& node = dynamic_cast<Sum const&>(*operand.object);
            EXPECT_EQ(node.container(), &m_operands);
            sum += node.result();
        }
        return sum;
    }
    auto values() const { return std::make_pair(m_value.value(), m_operands.members.empty()); }

private:
    NyXmlBasicType<double> m_value;
    Bag m_operands;
};

NyXmlObject* createSum() { return new Sum; }

void Bag::registerComponents() { registerComponentCreator(NyToken(ns, "sum"), createSum); }

TEST(VariableCompound, BuildsAnExpressionTree)
{
    Messages messages;
    Bag calc, again;
    EXPECT_TRUE(
        readValue(calc, "<cell><sum add='1'><to><sum add='2'><to><sum add='4'/></to></sum><sum add='-8'/></to></sum></cell>"));
    EXPECT_TRUE(readValue(again, writtenValue(calc)));
    std::string const text = typeid(std::string).name(), libraries = "( [0 addLibraries: size=j [2 element: " + text + " ] ] ";
    EXPECT_EQ(SchemaCalls::of(calc), libraries + "[0 sum: add=d ( [1 to: " + libraries + "[0 sum: ) ] ) ] ) ");
    for (Bag const* bag : { &calc, &again }) {
        ASSERT_EQ(bag->members.size(), 1u);
        auto const& root = dynamic_cast<Sum const&>(*bag->members[0].object);
        EXPECT_EQ(root.result(), -1);
        EXPECT_EQ(root.container(), bag);
    }
    EXPECT_EQ(messages.text(), "");
}

TEST(VariableCompound, RefusedChildrenAndLibrariesCostAMessage)
{
    Messages messages;
    Bag bag;
    EXPECT_TRUE(readValue(bag, "<cell>\n<number library='no/such.file'>7</number><sum library='' add='1'/>\n"
                               "<o:what xmlns:o='urn:o'><sum add='2'/></o:what><last/></cell>"));
    EXPECT_EQ(bag.asked, "number sum what last ");
    EXPECT_EQ(bag.members.size(), 1u);
    EXPECT_EQ(messages.take(), "NyXmlFactory::loadLibrary -- handle to shared library is not valid no/such.file\n"
                               "Bad token: #number on line 2\n"
                               "Bad token: #what on line 3\nBad token: #last on line 3\n");
    EXPECT_TRUE(readValue(bag, "<cell/>"));
    EXPECT_FALSE(readValue(bag, "<cell><sum add='1'/><sum></cell>"));
}

// Named by a child, or in the list that stands first.
TEST(VariableCompound, DocumentsBringTheirLibraries)
{
    Messages messages;
    Bag bag, listing;
    EXPECT_TRUE(readValue(bag, "<cell><length library='" + shapes + ".nyp'>7</length><length>8</length></cell>"));
    EXPECT_EQ(messages.take(), loaded);
    EXPECT_EQ(writtenValue(bag), "<v>\n  <length>7</length>\n  <length>8</length>\n </v>\n");
    EXPECT_TRUE(readValue(bag, "<cell><length>9</length></cell>"));
    EXPECT_EQ(bag.members.size(), 3u) << "what was loaded stays known";
    EXPECT_EQ(messages.take(), "");
    Bag const copy(bag);
    std::unique_ptr<NyXmlObject> unknown(copy.newObjectFromToken("length")), known(copy.newObjectFromToken("sum"));
    EXPECT_TRUE(unknown == nullptr && known != nullptr) << "creators don't travel";

    std::string const list = "<addLibraries size='1'><element>" + shapes + "</element></addLibraries>";
    EXPECT_TRUE(readValue(listing, "<cell>" + list + "<length>7</length></cell>"));
    EXPECT_EQ(messages.take(), loaded);
    std::string const longText = shapes.size() > 50 ? "\n    " + shapes + "\n   " : shapes;
    EXPECT_EQ(writtenValue(listing), "<v>\n  <addLibraries size=\"1\">\n   <element>" + longText +
                                         "</element>\n  </addLibraries>\n  <length>7</length>\n </v>\n");
}

TEST(VariableCompound, EqualityComparesLibrariesAndKnownCreators)
{
    Bag one, two;
    one.registerComponentCreator("extra", createSum);
    EXPECT_TRUE(one == two) << "not initialised yet";
    one.xmlInit();
    EXPECT_TRUE(one == two);
    two.xmlInit();
    EXPECT_FALSE(one == two);
    two.registerComponentCreator("extra", createSum);
    EXPECT_TRUE(one == two);
    one.setAddLibraries({ 1, NyXmlBasicType<std::string>("a") });
    EXPECT_FALSE(one == two);
    two = one;
    EXPECT_TRUE(one == two && two.specified());
}

TEST(ExpressionTreeElement, ContainersCountByTheirPresence)
{
    Bag one, two;
    Sum free, held, other;
    held.setContainer(&one);
    other.setContainer(&two);
    EXPECT_FALSE(free == held);
    EXPECT_TRUE(held == other);
    EXPECT_EQ(Sum(held).container(), &one);
    free = other;
    EXPECT_EQ(free.container(), &two);
}

} // namespace
