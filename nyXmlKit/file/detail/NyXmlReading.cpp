#include <nyXmlKit/file/detail/NyXmlReading.h>

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyApplication.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/traversal/NyXmlSignals.h>
#include <nyXmlKit/file/detail/NyXmlGuardedStandardReader.h>
#include <nyXmlKit/file/detail/NyXmlObjectsVersion.h>
#include <nyXmlKit/file/detail/NyXmlStrictChecker.h>
#include <nyXmlKit/file/detail/NyXmlStrictReader.h>
#include <nyXmlKit/guard/NyXmlGuarded.h>
#include <nyXmlKit/guard/detail/NyXmlOpenFile.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <typeinfo>
#include <utility>

namespace {

using Kind = NyXmlFault::Kind;

bool isTag(NyXmlFileReader::XML_READER_MODE mode)
{
    return mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG;
}

bool isOver(NyXmlFileReader::XML_READER_MODE mode)
{
    return mode == NyXmlFileReader::XML_READER_EOF || mode == NyXmlFileReader::XML_READER_ERROR;
}

/// Whether such a fault leaves a document less than whole.
bool breaks(NyXmlFault const& fault)
{
    switch (fault.kind) {
    case Kind::FILE_ERROR:
    case Kind::NOT_WELL_FORMED:
    case Kind::ROOT:
    case Kind::BROKEN_OFF:
    case Kind::BEHIND_ROOT:
    case Kind::LIMIT:
    case Kind::EXCEPTION: return true;
    case Kind::UNREAD:
    case Kind::UNKNOWN_MEMBER:
    case Kind::MISSING_MEMBER:
    case Kind::REPEATED_MEMBER:
    case Kind::BAD_TEXT:
    case Kind::WRONG_SIZE:
    case Kind::BAD_VALUE:
    case Kind::LINK:
    case Kind::VERSION:
    case Kind::PLUG_IN: break;
    }
    return false;
}

bool hasVersion(NyXmlObject const& object)
{
    Ny::Print::ThreadScope const silence([](int, std::string const&, std::string const&) {});
    std::unique_ptr<NyXmlObject> copy(object.clone());
    if (!copy)
        copy.reset(object.newObject());
    auto* const compound = dynamic_cast<NyXmlCompoundType*>(copy.get());
    if (compound == nullptr)
        return false;
    if (!compound->xmlInitialized())
        compound->xmlInit();
    return compound->hasAttributes() && compound->attributeComponentMap().count(NyXml::NyVersionToken) != 0;
}

/// Whether the root's attribute `version` is the object's. A copy is asked, since the object itself would lose its place in the
/// library's memory of shapes; and of small documents in a row the first alone, since that takes as long as to read one.
bool isVersionOf(NyXmlObject const& object, NyXmlReadOptions::Version version)
{
    thread_local std::type_info const* lastType = nullptr;
    thread_local bool lastAnswer = false;
    if (version != NyXmlReadOptions::Version::OF_WHO_KNOWS_IT)
        return version == NyXmlReadOptions::Version::OF_OBJECT;
    if (lastType == nullptr || *lastType != typeid(object)) {
        lastAnswer = hasVersion(object);
        lastType = &typeid(object);
    }
    return lastAnswer;
}

/// What a reader knows of its place. The operation is not virtual, so that its class has to be known.
template <class Reader>
class PlaceOf final : public NyXmlFaultCollector::Follower {
public:
    explicit PlaceOf(Reader const& reader) : m_theReader(reader) {}
    std::vector<NyToken> openElements() const override { return m_theReader.openElements(); }

private:
    Reader const& m_theReader;
};

/// The same with the checker of a strict reading, which is ahead at a text; the reader is at a tag that breaks a limit.
class PlaceInStep final : public NyXmlFaultCollector::Follower {
public:
    /// \param checker  null if nobody asks
    PlaceInStep(Follower const& reader, NyXmlStrictChecker const* checker) : m_theReader(reader), m_theChecker(checker) {}
    std::vector<NyToken> openElements() const override
    {
        std::vector<NyToken> names = m_theChecker->names();
        std::vector<NyToken> open = m_theReader.openElements();
        return open.size() > names.size() ? open : names;
    }
    NyXmlFaultCollector::Told toldElsewhere() const override { return m_theChecker->tells(); }

private:
    Follower const& m_theReader;
    NyXmlStrictChecker const* m_theChecker;
};

using Progress = Ny::SignalReadWriteProgressTraits;
using Status = Ny::SignalReadWriteStatusTraits;

/// One of the library's signals that nobody hears costs a small file a thirtieth of its time, so that is looked at first.
template <class Traits>
bool isHeard()
{
    static std::atomic<bool> const& isHeard = Ny::isSignalHeard<Traits>(Ny::Application::instance().connectionManager());
    return isHeard;
}

template <class Traits, class Value>
void send(Value const& value)
{
    (*Ny::namedSignal<Traits>(Ny::Application::instance().connectionManager()))(value);
}

} // namespace

NyXmlReading::NyXmlReading(std::string const& name, std::istream& stream, NyXmlReadOptions const& options)
    : m_theName(name),
      m_theOptions(options),
      m_theInput(stream),
      m_isStrict(options.strictness != NyXmlReadOptions::Strictness::NONE),
      m_theFaults(name)
{}

NyXmlReading::NyXmlReading(std::string const& path, NyXmlOpenFile& file, NyXmlReadOptions const& options)
    : m_theName(path),
      m_theOptions(options),
      m_theInput(file),
      m_theFile(&file),
      m_isStrict(options.strictness != NyXmlReadOptions::Strictness::NONE),
      m_theFaults(path)
{}

NyXmlReadResult NyXmlReading::read(NyXmlObject& object)
{
    if (m_theOptions.dialect == NyXmlDialect::STANDARD)
        readBy<NyXmlStandardReader, NyXmlGuardedStandardReader>(object);
    else
        readBy<NyXmlReader, NyXmlGuardedReader>(object);
    m_theFaults.flush(); // the reader may have complained when it went
    if (m_theException)
        std::rethrow_exception(m_theException);

    m_theResult.faults = std::move(m_theFaults.faults());
    m_theResult.notices = std::move(m_theFaults.notices());
    worsen(m_theFaults.errorCode());
    m_theResult.isWhole = m_isRootRead && m_isEndSeen && m_theResult.errorCode == 0 && !m_theResult.isCancelled &&
                          std::none_of(m_theResult.faults.begin(), m_theResult.faults.end(), breaks);
    return std::move(m_theResult);
}

/// \tparam Plain, Guarded  the readers of a dialect
template <class Plain, class Guarded>
void NyXmlReading::readBy(NyXmlObject& object)
{
    bool const isGuarded = m_isStrict || m_theOptions.guard;
    if (isVersionOf(object, m_theOptions.version))
        isGuarded ? readGuarded<NyXmlObjectsVersion<Guarded>>(object) : readPlain<NyXmlObjectsVersion<Plain>>(object);
    else
        isGuarded ? readGuarded<Guarded>(object) : readPlain<Plain>(object); // exactly the library's class is the fastest
}

template <class Plain>
void NyXmlReading::readPlain(NyXmlObject& object)
{
    Plain reader(m_theName, m_theInput.stream());
    m_theInput.setListener([this](std::size_t bytes) { return advance(bytes, 0); });
    readWith(reader, object);
}

/// \tparam Guarded  the guarded reader of a dialect
template <class Guarded>
void NyXmlReading::readGuarded(NyXmlObject& object)
{
    NyXmlGuard const guard = m_theOptions.guard.value_or(NyXmlGuard());
    auto const readBy = [&](Guarded& reader) {
        reader.setByteListener([this](std::size_t bytes, std::uint64_t included) { return advance(bytes, included); });
        m_theFaults.setMost(guard.faults, [&reader] { reader.endReading(); });
    };
    if (m_isStrict) {
        NyXmlStrictChecker checker(m_theFaults, object, m_theOptions.strictness == NyXmlReadOptions::Strictness::LEFT_OUT_FITS);
        m_theChecker = &checker;
        NyXmlStrictReader<Guarded> reader(m_theName, m_theInput.stream(), guard, checker);
        readBy(reader);
        readWith(reader, object);
        m_theChecker = nullptr;
        if (checker.areAttributesLeft())
            worsen(2);
    } else {
        Guarded reader(m_theName, m_theInput.stream(), guard);
        readBy(reader);
        readWith(reader, object);
    }
}

template <class Reader>
void NyXmlReading::readWith(Reader& reader, NyXmlObject& object)
{
    PlaceOf<Reader> const place(reader);
    m_theReadersPlace = &place;
    PlaceInStep const inStep(place, m_theChecker);
    using Follower = NyXmlFaultCollector::Follower;
    m_theFaults.setReader(&reader, m_theChecker != nullptr ? static_cast<Follower const*>(&inStep) : &place);
    if (m_theOptions.prepare)
        m_theOptions.prepare(reader);
    try {
        readDocument(reader, object);
    } catch (NyXmlEndOfReading const&) {
        stop();
    }
    worsen(reader.errorCode());
    m_theFaults.setReader(nullptr, nullptr); // what it says when it goes has no place
}

void NyXmlReading::readDocument(NyXmlReader& reader, NyXmlObject& object)
{
    reader.readXml();
    m_theResult.doesVersionFit = reader.versionFlag();
    if (!findRoot(reader, m_theOptions.root.empty() ? object.token() : m_theOptions.root))
        return;
    readObject(reader, object);
    if (!m_theFaults.isClosed())
        readRest(reader);
    if (std::string const error = m_theInput.error(); !error.empty() && !m_theFaults.isClosed())
        m_theFaults.add(Kind::FILE_ERROR, "the file cannot be read to its end: " + error);
}

bool NyXmlReading::findRoot(NyXmlReader& reader, NyToken const& token)
{
    if (!isTag(reader.mode())) {
        m_theFaults.flush();
        if (std::string const error = m_theInput.error(); !error.empty())
            m_theFaults.add(Kind::FILE_ERROR, "the file cannot be read: " + error);
        else if (m_theFaults.faults().empty())
            m_theFaults.add(Kind::ROOT, "there is no root");
        return false;
    }
    std::string const& name = token;
    if (m_theOptions.anyRoot || reader.element() == name)
        return true;
    m_theFaults.flush();
    if (m_theFaults.errorCode() != 1) // a tag that is not well formed has no name
        m_theFaults.add(Kind::ROOT, "the root should be " + name);
    stop();
    return false;
}

void NyXmlReading::readObject(NyXmlReader& reader, NyXmlObject& object)
{
    try {
        object.read(reader);
        m_isRootRead = true;
    } catch (std::exception const& exception) {
        m_theFaults.add(Kind::EXCEPTION, std::string("the object stopped reading: ") + exception.what());
        stop();
    }
}

// What the object has left: the rest of the root, if it was in a hurry, and what stands behind the root.
void NyXmlReading::readRest(NyXmlReader& reader)
{
    if (!m_isStrict)
        dropAttributes(reader);
    std::size_t open = m_theReadersPlace->openElements().size();
    if (reader.mode() == NyXmlFileReader::XML_READER_EMPTY_TAG)
        --open;
    if (open != 0 && m_isStrict && !isOver(reader.mode())) {
        m_theFaults.add(Kind::UNREAD, "the rest of the element is not read");
        m_theChecker->close();
    }
    Mode mode = reader.mode();
    while (!isOver(mode) && !m_theFaults.isClosed()) {
        mode = reader.readXml();
        if (isTag(mode) && open == 0) {
            m_theFaults.add(Kind::BEHIND_ROOT, "something stands behind the root: " + std::string(reader.element().token()));
            stop();
        }
        open += mode == NyXmlFileReader::XML_READER_START_TAG ? 1 : 0;
        open -= open != 0 && (mode == NyXmlFileReader::XML_READER_END_TAG || mode == NyXmlFileReader::XML_READER_CONTENT) ? 1 : 0;
        while (reader.remainingNumOfAttributes() != 0)
            reader.attributeValue();
    }
    if (mode != NyXmlFileReader::XML_READER_EOF || m_theFaults.isClosed())
        return;
    m_isEndSeen = true;
    if (open != 0)
        m_theFaults.add(Kind::BROKEN_OFF, "the document breaks off: the element is not closed");
    examineEnd();
}

// Attributes of the element read last. Were another tag to follow, the reader would complain.
void NyXmlReading::dropAttributes(NyXmlReader& reader)
{
    if (isOver(reader.mode()) || reader.remainingNumOfAttributes() == 0)
        return;
    m_theFaults.add(Kind::UNKNOWN_MEMBER, "attributes were not used: " + reader.attributeName().token());
    worsen(2);
    while (reader.remainingNumOfAttributes() != 0)
        reader.attributeValue();
}

// What the core's reader passes over in silence.
void NyXmlReading::examineEnd()
{
    if (m_theOptions.dialect == NyXmlDialect::STANDARD)
        return;
    if (m_theInput.hasZeroByte())
        m_theFaults.add(Kind::NOT_WELL_FORMED, "a zero byte hides what follows it");
    else if (m_theInput.lastBlack() != '>')
        m_theFaults.add(Kind::BEHIND_ROOT, "something stands behind the root: a tag that is not closed");
}

// 1 is worse than 2.
void NyXmlReading::worsen(unsigned int code)
{
    if (code == 1 || m_theResult.errorCode == 0)
        m_theResult.errorCode = code;
}

void NyXmlReading::stop() { m_theFaults.close(); }

// The system is asked for the file's size when somebody wants to know.
std::uint64_t NyXmlReading::totalWith(std::uint64_t included) const
{
    if (m_theFile == nullptr)
        return 0;
    m_theFile->look();
    return m_theFile->size() != 0 ? m_theFile->size() + included : 0;
}

bool NyXmlReading::advance(std::size_t bytes, std::uint64_t included)
{
    m_theBytes += bytes;
    bool const areSignalsHeard = m_theOptions.toSignals && (isHeard<Progress>() || isHeard<Status>());
    if (!areSignalsHeard && !m_theOptions.progress)
        return true;
    std::uint64_t const total = totalWith(included);
    try {
        if (areSignalsHeard) {
            double const read = static_cast<double>(m_theBytes);
            send<Progress>(total != 0 ? read / static_cast<double>(total) : read);
            send<Status>(std::string());
        }
        m_theResult.isCancelled = m_theOptions.progress && !m_theOptions.progress(m_theBytes, total);
    } catch (...) {
        m_theException = std::current_exception();
        m_theResult.isCancelled = true;
    }
    if (m_theResult.isCancelled)
        stop(); // what is said of the sudden end is no fault of the document
    return !m_theResult.isCancelled;
}
