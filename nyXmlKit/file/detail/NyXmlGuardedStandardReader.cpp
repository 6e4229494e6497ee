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

bool NyXmlGuardedStandardReader::maySkip(Skipped what, std::size_t size)
{
    switch (what) {
    case Skipped::START_TAG: NyXmlGuardState::enter(size); break;
    case Skipped::EMPTY_TAG:
        NyXmlGuardState::enter(size);
        NyXmlGuardState::leave();
        break;
    case Skipped::END_TAG: NyXmlGuardState::leave(); break;
    case Skipped::TEXT: NyXmlGuardState::checkText(size); break;
    }
    return !hasEnded();
}

// A text or a tag that does not come to its end is no event yet: what it does to the reader is looked at from block to block.
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
