#include <nyXmlKit/file/detail/NyXmlInputWatch.h>

#include <nyXmlKit/guard/detail/NyXmlOpenFile.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <string_view>

std::size_t NyXmlInputWatch::takeFromSource(char* to, std::size_t count)
{
    if (m_theFile != nullptr)
        return m_theFile->take(to, count);
    try {
        m_theSource->read(to, static_cast<std::streamsize>(count));
    } catch (std::exception const&) { // its owner wants it so: at the end, too
    }
    return static_cast<std::size_t>(m_theSource->gcount());
}

std::string NyXmlInputWatch::error() const
{
    if (m_theFile != nullptr)
        return m_theFile->error();
    return m_theSource->bad() ? "its stream is bad" : "";
}

std::size_t NyXmlInputWatch::take(char* to, std::size_t count)
{
    if (m_hasEnded)
        return 0;
    std::size_t const got = takeFromSource(to, count);
    std::string_view const block(to, got);
    std::size_t const black = block.find_last_not_of(" \t\r\n");
    if (black != std::string_view::npos)
        m_theLastBlack = block[black];
    m_hasZeroByte = m_hasZeroByte || std::memchr(to, '\0', got) != nullptr;
    m_hasEnded = got != 0 && m_theListener && !m_theListener(got);
    return m_hasEnded ? 0 : got;
}

NyXmlInputWatch::int_type NyXmlInputWatch::underflow()
{
    std::size_t const got = take(m_theBytes.data(), m_theBytes.size());
    setg(m_theBytes.data(), m_theBytes.data(), m_theBytes.data() + got);
    return got == 0 ? traits_type::eof() : traits_type::to_int_type(m_theBytes[0]);
}

// The reader asks for whole blocks, which go straight into its memory.
std::streamsize NyXmlInputWatch::xsgetn(char* to, std::streamsize count)
{
    std::streamsize const held = std::min<std::streamsize>(count, egptr() - gptr());
    if (held > 0) {
        std::copy(gptr(), gptr() + held, to);
        gbump(static_cast<int>(held));
    }
    std::size_t const wanted = static_cast<std::size_t>(count - held);
    return held + static_cast<std::streamsize>(wanted != 0 ? take(to + held, wanted) : 0);
}
