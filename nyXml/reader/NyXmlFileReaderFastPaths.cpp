// The fast paths: tokens cut out of the block with no look at anything else. What they trust their caller with stands in the header.

#include <nyXml/core/detail/NyWhiteSpace.h>
#include <nyXml/reader/NyXmlFileReader.h>

namespace {

constexpr std::size_t none = std::string::npos;

/// Goes through text from one tag to the next.
class Tags {
public:
    Tags(std::string_view text, std::size_t at) : m_text(text), m_at(at) {}

    /// Over white space and this very tag.
    bool skip(std::string_view tag)
    {
        m_at = NyWhiteSpace::findBlack(m_text, m_at);
        bool const isHere = m_text.compare(m_at, tag.size(), tag) == 0;
        m_at += isHere ? tag.size() : 0;
        return isHere;
    }

    /// Over a text up to the next tag. False for an empty one.
    bool take(std::string_view& text)
    {
        std::size_t const end = m_text.find('<', m_at);
        if (end == none)
            return false;
        text = NyWhiteSpace::trimmed(m_text.substr(m_at, end - m_at));
        m_at = end;
        return !text.empty();
    }

    std::size_t at() const { return m_at; }

private:
    std::string_view m_text;
    std::size_t m_at;
};

} // namespace

// Makes the text from the cursor to `end` the value and steps over the byte there. Without an end the value is the rest of the text in
// hand, and the cursor goes back to where that text begins.
void NyXmlFileReader::cutValue(std::size_t end)
{
    m_theValue.assign(m_theBlock, m_theIndex, end == none ? none : end - m_theIndex);
    jumpTo(end == none ? m_theBlockStart : end + 1);
}

// Onto the delimiter, with its line in hand, and over it.
void NyXmlFileReader::stepOver(char delimiter)
{
    moveToDelim(delimiter);
    ensureNewlineExists();
    jumpTo(m_theIndex + 1);
}

std::string const& NyXmlFileReader::getComplexStartTagFast()
{
    stepOver('<');
    std::size_t const end = NyWhiteSpace::findWhite(m_theBlock, m_theIndex);
    cutValue(end != m_theBlock.size() ? end : none);
    return m_theValue;
}

std::string const& NyXmlFileReader::getSimpleStartTagFast()
{
    stepOver('<');
    std::size_t const end = m_theBlock.find('>', m_theIndex);
    cutValue(end);
    // Less its last byte: callers outside count on the offset.
    if (end != none && !m_theValue.empty())
        m_theValue.pop_back();
    return m_theValue;
}

std::string const& NyXmlFileReader::getAttributeValueFast()
{
    stepOver('"');
    cutValue(m_theBlock.find('"', m_theIndex));
    return m_theValue;
}

// Hot: three times for every vector of a NyXmlVectorVector, benchmarks readPath. A text that is whole in the block is neither copied nor
// is anything counted now: the lines count later, since there is none inside the text.
bool NyXmlFileReader::takeAttributeText(std::string_view& text)
{
    std::string_view const block(m_theBlock);
    std::size_t open = m_theIndex == none ? none : block.find('"', m_theIndex);
    std::size_t const close = open == none ? none : block.find('"', open + 1);
    if (close != none) {
        text = block.substr(open + 1, close - open - 1);
        if (text.find('\n') == none) {
            moveToIndex(close + 1);
            return true;
        }
    }
    while (open == none) { // as moveToDelim(), but for the end
        moveToBlockEnd();
        if (!readBlock(false) && isStreamAtEnd())
            return false;
        open = m_theBlock.find('"', m_theIndex);
    }
    text = NyXmlFileReader::getAttributeValueFast();
    return true;
}

std::string const& NyXmlFileReader::getLastAttributeValueFast()
{
    std::string const& value = getAttributeValueFast();
    stepOver('>');
    return value;
}

std::string const& NyXmlFileReader::getContentByWordFast()
{
    moveToNextWord();
    ensureNewlineExists();
    std::size_t const end = m_theBlock.find_first_of(" \t\n\r<", m_theIndex);
    if (end != none)
        cutValue(end);
    else
        m_theValue.assign(m_theBlock, m_theIndex, none);
    return m_theValue;
}

void NyXmlFileReader::getEndTagFast() { stepOver('>'); }

// Hot: once for every entry of a NyXmlMapType of basic values, benchmarks readMap: a fifth of the time of the six events it stands for.
bool NyXmlFileReader::takeEntry(std::string_view& key, std::string_view& value)
{
    bool const isBetweenElements = m_theMode == XML_READER_START_TAG || m_theMode == XML_READER_END_TAG;
    if (m_theWay != Way::IN_PLACE || m_theIndex == none || !isBetweenElements || m_theElementStack.empty() ||
        m_theAttributes.remaining() != 0)
        return false;
    Tags tags(m_theBlock, m_theIndex);
    if (!tags.skip("<element>") || !tags.skip("<key>") || !tags.take(key) || !tags.skip("</key>") || !tags.skip("<value>") ||
        !tags.take(value) || !tags.skip("</value>") || !tags.skip("</element>"))
        return false;
    // What the events would have left behind.
    m_theElementStack.push("element", true, m_theNames.token("element"));
    m_theElementStack.pop();
    m_theNumOfAttributes = 0;
    m_theContent.assign(value);
    m_theContentStart = 0;
    m_theContentVectorFlag = false;
    m_theMode = XML_READER_END_TAG;
    moveToIndex(tags.at());
    return true;
}
