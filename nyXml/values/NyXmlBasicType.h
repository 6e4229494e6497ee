#ifndef NYXML_VALUES_NYXMLBASICTYPE_H
#define NYXML_VALUES_NYXMLBASICTYPE_H

#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyAngle.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/values/NyXmlTextOf.h>

#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

/// Comparison of a value with a plain one, such as `mass == 1`, which else could not choose between converting the one or the other side.
/// For the value classes' own use.
namespace NyXmlPlainValue {

/// Whether a U may stand for a T: it converts to it and is no object.
template <class U, class T>
inline constexpr bool isFor = std::is_convertible_v<U const&, T> && !std::is_base_of_v<NyXmlObject, U>;

template <class T, class U>
bool equal(T const& value, U const& plain)
{
    if constexpr (std::is_arithmetic_v<T> && std::is_arithmetic_v<U>) {
        using Common = std::common_type_t<T, U>; // what == would convert to, said aloud
        return static_cast<Common>(value) == static_cast<Common>(plain);
    } else {
        return value == plain;
    }
}

} // namespace NyXmlPlainValue

/// A value that stands in a document as one text: an element's content, an attribute or a word of a run.
///
/// Reading is the same for all of them and rests on setValueFromString().
class NYXML_EXPORT NyBaseXmlBasicType : public NyXmlObject {
public:
    NyBaseXmlBasicType() = default;
    NyBaseXmlBasicType(NyBaseXmlBasicType const&) = default;
    NyBaseXmlBasicType& operator=(NyBaseXmlBasicType const&) = default;

    // NyXmlObject
    ~NyBaseXmlBasicType() override;

    /// Takes the element's content, or nothing if it is empty. A reader that stands on content already gives that, which is how a
    /// sequence feeds word after word into one value.
    ///
    /// \return false if the element holds something else; it is reported with print type 4, and the value has taken the empty text
    bool read(NyXmlReader& reader) override;

    /// Takes the first attribute that waits.
    /// \return true also if none waits, unlike read(); that is reported with print type 4, and the value has taken the empty text
    bool readAttribute(NyXmlReader& reader) override;

    // Its own
    /// Takes the value from a text. A bad text is no error: nothing is printed.
    virtual void setValueFromString(std::string const& text) = 0;
};

/// One scalar, string or unit value that reads, writes and describes itself.
///
/// \code
///     NyXmlBasicType<double> m_thePayload; // a member of a compound: <payload>3.5</payload> or payload="3.5"
///     m_thePayload = 3.5;
///     double twice = 2 * m_thePayload;
/// \endcode
///
/// What an empty element or attribute does depends on T: `int`, `double`, `unsigned char` and the string become zero or empty, and
/// the others keep the value they had. Words that are no number make a number 0, "12abc" is 12, and what else a text gives stands
/// in NyXmlTextOf.h. `bool` is "0" and "1" in a document; "true" and "false" don't give what they name. Texts pass unchanged in both
/// directions: nothing is escaped, so a string with a `<` makes a document that doesn't read back.
///
/// \tparam T  compiled into the library: `char`, `unsigned char`, `short`, `unsigned short`, `int`, `unsigned int`, `double`, `bool`,
///            std::string, NyAngle, NyNonNegReal. A type of your own has a default constructor, copies, ==, and what NyXmlTextOf asks
///            for; `<` if it is to be a key.
template <class T>
class NYXML_EXPORT NyXmlBasicType : public NyBaseXmlBasicType {
    static_assert(std::is_default_constructible_v<T> && std::is_copy_constructible_v<T> && std::is_copy_assignable_v<T>,
                  "NyXmlBasicType<T> holds a value: T needs a default constructor and copies");

public:
    NyXmlBasicType() : m_theValue() {}
    NyXmlBasicType(T const& value) : m_theValue(value) {} // implicit: a plain value may stand where an object is asked for
    NyXmlBasicType(NyXmlBasicType const& other) : NyBaseXmlBasicType(other), m_theValue(other.m_theValue) {}
    /// Counts as a copy: the new object is specified and not initialised.
    NyXmlBasicType(NyXmlBasicType&& other) noexcept(std::is_nothrow_move_constructible_v<T>)
        : NyBaseXmlBasicType(other),
          m_theValue(std::move(other.m_theValue))
    {}

    // NyXmlObject
    ~NyXmlBasicType() override = default;
    void accept(NyXmlObjectVisitor* visitor) const override { visitor->visit(this); }
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlBasicType(*this); }
    bool write(NyXmlWriter& writer) const override
    {
        if (!NyXmlObject::write(writer))
            return false;
        NyXmlTextOf<T>::give(writer, m_theValue);
        return true;
    }
    bool writeSchema(NyXmlSchema& schema) const override
    {
        if (!NyXmlObject::writeSchema(schema))
            return false;
        schema.setType(typeid(T));
        return true;
    }
    /// True for all but the string, which may hold blanks and therefore needs an element of its own.
    bool isBasicType() const override { return NyXmlTextOf<T>::isWord; }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlBasicType const*>(other);
        return same != nullptr && *this == *same;
    }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlBasicType; }
    /// NyXml::NyBasicTypeToken, whatever T is.
    NyToken const& token() const override { return NyXml::NyBasicTypeToken; }

    // NyBaseXmlBasicType
    void setValueFromString(std::string const& text) override { NyXmlTextOf<T>::take(m_theValue, text); }

    NyXmlBasicType& operator=(NyXmlBasicType const& other)
    {
        NyBaseXmlBasicType::operator=(other);
        m_theValue = other.m_theValue;
        return *this;
    }
    NyXmlBasicType& operator=(NyXmlBasicType&& other) noexcept(std::is_nothrow_move_assignable_v<T>)
    {
        NyBaseXmlBasicType::operator=(other);
        m_theValue = std::move(other.m_theValue);
        return *this;
    }
    /// Assigns the value alone; the object does not become specified by it.
    NyXmlBasicType& operator=(T const& value)
    {
        m_theValue = value;
        return *this;
    }

    /// Exact: no tolerance, and a NaN is unequal to itself.
    bool operator==(NyXmlBasicType const& other) const
    {
        return NyXmlObject::operator==(other) && m_theValue == other.m_theValue;
    }
    template <class U, class = std::enable_if_t<NyXmlPlainValue::isFor<U, T>>>
    bool operator==(U const& value) const
    {
        return NyXmlPlainValue::equal(m_theValue, value);
    }
    bool operator<(NyXmlBasicType const& other) const { return m_theValue < other.m_theValue; }

    T const& value() const noexcept { return m_theValue; }
    T& value() noexcept { return m_theValue; }
    /// value(): an object may stand where a plain value is asked for.
    operator T const&() const noexcept { return m_theValue; }
    void setValue(T const& value) { m_theValue = value; }

    static NyXmlBasicType nullObject() { return NyXmlBasicType(); }

private:
    T m_theValue;
};

extern template class NyXmlBasicType<char>;
extern template class NyXmlBasicType<unsigned char>;
extern template class NyXmlBasicType<short>;
extern template class NyXmlBasicType<unsigned short>;
extern template class NyXmlBasicType<int>;
extern template class NyXmlBasicType<unsigned int>;
extern template class NyXmlBasicType<double>;
extern template class NyXmlBasicType<bool>;
extern template class NyXmlBasicType<std::string>;
extern template class NyXmlBasicType<NyAngle>;
extern template class NyXmlBasicType<NyNonNegReal>;

#endif
