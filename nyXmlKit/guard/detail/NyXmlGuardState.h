// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_GUARD_DETAIL_NYXMLGUARDSTATE_H
#define NYXMLKIT_GUARD_DETAIL_NYXMLGUARDSTATE_H

#include <nyXml/platform/NyXmlExport.h>
#include <nyXmlKit/guard/NyXmlFileInput.h>
#include <nyXmlKit/guard/NyXmlGuard.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <memory>
#include <optional>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

class NyXmlReader;

/// What a guarded reader knows that does not depend on the reader it is made from: the count of everything that is limited, the streams
/// with an eye on them, and which documents are open.
class NYXML_EXPORT NyXmlGuardState {
public:
    using Limit = NyXmlGuard::Limit;

    /// Told of the bytes of each read, in whatever document, and how many bytes the files have in all that were included so far. False
    /// ends the reading.
    using ByteListener = std::function<bool(std::size_t bytes, std::uint64_t included)>;

    NyXmlGuardState(std::string const& name, std::istream& stream, NyXmlGuard const& guard);
    ~NyXmlGuardState();
    NyXmlGuardState(NyXmlGuardState const&) = delete;
    NyXmlGuardState& operator=(NyXmlGuardState const&) = delete;

    /// The document, with an eye on it.
    std::istream& input() { return m_theInput; }

    /// Whose file and line messages tell; null in the end.
    void setReader(NyXmlReader const* reader) { m_theReader = reader; }
    void setListener(ByteListener listener) { m_theListener = std::move(listener); }

    /// Whether the reading has ended before the document did.
    bool hasEnded() const noexcept { return m_hasEnded; }
    Limit broken() const noexcept { return m_theBroken; }

    /// Ends the reading, without a word.
    void end() noexcept { m_hasEnded = true; }

    /// Reports a broken limit and ends the reading. Only the first one counts.
    void breakLimit(Limit limit, std::string const& what);

    // What has come. Each ends the reading if it is too much.

    void anEventIsDue() noexcept { m_theBytesBefore = m_theBytes; }
    void enter(std::size_t attributes);
    void leave() noexcept { m_theDepth -= m_theDepth != 0 ? 1 : 0; }
    void checkText(std::size_t size);
    /// Text that a reader holds before it is an event.
    void checkHeld(std::size_t size);
    // A run that comes in pieces, the last one as a text. Its element has just been entered.
    void beginRun() noexcept;
    bool mayPassPiece(std::string_view words);
    void forgetPieces() noexcept;
    void checkLastPiece(std::size_t size);
    void checkDepth(std::size_t depth);
    bool watchesItems() const noexcept { return m_theGuard.items != NyXmlGuard::noLimit; }
    void checkClaim(std::string_view size);
    /// The words of a run, which are items of the element around it.
    void checkWords(std::size_t count);

    /// Whether a leaf that comes next breaks no limit. Nothing has changed if it does.
    /// \param isBehindEmptyTag  an element is still counted that has ended
    bool mayPassLeaf(std::size_t attributes, std::size_t longestText, bool isBehindEmptyTag) const noexcept
    {
        std::size_t const depth = m_theDepth - (isBehindEmptyTag ? 1 : 0);
        return !m_hasEnded && depth < m_theGuard.depth && attributes <= m_theGuard.attributes && longestText <= m_theGuard.text &&
               (!watchesItems() || itemsOf(depth) < m_theGuard.items);
    }
    /// One that may.
    void enterLeaf()
    {
        countItems(1);
        beginElement();
    }

    /// Opens what a link leads to, if that is allowed and there. Null if not: it has been reported if it is not allowed.
    std::unique_ptr<std::istream> openLink(std::string const& path, bool isRemote);

    /// The document opened last is at its end.
    void closeLink();

    /// For the gate of plug-ins: whether this library may be loaded. If not, that ends the reading.
    bool mayLoad(std::string const& library);

private:
    class Watch final : public std::streambuf {
    public:
        /// \param piece  at most so many bytes are read without a look at the clock
        Watch(NyXmlGuardState& state, std::istream& source, std::size_t piece = NyXmlGuard::noLimit)
            : m_theState(state),
              m_theSource(source),
              m_thePiece(piece)
        {}

    protected:
        int_type underflow() override;
        std::streamsize xsgetn(char* to, std::streamsize count) override;

    private:
        NyXmlGuardState& m_theState;
        std::size_t takePieces(char* to, std::size_t count);

        std::istream& m_theSource;
        std::size_t const m_thePiece;
        std::array<char, 512> m_theBytes; // for callers who go byte by byte
    };
    class Include;

    /// What is open, the document itself first. A name stands for what has no identity.
    struct Document {
        std::optional<NyXmlFileInput::Identity> identity;
        std::string name;
    };

    std::size_t itemsOf(std::size_t depth) const noexcept { return depth < m_theItems.size() ? m_theItems[depth] : 0; }
    void countItems(std::size_t count)
    {
        if (watchesItems())
            m_theItems[m_theDepth] += count;
    }
    void checkItems();
    void beginElement()
    {
        ++m_theDepth;
        if (!watchesItems())
            return;
        if (m_theItems.size() <= m_theDepth)
            m_theItems.resize(m_theDepth + 1);
        m_theItems[m_theDepth] = 0;
    }
    std::size_t take(std::istream& source, char* to, std::size_t count);
    void watchTag(char const* bytes, std::size_t count);
    bool isOpen(Document const& document);
    bool isBelowFolder(std::string const& path) const;
    bool isOverdue() const;
    std::unique_ptr<std::istream> openFile(std::string const& path, Document& document);

    NyXmlGuard const m_theGuard;
    Watch m_theWatch;
    std::istream m_theInput;
    NyXmlReader const* m_theReader = nullptr;
    std::string m_theName;
    ByteListener m_theListener;
    std::chrono::steady_clock::time_point m_theStart;
    bool m_hasEnded = false;
    Limit m_theBroken = Limit::NONE;
    std::size_t m_theBytes = 0;
    std::size_t m_theBytesBefore = 0;    ///< the event that is being read
    std::uint64_t m_theBytesOfFiles = 0; ///< that were included
    std::size_t m_theDepth = 0;
    std::vector<std::size_t> m_theItems{ 0 }; ///< so far in each open element: children, and words of runs
    std::size_t m_theDepthOfRun = 0;          ///< of the element whose items its words are
    std::size_t m_theBytesOfRun = 0;          ///< that came in pieces
    std::size_t m_theWordsOfRun = 0;
    std::size_t m_theIncludes = 0;
    bool m_isInTag = false;              ///< where the last read ended
    std::size_t m_theTagsAttributes = 0; ///< so far, if the last read ended in a tag
    std::vector<Document> m_theDocuments;
    bool m_isFirstKnown = false; ///< its identity
};

#endif
