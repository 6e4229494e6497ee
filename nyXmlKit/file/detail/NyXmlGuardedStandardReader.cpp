#include <nyXmlKit/file/detail/NyXmlGuardedStandardReader.h>

bool NyXmlGuardedStandardReader::nextMatchingEndTag()
{
    if (hasEnded())
        return false;
    bool const isEmptyTag = mode() == NyXmlFileReader::XML_READER_EMPTY_TAG;
    bool const isFound = NyXmlStandardReader::nextMatchingEndTag();
    if (!isEmptyTag)
        NyXmlGuardState::leave();
    return isFound && !hasEnded();
}

// An element that is skipped gives no events: what it does to the reader is looked at from block to block.
bool NyXmlGuardedStandardReader::mayReadOn()
{
    std::size_t const held = bytesHeld();
    NyXmlGuardState::checkHeld(held);
    NyXmlGuardState::checkDepth(depth());
    if (held != m_theHeld || eventsPassed() != m_thePassed)
        NyXmlGuardState::anEventIsDue();
    m_theHeld = held;
    m_thePassed = eventsPassed();
    return !hasEnded();
}
