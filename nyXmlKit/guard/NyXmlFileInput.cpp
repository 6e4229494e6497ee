#include <nyXmlKit/guard/NyXmlFileInput.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string reasonOf(int error) { return std::generic_category().message(error); }

char const* kindOf(mode_t mode)
{
    if (S_ISDIR(mode))
        return "it is a directory";
    if (S_ISFIFO(mode))
        return "it is a pipe";
    if (S_ISSOCK(mode))
        return "it is a socket";
    return "it is a device";
}

} // namespace

NyXmlFileInput::NyXmlFileInput(std::string const& path, bool onlyRegular) : std::istream(nullptr), m_theBuffer(path, onlyRegular)
{
    rdbuf(&m_theBuffer);
    if (!m_theBuffer.error().empty())
        setstate(failbit);
}

NyXmlFileInput::~NyXmlFileInput() = default;

std::string NyXmlFileInput::realPath() const
{
    std::array<char, PATH_MAX> path;
    std::string const link = "/proc/self/fd/" + std::to_string(m_theBuffer.descriptor());
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

// A device may act on being opened, and a pipe waits for its other end. So the kind is looked at first, and again when the file is open,
// since the name may lead elsewhere by then; that open does not wait.
NyXmlFileInput::Buffer::Buffer(std::string const& path, bool onlyRegular) { openFile(path, onlyRegular); }

void NyXmlFileInput::Buffer::openFile(std::string const& path, bool onlyRegular)
{
    struct stat status {};
    if (onlyRegular && stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        return refuse(kindOf(status.st_mode));
    m_theDescriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | (onlyRegular ? O_NONBLOCK : 0));
    if (m_theDescriptor < 0 || fstat(m_theDescriptor, &status) != 0) {
        m_theError = reasonOf(errno);
        return;
    }
    if (S_ISDIR(status.st_mode) || (onlyRegular && !S_ISREG(status.st_mode)))
        return refuse(kindOf(status.st_mode));
    m_theIdentity = { status.st_dev, status.st_ino };
    m_theSize = S_ISREG(status.st_mode) ? static_cast<std::uint64_t>(status.st_size) : 0;
}

NyXmlFileInput::Buffer::~Buffer()
{
    if (m_theDescriptor >= 0)
        close(m_theDescriptor);
}

void NyXmlFileInput::Buffer::refuse(char const* why)
{
    m_isRefused = true;
    m_theError = why;
}

// As many bytes as there are up to count: fewer say that the file has ended. A regular file that gives fewer than are asked for, and has given
// all that it has, need not be asked again. One that tells no size may give a piece at a time.
std::size_t NyXmlFileInput::Buffer::take(char* to, std::size_t count)
{
    std::size_t taken = 0;
    bool hasEnded = !m_theError.empty();
    while (taken < count && !hasEnded) {
        ssize_t const got = ::read(m_theDescriptor, to + taken, count - taken);
        if (got < 0) {
            if (errno == EINTR)
                continue;
            m_theError = reasonOf(errno);
            break;
        }
        taken += static_cast<std::size_t>(got);
        m_theBytesGiven += static_cast<std::size_t>(got);
        hasEnded = got == 0 || (taken < count && m_theBytesGiven == m_theSize);
    }
    return taken;
}

NyXmlFileInput::Buffer::int_type NyXmlFileInput::Buffer::underflow()
{
    std::size_t const got = take(m_theBytes.data(), m_theBytes.size());
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
    return held + static_cast<std::streamsize>(take(to + held, static_cast<std::size_t>(count - held)));
}
