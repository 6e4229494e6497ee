// In-house, no part of the face.

#ifndef NYXMLKIT_FILE_DETAIL_NYXMLINPUTWATCH_H
#define NYXMLKIT_FILE_DETAIL_NYXMLINPUTWATCH_H

#include <array>
#include <cstddef>
#include <functional>
#include <istream>
#include <streambuf>
#include <string>
#include <utility>

class NyXmlOpenFile;

/// Passes on a document block by block, and remembers what the parser does not tell.
class NyXmlInputWatch final : private std::streambuf {
public:
    /// Told of the bytes of each read. False ends the stream.
    using Listener = std::function<bool(std::size_t)>;

    explicit NyXmlInputWatch(std::istream& source) : m_theSource(&source), m_theInput(this) {}

    /// With no other stream in between: making one takes a good part of reading a small file.
    explicit NyXmlInputWatch(NyXmlOpenFile& file) : m_theFile(&file), m_theInput(this) {}

    NyXmlInputWatch(NyXmlInputWatch const&) = delete;
    NyXmlInputWatch& operator=(NyXmlInputWatch const&) = delete;

    std::istream& stream() noexcept { return m_theInput; }

    void setListener(Listener listener) { m_theListener = std::move(listener); }

    /// Why less than the document could be had; empty if that is not so.
    std::string error() const;

    /// The last byte so far that is not white space, or a zero byte.
    char lastBlack() const noexcept { return m_theLastBlack; }

    bool hasZeroByte() const noexcept { return m_hasZeroByte; }

protected:
    int_type underflow() override;
    std::streamsize xsgetn(char* to, std::streamsize count) override;

private:
    std::size_t take(char* to, std::size_t count);
    std::size_t takeFromSource(char* to, std::size_t count);

    std::istream* const m_theSource = nullptr;
    NyXmlOpenFile* const m_theFile = nullptr; ///< or this
    std::istream m_theInput;
    Listener m_theListener;
    char m_theLastBlack = '\0';
    bool m_hasZeroByte = false;
    bool m_hasEnded = false;
    std::array<char, 512> m_theBytes; // for callers who go byte by byte
};

#endif
