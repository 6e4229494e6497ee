#ifndef NYXML_VALUES_NYXMLENUMTYPE_H
#define NYXML_VALUES_NYXMLENUMTYPE_H

#include <nyXml/core/NyXml.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/values/NyXmlBasicType.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

/// The parts of NyXmlEnumType that don't depend on its type. Not for applications.
namespace NyXmlEnumText {

/// Takes the text of an element or an attribute. What is no text is reported with print type 4, and the text stays empty.
/// \return false if the element held something else than a text
NYXML_EXPORT bool takeContent(NyXmlReader& reader, std::string& text, char const* location);
NYXML_EXPORT void takeAttribute(NyXmlReader& reader, std::string& text, char const* location);

NYXML_EXPORT void give(NyXmlWriter& writer, std::string const& word);

NYXML_EXPORT std::string const& none(); ///< the empty word

} // namespace NyXmlEnumText

/// A value that is a word in a document and a T in memory: `<mode>fast</mode>` or `mode="fast"`.
///
/// Each object has a table of its own, which its owner fills, normally in the xmlInit() of a subclass:
/// \code
///     class Mode : public NyXmlEnumType<int> {
///     public:
///         using NyXmlEnumType<int>::NyXmlEnumType;
///         using NyXmlEnumType<int>::operator=; // mode = 1
///         NyXmlObject* clone() const override { return new Mode(*this); }
///         NyXmlObject* newObject() const override { return new Mode; }
///         bool xmlInit() override
///         {
///             setEnumString(0, "slow");
///             setEnumString(1, "fast");
///             return NyXmlEnumType<int>::xmlInit();
///         }
///     };
/// \endcode
/// A value that the table doesn't know is written as the table's first word, without a message.
///
/// Copies take the value and leave the table: a new object has none until its xmlInit(), an assigned one keeps its own.
///
/// \tparam T  compiled into the library: `unsigned char`, `short`, `unsigned short`, `int`, `unsigned int`, `bool`, NyNonNegReal
template <class T>
class NYXML_EXPORT NyXmlEnumType : public NyBaseXmlBasicType {
public:
    NyXmlEnumType() : m_theValue() {}
    NyXmlEnumType(T const& value) : m_theValue(value) {} // implicit, as for NyXmlBasicType
    NyXmlEnumType(NyXmlEnumType const& other) : NyBaseXmlBasicType(other), m_theValue(other.m_theValue) {}
    NyXmlEnumType& operator=(NyXmlEnumType const& other)
    {
        NyBaseXmlBasicType::operator=(other);
        m_theValue = other.m_theValue;
        return *this;
    }
    /// Assigns the value alone.
    NyXmlEnumType& operator=(T const& value)
    {
        m_theValue = value;
        return *this;
    }

    // NyXmlObject
    ~NyXmlEnumType() override = default;
    void accept(NyXmlObjectVisitor* visitor) const override { visitor->visit(this); }
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlEnumType(*this); }

    /// \return false if the word is not in the table, without a message, or if the element holds something else than a text, which is
    ///         reported with print type 4; the value is left alone then
    bool read(NyXmlReader& reader) override
    {
        std::string text;
        return NyXmlObject::read(reader) && NyXmlEnumText::takeContent(reader, text, __PRETTY_FUNCTION__) &&
               findEnumString(text, m_theValue);
    }
    /// The same for the first attribute that waits. If none does, that is reported with print type 4, and the word is the empty one.
    bool readAttribute(NyXmlReader& reader) override
    {
        if (!NyXmlObject::read(reader))
            return false;
        std::string text;
        NyXmlEnumText::takeAttribute(reader, text, __PRETTY_FUNCTION__);
        return findEnumString(text, m_theValue);
    }
    bool write(NyXmlWriter& writer) const override
    {
        if (!NyXmlObject::write(writer))
            return false;
        NyXmlEnumText::give(writer, enumString());
        return true;
    }
    /// A string: the words of the table are not described.
    bool writeSchema(NyXmlSchema& schema) const override
    {
        if (!NyXmlObject::writeSchema(schema))
            return false;
        schema.describingWords(m_theEnumStrings);
        schema.setType(typeid(std::string));
        return true;
    }
    bool isBasicType() const override { return true; }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlEnumType const*>(other);
        return same != nullptr && *this == *same;
    }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlEnumType; }
    NyToken const& token() const override { return NyXml::NyEnumTypeToken; }

    // NyBaseXmlBasicType
    /// An unknown word leaves the value alone.
    void setValueFromString(std::string const& text) override { findEnumString(text, m_theValue); }

    // Its own
    virtual T const& value() const { return m_theValue; }
    virtual T& value() { return m_theValue; }
    /// Any value; it need not be in the table.
    virtual void setValue(T const& value) { m_theValue = value; }

    /// The first word of the value; of a value that the table doesn't know, the table's first word; of an empty table, the empty word.
    virtual std::string const& enumString(T const& value) const
    {
        if (m_theEnumStrings.empty())
            return NyXmlEnumText::none();
        auto const found = std::find(m_theEnumValues.begin(), m_theEnumValues.end(), value);
        return m_theEnumStrings[found == m_theEnumValues.end() ? 0 : static_cast<std::size_t>(found - m_theEnumValues.begin())];
    }
    virtual std::string const& enumString() const { return enumString(m_theValue); }

    /// Adds a pair. A word that the table has keeps its value; a value may have several words.
    virtual void setEnumString(T const& value, std::string const& word)
    {
        T known = value;
        if (findEnumString(word, known))
            return;
        m_theEnumStrings.push_back(word);
        try {
            m_theEnumValues.push_back(value);
        } catch (...) { // the tables keep one length
            m_theEnumStrings.pop_back();
            throw;
        }
    }
    /// \param value  takes the value of the word; left alone if the table doesn't have it  \return whether it has
    virtual bool findEnumString(std::string const& word, T& value)
    {
        auto const found = std::find(m_theEnumStrings.begin(), m_theEnumStrings.end(), word);
        if (found == m_theEnumStrings.end())
            return false;
        value = m_theEnumValues[static_cast<std::size_t>(found - m_theEnumStrings.begin())];
        return true;
    }

    /// The table's words in the order of their registration.
    std::vector<std::string> const& enumStrings() const noexcept { return m_theEnumStrings; }

    /// Equal values, and equal tables once both objects are initialised.
    bool operator==(NyXmlEnumType const& other) const
    {
        if (!NyXmlObject::operator==(other) || !(m_theValue == other.m_theValue))
            return false;
        return !this->xmlInitialized() || !other.xmlInitialized() ||
               (m_theEnumValues == other.m_theEnumValues && m_theEnumStrings == other.m_theEnumStrings);
    }
    template <class U, class = std::enable_if_t<NyXmlPlainValue::isFor<U, T>>>
    bool operator==(U const& value) const
    {
        return NyXmlPlainValue::equal(m_theValue, value);
    }
    bool operator<(NyXmlEnumType const& other) const { return m_theValue < other.m_theValue; }
    operator T const&() const { return m_theValue; }

    static NyXmlEnumType nullObject() { return NyXmlEnumType(); }

private:
    T m_theValue;
    std::vector<T> m_theEnumValues;
    std::vector<std::string> m_theEnumStrings; ///< the word at an index belongs to the value at that index
};

extern template class NyXmlEnumType<unsigned char>;
extern template class NyXmlEnumType<short>;
extern template class NyXmlEnumType<unsigned short>;
extern template class NyXmlEnumType<int>;
extern template class NyXmlEnumType<unsigned int>;
extern template class NyXmlEnumType<bool>;
extern template class NyXmlEnumType<NyNonNegReal>;

#endif
