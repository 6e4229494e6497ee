// The events, the way of the exact class: tags are looked at where they stand in the block, and only what a caller can ask for is copied.
//
// Hot: all of a document comes through here. Everyday tags are dealt with here and everything else is handed, before anything has
// changed, to the operations of the plain way, which are the rule: a test drives both ways over the same documents and compares.

#include <nyXml/core/detail/NyShortText.h>
#include <nyXml/core/detail/NyWhiteSpace.h>
#include <nyXml/reader/NyXmlFileReader.h>
#include <nyXml/reader/detail/NyXmlWordSink.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t none = std::string::npos;

// Longer runs of text become the content by handing over the block. Below that a copy costs less than the block's new start.
constexpr std::size_t longText = 8 * 1024;
constexpr std::size_t blockCapacity = 32 * 1024;

constexpr auto tableOf(std::string_view characters)
{
    std::array<bool, 256> table{};
    for (char c : characters)
        table[static_cast<unsigned char>(c)] = true;
    return table;
}
constexpr auto endsBareName = tableOf({ "\0 \t\n\r#:/>!?", 11 }); // the zero byte is the one behind the block
constexpr auto endsElementName = tableOf(" \t\n\r#:");
constexpr auto endsLocalElementName = tableOf(" \t\n\r#");
constexpr auto endsAttributeName = tableOf(" \t\n\r=:");
constexpr auto endsLocalAttributeName = tableOf(" \t\n\r=");

std::size_t findAny(std::array<bool, 256> const& table, std::string_view text, std::size_t from = 0)
{
    while (from != text.size() && !table[static_cast<unsigned char>(text[from])])
        ++from;
    return from;
}

// Null if there is none.
char const* find(char const* from, char const* end, char character)
{
    return static_cast<char const*>(std::memchr(from, character, static_cast<std::size_t>(end - from)));
}

// How many bytes in front of `end` are white.
std::size_t whiteBefore(std::string_view text, std::size_t end)
{
    std::size_t first = end;
    while (first != 0 && NyWhiteSpace::is(text[first - 1]))
        --first;
    return end - first;
}

template <std::size_t N>
bool beginsWith(std::string_view text, char const (&start)[N])
{
    return text.size() >= N - 1 && std::memcmp(text.data(), start, N - 1) == 0;
}

// A start tag without the white space at its end, nor that before the slash of an empty one.
std::string_view withoutEnd(std::string_view tag)
{
    if (!tag.empty() && tag.back() == '/')
        tag.remove_suffix(1);
    tag.remove_suffix(whiteBefore(tag, tag.size()));
    return tag;
}

bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

} // namespace

// Hot: nearly all tags and texts of a document, those that are whole in the block and written as plainly as can be: <name>, </name>, texts
// that end at the end tag of their element, tags with attributes. False, and nothing has changed, for all others.
bool NyXmlFileReader::everydayEventInPlace()
{
    if (m_theIndex >= m_theBlock.size())
        return false;
    char const* const block = m_theBlock.c_str(); // the zero byte behind it ends every walk below
    char const* const blockEnd = block + m_theBlock.size();
    char const* const text = block + NyWhiteSpace::findBlack(m_theBlock, m_theIndex);
    char const* open = text;
    if (*text != '<') {
        open = m_theMode == XML_READER_START_TAG ? find(text, blockEnd, '<') : nullptr;
        if (open == nullptr || static_cast<std::size_t>(open - text) >= longText)
            return false;
    }

    if (open[1] == '/') {
        std::string_view const name = m_theElementStack.bareName();
        if (name.empty() || static_cast<std::size_t>(blockEnd - open) < name.size() + 3 || open[name.size() + 2] != '>' ||
            !NyShortText::same(name, { open + 2, name.size() }))
            return false;
        moveToIndex(static_cast<std::size_t>(open - block) + name.size() + 3);
        m_theElementStack.pop();
        m_theMode = XML_READER_END_TAG;
        if (open != text) {
            std::string_view const content(text, static_cast<std::size_t>(open - text));
            m_theContent.assign(content.data(), content.size() - whiteBefore(content, content.size()));
            m_theMode = XML_READER_CONTENT;
        }
        return true;
    }

    char const* nameEnd = open + 1;
    while (!endsBareName[static_cast<unsigned char>(*nameEnd)])
        ++nameEnd;
    std::string_view const name(open + 1, static_cast<std::size_t>(nameEnd - open) - 1);
    char const* close = nullptr;
    if (*nameEnd == '>')
        close = nameEnd;
    else if (*nameEnd == '/' && nameEnd[1] == '>')
        close = nameEnd + 1;
    else if (NyWhiteSpace::is(*nameEnd))
        close = find(nameEnd, blockEnd, '>');
    if (open != text || name.empty() || close == nullptr)
        return false;
    moveToIndex(static_cast<std::size_t>(close - block) + 1);
    openElementInPlace(name, true, withoutEnd({ nameEnd, static_cast<std::size_t>(close - nameEnd) }));
    m_theMode = close[-1] == '/' ? XML_READER_EMPTY_TAG : XML_READER_START_TAG;
    return true;
}

// The steps of nextEvent(), in its order.
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::nextEventInPlace()
{
    for (std::size_t textsWaiting = 0;;) {
        std::size_t white;
        std::size_t open = findTagInPlace(white); // the '<'
        if (open == none && textsWaiting != 0)
            m_isRunContinued = false; // a comment has ended the run, and its lines count
        if (open == none)
            return concludeText(endInText(m_theIndex + white != m_theBlock.size()), textsWaiting);
        bool const isText = m_theIndex + white != open;
        if (isText && m_theMode != XML_READER_START_TAG) {
            moveToIndex(open + 1);
            return concludeText(textOutOfPlace(), textsWaiting);
        }
        if (isText) {
            if (textsWaiting != 0)
                m_isRunContinued = false;
            open = takeContent(m_theIndex, open);
        }
        moveToIndex(open + 1);
        std::size_t const close = findDelimiter('>', 0);
        if (close == none)
            return concludeText(endInTag(), textsWaiting);
        std::string_view const tag = std::string_view(m_theBlock).substr(m_theIndex, close - m_theIndex);
        moveToIndex(close + 1);
        bool isSkipped = false;
        XML_READER_MODE const mode = tagInPlace(tag, isSkipped);
        if (!isSkipped && mode == XML_READER_ERROR)
            return concludeText(badTag(), textsWaiting);
        textsWaiting += isText ? 1 : 0;
        if (!isSkipped)
            return concludeText(mode, textsWaiting);
    }
}

// Where the next tag begins, all ones if the input ends before. `white` says how many bytes from the cursor on are white.
std::size_t NyXmlFileReader::findTagInPlace(std::size_t& white)
{
    if (m_theIndex == none)
        m_theIndex = m_theBlock.size();
    std::size_t open = NyWhiteSpace::findBlack(m_theBlock, m_theIndex);
    white = open - m_theIndex;
    if (open != m_theBlock.size() && m_theBlock[open] == '<')
        return open;
    bool const isCut = open == m_theBlock.size();
    open = findDelimiter('<', white); // may move the text
    if (isCut)
        white = NyWhiteSpace::findBlack(m_theBlock, m_theIndex + white) - m_theIndex;
    return open;
}

// Makes the text from `start` up to the tag at `open` the content. \return where that tag begins then
std::size_t NyXmlFileReader::takeContent(std::size_t start, std::size_t open)
{
    m_theContentStart = 0;
    if (open - start < longText) {
        m_theContent.assign(m_theBlock, start, open - start);
        return open;
    }
    m_theAttributes.own();
    moveToIndex(open);
    countLines();
    m_theContent.swap(m_theBlock);
    m_theBlock.reserve(blockCapacity);
    m_theBlock.assign(m_theContent, open, none);
    m_theContent.resize(open);
    m_theContentStart = start;
    m_theIndex = m_theBlockStart = m_theCounted = m_theNewline = 0;
    return 0;
}

// Hot: all of a long run of numbers. While the run is handed out block by block it stays in the cache, and neither block nor content
// grow: 20 ns less for each of a million numbers than making the run the content first.
bool NyXmlFileReader::takeRun(NyXmlWordSink& words)
{
    m_isRunContinued = false;
    if (m_theWay != Way::IN_PLACE || m_theMode != XML_READER_START_TAG)
        return false;
    m_theLineOfRun = lineCountOfFile();
    // The stream is asked for the same amounts as by findDelimiter(): what a zero byte or a stream that fails takes away is the same.
    for (bool wholeBlock = false;; wholeBlock = true) {
        std::string_view const text = std::string_view(m_theBlock).substr(std::min(m_theIndex, m_theBlock.size()));
        if (text.find('<') != none)
            return m_isRunContinued;
        // The last word may go on in the next block, and an event needs one word to be content.
        std::size_t const lastWord = text.find_last_of(NyWhiteSpace::characters, text.find_last_not_of(NyWhiteSpace::characters));
        if (wholeBlock && lastWord != none && !NyWhiteSpace::isAll(text.substr(0, lastWord))) {
            words.takeWords(text.substr(0, lastWord));
            moveToIndex(m_theIndex + lastWord);
            m_isRunContinued = true;
        } else if (wholeBlock && text.size() >= blockCapacity / 2) {
            return m_isRunContinued; // a word that is longer than a block is not searched again with every block
        }
        if (!readBlock(wholeBlock) && isStreamAtEnd())
            return m_isRunContinued; // no end in sight: readXml() knows what to make of it
    }
}

// Does what the tag says. `isSkipped` becomes true for a comment or a declaration.
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::tagInPlace(std::string_view tag, bool& isSkipped)
{
    if (!tag.empty())
        switch (tag[0]) {
        case '!': isSkipped = beginsWith(tag, "!--") && endsWith(tag, "--"); break;
        case '?': isSkipped = tag.back() == '?'; break;
        case '/':
            if (endTagInPlace(tag))
                return XML_READER_END_TAG;
            break;
        default:
            if (startTagInPlace(tag))
                return tag.back() == '/' ? XML_READER_EMPTY_TAG : XML_READER_START_TAG;
        }
    if (isSkipped)
        return m_theMode;
    m_theLine.assign(tag); // a comment with a '>' in it goes on behind this tag and moves the block
    isSkipped = isComment(m_theLine);
    return isSkipped ? m_theMode : tagType(m_theLine);
}

// `/name` with a prefix or white space behind it. False, and nothing has changed, for what is not the end tag of the innermost element.
bool NyXmlFileReader::endTagInPlace(std::string_view tag)
{
    if (m_theElementStack.empty() || tag.size() < 2 || tag[1] == ' ')
        return false;
    std::string_view name = tag.substr(1);
    if (NyWhiteSpace::isAll(name))
        return false;
    name = NyWhiteSpace::trimmed(name);
    name.remove_prefix(name.find(':') + 1); // all ones and 1 is none
    NyToken const& element = m_theElementStack.top();
    if (name != element.localName() || !element.namespaceName().empty())
        return false;
    m_theElementStack.pop();
    return true;
}

// False, and nothing has changed, for an element name that is missing or odd.
bool NyXmlFileReader::startTagInPlace(std::string_view tag)
{
    std::string_view const text = withoutEnd(tag);
    std::size_t nameEnd = findAny(endsElementName, text);
    std::size_t const prefix = nameEnd < text.size() && text[nameEnd] == ':' ? nameEnd + 1 : 0;
    if (prefix != 0)
        nameEnd = findAny(endsLocalElementName, text, prefix);
    if (nameEnd == 0 || (nameEnd < text.size() && text[nameEnd] == '#'))
        return false;
    std::string_view const name = text.substr(prefix, nameEnd - prefix);
    openElementInPlace(name, name.find(':') == none, text.substr(nameEnd));
    return true;
}

void NyXmlFileReader::openElementInPlace(std::string_view name, bool isBare, std::string_view attributes)
{
    dropAttributes();
    m_theElementStack.push(name, isBare, m_theNames.token(name));
    attributes.remove_prefix(NyWhiteSpace::findBlack(attributes));
    if (!attributes.empty() && !attributesInPlace(attributes)) {
        // From the bad attribute on, the plain way; until all is well the element goes by the name of the one around it.
        NyToken const element = m_theElementStack.top();
        m_theElementStack.unname();
        if (!parseAttributes(m_theLine))
            return;
        m_theElementStack.name(element);
    }
    m_theNumOfAttributes = static_cast<unsigned int>(m_theAttributes.remaining());
}

// name="value" ... without white space at the bounds. False at an attribute that is not well formed: m_theLine is the text from there on.
bool NyXmlFileReader::attributesInPlace(std::string_view text)
{
    bool const isSplit = text.find('#') != none;
    while (!text.empty()) {
        std::size_t nameEnd = findAny(endsAttributeName, text);
        std::size_t const prefix = nameEnd < text.size() && text[nameEnd] == ':' ? nameEnd + 1 : 0;
        if (prefix != 0)
            nameEnd = findAny(endsLocalAttributeName, text, prefix);
        std::size_t const equals = nameEnd < text.size() && text[nameEnd] == '=' ? nameEnd : text.find('=', nameEnd);
        std::size_t const quote = equals != none ? NyWhiteSpace::findBlack(text, equals + 1) : text.size();
        std::size_t const second =
            quote < text.size() && (text[quote] == '"' || text[quote] == '\'') ? text.find(text[quote], quote + 1) : none;
        if (nameEnd == 0 || second == none) {
            m_theLine.assign(text);
            return false;
        }
        std::string_view value = text.substr(quote + 1, second - quote - 1);
        if (isSplit)
            value.remove_prefix(value.find('#') + 1); // all ones and 1 is none

        std::string_view const name = text.substr(0, nameEnd);
        if (beginsWith(name, "xmlns"))
            declareNamespace(std::string(name), std::string(value));
        else if (!beginsWith(name, "xsi:"))
            m_theAttributes.add(name.substr(prefix), value, m_theNames.token(name.substr(prefix)));
        text.remove_prefix(NyWhiteSpace::findBlack(text, second + 1));
    }
    return true;
}
