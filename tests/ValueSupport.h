#ifndef NYXML_TESTS_VALUESUPPORT_H
#define NYXML_TESTS_VALUESUPPORT_H

#include "Support.h"

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/values/NyXmlEnumType.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <gtest/gtest.h>

#include <sstream>
#include <typeinfo>

/// What most tests know of enumerations.
class Mode : public NyXmlEnumType<int> {
public:
    using NyXmlEnumType<int>::NyXmlEnumType;
    bool xmlInit() override
    {
        setEnumString(1, "slow");
        setEnumString(2, "fast");
        setEnumString(2, "quick");
        setEnumString(9, "slow"); // a word that is known keeps its value
        return NyXmlEnumType<int>::xmlInit();
    }
};

/// The texts between bars.
inline std::vector<std::string> splitAtBars(std::string const& text)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, '|');)
        parts.push_back(part);
    return parts;
}

/// A reader of an application: whatever knows the library's reader by its type has to take the plain way with it.
class ApplicationReader : public NyXmlReader {
public:
    using NyXmlReader::NyXmlReader;
};

/// Reads a value from a document whose root it is. \param seen  what the reader shows of the events behind it, as long as there are any
template <class Reader = NyXmlReader>
bool readValue(NyXmlObject& value, std::string const& document, std::string* seen = nullptr)
{
    std::istringstream stream(document);
    Reader reader("in.xml", stream);
    reader.readXml();
    bool const result = value.read(reader);
    for (int events = 0; seen != nullptr && events < 3 && reader.errorCode() == 0; ++events) {
        *seen += std::to_string(reader.mode()) + " " + reader.element().token() + " '" + reader.content() + "' " +
                 std::to_string(reader.lineCountOfFile()) + " " + std::to_string(reader.numOfAttributes()) + "\n";
        reader.readXml();
    }
    while (reader.mode() != NyXmlFileReader::XML_READER_EOF && reader.mode() != NyXmlFileReader::XML_READER_ERROR)
        reader.readXml();
    return result;
}

/// What reading says, as "3: text", 3 being the print type. What a value says comes from its own read(), and 4 goes with giving up.
inline std::string saidOnReading(NyXmlObject& value, std::string const& document)
{
    Messages messages;
    std::istringstream stream(document);
    NyXmlReader reader("in.xml", stream);
    reader.readXml();
    bool const result = value.read(reader);
    if (messages.text().empty())
        return result ? "" : "refused in silence";
    std::string const said = (result ? "" : "4: ") + messages.text(), family = said.substr(3, said.find(' ', 3) - 3);
    for (std::string const& location : messages.locations())
        EXPECT_TRUE(location.empty() || (location.find(family) < location.find("::read("))) << location;
    return said;
}

/// Reads a value from the first attribute of a document's root.
inline bool readAttributeOf(NyXmlObject& value, std::string const& document)
{
    std::istringstream stream(document);
    NyXmlReader reader("in.xml", stream);
    reader.readXml();
    return value.readAttribute(reader);
}

/// From the value's own tag, `<v`, to its end.
inline std::string writtenValue(NyXmlObject const& value, bool withDefaults = false)
{
    std::ostringstream stream;
    NyXmlWriter writer("out.xml", stream);
    writer.setWriteDefaultDataFlag(withDefaults);
    writer.writeStartTag(NyToken("urn:t#root"));
    writer.writeStartTagUsingParentNamespace(NyToken("v"));
    EXPECT_TRUE(value.write(writer));
    writer.writeEndTag();
    std::string const document = stream.str();
    return document.substr(document.find("<v"));
}

/// Reads a value in both ways, that of the library's own reader and the plain one: nobody may see a difference.
/// \return  "true" or "false", and what is seen of the events behind the value, as of readValue(), and of messages
template <class Value>
std::string expectBothWaysAgree(Value& value, std::string const& document)
{
    Messages messages;
    Value plain(value);
    std::string seen, seenPlainly;
    bool const result = readValue(value, document, &seen);
    seen += messages.take();
    EXPECT_EQ(readValue<ApplicationReader>(plain, document, &seenPlainly), result);
    EXPECT_EQ(seen, seenPlainly + messages.text());
    EXPECT_EQ(writtenValue(value), writtenValue(plain)); // as written, since a NaN is unequal to itself
    return (result ? "true " : "false ") + seen;
}

/// The calls that describe a value, as "size=j [2 element: d ]": attributes, types by their mangled names, elements with their option.
class SchemaCalls : public NyXmlSchema {
public:
    static std::string of(NyXmlObject const& value)
    {
        SchemaCalls calls;
        EXPECT_TRUE(value.writeSchema(calls));
        return calls.m_text;
    }
    bool writeStartTag(NyToken const& name, XML_STARTTAG_OPTION option) override
    {
        m_text += "[" + std::to_string(option) + " " + name.token() + ": ";
        return true;
    }
    void writeEndTag() override { m_text += "] "; }
    void openGroup() override { m_text += "( "; }
    void closeGroup() override { m_text += ") "; }
    void setAttributeName(NyToken const& token) override { m_text += token.token() + "="; }
    void setType(std::type_info const& info) override { m_text += std::string(info.name()) + " "; }

private:
    std::string m_text;
};

#endif
