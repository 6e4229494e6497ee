#include <nyXml/values/NyXmlBasicType.h>

#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>

NyBaseXmlBasicType::~NyBaseXmlBasicType() = default;

// Hot: once for every leaf of a document.
bool NyBaseXmlBasicType::read(NyXmlReader& reader)
{
    if (!NyXmlObject::read(reader))
        return false;
    auto mode = reader.mode();
    bool isEmpty = mode == NyXmlFileReader::XML_READER_EMPTY_TAG; // <a/>
    if (mode == NyXmlFileReader::XML_READER_START_TAG) {
        mode = reader.readXml();
        isEmpty = mode == NyXmlFileReader::XML_READER_END_TAG; // <a></a>
    }
    if (mode == NyXmlFileReader::XML_READER_CONTENT) {
        setValueFromString(reader.content());
        return true;
    }
    if (!isEmpty)
        Ny::Print::write(Ny::Print::FAULT, "NyXmlBasicType Error: file not valid.\n\tNo data found.\n\tFile: %s\n\tLine: %d\n",
                         reader.filename(), reader.lineCountOfFile());
    setValueFromString(std::string());
    return isEmpty;
}

bool NyBaseXmlBasicType::readAttribute(NyXmlReader& reader)
{
    if (!NyXmlObject::read(reader))
        return false;
    if (reader.remainingNumOfAttributes() == 0) {
        Ny::Print::write(Ny::Print::FAULT,
                         "NyXmlBasicType Error: file not valid.\n\tNo attributes found.\n\tFile: %s\n\tLine: %d\n",
                         reader.filename(), reader.lineCountOfFile());
        setValueFromString(std::string());
    } else {
        setValueFromString(reader.attributeValue());
    }
    return true; // in both cases: a compound goes on with what other attributes and elements it has
}

template class NyXmlBasicType<char>;
template class NyXmlBasicType<unsigned char>;
template class NyXmlBasicType<short>;
template class NyXmlBasicType<unsigned short>;
template class NyXmlBasicType<int>;
template class NyXmlBasicType<unsigned int>;
template class NyXmlBasicType<double>;
template class NyXmlBasicType<bool>;
template class NyXmlBasicType<std::string>;
template class NyXmlBasicType<NyAngle>;
template class NyXmlBasicType<NyNonNegReal>;
