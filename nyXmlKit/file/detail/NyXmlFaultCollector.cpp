#include <nyXmlKit/file/detail/NyXmlFaultCollector.h>

#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace {

using Kind = NyXmlFault::Kind;

constexpr std::size_t longestText = 1000; // of a fault: a name in it may be as long as the document
constexpr std::size_t longestName = 200;  // in a path

bool beginsWith(std::string_view text, std::string_view start) { return text.substr(0, start.size()) == start; }
bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

/// What a message is about, by the words that it has for it.
Kind kindOf(std::string_view text)
{
    struct Row {
        std::string_view words;
        Kind kind;
    };
    static constexpr Row rows[] = {
        { "NyXmlGuard Error: limit broken", Kind::LIMIT },
        { "file not well formed", Kind::NOT_WELL_FORMED },
        { "Requested next end tag but found EOF", Kind::NOT_WELL_FORMED },
        { "getChildrenAsString Error", Kind::NOT_WELL_FORMED },
        { "Previous attribute names were not used", Kind::UNKNOWN_MEMBER },
        { "Some attribute were not used", Kind::UNKNOWN_MEMBER },
        { "Bad token: ", Kind::UNKNOWN_MEMBER },
        { "Bad attribute token: ", Kind::UNKNOWN_MEMBER },
        { " size not equal to attribute value", Kind::WRONG_SIZE },
        { "Required member is missing: ", Kind::MISSING_MEMBER },
        { "NyXmlWord Error", Kind::BAD_TEXT },
        { "NyXmlEnum Error", Kind::BAD_TEXT },
        { "Reader Error: XLink", Kind::LINK },
        { "Reader Error: not able to open file", Kind::LINK },
        { "Reader Error: attribute name can only be", Kind::LINK },
        { "NyXmlObject::checkVersion", Kind::VERSION },
        { "NyXmlFactory::loadLibrary", Kind::PLUG_IN },
    };
    for (Row const& row : rows)
        if (contains(text, row.words))
            return row.kind;
    return Kind::BAD_VALUE;
}

/// Of a document that is not well formed, what the parser of XML 1.0 says in its own words.
Kind kindOfIllFormed(std::string_view text, bool isInRoot)
{
    if (contains(text, "junk after document element"))
        return Kind::BEHIND_ROOT;
    bool const isAtEnd =
        contains(text, "no element found") || contains(text, "unclosed token") || contains(text, "unclosed CDATA");
    return isAtEnd && isInRoot ? Kind::BROKEN_OFF : Kind::NOT_WELL_FORMED;
}

/// 0 if a message tells none.
int columnOf(std::string const& message)
{
    static std::string const start = "\n\tColumn: ";
    std::size_t const place = message.rfind(start);
    return place != std::string::npos ? std::atoi(message.c_str() + place + start.size()) : 0;
}

/// The lines of a message in one, without those that say where.
std::string oneLine(std::string_view message)
{
    std::string result;
    while (!message.empty()) {
        std::size_t const end = std::min(message.find('\n'), message.size());
        std::string_view line = message.substr(0, end);
        message.remove_prefix(std::min(end + 1, message.size()));
        while (!line.empty() && (line.front() == '\t' || line.front() == ' '))
            line.remove_prefix(1);
        while (!line.empty() && (line.back() == ' ' || line.back() == '\r'))
            line.remove_suffix(1);
        if (line.empty() || beginsWith(line, "File: ") || beginsWith(line, "Line: ") || beginsWith(line, "Column: ") ||
            beginsWith(line, "Filename: "))
            continue;
        result += result.empty() ? "" : " ";
        result += line.substr(0, longestText);
        if (result.size() > longestText)
            return result.substr(0, longestText) + "...";
    }
    return result;
}

} // namespace

NyXmlFaultCollector::NyXmlFaultCollector(std::string const& name) : m_theName(name) {}

void NyXmlFaultCollector::setMost(std::size_t most, std::function<void()> whenBroken)
{
    m_theMost = most;
    m_theWhenBroken = std::move(whenBroken);
}

void NyXmlFaultCollector::setReader(NyXmlReader const* reader, Follower const* follower)
{
    flush();
    m_isReaderGone = m_theReader != nullptr && reader == nullptr;
    m_theReader = reader;
    m_theFollower = follower;
}

std::string NyXmlFaultCollector::pathOf(std::vector<NyToken> const& names)
{
    std::string path;
    for (NyToken const& name : names) {
        std::string const& text = name;
        path += path.empty() ? "" : "/";
        path += text.size() > longestName ? text.substr(0, longestName) + "..." : text;
    }
    return path;
}

NyXmlFault NyXmlFaultCollector::placed() const
{
    NyXmlFault fault;
    fault.file = m_theReader != nullptr ? m_theReader->filename() : m_theName;
    fault.line = m_theReader != nullptr ? m_theReader->lineCountOfFile() : 0;
    fault.path = m_theFollower != nullptr ? pathOf(m_theFollower->openElements()) : std::string();
    return fault;
}

// Messages are lines, and whoever goes on with one begins with a tab, with the line that says where, or in the middle of a line.
bool NyXmlFaultCollector::continues(std::string const& location, std::string const& piece) const
{
    if (!m_isInHand || location != m_theLocation)
        return false;
    bool const isLineOpen = m_theText.back() != '\n' && !location.empty();
    return isLineOpen || piece.front() == '\t' || piece == "\n" || piece == "Filename: ";
}

// A reader that is in error has said why, and what it and the objects say then has no cause of its own.
bool NyXmlFaultCollector::isConsequence(std::string const& piece) const
{
    if (beginsWith(piece, "NyXmlGuard Error:"))
        return false;
    bool const isInError = m_theReader != nullptr && m_theReader->mode() == NyXmlFileReader::XML_READER_ERROR;
    return isInError || (m_isReaderGone && !m_theFaults.empty());
}

void NyXmlFaultCollector::take(int printType, std::string const& location, std::string const& piece)
{
    if (piece.empty())
        return;
    if (!continues(location, piece)) {
        flush();
        m_isInHand = true;
        m_isDropped = m_isClosed || isConsequence(piece);
        m_theType = printType;
        m_theLocation = location;
        m_theTold = m_theFollower != nullptr ? m_theFollower->toldElsewhere() : Told();
        if (!m_isDropped)
            m_thePlace = placed();
    }
    if (m_theText.size() < 4 * longestText)
        m_theText += piece;
    else if (piece.back() == '\n')
        m_theText.back() = '\n';
    if (location.empty() && contains(piece, "attribute name can only be simple and href") && piece == m_theLastText) {
        m_isDropped = true;
        throw NyXmlEndOfReading(); // it would be told again and again
    }
    if (location.empty())
        m_theLastText = piece;
}

void NyXmlFaultCollector::flush()
{
    if (!std::exchange(m_isInHand, false))
        return;
    std::string const text = std::exchange(m_theText, std::string());
    if (m_isDropped || (m_theTold.attributeCounts && contains(text, " attributes needed, but ")))
        return;
    Kind kind = kindOf(text);
    if (m_theTold.sizes && kind == Kind::WRONG_SIZE)
        return;
    if (m_theType != Ny::Print::FAULT && kind != Kind::WRONG_SIZE) {
        m_theNotices.push_back(oneLine(text));
        return;
    }
    if (kind == Kind::NOT_WELL_FORMED) {
        m_theErrorCode = 1;
        kind = kindOfIllFormed(text, !m_thePlace.path.empty());
    } else if (contains(text, "possibly not valid") && m_theErrorCode == 0) {
        m_theErrorCode = 2;
    }
    m_thePlace.kind = kind;
    m_thePlace.text = oneLine(text);
    m_thePlace.column = columnOf(text);
    keep(std::move(m_thePlace));
    if (kind == Kind::LIMIT)
        close();
}

void NyXmlFaultCollector::add(Kind kind, std::string const& text)
{
    NyXmlFault fault = placed();
    fault.kind = kind;
    fault.text = text.size() > longestText ? text.substr(0, longestText) + "..." : text;
    add(std::move(fault));
}

void NyXmlFaultCollector::add(NyXmlFault fault)
{
    flush();
    if (!m_isClosed)
        keep(std::move(fault));
}

// The first fault too many is told as what it is.
void NyXmlFaultCollector::keep(NyXmlFault fault)
{
    if (m_theFaults.size() >= m_theMost && fault.kind != Kind::LIMIT) {
        fault.kind = Kind::LIMIT;
        fault.text = "limit broken: faults: more than " + std::to_string(m_theMost) + " of them.";
        m_isClosed = true;
        if (m_theWhenBroken)
            m_theWhenBroken();
    }
    m_theFaults.push_back(std::move(fault));
}

void NyXmlFaultCollector::close()
{
    flush();
    m_isClosed = true;
}
