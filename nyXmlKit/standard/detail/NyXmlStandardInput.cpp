#include <nyXmlKit/standard/detail/NyXmlStandardInput.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <iconv.h>
#include <ios>
#include <istream>
#include <string_view>

using namespace std::string_view_literals;

namespace {

constexpr std::size_t blockSize = 16384;
constexpr std::size_t longestDeclaration = 1024;

std::string lowerCase(std::string_view text)
{
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return result;
}

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// What stands behind `encoding=` in the declaration that the text begins with, in lower case. Empty if there is no declaration, or the name is none.
std::string declaredEncoding(std::string_view text)
{
    if (text.substr(0, 5) != "<?xml"sv)
        return {};
    text = text.substr(0, text.find("?>"));
    std::size_t at = text.find("encoding");
    if (at == text.npos)
        return {};
    at = text.find_first_not_of(" \t\r\n=", at + 8);
    if (at == text.npos || (text[at] != '"' && text[at] != '\''))
        return {};
    std::size_t const end = text.find(text[at], at + 1);
    if (end == text.npos)
        return {};
    std::string const name = lowerCase(text.substr(at + 1, end - at - 1));
    bool const isName = !name.empty() && name.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789._-:") == name.npos;
    return isName ? name : std::string();
}

/// Names that mean something else in every process, or a form in memory.
bool isLocal(std::string_view name) { return isOneOf(name, { "char"sv, "wchar_t"sv, "internal"sv, "locale"sv }); }

bool isKnownToParser(std::string_view name)
{
    return isOneOf(name, { ""sv, "utf-8"sv, "us-ascii"sv, "iso-8859-1"sv, "utf-16"sv, "utf-16be"sv, "utf-16le"sv });
}

/// Two bytes a character, and no pairs: each such text is UTF-16.
bool isTwoByte(std::string_view name) { return isOneOf(name, { "iso-10646-ucs-2"sv, "ucs-2"sv, "csunicode"sv }); }

} // namespace

class NyXmlStandardInput::Converter {
public:
    explicit Converter(char const* encoding) : m_descriptor(iconv_open("UTF-8", encoding)) {}
    ~Converter()
    {
        if (isOpen())
            iconv_close(m_descriptor);
    }
    Converter(Converter const&) = delete;
    Converter& operator=(Converter const&) = delete;

    bool isOpen() const noexcept { return m_descriptor != iconv_t(-1); }

    /// Takes what it can off the front of \p from. \return how many bytes it made; \p isBad is set if the next ones are no text
    std::size_t convert(std::string_view& from, char* to, std::size_t size, bool& isBad)
    {
        char* in = const_cast<char*>(from.data()); // iconv changes the pointer alone
        std::size_t inLeft = from.size();
        char* out = to;
        std::size_t outLeft = size;
        isBad = iconv(m_descriptor, &in, &inLeft, &out, &outLeft) == std::size_t(-1) && errno == EILSEQ;
        from.remove_prefix(from.size() - inLeft);
        return size - outLeft;
    }

private:
    iconv_t m_descriptor;
};

NyXmlStandardInput::NyXmlStandardInput(std::istream& stream) : m_stream(stream) {}

NyXmlStandardInput::~NyXmlStandardInput() = default;

char const* NyXmlStandardInput::begin()
{
    m_pending.resize(longestDeclaration);
    m_pending.resize(readStream(m_pending.data(), m_pending.size()));
    std::string_view const text = m_pending;
    auto const beginsWith = [text](std::string_view bytes) { return text.substr(0, bytes.size()) == bytes; };

    std::string encoding;
    if (beginsWith("\xFF\xFE\0\0"sv) || beginsWith("\0\0\xFE\xFF"sv)) {
        encoding = "UTF-32"; // by its byte order mark
    } else if (beginsWith("<\0\0\0"sv)) {
        encoding = "UTF-32LE";
    } else if (beginsWith("\0\0\0<"sv)) {
        encoding = "UTF-32BE";
    } else if (beginsWith("\xFF\xFE"sv) || beginsWith("\xFE\xFF"sv) || beginsWith("<\0"sv) || beginsWith("\0<"sv)) {
        m_isWide = true;
        std::string narrow;
        std::copy_if(text.begin(), text.end(), std::back_inserter(narrow), [](char c) { return c > 0; });
        return isTwoByte(declaredEncoding(narrow)) ? "UTF-16" : nullptr;
    } else if (beginsWith("\x4C\x6F\xA7\x94"sv)) { // <?xm in EBCDIC, whose many kinds agree in what a declaration is written with
        std::string declaration(longestDeclaration, '\0');
        std::string_view bytes = text;
        bool isBad = false;
        Converter ebcdic("IBM037");
        if (ebcdic.isOpen())
            declaration.resize(ebcdic.convert(bytes, declaration.data(), declaration.size(), isBad));
        encoding = declaredEncoding(declaration);
        if (encoding.empty())
            encoding = "IBM037";
    } else if (!beginsWith("\xEF\xBB\xBF"sv)) {
        encoding = declaredEncoding(text);
        if (isKnownToParser(encoding) || isLocal(encoding))
            return nullptr;
    } else {
        return nullptr;
    }
    auto converter = std::make_unique<Converter>(encoding.c_str());
    if (!converter->isOpen())
        return nullptr; // the parser says that it is unknown
    m_converter = std::move(converter);
    return "UTF-8";
}

std::size_t NyXmlStandardInput::readStream(char* buffer, std::size_t size)
{
    std::size_t count = 0;
    try {
        m_stream.read(buffer, static_cast<std::streamsize>(size));
    } catch (std::ios_base::failure const&) {
        // the same as the end of the stream
    }
    count = static_cast<std::size_t>(m_stream.gcount());
    m_bytesRead += count;
    return count;
}

std::size_t NyXmlStandardInput::read(char* buffer, std::size_t size)
{
    if (!m_converter) {
        if (m_taken == m_pending.size())
            return readStream(buffer, size);
        std::size_t const count = m_pending.copy(buffer, size, m_taken);
        m_taken += count;
        return count;
    }
    while (!m_isBroken) {
        std::string_view rest = std::string_view(m_pending).substr(m_taken);
        bool isBad = false;
        std::size_t const count = m_converter->convert(rest, buffer, size, isBad);
        m_taken = m_pending.size() - rest.size();
        if (count != 0)
            return count;
        m_pending.erase(0, m_taken); // a few bytes of one character are left
        m_taken = 0;
        std::size_t const left = m_pending.size();
        m_pending.resize(left + blockSize);
        std::size_t const come = isBad ? 0 : readStream(&m_pending[left], blockSize);
        m_pending.resize(left + come);
        if (come == 0) {
            m_isBroken = true;
            if (left != 0) {
                buffer[0] = '\xFF';
                return 1;
            }
        }
    }
    return 0;
}
