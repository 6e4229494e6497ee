#ifndef NYXMLKIT_TESTS_SCHEMASUPPORT_H
#define NYXMLKIT_TESTS_SCHEMASUPPORT_H

#include "../Support.h"
#include "SchemaValidators.h"

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXmlKit/schema/NyXmlExactSchema.h>

#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

/// An object's exact schema, in files of its own, and all validators for it.
class ExactSchema {
public:
    ExactSchema(NyXmlObject const& object, NyToken const& root)
    {
        std::string const& ns = root.namespaceName();
        m_rootFile = m_directory.path("model." + ns.substr(ns.rfind('/') + 1) + ".xsd");
        files = NyXmlExactSchema::describe(object, m_directory.path("model.xml"), root);
        for (auto const& [path, text] : files)
            std::ofstream(path, std::ios::binary) << text;
        validators = validatorsFor(m_rootFile);
    }

    /// Of the file of the root's namespace.
    std::string const& text() const { return files.at(m_rootFile); }
    std::string all() const
    {
        std::string text;
        for (auto const& [path, file] : files)
            text += file;
        return text;
    }
    /// What all validators say of the schema and a document, nothing if they have nothing to say.
    std::string complaint(std::string const& document) const
    {
        std::string text;
        for (auto const& validator : validators)
            text += validator->fault() + validator->complaint(document);
        return text;
    }
    /// True if each of them refuses a document.
    bool refuses(std::string const& document) const
    {
        bool isRefused = true;
        for (auto const& validator : validators)
            isRefused = isRefused && !validator->complaint(document).empty();
        return isRefused;
    }

    std::map<std::string, std::string> files;
    std::vector<std::unique_ptr<SchemaValidator>> validators;

private:
    ScratchDirectory m_directory;
    std::string m_rootFile;
};

/// A document of an object.
inline std::string documentOf(NyXmlObject const& object, NyToken const& root, bool hasDefaults = true)
{
    std::ostringstream stream;
    NyXmlWriter writer("model.xml", stream);
    writer.setWriteDefaultDataFlag(hasDefaults);
    writer.writeStartTag(root);
    object.write(writer);
    writer.writeEndTag();
    return stream.str();
}

#endif
