#include <nyXml/values/NyXmlBinaryString.h>

#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <cstddef>
#include <ostream>

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::array<char, 256> makeDecodeTable()
{
    std::array<char, 256> table{};
    for (char& bits : table)
        bits = static_cast<char>(-1);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        table[static_cast<unsigned char>(alphabet[i])] = static_cast<char>(i);
    return table;
}

} // namespace

std::string_view const NyXmlBinaryString::m_EncodeTable = alphabet;
std::array<char, 256> const NyXmlBinaryString::m_DecodeTable = makeDecodeTable();

NyXmlBinaryString::~NyXmlBinaryString() = default;

bool NyXmlBinaryString::read(NyXmlReader& reader)
{
    if (NyXmlObject::read(reader) && reader.mode() == NyXmlFileReader::XML_READER_START_TAG) {
        setFromString(reader.getChildrenAsString());
        if (reader.mode() == NyXmlFileReader::XML_READER_END_TAG)
            return true;
    }
    Ny::Print::ostream(Ny::Print::FAULT, __PRETTY_FUNCTION__)
        << "NyXmlBinaryString: File not valid.\n\t"
        << "No data found.\n\tFile: " << reader.filename() << "\n\tLine: " << reader.lineCountOfFile() << "\n\n";
    return false;
}

bool NyXmlBinaryString::write(NyXmlWriter& writer) const
{
    if (!NyXmlObject::write(writer))
        return false;
    writer << toString();
    return true;
}

std::string NyXmlBinaryString::toString() const
{
    std::string const& bytes = value();
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::size_t const given = bytes.size() - i; // 1, 2, or 3 and more
        unsigned int bits = 0;                      // 24, the first byte on top
        for (std::size_t k = 0; k < 3; ++k)
            bits = bits << 8 | (k < given ? static_cast<unsigned char>(bytes[i + k]) : 0u);
        text += m_EncodeTable[bits >> 18];
        text += m_EncodeTable[bits >> 12 & 63];
        text += given > 1 ? m_EncodeTable[bits >> 6 & 63] : '=';
        text += given > 2 ? m_EncodeTable[bits & 63] : '=';
    }
    return text;
}

void NyXmlBinaryString::setFromString(std::string const& text)
{
    auto const sixBits = [&text](std::size_t i) { // behind the end stands no character of the alphabet
        return static_cast<unsigned int>(m_DecodeTable[i < text.size() ? static_cast<unsigned char>(text[i]) : 0]);
    };
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); i += 4) {
        bytes += static_cast<char>(sixBits(i) << 2 | (sixBits(i + 1) >> 4 & 3));
        if (i + 2 < text.size()) {
            if (text[i + 2] == '=')
                break;
            bytes += static_cast<char>((sixBits(i + 1) & 15) << 4 | (sixBits(i + 2) >> 2 & 15));
        }
        if (i + 3 < text.size()) {
            if (text[i + 3] == '=')
                break;
            bytes += static_cast<char>((sixBits(i + 2) & 3) << 6 | (sixBits(i + 3) & 63));
        }
    }
    setValue(bytes);
}
