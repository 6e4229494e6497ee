#include <nyXmlKit/model/NyXmlOptional.h>

#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/writer/NyXmlWriter.h>

void NyXmlOccurrenceWork::writeElement(NyXmlWriter& writer, NyToken const& name, NyXmlObject const& object)
{
    writer.writeStartTag(name);
    object.write(writer);
    writer.writeEndTag();
}

bool NyXmlOccurrenceWork::isEmptyTag(NyXmlReader const& reader) { return reader.mode() == NyXmlFileReader::XML_READER_EMPTY_TAG; }
