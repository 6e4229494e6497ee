// The samples of the page on foreign formats, as a program: children that repeat without a container.

#include "Sample.h"

#include <vector>

namespace {

NyToken const pointName("urn:demo/tracks#point");

class Point : public Sample<Point> {
public:
    NyXmlBasicType<double> x;

    void registerComponents() override { registerAttributeComponent(NyToken("x"), &x); }
    bool operator==(Point const& other) const { return x == other.x; }
};

class Track : public Sample<Track> {
public:
    NyXmlBasicType<std::string> name;
    std::vector<Point> points;

    void registerComponents() override { registerComponent(NyToken("urn:demo/tracks#name"), &name); }
    bool operator==(Track const& other) const { return name == other.name && points == other.points; }

    bool readValueFromSpecialToken(NyToken const& element, NyXmlReader& reader) override;
    bool writeElements(NyXmlWriter& writer) const override;
};

bool Track::readValueFromSpecialToken(NyToken const& element, NyXmlReader& reader)
{
    if (!(element == std::string("point"))) // by local name: names that are read have no namespace
        return NyXmlCompoundType::readValueFromSpecialToken(element, reader); // complains and skips
    points.emplace_back();
    points.back().read(reader);
    return true;
}

bool Track::writeElements(NyXmlWriter& writer) const
{
    bool const written = NyXmlCompoundType::writeElements(writer); // the registered ones
    for (Point const& point : points) {
        writer.writeStartTag(pointName);
        point.write(writer);
        writer.writeEndTag();
    }
    return written;
}

} // namespace

int main()
{
    Track track;
    track.name.setValue("ridge");
    track.points.resize(3);
    track.points[1].x.setValue(1.5);
    return comesBack(track) ? 0 : 1;
}
