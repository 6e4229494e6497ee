#include <nyXml/values/NyXmlOrientation.h>

#include <nyXml/platform/NyPrint.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/values/detail/NyXmlGeometry.h>

using namespace NyXmlGeometry;

NyXmlOrientation::~NyXmlOrientation() = default;

void NyXmlOrientation::accept(NyXmlObjectVisitor* visitor) const { visitor->visit(this); }

NyXmlObject* NyXmlOrientation::clone() const { return new NyXmlOrientation(*this); }

bool NyXmlOrientation::read(NyXmlReader& reader)
{
    unsigned int const count = reader.remainingNumOfAttributes();
    if (count != 4) // The words of the vector's warning: logs of long standing are searched for them.
        Ny::Print::write(Ny::Print::FAULT, "NyXmlVector Warning: 4 attributes needed, but %d were found",
                         static_cast<int>(count));
    double components[4] = {}; // Half a quaternion mixed with an old one would be no rotation of anybody's.
    readComponents(reader, quaternionNames, components);
    m_theValue.set(components[0], components[1], components[2], components[3]);
    m_theValue.normalize();
    return closeElement(reader, "NyXmlOrientation");
}

bool NyXmlOrientation::write(NyXmlWriter& writer) const
{
    bool const result = NyXmlObject::write(writer);
    writeComponents(writer, quaternionNames, { q0(), q1(), q2(), q3() });
    return result;
}

bool NyXmlOrientation::writeSchema(NyXmlSchema& schema) const
{
    bool const result = NyXmlObject::writeSchema(schema);
    describeComponents(schema, quaternionNames);
    return result;
}

bool NyXmlOrientation::equality(NyXmlObject const* other) const
{
    auto const* same = dynamic_cast<NyXmlOrientation const*>(other);
    return same != nullptr && *this == *same;
}

NyXmlObject* NyXmlOrientation::newObject() const { return new NyXmlOrientation; }

NyToken const& NyXmlOrientation::token() const { return classToken(); }

NyToken const& NyXmlOrientation::classToken() { return NyXml::NyOrientationToken; }

bool NyXmlOrientation::readBin(std::istream& stream)
{
    double components[4];
    if (!readBytes(stream, components))
        return false;
    m_theValue.set(components[0], components[1], components[2], components[3]);
    return true;
}

bool NyXmlOrientation::writeBin(std::ostream& stream) const { return writeBytes(stream, { q0(), q1(), q2(), q3() }); }
