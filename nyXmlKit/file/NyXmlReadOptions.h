#ifndef NYXMLKIT_FILE_NYXMLREADOPTIONS_H
#define NYXMLKIT_FILE_NYXMLREADOPTIONS_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXmlKit/file/NyXmlDialect.h>
#include <nyXmlKit/guard/NyXmlGuard.h>

#include <cstdint>
#include <functional>
#include <optional>

class NyXmlReader;

/// How a document is to be read. Every field may stay as it is.
///
/// \code
///     NyXmlReadOptions options;
///     options.dialect = NyXmlDialect::STANDARD;
///     options.strictness = NyXmlReadOptions::Strictness::ALL;
///     auto const result = NyXmlFile::read("model.xml", model, options);
/// \endcode
struct NYXML_EXPORT NyXmlReadOptions {
    enum class Strictness {
        NONE,          ///< as the library reads: what can be read is taken
        LEFT_OUT_FITS, ///< all but this: a member may be missing that a writer leaves out when it equals its default, see
                       ///< NyXmlWriter::setWriteDefaultDataFlag(): strings, containers and compounds
        ALL,
    };

    enum class Version {
        OF_WHO_KNOWS_IT, ///< the object's if it has an attribute of that name, else the library's
        OF_LIBRARY,      ///< compared with the library's version and taken away, as NyXmlReader does
        OF_OBJECT,       ///< an attribute like any other
    };

    NyXmlDialect dialect = NyXmlDialect::CORE;

    /// Whose the attribute `version` of the root is. Formats of others, such as GPX or OSM, have one of their own. In included documents
    /// it is the library's.
    Version version = Version::OF_WHO_KNOWS_IT;

    /// The root's name; the object's token() if it is empty. Its namespace plays no part, as everywhere in reading.
    NyToken root;

    /// Any root will do, whatever `root` says.
    bool anyRoot = false;

    /// Beyond NONE these are faults, each with its place: a text that is not one of its type, an unknown, missing or repeated
    /// member, a wrong `size`, and a rest that the object has not read.
    Strictness strictness = Strictness::NONE;

    /// Limits and permissions; none if there is none.
    std::optional<NyXmlGuard> guard;

    /// Told how many bytes have been read and how many there are, 0 if nobody knows. Runs on the reading thread, once for each block
    /// read. False cancels. Included documents count too, from when they are opened, if the reading is strict or guarded. What it
    /// throws comes out of the read.
    std::function<bool(std::uint64_t bytes, std::uint64_t total)> progress;

    /// Whether progress goes to the two signals of SignalReadWriteProgressTraits and SignalReadWriteStatusTraits as well: the part
    /// that has been read, or the bare number of bytes if nobody knows how many there are; and then an empty text.
    bool toSignals = true;

    /// Runs before the first byte is read: the place to register classes, or to announce links.
    std::function<void(NyXmlReader&)> prepare;
};

#endif
