// One stream: how a reader comes and goes, and the state machine of its events.

#include <nyXml/reader/NyXmlFileReader.h>

#include <nyXml/core/detail/NyVirtualSlot.h>
#include <nyXml/platform/NyPrint.h>

#include <array>
#include <cstdint>
#include <iostream>
#include <memory>
#include <typeinfo>

namespace {

/// What a reader has made for its use and the next reader of the thread may use again: small documents spend their time on what comes
/// and goes with them.
class Spare {
public:
    ~Spare() { isGone = true; }

    void swap(NyXmlElementStack& elements, NyXmlAttributeList& attributes, std::unique_ptr<NyXmlNameTable>& names) noexcept
    {
        m_elements.swap(elements);
        m_attributes.swap(attributes);
        m_names.swap(names);
    }
    bool isEmpty() const noexcept { return m_names == nullptr; }

    /// Null once the thread has ended its affairs: readers may go even later.
    static Spare* ofThread() noexcept
    {
        static thread_local Spare spare;
        return isGone ? nullptr : &spare;
    }

private:
    static thread_local bool isGone;

    NyXmlElementStack m_elements;
    NyXmlAttributeList m_attributes;
    std::unique_ptr<NyXmlNameTable> m_names;
};
thread_local bool Spare::isGone = false;

constexpr unsigned int bit(NyXmlFileReader::XML_READER_MODE mode) { return 1u << mode; }

} // namespace

NyToken const NyXmlFileReader::m_theNullToken;
std::string const NyXmlFileReader::m_theNullString;
std::string const NyXmlFileReader::m_schemaInstanceNamespace = "http://www.w3.org/2001/XMLSchema-instance";

NyXmlFileReader::NyXmlFileReader() : NyXmlFileReader(std::string(), std::cin) {}

NyXmlFileReader::NyXmlFileReader(std::string const& name, std::istream& stream)
    : m_theFileName(name),
      m_theBlock(stream, m_theAttributes, m_theContent)
{
    if (Spare* const spare = Spare::ofThread())
        spare->swap(m_theElementStack, m_theAttributes, m_theNames);
    if (!m_theNames)
        m_theNames = std::make_unique<NyXmlNameTable>();
    m_theLastElement = &m_theNames->noName();
}

NyXmlFileReader::NyXmlFileReader(NyXmlFileReader const& other) : NyXmlFileReader(other.m_theFileName, other.m_theBlock.stream())
{
    copyState(other);
}

NyXmlFileReader& NyXmlFileReader::operator=(NyXmlFileReader const& other)
{
    if (this != &other)
        copyState(other);
    return *this;
}

// All but the stream and what belongs to this object alone. How to read is left to the first readXml(): a copy may be of another class.
void NyXmlFileReader::copyState(NyXmlFileReader const& other)
{
    m_theFileName = other.m_theFileName;
    m_theErrorCode = other.m_theErrorCode;
    m_theMode = other.m_theMode;
    m_theElementStack = other.m_theElementStack;
    m_theAttributes = other.m_theAttributes;
    m_theNumOfAttributes = other.m_theNumOfAttributes;
    m_theContent = other.m_theContent;
    m_theContentVectorFlag = other.m_theContentVectorFlag;
    m_theEndTag = other.m_theEndTag;
    m_theSpareToken = other.m_theSpareToken;
    m_theValue = other.m_theValue;
    m_theBlock = other.m_theBlock;
    m_theAttributeName = other.m_theAttributeName;
    m_theAttributeValue = other.m_theAttributeValue;
    m_thePrefix = other.m_thePrefix;
    m_isRunContinued = false;
}

NyXmlFileReader::~NyXmlFileReader()
{
    if (m_theElementStack.size() > 1)
        lastFault("file not well formed.\n\tSome start tags not closed with end tag.");
    if (m_theAttributes.remaining() != 0)
        lastFault("file not well formed.\n\tSome attribute were not used.");
    Spare* const spare = Spare::ofThread();
    if (spare == nullptr || !spare->isEmpty() || m_theNames->isCrowded() || m_theAttributes.isLarge())
        return;
    m_theElementStack.clear();
    m_theAttributes.clear();
    spare->swap(m_theElementStack, m_theAttributes, m_theNames);
}

// A handler that throws, or no memory for the message, must not end the process.
void NyXmlFileReader::lastFault(char const* text) noexcept
{
    try {
        fault(text);
    } catch (...) {}
}

std::istream& NyXmlFileReader::stream() const { return m_theBlock.stream(); }

char const* NyXmlFileReader::filename() const { return m_theFileName.c_str(); }

unsigned int NyXmlFileReader::errorCode() const { return m_theErrorCode; }

void NyXmlFileReader::setErrorCode(unsigned int code) { m_theErrorCode = code; }

int NyXmlFileReader::lineCountOfFile() const { return m_theBlock.line(); }

// The stream was made by a reader front for an include, and this reader was its only user.
void NyXmlFileReader::close() { delete &m_theBlock.stream(); }

void NyXmlFileReader::warnMessage(char const* text) const
{
    Ny::Print::write(Ny::Print::FAULT, "NyXmlFileReader Error: %s\n\tFile: %s\n\tLine: %d\n", text, filename(),
                     m_theBlock.line());
}

// Reports what makes the document not well formed.
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::fault(char const* text)
{
    warnMessage(text);
    m_theErrorCode = 1;
    m_theMode = XML_READER_ERROR;
    return m_theMode;
}

// The functions behind the operations that cut texts. An override of these costs time for each cut by the length of the rest.
std::array<std::uintptr_t, 3> NyXmlFileReader::functionsOf(NyXmlFileReader const& reader)
{
    return { NyVirtualSlot::functionOf(reader, &NyXmlFileReader::nextWord),
             NyVirtualSlot::functionOf(reader, &NyXmlFileReader::nextQuotedToken),
             NyVirtualSlot::functionOf(reader, &NyXmlFileReader::stripLeadingWhiteSpace) };
}

// The class is known once the object stands, so it is asked for at the first event.
void NyXmlFileReader::findWay() const
{
    m_theWay = typeid(*this) == typeid(NyXmlFileReader) ? Way::IN_PLACE : Way::PLAIN;
    m_isWordCutOurs = m_isQuoteCutOurs = m_theWay == Way::IN_PLACE;
    if (m_theWay == Way::IN_PLACE)
        return;
    static auto const plainFunctions = [] {
        std::istream nothing(nullptr);
        NyXmlFileReader const plain(std::string(), nothing);
        return functionsOf(plain);
    }();
    auto const functions = functionsOf(*this);
    auto const isOurs = [&functions](std::size_t i) { return NyVirtualSlot::isSame(functions[i], plainFunctions[i]); };
    m_isWordCutOurs = isOurs(0);
    m_isQuoteCutOurs = isOurs(1) && isOurs(2);
}

NyXmlFileReader::XML_READER_MODE NyXmlFileReader::readXml()
{
    switch (m_theMode) { // what leaving this event asks for
    case XML_READER_START_TAG:
        m_theContent.clear();
        m_theContentVectorFlag = false;
        break;
    case XML_READER_EMPTY_TAG: return eventBehindEmptyTag();
    case XML_READER_ERROR: warnMessage("error mode encountered."); return XML_READER_ERROR;
    case XML_READER_EOF: return anyEvent();
    case XML_READER_END_TAG:
    case XML_READER_CONTENT: break;
    }
    return nextStep();
}

NyXmlFileReader::XML_READER_MODE NyXmlFileReader::eventBehindEmptyTag()
{
    if (!m_theElementStack.empty())
        m_theElementStack.pop();
    return nextStep();
}

// The step to the next event, and whether that may follow this one.
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::anyEvent()
{
    // What may not follow each event, and the complaint if it does. Indexed by XML_READER_MODE; bit(m) is 1u << m.
    struct Follower {
        unsigned int m_refused;
        char const* m_complaint;
    };
    static constexpr char const* contentAfterTag = "file not well formed.\n\tContent cannot follow end tag.";
    static constexpr Follower followers[] = {
        /* EOF       */ { ~(bit(XML_READER_START_TAG) | bit(XML_READER_EMPTY_TAG)),
                          "file not well formed.\n\tFile must begin with start tag." },
        /* START_TAG */ { bit(XML_READER_EOF), "file not well formed.\n\tPremature end of file." },
        /* END_TAG   */ { bit(XML_READER_CONTENT), contentAfterTag },
        /* EMPTY_TAG */ { bit(XML_READER_CONTENT), contentAfterTag },
        /* CONTENT   */ { bit(XML_READER_CONTENT), contentAfterTag },
    };

    Follower const& rule = followers[m_theMode];
    m_theMode = way() == Way::IN_PLACE ? nextEventInPlace() : nextEvent();
    return (rule.m_refused & bit(m_theMode)) != 0 ? fault(rule.m_complaint) : m_theMode;
}
