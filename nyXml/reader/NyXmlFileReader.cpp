// One stream: how a reader comes and goes, and the state machine of its events.

#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlFileReader.h>

#include <iostream>
#include <typeinfo>

namespace {

constexpr std::size_t readBufferSize = 16384;
constexpr std::size_t blockCapacity = 2 * readBufferSize; // room for a full block behind text that was given up

constexpr unsigned int bit(NyXmlFileReader::XML_READER_MODE mode) { return 1u << mode; }

} // namespace

NyToken const NyXmlFileReader::m_theNullToken;
std::string const NyXmlFileReader::m_theNullString;
std::string const NyXmlFileReader::m_schemaInstanceNamespace = "http://www.w3.org/2001/XMLSchema-instance";

NyXmlFileReader::NyXmlFileReader() : NyXmlFileReader(std::string(), std::cin) {}

NyXmlFileReader::NyXmlFileReader(std::string const& name, std::istream& stream)
    : m_theStream(&stream),
      m_theFileName(name),
      m_theReadBuffer(new char[readBufferSize])
{
    m_theBlock.reserve(blockCapacity);
}

NyXmlFileReader::NyXmlFileReader(NyXmlFileReader const& other)
    : m_theStream(other.m_theStream),
      m_theReadBuffer(new char[readBufferSize])
{
    m_theBlock.reserve(blockCapacity);
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
    m_theLineCount = other.m_theLineCount;
    m_theEndTag = other.m_theEndTag;
    m_theSpareToken = other.m_theSpareToken;
    m_theValue = other.m_theValue;
    m_theBlock = other.m_theBlock;
    m_theIndex = other.m_theIndex;
    m_theAttributeName = other.m_theAttributeName;
    m_theAttributeValue = other.m_theAttributeValue;
    m_thePrefix = other.m_thePrefix;
    m_theContentStart = other.m_theContentStart;
    m_theBlockStart = other.m_theBlockStart;
    m_theCounted = other.m_theCounted;
    m_theNewline = other.m_theNewline;
}

NyXmlFileReader::~NyXmlFileReader()
{
    if (m_theElementStack.size() > 1)
        lastFault("file not well formed.\n\tSome start tags not closed with end tag.");
    if (m_theAttributes.remaining() != 0)
        lastFault("file not well formed.\n\tSome attribute were not used.");
}

// A handler that throws, or no memory for the message, must not end the process.
void NyXmlFileReader::lastFault(char const* text) noexcept
{
    try {
        fault(text);
    } catch (...) {}
}

std::istream& NyXmlFileReader::stream() const { return *m_theStream; }

char const* NyXmlFileReader::filename() const { return m_theFileName.c_str(); }

unsigned int NyXmlFileReader::errorCode() const { return m_theErrorCode; }

void NyXmlFileReader::setErrorCode(unsigned int code) { m_theErrorCode = code; }

int NyXmlFileReader::lineCountOfFile() const
{
    countLines();
    return m_theLineCount;
}

// The stream was made by a reader front for an include, and this reader was its only user.
void NyXmlFileReader::close() { delete m_theStream; }

void NyXmlFileReader::warnMessage(char const* text) const
{
    countLines();
    Ny::Print::write(Ny::Print::FAULT, "NyXmlFileReader Error: %s\n\tFile: %s\n\tLine: %d\n", text, filename(), m_theLineCount);
}

// Reports what makes the document not well formed.
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::fault(char const* text)
{
    warnMessage(text);
    m_theErrorCode = 1;
    m_theMode = XML_READER_ERROR;
    return m_theMode;
}

// An override must see every step. The class is known once the object stands, so it is asked for at the first event.
bool NyXmlFileReader::isReadInPlace()
{
    if (m_theWay == Way::UNKNOWN)
        m_theWay = typeid(*this) == typeid(NyXmlFileReader) ? Way::IN_PLACE : Way::PLAIN;
    return m_theWay == Way::IN_PLACE;
}

NyXmlFileReader::XML_READER_MODE NyXmlFileReader::readXml()
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

    switch (m_theMode) { // what leaving this event asks for
    case XML_READER_START_TAG:
        m_theContent.clear();
        m_theContentStart = 0;
        m_theContentVectorFlag = false;
        break;
    case XML_READER_EMPTY_TAG:
        if (!m_theElementStack.empty())
            m_theElementStack.pop();
        break;
    case XML_READER_ERROR: warnMessage("error mode encountered."); return XML_READER_ERROR;
    case XML_READER_EOF:
    case XML_READER_END_TAG:
    case XML_READER_CONTENT: break;
    }
    if (m_theWay == Way::IN_PLACE && m_theMode != XML_READER_EOF && everydayEventInPlace())
        return m_theMode;
    Follower const& rule = followers[m_theMode];
    m_theMode = isReadInPlace() ? nextEventInPlace() : nextEvent();
    return (rule.m_refused & bit(m_theMode)) != 0 ? fault(rule.m_complaint) : m_theMode;
}
