// In-house, no part of the face.

#ifndef NYXMLKIT_FILE_DETAIL_NYXMLINPUTWATCH_H
#define NYXMLKIT_FILE_DETAIL_NYXMLINPUTWATCH_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <streambuf>

/// A stream that passes on another one block by block, and remembers what the parser does not tell.
class NyXmlInputWatch : public std::istream {
public:
    /// Told of the bytes of each read. False ends the stream.
    using Listener = std::function<bool(std::size_t)>;

    explicit NyXmlInputWatch(std::istream& source) : std::istream(nullptr), m_theBuffer(source) { rdbuf(&m_theBuffer); }

    void setListener(Listener listener) { m_theBuffer.listener = std::move(listener); }

    /// The last byte so far that is not white space, or a zero byte.
    char lastBlack() const noexcept { return m_theBuffer.lastBlack; }

    bool hasZeroByte() const noexcept { return m_theBuffer.hasZeroByte; }

private:
    class Buffer final : public std::streambuf {
    public:
        explicit Buffer(std::istream& source) : m_theSource(source) {}
        Listener listener;
        char lastBlack = '\0';
        bool hasZeroByte = false;

    protected:
        int_type underflow() override;
        std::streamsize xsgetn(char* to, std::streamsize count) override;

    private:
        std::size_t take(char* to, std::size_t count);

        std::istream& m_theSource;
        bool m_hasEnded = false;
        std::array<char, 512> m_theBytes; // for callers who go byte by byte
    };

    Buffer m_theBuffer;
};

#endif
