#ifndef NYXMLKIT_GUARD_NYXMLGUARD_H
#define NYXMLKIT_GUARD_NYXMLGUARD_H

#include <nyXml/platform/NyIfHttpStream.h>
#include <nyXml/platform/NyXmlExport.h>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

/// What a document may take and do: nothing is limited and everything is allowed until somebody says otherwise.
///
/// \code
///     NyXmlGuard guard = NyXmlGuard::forStrangers();
///     guard.links = NyXmlGuard::Links::BELOW_FOLDER;
///     guard.folder = "/srv/uploads/42";
/// \endcode
/// NyXmlGuarded is a reader that keeps to it, and NyXmlFile takes one among its options. A document that goes beyond a limit is reported
/// with the limit's name, file and line, and the reading ends there. What was read is kept.
struct NYXML_EXPORT NyXmlGuard {
    static constexpr std::size_t noLimit = static_cast<std::size_t>(-1);

    /// Where `NyInclude` elements may lead.
    enum class Links {
        NONE,         ///< the first one ends the reading
        BELOW_FOLDER, ///< to files in `folder` or below it, symbolic links and `..` taken into account
        LOCAL,        ///< to any file
        ANYWHERE,     ///< over HTTP as well, and redirected from there
    };

    /// The limits, for names in messages and in results.
    enum class Limit {
        NONE,
        BYTES,
        DEPTH,
        TEXT,
        ATTRIBUTES,
        ITEMS,
        INCLUDES,
        INCLUDE_DEPTH,
        TIME,
        FAULTS,
        LINKS,
        REGULAR_FILES,
        CYCLES,
        PLUG_INS,
    };

    std::size_t bytes = noLimit; ///< of the document and all that it includes
    std::size_t depth = noLimit; ///< of elements in each other, across includes
    std::size_t text = noLimit; ///< bytes of a text, of an attribute's value; nor may a tag, or comments in a row, be much longer
    std::size_t attributes = noLimit; ///< of one tag
    std::size_t items = noLimit; ///< that a `size` may claim, in whatever element, and that one may hold: children, words of runs
    std::size_t includes = noLimit;     ///< in all
    std::size_t includeDepth = noLimit; ///< of documents in each other
    std::size_t faults = noLimit;       ///< that NyXmlFile collects; NyXmlGuarded alone does not count them

    /// From the reader's making on; 0 is no limit. Looked at whenever bytes are asked for, of a server after each KiB. Waiting in one read
    /// counts afterwards.
    std::chrono::milliseconds time{ 0 };

    Links links = Links::ANYWHERE;
    std::string folder;            ///< for Links::BELOW_FOLDER
    bool onlyRegularFiles = false; ///< no devices, pipes or sockets. They are not even opened
    bool noCycles = false;         ///< no document inside itself
    NyIfHttpStream::Limits http;   ///< how long a server may keep us waiting

    bool anyPlugIn = true;
    std::vector<std::string> plugIns; ///< if not any: exactly as the document's library names reach the system, "./weld.nyp"

    /// Limits for documents from anywhere: 16 MiB, 256 elements in each other, texts of 4 MiB, 256 attributes, a million items, no links
    /// (and if those are allowed, at most 16 and 4 in each other), regular files, no plug-ins, 100 faults, 10 seconds.
    static NyXmlGuard forStrangers();

    /// The name that messages have for a limit, such as "depth".
    static char const* nameOf(Limit limit);
};

#endif
