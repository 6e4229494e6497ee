// In-house, no part of the face: for the sources of this library.

#ifndef NYXMLKIT_STANDARD_DETAIL_NYXMLSTANDARDDOCUMENT_H
#define NYXMLKIT_STANDARD_DETAIL_NYXMLSTANDARDDOCUMENT_H

#include <nyXmlKit/standard/NyXmlStandardReader.h>
#include <nyXmlKit/standard/detail/NyXmlStandardParser.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <istream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// One open document: where its reading stands, and what the last event brought.
class NyXmlStandardReader::Document {
public:
    using Name = NyXmlStandardName;
    using Event = NyXmlStandardParser::Event;
    using Attribute = NyXmlStandardParser::Attribute;

    Document(std::string name, std::istream& stream, std::unique_ptr<std::istream> owned, std::function<bool()> mayReadOn)
        : m_name(std::move(name)),
          m_owned(std::move(owned)),
          m_parser(stream, std::move(mayReadOn))
    {}
    ~Document();
    Document(Document const&) = delete;
    Document& operator=(Document const&) = delete;

    Mode readXml();
    Mode mode() const noexcept { return m_mode; }
    NyToken const& element() const { return m_open.empty() ? NyXmlFileReader::m_theNullToken : m_open.back().name->token; }
    bool isAtInclude() const noexcept { return !m_open.empty() && m_open.back().name->isInclude; }
    std::string const& filename() const noexcept { return m_name; }
    int line() const noexcept { return m_line; }
    unsigned int errorCode() const noexcept { return m_errorCode; }
    /// Open elements, those of what is being skipped too.
    std::size_t depth() const noexcept { return std::max(m_open.size(), m_parser.depth()); }
    NyXmlStandardParser const& parser() const noexcept { return m_parser; }
    std::size_t bytesHeld() const noexcept { return m_parser.bytesHeld() + m_content.size() + m_children.size(); }

    // Attributes
    NyToken const& attributeName(NyToken const& name) const;
    NyToken const& attributeName() const;
    std::string const& takeAttribute(NyToken const& name);
    std::string const& takeAttribute();
    std::size_t attributes() const noexcept { return m_attributeCount; }
    std::size_t attributesLeft() const noexcept { return m_attributesLeft; }
    /// A local name that attributes of different prefixes have, of which the first one counts.
    std::string const& repeatedAttribute() const
    {
        return m_repeated != nullptr ? m_repeated->token.localName() : NyXmlFileReader::m_theNullString;
    }
    void dropAttributes() noexcept;

    // Content
    std::string const& content();
    std::string const& word();
    std::size_t words() const;
    bool hasContent() const noexcept;
    void setVectorFlag(bool flag) noexcept { m_vectorFlag = flag; }

    std::string_view contentView() const { return std::string_view(m_content).substr(m_contentStart); }
    std::string_view takeContent()
    {
        std::string_view const text = contentView();
        m_contentStart = m_content.size();
        return text;
    }

    // Leaves that come next in the queue as a whole, past the events; passing one leaves all as behind its last event.
    bool findLeaf(NyToken const& name, std::string_view& text);
    bool findLeaf(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t count);
    void passTextLeaf();
    void passTagLeaf();

    // Subtrees
    /// \param watcher  asked about what is passed over; null if nobody is
    bool skip(NyXmlStandardReader* watcher = nullptr);
    std::string const& children();

    // Fast paths
    std::string const& fastTag(bool isSimple);
    std::string const& fastAttribute(bool isLast);
    std::string const& fastWord();
    void fastEnd();

    // Namespaces
    std::string const& namespaceOf(Name const& name, bool isAttribute) const;
    std::string const& elementNamespace() const
    {
        return m_open.empty() ? NyXmlFileReader::m_theNullString : namespaceOf(*m_open.back().name, false);
    }
    std::string const& attributeNamespace(NyToken const& name) const;
    void addOpenElements(std::vector<NyToken>& names) const;

    void report(char const* kind, std::string_view text, int line, int column = 0) const;

private:
    struct Open {
        Name const* name;
        bool isPreserved;   ///< xml:space="preserve"
        bool hasTextBeside; ///< text beside its children has been reported
        bool declares;
    };
    struct Binding {
        std::string prefix;
        std::string xmlNamespace;
        std::size_t depth;
    };

    Event const& peek()
    {
        if (m_parser.isDrained())
            ownAttributes();
        return m_parser.peek();
    }
    Mode nextEvent();
    Mode fault(Event const& event);
    bool maySkip(NyXmlStandardReader& watcher, Event const& event, std::size_t& text);
    void open(Event const& event);
    void close();
    void takeAttributes(Event const& event);
    Attribute* takeOwnBusiness(Attribute* first, Attribute* last);
    bool isOfSchemaInstance(Name const& name) const;
    void ownAttributes();
    Attribute* find(std::string const& localName) const;
    std::string const& take(Attribute& attribute);
    void declarePrefixes(Event const& event, std::vector<std::string_view>& declared);
    void addContent(Event const& event);
    bool endContent();
    bool passEndOfNothing();
    void noteTextBeside(int line);
    void leaveStartTag() noexcept;
    void advance() noexcept;
    std::size_t findStart(NyToken const& name) const;
    void beginLeaf();
    void warn(std::string_view text, int line);
    bool beginFast();
    bool nextFast(bool wantsEnds = false);
    bool passFastEnd();
    void passFastText(Event const& event, std::size_t depth);
    void tellFastText(int line);
    void enterFastTag();
    void leaveFastTag();
    std::size_t endFast();
    Mode readOnBehindFast();

    std::string m_name;
    std::unique_ptr<std::istream> m_owned; ///< of an include
    NyXmlStandardParser m_parser;
    Mode m_mode = NyXmlFileReader::XML_READER_EOF;
    unsigned int m_errorCode = 0;
    int m_line = 1;
    bool m_isFinished = false; ///< the end of the document was given out
    std::vector<Open> m_open;
    std::vector<Binding> m_bindings;

    Attribute* m_first = nullptr; ///< of the last tag, ordered by local name
    Name const* m_repeated = nullptr;
    std::size_t m_attributeCount = 0;
    std::size_t m_attributesLeft = 0;
    std::size_t m_nextAttribute = 0;        ///< those before it are taken
    std::vector<Attribute> m_ownAttributes; ///< when the parser needs the place of its own
    std::string m_ownTexts;

    std::string m_content;
    std::size_t m_contentStart = 0; ///< words before it are cut off
    std::size_t m_firstKept = 0;    ///< of the white space that references gave, if m_endOfKept is not 0
    std::size_t m_endOfKept = 0;
    bool m_vectorFlag = false;
    std::string m_value; ///< of attributes, words and fast paths
    std::string m_children;

    // Leaves
    std::size_t m_leafStart = 0; ///< of the one that was found: how many events stand before it in the queue
    std::string_view m_leafText;
    bool m_isBehindLeafTag = false; ///< the last event is an empty tag that was taken as a leaf

    // Fast paths
    bool m_isFast = false;
    bool m_isFastAtEnd = false; ///< the end tag of the element around was met, and readXml() has still to give it
    bool m_isFastEmpty = false; ///< that element has none: its tag is an empty one
    bool m_isFastInTag = false; ///< the start tag that is next in the queue has been entered
    bool m_hasFastChild = false;
    bool m_isFastTextLost = false;    ///< in front of the next tag, and not told yet
    std::size_t m_fastDepth = 0;      ///< elements that they have opened
    std::size_t m_fastAttribute = 0;  ///< of that start tag
    std::size_t m_fastAttributes = 0; ///< of it that are handed out
    std::size_t m_fastText = 0;       ///< of the text that is next in the queue
};

#endif
