// In-house, no part of the face.

#ifndef NYXMLKIT_FILE_DETAIL_NYXMLSTRICTCHECKER_H
#define NYXMLKIT_FILE_DETAIL_NYXMLSTRICTCHECKER_H

#include <nyXml/core/NyToken.h>
#include <nyXmlKit/file/NyXmlFault.h>
#include <nyXmlKit/file/detail/NyXmlFaultCollector.h>
#include <nyXmlKit/file/detail/NyXmlShape.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

class NyXmlReader;

/// Follows a document in step with its reader, and compares it with what the objects can read.
///
/// Members that nobody knows are the compounds' to complain of. Told here is what the library passes over in silence, and what it tells
/// without a place.
class NyXmlStrictChecker {
public:
    /// \param leftOutFits  whether what equals its default may be missing
    NyXmlStrictChecker(NyXmlFaultCollector& faults, NyXmlObject const& root, bool leftOutFits);

    void setReader(NyXmlReader const* reader) { m_theReader = reader; }

    // What comes, in order.

    /// \param isIncluded  the root of another document, whose name is its own
    void start(std::string const& name, bool isIncluded);
    /// Of this name there are several, and only the first one will come.
    void repeatedAttribute(std::string const& name);
    void attribute(std::string const& name, std::string const& value);
    /// One that nobody has asked for.
    void leftAttribute(std::string const& name);
    /// Whether there was any, for which a reader would have given the document another code.
    bool areAttributesLeft() const noexcept { return m_areAttributesLeft; }
    void text(std::string_view text);
    /// The text of a value that takes its element as a whole.
    void rawText(std::string_view text);
    void end(bool isEmptyTag);

    // A leaf that comes next: true for one that has passed. False, and nothing has changed, for one that does not fit or that has to be
    // followed step by step.

    bool passText(NyToken const& name, std::string_view text);
    bool passTag(NyToken const& name, NyToken const* const* attributes, std::string_view const* values, std::size_t count);

    // A run in pieces, the last one as a text.
    void piece(std::string_view words);
    void forgetPieces();

    /// Nothing is known of the element in hand: whoever reads it skips it.
    void forget();

    /// From now on nothing is of interest.
    void close() noexcept { m_isClosed = true; }

    bool isInPath() const { return m_theDepth != 0 && top().shape != nullptr && top().shape->kind == NyXmlShape::Kind::PATH; }
    /// The same of a vector in a path.
    bool isInVectorOfPath() const
    {
        NyXmlShape const* const around = m_theDepth > 1 ? m_theFrames[m_theDepth - 2].shape : nullptr;
        return around != nullptr && around->kind == NyXmlShape::Kind::PATH;
    }
    std::size_t depth() const noexcept { return m_theDepth; }

    /// Which messages of the library tell what is told here.
    NyXmlFaultCollector::Told tells() const;

    /// The open elements, and the one just read if it was a text.
    std::vector<NyToken> names() const;

private:
    struct Frame {
        NyXmlShape* shape = nullptr; ///< null: of a choice that is not made yet
        std::string name;
        std::size_t seen = 0; ///< where the counts of its members begin
        std::size_t nextAttribute = 0;
        std::size_t nextChild = 0;
        std::size_t items = 0;
        std::unique_ptr<std::unordered_set<std::string>> given; ///< items of a set, keys of a map
        std::size_t parts = 0;                                  ///< attributes and children
        std::optional<long long> claim;
        bool isClaimBad = false;
        bool hasText = false;
        bool isKey = false;
    };
    using Kind = NyXmlShape::Kind;

    Frame& top() { return m_theFrames[m_theDepth - 1]; }
    Frame const& top() const { return m_theFrames[m_theDepth - 1]; }
    Frame& push(std::string const& name, NyXmlShape* shape);
    NyXmlShape* enter(Frame& parent, std::string const& name, bool isIncluded);
    NyXmlShape* enterMember(Frame& parent, std::string const& name);
    NyXmlShape* leafIn(Frame& parent, std::string const& name, unsigned int*& seen);
    static void countLeaf(Frame& parent, unsigned int* seen);
    void choose();
    void checkWords(std::string_view words);
    void checkDifferent(Frame& holder, char const* what, NyXmlShape const& shape, std::string_view text);
    void unusedAttribute(std::string const& name);
    void takeClaim(Frame& frame, std::string const& value);
    void checkText(NyXmlShape const& shape, std::string_view text, std::string_view attribute = {});
    void checkMembers(Frame const& frame);
    void checkMissing(Frame const& frame, std::vector<NyXmlShapeMember> const& members, std::size_t seen, char const* what);
    void learnLibraries();
    void add(NyXmlFault::Kind kind, std::string const& text);

    NyXmlFaultCollector& m_theFaults;
    bool const m_isLeftOutFit;
    NyXmlReader const* m_theReader = nullptr;
    NyXmlShapes m_theShapes;
    NyXmlShape* m_theRoot;
    NyXmlShape m_theRun;
    std::vector<Frame> m_theFrames; ///< kept for their strings; the first m_theDepth are open
    std::size_t m_theDepth = 0;
    std::vector<unsigned int> m_theSeen;
    std::size_t m_theNoticesSeen = 0;
    std::size_t m_theItemsInPieces = 0; ///< of a run that comes in them
    bool m_isInPieces = false;
    std::optional<std::pair<NyXmlFault::Kind, std::string>> m_thePending; ///< of an element that is about to be open
    bool m_areAttributesLeft = false;
    bool m_isClosed = false;
    bool m_wasText = false;          ///< the last event, which has closed its element
    Kind m_theLast = Kind::ANYTHING; ///< the element that has closed last
};

#endif
