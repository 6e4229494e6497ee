#include "Support.h"

#include <nyXml/compound/NyBaseExpressionTreeElement.h>
#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>
#include <nyXml/core/NyXml.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <vector>

namespace {

std::string const ns = "urn:demo/calc";
std::string const shapes = std::string(NYXML_TEST_PLUGIN_DIR) + "/shapes";
std::string const loaded =
    "NyXmlFactory::loadLibrary -- loaded shared library: " + shapes + ".nyp  with  3 NyXmlObject creators \n";

// A container as an application writes it: it keeps its members in order and reads the list of libraries.
class Bag : public NyXmlBaseVariableCompoundType {
public:
    struct Member {
        NyToken name;
        std::shared_ptr<NyXmlObject> object;
    };
    NyXmlObject* clone() const override { return new Bag(*this); }
    NyXmlObject* newObject() const override { return new Bag; }
    NyToken const& token() const override { return NyXml::NyVarVectorTypeToken; }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* bag = dynamic_cast<Bag const*>(other);
        return bag != nullptr && *this == *bag && members.empty() == bag->members.empty();
    }
    void registerComponents() override;
    bool readValueFromToken(NyToken const& element, NyXmlReader& reader) override
    {
        asked += element.token() + " ";
        if (element == NyXml::NyAddLibrariesToken.token()) {
            LibraryVector libraries;
            libraries.read(reader);
            setAddLibraries(libraries);
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

class Node : public NyBaseExpressionTreeElement {
public:
    virtual double result() const = 0;
    bool equality(NyXmlObject const* other) const override { return other == this; }
    NyToken const& token() const override { return NyXml::NyVarElemTypeToken; }
};

class Value : public Node {
public:
    NyXmlObject* clone() const override { return new Value(*this); }
    NyXmlObject* newObject() const override { return new Value; }
    void registerComponents() override { registerAttributeComponent("is", &m_value); }
    double result() const override { return m_value; }

private:
    NyXmlBasicType<double> m_value;
};

// Its operands are a container of their own.
template <char op>
class Operation : public Node {
public:
    NyXmlObject* clone() const override { return new Operation(*this); }
    NyXmlObject* newObject() const override { return new Operation; }
    void registerComponents() override { registerComponent(NyToken(ns, "of"), &m_operands); }
    double result() const override
    {
        double sum = op == '+' ? 0 : 1;
        for (Bag::Member const& operand : m_operands.members) {
            auto const& node = dynamic_cast<Node const&>(*operand.object);
            EXPECT_EQ(node.container(), &m_operands);
            sum = op == '+' ? sum + node.result() : sum * node.result();
        }
        return sum;
    }

private:
    Bag m_operands;
};

template <class T>
NyXmlObject* create()
{
    return new T;
}

void Bag::registerComponents()
{
    registerComponentCreator(NyToken(ns, "value"), create<Value>);
    registerComponentCreator(NyToken(ns, "sum"), create<Operation<'+'>>);
    registerComponentCreator(NyToken(ns, "product"), create<Operation<'*'>>);
}

bool readFrom(NyXmlObject& object, std::string const& document)
{
    std::istringstream stream(document);
    NyXmlReader reader("calc.xml", stream);
    reader.readXml();
    return object.read(reader);
}

std::string written(NyXmlObject const& object)
{
    std::ostringstream stream;
    NyXmlWriter writer("calc.xml", stream);
    writer.writeStartTag(NyToken(ns, "calc"));
    object.write(writer);
    writer.writeEndTag();
    return stream.str().substr(stream.str().find(ns + "\"", stream.str().find("xmlns=")) + ns.size() + 1);
}

TEST(VariableCompound, BuildsAnExpressionTree)
{
    Messages messages;
    Bag calc;
    ASSERT_TRUE(readFrom(calc, "<calc><sum><of><value is='1'/><product><of><value is='2'/><value is='3.5'/></of></product>"
                               "<value is='-4'/></of></sum></calc>"));
    ASSERT_EQ(calc.members.size(), 1u);
    auto const& root = dynamic_cast<Node const&>(*calc.members[0].object);
    EXPECT_EQ(root.result(), 4);
    EXPECT_EQ(root.container(), &calc);
    std::string const text = written(calc);
    Bag again;
    ASSERT_TRUE(readFrom(again, "<calc" + text));
    EXPECT_EQ(written(again), text);
    EXPECT_EQ(messages.text(), "");
}

TEST(VariableCompound, RefusedChildrenAndLibrariesCostAMessage)
{
    Messages messages;
    Bag bag;
    EXPECT_TRUE(readFrom(bag, "<calc>\n<number library='no/such.file'>7</number><value library='' is='1'/>\n"
                              "<o:what xmlns:o='urn:o'><value is='2'/></o:what><last/></calc>"));
    EXPECT_EQ(bag.asked, "number value what last ");
    EXPECT_EQ(bag.members.size(), 1u);
    EXPECT_EQ(messages.take(), "NyXmlFactory::loadLibrary -- handle to shared library is not valid no/such.file\n"
                               "Bad token: #number on line 2\n"
                               "Bad token: #what on line 3\nBad token: #last on line 3\n");
    EXPECT_TRUE(readFrom(bag, "<calc/>"));
    EXPECT_FALSE(readFrom(bag, "<calc><value is='1'/><value></calc>"));
}

TEST(VariableCompound, ChildrenBringTheirLibraries)
{
    Messages messages;
    Bag bag;
    EXPECT_TRUE(readFrom(bag, "<calc><number library='" + shapes + ".nyp'>7</number><number>8</number></calc>"));
    EXPECT_EQ(messages.take(), loaded);
    EXPECT_EQ(written(bag), ">\n <number>7</number>\n <number>8</number>\n</calc>\n");
    EXPECT_TRUE(readFrom(bag, "<calc><number>9</number></calc>")) << "what was loaded stays known";
    EXPECT_EQ(bag.members.size(), 3u);
    EXPECT_EQ(messages.take(), "");

    Bag const copy(bag);
    std::unique_ptr<NyXmlObject> unknown(copy.newObjectFromToken("number")), known(copy.newObjectFromToken("value"));
    EXPECT_EQ(unknown, nullptr) << "creators don't travel";
    EXPECT_NE(known, nullptr);
}

TEST(VariableCompound, TheListOfLibrariesStandsFirst)
{
    Messages messages;
    Bag bag;
    EXPECT_TRUE(
        readFrom(bag, "<calc><addLibraries size='1'><element>" + shapes + "</element></addLibraries><number>7</number></calc>"));
    EXPECT_EQ(messages.take(), loaded);
    EXPECT_EQ(written(bag), ">\n <addLibraries size=\"1\">\n  <element>" +
                                (shapes.size() > 50 ? "\n   " + shapes + "\n  " : shapes) +
                                "</element>\n </addLibraries>\n <number>7</number>\n</calc>\n");
}

TEST(VariableCompound, EqualityComparesLibrariesAndKnownCreators)
{
    Bag one, two;
    one.registerComponentCreator("extra", create<Value>);
    EXPECT_TRUE(one == two) << "not initialised yet";
    one.xmlInit();
    EXPECT_TRUE(one == two);
    two.xmlInit();
    EXPECT_FALSE(one == two);
    two.registerComponentCreator("extra", create<Value>);
    EXPECT_TRUE(one == two);
    one.setAddLibraries({ 1, NyXmlBasicType<std::string>("a") });
    EXPECT_FALSE(one == two);
    two = one;
    EXPECT_TRUE(one == two && two.specified());
}

TEST(ExpressionTreeElement, ContainersCountByTheirPresence)
{
    Bag one, two;
    Value free, held, other;
    held.setContainer(&one);
    other.setContainer(&two);
    EXPECT_FALSE(free == held);
    EXPECT_TRUE(held == other);
    EXPECT_EQ(Value(held).container(), &one);
    free = other;
    EXPECT_EQ(free.container(), &two);
}

} // namespace
