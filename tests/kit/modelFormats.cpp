// The examples' models of formats that are not ours: nothing of what they know is lost on the way through an object, in the samples and,
// where NYXML_REAL_DOCUMENTS names a folder, in documents that nobody of this project wrote. NYXML_GPX_SCHEMA names the XSD of GPX 1.1.

#include "../Support.h"
#include "ModelSupport.h"
#include "SchemaValidators.h"

#include "../../examples/gpx/Gpx.h"
#include "../../examples/osm/Osm.h"
#include "../../examples/urdf/Urdf.h"

#include <nyXmlKit/standard/NyXmlStandardReader.h>
#include <nyXmlKit/standard/NyXmlStandardWriter.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>

namespace {

namespace fs = std::filesystem;

std::string textOf(std::string const& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

template <class Root>
std::string readFrom(Root& root, std::string const& document)
{
    Messages messages;
    std::istringstream stream(document);
    NyXmlStandardReader reader("in", stream);
    reader.readXml();
    EXPECT_EQ(reader.element().token(), root.token().token());
    EXPECT_TRUE(root.read(reader));
    EXPECT_EQ(reader.readXml(), NyXmlFileReader::XML_READER_EOF);
    std::string const said = messages.take();
    return std::regex_replace(said, std::regex("NyXmlObject::checkVersion warning[^\n]*\n"), "");
}

std::string writtenBy(NyXmlObject const& root)
{
    std::ostringstream stream;
    NyXmlStandardWriter writer("out", stream);
    writer.setNoSchemaLocation(true);
    writer.setNoNil(true);
    writer.setNoNamespaceComplaints(true);
    writer.writeStartTag(root.token());
    root.write(writer);
    writer.writeEndTag();
    return stream.str();
}

// How often each of these words stands there.
std::map<std::string, int> wordsOf(std::string const& document, std::regex const& words)
{
    std::map<std::string, int> counts;
    for (std::sregex_iterator word(document.begin(), document.end(), words), end; word != end; ++word)
        ++counts[word->str()];
    return counts;
}

// Those of markup that is kept stay, others don't.
std::string withoutComments(std::string document)
{
    for (std::size_t at = 0; (at = document.find("<!--", at)) != std::string::npos;)
        document.erase(at, document.find("-->", at) + 3 - at);
    return document;
}

template <class Root>
Root roundTrip(std::string const& path, std::string const& words)
{
    SCOPED_TRACE(path);
    std::string const document = textOf(path);
    Root root, back;
    EXPECT_EQ(readFrom(root, document), "");
    std::string const written = writtenBy(root);
    EXPECT_EQ(readFrom(back, written), "");
    EXPECT_TRUE(back == root);
    EXPECT_EQ(writtenBy(back), written);
    std::regex const each(words);
    EXPECT_EQ(wordsOf(withoutComments(written), each), wordsOf(withoutComments(document), each));
    char const* const schema = std::getenv("NYXML_GPX_SCHEMA");
    if (schema != nullptr && std::is_same_v<Root, gpx::Gpx>) {
        for (auto const& validator : validatorsFor(schema))
            EXPECT_EQ(validator->fault() + validator->complaint(written), "") << written;
    }
    return root;
}

std::string const samples = NYXML_EXAMPLES_DIR;
std::string real(std::string const& name)
{
    char const* const folder = std::getenv("NYXML_REAL_DOCUMENTS");
    std::string const path = folder == nullptr ? std::string() : std::string(folder) + "/" + name;
    return fs::exists(path) ? path : std::string();
}

TEST(Formats, SamplesLoseNothing)
{
    auto const walk =
        roundTrip<gpx::Gpx>(samples + "/gpx/data/walk.gpx", "<[a-z:]+|>[^<\n]+<|(id|author|maxlon|unit)=\"[^\"]*\"");
    EXPECT_EQ(walk.tracks[0].segments[1].points[1].ele.valueOr(0.0), 138.25);
    EXPECT_EQ(*walk.metadata.name, std::string("A walk & a rest"));
    auto const arm = roundTrip<urdf::Robot>(samples + "/urdf/data/arm.urdf",
                                            "<[a-z]+| (name|link|type|xyz|filename|radius|reference)=\"[^\"]*\"|>[^<\n]+<");
    EXPECT_NE(arm.links[1].visuals[0].geometry.as<urdf::Box>(), nullptr);
    EXPECT_EQ(arm.joints[1].kind.value(), urdf::JointKind::continuous);
    auto const square =
        roundTrip<osm::Osm>(samples + "/osm/data/square.osm", "</?[a-z]+| (id|ref|k|v|role|user|timestamp)=\"[^\"]*\"");
    EXPECT_EQ(square.ways[0].tag("name"), "Market \"Square\"");
    EXPECT_EQ(square.ways[0].id.value(), 9000000001LL);
}

TEST(Formats, RealDocumentsLoseNothing)
{
    if (real("atlas.urdf").empty())
        GTEST_SKIP() << "NYXML_REAL_DOCUMENTS names no folder of real documents";
    auto const track = roundTrip<gpx::Gpx>(real("korita-zbevnica.gpx"),
                                           "<(wpt|trk|trkseg|trkpt|ele|time|name|cmt|desc|sym|bounds)\\b|minlat=\"[^\"]*\"");
    EXPECT_EQ(track.tracks.size(), 4u);
    for (char const* const name : { "atlas.urdf", "nao.urdf" }) {
        auto const robot = roundTrip<urdf::Robot>(
            real(name), "<(mesh|box|axis|mimic|safety_controller|parent|child) |<(gazebo|transmission|plugin|pose)\\b");
        EXPECT_GT(robot.links.size(), 40u);
    }
    auto const map = roundTrip<osm::Osm>(real("lanelet-mapping-example.osm"), "<(node|way|relation|tag|nd|member) ");
    EXPECT_EQ(map.nodes.size(), 2258u);
    EXPECT_EQ(map.nodes[0].lat.text(), "49.00345654351");
}

} // namespace
