// Reads an object whose class comes from a plug-in, looks at it through the library's types alone, and writes it again.
// The plug-in is looked for in the folder that the command line names; without one, that part is left out.

#include <nyXml/nyXml.h>

#include <iostream>
#include <memory>
#include <sstream>

namespace {

/// An item of the application's own for one of the library's families.
class Shelf : public NyXmlCompoundType {
public:
    NyXmlObject* clone() const override { return new Shelf(*this); }
    NyXmlObject* newObject() const override { return new Shelf; }
    NyToken const& token() const override
    {
        static NyToken const token("urn:outside", "shelf");
        return token;
    }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* shelf = dynamic_cast<Shelf const*>(other);
        return shelf != nullptr && shelf->books == books;
    }
    void registerComponents() override { registerAttributeComponent("books", &books); }

    NyXmlBasicType<unsigned int> books;
};

bool read(std::string const& text, NyXmlObject& object)
{
    std::istringstream stream(text);
    NyXmlReader reader("text", stream);
    bool const read = reader.readXml() == NyXmlFileReader::XML_READER_START_TAG && object.read(reader);
    return read && reader.readXml() == NyXmlFileReader::XML_READER_EOF; // the document did not break off
}

std::string written(NyXmlObject const& object)
{
    std::ostringstream stream;
    {
        NyXmlWriter writer("text", stream);
        writer.writeStartTag(object.token());
        object.write(writer);
        writer.writeEndTag();
    }
    return stream.str();
}

int failed(char const* what)
{
    std::cerr << "outside: " << what << '\n';
    return 1;
}

int lampFrom(std::string const& folder)
{
    NyXmlFactory factory;
    if (!factory.loadLibrary(folder + "/lamp.nyp"))
        return failed("the plug-in could not be loaded");
    std::unique_ptr<NyXmlObject> const lamp(factory.newObjectFromToken("lamp"));
    auto* compound = dynamic_cast<NyXmlCompoundType*>(lamp.get());
    if (compound == nullptr || !read("<lamp><watts>7.5</watts></lamp>", *lamp))
        return failed("the plug-in's object could not be read");

    auto const component = compound->componentMap().find("watts");
    auto const* watts =
        component == compound->componentMap().end() ? nullptr : dynamic_cast<NyXmlBasicType<double> const*>(component->second);
    if (watts == nullptr || watts->value() != 7.5)
        return failed("the plug-in's member is not what the document says");

    std::unique_ptr<NyXmlObject> const again(lamp->newObject());
    if (!read(written(*lamp), *again) || !again->equality(lamp.get()))
        return failed("what was written does not read back as the same");
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 2 && lampFrom(argv[1]) != 0)
        return 1;

    NyXmlVectorType<Shelf> shelves;
    if (!read("<shelves size='2'><element books='3'/><element books='4'/></shelves>", shelves) || shelves.size() != 2 ||
        shelves[1].books.value() != 4)
        return failed("a sequence of the application's own items could not be read");

    std::cout << "outside: read, written and read again\n";
    return 0;
}
