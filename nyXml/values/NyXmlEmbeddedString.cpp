#include <nyXml/values/NyXmlEmbeddedString.h>

#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/writer/NyXmlWriter.h>

NyXmlEmbeddedString::~NyXmlEmbeddedString() = default;

bool NyXmlEmbeddedString::read(NyXmlReader& reader)
{
    if (NyXmlObject::read(reader) && reader.mode() == NyXmlFileReader::XML_READER_START_TAG) {
        setValueFromString(reader.getChildrenAsString());
        if (reader.mode() == NyXmlFileReader::XML_READER_END_TAG)
            return true;
    }
    Ny::Print::write(Ny::Print::FAULT, "NyXmlEmbeddedString: file not valid.\n\tNo data found.\n\tFile: %s\n\tLine: %d\n",
                     reader.filename(), reader.lineCountOfFile());
    return false;
}

bool NyXmlEmbeddedString::write(NyXmlWriter& writer) const
{
    NyXmlWriter::Markup const markup(writer); // a writer that escapes strings has to know
    return NyXmlBasicType<std::string>::write(writer);
}
