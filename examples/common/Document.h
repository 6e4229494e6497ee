#ifndef COMMON_DOCUMENT_H
#define COMMON_DOCUMENT_H

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXmlKit/standard/NyXmlStandardReader.h>
#include <nyXmlKit/standard/NyXmlStandardWriter.h>

#include <fstream>
#include <iostream>
#include <string>

/// Reads a document of XML 1.0, and says what the model does not know of it. False if it is none, or its root has another name.
inline bool readDocument(std::string const& path, NyXmlObject& root)
{
    int unknown = 0;
    Ny::Print::setHandler([&unknown](int, std::string const&, std::string const& text) {
        if (text.rfind("Bad ", 0) == 0)
            ++unknown;
        else if (text.find("checkVersion") == std::string::npos) // the attribute tells the format's version, not the library's
            std::cerr << text;
    });
    std::ifstream stream(path, std::ios::binary);
    NyXmlStandardReader reader(path, stream);
    auto mode = reader.readXml();
    bool const isStart = mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG;
    bool result = isStart && reader.element() == root.token().token() && root.read(reader);
    if (result)
        result = reader.readXml() == NyXmlFileReader::XML_READER_EOF && reader.errorCode() == 0;
    Ny::Print::setHandler({});
    if (unknown != 0)
        std::cout << unknown << " elements and attributes that the model does not have\n";
    if (!result)
        std::cerr << path << ": no such document\n";
    return result;
}

/// Writes it. False if the file could not be written.
inline bool writeDocument(std::string const& path, NyXmlObject const& root)
{
    std::ofstream stream(path, std::ios::binary);
    NyXmlStandardWriter writer(path, stream);
    writer.setHeader("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    writer.setWriteDefaultDataFlag(true); // what may be absent says so itself; <axis xyz="0 0 0"/> is not <axis/> to others
    writer.setNoSchemaLocation(true);
    writer.setNoNil(true);
    writer.setNoNamespaceComplaints(true);
    writer.writeStartTag(root.token());
    root.write(writer);
    writer.writeEndTag();
    return stream.flush().good();
}

#endif
