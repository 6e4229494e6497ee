#include <nyXmlKit/standard/detail/NyXmlStandardDocument.h>

#include <nyXml/core/NyXml.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXmlKit/standard/detail/NyXmlMarkup.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

using Mode = NyXmlStandardReader::Mode;
using Name = NyXmlStandardName;
using Event = NyXmlStandardParser::Event;
using Attribute = NyXmlStandardParser::Attribute;

std::string const xmlNamespace = "http://www.w3.org/XML/1998/namespace";

std::string const& none() { return NyXmlFileReader::m_theNullString; }

bool isBlank(std::string_view text) { return NyXmlMarkup::findBlack(text) == text.size(); }

} // namespace

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
    m_line = line; // for who listens and asks where
    report("file possibly not valid.", text, line);
    if (m_errorCode == 0)
        m_errorCode = 2;
}

// Events

Mode NyXmlStandardReader::Document::readXml()
{
    m_isBehindLeafTag = false;
    return m_mode = m_isFast ? readOnBehindFast() : nextEvent();
}

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
        case Event::Kind::START: {
            if (isTextBeside || (isLeaf && !isBlank(m_content)))
                noteTextBeside(event.line);
            m_content.clear();
            m_contentStart = 0;
            open(event);
            bool const isEmpty = event.isEmpty;
            m_parser.pop();
            return isEmpty || passEndOfNothing() ? NyXmlFileReader::XML_READER_EMPTY_TAG : NyXmlFileReader::XML_READER_START_TAG;
        }
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

/// An empty path is left at its tag, which others write with an end tag of its own. True if what has just started is of size 0 and ends
/// right there.
bool NyXmlStandardReader::Document::passEndOfNothing()
{
    if (m_attributeCount != 1 || m_first->value != "0" || m_first->name->token.localName() != NyXml::NyCountToken.localName())
        return false;
    while (peek().kind == Event::Kind::TEXT && !m_open.back().isPreserved && isBlank(m_parser.textOf(peek())))
        advance();
    bool const isOver = peek().kind == Event::Kind::END;
    if (isOver)
        m_parser.pop();
    return isOver;
}

/// Goes behind an event, of which a fast path may have taken a part.
void NyXmlStandardReader::Document::advance() noexcept
{
    m_parser.pop();
    m_fastText = 0;
}

Mode NyXmlStandardReader::Document::fault(Event const& event)
{
    m_line = event.line != 0 ? event.line : m_line;
    if (event.column != 0) // else it was others who ended the reading
        report("file not well formed.", m_parser.textOf(event), event.line, event.column);
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
    m_repeated = nullptr;
    if (event.size != 0) {
        m_first = m_parser.attributesOf(event);
        Attribute* last = takeOwnBusiness(m_first, m_first + event.size);
        auto const localName = [](Attribute const& attribute) -> std::string const& { return attribute.name->token.localName(); };
        auto const isOutOfOrder = [&](auto const& one, auto const& two) { return localName(one) >= localName(two); };
        if (std::adjacent_find(m_first, last, isOutOfOrder) != last) {
            std::stable_sort(m_first, last, [&](auto const& one, auto const& two) { return localName(one) < localName(two); });
            auto const isSame = [&](auto const& one, auto const& two) { return localName(one) == localName(two); };
            Attribute* const repeated = std::adjacent_find(m_first, last, isSame);
            if (repeated != last) {
                m_repeated = repeated->name;
                last = std::unique(repeated, last, isSame);
            }
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
    return std::remove_if(first, last, [this](Attribute const& attribute) { return isOfSchemaInstance(*attribute.name); });
}

bool NyXmlStandardReader::Document::isOfSchemaInstance(Name const& name) const
{
    std::string const& xmlns = namespaceOf(name, true);
    return xmlns == NyXmlFileReader::m_schemaInstanceNamespace || (xmlns.empty() && name.prefix == "xsi");
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

// Leaves. Hot: nearly all of a document is leaves, and two events with their questions cost three times as much. What is not as plain as
// can be, or not whole in the queue, comes by its events.

/// How many events stand before the start of an element of this name, if that comes next and nothing is lost in front of it; npos if not.
inline std::size_t NyXmlStandardReader::Document::findStart(NyToken const& name) const
{
    constexpr std::size_t npos = static_cast<std::size_t>(-1);
    bool const isBetween = m_mode == NyXmlFileReader::XML_READER_START_TAG || m_mode == NyXmlFileReader::XML_READER_END_TAG ||
                           m_mode == NyXmlFileReader::XML_READER_CONTENT ||
                           (m_mode == NyXmlFileReader::XML_READER_EMPTY_TAG && m_isBehindLeafTag);
    std::size_t const least = m_mode == NyXmlFileReader::XML_READER_EMPTY_TAG ? 2 : 1;
    if (!isBetween || m_isFast || m_attributesLeft != 0 || m_open.size() < least || m_open.back().isPreserved)
        return npos;
    std::size_t at = 0;
    Event const* event = m_parser.ahead(at);
    if (event != nullptr && event->kind == Event::Kind::TEXT && isBlank(m_parser.textOf(*event)))
        event = m_parser.ahead(++at);
    bool const isIt = event != nullptr && event->kind == Event::Kind::START && !event->name->isInclude &&
                      event->name->token.localName() == name.localName();
    return isIt ? at : npos;
}

bool NyXmlStandardReader::Document::findLeaf(NyToken const& name, std::string_view& text)
{
    std::size_t const start = findStart(name);
    Event const* const begin = m_parser.ahead(start);
    Event const* const content = m_parser.ahead(start + 1);
    Event const* const end = m_parser.ahead(start + 2);
    if (begin == nullptr || end == nullptr || begin->size != 0 || begin->isEmpty || content->kind != Event::Kind::TEXT ||
        end->kind != Event::Kind::END)
        return false;
    m_leafText = text = NyXmlMarkup::trimmed(m_parser.textOf(*content));
    m_leafStart = start;
    return !text.empty();
}

bool NyXmlStandardReader::Document::findLeaf(NyToken const& name, NyToken const* const* attributes, std::string_view* values,
                                             std::size_t count)
{
    std::size_t const start = findStart(name);
    Event const* const begin = m_parser.ahead(start);
    if (begin == nullptr || !begin->isEmpty || begin->size != count)
        return false;
    Attribute const* const found = m_parser.attributesOf(*begin);
    for (std::size_t i = 0; i != count; ++i) {
        Name const& written = *found[i].name;
        if (written.kind != Name::Kind::ORDINARY || written.written != attributes[i]->localName())
            return false;
        values[i] = found[i].value;
    }
    m_leafStart = start;
    return true;
}

void NyXmlStandardReader::Document::beginLeaf()
{
    if (m_mode == NyXmlFileReader::XML_READER_EMPTY_TAG)
        close();
    leaveStartTag();
}

void NyXmlStandardReader::Document::passTextLeaf()
{
    beginLeaf();
    m_line = m_parser.ahead(m_leafStart + 2)->line;
    m_content.assign(m_leafText);
    m_parser.passLeaf(m_leafStart + 3);
    dropAttributes();
    m_mode = NyXmlFileReader::XML_READER_CONTENT;
    m_isBehindLeafTag = false;
}

void NyXmlStandardReader::Document::passTagLeaf()
{
    beginLeaf();
    if (m_leafStart != 0)
        m_parser.pop();
    open(m_parser.peek());
    for (std::size_t i = 0; i != m_attributeCount; ++i)
        m_first[i].isTaken = true;
    m_nextAttribute = m_attributeCount;
    m_attributesLeft = 0;
    m_parser.pop();
    m_mode = NyXmlFileReader::XML_READER_EMPTY_TAG;
    m_isBehindLeafTag = true;
}

// Subtrees

/// \param text  bytes of the text that the event may go on with
bool NyXmlStandardReader::Document::maySkip(NyXmlStandardReader& watcher, Event const& event, std::size_t& text)
{
    switch (event.kind) {
    case Event::Kind::START: {
        text = 0;
        m_line = event.line;
        Attribute const* const first = m_parser.attributesOf(event);
        auto const isOrdinary = [](Attribute const& attribute) { return attribute.name->kind == Name::Kind::ORDINARY; };
        auto const count = std::count_if(first, first + event.size, isOrdinary);
        return watcher.maySkip(event.isEmpty ? Skipped::EMPTY_TAG : Skipped::START_TAG, static_cast<std::size_t>(count));
    }
    case Event::Kind::END: text = 0; return watcher.maySkip(Skipped::END_TAG, 0);
    case Event::Kind::TEXT:
    case Event::Kind::REFERENCE: text += event.size; return watcher.maySkip(Skipped::TEXT, text);
    case Event::Kind::MARKUP:
    case Event::Kind::NOTE:
    case Event::Kind::END_OF_DOCUMENT:
    case Event::Kind::FAULT: break;
    }
    return true;
}

bool NyXmlStandardReader::Document::skip(NyXmlStandardReader* watcher)
{
    if (m_mode == NyXmlFileReader::XML_READER_EMPTY_TAG)
        return true;
    dropAttributes();
    if (m_isFastAtEnd)
        return readXml() != NyXmlFileReader::XML_READER_ERROR;
    if (m_mode == NyXmlFileReader::XML_READER_ERROR || m_open.empty())
        return false;
    leaveStartTag();
    std::size_t text = 0;
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
        if (watcher != nullptr && !maySkip(*watcher, event, text)) {
            m_mode = NyXmlFileReader::XML_READER_ERROR;
            m_errorCode = 1;
            return false;
        }
    }
}

// Markup that is written elsewhere takes along the declarations of the prefixes that it uses, each where it is used first.
void NyXmlStandardReader::Document::declarePrefixes(Event const& event, std::vector<std::string_view>& declared)
{
    Attribute const* const first = m_parser.attributesOf(event);
    Attribute const* const last = first + event.size;
    for (Attribute const* attribute = first; attribute != last; ++attribute)
        if (attribute->name->kind == Name::Kind::DECLARATION)
            declared.push_back(attribute->name->token.localName());
    auto const declare = [&](Name const& name) {
        if (name.prefix.empty() || name.kind != Name::Kind::ORDINARY || name.prefix == "xml" ||
            std::find(declared.begin(), declared.end(), name.prefix) != declared.end())
            return;
        declared.push_back(name.prefix);
        std::string const& itsNamespace = namespaceOf(name, true);
        if (itsNamespace.empty())
            return; // nobody has
        m_children.append(" xmlns:").append(name.prefix) += "=\"";
        NyXmlMarkup::appendValue(m_children, itsNamespace);
        m_children += '"';
    };
    declare(*event.name);
    for (Attribute const* attribute = first; attribute != last; ++attribute)
        declare(*attribute->name);
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
    struct Element {
        Name const* name;
        std::size_t declaredAround; ///< so many prefixes
    };
    std::vector<Element> open;
    std::vector<std::string_view> declared;
    for (;; advance()) {
        Event const& event = peek();
        std::string_view const text = m_parser.textOf(event);
        switch (event.kind) {
        case Event::Kind::TEXT: NyXmlMarkup::appendPartOfText(m_children, text); break;
        case Event::Kind::REFERENCE: NyXmlMarkup::appendReference(m_children, text.front()); break;
        case Event::Kind::MARKUP: m_children += text; break;
        case Event::Kind::NOTE: warn(text, event.line); break;
        case Event::Kind::START: {
            std::size_t const declaredAround = declared.size();
            (m_children += '<') += event.name->written;
            declarePrefixes(event, declared);
            Attribute const* const first = m_parser.attributesOf(event);
            for (Attribute const* attribute = first; attribute != first + event.size; ++attribute) {
                (m_children += ' ').append(attribute->name->written) += "=\"";
                NyXmlMarkup::appendValue(m_children, attribute->value);
                m_children += '"';
            }
            m_children += event.isEmpty ? "/>" : ">";
            if (event.isEmpty)
                declared.resize(declaredAround);
            else
                open.push_back({ event.name, declaredAround });
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
            m_children.append("</").append(open.back().name->written) += '>';
            declared.resize(open.back().declaredAround);
            open.pop_back();
            break;
        case Event::Kind::END_OF_DOCUMENT:
        case Event::Kind::FAULT: fault(event); return m_children;
        }
    }
}
