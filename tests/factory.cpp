#include "Support.h"
#include "plugins/PluginObject.h"

#include <nyXml/compound/NyXmlFactory.h>
#include <nyXml/values/NyXmlBasicType.h>

#include <gtest/gtest.h>

#include <memory>
#include <typeinfo>

namespace {

std::string plugin(std::string const& name) { return std::string(NYXML_TEST_PLUGIN_DIR) + '/' + name + ".nyp"; }

NyXmlObject* newFirst() { return new PluginObject("first"); }
NyXmlObject* newSecond() { return new PluginObject("second"); }

/// Who made the object of this name; empty if nobody does.
std::string originOf(NyXmlFactory const& factory, NyToken const& token)
{
    std::unique_ptr<NyXmlObject> const object(factory.newObjectFromToken(token));
    auto const* made = dynamic_cast<PluginObject const*>(object.get());
    return made != nullptr ? made->origin() : std::string();
}

TEST(Factory, LocalNameIsTheKeyAndTheLastCreatorStays)
{
    Messages messages;
    NyXmlFactory factory;
    NyToken const token("u#thing");
    factory.registerComponentCreator(token, newFirst);
    EXPECT_EQ(originOf(factory, NyToken("v#thing")), "first");
    NyToken const other("v#thing");
    factory.registerComponentCreator(&other, newSecond);
    EXPECT_EQ(originOf(factory, token), "second");
    EXPECT_EQ(factory.creatorMap().size(), 1u);
    EXPECT_EQ(factory.newObjectFromToken(NyToken("nothing")), nullptr);
    EXPECT_EQ(messages.text(), "");
}

TEST(Factory, CopyKnowsNothingAndAssignmentEverything)
{
    NyXmlFactory source;
    source.registerComponentCreator(NyToken("u#thing"), newFirst);
    NyXmlFactory const copy(source);
    EXPECT_TRUE(copy.creatorMap().empty());
    EXPECT_FALSE(copy == source);

    NyXmlFactory assigned;
    assigned.registerComponentCreator(NyToken("old"), newSecond);
    assigned = source;
    EXPECT_TRUE(assigned == source);
    EXPECT_EQ(originOf(assigned, NyToken("thing")), "first");

    assigned.registerComponentCreator(NyToken("u#thing"), newSecond);
    EXPECT_FALSE(assigned == source) << "another creator";
    NyXmlFactory otherNamespace;
    otherNamespace.registerComponentCreator(NyToken("v#thing"), newFirst);
    EXPECT_FALSE(otherNamespace == source) << "another namespace";
}

TEST(Factory, LoadsEveryClassOfAPlugIn)
{
    Messages messages;
    NyXmlFactory factory;
    std::string const loaded = "NyXmlFactory::loadLibrary -- loaded shared library: ";
    std::string const shapes = plugin("shapes");
    for (int time = 0; time < 2; ++time) { // a second load says and does the same
        EXPECT_TRUE(factory.loadLibrary(shapes));
        EXPECT_EQ(messages.types(), std::vector<int>(messages.types().size(), 3));
        EXPECT_NE(messages.locations().at(0).find("loadLibrary"), std::string::npos);
        EXPECT_EQ(messages.take(), loaded + shapes + "  with  3 NyXmlObject creators \n");
        EXPECT_EQ(factory.creatorMap().size(), 3u);
        EXPECT_EQ(originOf(factory, NyToken("box")), "shapes");
    }

    std::string const other = plugin("stopsAtNull");
    EXPECT_TRUE(factory.loadLibrary(other));
    EXPECT_EQ(messages.take(), loaded + other + "  with  1 NyXmlObject creators \n");
    EXPECT_EQ(originOf(factory, NyToken("box")), "stopsAtNull") << "the later library has it";
    EXPECT_EQ(factory.creatorMap().size(), 3u);

    std::string const empty = plugin("emptyList");
    EXPECT_TRUE(factory.loadLibrary(empty));
    EXPECT_EQ(messages.take(), loaded + empty + "  with  0 NyXmlObject creators \n");
}

TEST(Factory, ClassesAreTheSameOnBothSidesOfAPlugIn)
{
    Messages messages;
    std::unique_ptr<NyXmlObject> number, length, box;
    {
        NyXmlFactory factory; // the plug-in outlives the factory
        ASSERT_TRUE(factory.loadLibrary(plugin("shapes")));
        number.reset(factory.newObjectFromToken(NyToken("number")));
        length.reset(factory.newObjectFromToken(NyToken("length")));
        box.reset(factory.newObjectFromToken(NyToken("box")));
    }
    ASSERT_TRUE(number && length && box);
    NyXmlObject const& made = *number;
    EXPECT_EQ(typeid(made), typeid(NyXmlBasicType<double>));
    EXPECT_NE(dynamic_cast<NyXmlBasicType<double>*>(length.get()), nullptr);
    EXPECT_EQ(dynamic_cast<NyXmlBasicType<int>*>(length.get()), nullptr);
    EXPECT_TRUE(box->equality(std::make_unique<PluginObject>("shapes").get()));
}

TEST(Factory, WhatCannotBeLoadedIsReported)
{
    NyXmlFactory factory;
    std::string const prefix = "NyXmlFactory::loadLibrary -- ";
    struct Row {
        std::string library;
        std::string complaint;
    };
    for (Row const& row :
         { Row{ "", "library attribute string is empty" },
           Row{ "./nowhere.nyp", "handle to shared library is not valid ./nowhere.nyp" },
           Row{ "nodotatall", "handle to shared library is not valid nodotatall" },
           Row{ "libm.so.6", "getClassToken accessor not found in shared library libm.so.6" },
           Row{ plugin("noCreators"), "getCreator accessor not found in shared library " + plugin("noCreators") } }) {
        SCOPED_TRACE(row.library);
        Messages messages;
        EXPECT_FALSE(factory.loadLibrary(row.library));
        EXPECT_EQ(messages.types(), std::vector<int>(messages.types().size(), 4));
        EXPECT_EQ(messages.take(), prefix + row.complaint + "\n");
    }
    EXPECT_TRUE(factory.creatorMap().empty());
}

} // namespace
