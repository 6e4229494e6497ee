#ifndef NYXMLKIT_STANDARD_NYXMLSTANDARDREADER_H
#define NYXMLKIT_STANDARD_NYXMLSTANDARDREADER_H

#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/reader/NyXmlReader.h>

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// Reads XML 1.0 as others write it, for the same objects that read the library's own dialect.
///
/// It is made and driven like an NyXmlReader, and takes its place wherever one is asked for:
/// \code
///     std::ifstream stream("model.xml", std::ios::binary);
///     NyXmlStandardReader reader("model.xml", stream);
///     auto mode = reader.readXml();
///     if (mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG)
///         model.read(reader);
///     while (mode != NyXmlFileReader::XML_READER_EOF && mode != NyXmlFileReader::XML_READER_ERROR)
///         mode = reader.readXml(); // what stands behind the root may be wrong, too
///     if (reader.errorCode() != 0)
///         ...
/// \endcode
///
/// What it does beyond the core's reader: entities and character references, CDATA, DOCTYPE with its internal subset, byte order marks, and every
/// encoding that the system's iconv knows; objects get UTF-8. Line ends and the white space of attribute values come as XML has it, a
/// `>` or `#` in an attribute value is an ordinary character. External entities are never fetched. Entities that grow beyond all
/// proportion to the document end the reading.
///
/// Text comes whole, with comments and the like taken out. White space at the ends of an element's text goes, and text of nothing else is none, unless
/// `xml:space="preserve"` is in force or a character reference gave it. Text beside child elements reaches nobody: it is reported once for
/// each element, and passed over.
///
/// Names come without prefix, as in the core; ask elementNamespace() and attributeNamespace(). Attributes are ordered by local name and
/// consumed by being read, and of two with the same local name the first one counts. Declarations of namespaces, attributes of the
/// schema instance namespace and `xml:space` are the reader's own business and are not handed out. A prefix that nobody declared is accepted.
///
/// Nothing is thrown for a bad document. What is not well formed, breaks off, or has something behind its root is XML_READER_ERROR, which
/// is final, with errorCode() 1 and one message of print type 4: "NyXmlStandardReader Error: file not well formed.\n\t<what>.\n\tFile: <name>\n\tLine: <line>\n\tColumn: <column>\n".
/// What is lost of a well-formed document (text beside child elements, entities that are declared elsewhere, attributes that nobody
/// took) is a message "NyXmlStandardReader Error: file possibly not valid.\n\t<what>.\n\tFile: <name>\n\tLine: <line>\n" and
/// errorCode() 2; the reading goes on.
///
/// Memory is bounded by the longest text or tag, the depth, and the number of different names. From one thread at a time.
class NYXML_EXPORT NyXmlStandardReader : public NyXmlReader {
public:
    using Mode = NyXmlFileReader::XML_READER_MODE;

    /// To be opened with open().
    NyXmlStandardReader();

    /// \param name    the document's path: for messages, and where relative links start
    /// \param stream  stays the caller's and must outlive the reader; nothing is read before the first readXml()
    NyXmlStandardReader(std::string const& name, std::istream& stream);

    NyXmlStandardReader(NyXmlStandardReader const&) = delete; // a parser cannot be copied
    NyXmlStandardReader& operator=(NyXmlStandardReader const&) = delete;

    /// Complains of more than one element that is still open, or of attributes that nobody took, unless the document had an error.
    ~NyXmlStandardReader() override;

    // NyXmlReader, with its contracts

    void open(std::string const& name, std::istream& stream) override;
    Mode readXml() override;
    bool versionFlag() const override;
    Mode mode() const override;
    NyToken const& element() const override;
    NyToken const& attributeName(NyToken const& name) const override;
    NyToken const& attributeName() const override;
    std::string const& attributeValue(NyToken const& name) override;
    std::string const& attributeValue() override;
    unsigned int numOfAttributes() const override;
    unsigned int remainingNumOfAttributes() const override;
    std::string const& content() const override;
    /// Cuts off the next word. White space in front of it, which may have been kept, is no word.
    std::string const& contentByWord() const override;
    unsigned int contentCount() const override;
    bool isContentAvailable() const override;
    void setContentVectorFlag(bool flag) override;
    char const* filename() const override;
    /// Where the last event begins: the line of its tag, in a text that comes from an entity the line of the reference.
    int lineCountOfFile() const override;

    /// Skips the element that has just started to its own end tag; elements of the same name inside it don't mislead it. In another mode
    /// it goes to the end of element(). What is skipped draws no messages, and its includes are not followed.
    bool nextMatchingEndTag() override;

    /// What stands between the tags of the element, as markup that can be written anywhere: UTF-8, entities of the document
    /// resolved, CDATA as plain text, `&`, `<` and `>` as references; white space that a character reference gave stays one. Prefixes
    /// stay, declared where they are used if they are declared around the element; so do comments and processing instructions. White space at the bounds goes as it does for texts.
    std::string const& getChildrenAsString() override;

    /// The stream of the document on top. Blocks of it are read ahead.
    std::istream& stream() const override;

    // The fast paths, in terms of the document: the next tag, attribute (in the document's order, but x, y and z in this one) or word behind
    // the last event, as far as the end of the element that was open then. Where that end comes first the text is empty and mode() becomes
    // XML_READER_END_TAG; readXml() then gives this end tag. Elements that are left open when readXml() is called are passed over together
    // with all that follows them up to that end tag.

    /// The name of the next start tag; of an end tag with a "/" in front.
    std::string const& getComplexStartTagFast() override;
    /// The same less its last byte, which for an empty tag was the slash.
    std::string const& getSimpleStartTagFast() override;
    std::string const& getAttributeValueFast() override;
    /// The same; an empty tag is closed by it.
    std::string const& getLastAttributeValueFast() override;
    std::string const& getContentByWordFast() override;
    /// Goes behind the end of the innermost element.
    void getEndTagFast() override;

    unsigned int errorCode() const override;

    // Its own

    /// The namespace of element(), empty if it has none.
    std::string const& elementNamespace() const;

    /// The namespace of the attribute that has this local name and waits or has been taken. Empty if it has none, or there is no such attribute.
    std::string const& attributeNamespace(NyToken const& name) const;

    /// The names of the open elements, outermost first, from the first document through all includes to element().
    std::vector<NyToken> openElements() const;

    /// How many elements are open, in all open documents together; those in an element that is being skipped count.
    std::size_t depth() const noexcept;

    /// Grows with each tag and text of the document on top, also while an element is skipped.
    std::uint64_t eventsPassed() const noexcept;

    /// How many documents are open: 1 without includes.
    std::size_t openDocuments() const noexcept;

    /// How many bytes have been taken from the streams of all documents so far.
    std::uint64_t bytesRead() const noexcept;

    /// How many bytes of text, attributes and markup are held for events to come. Grows with the text of one element, and with what entities bring.
    std::size_t bytesHeld() const noexcept;

protected:
    bool openFileTest() override;
    bool closeFileTest() override;

    /// Whether to read on. Asked before each block that is taken from a stream, and each time that about a megabyte has come out of
    /// entities, so also in the middle of a text or a tag that never ends. False ends the reading with XML_READER_ERROR and errorCode() 1;
    /// whoever says so has told why.
    virtual bool mayReadOn();

    /// What may stand in an element that is skipped.
    enum class Skipped { START_TAG, EMPTY_TAG, END_TAG, TEXT };

    /// Whether nextMatchingEndTag() may pass over more, which gives no events. False as with mayReadOn().
    ///
    /// \param size  the number of attributes, or the bytes of the text so far
    virtual bool maySkip(Skipped what, std::size_t size);

    /// Opens what an include leads to: a file, or an address if \p remote is true. \return null, or a stream that has failed, if that cannot be
    /// had, which the caller reports
    virtual std::unique_ptr<std::istream> openLink(std::string const& path, bool remote);

    /// A local name that the last tag gave to more than one attribute, with different prefixes; the first one counts. Empty if there is
    /// none.
    std::string const& repeatedAttribute() const;

    // Past the events, as NyXmlReader::offerShortcuts() has it; objects need not be told. A subclass whose hooks see what they have to see
    // all the same may offer them in turn.

    bool takeLeaf(NyToken const& name, std::string_view& text)
    {
        return takeLeafIf(name, text, [](std::string_view) { return true; });
    }
    bool takeLeaf(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t count)
    {
        return takeLeafIf(name, attributes, values, count, [] { return true; });
    }
    Mode readInPieces(NyXmlWordSink&) { return readXml(); }
    Mode readInPiecesIf(NyXmlWordSink&, RunWatch&) { return readXml(); }
    std::string_view takeContent();

    /// What takeContent() would give.
    std::string_view contentView() const;

    /// \param mayPass  called with the text. False leaves everything as it was
    template <class MayPass>
    bool takeLeafIf(NyToken const& name, std::string_view& text, MayPass mayPass)
    {
        bool const isTaken = findLeaf(name, text) && mayPass(text);
        if (isTaken)
            passTextLeaf();
        return isTaken;
    }
    template <class MayPass>
    bool takeLeafIf(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t count,
                    MayPass mayPass)
    {
        bool const isTaken = findLeaf(name, attributes, values, count) && mayPass();
        if (isTaken)
            passTagLeaf();
        return isTaken;
    }

private:
    friend class NyXmlReader;
    class Document;

    bool findLeaf(NyToken const& name, std::string_view& text);
    bool findLeaf(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t count);
    void passTextLeaf();
    void passTagLeaf();

    Mode examineEvent();
    void push(std::string const& name, std::istream& stream, std::unique_ptr<std::istream> owned);

    std::vector<std::unique_ptr<Document>> m_theDocuments;
    Document* m_theTop = nullptr; ///< the last of them: every call goes there
    bool m_isVersionDue = true;
    bool m_isVersionGood = true;
    std::uint64_t m_theBytesOfClosed = 0;
};

#endif
