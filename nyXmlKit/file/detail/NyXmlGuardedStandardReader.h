// In-house, no part of the face.

#ifndef NYXMLKIT_FILE_DETAIL_NYXMLGUARDEDSTANDARDREADER_H
#define NYXMLKIT_FILE_DETAIL_NYXMLGUARDEDSTANDARDREADER_H

#include <nyXmlKit/guard/NyXmlGuarded.h>
#include <nyXmlKit/standard/NyXmlStandardReader.h>

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <string>

/// Keeps a document in XML 1.0 within limits. That reader opens its includes by an operation of its own, and may be asked in the middle of
/// an event.
class NyXmlGuardedStandardReader : public NyXmlGuarded<NyXmlStandardReader> {
public:
    NyXmlGuardedStandardReader(std::string const& name, std::istream& stream, NyXmlGuard const& guard)
        : NyXmlGuarded<NyXmlStandardReader>(name, stream, guard)
    {
        offerShortcuts<NyXmlGuardedStandardReader, NyXmlGuarded<NyXmlStandardReader>>();
    }

    bool nextMatchingEndTag() override;

protected:
    bool openFileTest() override { return !hasEnded() && NyXmlStandardReader::openFileTest(); }
    bool mayReadOn() override;
    bool maySkip(Skipped what, std::size_t size) override;
    std::unique_ptr<std::istream> openLink(std::string const& path, bool remote) override
    {
        return NyXmlGuardState::openLink(path, remote);
    }

private:
    friend class NyXmlReader;

    // Where the reader was at the last block: a tag or comment that goes on moves none of it.
    std::size_t m_theHeld = 0;
    std::uint64_t m_thePassed = 0;
};

#endif
