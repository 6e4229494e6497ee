// The events, the plain way: each step through its virtual operation, on a text of its own. Subclasses come through here, and the exact
// class for all that is not everyday: what a fault prints and leaves behind stands in this file alone.

#include <nyXml/reader/NyXmlFileReader.h>

#include <nyXml/core/detail/NyWhiteSpace.h>
#include <nyXml/platform/NyPrint.h>

#include <utility>

namespace {

constexpr std::size_t none = std::string::npos;

bool beginsWith(std::string const& text, char const* start) { return text.rfind(start, 0) == 0; }

bool endsWith(std::string const& text, std::string_view end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

} // namespace

// A comment is as if the next event had come, in the same mode, and what has been read before it waits until that event is there. A
// hundred thousand comments are a legal prologue, so nothing of it is on the call stack: all that can wait is text.
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::nextEvent()
{
    std::string line;
    for (std::size_t textsWaiting = 0;;) {
        bool const isTag = getLineWithLineCount(line, '<', true);
        bool const isText = !isWhiteSpace(line);
        if (!isTag)
            return concludeText(endInText(isText), textsWaiting);
        if (isText) {
            if (m_theMode != XML_READER_START_TAG)
                return concludeText(textOutOfPlace(), textsWaiting);
            m_theContent.swap(line);
        }
        if (!getLineWithLineCount(line, '>', true))
            return concludeText(endInTag(), textsWaiting);
        if (isComment(line)) {
            textsWaiting += isText ? 1 : 0;
            continue;
        }
        XML_READER_MODE const mode = tagType(line);
        if (mode == XML_READER_ERROR)
            return concludeText(badTag(), textsWaiting);
        return concludeText(mode, textsWaiting + (isText ? 1 : 0));
    }
}

NyXmlFileReader::XML_READER_MODE NyXmlFileReader::endInText(bool isText)
{
    if (m_isRunContinued) { // Text that no tag ends does not count, wherever it went.
        m_theBlock.setLine(m_theLineOfRun);
        m_isRunContinued = false;
    }
    m_theBlock.jumpTo(none);
    return isText ? fault("file not well formed.\n\tExtra characters found before EOF.") : XML_READER_EOF;
}

NyXmlFileReader::XML_READER_MODE NyXmlFileReader::textOutOfPlace()
{
    return fault("file not well formed.\n\tContent can only follow start tag.");
}

// A '<' behind the root's end is nobody's.
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::endInTag()
{
    m_theBlock.jumpTo(none);
    return m_theElementStack.empty() ? XML_READER_EOF : fault("file not well formed.\n\tEOF found before end of tag.");
}

// Reported behind each complaint of tagType(), whatever that was: callers know the pair.
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::badTag()
{
    return fault("file not well formed.\n\tTag contains only white space.");
}

// What becomes of a tag behind text: the text is content if the tag ends its element. Once for each text that waits, and each complains
// for itself.
NyXmlFileReader::XML_READER_MODE NyXmlFileReader::concludeText(XML_READER_MODE mode, std::size_t texts)
{
    for (; texts != 0 && mode != XML_READER_CONTENT; --texts) {
        if (mode == XML_READER_END_TAG) {
            stripContent();
            mode = XML_READER_CONTENT;
        } else {
            mode = fault("file not well formed.\n\tContent did not conclude with proper end tag.");
        }
    }
    return mode;
}

void NyXmlFileReader::stripContent()
{
    if (way() == Way::IN_PLACE)
        m_theContent.trim();
    else
        stripWhiteSpaceFromBounds(m_theContent.string());
}

NyXmlFileReader::XML_READER_MODE NyXmlFileReader::tagType(std::string& tag)
{
    if (isWhiteSpace(tag))
        return XML_READER_ERROR;
    if (tag[0] == '/')
        return endTag(tag);
    bool const isEmptyTag = tag.back() == '/';
    if (tag[0] == ' ')
        return fault("file not well formed.\n\tWhite space cannot exist before start tag name.");
    if (isEmptyTag)
        stripTrailingSlash(tag);
    stripWhiteSpaceFromBounds(tag);
    parseElementAndAttributes(tag); // what is wrong there is told there and stops nothing
    return isEmptyTag ? XML_READER_EMPTY_TAG : XML_READER_START_TAG;
}

NyXmlFileReader::XML_READER_MODE NyXmlFileReader::endTag(std::string const& tag)
{
    if (tag.size() > 1 && tag[1] == ' ')
        return fault("file not well formed.\n\tWhite space cannot exist before end tag name.");
    m_theEndTag.assign(tag.substr(1));
    m_theEndTag.strip();
    swapNamespacePrefixWithUri(m_theEndTag, ELEMENT_NAMESPACE);
    if (m_theElementStack.empty())
        return fault("file not well formed.\n\tMore end tags than start tags.");
    if (m_theEndTag == m_theElementStack.top()) {
        m_theElementStack.pop();
        return XML_READER_END_TAG;
    }
    fault("file not well formed.\n\tEnd tag closed incorrect start tag.");
    Ny::Print::write(Ny::Print::FAULT, "\tStart tag: %s\n\tEnd tag: %s\n", m_theElementStack.top().c_str(), m_theEndTag.c_str());
    return XML_READER_ERROR;
}

bool NyXmlFileReader::parseElementAndAttributes(std::string& line)
{
    m_theElementStack.push(); // before anything can fail: a tag that fails is open, under the name of the element around it
    NyToken element(nextWord(line));
    if (element.empty())
        return refuse("file not well formed.\n\tNo element name found in start tag.");
    dropAttributes();
    if (!parseAttributes(line))
        return false;
    m_theElementStack.name(swapNamespacePrefixWithUri(element, ELEMENT_NAMESPACE));
    m_theNumOfAttributes = static_cast<unsigned int>(m_theAttributes.remaining());
    return true;
}

// Before a new tag's attributes come.
void NyXmlFileReader::dropAttributes()
{
    if (m_theAttributes.remaining() != 0) {
        warnMessage("file possibly not valid.\n\tPrevious attribute names were not used.");
        m_theErrorCode = 2;
    }
    m_theAttributes.clear();
}

// A tag may have a hundred thousand attributes: what was dealt with is not erased before the end, unless an override looks at the rest.
bool NyXmlFileReader::parseAttributes(std::string& line)
{
    std::size_t at = 0;
    auto const stop = [&line, &at](bool result) {
        line.erase(0, at);
        return result;
    };
    while (at != line.size()) { // name = "value" ...
        std::string_view const rest = std::string_view(line).substr(at);
        std::size_t const equals = rest.find('=');
        if (equals == none)
            return stop(refuse("file not well formed.\n\tExtra characters found behind element or attributes."));
        std::string const name(rest.substr(0, NyWhiteSpace::findWhite(rest.substr(0, equals))));
        m_theAttributeName.assign(name);
        if (name.empty())
            return stop(refuse("file not well formed.\n\tMissing attribute name."));
        at += equals + 1;
        if (m_isQuoteCutOurs) {
            at = NyWhiteSpace::findBlack(line, at);
        } else {
            line.erase(0, std::exchange(at, 0));
            stripLeadingWhiteSpace(line);
        }
        if (at == line.size() || (line[at] != '\'' && line[at] != '"'))
            return stop(refuse("file not well formed.\n\tMissing quotes around attribute value."));
        m_theAttributeValue = m_isQuoteCutOurs ? cutQuotedToken(line, at) : nextQuotedToken(line); // splits at a '#'
        std::string const& value = m_theAttributeValue.localName();

        if (beginsWith(name, "xmlns")) {
            declareNamespace(name, value);
        } else if (!beginsWith(name, "xsi:")) {
            swapNamespacePrefixWithUri(m_theAttributeName, ATTRIBUTE_NAMESPACE);
            m_theAttributes.addCopy(m_theAttributeName, value);
        }
    }
    return stop(true);
}

// What nextQuotedToken() does, at a place in the text that moves behind it.
std::string const& NyXmlFileReader::cutQuotedToken(std::string const& text, std::size_t& at)
{
    std::size_t const second = text.find(text[at], at + 1);
    if (second == none) {
        fault("file not well formed.\n\tSecond quote of attribute value is missing.");
        m_theValue.clear();
        return m_theValue;
    }
    m_theValue.assign(text, at + 1, second - at - 1);
    at = NyWhiteSpace::findBlack(text, second + 1);
    return m_theValue;
}

void NyXmlFileReader::declareNamespace(std::string const& name, std::string const& value)
{
    m_thePrefix = name.find(':') == none ? std::string() : name.substr(6); // xmlns:prefix
    std::string const* const bound = m_theElementStack.binding(m_thePrefix);
    if (bound != nullptr && *bound == value)
        Ny::Print::write(Ny::Print::FAULT, "NyXmlReader Error: Namespace already declared: %s\n", value.c_str());
    else if (value != m_schemaInstanceNamespace)
        m_theElementStack.bind(m_thePrefix, value);
}

NyToken& NyXmlFileReader::swapNamespacePrefixWithUri(NyToken& token, DEFAULT_NAMESPACE_OPTION) const
{
    std::size_t const colon = token.localName().find(':');
    if (colon != none)
        token.erase(0, static_cast<unsigned int>(colon + 1));
    return token;
}

// The first '>' has ended the text so far, so that a comment with a '>' in it is not complete and goes on to the next "--" and '>'.
bool NyXmlFileReader::isComment(std::string& line)
{
    if (beginsWith(line, "?"))
        return endsWith(line, "?") || refuse("file not well formed.\n\tDeclaration not properly defined.");
    if (!beginsWith(line, "!--"))
        return false;
    if (endsWith(line, "--"))
        return true;
    for (std::string part;;) {
        if (!getLineWithLineCount(part, '-', true))
            return refuse("file not well formed.\n\tEOF found within comment.");
        line += part;
        line += '-';
        if (!endsWith(line, "--"))
            continue;
        if (!getLineWithLineCount(part, '>', true))
            return refuse("file not well formed.\n\tEOF found within comment.");
        line += part;
        line += '>';
        return endsWith(line, "-->") || refuse("file not well formed.\n\tComment contains extra -- in it.");
    }
}

// The steps that overrides see, on texts of their own.

bool NyXmlFileReader::getLineWithLineCount(std::string& line, char delimiter, bool consume)
{
    return m_theBlock.getLine(line, delimiter, consume);
}

std::string const& NyXmlFileReader::nextQuotedToken(std::string& text)
{
    std::size_t at = 0;
    cutQuotedToken(text, at);
    text.erase(0, at);
    return m_theValue;
}

bool NyXmlFileReader::isWhiteSpace(std::string const& text) const { return NyWhiteSpace::isAll(text); }

void NyXmlFileReader::stripLeadingWhiteSpace(std::string& text) const
{
    std::size_t const first = NyWhiteSpace::findBlack(text);
    if (first != text.size())
        text.erase(0, first);
}

void NyXmlFileReader::stripTrailingWhiteSpace(std::string& text) const
{
    std::size_t const last = text.find_last_not_of(NyWhiteSpace::characters);
    if (last != none)
        text.resize(last + 1);
}

void NyXmlFileReader::stripWhiteSpaceFromBounds(std::string& text) const
{
    stripTrailingWhiteSpace(text);
    stripLeadingWhiteSpace(text);
}

void NyXmlFileReader::stripLeadingSlash(std::string& text) const
{
    if (!text.empty())
        text.erase(0, 1);
}

void NyXmlFileReader::stripTrailingSlash(std::string& text) const
{
    if (!text.empty())
        text.pop_back();
}

// The place behind the text holds its terminator and never the second quote. Subclasses have the slot, so it stays.
void NyXmlFileReader::stripQuotes(std::string&) { fault("file not well formed.\n\tImproper quotes around attribute value."); }
