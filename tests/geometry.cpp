#include "ValueSupport.h"

#include <nyXml/values/NyXmlOrientation.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/NyXmlVectorVector.h>

#include <cstring>
#include <iterator>
#include <limits>

namespace {

std::string listed(NyXmlVectorVector const& vectors)
{
    std::ostringstream text;
    for (unsigned int i = 0; i < vectors.size(); ++i)
        text << vectors[i].x() << "," << vectors[i].y() << "," << vectors[i].z() << " ";
    return text.str();
}

} // namespace

// What a vector is not told stays as it was. Half a rotation mixed with an old one would be none: what is not mentioned counts as 0,
// and what was read is normalised.
TEST(Geometry, ComponentsAreTakenByName)
{
    std::string const warning = "NyXmlVector Warning: "; // of both classes
    std::string const endTag = " Error: file not well formed.\n\tEnd tag needed.\n\tFile: in.xml\n\tLine: 1";
    struct {
        std::string document;
        std::string written;
        std::string message;
    } const rows[] = {
        { "<at z='3' y='2e0' x=' 1'></at>", R"(x="1" y="2" z="3")", "" },
        { "<at x='1'/>", R"(x="1" y="8" z="9")", warning + "3 attributes needed, but 1 were found.\n\tLine: 1" },
        { "\n<at/>", R"(x="7" y="8" z="9")", warning + "3 attributes needed, but 0 were found.\n\tLine: 2" },
        { "<at x='1' y='2' w='3'/>", R"(x="1" y="2" z="9")", "" },
        { "<at x='1' y='2' z='3' w='4'/>", R"(x="1" y="2" z="3")",
          warning + "3 attributes needed, but 4 were found.\n\tLine: 1" },
        { "<at x='x' y='' z='3'/>", R"(x="0" y="0" z="3")", "" },
        { "<at x='1' y='2' z='3'>text</at>", R"(x="1" y="2" z="3")", "NyXmlVector" + endTag },
        { "<at x='1' y='2'><b/></at>", R"(x="1" y="2" z="9")",
          warning + "3 attributes needed, but 2 were found.\n\tLine: 1NyXmlVector" + endTag },
        { "<rot q0='2' q1='0' q2='0' q3='0'/>", R"(q0="1" q1="0" q2="0" q3="0")", "" },
        { "<rot q3='-9' q2='0' q1='0' q0='0'></rot>", R"(q0="0" q1="0" q2="0" q3="-1")", "" },
        { "<rot q1='5'/>", R"(q0="0" q1="1" q2="0" q3="0")", warning + "4 attributes needed, but 1 were found" },
        { "<rot/>", R"(q0="0" q1="0" q2="0" q3="0")", warning + "4 attributes needed, but 0 were found" },
        { "<rot q0='1' q1='0' q2='0' w='5'/>", R"(q0="1" q1="0" q2="0" q3="0")", "" },
        { "<rot q0='0' q1='0' q2='3' q3='0'>1</rot>", R"(q0="0" q1="0" q2="1" q3="0")", "NyXmlOrientation" + endTag },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        Messages messages;
        NyXmlVector vector(NyVector(7, 8, 9));
        NyXmlOrientation orientation(NyOrientation(0.5, 0.5, 0.5, 0.5));
        NyXmlObject& value = row.document.find("<rot") == 0 ? static_cast<NyXmlObject&>(orientation) : vector;
        EXPECT_EQ(readValue(value, row.document), row.message.find("Error") == std::string::npos);
        EXPECT_FALSE(value.specified() || value.xmlInitialized()); // reading leaves both alone
        EXPECT_EQ(messages.text(), row.message);
        EXPECT_EQ(writtenValue(value), "<v " + row.written + "/>\n");
    }
}

TEST(Geometry, WrittenFormsAndSchemas)
{
    NyXmlVectorVector path;
    EXPECT_EQ(writtenValue(path), "<v size=\"0\"/>\n");
    path.assign(1, NyVector(1, 2, 3));
    path.pushBack(NyVector(0.5, -2, 1e30));
    std::string const written = writtenValue(path);
    EXPECT_EQ(written, "<v size=\"2\">\n  <element x=\"1\" y=\"2\" z=\"3\"/>\n"
                       "  <element x=\"0.5\" y=\"-2\" z=\"1.0000000000000000199e+30\"/>\n </v>\n");
    NyXmlVector const vector;
    NyXmlVectorVector back;
    EXPECT_TRUE(readValue(back, written) && back.equality(&path) && !back.equality(&vector));
    EXPECT_EQ(SchemaCalls::of(vector), "x=d y=d z=d ");
    EXPECT_EQ(SchemaCalls::of(NyXmlOrientation()), "q0=d q1=d q2=d q3=d ");
    EXPECT_EQ(SchemaCalls::of(path), "size=j [2 element: x=d y=d z=d ] ");
}

TEST(Geometry, ManyVectorsAreReadByPositionWhereverABlockEnds)
{
    struct {
        std::string document;
        std::string seen; // vectors, result, and the event on which the reader stands then
    } const rows[] = {
        { "<p size='0'></p>", "true 1 " }, // the end tag is left to the caller
        { "<p size='0'/>", "true 3 " },
        { "<p n='1'><e y=\"1\" a=\"2\" x=\"3\"/></p>", "1,2,3 true 4 " }, // no name matters
        { "<p size='2'><e x=\"-12.5\" y=\"2\"/><e z=\"3\"/>\n<e x=\"4\"\ny=\" 5\" z=\"x\"/></p>", "-12.5,2,3 4,5,0 true 4 " },
        { "<p size='1' ><e x=\"1\" y='7' y=\"2\" z=\"3\"><f/></e></p>", "1,2,3 false " }, // trusted too far
    };
    for (auto const& row : rows) {
        for (std::size_t edge = 0; edge <= row.document.size(); ++edge) {
            SCOPED_TRACE(row.document + " " + std::to_string(edge));
            std::string const document = std::string(16383 - edge, ' ') + row.document + "\n";
            NyXmlVectorVector path(3);
            std::string const seen = expectBothWaysAgree(path, document);
            EXPECT_EQ((listed(path) + seen).substr(0, row.seen.size()), row.seen);
        }
    }
}

TEST(Geometry, ACountOfVectorsIsNotTrustedWithTheMemory)
{
    Messages messages;
    NyXmlVectorVector path(4);
    EXPECT_FALSE(readValue(path, "<p size='2147483647'>\n<e x=\"1\" y=\"2\"\nz=\"3\"/>\n<e x=\"4\" y=\"5\"/></p>"));
    EXPECT_FALSE(path.specified() || path.xmlInitialized());
    EXPECT_EQ(listed(path), "1,2,3 ");
    EXPECT_EQ(messages.text(),
              "NyXmlFileReader Error: file not well formed.\n\tPremature end of file.\n\tFile: in.xml\n\tLine: 4\n");
    EXPECT_THROW(readValue(path, "<p size='-1'/>"), std::length_error);
}

TEST(Geometry, BinaryFormsAreTheBytesOfTheNumbers)
{
    double const numbers[] = { 1, -0.0, std::numeric_limits<double>::denorm_min(), 2, 3, 4, 5 };
    std::string bytes(sizeof numbers, '\0');
    std::memcpy(bytes.data(), numbers, sizeof numbers);
    std::stringstream in(bytes);
    std::stringstream out;
    NyXmlVector vector;
    NyXmlOrientation orientation;
    EXPECT_TRUE(vector.readBin(in) && orientation.readBin(in) && vector.writeBin(out) && orientation.writeBin(out));
    EXPECT_EQ(out.str(), bytes); // the rotation as it is, not normalised
    EXPECT_EQ(orientation.q3(), 5.0);

    std::stringstream cut(bytes.substr(0, 23));
    EXPECT_FALSE(vector.readBin(cut) || vector.writeBin(cut));
    EXPECT_EQ(vector[0], 1.0);
}

TEST(Geometry, DumpsNameTheirFile)
{
    ScratchDirectory const directory;
    NyXmlVectorVector path(1, NyVector(1, -0.1, 1e-300));
    path.pushBack(NyVector());
    std::string const matrix = "=[...\n1.0000000000000000e+00 -1.0000000000000001e-01 1.0000000000000000e-300 \n"
                               "0.0000000000000000e+00 0.0000000000000000e+00 0.0000000000000000e+00 \n]\n";
    for (auto const& [file, name] : { std::pair{ "out.m", "out" }, { "a\\b.c.m", "b.c" }, { "plain", "plain" } }) {
        ASSERT_TRUE(NyXmlVector::dump(path, directory.path(file).c_str()));
        std::ifstream stream(directory.path(file));
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), name + matrix);
    }
    EXPECT_FALSE(NyXmlVector::dump(path, directory.path("no/such/directory").c_str()));
}
