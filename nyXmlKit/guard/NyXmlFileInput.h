#ifndef NYXMLKIT_GUARD_NYXMLFILEINPUT_H
#define NYXMLKIT_GUARD_NYXMLFILEINPUT_H

#include <nyXml/platform/NyXmlExport.h>
#include <nyXmlKit/guard/detail/NyXmlOpenFile.h>

#include <array>
#include <cstdint>
#include <istream>
#include <optional>
#include <streambuf>
#include <string>

/// A file as a stream of bytes that says what is wrong with it, and what it is.
///
/// \code
///     NyXmlFileInput file("model.xml", true);
///     if (!file.error().empty()) ... // "no such file", say; the stream is fail()
/// \endcode
/// Large reads go past the stream's buffer straight into the caller's memory.
class NYXML_EXPORT NyXmlFileInput : public std::istream {
public:
    /// Tells one file from another, whatever their names are: `device` and `file`, two numbers.
    using Identity = NyXmlOpenFile::Identity;

    /// \param onlyRegular  refuse devices, pipes, sockets and directories; nothing but a regular file is opened then, and opening never
    ///                     waits. Otherwise a directory alone is refused.
    NyXmlFileInput(std::string const& path, bool onlyRegular);
    ~NyXmlFileInput() override;

    /// What went wrong when the file was opened or read, in a few words; empty if nothing did.
    std::string const& error() const noexcept { return m_theBuffer.file().error(); }

    /// Whether the file was refused for its kind, and not because it cannot be read.
    bool isRefused() const noexcept { return m_theBuffer.file().isRefused(); }

    /// Bytes of a regular file, 0 for others.
    std::uint64_t size() const noexcept { return m_theBuffer.file().size(); }

    Identity const& identity() const noexcept { return m_theBuffer.file().identity(); }

    /// Where the open file really is: absolute, without symbolic links. Empty if the system does not tell.
    std::string realPath() const;

    /// The identity of the file that a path leads to, if it is a regular one.
    static std::optional<Identity> identityOf(std::string const& path);

private:
    class Buffer final : public std::streambuf {
    public:
        Buffer(std::string const& path, bool onlyRegular);
        NyXmlOpenFile const& file() const noexcept { return m_theFile; }

    protected:
        int_type underflow() override;
        std::streamsize xsgetn(char* to, std::streamsize count) override;

    private:
        NyXmlOpenFile m_theFile;
        std::array<char, 4096> m_theBytes; // for callers who go byte by byte
    };

    Buffer m_theBuffer;
};

#endif
