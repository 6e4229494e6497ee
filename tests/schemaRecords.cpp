#include <nyXml/schema/NyXmlSchema.h>

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace {

using Complex = NyXmlSchemaComplexType;
using Element = NyXmlSchemaElementType;
using Group = NyXmlSchemaGroupType;

template <class Record>
Record named(NyToken const& name, std::string const& type)
{
    Record record;
    record.setElementName(name);
    record.setType(type);
    return record;
}

bool fits(Element const& one, Element const& other) { return one.isTypeConvertible(other, true); }
bool fits(NyXmlSchemaElement const&, NyXmlSchemaElement const&) { return false; }
bool fits(NyXmlSchema const&, NyXmlSchema const&) { return false; }
template <class Record>
bool fits(Record const& one, Record const& other)
{
    return one.isTypeConvertible(other);
}

/// Makes a copy differ in one way after the other. \param fit  whether one of the two can serve for both all the same
template <class Record>
void expectDifferences(Record const& record, bool fit, std::vector<std::function<void(Record&)>> const& differences)
{
    for (std::size_t i = 0; i < differences.size(); ++i) {
        SCOPED_TRACE(i);
        Record other = record;
        EXPECT_TRUE(other == record);
        differences[i](other);
        EXPECT_FALSE(other == record);
        EXPECT_TRUE(Record(other) == other);
        EXPECT_EQ(fits(record, other), fit);
        EXPECT_EQ(fits(other, record), fit);
    }
}

TEST(SchemaRecords, EqualAndConvertible)
{
    auto const a = named<Element>("u#a", "double");
    expectDifferences<Element>(a, false,
                               { [](auto& e) { e.setElementName("u#b"); }, [](auto& e) { e.setElementName("v#a"); },
                                 [](auto& e) { e.setNamespace("v"); }, [](auto& e) { e.setGroupIndex(1); },
                                 [](auto& e) { e.setType("string"); } });
    expectDifferences<Element>(a, true,
                               { [](auto& e) { e.setType("p:empty.Type_1"); },
                                 [](auto& e) { e.setStartTagMode(Element::XML_STARTTAG_UNBOUNDED); },
                                 [](auto& e) { e.setMinOccurs(0); }, [](auto& e) { e.setNillable(true); } });

    Complex type;
    type.setElementVector({ a, named<Element>("b", "double") });
    type.setAttributeVector({ named<NyXmlSchemaAttributeType>("s", ""), named<NyXmlSchemaAttributeType>("t", "") });
    expectDifferences<Complex>(type, false,
                               { [](auto& c) { c.setElementName("v#"); }, [](auto& c) { c.setNamespace("v"); },
                                 [](auto& c) { c.setContentType("double"); }, [&](auto& c) { c.pushBack(a); },
                                 [&](auto& c) { c.setElement(1, a); }, [](auto& c) { c.attributeVector().pop_back(); },
                                 [](auto& c) { c.attributeVector()[1].setType("double"); },
                                 [](auto& c) { std::swap(c.attributeVector()[0], c.attributeVector()[1]); } });
    expectDifferences<Complex>(type, true,
                               { [](auto& c) { c.elementVector().clear(); },
                                 [](auto& c) { c.elementVector()[0].setGroupIndex(1); },
                                 [](auto& c) { c.elementVector()[1].setType("p:empty.Type"); } });

    Group group;
    group.setElementVector(type.elementVector());
    expectDifferences<Group>(group, false,
                             { [](auto& g) { g.setNamespace("v"); }, [](auto& g) { g.elementVector().pop_back(); },
                               [](auto& g) { g.setStartTagMode(Element::XML_STARTTAG_CHOICE); } });
    expectDifferences<Group>(group, true, { [](auto& g) { g.setElementVector({}); }, [](auto& g) { g[1].setGroupIndex(1); } });
}

TEST(SchemaRecords, ElementsOfTheTree)
{
    using Tree = NyXmlSchemaElement;
    NyXmlSchema schema;
    Tree parent, tree(&schema, &parent);
    auto const single = Element::XML_STARTTAG_SINGLE;
    tree.setName("u#a", single, 2);
    expectDifferences<Tree>(tree, false,
                            { [](auto& t) { t.setName("u#b", single, 2); }, [](auto& t) { t.setName("v#a", single, 2); },
                              [](auto& t) { t.setName("u#a", Element::XML_STARTTAG_CHOICE, 2); },
                              [](auto& t) { t.setName("u#a", single, 1); }, [](auto& t) { t.setContentType("double"); },
                              [](auto& t) { t.setTypeIdString("d"); }, [](auto& t) { t.writeStartTag("u#c", single, 0); },
                              [](auto& t) { t.setAttributeName("b"); }, [&](auto& t) { t.setPointers(nullptr, &parent); },
                              [&](auto& t) { t.setPointers(&schema, nullptr); } });
    EXPECT_TRUE(Tree().elementType() == Element());
    Tree const child(&schema, &tree);
    EXPECT_TRUE(child.isRecursiveElement("u#a") && !child.isRecursiveElement("u#b"));
    EXPECT_EQ(tree.writeEndTag(), &parent);
    Element const known = tree.elementType();
    EXPECT_EQ(known.type(), ":empty.Type");
    EXPECT_TRUE(known.nillable() && known.groupIndex() == 2 && known.minOccurs() == 1 && known.startTagMode() == single);
    EXPECT_TRUE(known.elementName() == NyToken("u#a") && known.getNamespace() == "u");
}

// A copy's open element lies in its source, so that tables and counts alone tell two apart here.
TEST(SchemaRecords, SchemasDifferByEachTable)
{
    expectDifferences<NyXmlSchema>(
        {}, false,
        { [](auto& s) { s.globalElement("a", "u", "double"); }, [](auto& s) { s.insertSimpleType("double", "u"); },
          [](auto& s) { s.insertComplexType({}, "a"); }, [](auto& s) { s.insertGroupType({}, "a"); },
          [](auto& s) { s.convertNamespaceToPrefix("u"); }, [](auto& s) { s.openGroup(); }, [](auto& s) { s.writeEndTag(); } });
}

TEST(SchemaRecords, WhatTheSurvivorLearns)
{
    auto real = named<Element>("a", "double"), empty = named<Element>("a", "p:empty.Type"), survivor = real;
    empty.setMinOccurs(0);
    empty.setNillable(true);
    empty.setStartTagMode(Element::XML_STARTTAG_UNBOUNDED);
    survivor.convertType(empty);
    empty.convertType(real); // the minimum doesn't rise, the flag doesn't fall
    real.setMinOccurs(0);
    real.setNillable(true);
    EXPECT_TRUE(survivor == real); // with its own type and mode
    real.setStartTagMode(Element::XML_STARTTAG_UNBOUNDED);
    EXPECT_TRUE(empty == real);

    Complex none, full, optional;
    full.setElementVector({ named<Element>("a", "double"), named<Element>("b", "string") });
    optional.setElementVector(full.elementVector());
    for (Element& element : optional.elementVector())
        element.setMinOccurs(0);
    for (auto const& [ours, others, result] : { std::tuple(full, full, full),
                                                { full, none, optional },
                                                { none, full, optional },
                                                { full, optional, optional },
                                                { none, none, none } }) {
        Complex merged = ours;
        merged.convertType(others);
        EXPECT_TRUE(merged == result);
    }
}

} // namespace
