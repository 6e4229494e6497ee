#ifndef NYXML_WRITER_NYXMLWRITER_H
#define NYXML_WRITER_NYXMLWRITER_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/traversal/detail/NyXmlSignalsFwd.h>
#include <nyXml/writer/detail/NyXmlBytes.h>
#include <nyXml/writer/detail/NyXmlTagStack.h>

#include <boost/shared_ptr.hpp>

#include <iosfwd>
#include <sstream>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

class NyAngle;
class NyNonNegReal;

/// Turns start tags, attribute names, data and end tags into the bytes of one XML document.
///
/// A document is written by the caller's own calls. Attributes come first, then either data or children:
/// \code
///     std::ofstream stream("model.xml");
///     NyXmlWriter writer("model.xml", stream);
///     writer.writeStartTag("urn:demo/shapes#root"); // prologue, <root ...
///     writer.setAttributeName("id");
///     writer << 7;                                  // id="7"
///     writer.writeStartTagUsingParentNamespace("size");
///     writer << 1.5;                                // <size>1.5</size>
///     writer.writeEndTag();
///     writer.writeEndTag();                         // </root>
/// \endcode
/// Objects do the same in their write(NyXmlWriter&), between the tags that their owner writes.
///
/// Bytes pass through unchanged: `&`, `<`, `>` and quotes are not escaped, so data that holds them is markup.
///
/// Namespaces. The first namespace met becomes the default namespace of the document and its elements have no prefix. An element of
/// another namespace has a prefix, the part of the namespace behind its last "/", and declares it unless an enclosing element did.
/// Two namespaces with equal prefixes are not told apart.
///
/// Form of an element, decided by its end tag: nothing written inside is `<a xsi:nil="true"/>`, attributes alone `<a b="1"/>`, data of up to 50
/// bytes `<a>text</a>`; more is put on lines of its own. Data comes ten values to a line, see setNumOfContentColumns().
///
/// A call out of order throws nothing. It prints "NyXmlWriter Error: ..." or "NyXmlWriter Warning: ..." with the document's name
/// (print type 4), and the writing goes on; see the operations. Whether the stream took the bytes is for its owner to look at. The
/// bytes of a call are with the stream when the call returns, but for data inside an element, which is held until the end tag. Those of
/// an object's write() are there when it returns, and whenever code of the application runs within it.
///
/// One writer is for one document. Use from one thread at a time.
class NYXML_EXPORT NyXmlWriter {
public:
    /// Sets of defaults. Any other value is ignored wherever a selection is made.
    enum LANGUAGE : int {
        LANGUAGE_XML = 0,  ///< no style sheet, no schema
        LANGUAGE_QCML = 1, ///< QCML with its style sheet and schema
    };

    /// Writes to standard output, with an empty document name.
    NyXmlWriter();

    /// \param fileName  the document's name in messages; with its directories and the last extension off, also the base name of its
    ///                  schema files. Nothing is opened.
    /// \param stream    stays the caller's and must outlive the writer, which neither flushes nor closes it
    NyXmlWriter(std::string const& fileName, std::ostream& stream);

    /// A snapshot: same stream, open elements, held data, settings and schema. It is not made to write on: it counts links from 0 and
    /// tells nobody, and it writes reals with 6 digits instead of 20. Where calls are mirrored into a schema it must not be written on
    /// at all: the open element of the copied schema is the source's own. It writes the XSD files, too, when it goes.
    NyXmlWriter(NyXmlWriter const& other);

    /// Takes over what a copy takes over, but for the stream: stream, digits, signals and link counters stay ours.
    NyXmlWriter& operator=(NyXmlWriter const& other);

    /// Ends the document. Open elements stay open. Writes the XSD files if the calls were mirrored into a schema.
    virtual ~NyXmlWriter();

    /// Opens an element. The first one writes the prologue too, see header().
    ///
    /// \param token  without a namespace a warning is printed and the element gets neither prefix nor declaration
    ///
    /// After data of the same parent this gives a broken document: the parent's data is dropped and its tag not closed.
    virtual void writeStartTag(NyToken const& token);

    /// Opens an element in the namespace of the enclosing one, whatever the token's own is. The same as writeStartTag() at the root.
    virtual void writeStartTagUsingParentNamespace(NyToken const& token);

    /// Begins an attribute of the element that was opened last; the next data() is its value. Call it before data and children.
    ///
    /// A token with a namespace is complained of and prefixed, if that prefix is declared; if not, there is a second complaint and no
    /// prefix. An attribute never declares one.
    virtual void setAttributeName(NyToken const& token);

    /// Values on a line of data. Holds until the next start tag, which sets it to 10 again: call it behind the element's start tag.
    /// With 0 all values stay on one line.
    virtual void setNumOfContentColumns(unsigned int columns);

    /// Closes the element. Out of place, as after an attribute name without a value or with no element open, it prints and writes
    /// nothing; an open element is closed all the same.
    virtual void writeEndTag();

    /// One level of indentation. A blank, unless a default or a language says otherwise.
    virtual std::string const& indent() const;
    virtual void setIndent(std::string const& indent);

protected:
    /// Writes what stands in front of the root's declaration and attributes: XML declaration and style sheet, if any, `<` and the tag,
    /// and unless the namespace is empty the location of its schema, made of the document's name and the namespace.
    virtual void header(NyToken const& token, std::string const& xmlNamespace);

public:
    /// The first line of the document, or empty for none.
    virtual std::string const& header() const;
    virtual void setHeader(std::string const& header);
    /// The second line, a whole processing instruction, or empty for none.
    virtual std::string const& styleSheet() const;
    virtual void setStyleSheet(std::string const& styleSheet);
    /// For the application's use. The writer itself takes neither of the two: it always writes the standard instance namespace and
    /// works out the location.
    virtual std::string const& schemaInstance() const;
    virtual void setSchemaInstance(std::string const& schemaInstance);
    virtual std::string const& schemaLocation() const;
    virtual void setSchemaLocation(std::string const& schemaLocation);

    /// Sets indent (two blanks), header, style sheet, schema instance and schema location. Too late for the prologue once the root is open.
    virtual void setLanguageSelection(LANGUAGE language);

    /// Tells the type of the data that follows. The insertion operators do.
    virtual void type(std::type_info const& info);

    /// Writes one value: of the attribute just named, or else of the open element. Several values of an element are separated.
    /// An empty value counts, too: an element with one is `<a></a>`. Where no element can take data it prints and drops the value.
    virtual void data(std::string const& value);

    /// Whether members that equal their default are to be written. The objects ask; the writer itself writes whatever comes.
    virtual bool writeDefaultDataFlag() const;
    virtual void setWriteDefaultDataFlag(bool flag);

    /// Links that the documents to be written hold altogether; 0 for unknown.
    virtual void setLinkTotal(unsigned int total);
    virtual void resetLinkCount();
    /// Counts one link and sends the count over the total, or the bare count without a total, on "signalReadWriteProgress"; then
    /// "Writing: " and that number on "signalReadWriteMsg". The writer counts no link by itself.
    virtual void incrementLinkCount();

    /// While it lives, the strings that the writer gets are markup.
    class Markup {
    public:
        explicit Markup(NyXmlWriter& writer) noexcept : m_writer(writer), m_before(writer.m_IsMarkup)
        {
            writer.m_IsMarkup = true;
        }
        ~Markup() { m_writer.m_IsMarkup = m_before; }
        Markup(Markup const&) = delete;
        Markup& operator=(Markup const&) = delete;

    private:
        NyXmlWriter& m_writer;
        bool m_before;
    };

    /// Whether the string at hand is markup: for subclasses that escape the others. This writer passes both unchanged.
    bool isMarkup() const noexcept { return m_IsMarkup; }

protected:
    /// Writes the value in double quotes.
    virtual void attributeValue(std::string const& value);
    /// Puts the value behind the data held.
    virtual void content(std::string const& value);
    /// Whether from now on all calls are mirrored into a schema, which the destructor writes.
    virtual void setSchemaWriter(bool flag);
    /// Writes the indentation \p count times.
    virtual void tab(unsigned int count);

public:
    // Defaults. Writers take them over when they are constructed; those that exist keep what they have. Set them before threads write.

    static std::string const& defaultHeader();
    static void setDefaultHeader(std::string const& header);
    static std::string const& defaultIndent();
    static void setDefaultIndent(std::string const& indent);
    static std::string const& defaultSchemaInstance();
    static void setDefaultSchemaInstance(std::string const& schemaInstance);
    static std::string const& defaultSchemaLocation();
    static void setDefaultSchemaLocation(std::string const& schemaLocation);
    static std::string const& defaultStyleSheet();
    static void setDefaultStyleSheet(std::string const& styleSheet);
    static void setDefaultForWriteDefaultDataFlag(bool flag);
    static void setDefaultLanguageSelection(LANGUAGE language);

protected:
    static void setDefaultSchemaWriter(bool flag);

private:
    friend class NyXmlScalarText; // the insertion operators' way to the scratch stream
    friend class NyXmlTogether;
    friend class NyXmlApart;

    /// What the last call was. Messages print the number.
    enum MODE : int {
        MODE_NONE = 0,            ///< nothing written yet
        MODE_START_TAG = 1,       ///< `<name` stands open
        MODE_ATTRIBUTE_NAME = 2,  ///< ` name=` stands, its value is due
        MODE_ATTRIBUTE_VALUE = 3, ///< an attribute is complete, the start tag still open
        MODE_CONTENT = 4,         ///< data is held, the start tag still open
        MODE_END_TAG = 5,
    };

    /// Whether nobody overrides our operations, so that calls among ourselves may be cut short.
    bool isPlain() const noexcept { return typeid(*this) == typeid(NyXmlWriter); }
    bool takesContent() const noexcept
    {
        return m_Mode == MODE_CONTENT || m_Mode == MODE_START_TAG || m_Mode == MODE_ATTRIBUTE_VALUE;
    }
    void startElement(std::string const& xmlNamespace, std::string const& localName);
    void startOwnNamespace(std::string const& xmlNamespace, std::string const& localName);
    std::string attributePrefix(NyToken const& token);
    char* beginContentValue(std::size_t size);
    void makeContentRoom();
    void putStartTag();
    void putContent();
    void putEndTag();
    void putIndent(std::string_view before, unsigned int count);
    /// The bytes of a call are with the stream when it returns, unless it is one of the library's own, see NyXmlTogether.
    void endCall()
    {
        constexpr std::size_t enough = 16 * 1024;
        if (m_Together == 0 || m_Bytes.size() >= enough)
            sendBytes();
    }
    void sendBytes();

    static std::string m_theIndent;
    static std::string m_theHeader;
    static std::string m_theStyleSheetLocation;
    static std::string m_theSchemaInstance;
    static std::string m_theSchemaLocation;
    static bool m_theWriteDefaultDataFlag;
    static bool m_theWriteSchema;

    std::ostringstream m_Stream; ///< says how scalars look, above all with how many digits; never the process locale's way
    std::ostream& m_OutputStream;
    std::string m_FileName;
    MODE m_Mode = MODE_NONE;
    NyXmlTagStack m_TagStack;
    std::string m_RootNamespace; ///< the first namespace met; outlives its document
    NyXmlBytes m_ContentBuffer;  ///< data of the open element, behind m_HeldPieces
    unsigned int m_ContentCount = 0;
    unsigned int m_ContentColumns;
    bool m_WriteDefaultData;
    std::string m_Indent;
    std::string m_Header;
    std::string m_StyleSheet;
    std::string m_SchemaInstance;
    std::string m_SchemaLocation;
    NyXmlSchema m_Schema;
    bool m_WriteSchema;
    char const* m_TypeName = ""; ///< XSD word of the last type told
    boost::shared_ptr<Ny::ReadWriteStatusSignal> m_MessageSignal;
    boost::shared_ptr<Ny::ReadWriteProgressSignal> m_ProgressSignal;
    unsigned int m_LinkTotal = 0;
    unsigned int m_LinkCount = 0;

    std::type_info const* m_LastType = nullptr; ///< the type of m_TypeName
    std::vector<NyXmlBytes> m_HeldPieces;       ///< of long data: what grew to all of it would touch twice the memory
    NyXmlBytes m_Bytes;                         ///< put together, not yet with the stream
    unsigned int m_Together = 0;                ///< depth of the library's own calls that keep bytes together
    bool m_IsRun = false;                       ///< the open element's data may leave before its end tag
    bool m_HasPassedOn = false;                 ///< some of it has left
    bool m_IsMarkup = false;
    std::string m_Text; ///< spare memory for the text of a scalar
};

/// Hands one value to the writer: its type to type(), then its text to data().
///
/// Numbers are as a stream in the classic locale writes them, reals with up to 20 digits and bool as 1 or 0. A char is one raw byte; an
/// unsigned char is a number and goes by the type unsigned short. The unit types go through their own insertion operators.
NYXML_EXPORT NyXmlWriter& operator<<(NyXmlWriter& writer, char const& value);
NYXML_EXPORT NyXmlWriter& operator<<(NyXmlWriter& writer, unsigned char const& value);
NYXML_EXPORT NyXmlWriter& operator<<(NyXmlWriter& writer, short const& value);
NYXML_EXPORT NyXmlWriter& operator<<(NyXmlWriter& writer, unsigned short const& value);
NYXML_EXPORT NyXmlWriter& operator<<(NyXmlWriter& writer, int const& value);
NYXML_EXPORT NyXmlWriter& operator<<(NyXmlWriter& writer, unsigned int const& value);
NYXML_EXPORT NyXmlWriter& operator<<(NyXmlWriter& writer, double const& value);
NYXML_EXPORT NyXmlWriter& operator<<(NyXmlWriter& writer, bool const& value);
NYXML_EXPORT NyXmlWriter& operator<<(NyXmlWriter& writer, std::string const& value);
NYXML_EXPORT NyXmlWriter& operator<<(NyXmlWriter& writer, NyAngle const& value);
NYXML_EXPORT NyXmlWriter& operator<<(NyXmlWriter& writer, NyNonNegReal const& value);

/// A literal is a string. The pointer must not be null.
inline NyXmlWriter& operator<<(NyXmlWriter& writer, char const* value) { return writer << std::string(value); }

/// Any other pointer would pass for a bool.
template <class T>
NyXmlWriter& operator<<(NyXmlWriter& writer, T const* value) = delete;

#endif
