#include <nyXml/reader/detail/NyXmlTextBlock.h>

#include <nyXml/core/detail/NyLargePages.h>
#include <nyXml/core/detail/NyShortText.h>
#include <nyXml/core/detail/NyWhiteSpace.h>
#include <nyXml/reader/detail/NyXmlAttributeList.h>
#include <nyXml/reader/detail/NyXmlContent.h>
#include <nyXml/reader/detail/NyXmlTextSearch.h>

#include <algorithm>
#include <cstring>
#include <ios>
#include <istream>
#include <limits>
#include <utility>

namespace {

constexpr std::size_t readSize = 0x3fff;
constexpr std::size_t usualCapacity = 32 * 1024; // room for a full block behind text that was given up
constexpr std::size_t zeros = std::max(NyShortText::zerosNeeded, NyXmlTextSearch::zerosNeeded);

constexpr std::size_t firstPiece = std::size_t{ 64 } << 10; // of a run that is handed out
constexpr std::size_t greatestPiece = std::size_t{ 64 } << 20;

// Hot: once for every byte that is read. The inner loops have a fixed number of rounds and sums of one byte, which is what a compiler needs
// to take sixteen bytes at a time. The first has two halves, so that the loop itself costs less; the second is for what is left of a
// block, which may be a whole small document.
std::size_t newlinesIn(char const* text, std::size_t size)
{
    constexpr std::size_t half = 128; // a sum of one byte must not overflow
    constexpr std::size_t little = 16;
    auto const count = [](unsigned char& sum, char c) { // a comparison gives all ones, and less that is one more
        sum = static_cast<unsigned char>(sum - (c == '\n' ? 255 : 0));
    };
    std::size_t lines = 0;
    for (; size >= 2 * half; text += 2 * half, size -= 2 * half) {
        char const* const other = text + half;
        unsigned char sum = 0, otherSum = 0;
        for (std::size_t i = 0; i != half; ++i) {
            count(sum, text[i]);
            count(otherSum, other[i]);
        }
        lines += std::size_t(sum) + otherSum;
    }
    for (; size >= little; text += little, size -= little) {
        unsigned char sum = 0;
        for (std::size_t i = 0; i != little; ++i)
            count(sum, text[i]);
        lines += sum;
    }
    return lines + static_cast<std::size_t>(std::count(text, text + size, '\n'));
}

// Each thread keeps one block of the usual size for its next reader: small documents spend their time on what comes and goes with them.
// The pointer has no destructor, so that readers may go after everything else of their thread.
thread_local char* spareBlock = nullptr;
thread_local bool isThreadEnding = false;

struct SpareBlockGuard {
    SpareBlockGuard() = default;
    SpareBlockGuard(SpareBlockGuard const&) = delete;
    SpareBlockGuard& operator=(SpareBlockGuard const&) = delete;
    ~SpareBlockGuard()
    {
        delete[] std::exchange(spareBlock, nullptr);
        isThreadEnding = true;
    }
};

} // namespace

NyXmlTextBlock::NyXmlTextBlock(std::istream& stream, NyXmlAttributeList& attributes, NyXmlContent& content)
    : m_theStream(&stream),
      m_attributes(&attributes),
      m_content(&content),
      m_theBlock(std::exchange(spareBlock, nullptr)),
      m_capacity(usualCapacity)
{
    if (!m_theBlock)
        m_theBlock = newBlock(usualCapacity);
    endWithZeros();
}

NyXmlTextBlock::~NyXmlTextBlock()
{
    static thread_local SpareBlockGuard const guard;
    if (m_capacity == usualCapacity && spareBlock == nullptr && !isThreadEnding)
        spareBlock = m_theBlock.release();
}

NyXmlTextBlock& NyXmlTextBlock::operator=(NyXmlTextBlock const& other)
{
    if (this == &other)
        return *this;
    auto handedOut = other.m_handedOut;
    if (m_capacity < other.m_size) {
        m_theBlock = newBlock(other.m_capacity);
        m_capacity = other.m_capacity;
    }
    std::memcpy(m_theBlock.get(), other.m_theBlock.get(), other.m_size);
    m_size = other.m_size;
    endWithZeros();
    m_theIndex = other.m_theIndex;
    m_start = other.m_start;
    m_counted = other.m_counted;
    m_newline = other.m_newline;
    m_theLineCount = other.m_theLineCount;
    m_handedOut = std::move(handedOut);
    m_isHandingOut = other.m_isHandingOut;
    m_isHandedOutInBlock = other.m_isHandedOutInBlock;
    return *this;
}

std::unique_ptr<char[]> NyXmlTextBlock::newBlock(std::size_t capacity)
{
    return std::unique_ptr<char[]>(new char[capacity + zeros]);
}

void NyXmlTextBlock::endWithZeros() noexcept { std::memset(m_theBlock.get() + m_size, 0, zeros); }

bool NyXmlTextBlock::isStreamAtEnd() const { return !m_theStream->good(); }

void NyXmlTextBlock::countLines() const
{
    std::size_t const end = std::min(m_theIndex, m_size);
    if (end <= m_counted)
        return;
    auto const linesLeft = static_cast<std::size_t>(std::numeric_limits<int>::max() - m_theLineCount);
    std::size_t const lines = newlinesIn(m_theBlock.get() + m_counted, end - m_counted);
    m_theLineCount += static_cast<int>(std::min(lines, linesLeft)); // a document of more lines stays at the last number
    m_counted = end;
}

int NyXmlTextBlock::line() const
{
    countLines();
    return m_theLineCount;
}

void NyXmlTextBlock::setLine(int line)
{
    countLines();
    m_theLineCount = line;
}

void NyXmlTextBlock::jumpTo(std::size_t index)
{
    countLines();
    if (index < m_theIndex)
        m_newline = 0;
    m_theIndex = index;
    m_counted = std::min(index, m_size);
}

void NyXmlTextBlock::jumpToStart()
{
    if (m_isHandedOutInBlock) {
        countLines();
        std::string const whole = withHandedOut(text().substr(m_start));
        tellLookers();
        m_theIndex = m_start = m_counted = m_size; // nothing is left of the old text
        makeRoom(whole.size());
        std::memcpy(m_theBlock.get(), whole.data(), whole.size());
        m_size = whole.size();
        endWithZeros();
        m_theIndex = m_start = m_counted = m_newline = 0;
        forgetHandedOut(true);
    }
    jumpTo(m_start);
}

bool NyXmlTextBlock::readBlock(bool wholeBlock)
{
    if (isUsedUp()) {
        countLines();
        tellLookers();
        m_size = m_theIndex = m_counted = m_newline = 0;
        endWithZeros();
    }
    m_start = m_theIndex;
    m_isHandedOutInBlock = m_isHandingOut;
    std::size_t const rest = m_size - m_theIndex;
    if (!wholeBlock && rest >= readSize)
        return false;

    std::size_t const wanted = wholeBlock ? readSize : readSize - rest;
    makeRoom(wanted);
    char* const target = m_theBlock.get() + m_size;
    try {
        m_theStream->read(target, static_cast<std::streamsize>(wanted));
    } catch (std::ios_base::failure const&) {
        // A stream set to throw tells its end this way. It is no longer good(), which is all that we want to know.
    } catch (...) {
        endWithZeros();
        throw;
    }
    auto const count = static_cast<std::size_t>(m_theStream->gcount());
    // A zero byte ends this read's share of the text: documents are text and hold none.
    void const* const zero = std::memchr(target, '\0', count);
    std::size_t const length = zero != nullptr ? static_cast<std::size_t>(static_cast<char const*>(zero) - target) : count;
    m_size += length;
    endWithZeros();
    return length != 0;
}

void NyXmlTextBlock::tellLookers()
{
    m_attributes->own();
    m_content->own();
}

// Before text is added: what was given up goes if the block is full, and nobody may look into it any more.
void NyXmlTextBlock::makeRoom(std::size_t size)
{
    tellLookers();
    if (m_size + size <= m_capacity)
        return;
    countLines();
    std::size_t const rest = m_size - m_start;
    if (rest + size <= m_capacity) {
        std::memmove(m_theBlock.get(), m_theBlock.get() + m_start, rest);
    } else {
        std::size_t const capacity = std::max(2 * m_capacity, rest + size);
        std::unique_ptr<char[]> block = newBlock(capacity);
        std::memcpy(block.get(), m_theBlock.get() + m_start, rest);
        m_theBlock = std::move(block);
        m_capacity = capacity;
    }
    m_size = rest;
    m_theIndex -= m_start;
    m_counted -= m_start;
    m_newline = m_start = 0;
}

std::size_t NyXmlTextBlock::find(char delimiter, std::size_t searched)
{
    if (m_theIndex == none)
        m_theIndex = m_size;
    std::size_t found = text().find(delimiter, m_theIndex + searched);
    for (bool wholeBlock = false; found == none; wholeBlock = true) {
        if (wholeBlock && isStreamAtEnd())
            return none;
        searched = m_size - m_theIndex; // no byte is searched twice
        if (readBlock(wholeBlock))
            found = text().find(delimiter, m_theIndex + searched);
    }
    return found;
}

bool NyXmlTextBlock::getLine(std::string& line, char delimiter, bool consume)
{
    std::size_t const found = find(delimiter);
    line.assign(text().substr(m_theIndex, found == none ? none : found - m_theIndex));
    if (found == none) {
        jumpTo(none);
        return false;
    }
    moveToIndex(found);
    if (consume)
        jumpTo(found + 1);
    return true;
}

// The end of the input is not for them to find: it is asked for more, as often as it takes.
void NyXmlTextBlock::moveToDelim(char delimiter)
{
    while (!findDelim(delimiter)) {}
}

void NyXmlTextBlock::moveToNextWord()
{
    while (!findNextWord()) {}
}

bool NyXmlTextBlock::findDelim(char delimiter)
{
    std::size_t found = m_theIndex == none ? none : text().find(delimiter, m_theIndex);
    while (found == none) {
        moveToBlockEnd();
        if (!readBlock(false) && isStreamAtEnd())
            return false;
        found = text().find(delimiter, m_theIndex);
    }
    moveToIndex(found);
    return true;
}

bool NyXmlTextBlock::findNextWord()
{
    std::size_t found = NyWhiteSpace::findBlack(text(), std::min(m_theIndex, m_size));
    while (found == m_size) {
        moveToBlockEnd();
        if (!readBlock(false) && isStreamAtEnd())
            return false;
        found = NyWhiteSpace::findBlack(text(), std::min(m_theIndex, m_size));
    }
    moveToIndex(found);
    return true;
}

void NyXmlTextBlock::ensureNewlineExists()
{
    if (m_newline >= m_theIndex && m_newline < m_size && m_theBlock[m_newline] == '\n')
        return;
    std::size_t const found = text().find('\n', std::max(m_newline, m_theIndex));
    m_newline = std::min(found, m_size);
    if (found == none)
        readBlock(false);
}

char NyXmlTextBlock::getCurrentChar()
{
    if (isUsedUp())
        readBlock(false);
    char const result = isUsedUp() ? '\0' : m_theBlock[m_theIndex];
    jumpTo(m_theIndex + 1 < m_size ? m_theIndex + 1 : none);
    return result;
}

// Hot: all text of long runs. Each piece is four times as large as the one before and written once, so that nothing is moved.
void NyXmlTextBlock::handOut(std::size_t size)
{
    if (m_handedOut.empty() || m_handedOut.back().capacity() - m_handedOut.back().size() < size) {
        std::size_t const usual = m_handedOut.empty() ? firstPiece : std::min(4 * m_handedOut.back().capacity(), greatestPiece);
        std::string piece;
        piece.reserve(std::max(usual, size));
        nyWishLargePages(piece.data(), piece.capacity());
        m_handedOut.push_back(std::move(piece));
    }
    m_handedOut.back() += text().substr(m_theIndex, size);
    m_isHandingOut = true;
    moveToIndex(m_theIndex + size);
}

std::string NyXmlTextBlock::withHandedOut(std::string_view text) const
{
    std::string whole;
    for (std::string const& piece : m_handedOut)
        whole += piece;
    return whole.append(text);
}

void NyXmlTextBlock::forgetHandedOut(bool evenInBlock) noexcept
{
    if (m_isHandedOutInBlock && !evenInBlock)
        return;
    m_handedOut.clear();
    m_isHandedOutInBlock = false;
}
