#include "ValueSupport.h"

#include <nyXml/values/NyXmlOrientation.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/NyXmlVectorVector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>

namespace {

std::string listed(NyXmlVectorVector const& vectors)
{
    std::ostringstream text;
    for (unsigned int i = 0; i < vectors.size(); ++i)
        text << vectors[i].x() << "," << vectors[i].y() << "," << vectors[i].z() << " ";
    return text.str();
}

std::string endTagMessage(std::string const& name, int line)
{
    return name + " Error: file not well formed.\n\tEnd tag needed.\n\tFile: in.xml\n\tLine: " + std::to_string(line);
}

std::string bytesOf(std::initializer_list<double> numbers)
{
    std::string bytes(numbers.size() * sizeof(double), '\0');
    std::memcpy(bytes.data(), numbers.begin(), bytes.size());
    return bytes;
}

} // namespace

TEST(Geometry, VectorsTakeTheirComponentsByName)
{
    auto const warning = [](int count, int line) {
        return "NyXmlVector Warning: 3 attributes needed, but " + std::to_string(count) +
               " were found.\n\tLine: " + std::to_string(line);
    };
    struct {
        std::string document;
        bool result;
        NyVector value;
        std::string message;
    } const rows[] = {
        { "<at x='1' y='2' z='3'/>", true, { 1, 2, 3 }, "" },
        { "<at z='3' y='2e0' x=' 1'></at>", true, { 1, 2, 3 }, "" },
        { "<at x='1'/>", true, { 1, 8, 9 }, warning(1, 1) }, // what is not mentioned stays
        { "\n<at/>", true, { 7, 8, 9 }, warning(0, 2) },
        { "<at x='1' y='2' w='3'/>", true, { 1, 2, 9 }, "" },
        { "<at x='1' y='2' z='3' w='4'/>", true, { 1, 2, 3 }, warning(4, 1) },
        { "<at x='x' y='' z='3'/>", true, { 0, 0, 3 }, "" },
        { "<at x='1' y='2' z='3'>text</at>", false, { 1, 2, 3 }, endTagMessage("NyXmlVector", 1) },
        { "<at x='1' y='2'><b/></at>", false, { 1, 2, 9 }, warning(2, 1) + endTagMessage("NyXmlVector", 1) },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        Messages messages;
        NyXmlVector vector(NyVector(7, 8, 9));
        EXPECT_EQ(readValue(vector, row.document), row.result);
        EXPECT_TRUE(vector == row.value) << vector[0] << " " << vector[1] << " " << vector[2];
        EXPECT_EQ(messages.text(), row.message);
        EXPECT_TRUE(row.message.empty() || messages.types().front() == 4);
        EXPECT_FALSE(vector.specified() || vector.xmlInitialized()); // reading leaves both alone
    }
}

// Half a rotation mixed with an old one would be none: what is not mentioned counts as 0.
TEST(Geometry, OrientationsAreNormalised)
{
    auto const warning = [](int count) {
        return "NyXmlVector Warning: 4 attributes needed, but " + std::to_string(count) + " were found";
    };
    struct {
        std::string document;
        bool result;
        NyOrientation value;
        std::string message;
    } const rows[] = {
        { "<rot q0='2' q1='0' q2='0' q3='0'/>", true, { 1, 0, 0, 0 }, "" },
        { "<rot q3='-8' q2='0' q1='6' q0='0'></rot>", true, { 0, 0.6, 0, -0.8 }, "" },
        { "<rot q1='1'/>", true, { 0, 1, 0, 0 }, warning(1) },
        { "<rot/>", true, { 0, 0, 0, 0 }, warning(0) },
        { "<rot q0='1' q1='0' q2='0' w='5'/>", true, { 1, 0, 0, 0 }, "" },
        { "<rot q0='0' q1='0' q2='3' q3='0'>1</rot>", false, { 0, 0, 1, 0 }, endTagMessage("NyXmlOrientation", 1) },
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.document);
        Messages messages;
        NyXmlOrientation orientation(NyOrientation(0.5, 0.5, 0.5, 0.5));
        EXPECT_EQ(readValue(orientation, row.document), row.result);
        EXPECT_TRUE(orientation == row.value) << orientation.q0() << " " << orientation.q3();
        EXPECT_EQ(messages.text(), row.message);
        EXPECT_TRUE(row.message.empty() || messages.types().front() == 4);
        EXPECT_FALSE(orientation.specified() || orientation.xmlInitialized());
    }
}

TEST(Geometry, WrittenFormsAndSchemas)
{
    NyXmlVector const vector(NyVector(0.5, -2, 1e30));
    EXPECT_EQ(writtenValue(vector), "<v x=\"0.5\" y=\"-2\" z=\"1.0000000000000000199e+30\"/>\n");
    EXPECT_EQ(writtenValue(NyXmlOrientation()), "<v q0=\"1\" q1=\"0\" q2=\"0\" q3=\"0\"/>\n");
    EXPECT_EQ(writtenValue(NyXmlVectorVector()), "<v size=\"0\"/>\n");
    NyXmlVectorVector path(1, NyVector(1, 2, 3));
    path.pushBack(vector);
    EXPECT_EQ(writtenValue(path), "<v size=\"2\">\n  <element x=\"1\" y=\"2\" z=\"3\"/>\n"
                                  "  <element x=\"0.5\" y=\"-2\" z=\"1.0000000000000000199e+30\"/>\n </v>\n");
    NyXmlVectorVector back;
    EXPECT_TRUE(readValue(back, writtenValue(path)) && back == path && back.equality(&path) && !back.equality(&vector));

    EXPECT_EQ(SchemaCalls::of(vector), "x=d y=d z=d ");
    EXPECT_EQ(SchemaCalls::of(NyXmlOrientation()), "q0=d q1=d q2=d q3=d ");
    EXPECT_EQ(SchemaCalls::of(path), "size=j [2 element: x=d y=d z=d ] ");
}

TEST(Geometry, ManyVectorsAreReadByPosition)
{
    struct {
        std::string document;
        std::string vectors;
        std::string behind; // the first event that is left to the caller
    } const rows[] = {
        { "<a><p size='0'></p></a>", "", "end p" }, // its own end tag
        { "<a><p size='0'/></a>", "", "end a" },
        { "<a><p/></a>", "", "end a" },
        { "<a><p n='1'><e y=\"1\" a=\"2\" x=\"3\"/></p></a>", "1,2,3 ", "end a" }, // no name matters
        { "<a><p size='2'><e x=\"1\" y=\"2\"/><e z=\"3\"/>\n<e x=\"4\"\ny=\" 5\" z=\"x\"/></p></a>", "1,2,3 4,5,0 ", "end a" },
        { "<a><p size='1' ><e x=\"1\" y='7' y=\"2\" z=\"3\"><f/></e></p></a>", "1,2,3 ", "error" }, // trusted too far
    };
    auto const read = [](auto* kind, std::string const& document, NyXmlVectorVector& path) {
        std::istringstream stream(document);
        std::remove_pointer_t<decltype(kind)> reader("in.xml", stream);
        reader.readXml();
        reader.readXml();
        bool const result = path.read(reader);
        if (!result || reader.readXml() == NyXmlFileReader::XML_READER_ERROR)
            return std::string("error");
        return "end " + (reader.element().empty() ? "a" : reader.element() == "a" ? std::string("p") : reader.element().token());
    };
    for (auto const& row : rows) {
        for (std::size_t edge = 0; edge <= row.document.size(); ++edge) { // where the block ends may change nothing
            SCOPED_TRACE(row.document + " " + std::to_string(edge));
            std::string const document = std::string(16383 - edge, ' ') + row.document + "\n";
            Messages messages;
            NyXmlVectorVector path(3);
            ASSERT_EQ(read(static_cast<NyXmlReader*>(nullptr), document, path), row.behind);
            ASSERT_EQ(listed(path), row.vectors);
            ASSERT_FALSE(path.specified() || path.xmlInitialized());
            std::string const said = messages.take();
            NyXmlVectorVector plain(5);
            ASSERT_EQ(read(static_cast<ApplicationReader*>(nullptr), document, plain), row.behind);
            ASSERT_TRUE(plain == path);
            ASSERT_EQ(messages.text(), said);
        }
    }
}

TEST(Geometry, ACountOfVectorsIsNotTrustedWithTheMemory)
{
    Messages messages;
    NyXmlVectorVector path(4);
    EXPECT_FALSE(readValue(path, "<p size='2147483647'><e x=\"1\" y=\"2\" z=\"3\"/><e x=\"4\" y=\"5\"/></p>"));
    EXPECT_EQ(listed(path), "1,2,3 ");
    EXPECT_NE(messages.text(), "");
    EXPECT_THROW(readValue(path, "<p size='-1'/>"), std::length_error);
}

TEST(Geometry, LinesAreCountedBehindTheFastPath)
{
    Messages messages;
    NyXmlVectorVector path;
    EXPECT_FALSE(readValue(path, "<p size='2'>\n<e x=\"1\" y=\"2\" z=\"3\"/>\n<e x=\"4\"\ny=\"5\" z=\"6\"/>\n<b></p>"));
    EXPECT_NE(messages.text().find("Line: 5"), std::string::npos) << messages.text();
}

TEST(Geometry, BinaryFormsAreTheBytesOfTheNumbers)
{
    double const tiny = std::numeric_limits<double>::denorm_min();
    std::stringstream stream;
    EXPECT_TRUE(NyXmlVector(NyVector(1, -0.0, tiny)).writeBin(stream));
    EXPECT_TRUE(NyXmlOrientation(NyOrientation(2, 3, 4, 5)).writeBin(stream));
    EXPECT_EQ(stream.str(), bytesOf({ 1, -0.0, tiny, 2, 3, 4, 5 }));

    NyXmlVector vector;
    NyXmlOrientation orientation;
    EXPECT_TRUE(vector.readBin(stream) && orientation.readBin(stream));
    EXPECT_TRUE(vector == NyVector(1, 0, tiny) && std::signbit(vector[1]));
    EXPECT_TRUE(orientation == NyOrientation(2, 3, 4, 5)); // as it is, not normalised

    std::stringstream cut(bytesOf({ 7, 8 }));
    EXPECT_FALSE(vector.readBin(cut) || vector.writeBin(cut));
    EXPECT_TRUE(vector == NyVector(1, 0, tiny));
}

TEST(Geometry, DumpsNameTheirFile)
{
    ScratchDirectory const directory;
    NyXmlVectorVector path(1, NyVector(1, -0.1, 1e-300));
    path.pushBack(NyVector());
    for (auto const& [file, name] :
         { std::pair{ "out.m", "out" }, std::pair{ "a\\b.c.m", "b.c" }, std::pair{ "plain", "plain" } }) {
        ASSERT_TRUE(NyXmlVector::dump(path, directory.path(file).c_str()));
        std::ifstream stream(directory.path(file));
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}),
                  std::string(name) + "=[...\n1.0000000000000000e+00 -1.0000000000000001e-01 1.0000000000000000e-300 \n"
                                      "0.0000000000000000e+00 0.0000000000000000e+00 0.0000000000000000e+00 \n]\n");
    }
    EXPECT_FALSE(NyXmlVector::dump(path, directory.path("no/such/directory").c_str()));
}
