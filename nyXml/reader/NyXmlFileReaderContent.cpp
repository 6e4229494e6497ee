// What a caller takes from the reader once an event has come: attributes, content as a whole or word by word, subtrees.

#include <nyXml/reader/NyXmlFileReader.h>

#include <nyXml/core/detail/NyWhiteSpace.h>

#include <string>
#include <utility>

namespace {

constexpr std::size_t none = std::string::npos;

unsigned int wordsIn(std::string_view text)
{
    unsigned int count = 1;
    for (std::size_t at = NyWhiteSpace::findWhite(text); at != text.size(); at = NyWhiteSpace::findWhite(text, at)) {
        at = NyWhiteSpace::findBlack(text, at);
        if (at != text.size())
            ++count;
    }
    return count;
}

} // namespace

NyToken const& NyXmlFileReader::attributeName(NyToken const& name) const
{
    NyToken const* const found = m_theAttributes.find(name.localName());
    return found != nullptr ? *found : m_theNullToken;
}

NyToken const& NyXmlFileReader::attributeName() const
{
    NyToken const* const first = m_theAttributes.firstName();
    return first != nullptr ? *first : m_theNullToken;
}

std::string const& NyXmlFileReader::attributeValue(NyToken const& name)
{
    std::string_view value;
    return m_theAttributes.take(name.localName(), value) ? setValue(value) : m_theNullString;
}

std::string const& NyXmlFileReader::attributeValue()
{
    std::string_view value;
    return m_theAttributes.takeFirst(value) ? setValue(value) : m_theNullString;
}

std::string_view NyXmlFileReader::takeAttribute()
{
    std::string_view value;
    m_theAttributes.takeFirst(value);
    return value;
}

unsigned int NyXmlFileReader::numOfAttributes() const { return m_theNumOfAttributes; }

unsigned int NyXmlFileReader::remainingNumOfAttributes() const { return static_cast<unsigned int>(m_theAttributes.remaining()); }

std::string const& NyXmlFileReader::content() const { return m_theContentVectorFlag ? contentByWord() : m_theContent.string(); }

std::string const& NyXmlFileReader::contentByWord() const
{
    return way() != Way::UNKNOWN && m_isWordCutOurs ? setValue(m_theContent.cutWord()) : nextWord(m_theContent.string());
}

std::string_view NyXmlFileReader::takeContentWord() noexcept { return m_theContent.cutWord(); }

std::string_view NyXmlFileReader::takeContent() noexcept { return m_theContent.cutAll(); }

std::string const& NyXmlFileReader::nextWord(std::string& text) const
{
    std::size_t const end = NyWhiteSpace::findWhite(text);
    m_theValue.assign(text, 0, end);
    text.erase(0, NyWhiteSpace::findBlack(text, end));
    return m_theValue;
}

unsigned int NyXmlFileReader::contentCount() const
{
    return way() == Way::IN_PLACE ? wordsIn(contentView()) : wordCount(m_theContent.string());
}

unsigned int NyXmlFileReader::wordCount(std::string const& text) const { return wordsIn(text); }

bool NyXmlFileReader::isContentAvailable() const { return !m_theContent.empty(); }

void NyXmlFileReader::setContentVectorFlag(bool flag) { m_theContentVectorFlag = flag; }

bool NyXmlFileReader::nextMatchingEndTag()
{
    if (m_theMode == XML_READER_EMPTY_TAG)
        return true;
    NyToken const name = m_theElementStack.empty() ? m_theNullToken : m_theElementStack.top();
    for (;;) {
        m_theAttributes.clear();
        switch (readXml()) {
        case XML_READER_ERROR: return false;
        case XML_READER_END_TAG:
        case XML_READER_CONTENT:
            // No depth is counted: what nobody claims is shallow and uniquely named.
            if ((way() == Way::IN_PLACE ? m_theElementStack.popped() : m_theEndTag) == name)
                return true;
            break;
        case XML_READER_EOF: fault("Requested next end tag but found EOF."); return false;
        case XML_READER_START_TAG:
        case XML_READER_EMPTY_TAG: break;
        }
    }
}

std::string const& NyXmlFileReader::getChildrenAsString()
{
    std::string const name = m_theElementStack.empty() ? std::string() : m_theElementStack.top().localName();
    std::string const startMarker = "<" + name;
    std::string const endMarker = "</" + name + ">";
    auto const beginsWith = [](std::string const& text, std::string const& start) {
        return text.compare(0, start.size(), start) == 0;
    };

    m_theValue.clear();
    if (!getLineWithLineCount(m_theValue, '<', false)) {
        fault("getChildrenAsString Error: end of file too early -- expecting start tag.");
        return m_theValue;
    }
    std::string piece; // one tag and the text behind it
    std::string text;
    for (std::size_t depth = 0; !m_theBlock.isStreamAtEnd() || m_theBlock.index() != none;) {
        piece.assign(1, m_theBlock.getCurrentChar());
        getLineWithLineCount(text, '<', false);
        piece += text;
        if (beginsWith(piece, endMarker)) {
            if (depth-- == 0)
                break;
        } else if (beginsWith(piece, startMarker) && piece.find("/>") == none) {
            ++depth;
        }
        m_theValue += piece;
    }
    stripWhiteSpaceFromBounds(m_theValue);
    m_theMode = XML_READER_END_TAG;
    if (!m_theElementStack.empty())
        m_theElementStack.pop();
    return m_theValue;
}
