#ifndef NYXMLKIT_STANDARD_NYXMLSTANDARDWRITER_H
#define NYXMLKIT_STANDARD_NYXMLSTANDARDWRITER_H

#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

/// Writes XML 1.0 that every parser takes, and that gives every string of valid characters back exactly, from the same objects.
///
/// It is made and driven like an NyXmlWriter, and takes its place wherever one is asked for:
/// \code
///     std::ofstream stream("model.xml", std::ios::binary);
///     NyXmlStandardWriter writer("model.xml", stream);
///     writer.writeStartTag(NyToken("urn:demo/shapes#model"));
///     model.write(writer);
///     writer.writeEndTag();
/// \endcode
///
/// What it does otherwise than the core's writer:
///  - Texts and attribute values are escaped. White space at the ends of a text, line ends and tabs in attributes are character references. Only an
///    NyXmlEmbeddedString stays the markup that it is, which has to be balanced.
///  - Strings are UTF-8. What XML cannot hold (control characters, U+FFFE and U+FFFF, bytes that are no UTF-8) is left out, and reported.
///  - One value stays on the line of its tags, however long, since white space around it would be a part of it to others. Several values are laid out
///    as the core has it.
///  - Prefixes are names, and of one namespace each; an element without a namespace says so where a default one is in force. The
///    schema instance prefix is always declared where it is used. A namespace of an attribute is declared if need be.
///  - What would make the document ill-formed (an attribute given twice or behind the start tag, a name that is none) is reported and left out or mended.
///
/// Complaints are "NyXmlStandardWriter Error: ..." or "NyXmlStandardWriter Warning: ..." with the document's name (print type 4). Nothing is thrown.
///
/// The document declaration is the header() as it is for all writers. Change its encoding, and the bytes are no longer what it says.
class NYXML_EXPORT NyXmlStandardWriter : public NyXmlWriter {
public:
    /// Writes to standard output, with an empty document name.
    NyXmlStandardWriter();

    /// \param fileName  as NyXmlWriter has it
    /// \param stream    stays the caller's and must outlive the writer, which neither flushes nor closes it
    NyXmlStandardWriter(std::string const& fileName, std::ostream& stream);

    NyXmlStandardWriter(NyXmlStandardWriter const&) = delete; // no snapshots
    NyXmlStandardWriter& operator=(NyXmlStandardWriter const&) = delete;

    /// Open elements stay open. Writes the XSD files if the calls were mirrored into a schema.
    ~NyXmlStandardWriter() override;

    // Switches, each off unless its default was set. For a writer, set them before the root is written.

    /// The root does not point at its schema.
    bool noSchemaLocation() const noexcept { return m_switches.noSchemaLocation; }
    void setNoSchemaLocation(bool flag) noexcept { m_switches.noSchemaLocation = flag; }
    /// An element with nothing in it is `<a/>` instead of `<a xsi:nil="true"/>`.
    bool noNil() const noexcept { return m_switches.noNil; }
    void setNoNil(bool flag) noexcept { m_switches.noNil = flag; }
    /// No complaints about elements without a namespace, and attributes with one.
    bool noNamespaceComplaints() const noexcept { return m_switches.noNamespaceComplaints; }
    void setNoNamespaceComplaints(bool flag) noexcept { m_switches.noNamespaceComplaints = flag; }
    /// A real is the shortest text that reads back the same number, "0.1" instead of "0.10000000000000000555".
    bool shortestReals() const noexcept { return m_switches.shortestReals; }
    void setShortestReals(bool flag) noexcept { m_switches.shortestReals = flag; }

    // Defaults for all writers made later. Set them before threads write.

    static void setDefaultNoSchemaLocation(bool flag);
    static void setDefaultNoNil(bool flag);
    static void setDefaultNoNamespaceComplaints(bool flag);
    static void setDefaultShortestReals(bool flag);

    // NyXmlWriter, with its contracts

    void writeStartTag(NyToken const& token) override;
    void writeStartTagUsingParentNamespace(NyToken const& token) override;
    void setAttributeName(NyToken const& token) override;
    void setNumOfContentColumns(unsigned int columns) override;
    void writeEndTag() override;
    std::string const& header() const override;
    void type(std::type_info const& info) override;
    void data(std::string const& value) override;

protected:
    void header(NyToken const& token, std::string const& xmlNamespace) override;
    void attributeValue(std::string const& value) override;
    void content(std::string const& value) override;
    void setSchemaWriter(bool flag) override;
    void tab(unsigned int count) override;

    /// For the writers of this class and its subclasses that are made later.
    static void setDefaultSchemaWriter(bool flag);

private:
    struct Switches {
        bool noSchemaLocation = false;
        bool noNil = false;
        bool noNamespaceComplaints = false;
        bool shortestReals = false;
        bool writesSchema = false;
    };
    enum class Mode : char { NONE, START_TAG, ATTRIBUTE, CONTENT, END_TAG };
    enum class Kind : char { TEXT, MARKUP, FLOAT, REAL };
    struct Open {
        std::string tag;
        std::string xmlNamespace;
        std::size_t declarations; ///< how many of m_bindings were there before it
    };
    struct Binding {
        std::string prefix;
        std::string xmlNamespace;
    };

    bool isPlain() const noexcept { return typeid(*this) == typeid(NyXmlStandardWriter); }
    void finishStartTag();
    void dropAttribute();
    std::string nameFor(std::string const& text);
    std::string const* namespaceOf(std::string_view prefix) const;
    std::string prefixFor(std::string const& xmlNamespace);
    void declare(std::string const& prefix, std::string const& xmlNamespace);
    void indentBy(unsigned int count);
    void sendBytes();
    void complain(char const* level, std::string const& what) const;
    void complainOfBytes(std::size_t count, std::string const& where) const;

    static Switches m_theDefaults;

    std::ostream& m_output;
    std::string m_fileName;
    Switches m_switches = m_theDefaults;
    Mode m_mode = Mode::NONE;
    Mode m_modeBefore = Mode::NONE; ///< an attribute's name that can't be written
    Kind m_kind = Kind::TEXT;       ///< of the next value
    std::vector<Open> m_open;
    std::vector<Binding> m_bindings;       ///< in force, the innermost at the back
    std::string m_rootNamespace;           ///< the first met: its elements have no prefix
    std::string m_attribute;               ///< its value is due; empty if it is not to be written
    std::vector<std::string> m_attributes; ///< names on the open start tag
    std::string m_content;
    unsigned int m_values = 0; ///< in the content
    unsigned int m_columns = 0;
    std::string m_bytes; ///< of the call that runs
    NyXmlSchema m_schema;
};

#endif
