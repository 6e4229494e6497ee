// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_STANDARD_DETAIL_NYXMLSTANDARDINPUT_H
#define NYXMLKIT_STANDARD_DETAIL_NYXMLSTANDARDINPUT_H

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>

/// The bytes of a document as the parser can take them. Part of NyXmlStandardReader.
///
/// What the parser knows by itself (UTF-8, UTF-16, ISO-8859-1, US-ASCII) passes as it stands. If byte order mark or declaration say
/// something else, and iconv knows it, it comes as UTF-8.
class NyXmlStandardInput {
public:
    explicit NyXmlStandardInput(std::istream& stream);
    ~NyXmlStandardInput();

    /// Looks at the first bytes. To be called once, before read().
    /// \return the encoding that the parser has to be told, whatever the declaration says; null to leave it to the parser
    char const* begin();

    /// Whether a character takes two bytes at least.
    bool isWide() const noexcept { return m_isWide; }

    /// \return how many bytes came; 0 at the end. Bytes that are no text in their encoding come as one byte that is none in UTF-8, and
    /// are the end.
    std::size_t read(char* buffer, std::size_t size);

    std::uint64_t bytesRead() const noexcept { return m_bytesRead; }
    std::istream& stream() const noexcept { return m_stream; }

private:
    class Converter;

    std::size_t readStream(char* buffer, std::size_t size);

    std::istream& m_stream;
    std::string m_pending; ///< read and not handed out
    std::size_t m_taken = 0;
    std::uint64_t m_bytesRead = 0;
    std::unique_ptr<Converter> m_converter;
    bool m_isWide = false;
    bool m_isBroken = false;
};

#endif
