// The block scanner: text in hand, a cursor, refills and line counts, and the string operations of the layers above.
//
// The block begins, for everybody who looks, at m_theBlockStart. What is before it was given up and goes when room is needed. The cursor
// m_theIndex is at that place or behind it; all ones says that the block is used up.

#include <nyXml/core/detail/NyWhiteSpace.h>
#include <nyXml/reader/NyXmlFileReader.h>

#include <algorithm>
#include <cstring>
#include <ios>
#include <istream>
#include <limits>

namespace {

constexpr std::size_t none = std::string::npos;
constexpr std::size_t readSize = 0x3fff; // the last byte of the buffer is a zero behind the text

// Hot: once for every byte that is read. The inner loop has a fixed number of rounds and a sum of one byte, which is what a compiler needs
// to take sixteen bytes at a time.
std::size_t newlinesIn(char const* text, std::size_t size)
{
    constexpr std::size_t stride = 128; // a sum of one byte must not overflow
    std::size_t count = 0;
    for (; size >= stride; text += stride, size -= stride) {
        unsigned char sum = 0;
        for (std::size_t i = 0; i != stride; ++i)
            sum = static_cast<unsigned char>(sum + (text[i] == '\n' ? 1 : 0));
        count += sum;
    }
    return count + static_cast<std::size_t>(std::count(text, text + size, '\n'));
}

} // namespace

bool NyXmlFileReader::isStreamAtEnd() const { return !m_theStream->good(); }

// The cursor has come to here over text that counts. How far that is counted is nobody's business until somebody asks for the line or
// the text goes.
void NyXmlFileReader::countLines() const
{
    std::size_t const end = std::min(m_theIndex, m_theBlock.size());
    if (end > m_theCounted) {
        auto const linesLeft = static_cast<std::size_t>(std::numeric_limits<int>::max() - m_theLineCount);
        std::size_t const lines = newlinesIn(m_theBlock.data() + m_theCounted, end - m_theCounted);
        m_theLineCount += static_cast<int>(std::min(lines, linesLeft)); // a document of more lines stays at the last number
        m_theCounted = end;
    }
}

// Moves the cursor, forwards over text that does not count. Backwards, as after a fast path that found no end: text that is read again
// counts again.
void NyXmlFileReader::jumpTo(std::size_t index)
{
    countLines();
    if (index < m_theIndex)
        m_theNewline = 0;
    m_theIndex = index;
    m_theCounted = std::min(index, m_theBlock.size());
}

void NyXmlFileReader::moveToBlockEnd() { moveToIndex(none); }

// Gives up the text in front of the cursor and reads on behind the rest: up to a full block, or a block more however long the rest is.
// True if there is new text.
bool NyXmlFileReader::readBlock(bool wholeBlock)
{
    if (m_theIndex >= m_theBlock.size()) {
        countLines();
        m_theBlock.clear();
        m_theIndex = m_theBlockStart = m_theCounted = m_theNewline = 0;
    }
    m_theBlockStart = m_theIndex;
    std::size_t const rest = m_theBlock.size() - m_theIndex;
    if (!wholeBlock && rest >= readSize)
        return false;

    std::size_t count = 0;
    try {
        m_theStream->read(m_theReadBuffer.get(), static_cast<std::streamsize>(wholeBlock ? readSize : readSize - rest));
    } catch (std::ios_base::failure const&) {
        // A stream set to throw tells its end this way. It is no longer good(), which is all that we want to know.
    }
    count = static_cast<std::size_t>(m_theStream->gcount());
    if (count == 0)
        return false;
    // A zero byte ends this read's share of the text: documents are text and hold none.
    m_theReadBuffer[count] = '\0';
    std::size_t const length = std::strlen(m_theReadBuffer.get());
    makeRoom(length);
    m_theBlock.append(m_theReadBuffer.get(), length);
    return length != 0;
}

// Before text is added: what was given up goes if the block is full, and nobody may look into it any more.
void NyXmlFileReader::makeRoom(std::size_t size)
{
    m_theAttributes.own();
    if (m_theBlockStart == 0 || m_theBlock.size() + size <= m_theBlock.capacity())
        return;
    countLines();
    m_theBlock.erase(0, m_theBlockStart);
    m_theIndex -= m_theBlockStart;
    m_theCounted -= m_theBlockStart;
    m_theNewline = m_theBlockStart = 0;
}

// Looks for the delimiter from the cursor on, whose first bytes, as many as `searched`, are known to hold none. Reads on until it is in
// the block, so that text up to the next delimiter is in one piece, and searches no byte twice. The cursor stays on its byte. All ones
// if the input ends before.
std::size_t NyXmlFileReader::findDelimiter(char delimiter, std::size_t searched)
{
    if (m_theIndex == none)
        m_theIndex = m_theBlock.size();
    std::size_t found = m_theBlock.find(delimiter, m_theIndex + searched);
    for (bool wholeBlock = false; found == none; wholeBlock = true) {
        if (wholeBlock && isStreamAtEnd())
            return none;
        searched = m_theBlock.size() - m_theIndex;
        if (readBlock(wholeBlock))
            found = m_theBlock.find(delimiter, m_theIndex + searched);
    }
    return found;
}

bool NyXmlFileReader::getLineWithLineCount(std::string& line, char delimiter, bool consume)
{
    std::size_t const found = findDelimiter(delimiter, 0);
    line.assign(m_theBlock, m_theIndex, found == none ? none : found - m_theIndex);
    if (found == none) {
        jumpTo(none);
        return false;
    }
    moveToIndex(found);
    if (consume)
        jumpTo(found + 1);
    return true;
}

// Skipped text is dropped, so that the block does not grow. No test for the end of the input: whoever comes here knows that there is a
// delimiter, and a test once a block would only turn a hang into a wrong value.
void NyXmlFileReader::moveToDelim(char delimiter)
{
    std::size_t found = m_theIndex == none ? none : m_theBlock.find(delimiter, m_theIndex);
    while (found == none) {
        moveToBlockEnd();
        readBlock(false);
        found = m_theBlock.find(delimiter, m_theIndex);
    }
    moveToIndex(found);
}

void NyXmlFileReader::moveToNextWord()
{
    auto const findWord = [this] { return NyWhiteSpace::findBlack(m_theBlock, std::min(m_theIndex, m_theBlock.size())); };
    std::size_t found = findWord();
    while (found == m_theBlock.size()) {
        moveToBlockEnd();
        readBlock(false);
        found = findWord();
    }
    moveToIndex(found);
}

// Afterwards the line under the cursor can be searched without a refill, if it is shorter than a block.
void NyXmlFileReader::ensureNewlineExists()
{
    if (m_theNewline >= m_theIndex && m_theNewline < m_theBlock.size() && m_theBlock[m_theNewline] == '\n')
        return;
    std::size_t const found = m_theBlock.find('\n', std::max(m_theNewline, m_theIndex));
    m_theNewline = std::min(found, m_theBlock.size());
    if (found == none)
        readBlock(false);
}

// The next byte; zero at the end of the input.
char NyXmlFileReader::getCurrentChar()
{
    if (m_theIndex >= m_theBlock.size())
        readBlock(false);
    char const result = m_theIndex < m_theBlock.size() ? m_theBlock[m_theIndex] : '\0';
    jumpTo(m_theIndex + 1 < m_theBlock.size() ? m_theIndex + 1 : none);
    return result;
}

bool NyXmlFileReader::isWhiteSpace(std::string const& text) const { return NyWhiteSpace::isAll(text); }

void NyXmlFileReader::stripLeadingWhiteSpace(std::string& text) const
{
    std::size_t const first = NyWhiteSpace::findBlack(text);
    if (first != text.size())
        text.erase(0, first);
}

void NyXmlFileReader::stripTrailingWhiteSpace(std::string& text) const
{
    std::size_t const last = text.find_last_not_of(NyWhiteSpace::characters);
    if (last != none)
        text.resize(last + 1);
}

void NyXmlFileReader::stripWhiteSpaceFromBounds(std::string& text) const
{
    stripTrailingWhiteSpace(text);
    stripLeadingWhiteSpace(text);
}

void NyXmlFileReader::stripLeadingSlash(std::string& text) const
{
    if (!text.empty())
        text.erase(0, 1);
}

void NyXmlFileReader::stripTrailingSlash(std::string& text) const
{
    if (!text.empty())
        text.pop_back();
}

// The place behind the text holds its terminator and never the second quote. Subclasses have the slot, so it stays.
void NyXmlFileReader::stripQuotes(std::string&) { fault("file not well formed.\n\tImproper quotes around attribute value."); }

std::string const& NyXmlFileReader::nextQuotedToken(std::string& text)
{
    std::size_t const second = text.find(text[0], 1);
    if (second == none) {
        fault("file not well formed.\n\tSecond quote of attribute value is missing.");
        m_theValue.clear();
        return m_theValue;
    }
    m_theValue.assign(text, 1, second - 1);
    text.erase(0, NyWhiteSpace::findBlack(text, second + 1));
    return m_theValue;
}
