#ifndef NYXML_TESTS_SCHEMASUPPORT_H
#define NYXML_TESTS_SCHEMASUPPORT_H

#include "Support.h"

#include <nyXml/schema/NyXmlSchema.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>
#include <typeinfo>

/// All files under a directory, by their path in it.
inline std::map<std::string, std::string> filesUnder(std::string const& directory)
{
    std::map<std::string, std::string> files;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(directory)) {
        std::ifstream stream(entry.path(), std::ios::binary);
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(directory).string()] = { std::istreambuf_iterator<char>(stream), {} };
    }
    return files;
}

/// A line of an XSD file in brief, see briefOf().
inline std::string briefLine(std::string line)
{
    static std::pair<std::regex, char const*> const rules[] = {
        { std::regex(" *<import .* schemaLocation='(.*)'/>"), "import $1\n" },
        { std::regex("  <element name='(.*)' type='(.*)' nil.*"), "global $1($2)\n" },
        { std::regex("  <[a-zA-Z]+ name='(.*)'>"), "$1:" },
        { std::regex("  </.*"), "\n" },
        { std::regex(" +<sequence min.*"), " any:" },
        { std::regex(" +<choice>"), " one:" },
        { std::regex(" +<element name='(.*)' type='(.*)' min.* max.*"), " $1*($2)" },
        { std::regex(" +<element name='(.*)' type='(.*)' min.*"), " $1($2)" },
        { std::regex(" +<element ref='(.*)' min.*"), " ->$1" },
        { std::regex(" +<group ref='(.*)'/>"), " {$1}" },
        { std::regex(" +<attribute name='(.*)' type='(.*)'/>"), " @$1($2)" },
        { std::regex(" +<(?:extension base|list itemType)='(.*)'/?>"), " =$1" },
    };
    std::replace(line.begin(), line.end(), '"', '\'');
    for (auto const& [pattern, brief] : rules) {
        if (std::regex_match(line, pattern))
            return std::regex_replace(line, pattern, brief);
    }
    return {};
}

/// What stands in all XSD files below their heads, a line for each type, file by file in the order of their names:
/// "robot.Type: @version(string) name(double) points*(demo:points.Type)", a "*" being unbounded.
inline std::string briefOf(ScratchDirectory const& directory)
{
    std::string all;
    for (auto const& [name, text] : filesUnder(directory.path())) {
        std::istringstream lines(text.substr(text.find("\n\n")));
        for (std::string line; std::getline(lines, line);)
            all += briefLine(line);
    }
    return all;
}

/// A schema that plays walks: "<a @id:s +b *c .b .b / /" opens a with an attribute, b being a leaf and c a repeated list.
class SchemaWalk : public NyXmlSchema {
public:
    /// "<a" opens an element, "*a" a repeated one, "?a" a choice, in the namespace of the open one if the name has no "#"; "+a" is an
    /// element with a text; ".s" a text and "@a:s" an attribute of that type, double if none is told, and "!a" one without; "(" and ")"
    /// are a group's brackets; "/" closes an element.
    SchemaWalk& play(std::string const& walk)
    {
        std::istringstream words(walk);
        for (std::string word; words >> word;) {
            auto const colon = word.find(':');
            std::string const name = word.substr(1, colon - 1);
            switch (word[0]) {
            case '<': open(name, NyXmlSchemaElementType::XML_STARTTAG_SINGLE); break;
            case '*': open(name, NyXmlSchemaElementType::XML_STARTTAG_UNBOUNDED); break;
            case '?': open(name, NyXmlSchemaElementType::XML_STARTTAG_CHOICE); break;
            case '+': play("<" + name + " . /"); break;
            case '.': setType(typeOf(name)); break;
            case '@': setAttributeName(name), setType(typeOf(word.substr(std::min(colon, word.size() - 1) + 1))); break;
            case '!': setAttributeName(name); break;
            case '(': openGroup(); break;
            case ')': closeGroup(); break;
            case '/': writeEndTag(); break;
            default: throw std::invalid_argument(word);
            }
        }
        return *this;
    }

    /// Opens an element as a compound opens a component. \return whether it is to be described
    bool component(std::string const& name, std::string const& typeId)
    {
        return writeStartTag(name, NyXmlSchemaElementType::XML_STARTTAG_SINGLE), !isRegistered(name, typeId);
    }

    std::string brief()
    {
        ScratchDirectory directory;
        write(directory.path("m"));
        return briefOf(directory);
    }

private:
    void open(std::string const& name, XML_STARTTAG_OPTION mode)
    {
        name.find('#') == std::string::npos ? writeStartTagUsingParentNamespace(name, mode) : writeStartTag(name, mode);
    }
    static std::type_info const& typeOf(std::string const& word)
    {
        return word == "s" ? typeid(std::string) : word == "b" ? typeid(bool) : typeid(double);
    }
};

#endif
