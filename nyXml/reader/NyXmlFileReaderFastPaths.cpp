// The fast paths: tokens cut out of the block with no look at anything else. What they trust their caller with stands in the header.

#include <nyXml/reader/NyXmlFileReader.h>

#include <nyXml/core/detail/NyRealWord.h>
#include <nyXml/core/detail/NyWhiteSpace.h>

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
    m_theValue.assign(m_theBlock.rest().substr(0, end == none ? none : end - m_theBlock.index()));
    if (end == none)
        m_theBlock.jumpToStart();
    else
        m_theBlock.jumpTo(end + 1);
}

// Onto the delimiter, with its line in hand, and over it.
void NyXmlFileReader::stepOver(char delimiter)
{
    m_theBlock.moveToDelim(delimiter);
    m_theBlock.ensureNewlineExists();
    m_theBlock.jumpTo(m_theBlock.index() + 1);
}

std::string const& NyXmlFileReader::getComplexStartTagFast()
{
    stepOver('<');
    std::size_t const end = NyWhiteSpace::findWhite(m_theBlock.text(), m_theBlock.index());
    cutValue(end != m_theBlock.text().size() ? end : none);
    return m_theValue;
}

std::string const& NyXmlFileReader::getSimpleStartTagFast()
{
    stepOver('<');
    std::size_t const end = m_theBlock.text().find('>', m_theBlock.index());
    cutValue(end);
    // Less its last byte: callers outside count on the offset.
    if (end != none && !m_theValue.empty())
        m_theValue.pop_back();
    return m_theValue;
}

std::string const& NyXmlFileReader::getAttributeValueFast()
{
    stepOver('"');
    cutValue(m_theBlock.text().find('"', m_theBlock.index()));
    return m_theValue;
}

// Hot: three times for every vector of a NyXmlVectorVector, benchmarks readPath.
bool NyXmlFileReader::takeAttributeReal(double& number)
{
    std::string_view const rest = m_theBlock.rest();
    std::size_t const open = rest.find('"');
    if (open == none)
        return false;
    char const* const close = nyTakeRealWord(rest.data() + open + 1, rest.data() + rest.size(), number);
    if (close == nullptr || *close != '"')
        return false;
    m_theBlock.moveToIndex(m_theBlock.index() + static_cast<std::size_t>(close - rest.data()) + 1);
    return true;
}

// Hot: for the other ones. A text that is whole in the block is neither copied nor
// is anything counted now: the lines count later, since there is none inside the text.
bool NyXmlFileReader::takeAttributeText(std::string_view& text)
{
    std::string_view const block = m_theBlock.text();
    std::size_t const open = m_theBlock.index() == none ? none : block.find('"', m_theBlock.index());
    std::size_t const close = open == none ? none : block.find('"', open + 1);
    if (close != none) {
        text = block.substr(open + 1, close - open - 1);
        if (text.find('\n') == none) {
            m_theBlock.moveToIndex(close + 1);
            return true;
        }
    }
    if (!m_theBlock.findDelim('"'))
        return false;
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
    m_theBlock.moveToNextWord();
    m_theBlock.ensureNewlineExists();
    std::size_t const end = m_theBlock.text().find_first_of(" \t\n\r<", m_theBlock.index());
    if (end != none)
        cutValue(end);
    else
        m_theValue.assign(m_theBlock.rest());
    return m_theValue;
}

void NyXmlFileReader::getEndTagFast() { stepOver('>'); }

// Hot: once for every entry of a NyXmlMapType of basic values, benchmarks readMap: a fifth of the time of the six events it stands for.
bool NyXmlFileReader::takeEntry(std::string_view& key, std::string_view& value)
{
    bool const isBetweenElements = m_theMode == XML_READER_START_TAG || m_theMode == XML_READER_END_TAG;
    if (way() != Way::IN_PLACE || m_theBlock.isUsedUp() || !isBetweenElements || m_theElementStack.empty() ||
        m_theAttributes.remaining() != 0)
        return false;
    Tags tags(m_theBlock.text(), m_theBlock.index());
    if (!tags.skip("<element>") || !tags.skip("<key>") || !tags.take(key) || !tags.skip("</key>") || !tags.skip("<value>") ||
        !tags.take(value) || !tags.skip("</value>") || !tags.skip("</element>"))
        return false;
    // What the events would have left behind.
    openElement("element", true);
    m_theElementStack.pop();
    m_theNumOfAttributes = 0;
    m_theContent.lookAt(value);
    m_theContentVectorFlag = false;
    m_theMode = XML_READER_END_TAG;
    m_theBlock.moveToIndex(tags.at());
    return true;
}
