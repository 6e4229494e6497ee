#include <nyXmlKit/standard/NyXmlStandardReader.h>

#include <nyXml/platform/NyIfHttpStream.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXmlKit/standard/detail/NyXmlStandardDocument.h>

#include <filesystem>
#include <fstream>
#include <istream>
#include <system_error>
#include <utility>

namespace {

using Mode = NyXmlStandardReader::Mode;

std::string const includeName = "NyInclude";

} // namespace

NyXmlStandardReader::NyXmlStandardReader() { offerShortcuts<NyXmlStandardReader>(); }

NyXmlStandardReader::NyXmlStandardReader(std::string const& name, std::istream& stream) : NyXmlStandardReader()
{
    push(name, stream, nullptr);
}

NyXmlStandardReader::~NyXmlStandardReader()
{
    while (!m_theDocuments.empty())
        m_theDocuments.pop_back(); // the innermost first: its complaint is about what came last
}

void NyXmlStandardReader::push(std::string const& name, std::istream& stream, std::unique_ptr<std::istream> owned)
{
    m_theDocuments.push_back(std::make_unique<Document>(name, stream, std::move(owned), [this] { return mayReadOn(); }));
    m_theTop = m_theDocuments.back().get();
}

void NyXmlStandardReader::open(std::string const& name, std::istream& stream)
{
    // As in the core: what lies above the first document counts as an include.
    push(name, stream, std::unique_ptr<std::istream>(m_theDocuments.empty() ? nullptr : &stream));
    m_isVersionDue = true;
    m_isVersionGood = true;
}

// Hot: where nobody overrides the hooks, a look at the mode and at the element's name tells that they have nothing to do.
Mode NyXmlStandardReader::readXml()
{
    Mode const mode = m_theTop->readXml();
    bool const isEveryday = !m_isVersionDue && mode != NyXmlFileReader::XML_READER_EOF && !m_theTop->isAtInclude();
    return isEveryday && hasWholeRuns() ? mode : examineEvent();
}

Mode NyXmlStandardReader::examineEvent()
{
    for (;; m_theTop->readXml()) {
        bool const readOn = openFileTest() ? m_theTop->mode() != NyXmlFileReader::XML_READER_ERROR : closeFileTest();
        if (!readOn)
            break;
    }
    if (m_isVersionDue) {
        m_isVersionDue = false;
        m_isVersionGood = checkVersion();
    }
    return m_theTop->mode();
}

bool NyXmlStandardReader::openFileTest()
{
    Mode const mode = m_theTop->mode();
    bool const isTag = mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG;
    if (!isTag || !m_theTop->isAtInclude())
        return false;

    m_isVersionDue = true;
    bool hasType = false;
    bool hasLink = false;
    std::string href;
    int const line = lineCountOfFile();
    while (remainingNumOfAttributes() != 0) {
        std::string const name = attributeName();
        std::string const value = attributeValue();
        if (name == "type") {
            hasType = true;
            if (value != "simple")
                Ny::Print::write(Ny::Print::FAULT,
                                 "NyXmlStandardReader Error: XLink 'type' needs to be simple.\n\tFile: %s\n\tLine: %d\n",
                                 filename(), line);
        } else if (name == "href") {
            hasLink = true;
            href = value;
        } else {
            Ny::Print::write(
                Ny::Print::FAULT,
                "NyXmlStandardReader Error: attribute name can only be simple and href, not %s.\n\tFile: %s\n\tLine: %d\n",
                name.c_str(), filename(), line);
        }
    }
    bool remote = false;
    std::string const path = hasLink ? pathOfLink(href, remote) : std::string();
    if (mode == NyXmlFileReader::XML_READER_START_TAG)
        m_theTop->skip(); // written with an end tag it is the same element
    if (!hasType || !hasLink) {
        Ny::Print::write(Ny::Print::FAULT, "NyXmlStandardReader Error: XLink syntax not correct.\n\tFile: %s\n\tLine: %d\n",
                         filename(), line);
        return true;
    }
    if (m_theTop->mode() == NyXmlFileReader::XML_READER_ERROR)
        return true;
    std::unique_ptr<std::istream> stream = openLink(path, remote);
    if (!stream || stream->fail()) {
        Ny::Print::write(Ny::Print::FAULT, "NyXmlStandardReader Error: not able to open file: %s\n", path.c_str());
        return true;
    }
    std::istream& opened = *stream;
    push(path, opened, std::move(stream));
    return true;
}

bool NyXmlStandardReader::closeFileTest()
{
    if (m_theTop->mode() != NyXmlFileReader::XML_READER_EOF || m_theDocuments.size() < 2)
        return false;
    m_theBytesOfClosed += m_theTop->parser().input().bytesRead();
    m_theDocuments.pop_back();
    m_theTop = m_theDocuments.back().get();
    return true;
}

bool NyXmlStandardReader::mayReadOn() { return true; }

bool NyXmlStandardReader::maySkip(Skipped, std::size_t) { return true; }

std::unique_ptr<std::istream> NyXmlStandardReader::openLink(std::string const& path, bool remote)
{
    if (remote)
        return std::make_unique<NyIfHttpStream>(path, 1);
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) // some systems open one, and fail when it is read
        return nullptr;
    return std::make_unique<std::ifstream>(path, std::ios::in | std::ios::binary);
}

bool NyXmlStandardReader::versionFlag() const { return m_isVersionGood; }

Mode NyXmlStandardReader::mode() const { return m_theTop->mode(); }

NyToken const& NyXmlStandardReader::element() const { return m_theTop->element(); }

NyToken const& NyXmlStandardReader::attributeName(NyToken const& name) const { return m_theTop->attributeName(name); }

NyToken const& NyXmlStandardReader::attributeName() const { return m_theTop->attributeName(); }

std::string const& NyXmlStandardReader::attributeValue(NyToken const& name) { return m_theTop->takeAttribute(name); }

std::string const& NyXmlStandardReader::attributeValue() { return m_theTop->takeAttribute(); }

unsigned int NyXmlStandardReader::numOfAttributes() const { return static_cast<unsigned int>(m_theTop->attributes()); }

std::string const& NyXmlStandardReader::repeatedAttribute() const { return m_theTop->repeatedAttribute(); }

unsigned int NyXmlStandardReader::remainingNumOfAttributes() const
{
    return static_cast<unsigned int>(m_theTop->attributesLeft());
}

std::string const& NyXmlStandardReader::content() const { return m_theTop->content(); }

std::string const& NyXmlStandardReader::contentByWord() const { return m_theTop->word(); }

unsigned int NyXmlStandardReader::contentCount() const { return static_cast<unsigned int>(m_theTop->words()); }

bool NyXmlStandardReader::isContentAvailable() const { return m_theTop->hasContent(); }

void NyXmlStandardReader::setContentVectorFlag(bool flag) { m_theTop->setVectorFlag(flag); }

char const* NyXmlStandardReader::filename() const { return m_theTop->filename().c_str(); }

int NyXmlStandardReader::lineCountOfFile() const { return m_theTop->line(); }

std::string_view NyXmlStandardReader::contentView() const { return m_theTop->contentView(); }

std::string_view NyXmlStandardReader::takeContent() { return m_theTop->takeContent(); }

bool NyXmlStandardReader::findLeaf(NyToken const& name, std::string_view& text)
{
    return !m_isVersionDue && m_theTop->findLeaf(name, text);
}

bool NyXmlStandardReader::findLeaf(NyToken const& name, NyToken const* const* attributes, std::string_view* values,
                                   std::size_t count)
{
    return !m_isVersionDue && m_theTop->findLeaf(name, attributes, values, count);
}

void NyXmlStandardReader::passTextLeaf() { m_theTop->passTextLeaf(); }

void NyXmlStandardReader::passTagLeaf() { m_theTop->passTagLeaf(); }

bool NyXmlStandardReader::nextMatchingEndTag() { return m_theTop->skip(this); }

std::string const& NyXmlStandardReader::getChildrenAsString() { return m_theTop->children(); }

std::istream& NyXmlStandardReader::stream() const { return m_theTop->parser().input().stream(); }

std::string const& NyXmlStandardReader::getComplexStartTagFast() { return m_theTop->fastTag(false); }

std::string const& NyXmlStandardReader::getSimpleStartTagFast() { return m_theTop->fastTag(true); }

std::string const& NyXmlStandardReader::getAttributeValueFast() { return m_theTop->fastAttribute(false); }

std::string const& NyXmlStandardReader::getLastAttributeValueFast() { return m_theTop->fastAttribute(true); }

std::string const& NyXmlStandardReader::getContentByWordFast() { return m_theTop->fastWord(); }

void NyXmlStandardReader::getEndTagFast() { m_theTop->fastEnd(); }

unsigned int NyXmlStandardReader::errorCode() const { return m_theTop->errorCode(); }

std::string const& NyXmlStandardReader::elementNamespace() const { return m_theTop->elementNamespace(); }

std::string const& NyXmlStandardReader::attributeNamespace(NyToken const& name) const
{
    return m_theTop->attributeNamespace(name);
}

std::vector<NyToken> NyXmlStandardReader::openElements() const
{
    std::vector<NyToken> names;
    for (std::unique_ptr<Document> const& document : m_theDocuments) {
        if (!names.empty() && names.back().localName() == includeName)
            names.pop_back(); // this document stands in its place
        document->addOpenElements(names);
    }
    return names;
}

std::size_t NyXmlStandardReader::depth() const noexcept
{
    std::size_t depth = 0;
    for (std::unique_ptr<Document> const& document : m_theDocuments)
        depth += document->depth();
    return depth;
}

std::uint64_t NyXmlStandardReader::eventsPassed() const noexcept { return m_theTop->parser().passed(); }

std::size_t NyXmlStandardReader::openDocuments() const noexcept { return m_theDocuments.size(); }

std::uint64_t NyXmlStandardReader::bytesRead() const noexcept
{
    std::uint64_t bytes = m_theBytesOfClosed;
    for (std::unique_ptr<Document> const& document : m_theDocuments)
        bytes += document->parser().input().bytesRead();
    return bytes;
}

std::size_t NyXmlStandardReader::bytesHeld() const noexcept { return m_theTop->bytesHeld(); }
