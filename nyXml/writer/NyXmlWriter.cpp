#include <nyXml/writer/NyXmlWriter.h>

#include <nyXml/core/detail/NyStreamText.h>
#include <nyXml/platform/NyAngle.h>
#include <nyXml/platform/NyApplication.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/platform/NyStringConversion.h>
#include <nyXml/traversal/NyXmlSignals.h>
#include <nyXml/writer/detail/NyDecimalText.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <iostream>
#include <limits>
#include <locale>
#include <string_view>
#include <utility>

using namespace std::string_view_literals; // literals whose length nobody counts at run time

namespace {

constexpr int realDigits = 20;
constexpr unsigned int defaultContentColumns = 10;
constexpr std::size_t longestInlineContent = 50;
constexpr std::size_t heldPieceSize = 64 * 1024;
constexpr char const* xmlDeclaration = R"(<?xml version="1.0" encoding="UTF-8"?>)";
constexpr char const* schemaInstanceAttribute = R"(xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance")";

/// What a language selection stores.
struct LanguageValues {
    char const* indent;
    char const* header;
    char const* styleSheet;
    char const* schemaInstance;
    char const* schemaLocation;
};

/// Null for a value that is no language.
LanguageValues const* valuesOf(NyXmlWriter::LANGUAGE language)
{
    static constexpr LanguageValues xml = { "  ", xmlDeclaration, "", "", "" };
    static constexpr LanguageValues qcml = { "  ", xmlDeclaration,
                                             R"(<?xml-stylesheet type="text/xsl" href="http://nyxml.org/stylesheets/QCML.xsl"?>)",
                                             schemaInstanceAttribute, "http://nyxml.org/partnerlab/XML/QCML.xsd" };
    switch (language) {
    case NyXmlWriter::LANGUAGE_XML: return &xml;
    case NyXmlWriter::LANGUAGE_QCML: return &qcml;
    }
    return nullptr;
}

/// What stands behind the last "/"; all of it if there is none.
std::string_view lastSegment(std::string_view xmlNamespace) { return xmlNamespace.substr(xmlNamespace.rfind('/') + 1); }

/// The file name without its last extension and its directories, of either kind.
std::string_view baseName(std::string_view fileName)
{
    std::string_view const stem = fileName.substr(0, fileName.rfind('.'));
    return stem.substr(stem.find_last_of("\\/") + 1);
}

} // namespace

std::string NyXmlWriter::m_theIndent = " ";
std::string NyXmlWriter::m_theHeader = xmlDeclaration;
std::string NyXmlWriter::m_theStyleSheetLocation;
std::string NyXmlWriter::m_theSchemaInstance;
std::string NyXmlWriter::m_theSchemaLocation;
bool NyXmlWriter::m_theWriteDefaultDataFlag = true;
bool NyXmlWriter::m_theWriteSchema = false;

NyXmlWriter::NyXmlWriter() : NyXmlWriter(std::string(), std::cout) {}

NyXmlWriter::NyXmlWriter(std::string const& fileName, std::ostream& stream)
    : m_OutputStream(stream),
      m_FileName(fileName),
      m_ContentColumns(defaultContentColumns),
      m_WriteDefaultData(m_theWriteDefaultDataFlag),
      m_Indent(m_theIndent),
      m_Header(m_theHeader),
      m_StyleSheet(m_theStyleSheetLocation),
      m_SchemaInstance(m_theSchemaInstance),
      m_SchemaLocation(m_theSchemaLocation),
      m_WriteSchema(m_theWriteSchema),
      m_MessageSignal(Ny::namedSignal<Ny::SignalReadWriteStatusTraits>(Ny::Application::instance().connectionManager())),
      m_ProgressSignal(Ny::namedSignal<Ny::SignalReadWriteProgressTraits>(Ny::Application::instance().connectionManager()))
{
    m_Stream.imbue(std::locale::classic());
    m_Stream.precision(realDigits);
}

NyXmlWriter::NyXmlWriter(NyXmlWriter const& other)
    : m_OutputStream(other.m_OutputStream),
      m_FileName(other.m_FileName),
      m_Mode(other.m_Mode),
      m_TagStack(other.m_TagStack),
      m_RootNamespace(other.m_RootNamespace),
      m_ContentBuffer(other.m_ContentBuffer),
      m_ContentCount(other.m_ContentCount),
      m_ContentColumns(other.m_ContentColumns),
      m_WriteDefaultData(other.m_WriteDefaultData),
      m_Indent(other.m_Indent),
      m_Header(other.m_Header),
      m_StyleSheet(other.m_StyleSheet),
      m_SchemaInstance(other.m_SchemaInstance),
      m_SchemaLocation(other.m_SchemaLocation),
      m_Schema(other.m_Schema),
      m_WriteSchema(other.m_WriteSchema),
      m_TypeName(other.m_TypeName),
      m_LastType(other.m_LastType),
      m_HeldPieces(other.m_HeldPieces)
{
    m_Stream.imbue(std::locale::classic());
}

NyXmlWriter& NyXmlWriter::operator=(NyXmlWriter const& other)
{
    if (this == &other)
        return *this;
    m_FileName = other.m_FileName;
    m_Mode = other.m_Mode;
    m_TagStack = other.m_TagStack;
    m_RootNamespace = other.m_RootNamespace;
    m_ContentBuffer = other.m_ContentBuffer;
    m_ContentCount = other.m_ContentCount;
    m_ContentColumns = other.m_ContentColumns;
    m_WriteDefaultData = other.m_WriteDefaultData;
    m_Indent = other.m_Indent;
    m_Header = other.m_Header;
    m_StyleSheet = other.m_StyleSheet;
    m_SchemaInstance = other.m_SchemaInstance;
    m_SchemaLocation = other.m_SchemaLocation;
    m_Schema = other.m_Schema;
    m_WriteSchema = other.m_WriteSchema;
    m_TypeName = other.m_TypeName;
    m_LastType = other.m_LastType;
    m_HeldPieces = other.m_HeldPieces;
    return *this;
}

NyXmlWriter::~NyXmlWriter()
{
    if (m_WriteSchema)
        m_Schema.write(m_FileName);
}

void NyXmlWriter::writeStartTag(NyToken const& token)
{
    startElement(token.namespaceName(), token.localName());
    if (m_WriteSchema)
        m_Schema.writeStartTag(token, NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
}

void NyXmlWriter::writeStartTagUsingParentNamespace(NyToken const& token)
{
    if (m_TagStack.empty()) {
        writeStartTag(token);
        return;
    }
    m_TagStack.makeRoom();
    std::string const& xmlNamespace = m_TagStack.back().ownNamespace;
    // The token of this name is only needed by those who look at it. A namespace with a "#" is split anew when it is made.
    if (isPlain() && !m_WriteSchema && xmlNamespace.find('#') == std::string::npos)
        startElement(xmlNamespace, token.localName());
    else
        writeStartTag(NyToken(xmlNamespace + '#' + token.localName()));
}

void NyXmlWriter::startElement(std::string const& xmlNamespace, std::string const& localName)
{
    if (xmlNamespace.empty()) {
        Ny::Print::write(Ny::Print::FAULT, "NyXmlWriter Warning: All elements should have namespace: %s\n\tFile: %s\n",
                         localName.c_str(), m_FileName.c_str());
    } else if (m_RootNamespace.empty()) {
        m_RootNamespace = xmlNamespace;
    }
    bool const prefixed = !xmlNamespace.empty() && xmlNamespace != m_RootNamespace;
    std::string_view const prefix = prefixed ? lastSegment(xmlNamespace) : std::string_view();
    m_Tag.clear();
    if (prefixed)
        m_Tag.append(prefix) += ':';
    m_Tag += localName;

    bool const isRoot = m_TagStack.empty();
    bool const declared = xmlNamespace.empty() || (!isRoot && m_TagStack.back().ownNamespace == xmlNamespace);
    m_TagStack.push(m_Tag, xmlNamespace);
    m_Bytes.clear();
    if (isRoot) {
        header(NyToken(m_Tag), xmlNamespace);
    } else {
        if (m_Mode == MODE_START_TAG || m_Mode == MODE_ATTRIBUTE_VALUE)
            m_Bytes += ">\n"sv;
        indentBytes(m_TagStack.depth() - 1);
        (m_Bytes += '<') += m_Tag;
    }
    if (!declared && m_TagStack.declare(prefix, xmlNamespace)) { // < xmlns:prefix="namespace">
        m_Bytes += prefixed && !prefix.empty() ? " xmlns:"sv : " xmlns"sv;
        m_Bytes.append(prefix).append("=\"").append(xmlNamespace) += '"';
    }
    sendBytes();

    m_ContentBuffer.clear();
    m_HeldPieces.clear();
    m_ContentCount = 0;
    m_ContentColumns = defaultContentColumns;
    m_Mode = MODE_START_TAG;
}

void NyXmlWriter::setAttributeName(NyToken const& token)
{
    m_Tag.clear();
    if (!token.namespaceName().empty()) {
        Ny::Print::write(Ny::Print::FAULT, "NyXmlWriter Error: no namespace on attributes preferred: %s\n\tFile: %s\n",
                         token.namespaceAndToken().c_str(), m_FileName.c_str());
        std::string_view const prefix = lastSegment(token.namespaceName());
        if (m_TagStack.isDeclared(prefix)) {
            m_Tag.append(prefix) += ':';
        } else {
            Ny::Print::write(Ny::Print::FAULT, "NyXmlWriter Error: attribute namespace doesn't exist: %s\n\tFile: %s\n",
                             token.namespaceAndToken().c_str(), m_FileName.c_str());
        }
    }
    m_Bytes.assign(1, ' ').append(m_Tag).append(token.localName()) += '=';
    sendBytes();
    m_Mode = MODE_ATTRIBUTE_NAME;
    if (m_WriteSchema)
        m_Schema.setAttributeName(token);
}

void NyXmlWriter::setNumOfContentColumns(unsigned int columns) { m_ContentColumns = columns; }

void NyXmlWriter::writeEndTag()
{
    static std::string const noName;
    bool const isOpen = !m_TagStack.empty();
    std::string const& tag = isOpen ? m_TagStack.back().token.localName() : noName;
    m_Bytes.clear();
    switch (isOpen ? m_Mode : MODE_NONE) { // without an element there is nothing to close, whatever came before
    case MODE_START_TAG: m_Bytes += " xsi:nil=\"true\"/>\n"sv; break;
    case MODE_ATTRIBUTE_VALUE: m_Bytes += "/>\n"sv; break;
    case MODE_CONTENT:
        writeHeldContent();
        m_Bytes.append("</"sv).append(tag).append(">\n"sv);
        break;
    case MODE_END_TAG:
        indentBytes(m_TagStack.depth() - 1);
        m_Bytes.append("</"sv).append(tag).append(">\n"sv);
        break;
    case MODE_NONE:
    case MODE_ATTRIBUTE_NAME:
        Ny::Print::write(Ny::Print::FAULT, "NyXmlWriter Error: end tag following incorrect mode %d.  File %s\n",
                         static_cast<int>(m_Mode), m_FileName.c_str());
        break;
    }
    sendBytes();
    m_TagStack.pop();
    m_Mode = MODE_END_TAG;
    if (m_WriteSchema)
        m_Schema.writeEndTag();
}

/// >text, or the text on lines of its own
void NyXmlWriter::writeHeldContent()
{
    m_Bytes += '>';
    if (m_HeldPieces.empty() && m_ContentBuffer.size() <= longestInlineContent) {
        m_Bytes += m_ContentBuffer;
        return;
    }
    m_Bytes += '\n';
    indentBytes(m_TagStack.depth());
    sendBytes();
    for (std::string const& piece : m_HeldPieces)
        m_OutputStream.write(piece.data(), static_cast<std::streamsize>(piece.size()));
    m_OutputStream.write(m_ContentBuffer.data(), static_cast<std::streamsize>(m_ContentBuffer.size()));
    m_Bytes += '\n';
    indentBytes(m_TagStack.depth() - 1);
}

std::string const& NyXmlWriter::indent() const { return m_Indent; }
void NyXmlWriter::setIndent(std::string const& indent) { m_Indent = indent; }

void NyXmlWriter::header(NyToken const& token, std::string const& xmlNamespace)
{
    m_Bytes.clear();
    if (!m_Header.empty())
        (m_Bytes += m_Header) += '\n';
    if (!m_StyleSheet.empty())
        (m_Bytes += m_StyleSheet) += '\n';
    (m_Bytes += '<') += token.localName();
    if (!xmlNamespace.empty()) {
        m_Bytes.append(" ").append(schemaInstanceAttribute);
        m_Bytes.append("\n  xsi:schemaLocation=\"").append(xmlNamespace).append("\n  ");
        m_Bytes.append(baseName(m_FileName)).append(".").append(lastSegment(xmlNamespace)).append(".xsd\"");
    }
    sendBytes();
}

std::string const& NyXmlWriter::header() const { return m_Header; }
void NyXmlWriter::setHeader(std::string const& header) { m_Header = header; }
std::string const& NyXmlWriter::styleSheet() const { return m_StyleSheet; }
void NyXmlWriter::setStyleSheet(std::string const& styleSheet) { m_StyleSheet = styleSheet; }
std::string const& NyXmlWriter::schemaInstance() const { return m_SchemaInstance; }
void NyXmlWriter::setSchemaInstance(std::string const& schemaInstance) { m_SchemaInstance = schemaInstance; }
std::string const& NyXmlWriter::schemaLocation() const { return m_SchemaLocation; }
void NyXmlWriter::setSchemaLocation(std::string const& schemaLocation) { m_SchemaLocation = schemaLocation; }

void NyXmlWriter::setLanguageSelection(LANGUAGE language)
{
    LanguageValues const* const values = valuesOf(language);
    if (values == nullptr)
        return;
    setIndent(values->indent);
    setHeader(values->header);
    setStyleSheet(values->styleSheet);
    setSchemaInstance(values->schemaInstance);
    setSchemaLocation(values->schemaLocation);
}

void NyXmlWriter::type(std::type_info const& info)
{
    if (&info != m_LastType) {
        m_TypeName = NyXmlSchema::typeWord(info);
        m_LastType = &info;
    }
    if (m_WriteSchema)
        m_Schema.setType(info);
}

void NyXmlWriter::data(std::string const& value)
{
    switch (m_Mode) {
    case MODE_ATTRIBUTE_NAME: attributeValue(value); break;
    case MODE_START_TAG:
    case MODE_ATTRIBUTE_VALUE:
    case MODE_CONTENT: content(value); break;
    case MODE_NONE:
    case MODE_END_TAG:
        Ny::Print::write(Ny::Print::FAULT,
                         "NyXmlWriter Error: element %s is placing content at incorrect location.\n\tFile: %s\n",
                         m_TagStack.empty() ? "" : m_TagStack.back().token.c_str(), m_FileName.c_str());
        break;
    }
}

bool NyXmlWriter::writeDefaultDataFlag() const { return m_WriteDefaultData; }
void NyXmlWriter::setWriteDefaultDataFlag(bool flag) { m_WriteDefaultData = flag; }

void NyXmlWriter::setLinkTotal(unsigned int total) { m_LinkTotal = total; }
void NyXmlWriter::resetLinkCount() { m_LinkCount = 0; }

void NyXmlWriter::incrementLinkCount()
{
    ++m_LinkCount;
    double fraction = m_LinkCount;
    if (m_LinkTotal != 0)
        fraction /= m_LinkTotal;
    if (m_ProgressSignal) // a copy has neither signal
        (*m_ProgressSignal)(fraction);
    if (m_MessageSignal)
        (*m_MessageSignal)("Writing: " + NyDOUBLE2STRING(fraction));
}

void NyXmlWriter::attributeValue(std::string const& value)
{
    m_Bytes.assign(1, '"').append(value) += '"';
    sendBytes();
    m_Mode = MODE_ATTRIBUTE_VALUE;
}

void NyXmlWriter::content(std::string const& value)
{
    beginContentValue(value.size());
    m_ContentBuffer += value;
}

/// Separates the next value from the one before. Room for it is made first: should memory run out, there is no trace of it.
void NyXmlWriter::beginContentValue(std::size_t size)
{
    if (m_ContentBuffer.size() >= heldPieceSize) {
        m_HeldPieces.push_back(std::move(m_ContentBuffer));
        m_ContentBuffer = std::string();
        m_ContentBuffer.reserve(heldPieceSize + heldPieceSize / 16); // the last value goes beyond
    }
    std::size_t const needed = m_ContentBuffer.size() + 1 + std::size_t{ 2 } * m_TagStack.depth() + size;
    if (needed > m_ContentBuffer.capacity())
        m_ContentBuffer.reserve(std::max(needed, 2 * m_ContentBuffer.capacity()));
    if (m_ContentCount != 0) {
        if (m_ContentColumns != 0 && m_ContentCount % m_ContentColumns == 0) {
            m_ContentBuffer += '\n';
            // Two blanks a level whatever the indent: the column of the text is part of the format.
            m_ContentBuffer.append(std::size_t{ 2 } * m_TagStack.depth(), ' ');
        } else {
            m_ContentBuffer += ' ';
        }
    }
    ++m_ContentCount;
    m_Mode = MODE_CONTENT;
}

void NyXmlWriter::setSchemaWriter(bool flag) { m_WriteSchema = flag; }

void NyXmlWriter::tab(unsigned int count)
{
    appendIndent(count);
    sendBytes();
}

std::string const& NyXmlWriter::defaultHeader() { return m_theHeader; }
void NyXmlWriter::setDefaultHeader(std::string const& header) { m_theHeader = header; }
std::string const& NyXmlWriter::defaultIndent() { return m_theIndent; }
void NyXmlWriter::setDefaultIndent(std::string const& indent) { m_theIndent = indent; }
std::string const& NyXmlWriter::defaultSchemaInstance() { return m_theSchemaInstance; }
void NyXmlWriter::setDefaultSchemaInstance(std::string const& schemaInstance) { m_theSchemaInstance = schemaInstance; }
std::string const& NyXmlWriter::defaultSchemaLocation() { return m_theSchemaLocation; }
void NyXmlWriter::setDefaultSchemaLocation(std::string const& schemaLocation) { m_theSchemaLocation = schemaLocation; }
std::string const& NyXmlWriter::defaultStyleSheet() { return m_theStyleSheetLocation; }
void NyXmlWriter::setDefaultStyleSheet(std::string const& styleSheet) { m_theStyleSheetLocation = styleSheet; }
void NyXmlWriter::setDefaultForWriteDefaultDataFlag(bool flag) { m_theWriteDefaultDataFlag = flag; }
void NyXmlWriter::setDefaultSchemaWriter(bool flag) { m_theWriteSchema = flag; }

void NyXmlWriter::setDefaultLanguageSelection(LANGUAGE language)
{
    LanguageValues const* const values = valuesOf(language);
    if (values == nullptr)
        return;
    m_theIndent = values->indent;
    m_theHeader = values->header;
    m_theStyleSheetLocation = values->styleSheet;
    m_theSchemaInstance = values->schemaInstance;
    m_theSchemaLocation = values->schemaLocation;
}

void NyXmlWriter::appendIndent(unsigned int count)
{
    while (count-- != 0)
        m_Bytes += m_Indent;
}

/// Indents through tab() if a subclass may have one of its own, which wants the bytes before it on the stream.
void NyXmlWriter::indentBytes(unsigned int count)
{
    if (isPlain()) {
        appendIndent(count);
    } else {
        sendBytes();
        tab(count);
    }
}

// Hot: a write costs as much as a whole short tag, so the bytes of a call are put together first. Nothing stays behind between calls,
// since the owner of the stream may write to it himself.
void NyXmlWriter::sendBytes()
{
    if (m_Bytes.empty())
        return;
    m_OutputStream.write(m_Bytes.data(), static_cast<std::streamsize>(m_Bytes.size()));
    m_Bytes.clear();
}

/// Makes the text that the writer's scratch stream gives for a scalar, where we can without the stream's cost, and hands it over.
class NyXmlScalarText {
public:
    static NyXmlWriter& insertReal(NyXmlWriter& writer, double value)
    {
        int const precision = static_cast<int>(writer.m_Stream.precision());
        return insert(writer, typeid(double), NyDecimalText::longest(precision),
                      [value, precision](std::string& text) { NyDecimalText::append(text, value, precision); });
    }

    // The unit types come with insertion operators of their own, which another platform layer may write differently: these do use
    // the stream.
    template <class Unit>
    static NyXmlWriter& insertUnit(NyXmlWriter& writer, Unit const& value)
    {
        std::string const text = NyStreamText::of(writer.m_Stream, value);
        return insert(writer, typeid(Unit), text.size(), [&text](std::string& target) { target += text; });
    }

    template <class Integer>
    static NyXmlWriter& insertInteger(NyXmlWriter& writer, Integer value)
    {
        constexpr std::size_t longest =
            std::numeric_limits<Integer>::digits10 + 2; // a sign and the digit that digits10 leaves out
        return insert(writer, typeid(Integer), longest, [value](std::string& text) {
            std::array<char, longest> digits;
            text.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
        });
    }

    static NyXmlWriter& insertByte(NyXmlWriter& writer, std::type_info const& info, char byte)
    {
        return insert(writer, info, 1, [byte](std::string& text) { text += byte; });
    }

private:
    // Hot: most of a document passes here. Where nobody overrides data(), the text of a value of an element goes straight to the
    // data held, which saves a copy and two calls. Otherwise the writer's spare string is borrowed while data() runs, so that one that
    // inserts into the writer itself finds another string. \p append puts the text, of so many bytes at most, behind what is there.
    template <class Append>
    static NyXmlWriter& insert(NyXmlWriter& writer, std::type_info const& info, std::size_t longest, Append const& append)
    {
        writer.type(info);
        if (writer.isPlain() && writer.takesContent()) {
            writer.beginContentValue(longest);
            append(writer.m_ContentBuffer);
            return writer;
        }
        std::string text = std::move(writer.m_Text);
        text.clear();
        append(text);
        writer.data(text);
        writer.m_Text = std::move(text);
        return writer;
    }
};

NyXmlWriter& operator<<(NyXmlWriter& writer, char const& value)
{
    return NyXmlScalarText::insertByte(writer, typeid(char), value);
}

NyXmlWriter& operator<<(NyXmlWriter& writer, unsigned char const& value)
{
    return writer << static_cast<unsigned short>(value); // a number, not a byte
}

NyXmlWriter& operator<<(NyXmlWriter& writer, short const& value) { return NyXmlScalarText::insertInteger(writer, value); }
NyXmlWriter& operator<<(NyXmlWriter& writer, unsigned short const& value)
{
    return NyXmlScalarText::insertInteger(writer, value);
}
NyXmlWriter& operator<<(NyXmlWriter& writer, int const& value) { return NyXmlScalarText::insertInteger(writer, value); }
NyXmlWriter& operator<<(NyXmlWriter& writer, unsigned int const& value) { return NyXmlScalarText::insertInteger(writer, value); }

NyXmlWriter& operator<<(NyXmlWriter& writer, double const& value) { return NyXmlScalarText::insertReal(writer, value); }

NyXmlWriter& operator<<(NyXmlWriter& writer, bool const& value)
{
    return NyXmlScalarText::insertByte(writer, typeid(bool), value ? '1' : '0');
}

NyXmlWriter& operator<<(NyXmlWriter& writer, std::string const& value)
{
    writer.type(typeid(std::string));
    writer.data(value);
    return writer;
}

NyXmlWriter& operator<<(NyXmlWriter& writer, NyAngle const& value) { return NyXmlScalarText::insertUnit(writer, value); }

NyXmlWriter& operator<<(NyXmlWriter& writer, NyNonNegReal const& value) { return NyXmlScalarText::insertUnit(writer, value); }
