#ifndef COMMON_DOCUMENT_H
#define COMMON_DOCUMENT_H

#include <nyXml/core/NyXmlObject.h>
#include <nyXmlKit/file/NyXmlFile.h>
#include <nyXmlKit/standard/NyXmlStandardWriter.h>

#include <iostream>
#include <string>

/// Reads a document of XML 1.0, and says what the model does not know of it. False if it is none, or its root has another name.
inline bool readDocument(std::string const& path, NyXmlObject& root)
{
    using Kind = NyXmlFault::Kind;
    NyXmlReadOptions options;
    options.dialect = NyXmlDialect::STANDARD;
    NyXmlReadResult const result = NyXmlFile::read(path, root, options);
    int unknown = 0;
    for (NyXmlFault const& fault : result.faults)
        if (fault.kind == Kind::UNKNOWN_MEMBER)
            ++unknown;
        else
            std::cerr << fault.str() << '\n';
    if (unknown != 0)
        std::cout << unknown << " elements and attributes that the model does not have\n";
    bool const isWhole = result.errorCode != 1 && !result.has(Kind::FILE_ERROR) && !result.has(Kind::ROOT) &&
                         !result.has(Kind::BROKEN_OFF) && !result.has(Kind::BEHIND_ROOT);
    if (!isWhole)
        std::cerr << path << ": no such document\n";
    return isWhole;
}

/// Writes it. False if the file could not be written; the old one is still there then.
inline bool writeDocument(std::string const& path, NyXmlObject const& root)
{
    NyXmlWriteOptions options;
    options.dialect = NyXmlDialect::STANDARD;
    options.prepare = [](NyXmlWriter& front) {
        auto& writer = dynamic_cast<NyXmlStandardWriter&>(front);
        writer.setHeader("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
        writer.setWriteDefaultDataFlag(true); // what may be absent says so itself; <axis xyz="0 0 0"/> is not <axis/> to others
        writer.setNoSchemaLocation(true);
        writer.setNoNil(true);
        writer.setNoNamespaceComplaints(true);
    };
    NyXmlWriteResult const result = NyXmlFile::write(path, root, options);
    std::cerr << result.str();
    return result.isWritten();
}

#endif
