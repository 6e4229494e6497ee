// In-house, no part of the face.

#ifndef NYXMLKIT_FILE_DETAIL_NYXMLFAULTCOLLECTOR_H
#define NYXMLKIT_FILE_DETAIL_NYXMLFAULTCOLLECTOR_H

#include <nyXml/core/NyToken.h>
#include <nyXmlKit/file/NyXmlFault.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

class NyXmlReader;

/// Leaves the reading from inside a message, where a document would be complained of without end.
struct NyXmlEndOfReading {};

/// Makes faults of what the library prints.
///
/// The library tells a fault in one piece or in several, and some faults twice. Here each is one, with the place where the reader stood when
/// it began.
class NyXmlFaultCollector {
public:
    struct Told {
        bool sizes = false;           ///< that there are not as many items as a size says
        bool attributeCounts = false; ///< that a value has too many attributes, or not enough
    };

    /// Who follows the document.
    class Follower {
    public:
        virtual std::vector<NyToken> openElements() const = 0;

        /// Which messages that come now are told by somebody else, with more to them.
        virtual Told toldElsewhere() const { return {}; }

    protected:
        ~Follower() = default;
    };

    /// \param name  of the document, for faults that come before there is a reader. It stays the caller's and must outlive us
    explicit NyXmlFaultCollector(std::string const& name);

    /// At most so many faults are kept. One more is a broken limit, of which \p whenBroken is told.
    void setMost(std::size_t most, std::function<void()> whenBroken);

    /// Who tell the place from now on; both null say that nobody can.
    void setReader(NyXmlReader const* reader, Follower const* follower);

    /// A piece of a message.
    void take(int printType, std::string const& location, std::string const& piece);

    /// A fault of our own where the reader stands.
    void add(NyXmlFault::Kind kind, std::string const& text);
    void add(NyXmlFault fault);

    /// What comes from now on is of no interest: the reading has ended, and the library does not know why.
    void close();
    bool isClosed() const noexcept { return m_isClosed; }

    /// No further piece will come for the message in hand.
    void flush();

    /// Whether a complaint has come that leaves the document not well formed (1) or possibly not valid (2).
    unsigned int errorCode() const noexcept { return m_theErrorCode; }

    std::vector<NyXmlFault>& faults() { return m_theFaults; }
    std::vector<std::string>& notices() { return m_theNotices; }

    /// Names joined by slashes, long ones cut.
    static std::string pathOf(std::vector<NyToken> const& names);

private:
    bool continues(std::string const& location, std::string const& piece) const;
    bool isConsequence(std::string const& piece) const;
    NyXmlFault placed() const;
    void keep(NyXmlFault fault);

    std::string const& m_theName;
    std::size_t m_theMost = static_cast<std::size_t>(-1);
    std::function<void()> m_theWhenBroken;
    NyXmlReader const* m_theReader = nullptr;
    bool m_isReaderGone = false;
    Follower const* m_theFollower = nullptr;
    bool m_isClosed = false;
    unsigned int m_theErrorCode = 0;
    std::vector<NyXmlFault> m_theFaults;
    std::vector<std::string> m_theNotices;

    // The message in hand.
    bool m_isInHand = false;
    bool m_isDropped = false;
    Told m_theTold;
    int m_theType = 0;
    std::string m_theLocation;
    std::string m_theText;
    NyXmlFault m_thePlace;
    std::string m_theLastText;
};

#endif
