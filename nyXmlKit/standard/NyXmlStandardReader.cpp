#include <nyXmlKit/standard/NyXmlStandardReader.h>

#include <nyXml/platform/NyIfHttpStream.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXmlKit/standard/detail/NyXmlMarkup.h>
#include <nyXmlKit/standard/detail/NyXmlStandardParser.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <istream>
#include <string_view>
#include <system_error>
#include <typeinfo>
#include <utility>

namespace {

using Mode = NyXmlStandardReader::Mode;
using Name = NyXmlStandardName;
using Event = NyXmlStandardParser::Event;
using Attribute = NyXmlStandardParser::Attribute;

std::string const includeName = "NyInclude";
std::string const xmlNamespace = "http://www.w3.org/XML/1998/namespace";

std::string const& none() { return NyXmlFileReader::m_theNullString; }

bool isBlank(std::string_view text) { return NyXmlMarkup::findBlack(text) == text.size(); }

} // namespace

/// One open document: where its reading stands, and what the last event brought.
class NyXmlStandardReader::Document {
public:
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
    std::size_t depth() const noexcept
    {
        return std::max(m_open.size(), m_parser.depth());
    } // the parser's: also in what is skipped
    NyXmlStandardParser const& parser() const noexcept { return m_parser; }
    std::size_t bytesHeld() const noexcept { return m_parser.bytesHeld() + m_content.size() + m_children.size(); }

    // Attributes
    NyToken const& attributeName(NyToken const& name) const;
    NyToken const& attributeName() const;
    std::string const& takeAttribute(NyToken const& name);
    std::string const& takeAttribute();
    std::size_t attributes() const noexcept { return m_attributeCount; }
    std::size_t attributesLeft() const noexcept { return m_attributesLeft; }
    void dropAttributes() noexcept;

    // Content
    std::string const& content();
    std::string const& word();
    std::size_t words() const;
    bool hasContent() const noexcept;
    void setVectorFlag(bool flag) noexcept { m_vectorFlag = flag; }

    // Subtrees
    bool skip();
    std::string const& children();

    // Fast paths
    std::string const& fastTag(bool isSimple);
    std::string const& fastAttribute(bool isLast);
    std::string const& fastWord();
    void fastEnd();

    // Namespaces
    std::string const& namespaceOf(Name const& name, bool isAttribute) const;
    std::string const& elementNamespace() const { return m_open.empty() ? none() : namespaceOf(*m_open.back().name, false); }
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
    void open(Event const& event);
    void close();
    void takeAttributes(Event const& event);
    Attribute* takeOwnBusiness(Attribute* first, Attribute* last);
    void ownAttributes();
    Attribute* find(std::string const& localName) const;
    std::string const& take(Attribute& attribute);
    void addContent(Event const& event);
    bool endContent();
    void noteTextBeside(int line);
    void leaveStartTag() noexcept;
    void advance() noexcept;
    void warn(std::string_view text, int line);
    bool beginFast();
    bool nextFast(bool wantsEnds = false);
    bool passFastEnd();
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

    // Fast paths
    bool m_isFast = false;
    bool m_isFastAtEnd = false; ///< the end tag of the element around was met, and readXml() has still to give it
    bool m_isFastEmpty = false; ///< that element has none: its tag is an empty one
    bool m_isFastInTag = false; ///< the start tag that is next in the queue has been entered
    bool m_hasFastChild = false;
    std::size_t m_fastDepth = 0;     ///< elements that they have opened
    std::size_t m_fastAttribute = 0; ///< of that start tag
    std::size_t m_fastText = 0;      ///< of the text that is next in the queue
};

NyXmlStandardReader::Document::~Document()
{
    if (m_mode == NyXmlFileReader::XML_READER_ERROR)
        return;
    if (m_open.size() > 1)
        report("file not well formed.", "Some start tags not closed with end tag", m_line);
    if (m_attributesLeft != 0)
        report("file not well formed.", "Some attribute were not used", m_line);
}

void NyXmlStandardReader::Document::report(char const* kind, std::string_view text, int line, int column) const
{
    std::string message("NyXmlStandardReader Error: ");
    message.append(kind).append("\n\t").append(text).append(".\n\tFile: ").append(m_name);
    message.append("\n\tLine: ").append(std::to_string(line)) += '\n';
    if (column != 0)
        message.append("\tColumn: ").append(std::to_string(column)) += '\n';
    Ny::Print::write(Ny::Print::FAULT, "%s", message.c_str());
}

void NyXmlStandardReader::Document::warn(std::string_view text, int line)
{
    report("file possibly not valid.", text, line);
    if (m_errorCode == 0)
        m_errorCode = 2;
}

// Events

Mode NyXmlStandardReader::Document::readXml() { return m_mode = m_isFast ? readOnBehindFast() : nextEvent(); }

Mode NyXmlStandardReader::Document::nextEvent()
{
    bool const isLeaf = m_mode == NyXmlFileReader::XML_READER_START_TAG; // so far: text is content if no child comes
    switch (m_mode) {
    case NyXmlFileReader::XML_READER_ERROR: return m_mode; // which has been told
    case NyXmlFileReader::XML_READER_EMPTY_TAG: close(); break;
    case NyXmlFileReader::XML_READER_START_TAG: leaveStartTag(); break;
    case NyXmlFileReader::XML_READER_EOF:
        if (m_isFinished) {
            report("file not well formed.", "File must begin with start tag", m_line);
            m_errorCode = 1;
            return NyXmlFileReader::XML_READER_ERROR;
        }
        break;
    case NyXmlFileReader::XML_READER_END_TAG:
    case NyXmlFileReader::XML_READER_CONTENT: break;
    }
    bool isTextBeside = false;
    for (;; advance()) {
        Event const& event = peek();
        switch (event.kind) {
        case Event::Kind::TEXT:
            if (!isLeaf) {
                isTextBeside = isTextBeside || !isBlank(m_parser.textOf(event));
                break;
            }
            addContent(event);
            break;
        case Event::Kind::REFERENCE:
            if (isLeaf)
                addContent(event);
            break;
        case Event::Kind::MARKUP: break;
        case Event::Kind::NOTE: warn(m_parser.textOf(event), event.line); break;
        case Event::Kind::START:
            if (isTextBeside || (isLeaf && !isBlank(m_content)))
                noteTextBeside(event.line);
            m_content.clear();
            open(event);
            m_parser.pop();
            return event.isEmpty ? NyXmlFileReader::XML_READER_EMPTY_TAG : NyXmlFileReader::XML_READER_START_TAG;
        case Event::Kind::END: {
            if (isTextBeside)
                noteTextBeside(event.line);
            m_line = event.line;
            m_parser.pop();
            bool const hasText = isLeaf && endContent();
            close();
            return hasText ? NyXmlFileReader::XML_READER_CONTENT : NyXmlFileReader::XML_READER_END_TAG;
        }
        case Event::Kind::END_OF_DOCUMENT:
            m_isFinished = true;
            m_line = event.line;
            return NyXmlFileReader::XML_READER_EOF;
        case Event::Kind::FAULT: return fault(event);
        }
    }
}

void NyXmlStandardReader::Document::leaveStartTag() noexcept
{
    m_content.clear();
    m_contentStart = m_firstKept = m_endOfKept = 0;
    m_vectorFlag = false;
}

/// Goes behind an event, of which a fast path may have taken a part.
void NyXmlStandardReader::Document::advance() noexcept
{
    m_parser.pop();
    m_fastText = 0;
}

Mode NyXmlStandardReader::Document::fault(Event const& event)
{
    if (event.column != 0) // else it was others who ended the reading
        report("file not well formed.", m_parser.textOf(event), event.line, event.column);
    m_line = event.line != 0 ? event.line : m_line;
    m_errorCode = 1;
    return m_mode = NyXmlFileReader::XML_READER_ERROR;
}

void NyXmlStandardReader::Document::noteTextBeside(int line)
{
    if (m_open.empty() || std::exchange(m_open.back().hasTextBeside, true))
        return;
    warn("Text beside the child elements of " + m_open.back().name->written + " was passed over", line);
}

void NyXmlStandardReader::Document::open(Event const& event)
{
    if (m_attributesLeft != 0)
        warn("Previous attribute names were not used", m_line);
    m_line = event.line;
    m_open.push_back({ event.name, !m_open.empty() && m_open.back().isPreserved, false, false });
    takeAttributes(event);
}

void NyXmlStandardReader::Document::close()
{
    if (m_open.back().declares)
        while (!m_bindings.empty() && m_bindings.back().depth == m_open.size())
            m_bindings.pop_back();
    m_open.pop_back();
}

void NyXmlStandardReader::Document::addOpenElements(std::vector<NyToken>& names) const
{
    for (Open const& element : m_open)
        names.push_back(element.name->token);
}

// Attributes

void NyXmlStandardReader::Document::takeAttributes(Event const& event)
{
    m_nextAttribute = 0;
    m_attributeCount = 0;
    if (event.size != 0) {
        m_first = m_parser.attributesOf(event);
        Attribute* last = takeOwnBusiness(m_first, m_first + event.size);
        auto const localName = [](Attribute const& attribute) -> std::string const& { return attribute.name->token.localName(); };
        if (last - m_first > 1) {
            std::stable_sort(m_first, last, [&](auto const& one, auto const& two) { return localName(one) < localName(two); });
            last = std::unique(m_first, last, [&](auto const& one, auto const& two) { return localName(one) == localName(two); });
        }
        m_attributeCount = static_cast<std::size_t>(last - m_first);
    }
    m_attributesLeft = m_attributeCount;
}

/// Takes out what is no attribute to the caller: declarations first, since prefixes may be used before them.
Attribute* NyXmlStandardReader::Document::takeOwnBusiness(Attribute* first, Attribute* last)
{
    auto const isOrdinary = [](Attribute const& attribute) {
        return attribute.name->kind == Name::Kind::ORDINARY && attribute.name->prefix.empty();
    };
    if (std::all_of(first, last, isOrdinary))
        return last;
    Open& element = m_open.back();
    last = std::remove_if(first, last, [&](Attribute const& attribute) {
        switch (attribute.name->kind) {
        case Name::Kind::ORDINARY: return false;
        case Name::Kind::SPACE: element.isPreserved = attribute.value == "preserve"; break;
        case Name::Kind::DECLARATION:
            element.declares = true;
            m_bindings.push_back({ attribute.name->token.localName(), std::string(attribute.value), m_open.size() });
            break;
        }
        return true;
    });
    return std::remove_if(first, last, [&](Attribute const& attribute) {
        std::string const& xmlns = namespaceOf(*attribute.name, true);
        return xmlns == NyXmlFileReader::m_schemaInstanceNamespace || (xmlns.empty() && attribute.name->prefix == "xsi");
    });
}

/// Keeps the attributes when the parser is about to need their place.
void NyXmlStandardReader::Document::ownAttributes()
{
    if (m_attributeCount == 0 || m_first == m_ownAttributes.data())
        return;
    m_ownAttributes.assign(m_first, m_first + m_attributeCount);
    m_first = m_ownAttributes.data();
    m_ownTexts.clear();
    for (Attribute& attribute : m_ownAttributes) {
        attribute.begin = m_ownTexts.size();
        m_ownTexts += attribute.value;
    }
    for (Attribute& attribute : m_ownAttributes)
        attribute.value = std::string_view(m_ownTexts).substr(attribute.begin, attribute.value.size());
}

/// Taken or not.
Attribute* NyXmlStandardReader::Document::find(std::string const& localName) const
{
    Attribute* const last = m_first + m_attributeCount;
    Attribute* const place = std::lower_bound(m_first, last, localName, [](Attribute const& attribute, std::string const& name) {
        return attribute.name->token.localName() < name;
    });
    return place != last && place->name->token.localName() == localName ? place : nullptr;
}

NyToken const& NyXmlStandardReader::Document::attributeName(NyToken const& name) const
{
    Attribute const* const attribute = find(name.localName());
    return attribute != nullptr && !attribute->isTaken ? attribute->name->token : NyXmlFileReader::m_theNullToken;
}

NyToken const& NyXmlStandardReader::Document::attributeName() const
{
    return m_attributesLeft != 0 ? m_first[m_nextAttribute].name->token : NyXmlFileReader::m_theNullToken;
}

std::string const& NyXmlStandardReader::Document::takeAttribute(NyToken const& name)
{
    Attribute* const attribute = find(name.localName());
    return attribute != nullptr && !attribute->isTaken ? take(*attribute) : none();
}

std::string const& NyXmlStandardReader::Document::takeAttribute()
{
    return m_attributesLeft != 0 ? take(m_first[m_nextAttribute]) : none();
}

std::string const& NyXmlStandardReader::Document::take(Attribute& attribute)
{
    attribute.isTaken = true;
    --m_attributesLeft;
    while (m_nextAttribute != m_attributeCount && m_first[m_nextAttribute].isTaken)
        ++m_nextAttribute;
    return m_value.assign(attribute.value);
}

void NyXmlStandardReader::Document::dropAttributes() noexcept { m_attributeCount = m_attributesLeft = m_nextAttribute = 0; }

std::string const& NyXmlStandardReader::Document::namespaceOf(Name const& name, bool isAttribute) const
{
    if (name.prefix == "xml")
        return xmlNamespace;
    if (isAttribute && name.prefix.empty())
        return none();
    auto const binding = std::find_if(m_bindings.rbegin(), m_bindings.rend(),
                                      [&](Binding const& candidate) { return candidate.prefix == name.prefix; });
    return binding != m_bindings.rend() ? binding->xmlNamespace : none();
}

std::string const& NyXmlStandardReader::Document::attributeNamespace(NyToken const& name) const
{
    Attribute const* const attribute = find(name.localName());
    return attribute != nullptr ? namespaceOf(*attribute->name, true) : none();
}

// Content

void NyXmlStandardReader::Document::addContent(Event const& event)
{
    if (event.kind == Event::Kind::REFERENCE && m_endOfKept == 0)
        m_firstKept = m_content.size();
    std::string_view const text = m_parser.textOf(event).substr(m_fastText);
    if (m_content.empty())
        m_content.assign(text);
    else
        m_content.append(text);
    if (event.kind == Event::Kind::REFERENCE)
        m_endOfKept = m_content.size();
}

/// Takes off white space at the ends. False if there is no content.
bool NyXmlStandardReader::Document::endContent()
{
    if (m_open.back().isPreserved)
        return !m_content.empty();
    std::size_t begin = NyXmlMarkup::findBlack(m_content);
    std::size_t end = begin == m_content.size() ? 0 : m_content.size();
    while (end > begin && NyXmlMarkup::isWhite(m_content[end - 1]))
        --end;
    if (m_endOfKept != 0) {
        begin = std::min(begin, m_firstKept);
        end = std::max(end, m_endOfKept);
    }
    if (end != m_content.size())
        m_content.resize(end);
    m_contentStart = std::min(begin, end);
    return m_contentStart != end;
}

std::string const& NyXmlStandardReader::Document::content()
{
    if (m_vectorFlag)
        return word();
    if (m_contentStart != 0)
        m_content.erase(0, std::exchange(m_contentStart, 0));
    return m_content;
}

std::string const& NyXmlStandardReader::Document::word()
{
    std::string_view const text = m_content;
    std::size_t const begin = NyXmlMarkup::findBlack(text, m_contentStart);
    std::size_t const end = NyXmlMarkup::findWhite(text, begin);
    m_contentStart = NyXmlMarkup::findBlack(text, end);
    return m_value.assign(text, begin, end - begin);
}

std::size_t NyXmlStandardReader::Document::words() const
{
    std::size_t count = 0;
    for (std::size_t at = NyXmlMarkup::findBlack(m_content, m_contentStart); at != m_content.size();
         at = NyXmlMarkup::findBlack(m_content, NyXmlMarkup::findWhite(m_content, at)))
        ++count;
    return std::max<std::size_t>(count, 1); // also without any, as the core has it
}

bool NyXmlStandardReader::Document::hasContent() const noexcept
{
    std::size_t const start = m_vectorFlag ? NyXmlMarkup::findBlack(m_content, m_contentStart) : m_contentStart;
    return start != m_content.size();
}

// Subtrees

bool NyXmlStandardReader::Document::skip()
{
    if (m_mode == NyXmlFileReader::XML_READER_EMPTY_TAG)
        return true;
    dropAttributes();
    if (m_isFastAtEnd)
        return readXml() != NyXmlFileReader::XML_READER_ERROR;
    if (m_mode == NyXmlFileReader::XML_READER_ERROR || m_open.empty())
        return false;
    leaveStartTag();
    for (std::size_t depth = endFast();; advance()) {
        Event const& event = peek();
        if (event.kind == Event::Kind::START && !event.isEmpty) {
            ++depth;
        } else if (event.kind == Event::Kind::END && depth-- == 0) {
            m_line = event.line;
            m_parser.pop();
            close();
            m_mode = NyXmlFileReader::XML_READER_END_TAG;
            return true;
        } else if (event.kind == Event::Kind::FAULT) {
            fault(event);
            return false;
        }
    }
}

std::string const& NyXmlStandardReader::Document::children()
{
    m_children.clear();
    if (m_mode != NyXmlFileReader::XML_READER_START_TAG)
        return m_children;
    if (m_isFast) { // its children are taken already
        skip();
        return m_children;
    }
    leaveStartTag();
    std::vector<Name const*> open;
    for (;; advance()) {
        Event const& event = peek();
        std::string_view const text = m_parser.textOf(event);
        switch (event.kind) {
        case Event::Kind::TEXT: NyXmlMarkup::appendPartOfText(m_children, text); break;
        case Event::Kind::REFERENCE: NyXmlMarkup::appendReference(m_children, text.front()); break;
        case Event::Kind::MARKUP: m_children += text; break;
        case Event::Kind::NOTE: warn(text, event.line); break;
        case Event::Kind::START: {
            (m_children += '<') += event.name->written;
            Attribute const* const first = m_parser.attributesOf(event);
            for (Attribute const* attribute = first; attribute != first + event.size; ++attribute) {
                (m_children += ' ').append(attribute->name->written) += "=\"";
                NyXmlMarkup::appendValue(m_children, attribute->value);
                m_children += '"';
            }
            m_children += event.isEmpty ? "/>" : ">";
            if (!event.isEmpty)
                open.push_back(event.name);
            break;
        }
        case Event::Kind::END:
            if (open.empty()) {
                if (!m_open.back().isPreserved) {
                    m_children.erase(m_children.find_last_not_of(NyXmlMarkup::white) + 1);
                    m_children.erase(0, NyXmlMarkup::findBlack(m_children));
                }
                m_line = event.line;
                m_parser.pop();
                close();
                m_mode = NyXmlFileReader::XML_READER_END_TAG;
                return m_children;
            }
            m_children.append("</").append(open.back()->written) += '>';
            open.pop_back();
            break;
        case Event::Kind::END_OF_DOCUMENT:
        case Event::Kind::FAULT: fault(event); return m_children;
        }
    }
}

// Fast paths. They move through the queue below the last event: m_fastDepth elements have been opened, and of the event that is next
// a part may be taken.

/// Whether there is something to move in.
bool NyXmlStandardReader::Document::beginFast()
{
    if (m_mode == NyXmlFileReader::XML_READER_ERROR || m_isFastAtEnd || m_open.empty())
        return false;
    m_isFast = true;
    if (m_mode != NyXmlFileReader::XML_READER_EMPTY_TAG)
        return true;
    m_isFastAtEnd = m_isFastEmpty = true;
    m_mode = NyXmlFileReader::XML_READER_END_TAG;
    return false;
}

/// Stands on the next event that a fast path may look at. False where the element around ends.
bool NyXmlStandardReader::Document::nextFast(bool wantsEnds)
{
    for (;;) {
        Event const& event = peek();
        switch (event.kind) {
        case Event::Kind::TEXT:
        case Event::Kind::REFERENCE:
        case Event::Kind::START: return true;
        case Event::Kind::MARKUP: advance(); break;
        case Event::Kind::NOTE:
            warn(m_parser.textOf(event), event.line);
            advance();
            break;
        case Event::Kind::END:
            if (wantsEnds)
                return true;
            if (!passFastEnd())
                return false;
            break;
        case Event::Kind::END_OF_DOCUMENT:
        case Event::Kind::FAULT: fault(event); return false;
        }
    }
}

/// Goes behind an end tag. False, and it stays, if the element around ends there.
bool NyXmlStandardReader::Document::passFastEnd()
{
    m_line = peek().line;
    if (m_fastDepth == 0) {
        m_isFastAtEnd = true;
        m_mode = NyXmlFileReader::XML_READER_END_TAG;
        return false;
    }
    --m_fastDepth;
    advance();
    return true;
}

void NyXmlStandardReader::Document::leaveFastTag()
{
    if (!std::exchange(m_isFastInTag, false))
        return;
    m_fastDepth += peek().isEmpty ? 0 : 1;
    advance();
}

std::string const& NyXmlStandardReader::Document::fastTag(bool isSimple)
{
    m_value.clear();
    if (!beginFast())
        return m_value;
    leaveFastTag();
    while (nextFast()) {
        Event const& event = peek();
        if (event.kind != Event::Kind::START) {
            advance();
            continue;
        }
        m_line = event.line;
        m_value = event.name->token.localName();
        m_isFastInTag = m_hasFastChild = true;
        m_fastAttribute = 0;
        if (isSimple) { // the cursor is behind the tag, whose last byte is lost
            if (!event.isEmpty)
                m_value.pop_back();
            leaveFastTag();
        }
        break;
    }
    return m_value;
}

std::string const& NyXmlStandardReader::Document::fastAttribute(bool isLast)
{
    m_value.clear();
    if (!beginFast())
        return m_value;
    while (nextFast()) {
        Event const& event = peek();
        if (event.kind != Event::Kind::START) {
            advance();
            continue;
        }
        if (!std::exchange(m_isFastInTag, true)) {
            m_line = event.line;
            m_hasFastChild = true;
            m_fastAttribute = 0;
        }
        if (m_fastAttribute != event.size) {
            m_value = m_parser.attributesOf(event)[m_fastAttribute++].value;
            if (isLast)
                leaveFastTag();
            break;
        }
        leaveFastTag();
    }
    return m_value;
}

std::string const& NyXmlStandardReader::Document::fastWord()
{
    m_value.clear();
    if (!beginFast())
        return m_value;
    leaveFastTag();
    while (nextFast()) {
        Event const& event = peek();
        if (event.kind == Event::Kind::START) {
            if (!m_value.empty())
                break;
            m_isFastInTag = m_hasFastChild = true;
            leaveFastTag();
            continue;
        }
        std::string_view const text = m_parser.textOf(event);
        std::size_t const begin = m_value.empty() ? NyXmlMarkup::findBlack(text, m_fastText) : m_fastText;
        std::size_t const end = NyXmlMarkup::findWhite(text, begin);
        m_value.append(text, begin, end - begin);
        if (end != text.size()) {
            m_fastText = end;
            break;
        }
        advance(); // the word may go on in the next piece
        if (!m_value.empty() && peek().kind != Event::Kind::TEXT && peek().kind != Event::Kind::MARKUP)
            break;
    }
    return m_value;
}

void NyXmlStandardReader::Document::fastEnd()
{
    if (!beginFast())
        return;
    bool const isInEmptyTag = m_isFastInTag && peek().isEmpty;
    leaveFastTag();
    if (isInEmptyTag)
        return;
    for (std::size_t const depth = m_fastDepth; nextFast(true);) {
        if (peek().kind == Event::Kind::END) {
            if (!passFastEnd() || m_fastDepth < depth)
                return;
            continue;
        }
        m_isFastInTag = peek().kind == Event::Kind::START;
        if (m_isFastInTag)
            leaveFastTag();
        else
            advance();
    }
}

/// Leaves the fast paths. \return how many elements they have left open
std::size_t NyXmlStandardReader::Document::endFast()
{
    leaveFastTag();
    m_isFast = m_hasFastChild = false;
    return std::exchange(m_fastDepth, 0);
}

/// readXml() behind fast paths.
Mode NyXmlStandardReader::Document::readOnBehindFast()
{
    bool const isOpen = m_isFastInTag || m_fastDepth != 0; // also an empty tag of which only attributes were taken
    bool const hasChild = m_hasFastChild;
    std::size_t depth = endFast();
    if (m_mode == NyXmlFileReader::XML_READER_ERROR)
        return m_mode;
    bool const isEmpty = std::exchange(m_isFastEmpty, false);
    if (std::exchange(m_isFastAtEnd, false)) {
        leaveStartTag();
        if (!isEmpty)
            m_parser.pop();
        close();
        return NyXmlFileReader::XML_READER_END_TAG;
    }
    if (!isOpen) {
        if (hasChild && m_mode == NyXmlFileReader::XML_READER_START_TAG) {
            leaveStartTag();
            m_mode = NyXmlFileReader::XML_READER_END_TAG;
        }
        return nextEvent();
    }
    bool isMore = false;
    for (;; advance()) {
        Event const& event = peek();
        if (event.kind == Event::Kind::START) {
            isMore = true;
            depth += event.isEmpty ? 0 : 1;
        } else if (event.kind == Event::Kind::END && depth-- == 0) {
            if (isMore)
                warn("Elements behind those that were read were passed over", event.line);
            m_line = event.line;
            leaveStartTag();
            m_parser.pop();
            close();
            return NyXmlFileReader::XML_READER_END_TAG;
        } else if (event.kind == Event::Kind::FAULT) {
            return fault(event);
        }
    }
}

// The front

NyXmlStandardReader::NyXmlStandardReader() = default;

NyXmlStandardReader::NyXmlStandardReader(std::string const& name, std::istream& stream) { push(name, stream, nullptr); }

NyXmlStandardReader::~NyXmlStandardReader()
{
    while (!m_theDocuments.empty())
        m_theDocuments.pop_back(); // the innermost first: its complaint is about what came last
}

void NyXmlStandardReader::push(std::string const& name, std::istream& stream, std::unique_ptr<std::istream> owned)
{
    m_theDocuments.push_back(std::make_unique<Document>(name, stream, std::move(owned), [this] { return mayReadOn(); }));
    m_theTop = m_theDocuments.back().get();
}

void NyXmlStandardReader::open(std::string const& name, std::istream& stream)
{
    // As in the core: what lies above the first document counts as an include.
    push(name, stream, std::unique_ptr<std::istream>(m_theDocuments.empty() ? nullptr : &stream));
    m_isVersionDue = true;
    m_isVersionGood = true;
}

// Hot: where nobody overrides the hooks, a look at the mode and at the element's name tells that they have nothing to do.
Mode NyXmlStandardReader::readXml()
{
    Mode const mode = m_theTop->readXml();
    bool const isEveryday = !m_isVersionDue && mode != NyXmlFileReader::XML_READER_EOF && !m_theTop->isAtInclude();
    return isEveryday && typeid(*this) == typeid(NyXmlStandardReader) ? mode : examineEvent();
}

Mode NyXmlStandardReader::examineEvent()
{
    for (;; m_theTop->readXml()) {
        bool const readOn = openFileTest() ? m_theTop->mode() != NyXmlFileReader::XML_READER_ERROR : closeFileTest();
        if (!readOn)
            break;
    }
    if (m_isVersionDue) {
        m_isVersionDue = false;
        m_isVersionGood = checkVersion();
    }
    return m_theTop->mode();
}

bool NyXmlStandardReader::openFileTest()
{
    Mode const mode = m_theTop->mode();
    bool const isTag = mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG;
    if (!isTag || !m_theTop->isAtInclude())
        return false;

    m_isVersionDue = true;
    bool hasType = false;
    bool hasLink = false;
    std::string href;
    int const line = lineCountOfFile();
    while (remainingNumOfAttributes() != 0) {
        std::string const name = attributeName();
        std::string const value = attributeValue();
        if (name == "type") {
            hasType = true;
            if (value != "simple")
                Ny::Print::write(Ny::Print::FAULT,
                                 "NyXmlStandardReader Error: XLink 'type' needs to be simple.\n\tFile: %s\n\tLine: %d\n",
                                 filename(), line);
        } else if (name == "href") {
            hasLink = true;
            href = value;
        } else {
            Ny::Print::write(
                Ny::Print::FAULT,
                "NyXmlStandardReader Error: attribute name can only be simple and href, not %s.\n\tFile: %s\n\tLine: %d\n",
                name.c_str(), filename(), line);
        }
    }
    bool remote = false;
    std::string const path = hasLink ? pathOfLink(href, remote) : std::string();
    if (mode == NyXmlFileReader::XML_READER_START_TAG)
        m_theTop->skip(); // written with an end tag it is the same element
    if (!hasType || !hasLink) {
        Ny::Print::write(Ny::Print::FAULT, "NyXmlStandardReader Error: XLink syntax not correct.\n\tFile: %s\n\tLine: %d\n",
                         filename(), line);
        return true;
    }
    if (m_theTop->mode() == NyXmlFileReader::XML_READER_ERROR)
        return true;
    std::unique_ptr<std::istream> stream = openLink(path, remote);
    if (!stream || stream->fail()) {
        Ny::Print::write(Ny::Print::FAULT, "NyXmlStandardReader Error: not able to open file: %s\n", path.c_str());
        return true;
    }
    std::istream& opened = *stream;
    push(path, opened, std::move(stream));
    return true;
}

bool NyXmlStandardReader::closeFileTest()
{
    if (m_theTop->mode() != NyXmlFileReader::XML_READER_EOF || m_theDocuments.size() < 2)
        return false;
    m_theBytesOfClosed += m_theTop->parser().input().bytesRead();
    m_theDocuments.pop_back();
    m_theTop = m_theDocuments.back().get();
    return true;
}

bool NyXmlStandardReader::mayReadOn() { return true; }

std::unique_ptr<std::istream> NyXmlStandardReader::openLink(std::string const& path, bool remote)
{
    if (remote)
        return std::make_unique<NyIfHttpStream>(path, 1);
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) // some systems open one, and fail when it is read
        return nullptr;
    return std::make_unique<std::ifstream>(path, std::ios::in | std::ios::binary);
}

bool NyXmlStandardReader::versionFlag() const { return m_isVersionGood; }

Mode NyXmlStandardReader::mode() const { return m_theTop->mode(); }

NyToken const& NyXmlStandardReader::element() const { return m_theTop->element(); }

NyToken const& NyXmlStandardReader::attributeName(NyToken const& name) const { return m_theTop->attributeName(name); }

NyToken const& NyXmlStandardReader::attributeName() const { return m_theTop->attributeName(); }

std::string const& NyXmlStandardReader::attributeValue(NyToken const& name) { return m_theTop->takeAttribute(name); }

std::string const& NyXmlStandardReader::attributeValue() { return m_theTop->takeAttribute(); }

unsigned int NyXmlStandardReader::numOfAttributes() const { return static_cast<unsigned int>(m_theTop->attributes()); }

unsigned int NyXmlStandardReader::remainingNumOfAttributes() const
{
    return static_cast<unsigned int>(m_theTop->attributesLeft());
}

std::string const& NyXmlStandardReader::content() const { return m_theTop->content(); }

std::string const& NyXmlStandardReader::contentByWord() const { return m_theTop->word(); }

unsigned int NyXmlStandardReader::contentCount() const { return static_cast<unsigned int>(m_theTop->words()); }

bool NyXmlStandardReader::isContentAvailable() const { return m_theTop->hasContent(); }

void NyXmlStandardReader::setContentVectorFlag(bool flag) { m_theTop->setVectorFlag(flag); }

char const* NyXmlStandardReader::filename() const { return m_theTop->filename().c_str(); }

int NyXmlStandardReader::lineCountOfFile() const { return m_theTop->line(); }

bool NyXmlStandardReader::nextMatchingEndTag() { return m_theTop->skip(); }

std::string const& NyXmlStandardReader::getChildrenAsString() { return m_theTop->children(); }

std::istream& NyXmlStandardReader::stream() const { return m_theTop->parser().input().stream(); }

std::string const& NyXmlStandardReader::getComplexStartTagFast() { return m_theTop->fastTag(false); }

std::string const& NyXmlStandardReader::getSimpleStartTagFast() { return m_theTop->fastTag(true); }

std::string const& NyXmlStandardReader::getAttributeValueFast() { return m_theTop->fastAttribute(false); }

std::string const& NyXmlStandardReader::getLastAttributeValueFast() { return m_theTop->fastAttribute(true); }

std::string const& NyXmlStandardReader::getContentByWordFast() { return m_theTop->fastWord(); }

void NyXmlStandardReader::getEndTagFast() { m_theTop->fastEnd(); }

unsigned int NyXmlStandardReader::errorCode() const { return m_theTop->errorCode(); }

std::string const& NyXmlStandardReader::elementNamespace() const { return m_theTop->elementNamespace(); }

std::string const& NyXmlStandardReader::attributeNamespace(NyToken const& name) const
{
    return m_theTop->attributeNamespace(name);
}

std::vector<NyToken> NyXmlStandardReader::openElements() const
{
    std::vector<NyToken> names;
    for (std::unique_ptr<Document> const& document : m_theDocuments) {
        if (!names.empty() && names.back().localName() == includeName)
            names.pop_back(); // this document stands in its place
        document->addOpenElements(names);
    }
    return names;
}

std::size_t NyXmlStandardReader::depth() const noexcept
{
    std::size_t depth = 0;
    for (std::unique_ptr<Document> const& document : m_theDocuments)
        depth += document->depth();
    return depth;
}

std::uint64_t NyXmlStandardReader::eventsPassed() const noexcept { return m_theTop->parser().passed(); }

std::size_t NyXmlStandardReader::openDocuments() const noexcept { return m_theDocuments.size(); }

std::uint64_t NyXmlStandardReader::bytesRead() const noexcept
{
    std::uint64_t bytes = m_theBytesOfClosed;
    for (std::unique_ptr<Document> const& document : m_theDocuments)
        bytes += document->parser().input().bytesRead();
    return bytes;
}

std::size_t NyXmlStandardReader::bytesHeld() const noexcept { return m_theTop->bytesHeld(); }
