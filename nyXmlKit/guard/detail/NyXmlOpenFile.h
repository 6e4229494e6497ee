// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_GUARD_DETAIL_NYXMLOPENFILE_H
#define NYXMLKIT_GUARD_DETAIL_NYXMLOPENFILE_H

#include <nyXml/platform/NyXmlExport.h>

#include <cstddef>
#include <cstdint>
#include <string>

/// A file that is open to be read: its bytes, what it is, and what is wrong with it.
class NYXML_EXPORT NyXmlOpenFile {
public:
    /// Tells one file from another, whatever their names are.
    struct Identity {
        std::uint64_t device = 0;
        std::uint64_t file = 0;
        bool operator==(Identity const& other) const { return device == other.device && file == other.file; }
    };

    /// \param onlyRegular  refuse what is no regular file, before it is opened. Otherwise a directory alone is refused, when somebody
    ///                     looks at it or reads
    NyXmlOpenFile(std::string const& path, bool onlyRegular);
    ~NyXmlOpenFile();
    NyXmlOpenFile(NyXmlOpenFile const&) = delete;
    NyXmlOpenFile& operator=(NyXmlOpenFile const&) = delete;

    /// Asks the system what it is, if nobody has yet. A small file is read in hardly more time than that takes.
    void look();

    /// As many bytes as there are up to count: fewer say that the file has ended, or that it cannot be read on.
    std::size_t take(char* to, std::size_t count);

    std::string const& error() const noexcept { return m_theError; }
    bool isRefused() const noexcept { return m_isRefused; }
    int descriptor() const noexcept { return m_theDescriptor; }

    // Known after a look.

    /// Bytes of a regular file, 0 for others.
    std::uint64_t size() const noexcept { return m_theSize; }
    Identity const& identity() const noexcept { return m_theIdentity; }

private:
    void refuse(char const* why);

    int m_theDescriptor = -1;
    bool const m_isOnlyRegular;
    bool m_isLookedAt = false;
    bool m_isRefused = false;
    std::uint64_t m_theSize = 0;
    std::uint64_t m_theBytesTaken = 0;
    Identity m_theIdentity;
    std::string m_theError;
};

#endif
