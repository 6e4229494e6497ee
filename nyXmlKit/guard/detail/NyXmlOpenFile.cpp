#include <nyXmlKit/guard/detail/NyXmlOpenFile.h>

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string reasonOf(int error) { return std::generic_category().message(error); }

constexpr char const* isDirectory = "it is a directory";

char const* kindOf(mode_t mode)
{
    if (S_ISDIR(mode))
        return isDirectory;
    if (S_ISFIFO(mode))
        return "it is a pipe";
    if (S_ISSOCK(mode))
        return "it is a socket";
    return "it is a device";
}

} // namespace

// A device may act on being opened, and a pipe waits for its other end. So the kind is looked at first, and again when the file is open,
// since the name may lead elsewhere by then; that open does not wait.
NyXmlOpenFile::NyXmlOpenFile(std::string const& path, bool onlyRegular) : m_isOnlyRegular(onlyRegular)
{
    struct stat status {};
    if (onlyRegular && stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        refuse(kindOf(status.st_mode));
        return;
    }
    m_theDescriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | (onlyRegular ? O_NONBLOCK : 0));
    if (m_theDescriptor < 0)
        m_theError = reasonOf(errno);
    else if (onlyRegular)
        look();
}

NyXmlOpenFile::~NyXmlOpenFile()
{
    if (m_theDescriptor >= 0)
        close(m_theDescriptor);
}

void NyXmlOpenFile::refuse(char const* why)
{
    m_isRefused = true;
    m_theError = why;
}

void NyXmlOpenFile::look()
{
    if (m_isLookedAt || m_theDescriptor < 0)
        return;
    m_isLookedAt = true;
    struct stat status {};
    if (fstat(m_theDescriptor, &status) != 0) {
        m_theError = reasonOf(errno);
        return;
    }
    bool const isRegular = S_ISREG(status.st_mode);
    if (S_ISDIR(status.st_mode) || (m_isOnlyRegular && !isRegular))
        return refuse(kindOf(status.st_mode));
    m_theIdentity = { status.st_dev, status.st_ino };
    m_theSize = isRegular ? static_cast<std::uint64_t>(status.st_size) : 0;
}

// A regular file that gives fewer bytes than are asked for, and has given all that it has, need not be asked again. One that tells no size
// may give a piece at a time.
std::size_t NyXmlOpenFile::take(char* to, std::size_t count)
{
    std::size_t taken = 0;
    bool hasEnded = !m_theError.empty();
    while (taken < count && !hasEnded) {
        ssize_t const got = read(m_theDescriptor, to + taken, count - taken);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0) {
            if (errno == EISDIR)
                refuse(isDirectory);
            else
                m_theError = reasonOf(errno);
            break;
        }
        taken += static_cast<std::size_t>(got);
        m_theBytesTaken += static_cast<std::size_t>(got);
        hasEnded = got == 0 || (taken < count && m_theBytesTaken == m_theSize);
    }
    return taken;
}
