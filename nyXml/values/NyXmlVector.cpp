#include <nyXml/values/NyXmlVector.h>

#include <nyXml/platform/NyPrint.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/values/NyXmlVectorVector.h>
#include <nyXml/values/detail/NyXmlGeometry.h>

#include <charconv>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

using namespace NyXmlGeometry;

NyXmlVector::~NyXmlVector() = default;

void NyXmlVector::accept(NyXmlObjectVisitor* visitor) const { visitor->visit(this); }

NyXmlObject* NyXmlVector::clone() const { return new NyXmlVector(*this); }

bool NyXmlVector::read(NyXmlReader& reader)
{
    unsigned int const count = reader.remainingNumOfAttributes();
    if (count != 3)
        Ny::Print::write(Ny::Print::FAULT, "NyXmlVector Warning: 3 attributes needed, but %d were found.\n\tLine: %d",
                         static_cast<int>(count), reader.lineCountOfFile());
    double components[] = { m_theValue.x(), m_theValue.y(), m_theValue.z() };
    readComponents(reader, coordinateNames, components);
    m_theValue.set(components[0], components[1], components[2]);
    return closeElement(reader, "NyXmlVector");
}

bool NyXmlVector::write(NyXmlWriter& writer) const
{
    bool const result = NyXmlObject::write(writer);
    writeComponents(writer, coordinateNames, { m_theValue.x(), m_theValue.y(), m_theValue.z() });
    return result;
}

bool NyXmlVector::writeSchema(NyXmlSchema& schema) const
{
    bool const result = NyXmlObject::writeSchema(schema);
    describeComponents(schema, coordinateNames);
    return result;
}

bool NyXmlVector::equality(NyXmlObject const* other) const
{
    auto const* same = dynamic_cast<NyXmlVector const*>(other);
    return same != nullptr && *this == *same;
}

NyXmlObject* NyXmlVector::newObject() const { return new NyXmlVector; }

NyToken const& NyXmlVector::token() const { return classToken(); }

NyToken const& NyXmlVector::classToken() { return NyXml::NyLinearToken; }

bool NyXmlVector::readBin(std::istream& stream)
{
    double components[3];
    if (!readBytes(stream, components))
        return false;
    m_theValue.set(components[0], components[1], components[2]);
    return true;
}

bool NyXmlVector::writeBin(std::ostream& stream) const
{
    return writeBytes(stream, { m_theValue.x(), m_theValue.y(), m_theValue.z() });
}

namespace {

/// The file's name without folders and extension.
std::string_view variableNameOf(std::string_view fileName)
{
    if (std::size_t const separator = fileName.find_last_of("\\/"); separator != fileName.npos)
        fileName.remove_prefix(separator + 1);
    return fileName.substr(0, fileName.rfind('.'));
}

/// As printf's "%.16e ", but with a point in every locale.
void appendNumber(std::string& text, double number)
{
    char digits[32];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number, std::chars_format::scientific, 16).ptr);
    text += ' ';
}

} // namespace

bool NyXmlVector::dump(NyXmlVectorVector const& vectors, char const* fileName)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen(fileName, "w"), &std::fclose);
    if (!file)
        return false;
    std::string text(variableNameOf(fileName));
    text += "=[...\n";
    for (unsigned int i = 0; i < vectors.size(); ++i) {
        for (unsigned int coordinate = 0; coordinate < 3; ++coordinate)
            appendNumber(text, vectors[i][coordinate]);
        text += '\n';
        std::fwrite(text.data(), 1, text.size(), file.get());
        text.clear();
    }
    text += "]\n";
    std::fwrite(text.data(), 1, text.size(), file.get());
    return true;
}
