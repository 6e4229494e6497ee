// The fast paths of a document. They move through the queue below the last event: m_fastDepth elements have been opened, and of the event
// that is next a part may be taken.

#include <nyXmlKit/standard/detail/NyXmlStandardDocument.h>

#include <nyXmlKit/standard/detail/NyXmlMarkup.h>

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

using Mode = NyXmlStandardReader::Mode;
using Name = NyXmlStandardName;
using Event = NyXmlStandardParser::Event;
using Attribute = NyXmlStandardParser::Attribute;

} // namespace

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
    tellFastText(peek().line);
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

/// Goes behind a text that nobody reads, of which the next tag has the line. \param depth  of elements opened by the fast paths
void NyXmlStandardReader::Document::passFastText(Event const& event, std::size_t depth)
{
    std::string_view const text = m_parser.textOf(event);
    if (depth == 0 && event.kind == Event::Kind::TEXT)
        m_isFastTextLost = m_isFastTextLost || NyXmlMarkup::findBlack(text, m_fastText) != text.size();
    advance();
}

void NyXmlStandardReader::Document::tellFastText(int line)
{
    if (std::exchange(m_isFastTextLost, false))
        noteTextBeside(line);
}

/// Which attributes of the next tag are handed out. A path asks for x, y and z in this order, and others write them in any.
void NyXmlStandardReader::Document::enterFastTag()
{
    m_isFastInTag = m_hasFastChild = true;
    m_fastAttribute = 0;
    Event const& event = peek();
    m_fastAttributes = event.size;
    Attribute* const first = m_parser.attributesOf(event);
    Attribute* last = first + event.size;
    auto const isOrdinary = [](Attribute const& attribute) {
        return attribute.name->kind == Name::Kind::ORDINARY && attribute.name->prefix.empty();
    };
    if (!std::all_of(first, last, isOrdinary)) {
        last = std::stable_partition(first, last, [this](Attribute const& attribute) {
            return attribute.name->kind == Name::Kind::ORDINARY && !isOfSchemaInstance(*attribute.name);
        });
        m_fastAttributes = static_cast<std::size_t>(last - first);
    }
    auto const letter = [](Attribute const& attribute) {
        std::string const& name = attribute.name->token.localName();
        return name.size() == 1 ? name[0] : '\0';
    };
    auto const isCoordinate = [&](Attribute const& attribute) { return letter(attribute) >= 'x' && letter(attribute) <= 'z'; };
    if (m_fastAttributes == 3 && std::all_of(first, last, isCoordinate))
        std::sort(first, last, [&](Attribute const& one, Attribute const& two) { return letter(one) < letter(two); });
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
            passFastText(event, m_fastDepth);
            continue;
        }
        tellFastText(event.line);
        m_line = event.line;
        m_value = event.name->token.localName();
        enterFastTag();
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
            passFastText(event, m_fastDepth);
            continue;
        }
        tellFastText(event.line);
        if (!m_isFastInTag) {
            m_line = event.line;
            enterFastTag();
        }
        if (m_fastAttribute != m_fastAttributes) {
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
    for (;;) {
        Event const& event = peek();
        if (event.kind == Event::Kind::START || event.kind == Event::Kind::END)
            tellFastText(event.line);
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
        passFastText(event, depth);
    }
}
