// A model with every family of values: read by the library's reader and by a subclass, which goes the plain way, written, copied,
// described and visited. Both readers must leave the same object and say the same, both writers must write the same.

#include "Fuzz.h"
#include "Model.h"

#include <sstream>
#include <stdexcept>

namespace {

constexpr int quotedTexts = 64;

/// Thrown where a vector of vectors would look for its next value for ever.
struct Enough {};

class ApplicationReader : public NyXmlReader {
public:
    using NyXmlReader::NyXmlReader;
    std::string const& getAttributeValueFast() override
    {
        if (++m_taken > quotedTexts)
            throw Enough();
        return NyXmlReader::getAttributeValueFast();
    }

private:
    int m_taken = 0;
};

class ApplicationWriter : public NyXmlWriter {
public:
    using NyXmlWriter::NyXmlWriter;
};

class Walk : public NyXmlObjectVisitor {
public:
    bool visitCurrentObject() override
    {
        for (std::string const& line : m_theMessages)
            m_seen += line.size();
        return true;
    }

private:
    std::size_t m_seen = 0;
};

template <class Reader>
std::string readInto(Everything& object, std::string const& document)
{
    std::string seen;
    std::string behind; // so that the plain way finds something when the document holds fewer values than it says
    for (int i = 0; i <= quotedTexts; ++i)
        behind += "\"1\"";
    std::istringstream stream(document + behind);
    try {
        Reader reader("doc.xml", stream);
        reader.readXml();
        seen = std::to_string(object.read(reader)) + " code " + std::to_string(reader.errorCode());
        seen += " then " + std::to_string(reader.readXml()) + " line " + std::to_string(reader.lineCountOfFile());
    } catch (std::length_error const&) { // a negative size
        seen = "length";
    }
    return seen;
}

template <class Writer>
std::string written(Everything const& object, bool defaults)
{
    std::ostringstream stream;
    {
        Writer writer("doc.xml", stream);
        writer.setWriteDefaultDataFlag(defaults);
        writer.writeStartTag(object.token());
        object.write(writer);
        writer.writeEndTag();
    }
    return stream.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input choices(data, size);
    if (choices.document().find('\0') != std::string::npos)
        return 0; // takes the values behind the document with it; zero bytes are the parser's matter
    bool const defaults = choices.below(2) == 0;
    std::string seen[2];
    std::string texts[2];
    {
        Said said;
        Everything object;
        seen[0] = readInto<NyXmlReader>(object, choices.document()) + said.text();
        texts[0] = written<NyXmlWriter>(object, defaults);
        if (written<ApplicationWriter>(object, defaults) != texts[0])
            fault("the two writers differ");

        Everything const copy(object);
        Walk walk;
        copy.accept(&walk);
        NyXmlSchema schema;
        copy.writeSchema(schema);
    }
    try {
        Said said;
        Everything object;
        seen[1] = readInto<ApplicationReader>(object, choices.document()) + said.text();
        texts[1] = written<NyXmlWriter>(object, defaults);
    } catch (Enough const&) {
        return 0;
    }
    if (seen[0] != seen[1] || texts[0] != texts[1])
        fault("the two readers differ\n--- library\n" + seen[0] + texts[0] + "\n--- subclass\n" + seen[1] + texts[1]);
    return 0;
}
