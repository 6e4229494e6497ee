#include <nyXmlKit/standard/NyXmlStandardWriter.h>

#include <nyXml/platform/NyAngle.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/platform/NyStringConversion.h>
#include <nyXml/reader/NyXmlFileReader.h>
#include <nyXml/values/NyXmlTextOf.h>
#include <nyXmlKit/standard/detail/NyXmlMarkup.h>

#include <algorithm>
#include <charconv>
#include <iostream>
#include <utility>

namespace {

constexpr unsigned int defaultColumns = 10;
constexpr std::size_t longestInlineContent = 50;
constexpr char const* xmlNamespace = "http://www.w3.org/XML/1998/namespace";

/// What stands behind the last "/", and there behind the last ":".
std::string lastSegment(std::string const& name) { return name.substr(name.find_last_of("/:") + 1); }

/// The core's rule: the name of the document without extension and directories, and the last part of the namespace.
std::string schemaFile(std::string const& fileName, std::string const& ns)
{
    std::string const stem = fileName.substr(0, fileName.rfind('.'));
    return stem.substr(stem.find_last_of("\\/") + 1) + '.' + ns.substr(ns.rfind('/') + 1) + ".xsd";
}

/// Whether a text can be nothing but a number: a class of an application's own may call anything a real.
bool isDecimal(std::string const& text) { return text.find_first_not_of("0123456789+-.e") == text.npos; }

std::string shortest(float value)
{
    char digits[32];
    return { digits, std::to_chars(digits, digits + sizeof digits, value).ptr };
}

} // namespace

NyXmlStandardWriter::Switches NyXmlStandardWriter::m_theDefaults;

NyXmlStandardWriter::NyXmlStandardWriter() : NyXmlStandardWriter(std::string(), std::cout) {}

NyXmlStandardWriter::NyXmlStandardWriter(std::string const& fileName, std::ostream& stream)
    : NyXmlWriter(fileName, stream),
      m_output(stream),
      m_fileName(fileName)
{}

NyXmlStandardWriter::~NyXmlStandardWriter()
{
    if (m_switches.writesSchema)
        m_schema.write(m_fileName);
}

void NyXmlStandardWriter::setDefaultNoSchemaLocation(bool flag) { m_theDefaults.noSchemaLocation = flag; }
void NyXmlStandardWriter::setDefaultNoNil(bool flag) { m_theDefaults.noNil = flag; }
void NyXmlStandardWriter::setDefaultNoNamespaceComplaints(bool flag) { m_theDefaults.noNamespaceComplaints = flag; }
void NyXmlStandardWriter::setDefaultShortestReals(bool flag) { m_theDefaults.shortestReals = flag; }
void NyXmlStandardWriter::setDefaultSchemaWriter(bool flag) { m_theDefaults.writesSchema = flag; }
void NyXmlStandardWriter::setSchemaWriter(bool flag) { m_switches.writesSchema = flag; }

// Elements

void NyXmlStandardWriter::writeStartTag(NyToken const& token)
{
    std::string const ns = token.namespaceName(); // the token may be one of ours
    std::string tag = nameFor(token.localName());
    if (ns.empty()) {
        if (!m_switches.noNamespaceComplaints)
            complain("Warning", "All elements should have namespace: " + token.localName());
    } else if (m_rootNamespace.empty()) {
        m_rootNamespace = ns;
    }
    bool const isRoot = m_open.empty();
    if (!isRoot)
        finishStartTag();
    std::string const prefix = ns == m_rootNamespace || ns.empty() ? std::string() : prefixFor(ns);
    if (!prefix.empty())
        tag = prefix + ':' + tag;
    m_open.push_back({ tag, ns, m_bindings.size() });
    if (isRoot) {
        sendBytes();
        header(NyToken(std::string(), tag), ns);
    } else {
        indentBy(static_cast<unsigned int>(m_open.size() - 1));
        (m_bytes += '<') += tag;
    }
    std::string const* const bound = namespaceOf(prefix);
    if (bound == nullptr ? !ns.empty() : *bound != ns)
        declare(prefix, ns);
    sendBytes();
    m_attributes.clear();
    m_content.clear();
    m_values = 0;
    m_columns = defaultColumns;
    m_mode = Mode::START_TAG;
    if (m_switches.writesSchema)
        m_schema.writeStartTag(token, NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
}

void NyXmlStandardWriter::writeStartTagUsingParentNamespace(NyToken const& token)
{
    if (m_open.empty())
        writeStartTag(token);
    else
        writeStartTag(NyToken(m_open.back().xmlNamespace, token.localName()));
}

/// Ends the start tag of the element around, which gets a child.
void NyXmlStandardWriter::finishStartTag()
{
    if (m_mode == Mode::ATTRIBUTE)
        dropAttribute();
    if (m_mode == Mode::START_TAG)
        m_bytes += ">\n";
    else if (m_mode == Mode::CONTENT)
        (m_bytes += '>') += m_content;
}

void NyXmlStandardWriter::writeEndTag()
{
    if (m_open.empty()) {
        complain("Error", "end tag without an open element");
        return;
    }
    if (m_mode == Mode::ATTRIBUTE)
        dropAttribute();
    auto const depth = static_cast<unsigned int>(m_open.size());
    std::string const& tag = m_open.back().tag;
    switch (m_mode) {
    case Mode::START_TAG:
        if (m_attributes.empty() && !m_switches.noNil) {
            if (namespaceOf("xsi") == nullptr)
                declare("xsi", NyXmlFileReader::m_schemaInstanceNamespace);
            m_bytes += " xsi:nil=\"true\"";
        }
        m_bytes += "/>\n";
        break;
    case Mode::CONTENT:
        m_bytes += '>';
        if (m_values > 1 && m_content.size() > longestInlineContent) {
            m_bytes += '\n';
            indentBy(depth);
            (m_bytes += m_content) += '\n';
            indentBy(depth - 1);
        } else {
            m_bytes += m_content;
        }
        m_bytes.append("</").append(tag) += ">\n";
        break;
    case Mode::END_TAG:
        indentBy(depth - 1);
        m_bytes.append("</").append(tag) += ">\n";
        break;
    case Mode::NONE:
    case Mode::ATTRIBUTE: break; // with an element open it is never one of these
    }
    sendBytes();
    m_bindings.resize(m_open.back().declarations);
    m_open.pop_back();
    m_mode = Mode::END_TAG;
    if (m_switches.writesSchema)
        m_schema.writeEndTag();
}

std::string const& NyXmlStandardWriter::header() const { return NyXmlWriter::header(); }

void NyXmlStandardWriter::header(NyToken const& token, std::string const& ns)
{
    m_bytes.clear();
    if (!header().empty())
        (m_bytes += header()) += '\n';
    if (!styleSheet().empty())
        (m_bytes += styleSheet()) += '\n';
    (m_bytes += '<') += token.localName();
    bool const hasLocation = !m_switches.noSchemaLocation && !ns.empty();
    if (hasLocation || !m_switches.noNil) {
        m_bytes += ' ';
        m_bytes.append("xmlns:xsi=\"").append(NyXmlFileReader::m_schemaInstanceNamespace) += '"';
        m_bindings.push_back({ "xsi", NyXmlFileReader::m_schemaInstanceNamespace });
    }
    if (hasLocation) {
        m_bytes += "\n  xsi:schemaLocation=\"";
        NyXmlMarkup::appendValue(m_bytes, ns);
        m_bytes += "\n  ";
        NyXmlMarkup::appendValue(m_bytes, schemaFile(m_fileName, ns));
        m_bytes += '"';
    }
    sendBytes();
}

// Names

/// A name as XML can have it. Others are mended, for the sake of the document around them.
std::string NyXmlStandardWriter::nameFor(std::string const& text)
{
    if (NyXmlMarkup::isName(text))
        return text;
    std::string const name = NyXmlMarkup::nameOf(text);
    complain("Error", "no name in XML: " + text + ", written as " + name);
    return name;
}

/// Null if the prefix is not declared.
std::string const* NyXmlStandardWriter::namespaceOf(std::string_view prefix) const
{
    auto const binding = std::find_if(m_bindings.rbegin(), m_bindings.rend(),
                                      [prefix](Binding const& candidate) { return candidate.prefix == prefix; });
    return binding != m_bindings.rend() ? &binding->xmlNamespace : nullptr;
}

/// A prefix, declared or not, that is free for this namespace: its last part, with a number behind if others have that.
std::string NyXmlStandardWriter::prefixFor(std::string const& ns)
{
    for (auto binding = m_bindings.rbegin(); binding != m_bindings.rend(); ++binding)
        if (binding->xmlNamespace == ns && !binding->prefix.empty() && namespaceOf(binding->prefix) == &binding->xmlNamespace)
            return binding->prefix;
    std::string wanted = NyXmlMarkup::nameOf(lastSegment(ns));
    if (wanted.size() >= 3 && (wanted[0] | 32) == 'x' && (wanted[1] | 32) == 'm' && (wanted[2] | 32) == 'l')
        wanted.insert(0, 1, '_'); // reserved
    std::string prefix = wanted;
    for (unsigned int number = 2; namespaceOf(prefix) != nullptr; ++number)
        prefix = wanted + std::to_string(number);
    return prefix;
}

void NyXmlStandardWriter::declare(std::string const& prefix, std::string const& ns)
{
    m_bytes += prefix.empty() ? " xmlns" : " xmlns:";
    m_bytes.append(prefix) += "=\"";
    complainOfBytes(NyXmlMarkup::appendValue(m_bytes, ns), "namespace " + ns);
    m_bytes += '"';
    m_bindings.push_back({ prefix, ns });
}

// Attributes

void NyXmlStandardWriter::setAttributeName(NyToken const& token)
{
    if (m_mode == Mode::ATTRIBUTE)
        dropAttribute();
    m_modeBefore = std::exchange(m_mode, Mode::ATTRIBUTE);
    m_attribute.clear();
    if (m_switches.writesSchema)
        m_schema.setAttributeName(token);
    std::string name = nameFor(token.localName());
    std::string const& ns = token.namespaceName();
    if (m_modeBefore != Mode::START_TAG) {
        complain("Error", "attribute is not in a start tag, and left out: " + name);
        return;
    }
    if (ns.empty() && name == "xmlns") {
        name = "_xmlns";
        complain("Error", "no name in XML: xmlns, written as _xmlns"); // it would declare a namespace
    }
    if (ns == xmlNamespace) {
        name.insert(0, "xml:");
    } else if (!ns.empty()) {
        if (!m_switches.noNamespaceComplaints)
            complain("Error", "no namespace on attributes preferred: " + token.namespaceAndToken());
        std::string const prefix = prefixFor(ns);
        if (namespaceOf(prefix) == nullptr)
            declare(prefix, ns);
        name = prefix + ':' + name;
    }
    if (std::find(m_attributes.begin(), m_attributes.end(), name) != m_attributes.end()) {
        complain("Error", "attribute is there already, and left out: " + name);
    } else {
        m_attribute = name;
    }
    sendBytes();
}

/// No value has come.
void NyXmlStandardWriter::dropAttribute()
{
    complain("Error", "attribute has no value, and is left out: " + m_attribute);
    m_mode = m_modeBefore;
}

void NyXmlStandardWriter::attributeValue(std::string const& value)
{
    m_mode = m_modeBefore;
    if (m_attribute.empty())
        return;
    (m_bytes += ' ').append(m_attribute) += "=\"";
    complainOfBytes(NyXmlMarkup::appendValue(m_bytes, value), "attribute " + m_attribute);
    m_bytes += '"';
    sendBytes();
    m_attributes.push_back(m_attribute);
}

// Data

void NyXmlStandardWriter::type(std::type_info const& info)
{
    m_kind = info == typeid(double) || info == typeid(NyAngle) || info == typeid(NyNonNegReal) ? Kind::REAL
             : info == typeid(float)                                                           ? Kind::FLOAT
             : isMarkup()                                                                      ? Kind::MARKUP
                                                                                               : Kind::TEXT;
    NyXmlWriter::type(info);
    if (m_switches.writesSchema)
        m_schema.setType(info);
}

void NyXmlStandardWriter::data(std::string const& value)
{
    std::string number;
    if (m_switches.shortestReals && (m_kind == Kind::REAL || m_kind == Kind::FLOAT) && isDecimal(value)) {
        double const real = NyXmlText::toDouble(value);
        number = m_kind == Kind::REAL ? NyDOUBLE2STRING(real) : shortest(static_cast<float>(real));
    }
    std::string const& text = number.empty() ? value : number;
    switch (m_mode) {
    case Mode::ATTRIBUTE: attributeValue(text); break;
    case Mode::START_TAG:
    case Mode::CONTENT: content(text); break;
    case Mode::NONE:
    case Mode::END_TAG:
        complain("Error",
                 "element " + (m_open.empty() ? std::string() : m_open.back().tag) + " is placing content at incorrect location");
        break;
    }
    m_kind = Kind::TEXT;
}

void NyXmlStandardWriter::content(std::string const& value)
{
    if (m_values != 0) {
        if (m_columns != 0 && m_values % m_columns == 0)
            (m_content += '\n').append(2 * m_open.size(), ' '); // the core's layout
        else
            m_content += ' ';
    }
    ++m_values;
    m_mode = Mode::CONTENT;
    complainOfBytes(m_kind == Kind::MARKUP ? NyXmlMarkup::appendMarkup(m_content, value)
                                           : NyXmlMarkup::appendText(m_content, value),
                    "element " + m_open.back().tag);
}

void NyXmlStandardWriter::setNumOfContentColumns(unsigned int columns) { m_columns = columns; }

// Bytes

void NyXmlStandardWriter::tab(unsigned int count)
{
    for (; count != 0; --count)
        m_bytes += indent();
    sendBytes();
}

/// Through tab() if a subclass may have one of its own, which wants the bytes before it on the stream.
void NyXmlStandardWriter::indentBy(unsigned int count)
{
    if (!isPlain()) {
        sendBytes();
        tab(count);
        return;
    }
    for (; count != 0; --count)
        m_bytes += indent();
}

/// Nothing stays behind between calls, since the owner of the stream may write to it himself.
void NyXmlStandardWriter::sendBytes()
{
    if (!m_bytes.empty())
        m_output.write(m_bytes.data(), static_cast<std::streamsize>(m_bytes.size()));
    m_bytes.clear();
}

void NyXmlStandardWriter::complain(char const* level, std::string const& what) const
{
    Ny::Print::write(Ny::Print::FAULT, "NyXmlStandardWriter %s: %s\n\tFile: %s\n", level, what.c_str(), m_fileName.c_str());
}

void NyXmlStandardWriter::complainOfBytes(std::size_t count, std::string const& where) const
{
    if (count != 0)
        complain("Error", where + " has " + std::to_string(count) + " bytes that XML cannot hold, and they are left out");
}
