#include <nyXmlKit/file/detail/NyXmlFileOutput.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

/// Where a path leads through its links, the last of which may lead to nothing yet.
std::string targetOf(std::string const& path)
{
    fs::path target = path;
    std::error_code error;
    for (int links = 0; links < 40 && fs::is_symlink(fs::symlink_status(target, error)); ++links) {
        fs::path const next = fs::read_symlink(target, error);
        if (error)
            break;
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
    return target.string();
}

} // namespace

// The buffer

NyXmlFileOutput::Buffer::~Buffer()
{
    if (descriptor >= 0)
        close(descriptor);
}

bool NyXmlFileOutput::Buffer::sendAll(char const* bytes, std::size_t count)
{
    while (count != 0 && error == 0) {
        ssize_t const sent = ::write(descriptor, bytes, count);
        if (sent < 0 && errno != EINTR)
            error = errno;
        if (sent > 0) {
            bytes += sent;
            count -= static_cast<std::size_t>(sent);
        }
    }
    return error == 0;
}

bool NyXmlFileOutput::Buffer::send()
{
    std::size_t const held = static_cast<std::size_t>(pptr() - pbase());
    setp(m_theBytes.get(), m_theBytes.get() + size);
    return sendAll(m_theBytes.get(), held);
}

NyXmlFileOutput::Buffer::int_type NyXmlFileOutput::Buffer::overflow(int_type c)
{
    if (!send())
        return traits_type::eof();
    if (!traits_type::eq_int_type(c, traits_type::eof()))
        sputc(traits_type::to_char_type(c));
    return traits_type::not_eof(c);
}

std::streamsize NyXmlFileOutput::Buffer::xsputn(char const* bytes, std::streamsize count)
{
    if (count > epptr() - pptr()) {
        if (!send())
            return 0;
        if (count > static_cast<std::streamsize>(size))
            return sendAll(bytes, static_cast<std::size_t>(count)) ? count : 0;
    }
    if (count > 0) {
        std::memcpy(pptr(), bytes, static_cast<std::size_t>(count));
        pbump(static_cast<int>(count));
    }
    return count;
}

// The file

NyXmlFileOutput::NyXmlFileOutput(std::string const& path) : std::ostream(nullptr), m_theTarget(targetOf(path))
{
    rdbuf(&m_theBuffer);
    struct stat old {};
    bool const isThere = stat(m_theTarget.c_str(), &old) == 0;
    if (!isThere && (errno != ENOENT || m_theTarget.empty())) {
        fail(Step::OPEN, errno);                   // links in a circle, say: there is no place to write to
    } else if (isThere && !S_ISREG(old.st_mode)) { // a pipe, a terminal: nothing can take its place
        m_theBuffer.descriptor = open(m_theTarget.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
        if (m_theBuffer.descriptor < 0)
            fail(Step::OPEN, errno);
    } else if (isThere && access(m_theTarget.c_str(), W_OK) != 0) {
        fail(Step::OPEN, errno); // a document that may not be written may not be replaced
    } else {
        openBeside(isThere ? &old : nullptr);
    }
}

NyXmlFileOutput::~NyXmlFileOutput()
{
    if (!m_theBeside.empty())
        unlink(m_theBeside.c_str());
}

bool NyXmlFileOutput::fail(Step step, int error)
{
    setstate(badbit);
    if (m_theFailedStep == Step::NONE) {
        m_theFailedStep = step;
        m_theReason = error != 0 ? std::generic_category().message(error) : std::string();
    }
    return false;
}

// The name is one that nobody has, also of those who write the same document at the same time.
bool NyXmlFileOutput::openBeside(struct stat const* old)
{
    mode_t const mode = old != nullptr ? old->st_mode & 07777 : 0666;
    std::string path;
    for (unsigned int number = 0; m_theBuffer.descriptor < 0; ++number) {
        path = m_theTarget + ".new-" + std::to_string(number);
        m_theBuffer.descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, old != nullptr ? 0600 : mode);
        if (m_theBuffer.descriptor < 0 && (errno != EEXIST || number == 10000))
            return fail(Step::OPEN, errno);
    }
    m_theBeside = path;
    if (old == nullptr)
        return true;
    // Only the administrator may give a file away. A file that is not given away must not act for somebody else.
    int const file = m_theBuffer.descriptor;
    bool const isGiven = fchown(file, old->st_uid, old->st_gid) == 0 || fchown(file, static_cast<uid_t>(-1), old->st_gid) == 0;
    return fchmod(file, isGiven ? mode : mode & 0777) == 0 || fail(Step::OPEN, errno);
}

bool NyXmlFileOutput::commit()
{
    if (m_theFailedStep != Step::NONE)
        return false;
    bool const isSent = m_theBuffer.send();
    if (!isSent || !good())
        return fail(Step::WRITE, m_theBuffer.error);
    if (m_theBeside.empty())
        return true;
    if (fsync(m_theBuffer.descriptor) != 0)
        return fail(Step::SYNC, errno);
    // Some systems tell only now that the disk is full.
    if (close(std::exchange(m_theBuffer.descriptor, -1)) != 0)
        return fail(Step::SYNC, errno);
    if (rename(m_theBeside.c_str(), m_theTarget.c_str()) != 0)
        return fail(Step::RENAME, errno);
    m_theBeside.clear();
    return syncFolder();
}

bool NyXmlFileOutput::syncFolder()
{
    std::string const folder = fs::path(m_theTarget).parent_path().string();
    int const descriptor = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return errno == EACCES || fail(Step::FOLDER, errno); // one may write in a folder that one may not read
    int const error = fsync(descriptor) != 0 ? errno : 0;
    close(descriptor);
    return error == 0 || error == EINVAL || fail(Step::FOLDER, error); // some file systems have no such thing
}
