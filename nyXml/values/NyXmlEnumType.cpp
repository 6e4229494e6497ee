#include <nyXml/values/NyXmlEnumType.h>

#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <ostream>

namespace NyXmlEnumText {

namespace {

void reportNoData(NyXmlReader const& reader, char const* location)
{
    Ny::Print::ostream(Ny::Print::FAULT, location)
        << "NyXmlEnumType Error: file not valid.\n\t"
        << "No data found.\n\tFile: " << reader.filename() << "\n\tLine: " << reader.lineCountOfFile() << "\n\n";
}

} // namespace

bool takeContent(NyXmlReader& reader, std::string& text, char const* location)
{
    auto mode = reader.mode();
    bool const readOn = mode == NyXmlFileReader::XML_READER_START_TAG;
    if (readOn)
        mode = reader.readXml();
    if (mode == NyXmlFileReader::XML_READER_CONTENT) {
        text = reader.content();
        return true;
    }
    // <a></a>, and <a/> which needs no reading on
    if (mode == (readOn ? NyXmlFileReader::XML_READER_END_TAG : NyXmlFileReader::XML_READER_EMPTY_TAG))
        return true;
    reportNoData(reader, location);
    return !readOn; // Called in no place of its own, a value takes the empty word; an element with children is a fault.
}

void takeAttribute(NyXmlReader& reader, std::string& text, char const* location)
{
    if (reader.remainingNumOfAttributes() == 0)
        reportNoData(reader, location);
    else
        text = reader.attributeValue();
}

void give(NyXmlWriter& writer, std::string const& word) { writer << word; }

std::string const& none()
{
    static std::string const word;
    return word;
}

} // namespace NyXmlEnumText

template class NyXmlEnumType<unsigned char>;
template class NyXmlEnumType<short>;
template class NyXmlEnumType<unsigned short>;
template class NyXmlEnumType<int>;
template class NyXmlEnumType<unsigned int>;
template class NyXmlEnumType<bool>;
template class NyXmlEnumType<NyNonNegReal>;
