#ifndef NYXML_TESTS_SCHEMASUPPORT_H
#define NYXML_TESTS_SCHEMASUPPORT_H

#include "Support.h"

#include <nyXml/schema/NyXmlSchema.h>

#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <typeinfo>

/// All files under a directory, by their path in it.
inline std::map<std::string, std::string> filesUnder(std::string const& directory)
{
    std::map<std::string, std::string> files;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(directory)) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        files[entry.path().lexically_relative(directory).string()] = { std::istreambuf_iterator<char>(stream), {} };
    }
    return files;
}

/// The text with the first \p from, which has to be there, replaced.
inline std::string replaced(std::string text, std::string const& from, std::string const& to)
{
    return text.replace(text.find(from), from.size(), to);
}

/// A schema with short verbs for a walk. A name without "#" lies in the namespace of the open element.
class SchemaWalk : public NyXmlSchema {
public:
    static constexpr XML_STARTTAG_OPTION choice = NyXmlSchemaElementType::XML_STARTTAG_CHOICE;
    static constexpr XML_STARTTAG_OPTION single = NyXmlSchemaElementType::XML_STARTTAG_SINGLE;
    static constexpr XML_STARTTAG_OPTION unbounded = NyXmlSchemaElementType::XML_STARTTAG_UNBOUNDED;

    SchemaWalk& open(std::string const& name, XML_STARTTAG_OPTION mode = single)
    {
        if (name.find('#') == std::string::npos)
            writeStartTagUsingParentNamespace(name, mode);
        else
            writeStartTag(name, mode);
        return *this;
    }
    SchemaWalk& attribute(std::string const& name, std::type_info const& type = typeid(double))
    {
        setAttributeName(name);
        setType(type);
        return *this;
    }
    SchemaWalk& text(std::type_info const& type = typeid(double))
    {
        setType(type);
        return *this;
    }
    SchemaWalk& close()
    {
        writeEndTag();
        return *this;
    }
    SchemaWalk& leaf(std::string const& name, XML_STARTTAG_OPTION mode = single) { return open(name, mode).text().close(); }

    /// As a compound opens a component. \return whether it is to be described
    bool component(std::string const& name, std::string const& typeId)
    {
        open(name);
        return !isRegistered(name, typeId);
    }

    /// What stands in the files below their heads, a line for each type, file by file in the order of their names:
    /// "robot.Type: @version(string) name(double) points*(demo:points.Type)", a "*" being unbounded.
    std::string brief()
    {
        ScratchDirectory directory;
        write(directory.path("m"));
        std::string all;
        for (auto const& [name, text] : filesUnder(directory.path())) {
            std::istringstream lines(text.substr(text.find("\n\n")));
            for (std::string line; std::getline(lines, line);)
                all += briefLine(line);
        }
        return all;
    }

private:
    static std::string briefLine(std::string const& line)
    {
        auto const is = [&line](char const* tag) { return line.find(tag) != std::string::npos; };
        auto const value = [&line](std::string const& name) {
            std::string const behind = line.substr(line.find(" " + name + "=\"") + name.size() + 3);
            return behind.substr(0, behind.find('"'));
        };
        bool const isTopLevel = line.compare(0, 3, "  <") == 0;

        if (is("<import "))
            return "import " + value("schemaLocation") + "\n";
        if (isTopLevel && is("<element "))
            return "global " + value("name") + "(" + value("type") + ")\n";
        if (isTopLevel)
            return is("</") ? "\n" : value("name") + ":";
        if (is("<sequence minOccurs"))
            return " any:";
        if (is("<choice>"))
            return " one:";
        if (is("<element name"))
            return " " + value("name") + (is("unbounded") ? "*(" : "(") + value("type") + ")";
        if (is("<element ref"))
            return " ->" + value("ref");
        if (is("<group ref"))
            return " {" + value("ref") + "}";
        if (is("<attribute "))
            return " @" + value("name") + "(" + value("type") + ")";
        if (is("<extension "))
            return " =" + value("base");
        return is("<list ") ? " =" + value("itemType") : std::string();
    }
};

#endif
