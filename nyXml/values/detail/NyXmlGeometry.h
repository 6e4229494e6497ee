// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_VALUES_DETAIL_NYXMLGEOMETRY_H
#define NYXML_VALUES_DETAIL_NYXMLGEOMETRY_H

#include <nyXml/core/NyToken.h>
#include <nyXml/core/NyXml.h>
#include <nyXml/core/detail/NyShortText.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/values/NyXmlTextOf.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXml/writer/detail/NyXmlTogether.h>

#include <array>
#include <cstddef>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>
#include <typeinfo>

/// What values have in common whose components are attributes of type double. Not for applications.
namespace NyXmlGeometry {

template <std::size_t N>
using Names = std::array<NyToken const*, N>;

inline Names<3> const coordinateNames = { &NyXml::NyVectorXToken, &NyXml::NyVectorYToken, &NyXml::NyVectorZToken };
inline Names<4> const quaternionNames = { &NyXml::NyQuaternion0Token, &NyXml::NyQuaternion1Token, &NyXml::NyQuaternion2Token,
                                          &NyXml::NyQuaternion3Token };

/// Takes all attributes of a tag; each that has one of the names sets its component.
template <std::size_t N>
void readComponents(NyXmlReader& reader, Names<N> const& names, double (&components)[N])
{
    auto const mode = reader.mode();
    if (mode != NyXmlFileReader::XML_READER_START_TAG && mode != NyXmlFileReader::XML_READER_EMPTY_TAG)
        return; // a word of a run: what waits are the attributes of the run
    bool const isPlainReader = typeid(reader) == typeid(NyXmlReader);
    for (unsigned int count = reader.remainingNumOfAttributes(); count != 0; --count) {
        std::string const& name = reader.attributeName(); // gone once the value is taken
        std::size_t which = 0;
        while (which < N && !NyShortText::same(name, names[which]->localName()))
            ++which;
        std::string_view const text = isPlainReader ? reader.takeAttribute() : reader.attributeValue();
        if (which < N)
            components[which] = NyXmlText::toDouble(text);
    }
}

/// Closes an element that has attributes alone. False if it holds anything, which is reported; \p className begins the message.
inline bool closeElement(NyXmlReader& reader, char const* className)
{
    if (reader.mode() != NyXmlFileReader::XML_READER_START_TAG || reader.readXml() == NyXmlFileReader::XML_READER_END_TAG)
        return true;
    Ny::Print::write(Ny::Print::FAULT, "%s Error: file not well formed.\n\tEnd tag needed.\n\tFile: %s\n\tLine: %d", className,
                     reader.filename(), reader.lineCountOfFile());
    return false;
}

template <std::size_t N>
void writeComponents(NyXmlWriter& writer, Names<N> const& names, double const (&components)[N])
{
    NyXmlTogether together(writer);
    for (std::size_t i = 0; i < N; ++i) {
        writer.setAttributeName(*names[i]);
        writer << components[i];
    }
    together.end();
}

template <std::size_t N>
void describeComponents(NyXmlSchema& schema, Names<N> const& names)
{
    for (NyToken const* name : names) {
        schema.setAttributeName(*name);
        schema.setType(typeid(double));
    }
}

/// True, with the components set, if all their bytes came.
template <std::size_t N>
bool readBytes(std::istream& stream, double (&components)[N])
{
    double read[N];
    if (!stream.read(static_cast<char*>(static_cast<void*>(read)), sizeof read))
        return false;
    for (std::size_t i = 0; i < N; ++i)
        components[i] = read[i];
    return true;
}

template <std::size_t N>
bool writeBytes(std::ostream& stream, double const (&components)[N])
{
    return stream.write(static_cast<char const*>(static_cast<void const*>(components)), sizeof components).good();
}

} // namespace NyXmlGeometry

#endif
