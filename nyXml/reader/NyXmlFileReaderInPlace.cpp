// The events, the way of the exact class: tags are looked at where they stand in the block, and only what a caller can ask for is copied.
//
// Hot: all of a document comes through here. Everyday tags are dealt with here and everything else is handed, before anything has
// changed, to the operations of the plain way, which are the rule: a test drives both ways over the same documents and compares.

#include <nyXml/reader/NyXmlFileReader.h>

#include <nyXml/core/detail/NyShortText.h>
#include <nyXml/core/detail/NyWhiteSpace.h>
#include <nyXml/reader/detail/NyXmlTagText.h>
#include <nyXml/reader/detail/NyXmlTextSearch.h>
#include <nyXml/reader/detail/NyXmlWordSink.h>

#include <utility>

using namespace NyXmlTagText;
using namespace NyXmlTextSearch;

namespace {

constexpr std::size_t none = std::string::npos;

// A word that is longer is not searched again with every block.
constexpr std::size_t longWord = 16 * 1024;

bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// An everyday start tag, looked at in one pass where it stands: `name a="1" b="2">` or the same with `/>`.
struct StartTag {
    std::string_view name;
    NyXmlName* known = nullptr; ///< null if there was no place for the name
    char const* end = nullptr;  ///< behind the `>`

    bool isEmpty() const { return end[-2] == '/'; }

    /// Hot: once for each element. The tag is odd, or not whole in the block, if false: nobody looks at it then.
    /// \param expected    the name that will probably come
    /// \param attributes  are taken in
    bool take(char const* at, NyXmlName*& expected, NyXmlNameTable& names, NyXmlAttributeList& attributes)
    {
        char const* const start = at;
        known = names.take(at, expected, endsBareName);
        name = { start, static_cast<std::size_t>(at - start) };
        if (name.empty() || !endsNameOfTag[static_cast<unsigned char>(*at)])
            return false;
        for (NyXmlName* last = known; *at != '>';) {
            NyXmlName& before = last != nullptr ? *last : names.noName();
            if (NyXmlName* const next = before.attribute; next != nullptr && next->attributePattern.isAt(at)) {
                at += next->attributeStart.size();
                last = addAttribute(at, '"', next->token.localName(), next, attributes);
            } else {
                at = skipWhite(at);
                if (*at == '/' && at[1] == '>')
                    ++at;
                if (*at == '>')
                    break;
                last = takeAttribute(at, before, names, attributes);
            }
            if (at == nullptr)
                return false;
        }
        end = at + 1;
        return true;
    }

private:
    /// One that is not the expected one, or not written the usual way.
    /// \param at  becomes the place behind it, null for an odd one. \return its name if there is a place for it
    static NyXmlName* takeAttribute(char const*& at, NyXmlName& before, NyXmlNameTable& names, NyXmlAttributeList& attributes)
    {
        char const* const start = at;
        NyXmlName* const known = names.take(at, before.attribute, endsBareAttributeName);
        std::string_view const name(start, static_cast<std::size_t>(at - start));
        char const quote = *at == '=' ? at[1] : '\0';
        if (name.empty() || (quote != '"' && quote != '\'')) {
            at = nullptr;
            return nullptr;
        }
        at += 2;
        return addAttribute(at, quote, name, known, attributes);
    }

    /// From its value on.
    static NyXmlName* addAttribute(char const*& at, char quote, std::string_view name, NyXmlName* known,
                                   NyXmlAttributeList& attributes)
    {
        std::string_view value;
        if (beginsWith(name, "xmlns") || !takeValue(at, quote, value))
            at = nullptr;
        else
            attributes.add(name, value, known != nullptr ? &known->token : nullptr);
        return known;
    }
};

} // namespace

// Hot: nearly all tags and texts of a document, those that are whole in the block and written as plainly as can be: <name>, </name>, texts
// that end at the end tag of their element, tags with attributes. Every other goes, before anything has changed, to anyEvent().
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::everydayEvent()
{
    if (m_theBlock.isUsedUp())
        return anyEvent();
    char const* const at = skipWhite(m_theBlock.text().data() + m_theBlock.index());
    if (*at != '<')
        return m_theMode == XML_READER_START_TAG ? everydayText(at) : anyEvent();
    return at[1] == '/' ? everydayEndTag(at + 2, {}) : everydayStartTag(at + 1);
}

NyXmlFileReader::XML_READER_MODE NyXmlFileReader::everydayText(char const* text)
{
    char const* const open = findTag(text, m_theBlock.sizeFrom(text));
    if (open == nullptr || open[1] != '/')
        return anyEvent();
    return everydayEndTag(open + 2, withoutWhiteEnd({ text, static_cast<std::size_t>(open - text) }));
}

// The end tag of the innermost element, from its name on. \param content  the text in front of it, empty if there is none
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::everydayEndTag(char const* at, std::string_view content)
{
    NyXmlName const* const name = m_theElementStack.bareName();
    if (name == nullptr || !name->pattern.isAt(at) || at[name->pattern.size()] != '>')
        return anyEvent();
    m_theBlock.moveTo(at + name->pattern.size() + 1);
    m_theElementStack.popBare();
    if (content.empty())
        return m_theMode = XML_READER_END_TAG;
    m_theContent.lookAt(content);
    return m_theMode = XML_READER_CONTENT;
}

// From its name on.
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::everydayStartTag(char const* at)
{
    NyXmlName* const expected = m_theLastElement->elements[m_theMode];
    if (expected == nullptr || !expected->pattern.isAt(at) || at[expected->pattern.size()] != '>' || !m_theAttributes.isSpent() ||
        !m_theElementStack.hasRecord())
        return everydayTag(at);
    m_theAttributes.clear();
    m_theBlock.moveTo(at + expected->pattern.size() + 1);
    m_theLastElement = expected;
    m_theElementStack.push(*expected);
    m_theNumOfAttributes = 0;
    return m_theMode = XML_READER_START_TAG;
}

// The same of one with attributes, or whose name is not the one that was expected.
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::everydayTag(char const* at)
{
    if (m_theAttributes.remaining() != 0)
        return anyEvent(); // somebody is to be warned of them
    m_theAttributes.clear();
    StartTag tag;
    if (!tag.take(at, m_theLastElement->elements[m_theMode], *m_theNames, m_theAttributes)) {
        m_theAttributes.clear();
        return anyEvent();
    }
    m_theBlock.moveTo(tag.end);
    if (tag.known != nullptr)
        m_theElementStack.push(*tag.known);
    else
        m_theElementStack.pushCopy(tag.name);
    m_theLastElement = tag.known != nullptr ? tag.known : &m_theNames->noName();
    m_theNumOfAttributes = static_cast<unsigned int>(m_theAttributes.remaining());
    return m_theMode = tag.isEmpty() ? XML_READER_EMPTY_TAG : XML_READER_START_TAG;
}

NyXmlFileReader::XML_READER_MODE NyXmlFileReader::nextEventInPlace()
{
    if (!m_isRunContinued)
        m_theBlock.forgetHandedOut(false);
    bool isEndOfRun = false;
    XML_READER_MODE const mode = walkInPlace(isEndOfRun);
    if (isEndOfRun && mode != XML_READER_CONTENT)
        m_theContent.assign(
            m_theBlock.withHandedOut(m_theContent.view())); // the run was no content, but a text that a fault leaves behind
    return mode;
}

// The steps of nextEvent(), in its order. \param isEndOfRun  set to whether the content is what follows a text that was handed out
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::walkInPlace(bool& isEndOfRun)
{
    for (std::size_t textsWaiting = 0;;) {
        std::size_t white;
        std::size_t const open = findTagInPlace(white); // the '<'
        if (open == none && textsWaiting != 0)
            m_isRunContinued = false; // a comment has ended the run, and its lines count
        std::size_t const textEnd = m_theBlock.index() + white;
        if (open == none)
            return concludeText(endInText(textEnd != m_theBlock.text().size()), textsWaiting);
        bool const isText = textEnd != open;
        std::string_view const text = m_theBlock.text().substr(m_theBlock.index(), open - m_theBlock.index());
        m_theBlock.moveToIndex(open + 1);
        if (isText && m_theMode != XML_READER_START_TAG)
            return concludeText(textOutOfPlace(), textsWaiting);
        if (isText) {
            if (textsWaiting != 0)
                m_isRunContinued = false;
            isEndOfRun = m_isRunContinued;
            m_theContent.lookAt(text);
        }
        std::size_t const close = m_theBlock.find('>');
        if (close == none)
            return concludeText(endInTag(), textsWaiting);
        std::string_view const tag = m_theBlock.text().substr(m_theBlock.index(), close - m_theBlock.index());
        m_theBlock.moveToIndex(close + 1);
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
    std::string_view const rest = m_theBlock.rest();
    white = NyWhiteSpace::findBlack(rest);
    if (white != rest.size() && rest[white] == '<')
        return m_theBlock.index() + white;
    bool const isCut = white == rest.size();
    std::size_t const open = m_theBlock.find('<', white); // may move the text
    if (isCut)
        white = NyWhiteSpace::findBlack(m_theBlock.rest(), white);
    return open;
}

// Hot: all of a long run of numbers. While the run is handed out block by block it stays in the cache, and the block does not grow: 20 ns
// less for each of a million numbers than making the run the content first.
bool NyXmlFileReader::takeRun(NyXmlWordSink& words)
{
    m_isRunContinued = false;
    if (way() != Way::IN_PLACE || m_theMode != XML_READER_START_TAG)
        return false;
    m_theBlock.forgetHandedOut(true);
    m_theLineOfRun = m_theBlock.line();
    // The stream is asked for the same amounts as by find(): what a zero byte or a stream that fails takes away is the same.
    for (bool wholeBlock = false;; wholeBlock = true) {
        std::string_view const text = m_theBlock.rest();
        if (text.find('<') != none)
            break;
        // The last word may go on in the next block, and an event needs one word to be content.
        std::size_t const lastWord = text.find_last_of(NyWhiteSpace::characters, text.find_last_not_of(NyWhiteSpace::characters));
        if (wholeBlock && lastWord != none && !NyWhiteSpace::isAll(text.substr(0, lastWord))) {
            words.takeWords(text.substr(0, lastWord));
            m_theBlock.handOut(lastWord);
            m_isRunContinued = true;
        } else if (wholeBlock && text.size() >= longWord) {
            break;
        }
        if (!m_theBlock.readBlock(wholeBlock) && m_theBlock.isStreamAtEnd())
            break; // no end in sight: readXml() knows what to make of it
    }
    m_theBlock.endHandOut();
    return m_isRunContinued;
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
    Name const name = elementName(text);
    if (name.end == 0)
        return false;
    dropAttributes();
    openElement(name.local, name.local.find(':') == none);
    std::string_view const attributes = text.substr(NyWhiteSpace::findBlack(text, name.end));
    if (!attributes.empty() && !attributesInPlace(attributes)) {
        // From the bad attribute on, the plain way; until all is well the element goes by the name of the one around it.
        NyToken const element = m_theElementStack.top();
        m_theElementStack.unname();
        if (!parseAttributes(m_theLine))
            return true;
        m_theElementStack.name(element);
    }
    m_theNumOfAttributes = static_cast<unsigned int>(m_theAttributes.remaining());
    return true;
}

// \param isBare  whether there is no `:` in the name
void NyXmlFileReader::openElement(std::string_view name, bool isBare)
{
    NyXmlName* const known = m_theNames->find(name);
    if (known == nullptr)
        m_theElementStack.pushCopy(name);
    else if (isBare)
        m_theElementStack.push(*known);
    else
        m_theElementStack.push(known->token);
    m_theLastElement = known != nullptr ? known : &m_theNames->noName();
}

// name="value" ... without white space at the bounds. False at an attribute that is not well formed: m_theLine is the text from there on.
bool NyXmlFileReader::attributesInPlace(std::string_view text)
{
    bool const isSplit = text.find('#') != none;
    for (Attribute attribute; !text.empty(); text.remove_prefix(attribute.end)) {
        if (!attribute.take(text)) {
            m_theLine.assign(text);
            return false;
        }
        std::string_view value = attribute.value;
        if (isSplit)
            value.remove_prefix(value.find('#') + 1); // all ones and 1 is none
        if (beginsWith(attribute.name, "xmlns"))
            declareNamespace(std::string(attribute.name), std::string(value));
        else if (!beginsWith(attribute.name, "xsi:"))
            m_theAttributes.add(attribute.local, value, m_theNames->token(attribute.local));
    }
    return true;
}
