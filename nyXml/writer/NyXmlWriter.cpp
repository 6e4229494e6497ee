#include <nyXml/writer/NyXmlWriter.h>

#include <nyXml/core/detail/NyStreamText.h>
#include <nyXml/platform/NyAngle.h>
#include <nyXml/platform/NyApplication.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/platform/NyStringConversion.h>
#include <nyXml/traversal/NyXmlSignals.h>
#include <nyXml/writer/detail/NyDecimalText.h>
#include <nyXml/writer/detail/NyXmlTogether.h>

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
      m_HeldPieces(other.m_HeldPieces),
      m_HasPassedOn(other.m_HasPassedOn)
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
    m_HasPassedOn = other.m_HasPassedOn;
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
    if (m_TagStack.empty())
        writeStartTag(token);
    else if (isPlain() && !m_WriteSchema && !m_TagStack.ownNamespace().empty() && !m_TagStack.ownNamespaceSplits())
        startElement(m_TagStack.ownNamespace(), token.localName());
    else // somebody looks at the token, it has no namespace, or that is split anew when the token is made
        writeStartTag(NyToken(m_TagStack.ownNamespace() + '#' + token.localName()));
}

/// \param xmlNamespace  may be that of the enclosing element, where it stands on the stack, unless it is empty
void NyXmlWriter::startElement(std::string const& xmlNamespace, std::string const& localName)
{
    // Hot: most elements are in the namespace of the one around them, and need nothing else than their names.
    if (!m_TagStack.empty() && !xmlNamespace.empty() &&
        (&xmlNamespace == &m_TagStack.ownNamespace() || NyShortText::same(xmlNamespace, m_TagStack.ownNamespace()))) {
        m_TagStack.pushIntoOwnNamespace(localName);
        putStartTag();
    } else {
        startOwnNamespace(xmlNamespace, localName);
    }
    endCall();

    m_ContentBuffer.clear();
    m_HeldPieces.clear();
    m_HasPassedOn = false;
    m_ContentCount = 0;
    m_ContentColumns = defaultContentColumns;
    m_Mode = MODE_START_TAG;
}

/// The root, or an element that is not in the namespace of the one around it.
void NyXmlWriter::startOwnNamespace(std::string const& xmlNamespace, std::string const& localName)
{
    if (xmlNamespace.empty()) {
        NyXmlApart const apart(*this);
        Ny::Print::write(Ny::Print::FAULT, "NyXmlWriter Warning: All elements should have namespace: %s\n\tFile: %s\n",
                         localName.c_str(), m_FileName.c_str());
    } else if (m_RootNamespace.empty()) {
        m_RootNamespace = xmlNamespace;
    }
    bool const isRoot = m_TagStack.empty();
    bool const isPrefixed = !xmlNamespace.empty() && xmlNamespace != m_RootNamespace;
    std::string_view const prefix = isPrefixed ? lastSegment(xmlNamespace) : std::string_view();
    m_TagStack.push(xmlNamespace, prefix, isPrefixed, localName);
    if (isRoot)
        header(NyToken(std::string(m_TagStack.tag())), xmlNamespace);
    else
        putStartTag();
    if (xmlNamespace.empty() || !m_TagStack.declare(prefix, xmlNamespace))
        return;
    m_Bytes.append(prefix.empty() ? " xmlns"sv : " xmlns:"sv); // < xmlns:prefix="namespace">
    m_Bytes.append(prefix);
    m_Bytes.append("=\""sv);
    m_Bytes.append(xmlNamespace);
    m_Bytes.append("\""sv);
}

/// <tag, and in front of it what closes the parent's start tag
void NyXmlWriter::putStartTag()
{
    bool const isFirstChild = m_Mode == MODE_START_TAG || m_Mode == MODE_ATTRIBUTE_VALUE;
    putIndent(isFirstChild ? ">\n"sv : ""sv, m_TagStack.depth() - 1);
    char* at = m_Bytes.room(1 + m_TagStack.tag().size());
    *at++ = '<';
    m_Bytes.endAt(NyXmlBytes::put(at, m_TagStack.tag()));
}

void NyXmlWriter::setAttributeName(NyToken const& token)
{
    std::string const prefix = token.namespaceName().empty() ? std::string() : attributePrefix(token);
    char* at = m_Bytes.room(prefix.size() + token.localName().size() + 2);
    *at++ = ' ';
    at = NyXmlBytes::put(at, prefix);
    at = NyXmlBytes::put(at, token.localName());
    *at++ = '=';
    m_Bytes.endAt(at);
    endCall();
    m_Mode = MODE_ATTRIBUTE_NAME;
    if (m_WriteSchema)
        m_Schema.setAttributeName(token);
}

/// What stands in front of the name of an attribute with a namespace, after the complaints about it.
std::string NyXmlWriter::attributePrefix(NyToken const& token)
{
    NyXmlApart const apart(*this);
    Ny::Print::write(Ny::Print::FAULT, "NyXmlWriter Error: no namespace on attributes preferred: %s\n\tFile: %s\n",
                     token.namespaceAndToken().c_str(), m_FileName.c_str());
    std::string const prefix(lastSegment(token.namespaceName()));
    if (m_TagStack.isDeclared(prefix))
        return prefix + ':';
    Ny::Print::write(Ny::Print::FAULT, "NyXmlWriter Error: attribute namespace doesn't exist: %s\n\tFile: %s\n",
                     token.namespaceAndToken().c_str(), m_FileName.c_str());
    return {};
}

void NyXmlWriter::setNumOfContentColumns(unsigned int columns) { m_ContentColumns = columns; }

void NyXmlWriter::writeEndTag()
{
    switch (m_TagStack.empty() ? MODE_NONE : m_Mode) { // without an element there is nothing to close, whatever came before
    case MODE_START_TAG: m_Bytes.append(" xsi:nil=\"true\"/>\n"sv); break;
    case MODE_ATTRIBUTE_VALUE: m_Bytes.append("/>\n"sv); break;
    case MODE_CONTENT: putContent(); break;
    case MODE_END_TAG:
        putIndent(""sv, m_TagStack.depth() - 1);
        putEndTag();
        break;
    case MODE_NONE:
    case MODE_ATTRIBUTE_NAME: {
        NyXmlApart const apart(*this);
        Ny::Print::write(Ny::Print::FAULT, "NyXmlWriter Error: end tag following incorrect mode %d.  File %s\n",
                         static_cast<int>(m_Mode), m_FileName.c_str());
        break;
    }
    }
    endCall();
    m_TagStack.pop();
    m_Mode = MODE_END_TAG;
    m_IsRun = false;
    if (m_WriteSchema)
        m_Schema.writeEndTag();
}

/// </name>
void NyXmlWriter::putEndTag()
{
    std::string_view const name = m_TagStack.name();
    char* at = m_Bytes.room(name.size() + 4);
    *at++ = '<';
    *at++ = '/';
    at = NyXmlBytes::put(at, name);
    *at++ = '>';
    *at++ = '\n';
    m_Bytes.endAt(at);
}

/// >text</name>, or the text on lines of its own
void NyXmlWriter::putContent()
{
    if (!m_HasPassedOn && m_HeldPieces.empty() && m_ContentBuffer.size() <= longestInlineContent) {
        m_Bytes.append(">"sv);
        m_Bytes.append(m_ContentBuffer.view());
        putEndTag();
        return;
    }
    if (!m_HasPassedOn)
        putIndent(">\n"sv, m_TagStack.depth());
    if (!m_HeldPieces.empty())
        sendBytes();
    for (NyXmlBytes const& piece : m_HeldPieces)
        m_OutputStream.write(piece.view().data(), static_cast<std::streamsize>(piece.size()));
    m_Bytes.append(m_ContentBuffer.view());
    putIndent("\n"sv, m_TagStack.depth() - 1);
    putEndTag();
}

std::string const& NyXmlWriter::indent() const { return m_Indent; }
void NyXmlWriter::setIndent(std::string const& indent) { m_Indent = indent; }

void NyXmlWriter::header(NyToken const& token, std::string const& xmlNamespace)
{
    for (std::string const* const line : { &m_Header, &m_StyleSheet }) {
        if (line->empty())
            continue;
        m_Bytes.append(*line);
        m_Bytes.append("\n"sv);
    }
    m_Bytes.append("<"sv);
    m_Bytes.append(token.localName());
    if (!xmlNamespace.empty())
        for (std::string_view const part :
             { " "sv, std::string_view(schemaInstanceAttribute), "\n  xsi:schemaLocation=\""sv, std::string_view(xmlNamespace),
               "\n  "sv, baseName(m_FileName), "."sv, lastSegment(xmlNamespace), ".xsd\""sv })
            m_Bytes.append(part);
    endCall();
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
    if (&info != m_LastType) { // most are as the last one
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
    case MODE_END_TAG: {
        NyXmlApart const apart(*this);
        Ny::Print::write(Ny::Print::FAULT,
                         "NyXmlWriter Error: element %s is placing content at incorrect location.\n\tFile: %s\n",
                         m_TagStack.empty() ? "" : std::string(m_TagStack.name()).c_str(), m_FileName.c_str());
        break;
    }
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
    char* at = m_Bytes.room(value.size() + 2);
    *at++ = '"';
    at = NyXmlBytes::put(at, value);
    *at++ = '"';
    m_Bytes.endAt(at);
    endCall();
    m_Mode = MODE_ATTRIBUTE_VALUE;
}

void NyXmlWriter::content(std::string const& value)
{
    char* const at = beginContentValue(value.size());
    m_ContentBuffer.endAt(NyXmlBytes::put(at, value));
}

/// Separates the next value from the one before. \return the room for it, which is made first: should memory run out, there is no trace
/// of the value
char* NyXmlWriter::beginContentValue(std::size_t size)
{
    if (m_ContentBuffer.size() >= heldPieceSize)
        makeContentRoom();
    std::size_t const indentation = std::size_t{ 2 } * m_TagStack.depth();
    char* at = m_ContentBuffer.room(1 + indentation + size);
    if (m_ContentCount != 0) {
        if (m_ContentColumns != 0 && m_ContentCount % m_ContentColumns == 0) {
            *at++ = '\n';
            // Two blanks a level whatever the indent: the column of the text is part of the format.
            at = std::fill_n(at, indentation, ' ');
        } else {
            *at++ = ' ';
        }
    }
    ++m_ContentCount;
    m_Mode = MODE_CONTENT;
    return at;
}

/// Long data go to the stream if nobody can tell, and else aside.
void NyXmlWriter::makeContentRoom()
{
    if (!m_IsRun || m_Together == 0) {
        m_HeldPieces.push_back(std::move(m_ContentBuffer));
        m_ContentBuffer.room(heldPieceSize + heldPieceSize / 16); // the last value goes beyond
        return;
    }
    if (!m_HasPassedOn)
        putIndent(">\n"sv, m_TagStack.depth());
    sendBytes();
    m_HasPassedOn = true;
    m_OutputStream.write(m_ContentBuffer.view().data(), static_cast<std::streamsize>(m_ContentBuffer.size()));
    m_ContentBuffer.clear();
}

void NyXmlWriter::setSchemaWriter(bool flag) { m_WriteSchema = flag; }

void NyXmlWriter::tab(unsigned int count)
{
    for (; count != 0; --count)
        m_Bytes.append(m_Indent);
    endCall();
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

/// Puts what is before, and an indentation. A subclass may have a tab() of its own, which wants the bytes before it on the stream.
void NyXmlWriter::putIndent(std::string_view before, unsigned int count)
{
    if (!isPlain()) {
        m_Bytes.append(before);
        sendBytes();
        tab(count);
        return;
    }
    char* at = NyXmlBytes::put(m_Bytes.room(before.size() + count * m_Indent.size()), before);
    if (m_Indent.size() == 1)
        at = std::fill_n(at, std::exchange(count, 0), m_Indent.front());
    for (; count != 0; --count)
        at = NyXmlBytes::put(at, m_Indent);
    m_Bytes.endAt(at);
}

// Hot: a write costs as much as a whole short tag.
void NyXmlWriter::sendBytes()
{
    if (m_Bytes.empty())
        return;
    std::string_view const bytes = m_Bytes.view();
    m_Bytes.clear(); // also if the stream throws: what it did not take does not come again
    m_OutputStream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

/// Makes the text that the writer's scratch stream gives for a scalar, where we can without the stream's cost, and hands it over.
class NyXmlScalarText {
public:
    static NyXmlWriter& insertReal(NyXmlWriter& writer, double value)
    {
        int const precision = static_cast<int>(writer.m_Stream.precision());
        return insert<double>(writer, NyDecimalText::room(precision),
                              [value, precision](char* target) { return NyDecimalText::put(target, value, precision); });
    }

    // The unit types come with insertion operators of their own, which another platform layer may write differently: these do use
    // the stream.
    template <class Unit>
    static NyXmlWriter& insertUnit(NyXmlWriter& writer, Unit const& value)
    {
        writer.type(typeid(Unit));
        writer.data(NyStreamText::of(writer.m_Stream, value));
        return writer;
    }

    template <class Integer>
    static NyXmlWriter& insertInteger(NyXmlWriter& writer, Integer value)
    {
        constexpr std::size_t room = std::numeric_limits<Integer>::digits10 + 2; // a sign and the digit that digits10 leaves out
        return insert<Integer>(writer, room, [value](char* target) { return std::to_chars(target, target + room, value).ptr; });
    }

    template <class Byte>
    static NyXmlWriter& insertByte(NyXmlWriter& writer, char byte)
    {
        return insert<Byte>(writer, 1, [byte](char* target) {
            *target = byte;
            return target + 1;
        });
    }

    static NyXmlWriter& insertString(NyXmlWriter& writer, std::string const& value)
    {
        tellType<std::string>(writer);
        if (!putPlainly(writer, value.size(), [&value](char* target) { return NyXmlBytes::put(target, value); }))
            writer.data(value);
        return writer;
    }

private:
    // Otherwise the writer's spare string is borrowed while data() runs, so that one that inserts into the writer itself finds another.
    template <class T, class Put>
    static NyXmlWriter& insert(NyXmlWriter& writer, std::size_t room, Put const& put)
    {
        tellType<T>(writer);
        if (putPlainly(writer, room, put))
            return writer;
        std::string text = std::move(writer.m_Text);
        text.resize(room);
        text.resize(static_cast<std::size_t>(put(text.data()) - text.data()));
        writer.data(text);
        writer.m_Text = std::move(text);
        return writer;
    }

    // Hot: most of a document passes here. Where nobody overrides data(), the text of a value is made where it is to stand, which saves
    // a copy and two calls. \p put puts it at its argument, with so much room there, and says where it ends.
    template <class Put>
    static bool putPlainly(NyXmlWriter& writer, std::size_t room, Put const& put)
    {
        if (!writer.isPlain())
            return false;
        if (writer.takesContent()) {
            char* const at = writer.beginContentValue(room);
            writer.m_ContentBuffer.endAt(put(at));
            return true;
        }
        if (writer.m_Mode != NyXmlWriter::MODE_ATTRIBUTE_NAME)
            return false;
        char* at = writer.m_Bytes.room(room + 2);
        *at++ = '"';
        at = put(at);
        *at++ = '"';
        writer.m_Bytes.endAt(at);
        writer.endCall();
        writer.m_Mode = NyXmlWriter::MODE_ATTRIBUTE_VALUE;
        return true;
    }

    template <class T>
    static void tellType(NyXmlWriter& writer)
    {
        if (!writer.isPlain() || writer.m_WriteSchema) {
            writer.type(typeid(T));
            return;
        }
        static char const* const word = NyXmlSchema::typeWord(typeid(T));
        writer.m_TypeName = word;
        writer.m_LastType = &typeid(T);
    }
};

NyXmlWriter& operator<<(NyXmlWriter& writer, char const& value) { return NyXmlScalarText::insertByte<char>(writer, value); }

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
    return NyXmlScalarText::insertByte<bool>(writer, value ? '1' : '0');
}

NyXmlWriter& operator<<(NyXmlWriter& writer, std::string const& value) { return NyXmlScalarText::insertString(writer, value); }

NyXmlWriter& operator<<(NyXmlWriter& writer, NyAngle const& value) { return NyXmlScalarText::insertUnit(writer, value); }

NyXmlWriter& operator<<(NyXmlWriter& writer, NyNonNegReal const& value) { return NyXmlScalarText::insertUnit(writer, value); }
