#ifndef SAMPLES_SAMPLE_H
#define SAMPLES_SAMPLE_H

#include <nyXml/nyXml.h>

#include <sstream>
#include <string>

/// What the classes of the samples have in common, so that the pages show only what is new.
template <class Self>
class Sample : public NyXmlCompoundType {
public:
    NyXmlObject* clone() const override { return new Self(static_cast<Self const&>(*this)); }
    NyXmlObject* newObject() const override { return new Self; }
    NyToken const& token() const override
    {
        static NyToken const name("urn:demo/samples#sample");
        return name;
    }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<Self const*>(other);
        return same != nullptr && static_cast<Self const&>(*this) == *same;
    }
};

/// Reads a document to its end. False if it was not whole.
inline bool readWhole(NyXmlObject& object, std::string const& document)
{
    std::istringstream stream(document);
    NyXmlReader reader("sample.xml", stream);
    auto const mode = reader.readXml();
    bool whole =
        (mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG) && object.read(reader);
    whole = whole && reader.readXml() == NyXmlFileReader::XML_READER_EOF && reader.errorCode() == 0;
    return whole;
}

inline std::string written(NyXmlObject const& object)
{
    std::ostringstream stream;
    {
        NyXmlWriter writer("sample.xml", stream);
        writer.writeStartTag(object.token());
        object.write(writer);
        writer.writeEndTag();
    }
    return stream.str();
}

/// Whether an object that was written and read again is the same.
template <class Object>
bool comesBack(Object const& object)
{
    Object again;
    return readWhole(again, written(object)) && again == object;
}

#endif
