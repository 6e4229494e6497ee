#include "Support.h"

#include <nyXml/compound/NyXmlFactory.h>
#include <nyXml/values/NyXmlBasicType.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

std::string plugin(std::string const& name) { return std::string(NYXML_TEST_PLUGIN_DIR) + '/' + name + ".nyp"; }

/// An object that tells who made it.
using Origin = NyXmlBasicType<std::string>;

NyXmlObject* newFirst() { return new Origin("first"); }
NyXmlObject* newSecond() { return new Origin("second"); }

/// Who made the object of this name; empty if nobody does.
std::string originOf(NyXmlFactory const& factory, NyToken const& token)
{
    std::unique_ptr<NyXmlObject> const object(factory.newObjectFromToken(token));
    return object ? dynamic_cast<Origin const&>(*object).value() : "";
}

TEST(Factory, LocalNameIsTheKeyAndTheLastCreatorStays)
{
    Messages messages;
    NyXmlFactory factory;
    NyToken const token("u#thing"), other("v#thing");
    factory.registerComponentCreator(token, newFirst);
    EXPECT_EQ(originOf(factory, other), "first");
    factory.registerComponentCreator(&other, newSecond);
    EXPECT_EQ(originOf(factory, token), "second");
    EXPECT_EQ(factory.creatorMap().size(), 1u);
    EXPECT_EQ(factory.newObjectFromToken(NyToken("nothing")), nullptr);
    EXPECT_EQ(messages.text(), "");
}

TEST(Factory, CopyKnowsNothingAndAssignmentEverything)
{
    NyXmlFactory source, assigned, otherNamespace;
    source.registerComponentCreator(NyToken("u#thing"), newFirst);
    EXPECT_FALSE(NyXmlFactory(source) == source);

    assigned.registerComponentCreator(NyToken("old"), newSecond);
    assigned = source;
    EXPECT_TRUE(assigned == source);
    assigned.registerComponentCreator(NyToken("u#thing"), newSecond);
    EXPECT_FALSE(assigned == source) << "another creator";
    otherNamespace.registerComponentCreator(NyToken("v#thing"), newFirst);
    EXPECT_FALSE(otherNamespace == source) << "another namespace";
}

TEST(Factory, LoadsWhatAPlugInOffersAndReportsWhatCannotBeLoaded)
{
    auto const loaded = [](std::string const& name, char const* count) {
        return "loaded shared library: " + name + "  with  " + count + " NyXmlObject creators ";
    };
    std::string const shapes = plugin("shapes"), nulls = plugin("stopsAtNull"), half = plugin("noCreators");
    struct {
        std::string library, report;
        std::string box; // who makes one afterwards
    } const rows[] = {
        { "", "library attribute string is empty", "" },
        { "./nowhere.nyp", "handle to shared library is not valid ./nowhere.nyp", "" },
        { std::string(8 << 20, 'x'), "handle to shared library is not valid " + std::string(8 << 20, 'x'), "" },
        { "libm.so.6", "getClassToken accessor not found in shared library libm.so.6", "" },
        { half, "getCreator accessor not found in shared library " + half, "" },
        { shapes, loaded(shapes, "2"), "shapes" },
        { nulls, loaded(nulls, "1"), "stopsAtNull" },
        { shapes, loaded(shapes, "2"), "shapes" }, // the later load has it, also the second of a library
    };
    NyXmlFactory factory;
    for (auto const& row : rows) {
        SCOPED_TRACE(row.library.substr(0, 200));
        Messages messages;
        bool const isLoaded = factory.loadLibrary(row.library);
        EXPECT_NE(messages.locations().at(0).find("loadLibrary"), std::string::npos);
        EXPECT_EQ(messages.take(), (isLoaded ? "3: " : "") + std::string("NyXmlFactory::loadLibrary -- ") + row.report + "\n");
        EXPECT_EQ(originOf(factory, NyToken("box")), row.box);
    }
    EXPECT_EQ(factory.creatorMap().size(), 2u);
}

TEST(Factory, ObjectsOfAPlugInAreTheLibrarysAndOutliveTheFactory)
{
    Messages messages;
    std::unique_ptr<NyXmlObject> length;
    {
        NyXmlFactory factory;
        ASSERT_TRUE(factory.loadLibrary(plugin("shapes")));
        length.reset(factory.newObjectFromToken(NyToken("length")));
    }
    EXPECT_NE(dynamic_cast<NyXmlBasicType<double>*>(length.get()), nullptr);
}

} // namespace
