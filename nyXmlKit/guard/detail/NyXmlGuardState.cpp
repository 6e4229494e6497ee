#include <nyXmlKit/guard/detail/NyXmlGuardState.h>

#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXmlKit/guard/detail/NyXmlPlugInGate.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <system_error>
#include <utility>

namespace {

constexpr std::size_t noLimit = NyXmlGuard::noLimit;

constexpr std::size_t pieceOfServer = 1024; // a slow one keeps us waiting for a whole block

// A reader asks for blocks, and an event may end at the beginning of one and the next begin at its end.
constexpr std::size_t blocks = std::size_t(64) << 10;

std::string moreThan(std::size_t count, char const* what) { return "more than " + std::to_string(count) + ' ' + what; }

/// How often an `=` and a quote stand in a piece of a tag.
std::size_t attributesIn(std::string_view tag)
{
    std::size_t count = 0;
    for (std::size_t at = tag.find('='); at != std::string_view::npos; at = tag.find('=', at + 1)) {
        std::size_t const next = tag.find_first_not_of(" \t\r\n", at + 1);
        count += next != std::string_view::npos && (tag[next] == '"' || tag[next] == '\'') ? 1 : 0;
    }
    return count;
}

/// The highest bit of each byte that stands for no white space. Control characters, which no document should have, count as such.
std::uint64_t blackBytes(char const* bytes) noexcept
{
    std::uint64_t eight = 0;
    std::memcpy(&eight, bytes, sizeof eight);
    return (((eight & 0x7F7F7F7F7F7F7F7F) + 0x5F5F5F5F5F5F5F5F) | eight) & 0x8080808080808080;
}

/// Hot: for every byte of a run, benchmarks/File.cpp. Byte by byte it takes longer than to read the numbers; so it is eight at a time, each
/// with the one before it.
std::size_t wordsIn(std::string_view text) noexcept
{
    auto const isBlack = [text](std::size_t at) { return static_cast<unsigned char>(text[at]) > ' '; };
    if (text.empty())
        return 0;
    std::size_t words = isBlack(0) ? 1 : 0;
    std::size_t at = 1;
    for (; at + 8 <= text.size(); at += 8) {
        std::uint64_t const starts = blackBytes(text.data() + at) & ~blackBytes(text.data() + at - 1);
        words += (starts >> 7) * 0x0101010101010101 >> 56;
    }
    for (; at != text.size(); ++at)
        words += isBlack(at) && !isBlack(at - 1) ? 1 : 0;
    return words;
}

} // namespace

/// A document that another one includes: the stream itself, and the reader's stream with an eye on it.
class NyXmlGuardState::Include final : public std::istream {
public:
    Include(NyXmlGuardState& state, std::unique_ptr<std::istream> source, bool isRemote)
        : std::istream(nullptr),
          m_theSource(std::move(source)),
          m_theWatch(state, *m_theSource, isRemote ? pieceOfServer : noLimit)
    {
        rdbuf(&m_theWatch);
    }

private:
    std::unique_ptr<std::istream> m_theSource;
    Watch m_theWatch;
};

NyXmlGuardState::NyXmlGuardState(std::string const& name, std::istream& stream, NyXmlGuard const& guard)
    : m_theGuard(guard),
      m_theWatch(*this, stream),
      m_theInput(&m_theWatch),
      m_theName(name),
      m_theStart(std::chrono::steady_clock::now())
{
    m_theDocuments.push_back({ std::nullopt, name });
    if (!m_theGuard.anyPlugIn)
        NyXmlPlugInGate::enter(*this);
}

NyXmlGuardState::~NyXmlGuardState()
{
    if (!m_theGuard.anyPlugIn)
        NyXmlPlugInGate::leave(*this);
}

void NyXmlGuardState::breakLimit(Limit limit, std::string const& what)
{
    if (m_theBroken != Limit::NONE)
        return;
    m_theBroken = limit;
    m_hasEnded = true;
    Ny::Print::write(Ny::Print::FAULT, "NyXmlGuard Error: limit broken: %s: %s.\n\tFile: %s\n\tLine: %d\n",
                     NyXmlGuard::nameOf(limit), what.c_str(),
                     m_theReader != nullptr ? m_theReader->filename() : m_theName.c_str(),
                     m_theReader != nullptr ? m_theReader->lineCountOfFile() : 1);
}

// Bytes

NyXmlGuardState::Watch::int_type NyXmlGuardState::Watch::underflow()
{
    std::size_t const got = m_theState.take(m_theSource, m_theBytes.data(), m_theBytes.size());
    setg(m_theBytes.data(), m_theBytes.data(), m_theBytes.data() + got);
    return got == 0 ? traits_type::eof() : traits_type::to_int_type(m_theBytes[0]);
}

std::streamsize NyXmlGuardState::Watch::xsgetn(char* to, std::streamsize count)
{
    std::streamsize const held = std::min<std::streamsize>(count, egptr() - gptr());
    if (held > 0) {
        std::copy(gptr(), gptr() + held, to);
        gbump(static_cast<int>(held));
    }
    std::size_t const wanted = static_cast<std::size_t>(count - held);
    return held + static_cast<std::streamsize>(takePieces(to + held, wanted));
}

std::size_t NyXmlGuardState::Watch::takePieces(char* to, std::size_t count)
{
    std::size_t taken = 0;
    while (taken != count) {
        std::size_t const wanted = std::min(count - taken, m_thePiece);
        std::size_t const got = m_theState.take(m_theSource, to + taken, wanted);
        taken += got;
        if (got < wanted)
            break;
    }
    return taken;
}

bool NyXmlGuardState::isOverdue() const
{
    return m_theGuard.time.count() != 0 && std::chrono::steady_clock::now() - m_theStart > m_theGuard.time;
}

// What is delivered when the reading has ended is the end of the document.
std::size_t NyXmlGuardState::take(std::istream& source, char* to, std::size_t count)
{
    if (m_hasEnded)
        return 0;
    std::size_t const room = m_theGuard.bytes - m_theBytes;
    source.read(to, static_cast<std::streamsize>(room < count ? room + 1 : count));
    std::size_t got = static_cast<std::size_t>(source.gcount());
    m_theBytes += got;
    if (got > room) {
        breakLimit(Limit::BYTES, moreThan(m_theGuard.bytes, "of them"));
        return room;
    }
    if (isOverdue())
        breakLimit(Limit::TIME, moreThan(static_cast<std::size_t>(m_theGuard.time.count()), "milliseconds"));
    if (m_theGuard.attributes != noLimit)
        watchTag(to, got);
    if (m_theGuard.text != noLimit && m_theBytes - m_theBytesBefore > m_theGuard.text + blocks)
        breakLimit(Limit::TEXT, moreThan(m_theGuard.text, "bytes in a text, a tag or comments in a row"));
    if (!m_hasEnded && got != 0 && m_theListener && !m_theListener(got, m_theBytesOfFiles))
        end();
    return m_hasEnded ? 0 : got;
}

// A tag that goes on through whole reads is counted while it comes, before a reader has all of it in memory.
void NyXmlGuardState::watchTag(char const* bytes, std::size_t count)
{
    std::string_view const block(bytes, count);
    auto const* const open = static_cast<char const*>(memrchr(bytes, '<', count));
    auto const* const close = static_cast<char const*>(memrchr(bytes, '>', count));
    char const* const last = std::max(open, close, std::less<>());
    if (last == nullptr) {
        m_theTagsAttributes += m_isInTag ? attributesIn(block) : 0;
    } else {
        std::string_view const behind = block.substr(static_cast<std::size_t>(last - bytes) + 1);
        m_isInTag = *last == '<' && !behind.empty() && behind.front() != '!' && behind.front() != '?';
        m_theTagsAttributes = m_isInTag ? attributesIn(behind) : 0;
    }
    if (m_theTagsAttributes > m_theGuard.attributes)
        breakLimit(Limit::ATTRIBUTES, moreThan(m_theGuard.attributes, "of them in a tag"));
}

// Events

void NyXmlGuardState::enter(std::size_t attributes)
{
    if (m_theDepth != 0)
        countItems(1);
    checkItems();
    beginElement();
    checkDepth(m_theDepth);
    if (attributes > m_theGuard.attributes)
        breakLimit(Limit::ATTRIBUTES, moreThan(m_theGuard.attributes, "of them in a tag"));
}

void NyXmlGuardState::checkText(std::size_t size)
{
    if (size > m_theGuard.text)
        breakLimit(Limit::TEXT, moreThan(m_theGuard.text, "bytes in a text"));
}

void NyXmlGuardState::beginRun() noexcept
{
    m_theDepthOfRun = m_theDepth - std::min<std::size_t>(m_theDepth, 1);
    m_theBytesOfRun = m_theWordsOfRun = 0;
}

bool NyXmlGuardState::mayPassPiece(std::string_view words)
{
    checkText(m_theBytesOfRun += words.size());
    if (watchesItems()) {
        std::size_t const count = wordsIn(words);
        m_theWordsOfRun += count;
        m_theItems[m_theDepthOfRun] += count;
        if (m_theItems[m_theDepthOfRun] > m_theGuard.items)
            breakLimit(Limit::ITEMS, moreThan(m_theGuard.items, "items in an element"));
    }
    return !m_hasEnded;
}

void NyXmlGuardState::forgetPieces() noexcept
{
    if (watchesItems())
        m_theItems[m_theDepthOfRun] -= m_theWordsOfRun;
    m_theBytesOfRun = m_theWordsOfRun = 0;
}

void NyXmlGuardState::checkLastPiece(std::size_t size)
{
    checkText(size + m_theBytesOfRun);
    m_theBytesOfRun = m_theWordsOfRun = 0;
}

void NyXmlGuardState::checkHeld(std::size_t size)
{
    if (m_theGuard.text != noLimit && size > m_theGuard.text + blocks)
        breakLimit(Limit::TEXT, moreThan(m_theGuard.text, "bytes in a text"));
}

void NyXmlGuardState::checkDepth(std::size_t depth)
{
    if (depth > m_theGuard.depth)
        breakLimit(Limit::DEPTH, moreThan(m_theGuard.depth, "elements in each other"));
}

// A negative size is none that a container could keep to: it throws.
void NyXmlGuardState::checkClaim(std::string_view size)
{
    errno = 0;
    long long const claim = std::strtoll(std::string(size).c_str(), nullptr, 10);
    if (claim < 0 || claim > INT_MAX || static_cast<unsigned long long>(claim) > m_theGuard.items)
        breakLimit(Limit::ITEMS, moreThan(m_theGuard.items, "items claimed by a size"));
}

void NyXmlGuardState::checkWords(std::size_t count)
{
    countItems(count);
    checkItems();
}

void NyXmlGuardState::checkItems()
{
    if (watchesItems() && m_theItems[m_theDepth] > m_theGuard.items)
        breakLimit(Limit::ITEMS, moreThan(m_theGuard.items, "items in an element"));
}

// Links

// The system is asked who the first document is when there is a second one.
bool NyXmlGuardState::isOpen(Document const& document)
{
    if (!std::exchange(m_isFirstKnown, true))
        m_theDocuments.front().identity = NyXmlFileInput::identityOf(m_theName);
    auto const isSame = [&](Document const& open) {
        return document.identity && open.identity ? *document.identity == *open.identity : document.name == open.name;
    };
    return std::any_of(m_theDocuments.begin(), m_theDocuments.end(), isSame);
}

bool NyXmlGuardState::isBelowFolder(std::string const& path) const
{
    std::error_code error;
    std::filesystem::path const folder = std::filesystem::canonical(m_theGuard.folder, error);
    if (error || path.empty())
        return false;
    std::string const start = folder.string() == "/" ? "/" : folder.string() + '/';
    return path.compare(0, start.size(), start) == 0;
}

std::unique_ptr<std::istream> NyXmlGuardState::openFile(std::string const& path, Document& document)
{
    auto file = std::make_unique<NyXmlFileInput>(path, m_theGuard.onlyRegularFiles);
    if (file->isRefused() && m_theGuard.onlyRegularFiles) {
        breakLimit(Limit::REGULAR_FILES, '"' + path + "\" is none: " + file->error());
        return nullptr;
    }
    if (!file->error().empty())
        return file;
    document.identity = file->identity();
    m_theBytesOfFiles += file->size();
    if (m_theGuard.links == NyXmlGuard::Links::BELOW_FOLDER && !isBelowFolder(file->realPath())) {
        breakLimit(Limit::LINKS, '"' + path + "\" is not below \"" + m_theGuard.folder + '"');
        return nullptr;
    }
    return file;
}

std::unique_ptr<std::istream> NyXmlGuardState::openLink(std::string const& path, bool isRemote)
{
    using Links = NyXmlGuard::Links;
    Document document{ std::nullopt, path };
    if (m_theGuard.links == Links::NONE || (isRemote && m_theGuard.links != Links::ANYWHERE))
        breakLimit(Limit::LINKS, '"' + path + "\" is not followed");
    else if (++m_theIncludes > m_theGuard.includes)
        breakLimit(Limit::INCLUDES, moreThan(m_theGuard.includes, "of them"));
    else if (m_theDocuments.size() > m_theGuard.includeDepth)
        breakLimit(Limit::INCLUDE_DEPTH, moreThan(m_theGuard.includeDepth, "documents in each other"));
    if (m_hasEnded)
        return nullptr;

    std::unique_ptr<std::istream> stream =
        isRemote ? std::make_unique<NyIfHttpStream>(path, 1, m_theGuard.http) : openFile(path, document);
    if (stream == nullptr || stream->fail())
        return nullptr;
    if (m_theGuard.noCycles && isOpen(document))
        breakLimit(Limit::CYCLES, '"' + path + "\" includes itself");
    if (m_hasEnded)
        return nullptr;
    m_theDocuments.push_back(std::move(document));
    return std::make_unique<Include>(*this, std::move(stream), isRemote);
}

void NyXmlGuardState::closeLink()
{
    if (m_theDocuments.size() > 1)
        m_theDocuments.pop_back();
}

// Plug-ins

bool NyXmlGuardState::mayLoad(std::string const& library)
{
    auto const& allowed = m_theGuard.plugIns;
    if (m_theGuard.anyPlugIn || std::find(allowed.begin(), allowed.end(), library) != allowed.end())
        return true;
    breakLimit(Limit::PLUG_INS, '"' + library + "\" may not be loaded");
    return false;
}
