#include "SchemaSupport.h"

#include <gtest/gtest.h>

namespace {

NyXmlSchemaElementType element(NyToken const& name, std::string const& type)
{
    NyXmlSchemaElementType record;
    record.setElementName(name);
    record.setNamespace(name.xmlNamespace());
    record.setType(type);
    return record;
}

NyXmlSchemaAttributeType attribute(std::string const& name)
{
    NyXmlSchemaAttributeType record;
    record.setElementName(name);
    return record;
}

NyXmlSchemaComplexType complexType(std::vector<NyXmlSchemaElementType> const& elements)
{
    NyXmlSchemaComplexType record;
    record.setElementVector(elements);
    return record;
}

TEST(SchemaRecords, EmptyTypeFitsEveryTypeAndNeverWins)
{
    for (std::string const empty : { "p:empty.Type", "p:empty.Type_1" }) {
        SCOPED_TRACE(empty);
        NyXmlSchemaElementType real = element("u#n", "double");
        NyXmlSchemaElementType nothing = element("u#n", empty);
        EXPECT_TRUE(real.isTypeConvertible(nothing, true));
        EXPECT_TRUE(nothing.isTypeConvertible(real, true));

        nothing.setMinOccurs(0);
        nothing.setNillable(true);
        real.convertType(nothing);
        EXPECT_EQ(real.type(), "double");
        EXPECT_EQ(real.minOccurs(), 0u);
        EXPECT_TRUE(real.nillable());
        nothing.convertType(element("u#n", "double"));
        EXPECT_EQ(nothing.type(), "double");
        EXPECT_EQ(nothing.minOccurs(), 0u); // neither rises nor falls again
        EXPECT_TRUE(nothing.nillable());
    }
}

TEST(SchemaRecords, ElementsFitByNameNamespaceAndType)
{
    NyXmlSchemaElementType const one = element("u#n", "double");
    EXPECT_FALSE(one.isTypeConvertible(element("u#m", "double"), false));
    EXPECT_FALSE(one.isTypeConvertible(element("v#n", "double"), false));
    EXPECT_FALSE(one.isTypeConvertible(element("u#n", "string"), false));

    NyXmlSchemaElementType elsewhere = one;
    elsewhere.setNamespace("v");
    EXPECT_FALSE(one.isTypeConvertible(elsewhere, false));

    NyXmlSchemaElementType deeper = one;
    deeper.setGroupIndex(1);
    EXPECT_FALSE(one.isTypeConvertible(deeper, true));
    EXPECT_TRUE(one.isTypeConvertible(deeper, false));

    NyXmlSchemaElementType repeated = one;
    repeated.setStartTagMode(NyXmlSchemaElementType::XML_STARTTAG_UNBOUNDED);
    EXPECT_TRUE(one.isTypeConvertible(repeated, true));
    repeated.convertType(one);
    EXPECT_EQ(repeated.startTagMode(), NyXmlSchemaElementType::XML_STARTTAG_UNBOUNDED);
    EXPECT_FALSE(one == repeated);
}

TEST(SchemaRecords, TypesWithoutElementsTakeOver)
{
    std::vector<NyXmlSchemaElementType> const two = { element("a", "double"), element("b", "string") };
    NyXmlSchemaComplexType const full = complexType(two);
    NyXmlSchemaComplexType const empty = complexType({});
    EXPECT_TRUE(full.isTypeConvertible(empty));
    EXPECT_TRUE(empty.isTypeConvertible(full));
    EXPECT_FALSE(full == empty);
    EXPECT_FALSE(full.isTypeConvertible(complexType({ two[0], two[1], two[0] })));
    EXPECT_FALSE(full.isTypeConvertible(complexType({ two[1], two[0] })));

    for (bool fromEmpty : { true, false }) {
        SCOPED_TRACE(fromEmpty);
        NyXmlSchemaComplexType survivor = fromEmpty ? empty : full;
        survivor.convertType(fromEmpty ? full : empty);
        ASSERT_EQ(survivor.elementSize(), 2u);
        EXPECT_EQ(survivor.element(0).elementName(), NyToken("a"));
        EXPECT_EQ(survivor.element(0).minOccurs() + survivor.element(1).minOccurs(), 0u);
    }
    NyXmlSchemaComplexType twin = full;
    twin.convertType(full);
    EXPECT_TRUE(twin == full);
}

TEST(SchemaRecords, AttributesFitInTheirOrderOnly)
{
    NyXmlSchemaComplexType one;
    NyXmlSchemaComplexType other;
    one.setAttributeVector({ attribute("a"), attribute("b") });
    other.setAttributeVector({ attribute("b"), attribute("a") });
    EXPECT_FALSE(one.isTypeConvertible(other));
    other.attributeVector() = one.attributeVector();
    EXPECT_TRUE(one.isTypeConvertible(other));
    other.setContentType("double");
    EXPECT_FALSE(one.isTypeConvertible(other));
}

TEST(SchemaRecords, GroupsFitWithoutNames)
{
    NyXmlSchemaGroupType one;
    NyXmlSchemaGroupType other;
    one.setElementVector({ element("a", "double") });
    EXPECT_TRUE(one.isTypeConvertible(other)); // no elements
    other.setElementVector({ element("a", "p:empty.Type") });
    EXPECT_TRUE(one.isTypeConvertible(other));
    EXPECT_FALSE(one == other);
    other.setStartTagMode(NyXmlSchemaElementType::XML_STARTTAG_CHOICE);
    EXPECT_FALSE(one.isTypeConvertible(other));
}

} // namespace
