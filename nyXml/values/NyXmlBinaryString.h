#ifndef NYXML_VALUES_NYXMLBINARYSTRING_H
#define NYXML_VALUES_NYXMLBINARYSTRING_H

#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/values/NyXmlBasicType.h>

#include <array>
#include <string>
#include <string_view>

/// Any bytes, zero bytes included, as base64 text in a document: `<blob>aGVsbG8=</blob>`.
///
/// The text is one unbroken run: a blank or line end inside counts as a character and spoils the bytes of its group. As with every
/// string, clone() and newObject() give a plain NyXmlBasicType<std::string>.
class NYXML_EXPORT NyXmlBinaryString : public NyXmlBasicType<std::string> {
public:
    NyXmlBinaryString() = default;
    NyXmlBinaryString(NyXmlBinaryString const&) = default;
    NyXmlBinaryString(std::string const& bytes) : NyXmlBasicType<std::string>(bytes) {} // implicit, as for all strings
    NyXmlBinaryString& operator=(NyXmlBinaryString const&) = default;
    using NyXmlBasicType<std::string>::operator=;
    ~NyXmlBinaryString() override;

    /// Takes the bytes from the element's whole inner text.
    /// \return false, with a report of print type 4, for an element in the empty form: `<blob></blob>` holds no bytes, `<blob/>` no text
    bool read(NyXmlReader& reader) override;
    bool write(NyXmlWriter& writer) const override;

    /// The base64 text of the bytes, of RFC 4648 with padding; empty for no bytes.
    std::string toString() const;

    /// Replaces the bytes by those of a base64 text, up to the first "=" in third or fourth place. What is no base64 is not reported.
    void setFromString(std::string const& text);

private:
    static std::string_view const m_EncodeTable;      ///< the character of each 6 bits
    static std::array<char, 256> const m_DecodeTable; ///< the 6 bits of each character, -1 for what is none of the alphabet
};

#endif
