#include <nyXmlKit/guard/NyXmlFileInput.h>

#include <algorithm>
#include <cstring>

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

NyXmlFileInput::NyXmlFileInput(std::string const& path, bool onlyRegular) : std::istream(nullptr), m_theBuffer(path, onlyRegular)
{
    rdbuf(&m_theBuffer);
    if (!error().empty())
        setstate(failbit);
}

NyXmlFileInput::~NyXmlFileInput() = default;

std::string NyXmlFileInput::realPath() const
{
    std::array<char, PATH_MAX> path;
    std::string const link = "/proc/self/fd/" + std::to_string(m_theBuffer.file().descriptor());
    ssize_t const length = readlink(link.c_str(), path.data(), path.size());
    return length <= 0 || path[0] != '/' ? std::string() : std::string(path.data(), static_cast<std::size_t>(length));
}

std::optional<NyXmlFileInput::Identity> NyXmlFileInput::identityOf(std::string const& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return Identity{ status.st_dev, status.st_ino };
}

NyXmlFileInput::Buffer::Buffer(std::string const& path, bool onlyRegular) : m_theFile(path, onlyRegular) { m_theFile.look(); }

NyXmlFileInput::Buffer::int_type NyXmlFileInput::Buffer::underflow()
{
    std::size_t const got = m_theFile.take(m_theBytes.data(), m_theBytes.size());
    setg(m_theBytes.data(), m_theBytes.data(), m_theBytes.data() + got);
    return got == 0 ? traits_type::eof() : traits_type::to_int_type(m_theBytes[0]);
}

std::streamsize NyXmlFileInput::Buffer::xsgetn(char* to, std::streamsize count)
{
    std::streamsize const held = std::min<std::streamsize>(count, egptr() - gptr());
    if (held > 0) {
        std::memcpy(to, gptr(), static_cast<std::size_t>(held));
        gbump(static_cast<int>(held));
    }
    return held + static_cast<std::streamsize>(m_theFile.take(to + held, static_cast<std::size_t>(count - held)));
}
