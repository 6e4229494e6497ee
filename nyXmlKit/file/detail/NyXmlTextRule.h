// In-house, no part of the face.

#ifndef NYXMLKIT_FILE_DETAIL_NYXMLTEXTRULE_H
#define NYXMLKIT_FILE_DETAIL_NYXMLTEXTRULE_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

class NyBaseXmlBasicType;

/// What a text has to be to be one of its type, for a strict reading. The values themselves take any text.
class NyXmlTextRule {
public:
    /// Anything fits.
    NyXmlTextRule() = default;

    /// For the type that a value describes itself with; anything fits where nothing is known of it.
    explicit NyXmlTextRule(std::type_info const& type);

    /// For a value. It stays the caller's, is asked when a text does not fit, and takes texts to answer.
    explicit NyXmlTextRule(NyBaseXmlBasicType& value);

    /// An optional value stands empty where its owner knows no other way to leave it out.
    void letEmptyFit() noexcept { m_doesEmptyFit = true; }

    bool fits(std::string_view text) const;

    /// Whether it fits without a question to the value.
    bool matches(std::string_view text) const;

    /// Takes words off the start of a run as long as they match and are written as most are, if that is known of the type.
    /// \return how many
    std::size_t passEveryday(std::string_view& words, std::array<bool, 256> const& white) const;

    /// The same for all texts that give the same value: "1" for " +01". Of a text that fits.
    std::string valueOf(std::string_view text) const;

    /// What does not fit, in words: "a whole number from 0 to 255".
    std::string wanted() const;

private:
    enum class Kind { ANY, WORDS, CHARACTER, WHOLE, REAL, REAL_FROM_0 };

    bool isWrittenBack(std::string_view text) const;

    Kind m_theKind = Kind::ANY;
    long long m_theLeast = 0;
    unsigned long long m_theMost = 0;
    bool m_isFloat = false;
    bool m_doesEmptyFit = false;
    std::vector<std::string> m_theWords; ///< of an enumeration
    NyBaseXmlBasicType* m_theValue = nullptr;
};

#endif
