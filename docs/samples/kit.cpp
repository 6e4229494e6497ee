// The samples of the pages on the companion library, as a program: a class in a few lines, its versions, its schema, the world's XML, and one
// call from a file to an object and back. Runs in a folder of its own.

#include <nyXml/nyXml.h>
#include <nyXmlKit/file/NyXmlFile.h>
#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlOptional.h>
#include <nyXmlKit/model/NyXmlRepeated.h>
#include <nyXmlKit/model/NyXmlVersioned.h>
#include <nyXmlKit/schema/NyXmlAnyOrder.h>
#include <nyXmlKit/schema/NyXmlExactSchema.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include <nyXmlKit/standard/NyXmlStandardReader.h>
#include <nyXmlKit/standard/NyXmlStandardWriter.h>

namespace {

class Point : public NyXmlModel<Point> {
public:
    static constexpr auto xmlName = "urn:demo/tracks#point";
    void registerComponents() override
    {
        requiredAttributes("lat", lat, "lon", lon); // missed if a document lacks them
        element("name", name);
    }
    NyXmlBasicType<double> lat, lon;
    NyXmlOptional<std::string> name; // there or not
};

class Track : public NyXmlModel<Track> {
public:
    static constexpr auto xmlName = "urn:demo/tracks#track";
    void registerComponents() override { element("point", points); }
    NyXmlRepeated<Point> points;
};

class Robot : public NyXmlModel<Robot, NyXmlVersioned> {
public:
    static constexpr auto xmlName = "urn:demo/arm#robot";
    static constexpr unsigned int xmlVersion = 3; // what we write: <robot formatVersion="3" ...>
    void registerComponents() override
    {
        element("reach", reach);           // in all versions
        element("speed", speed, since(2)); // was called velo
        element("velo", speed, until(1));
        oldElement("colour", until(2)); // nobody wants it any more
    }
    NyXmlBasicType<double> reach, speed;
};

class Joint : public NyXmlModel<Joint>, public NyXmlAnyOrder {
public:
    static constexpr auto xmlName = "urn:demo/arm#joint";
    void registerComponents() override { element("limit", limit); }
    NyXmlBasicType<double> limit;
};

bool throughTheWorldsXml(Track& model)
{
    {
        std::ofstream out("model.xml", std::ios::binary);
        NyXmlStandardWriter writer("model.xml", out);
        writer.writeStartTag(NyToken("urn:demo/shapes#model"));
        model.write(writer);
        writer.writeEndTag();
    }
    std::ifstream in("model.xml", std::ios::binary);
    NyXmlStandardReader reader("model.xml", in);
    auto mode = reader.readXml();
    if (mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG)
        model.read(reader);
    while (reader.mode() != NyXmlFileReader::XML_READER_EOF && reader.mode() != NyXmlFileReader::XML_READER_ERROR)
        reader.readXml(); // what stands behind the root may be wrong, too
    return reader.errorCode() == 0;
}

} // namespace

int main(int, char** arguments)
{
    std::filesystem::path const folder = std::filesystem::path(arguments[0]).replace_extension(".out");
    std::filesystem::create_directories(folder);
    std::filesystem::current_path(folder);

    Track track;
    track.points.append().name = "here & there";
    track.points.append();

    Track again = track;
    if (!throughTheWorldsXml(again) || again != track)
        return EXIT_FAILURE;

    if (auto const result = NyXmlFile::write("track.xml", track); !result)
        std::cerr << result.str(); // the old document is still there

    Joint joint;
    NyXmlExactSchema::create(joint, "joint.xml", joint.token()); // joint.arm.xsd
    if (!std::filesystem::exists("joint.arm.xsd"))
        return EXIT_FAILURE;

    std::ofstream("robot.xml") << "<robot><velo>2</velo><colour>red</colour></robot>";
    Robot robot;
    auto const result = NyXmlFile::read("robot.xml", robot);
    if (!result)
        std::cerr << result.str();
    return result && robot.speed == 2.0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
