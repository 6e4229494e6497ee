#ifndef NYXMLKIT_MODEL_NYXMLWORD_H
#define NYXMLKIT_MODEL_NYXMLWORD_H

#include <nyXml/values/NyXmlBasicType.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>
#include <nyXmlKit/model/NyXmlObjectOf.h>

#include <string>
#include <string_view>
#include <type_traits>

/// The parts of NyXmlWord and NyXmlEnum that don't depend on their types. Not for applications.
namespace NyXmlWordWork {

/// "NyXmlWord Error: file not valid.\n\tNo %s found.\n\tFile: %s\n\tLine: %d\n", print type 4.
NYXML_EXPORT void report(NyXmlReader const& reader, char const* typeWord);
/// Says that a value without a word is written as another's.
NYXML_EXPORT void reportValue(long long value, std::string_view word);
NYXML_EXPORT void give(NyXmlWriter& writer, std::type_info const& type, std::string const& text);
NYXML_EXPORT void describe(NyXmlSchema& schema, std::type_info const& type);
/// As XSD collapses it: without white space at both ends.
NYXML_EXPORT std::string_view stripped(std::string_view text) noexcept;

} // namespace NyXmlWordWork

/// A value written as the world outside writes it: what NyXmlBasicType is, with the words of XML Schema.
///
/// \code
///     NyXmlBoolean closed;   // true and false; 1 and 0 are read, too
///     NyXmlReal speed;       // the shortest text that reads back: 0.1; INF, -INF and NaN
///     NyXmlDateTime time;    // 2010-09-12T10:20:30Z
/// \endcode
/// A text that is no such word is reported, print type 4, and leaves the value as it was; so is an empty one.
///
/// \tparam Rules  see NyXmlWordRules below
template <class Rules>
class NYXML_EXPORT NyXmlWord : public NyXmlBasicType<typename Rules::Value>, public NyXmlMemberKind {
public:
    using Value = typename Rules::Value;
    using Basic = NyXmlBasicType<Value>;

    NyXmlWord() = default;
    NyXmlWord(Value const& value) : Basic(value) {} // implicit, as for NyXmlBasicType
    using Basic::operator=;

    // NyXmlObject
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlWord(*this); }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlWord; }
    bool read(NyXmlReader& reader) override { return reportRefused(reader, Basic::read(reader)); }
    bool readAttribute(NyXmlReader& reader) override { return reportRefused(reader, Basic::readAttribute(reader)); }
    bool write(NyXmlWriter& writer) const override
    {
        if (!NyXmlObject::write(writer))
            return false;
        NyXmlWordWork::give(writer, typeid(Value), text());
        return true;
    }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlWord const*>(other);
        return same != nullptr && this->value() == same->value();
    }

    // NyBaseXmlBasicType
    void setValueFromString(std::string const& text) override
    {
        m_isRefused = !Rules::take(this->value(), NyXmlWordWork::stripped(text));
    }

    // NyXmlMemberKind
    std::string typeWord() const override { return Rules::typeWord; }

    /// As it is written.
    std::string text() const { return Rules::give(this->value()); }

private:
    bool reportRefused(NyXmlReader& reader, bool result)
    {
        if (m_isRefused)
            NyXmlWordWork::report(reader, Rules::typeWord);
        m_isRefused = false;
        return result;
    }

    bool m_isRefused = false; ///< the last text was no word; until it is reported
};

/// How a word takes its value from a text without white space at its ends, false if it can't, and the text of a value.
template <class T>
struct NyXmlWordRules {
    using Value = T;
};

struct NYXML_EXPORT NyXmlBooleanRules : NyXmlWordRules<bool> {
    static constexpr char const* typeWord = "boolean";
    static bool take(bool& value, std::string_view text) noexcept;
    static std::string give(bool value);
};
struct NYXML_EXPORT NyXmlRealRules : NyXmlWordRules<double> {
    static constexpr char const* typeWord = "double";
    static bool take(double& value, std::string_view text);
    static std::string give(double value);
};
struct NYXML_EXPORT NyXmlFloatRules : NyXmlWordRules<float> {
    static constexpr char const* typeWord = "float";
    static bool take(float& value, std::string_view text);
    static std::string give(float value);
};
struct NYXML_EXPORT NyXmlDecimalRules : NyXmlWordRules<double> {
    static constexpr char const* typeWord = "decimal";
    static bool take(double& value, std::string_view text);
    static std::string give(double value);
};
struct NYXML_EXPORT NyXmlLongRules : NyXmlWordRules<long long> {
    static constexpr char const* typeWord = "long";
    static bool take(long long& value, std::string_view text) noexcept;
    static std::string give(long long value);
};
struct NYXML_EXPORT NyXmlUnsignedLongRules : NyXmlWordRules<unsigned long long> {
    static constexpr char const* typeWord = "unsignedLong";
    static bool take(unsigned long long& value, std::string_view text) noexcept;
    static std::string give(unsigned long long value);
};

using NyXmlBoolean = NyXmlWord<NyXmlBooleanRules>;           ///< true and false
using NyXmlReal = NyXmlWord<NyXmlRealRules>;                 ///< a double in its shortest form
using NyXmlFloat = NyXmlWord<NyXmlFloatRules>;               ///< a float in its shortest form
using NyXmlDecimal = NyXmlWord<NyXmlDecimalRules>;           ///< a double in its shortest form without an exponent; finite
using NyXmlLong = NyXmlWord<NyXmlLongRules>;                 ///< 64 bits
using NyXmlUnsignedLong = NyXmlWord<NyXmlUnsignedLongRules>; ///< 64 bits

extern template class NyXmlWord<NyXmlBooleanRules>;
extern template class NyXmlWord<NyXmlRealRules>;
extern template class NyXmlWord<NyXmlFloatRules>;
extern template class NyXmlWord<NyXmlDecimalRules>;
extern template class NyXmlWord<NyXmlLongRules>;
extern template class NyXmlWord<NyXmlUnsignedLongRules>;

template <>
struct NyXmlObjectOf<float> {
    using Type = NyXmlFloat;
};
template <>
struct NyXmlObjectOf<long long> {
    using Type = NyXmlLong;
};
template <>
struct NyXmlObjectOf<unsigned long long> {
    using Type = NyXmlUnsignedLong;
};
template <>
struct NyXmlObjectOf<long> {
    using Type = NyXmlLong;
};
template <>
struct NyXmlObjectOf<unsigned long> {
    using Type = NyXmlUnsignedLong;
};

#endif
