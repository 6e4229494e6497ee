#ifndef NYXMLKIT_FILE_NYXMLWRITEOPTIONS_H
#define NYXMLKIT_FILE_NYXMLWRITEOPTIONS_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXmlKit/file/NyXmlDialect.h>

#include <functional>

class NyXmlWriter;

/// How a document is to be written. Every field may stay as it is.
struct NYXML_EXPORT NyXmlWriteOptions {
    NyXmlDialect dialect = NyXmlDialect::CORE;

    /// The root's name; the object's token() if it is empty.
    NyToken root;

    /// Whether the root carries the library's version, which readers check.
    bool withVersion = false;

    /// Runs before the first byte is written: the place to set the writer's indent, its header, and whether it leaves out defaults. With
    /// the standard dialect it is a NyXmlStandardWriter.
    std::function<void(NyXmlWriter&)> prepare;
};

#endif
