// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_READER_DETAIL_NYXMLTEXTBLOCK_H
#define NYXML_READER_DETAIL_NYXMLTEXTBLOCK_H

#include <nyXml/platform/NyXmlExport.h>

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class NyXmlAttributeList;
class NyXmlContent;

/// The text of a stream that is in hand: one block, a cursor in it, refills and the line count. A part of NyXmlFileReader, of no use to
/// others.
///
/// The block begins, for everybody who looks, at start(). What is before it was given up and goes when room is needed. The cursor is at
/// that place or behind it; all ones says that the block is used up. Places in the block are good until the next refill.
class NYXML_EXPORT NyXmlTextBlock {
public:
    static constexpr std::size_t none = std::string::npos;

    /// \param attributes, content  their texts may stand in the block: they are told to own them when it is about to change
    NyXmlTextBlock(std::istream& stream, NyXmlAttributeList& attributes, NyXmlContent& content);
    ~NyXmlTextBlock();
    NyXmlTextBlock(NyXmlTextBlock const&) = delete;
    /// Takes over text, cursor and lines. The stream stays its own.
    NyXmlTextBlock& operator=(NyXmlTextBlock const& other);

    std::istream& stream() const noexcept { return *m_theStream; }
    /// A stream that fails is at its end.
    bool isStreamAtEnd() const;

    /// With as many zero bytes behind it as NyShortText and NyXmlTextSearch need.
    std::string_view text() const noexcept { return { m_theBlock.get(), m_size }; }
    std::size_t index() const noexcept { return m_theIndex; }
    std::size_t start() const noexcept { return m_start; }
    bool isUsedUp() const noexcept { return m_theIndex >= m_size; }
    /// How many bytes there are from a place in the text on.
    std::size_t sizeFrom(char const* at) const noexcept { return static_cast<std::size_t>(m_theBlock.get() + m_size - at); }
    /// From the cursor on.
    std::string_view rest() const noexcept { return isUsedUp() ? std::string_view() : text().substr(m_theIndex); }

    /// Moves the cursor forwards over text that counts. How far that is counted is nobody's business until somebody asks for the line
    /// or the text goes.
    void moveToIndex(std::size_t index) noexcept { m_theIndex = index; }
    void moveTo(char const* at) noexcept { m_theIndex = static_cast<std::size_t>(at - m_theBlock.get()); }
    void moveToBlockEnd() noexcept { m_theIndex = none; }
    /// Moves the cursor forwards over text that does not count, or backwards: text that is read again counts again.
    void jumpTo(std::size_t index);
    /// Back to where the block begins, for a token that has no end: that text is read again, and a run that was handed out with it.
    void jumpToStart();

    /// Gives up the text in front of the cursor and reads on behind the rest: up to a full block, or a block more however long the rest
    /// is. \return whether there is new text
    bool readBlock(bool wholeBlock);

    /// Looks for the delimiter from the cursor on, whose first bytes, as many as \p searched, are known to hold none. Reads on until it
    /// is in the block, so that text up to the next delimiter is in one piece. The cursor stays on its byte.
    /// \return where it is, all ones if the input ends before
    std::size_t find(char delimiter, std::size_t searched = 0);

    /// Moves the cursor up to the next delimiter, and over it if \p consume is true.
    /// \param line  becomes the text in front of it, or what is left of the input. \return false if the input ended before
    bool getLine(std::string& line, char delimiter, bool consume);

    /// Onto the next delimiter, and onto the next byte that is not white. Skipped text is dropped, so that the block does not grow. They
    /// don't return at the end of the input: whoever comes here knows that there is one, and to return would only turn a hang into a
    /// wrong value.
    void moveToDelim(char delimiter);
    void moveToNextWord();

    /// The same for who does not know: false at the end of the input.
    bool findDelim(char delimiter);
    bool findNextWord();

    /// Afterwards the line under the cursor can be searched without a refill, if it is shorter than a block.
    void ensureNewlineExists();

    /// The next byte; zero at the end of the input.
    char getCurrentChar();

    // A long run of text is handed out in pieces while it is being read. To everybody who looks later it was one text in the block.

    /// Steps over text that is handed out now, and keeps a copy.
    void handOut(std::size_t size);
    /// The run has come to its end: the next refill gives up all of it.
    void endHandOut() noexcept { m_isHandingOut = false; }
    /// The text that was handed out, in front of another.
    std::string withHandedOut(std::string_view text) const;
    /// Forgets it. \param evenInBlock  also while it could be read again
    void forgetHandedOut(bool evenInBlock) noexcept;

    /// Line of the cursor, from 1, at most the largest int.
    int line() const;
    /// From here on the cursor stands in this line.
    void setLine(int line);

private:
    void countLines() const;
    static std::unique_ptr<char[]> newBlock(std::size_t capacity);
    void endWithZeros() noexcept;
    void tellLookers();
    void makeRoom(std::size_t size);

    std::istream* m_theStream;
    NyXmlAttributeList* m_attributes;
    NyXmlContent* m_content;
    std::unique_ptr<char[]> m_theBlock;
    std::size_t m_capacity; ///< less the zero bytes
    std::size_t m_size = 0;
    std::size_t m_theIndex = none;
    std::size_t m_start = 0;           ///< text before it is given up
    mutable std::size_t m_counted = 0; ///< newlines before it are in m_theLineCount or never will be
    std::size_t m_newline = 0;         ///< between the cursor and this place there is no newline
    mutable int m_theLineCount = 1;    ///< of the place m_counted
    std::vector<std::string> m_handedOut;
    bool m_isHandingOut = false;
    bool m_isHandedOutInBlock = false; ///< in front of start(), for who looks
};

#endif
