#include <nyXml/values/detail/NyXmlEntries.h>

#include <nyXml/core/NyXml.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/values/detail/NyXmlOwnValues.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXml/writer/detail/NyXmlTogether.h>

#include <ostream>
#include <typeinfo>

namespace {

using Mode = NyXmlFileReader::XML_READER_MODE;

std::ostream& complainAboutMap(NyXmlReader const& reader, char const* where)
{
    return Ny::Print::ostream(Ny::Print::FAULT, where)
           << "NyXmlMapType Error: file not valid.\n\t"
           << "Key map format not correct.\n\tFile: " << reader.filename() << "\n\tLine: " << reader.lineCountOfFile() << '\n';
}

/// Says what is wrong and gives the result that goes with it.
bool refuseMap(NyXmlReader const& reader, char const* where)
{
    complainAboutMap(reader, where);
    return false;
}

/// Goes to the next event, past all entries on the way that need no look at each event.
Mode readOn(NyXmlReader& reader, NyXmlEntrySink& sink)
{
    if (sink.isOfTexts() && typeid(reader) == typeid(NyXmlReader)) {
        std::string_view key;
        std::string_view value;
        while (reader.takeEntry(key, value))
            sink.take(reader, key, value);
    }
    return reader.readXml();
}

void dropAttributes(NyXmlReader& reader)
{
    for (unsigned int left = reader.remainingNumOfAttributes(); left != 0; --left)
        reader.attributeValue();
}

void writeFramed(NyXmlWriter& writer, NyToken const& token, NyXmlObject const& object)
{
    NyXmlTogether together(writer);
    writer.writeStartTagUsingParentNamespace(token);
    {
        NyXmlApart const apart(writer, !NyXmlOwnValues::has(object));
        object.write(writer);
    }
    writer.writeEndTag();
    together.end();
}

} // namespace

bool NyXmlEntries::readMap(NyXmlReader& reader, char const* where, NyXmlEntrySink& sink)
{
    if (reader.mode() == NyXmlFileReader::XML_READER_EMPTY_TAG)
        return true;

    Mode event = readOn(reader, sink);
    for (; event == NyXmlFileReader::XML_READER_START_TAG; event = readOn(reader, sink)) {
        if (reader.element() != NyXml::NyElementToken) {
            complainAboutMap(reader, where) << "\tExpected " << NyXml::NyElementToken.localName() << " but received "
                                            << reader.element().localName() << ".\n";
            return false;
        }
        // A key without text is no key; a value may well be empty.
        if (reader.readXml() != NyXmlFileReader::XML_READER_START_TAG)
            return refuseMap(reader, where);
        sink.readKey(reader);

        event = reader.readXml();
        if (event != NyXmlFileReader::XML_READER_START_TAG && event != NyXmlFileReader::XML_READER_EMPTY_TAG)
            return refuseMap(reader, where);
        sink.readValue(reader);
        dropAttributes(reader);

        if (reader.readXml() != NyXmlFileReader::XML_READER_END_TAG)
            return refuseMap(reader, where);
    }
    return event != NyXmlFileReader::XML_READER_ERROR;
}

void NyXmlEntries::writeEntry(NyXmlWriter& writer, NyXmlObject const& key, NyXmlObject const& value)
{
    NyXmlTogether together(writer);
    writer.writeStartTagUsingParentNamespace(NyXml::NyElementToken);
    writeFramed(writer, NyXml::NyKeyToken, key);
    writeFramed(writer, NyXml::NyValueToken, value);
    writer.writeEndTag();
    together.end();
}

void NyXmlEntries::writeMapSchema(NyXmlSchema& schema, NyXmlObject const& key, NyXmlObject const& value)
{
    schema.writeStartTagUsingParentNamespace(NyXml::NyElementToken, NyXmlSchemaElementType::XML_STARTTAG_UNBOUNDED);
    writeMemberSchema(schema, NyXml::NyKeyToken, key);
    writeMemberSchema(schema, NyXml::NyValueToken, value);
    schema.writeEndTag();
}

bool NyXmlEntries::readPair(NyXmlReader& reader, char const* where, std::string const& firstTag, std::string const& secondTag,
                            NyXmlMemberSink& sink)
{
    if (reader.mode() == NyXmlFileReader::XML_READER_EMPTY_TAG)
        return true;

    bool result = true;
    for (;;) {
        Mode const event = reader.readXml();
        if (event == NyXmlFileReader::XML_READER_ERROR)
            return false;
        if (event != NyXmlFileReader::XML_READER_START_TAG && event != NyXmlFileReader::XML_READER_EMPTY_TAG)
            return result;

        NyToken const& element = reader.element();
        if (element == firstTag || element == NyXml::NyFirstToken) {
            sink.readFirst(reader);
        } else if (element == secondTag || element == NyXml::NySecondToken) {
            sink.readSecond(reader);
        } else {
            // The child is not skipped: the reading goes on inside it, and as a rule ends at its content.
            Ny::Print::ostream(Ny::Print::FAULT, where)
                << "NyXmlPairType Error: file not valid.\n\tFormat not correct.\n\tFile: " << reader.filename()
                << "\n\tLine: " << reader.lineCountOfFile() << '\n'
                << "\tExpected " << firstTag << " or " << secondTag << " but received " << element.localName() << ".\n";
            result = false;
        }
    }
}

void NyXmlEntries::writeMember(NyXmlWriter& writer, std::string const& tag, NyXmlObject const& member)
{
    writeFramed(writer, NyToken(tag), member);
}

void NyXmlEntries::writeMemberSchema(NyXmlSchema& schema, std::string const& tag, NyXmlObject const& member)
{
    schema.writeStartTagUsingParentNamespace(tag, NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
    member.writeSchema(schema);
    schema.writeEndTag();
}
