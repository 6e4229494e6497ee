#include "ModelSupport.h"

#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlPolymorphic.h>
#include <nyXmlKit/model/NyXmlRepeated.h>
#include <nyXmlKit/model/NyXmlShared.h>

namespace {

// --- classes chosen by the document ----------------------------------------------------------------------------------------------

class Shape : public NyXmlModel<Shape> {
public:
    static constexpr auto xmlName = "urn:t#shape";
    virtual double area() const = 0;
    void registerComponents() override { attribute("name", name); }
    NyXmlBasicType<std::string> name;
};
class Square : public NyXmlModel<Square, Shape> {
public:
    static constexpr auto xmlName = "urn:t#square";
    double area() const override { return side * side; }
    void registerComponents() override { attribute("side", side); }
    NyXmlBasicType<double> side;
};
class Strip : public NyXmlModel<Strip, Shape> {
public:
    static constexpr auto xmlName = "urn:t#strip";
    double area() const override { return length; }
    void registerComponents() override { element("length", length); }
    NyXmlBasicType<double> length;
};
class Other : public NyXmlModel<Other> {
public:
    static constexpr auto xmlName = "urn:t#other";
    void registerComponents() override {}
};

class Drawing : public NyXmlModel<Drawing> {
public:
    static constexpr auto xmlName = "urn:t#drawing";
    void registerComponents() override
    {
        element("frame", frame);
        element("shapes", shapes);
    }
    NyXmlOneOf<Shape, Square, Strip> frame;
    NyXmlManyOf<Shape, Square, Strip> shapes;
};

TEST(Polymorphic, DocumentChoosesTheClass)
{
    Drawing drawing;
    EXPECT_TRUE(readValue(drawing, "<v><frame><strip><length>2</length></strip><square side='3' name='f'/></frame>"
                                   "<shapes><square side='2'/><strip><length>5</length></strip><square/></shapes></v>"));
    ASSERT_EQ(drawing.shapes.size(), 3u);
    EXPECT_EQ(drawing.shapes[0].area() + drawing.shapes[1].area(), 9);
    ASSERT_NE(drawing.frame.as<Square>(), nullptr);
    EXPECT_EQ(drawing.frame.as<Strip>(), nullptr);
    EXPECT_EQ(drawing.frame->area(), 9);
    std::string const written = R"(<v><frame><square name="f" side="3"/></frame><shapes><square name="" side="2"/>)"
                                R"(<strip name=""><length>5</length></strip><square name="" side="0"/></shapes></v>)";
    EXPECT_EQ(lineOf(drawing), written);

    Drawing copy = copyOf(drawing);
    EXPECT_TRUE(copy == drawing);
    copy.shapes[1].name = "changed";
    EXPECT_FALSE(copy == drawing);
    EXPECT_EQ(lineOf(drawing), written);
    copy = drawing;
    copy.shapes.erase(2);
    copy.shapes.append<Square>();
    EXPECT_TRUE(copy == drawing);
    copy.shapes.append<Strip>().length = 4;
    EXPECT_EQ(copy.shapes[3].area(), 4);
    EXPECT_FALSE(copy == drawing);
    copy.frame.make<Strip>();
    EXPECT_NE(copy.frame.as<Strip>(), nullptr);
    readValue(copy, "<v><shapes/></v>");
    EXPECT_TRUE(copy.shapes.empty());
}

TEST(Polymorphic, WhatIsNotWantedIsReportedAndSkipped)
{
    Messages messages;
    Drawing drawing;
    drawing.shapes.registerComponentCreator(Other::classToken(), [] { return static_cast<NyXmlObject*>(new Other); });
    EXPECT_TRUE(
        readValue(drawing, "<v><shapes><other><square/></other><what a='1'><square/></what><square side='1'/></shapes></v>"));
    EXPECT_EQ(messages.text(), "Bad token: other on line 1\nBad token: what on line 1\n");
    EXPECT_EQ(drawing.shapes.size(), 1u);
    EXPECT_EQ(drawing.shapes.append(Other::classToken()), nullptr);
    EXPECT_EQ(drawing.shapes.size(), 1u);
    auto const alternatives = drawing.shapes.alternatives();
    ASSERT_EQ(alternatives.size(), 2u);
    EXPECT_EQ(alternatives[1].name.namespaceAndToken(), "urn:t#strip");
}

using Things = NyXmlManyOf<NyXmlCompoundType>;

TEST(Polymorphic, LibraryTravelsWithItsClasses)
{
    Messages messages;
    std::string const library = std::string(NYXMLKIT_TEST_PLUGIN_DIR) + "/lamps.nyp";
    Things made;
    EXPECT_TRUE(made.loadLibrary(library));
    ASSERT_NE(made.append(NyToken("lamp")), nullptr);
    std::string const document = writtenValue(made);
    EXPECT_EQ(lineOf(made), "<v><lamp library=\"" + library + "\" watt=\"0\"/></v>");

    Things back, later; // that know of nothing
    EXPECT_TRUE(readValue(back, document));
    EXPECT_EQ(writtenValue(back), document);
    EXPECT_TRUE(back == made);
    later = back;
    back.clear();
    EXPECT_TRUE(readValue(later, "<v><lamp watt='3'/></v>"));
    EXPECT_EQ(lineOf(later), "<v><lamp library=\"" + library + "\" watt=\"3\"/></v>");

    Things listed;
    std::string const listing = library.substr(0, library.rfind('.'));
    EXPECT_TRUE(readValue(listed, "<v><addLibraries size='1'><element>" + listing + "</element></addLibraries><lamp/></v>"));
    EXPECT_EQ(lineOf(listed),
              "<v><addLibraries size=\"1\"><element>" + listing + "</element></addLibraries><lamp watt=\"0\"/></v>");
    EXPECT_EQ(messages.text().find("Bad token"), std::string::npos);
}

// --- pointers ------------------------------------------------------------------------------------------------------------------

class Person : public NyXmlModel<Person> {
public:
    static constexpr auto xmlName = "urn:t#person";
    void registerComponents() override
    {
        attribute("name", name);
        element("friend", friends);
    }
    NyXmlBasicType<std::string> name;
    NyXmlRepeated<NyXmlShared<Person>> friends;
};

class Company : public NyXmlModel<Company> {
public:
    static constexpr auto xmlName = "urn:t#company";
    static constexpr auto xmlOrder = NyXmlOrder::asRegistered;
    void registerComponents() override
    {
        element("person", people);
        element("boss", boss);
        element("guest", guest);
    }
    NyXmlRepeated<NyXmlShared<Person>> people;
    NyXmlShared<Person> boss, guest;
};

TEST(Shared, OneObjectStaysOne)
{
    Company company;
    for (char const* name : { "a", "b" })
        company.people.append().make().name = name;
    company.people[0]->friends.append(company.people[1]); // a circle
    company.people[1]->friends.append(company.people[0]);
    company.boss = company.people[1];
    company.guest.make().name = "c";
    std::string const written =
        R"(<v><person sharedId="1" name="a"><friend sharedId="2" name="b"><friend sharedRef="1"/></friend></person>)"
        R"(<person sharedRef="2"/><boss sharedRef="2"/><guest name="c"/></v>)";
    EXPECT_EQ(lineOf(company), written);

    Company back;
    EXPECT_TRUE(readValue(back, writtenValue(company)));
    EXPECT_EQ(back.boss.pointer(), back.people[1].pointer());
    EXPECT_EQ(back.people[0]->friends[0].pointer(), back.people[1].pointer());
    EXPECT_EQ(back.people[1]->friends[0].pointer(), back.people[0].pointer());
    EXPECT_EQ(lineOf(back), written);
    EXPECT_TRUE(back == company);
    back.guest->name = "d";
    EXPECT_FALSE(back == company);
    Company const copy = copyOf(back);
    EXPECT_EQ(copy.boss.pointer(), back.boss.pointer());
    for (Company* each : { &company, &back }) // a circle of pointers keeps itself alive
        each->people[0]->friends.clear();
}

TEST(Shared, NumbersMayComeLateOrNever)
{
    Messages messages;
    Company company;
    EXPECT_TRUE(readValue(company, "<v><boss sharedRef='x'></boss><person sharedId='x' name='a'/></v>"));
    EXPECT_EQ(company.boss.pointer(), company.people[0].pointer());
    EXPECT_EQ(company.boss->name, "a");
    EXPECT_EQ(messages.take(), "");
    EXPECT_TRUE(readValue(company, "<v><boss sharedRef='x'/><guest sharedId='y' name='n'/></v>"));
    EXPECT_EQ(messages.take(), "NyXmlShared Error: no object has the number x.\n");
    EXPECT_EQ(company.boss->name, "");
    EXPECT_TRUE(company.people.empty());
    EXPECT_EQ(company.guest->name, "n");
}

} // namespace
