#include <nyXml/reader/NyXmlReader.h>

#include <nyXml/compound/NyXmlFactory.h>
#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlInfo.h>
#include <nyXml/platform/NyApplication.h>
#include <nyXml/platform/NyIfHttpStream.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/detail/NyXmlWordSink.h>
#include <nyXml/traversal/NyXmlSignals.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <typeinfo>

namespace {

NyToken const includeToken("NyInclude");

// Hot: asked for each event. The lengths differ as a rule.
bool isInclude(NyToken const& element)
{
    return element.localName().size() == includeToken.localName().size() && element == includeToken;
}

constexpr int faultType = Ny::Print::FAULT;

/// Such a link or directory does not start at the document that holds it.
bool isAbsolute(std::string const& path)
{
    return path.compare(0, 2, "c:") == 0 || path.compare(0, 2, "C:") == 0 || path.compare(0, 1, "/") == 0;
}

/// Cuts the text at its last slash or backslash, which goes. Without one all of it is the file.
void splitAtLastSlash(std::string const& text, std::string& directory, std::string& file)
{
    std::size_t const slash = text.find_last_of("\\/");
    if (slash == std::string::npos) {
        file = text;
        return;
    }
    directory = text.substr(0, slash);
    file = text.substr(slash + 1);
}

std::unique_ptr<std::istream> openStream(std::string const& path, bool remote)
{
    if (remote)
        return std::make_unique<NyIfHttpStream>(path, 1);
    auto file = std::make_unique<std::ifstream>(path, std::ios::in | std::ios::binary);
    // Some systems open a directory and fail when it is read, which would end the document around the include.
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        file->setstate(std::ios::failbit);
    return file;
}

/// The number in front of the first `.`: its low 16 bits.
std::uint16_t majorNumber(std::string const& version)
{
    return static_cast<std::uint16_t>(std::strtol(version.substr(0, version.find('.')).c_str(), nullptr, 10));
}

} // namespace

NyXmlReader::NyXmlReader() = default;

NyXmlReader::NyXmlReader(std::string const& name, std::istream& stream) { push(name, stream); }

NyXmlReader::NyXmlReader(NyXmlReader const& other)
    : m_theFileReaders(other.m_theFileReaders),
      m_theCheckVersionFlag(other.m_theCheckVersionFlag),
      m_theVersionFlag(other.m_theVersionFlag),
      m_theFactoryPointer(other.m_theFactoryPointer),
      m_isSendingSignals(false),
      m_theStreamUsers(other.m_theStreamUsers)
{
    findTop();
}

NyXmlReader::~NyXmlReader()
{
    while (!m_theFileReaders.empty())
        pop();
    m_theFactoryPointer.reset();
}

NyXmlReader& NyXmlReader::operator=(NyXmlReader const& other)
{
    if (this == &other)
        return *this;
    while (m_theFileReaders.size() > other.m_theFileReaders.size())
        pop();
    // A file reader that is assigned to keeps its stream, one that is new to the stack comes with the other's.
    std::size_t const kept = m_theStreamUsers.size();
    m_theStreamUsers.insert(m_theStreamUsers.end(), other.m_theStreamUsers.begin() + static_cast<std::ptrdiff_t>(kept),
                            other.m_theStreamUsers.end());
    m_theFileReaders = other.m_theFileReaders;
    findTop();
    m_theCheckVersionFlag = other.m_theCheckVersionFlag;
    m_theVersionFlag = other.m_theVersionFlag;
    m_theFactoryPointer = other.m_theFactoryPointer;
    return *this;
}

// The stack

void NyXmlReader::findTop() { m_theTop = m_theFileReaders.empty() ? nullptr : &m_theFileReaders.back(); }

void NyXmlReader::push(std::string const& name, std::istream& stream)
{
    if (!m_theFileReaders.empty())
        m_theStreamUsers.push_back(std::make_shared<char>());
    m_theFileReaders.emplace_back(name, stream);
    findTop();
}

void NyXmlReader::pop()
{
    // The bottom stream is the caller's. One of an include is ours, and that of the copies made of us while it was open.
    if (m_theFileReaders.size() > 1) {
        if (m_theStreamUsers.back().use_count() == 1)
            m_theTop->close();
        m_theStreamUsers.pop_back();
    }
    m_theFileReaders.pop_back();
    findTop();
}

NyXmlFileReader* NyXmlReader::plainDocument() const
{
    return typeid(*this) == typeid(NyXmlReader) ? documentOfLeaves() : nullptr;
}

/// The document on top, null if the front has to look at the next event.
NyXmlFileReader* NyXmlReader::documentOfLeaves() const
{
    bool const isPlain = m_theTop != nullptr && !m_theCheckVersionFlag && !isInclude(m_theTop->NyXmlFileReader::element());
    return isPlain ? m_theTop : nullptr;
}

std::vector<NyToken> NyXmlReader::openElements() const
{
    std::vector<NyToken> names;
    for (NyXmlFileReader const& document : m_theFileReaders) {
        if (!names.empty() && isInclude(names.back()))
            names.pop_back(); // this document stands in its place
        std::vector<NyToken> const more = document.openElements();
        names.insert(names.end(), more.begin(), more.end());
    }
    return names;
}

void NyXmlReader::open(std::string const& name, std::istream& stream)
{
    push(name, stream);
    m_theCheckVersionFlag = true;
    m_theVersionFlag = true;
}

// Hot: once per event of every document. Where nobody overrides the hooks, a look at the mode and at the element's name tells that they
// have nothing to do.
NyXmlFileReader::XML_READER_MODE NyXmlReader::readXml()
{
    m_isBehindLeafTag = false;
    NyXmlFileReader::XML_READER_MODE const mode = m_theTop->NyXmlFileReader::readXml();
    bool const isEveryday =
        mode != NyXmlFileReader::XML_READER_EOF && !isInclude(m_theTop->NyXmlFileReader::element()) && !m_theCheckVersionFlag;
    return isEveryday && hasWholeRuns() ? mode : examineEvent();
}

NyXmlFileReader::XML_READER_MODE NyXmlReader::examineEvent()
{
    for (;;) {
        // A document in error keeps its last element in sight: if that is an include, no further event leads away from it.
        bool const readOn = openFileTest() ? m_theTop->mode() != NyXmlFileReader::XML_READER_ERROR : closeFileTest();
        if (!readOn)
            break;
        m_theTop->readXml();
    }
    if (m_theCheckVersionFlag) {
        m_theCheckVersionFlag = false;
        m_theVersionFlag = checkVersion();
    }
    return m_theTop->mode();
}

NyXmlFileReader::XML_READER_MODE NyXmlReader::readRun(NyXmlWordSink& words)
{
    NyXmlShortcuts const* const ways = shortcuts();
    return ways != nullptr ? ways->readRun(*this, words) : readBlocks(words);
}

NyXmlFileReader::XML_READER_MODE NyXmlReader::readInPiecesIf(NyXmlWordSink& words, RunWatch& watch)
{
    class Sink final : public NyXmlWordSink {
    public:
        Sink(NyXmlWordSink& target, RunWatch& asked) : m_target(target), m_asked(asked) {}
        void takeWords(std::string_view text) override
        {
            if (m_asked.mayPass(text))
                m_target.takeWords(text);
        }
        void forgetWords() override
        {
            m_asked.forgetRun();
            m_target.forgetWords();
        }

    private:
        NyXmlWordSink& m_target;
        RunWatch& m_asked;
    } sink(words, watch);
    return readBlocks(sink);
}

NyXmlFileReader::XML_READER_MODE NyXmlReader::readBlocks(NyXmlWordSink& words)
{
    bool const isTaken = m_theTop->takeRun(words);
    NyXmlFileReader::XML_READER_MODE const mode = readXml();
    if (isTaken && (!m_theTop->endRun() || mode != NyXmlFileReader::XML_READER_CONTENT))
        words.forgetWords();
    return mode;
}

bool NyXmlReader::closeFileTest()
{
    if (m_theTop->NyXmlFileReader::mode() != NyXmlFileReader::XML_READER_EOF || m_theFileReaders.size() < 2)
        return false;
    pop();
    return true;
}

// Includes

bool NyXmlReader::openFileTest()
{
    // Whatever the mode: a child that stands between an include's tags is an include's end, too.
    if (!isInclude(element()))
        return false;

    m_theCheckVersionFlag = true;
    std::string path;
    bool remote = false;
    if (takeLink(path, remote))
        openLink(path, remote);
    else
        Ny::Print::write(faultType, "NyXmlReader Error: XLink syntax not correct.\n\tFile: %s\n\tLine: %d\n", filename(),
                         lineCountOfFile());
    return true;
}

/// Takes the attributes of an include element. False if one of the two is missing.
bool NyXmlReader::takeLink(std::string& path, bool& remote)
{
    bool typeSeen = false;
    bool linkSeen = false;
    while (remainingNumOfAttributes() != 0) {
        std::string const name = attributeName();
        if (name == "type") {
            typeSeen = true;
            if (attributeValue() != "simple")
                Ny::Print::write(faultType, "NyXmlReader Error: XLink 'type' needs to be simple.\n\tFile: %s\n\tLine: %d\n",
                                 filename(), lineCountOfFile());
        } else if (name == "href") {
            linkSeen = true;
            path = pathOfLink(attributeValue(), remote);
        } else {
            // Not taken, so it comes again: a document with a foreign attribute here does not get past it, and whoever watches the
            // messages stops it there.
            Ny::Print::write(faultType,
                             "NyXmlReader Error: attribute name can only be simple and href, not %s.\n\tFile: %s\n\tLine: %d\n",
                             name.c_str(), filename(), lineCountOfFile());
        }
    }
    return typeSeen && linkSeen;
}

void NyXmlReader::openLink(std::string const& path, bool remote)
{
    std::unique_ptr<std::istream> stream = openStream(path, remote);
    if (stream->fail()) {
        // The path is not told: programs that watch the messages compare this one as a whole.
        Ny::Print::write(faultType, "NyXmlReader Error: not able to open file: %s\n", "");
        return;
    }
    push(path, *stream);
    stream.release(); // pop() closes it
}

std::string NyXmlReader::pathOfLink(std::string const& href, bool& remote)
{
    std::string host, directory, file;
    parseHref(href, host, directory, file);
    std::string parentHost, parentDirectory, parentFile;
    parseHref(filename(), parentHost, parentDirectory, parentFile);
    if (host.empty())
        host = parentHost;
    else
        parentDirectory.clear();

    remote = !host.empty();
    bool const isFileOfRoot = directory.empty() && isAbsolute(href) && (href == file || href == '/' + file);
    if (!remote && isFileOfRoot)
        return href; // a file directly below `/` or `c:` has no directory that would say so

    if (!isAbsolute(directory) && !parentDirectory.empty())
        directory = directory.empty() ? parentDirectory : parentDirectory + '\\' + directory;
    std::string path;
    if (!host.empty())
        path += host + '/';
    if (!directory.empty())
        path += directory + '/';
    return path + file;
}

void NyXmlReader::parseHref(std::string const& href, std::string& host, std::string& directory, std::string& file)
{
    static constexpr std::string_view scheme = "http://";

    host.clear();
    directory.clear();
    file.clear();
    if (href.compare(0, scheme.size(), scheme) != 0) {
        splitAtLastSlash(href, directory, file);
        return;
    }
    std::size_t const slash = href.find_first_of("\\/", scheme.size());
    host = href.substr(0, slash);
    if (slash != std::string::npos)
        splitAtLastSlash(href.substr(slash + 1), directory, file);
}

// The version

bool NyXmlReader::versionFlag() const { return m_theVersionFlag; }

bool NyXmlReader::checkVersion()
{
    m_theVersionFlag = true;
    if (attributeName(NyXml::NyVersionToken) != NyXml::NyVersionToken)
        return true;
    std::string const version = attributeValue(NyXml::NyVersionToken);
    if (version == NyXmlLibraryVersion)
        return true;

    int const ofFile = majorNumber(version);
    int const ofLibrary = majorNumber(NyXmlLibraryVersion);
    if (ofLibrary < ofFile) {
        Ny::Print::write(faultType,
                         "NyXmlObject::checkVersion warning: Input file version (v%s) is greater than code base version (v%s).\n",
                         version.c_str(), NyXmlLibraryVersion.c_str());
        m_theVersionFlag = false;
    } else if (ofFile + 1 < ofLibrary) {
        Ny::Print::write(
            faultType,
            "NyXmlObject::checkVersion warning: Input file version (v%s) is two versions smaller than code base version (v%s).\n",
            version.c_str(), NyXmlLibraryVersion.c_str());
    }
    return m_theVersionFlag;
}

// Forwarding. What is asked for each element is called by its full name: no subclass is ever on the stack.

NyXmlFileReader::XML_READER_MODE NyXmlReader::mode() const { return m_theTop->NyXmlFileReader::mode(); }

NyToken const& NyXmlReader::element() const { return m_theTop->NyXmlFileReader::element(); }

NyToken const& NyXmlReader::attributeName(NyToken const& name) const { return m_theTop->NyXmlFileReader::attributeName(name); }

NyToken const& NyXmlReader::attributeName() const { return m_theTop->NyXmlFileReader::attributeName(); }

std::string const& NyXmlReader::attributeValue(NyToken const& name) { return m_theTop->NyXmlFileReader::attributeValue(name); }

std::string const& NyXmlReader::attributeValue() { return m_theTop->NyXmlFileReader::attributeValue(); }

unsigned int NyXmlReader::numOfAttributes() const { return m_theTop->numOfAttributes(); }

unsigned int NyXmlReader::remainingNumOfAttributes() const { return m_theTop->NyXmlFileReader::remainingNumOfAttributes(); }

std::string const& NyXmlReader::content() const { return m_theTop->NyXmlFileReader::content(); }

std::string const& NyXmlReader::contentByWord() const { return m_theTop->contentByWord(); }

unsigned int NyXmlReader::contentCount() const { return m_theTop->contentCount(); }

bool NyXmlReader::isContentAvailable() const { return m_theTop->isContentAvailable(); }

void NyXmlReader::setContentVectorFlag(bool flag) { m_theTop->setContentVectorFlag(flag); }

char const* NyXmlReader::filename() const { return m_theTop->filename(); }

int NyXmlReader::lineCountOfFile() const { return m_theTop->lineCountOfFile(); }

bool NyXmlReader::nextMatchingEndTag() { return m_theTop->nextMatchingEndTag(); }

std::string const& NyXmlReader::getChildrenAsString() { return m_theTop->getChildrenAsString(); }

std::istream& NyXmlReader::stream() const { return m_theTop->stream(); }

std::string const& NyXmlReader::getComplexStartTagFast() { return m_theTop->getComplexStartTagFast(); }

std::string const& NyXmlReader::getSimpleStartTagFast() { return m_theTop->getSimpleStartTagFast(); }

std::string const& NyXmlReader::getAttributeValueFast() { return m_theTop->getAttributeValueFast(); }

std::string const& NyXmlReader::getLastAttributeValueFast() { return m_theTop->getLastAttributeValueFast(); }

std::string const& NyXmlReader::getContentByWordFast() { return m_theTop->getContentByWordFast(); }

void NyXmlReader::getEndTagFast() { m_theTop->getEndTagFast(); }

unsigned int NyXmlReader::errorCode() const { return m_theTop->errorCode(); }

// The factory

void NyXmlReader::setFactoryPointer(NyBaseXmlFactory* factory)
{
    if (factory != m_theFactoryPointer.get())
        m_theFactoryPointer.reset(factory);
}

NyBaseXmlFactory const* NyXmlReader::factoryPointer() const { return m_theFactoryPointer.get(); }

bool NyXmlReader::registerComponentCreator(NyToken const& token, NyXmlCreator creator)
{
    bool const made = m_theFactoryPointer == nullptr;
    if (made)
        m_theFactoryPointer.reset(newFactory());
    m_theFactoryPointer->registerComponentCreator(token, creator);
    return made;
}

NyBaseXmlFactory* NyXmlReader::newFactory() const { return new NyXmlFactory; }

// The link count

void NyXmlReader::setLinkTotal(unsigned int total) { m_LinkTotal = total; }

void NyXmlReader::resetLinkCount() { m_LinkCount = 0; }

void NyXmlReader::incrementLinkCount()
{
    ++m_LinkCount;
    double const links = m_LinkCount;
    double const progress = m_LinkTotal != 0 ? links / m_LinkTotal : links;
    if (!m_isSendingSignals)
        return;
    if (m_ProgressSignal == nullptr) { // looked for by those who send: most documents have no links, and many are small
        Ny::ConnectionManager& manager = Ny::Application::instance().connectionManager();
        m_MessageSignal = Ny::namedSignal<Ny::SignalReadWriteStatusTraits>(manager);
        m_ProgressSignal = Ny::namedSignal<Ny::SignalReadWriteProgressTraits>(manager);
    }
    (*m_ProgressSignal)(progress);
    (*m_MessageSignal)(std::string());
}
