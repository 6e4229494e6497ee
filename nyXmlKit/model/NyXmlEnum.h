#ifndef NYXMLKIT_MODEL_NYXMLENUM_H
#define NYXMLKIT_MODEL_NYXMLENUM_H

#include <nyXmlKit/model/NyXmlWord.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <vector>

/// One line of an enumeration's table.
template <class E>
struct NyXmlEnumWord {
    E value;
    std::string_view word;
};

/// Makes the table, see NyXmlEnum.
template <class E, std::size_t count>
constexpr std::array<NyXmlEnumWord<E>, count> nyXmlTable(NyXmlEnumWord<E> const (&rows)[count])
{
    std::array<NyXmlEnumWord<E>, count> table{};
    for (std::size_t i = 0; i < count; ++i)
        table[i] = rows[i];
    return table;
}

/// An enumeration of the application's, written as words.
///
/// Its table is a function beside the enumeration, or a friend of the class around it, one line for each word:
/// \code
///     enum class Fix { none, flat, space };
///     constexpr auto nyXmlWords(Fix)
///     {
///         return nyXmlTable<Fix>({
///             { Fix::none, "none" },
///             { Fix::flat, "2d" },
///             { Fix::space, "3d" },
///         });
///     }
///     NyXmlEnum<Fix> fix = Fix::flat; // <fix>2d</fix> or fix="2d"
/// \endcode
/// A word that is not in the table is reported, print type 4, and leaves the value as it was. A value may have several words; the first
/// is written. A value that is not in the table is reported when it is written, and written as the table's first word.
template <class E>
class NYXML_EXPORT NyXmlEnum : public NyBaseXmlBasicType, public NyXmlMemberKind {
    static_assert(std::is_enum_v<E>, "NyXmlEnum<E> holds an enumeration");
    static constexpr auto table = nyXmlWords(E());
    static_assert(table.size() > 0, "the table of an enumeration has a word at least");

public:
    NyXmlEnum() = default;
    NyXmlEnum(E value) : m_theValue(value) {} // implicit, as for NyXmlBasicType
    NyXmlEnum& operator=(E value)
    {
        m_theValue = value;
        return *this;
    }

    E value() const noexcept { return m_theValue; }
    operator E() const noexcept { return m_theValue; }
    void setValue(E value) { m_theValue = value; }
    /// As it is written.
    std::string word() const { return std::string(row().word); }

    bool operator==(NyXmlEnum const& other) const { return m_theValue == other.m_theValue; }
    bool operator==(E value) const { return m_theValue == value; }
    bool operator!=(NyXmlEnum const& other) const { return m_theValue != other.m_theValue; }
    bool operator!=(E value) const { return m_theValue != value; }
    bool operator<(NyXmlEnum const& other) const { return m_theValue < other.m_theValue; }

    // NyXmlObject
    /// Shows a string, the word.
    void accept(NyXmlObjectVisitor* visitor) const override { NyXmlBasicType<std::string>(word()).accept(visitor); }
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlEnum(*this); }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlEnum; }
    bool read(NyXmlReader& reader) override { return reportRefused(reader, NyBaseXmlBasicType::read(reader)); }
    bool readAttribute(NyXmlReader& reader) override { return reportRefused(reader, NyBaseXmlBasicType::readAttribute(reader)); }
    bool write(NyXmlWriter& writer) const override
    {
        if (!NyXmlObject::write(writer))
            return false;
        if (row().value != m_theValue)
            NyXmlWordWork::reportValue(static_cast<long long>(m_theValue), row().word);
        NyXmlWordWork::give(writer, typeid(std::string), word());
        return true;
    }
    bool writeSchema(NyXmlSchema& schema) const override
    {
        if (!NyXmlObject::writeSchema(schema))
            return false;
        NyXmlWordWork::describe(schema, typeid(std::string));
        return true;
    }
    bool isBasicType() const override { return true; }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlEnum const*>(other);
        return same != nullptr && m_theValue == same->m_theValue;
    }
    NyToken const& token() const override { return NyXml::NyEnumTypeToken; }

    // NyBaseXmlBasicType
    void setValueFromString(std::string const& text) override
    {
        std::string_view const given = NyXmlWordWork::stripped(text);
        m_isRefused = true;
        for (NyXmlEnumWord<E> const& row : table)
            if (m_isRefused && row.word == given) {
                m_theValue = row.value;
                m_isRefused = false;
            }
    }

    // NyXmlMemberKind
    std::vector<std::string> words() const override
    {
        std::vector<std::string> result;
        for (NyXmlEnumWord<E> const& row : table)
            result.emplace_back(row.word);
        return result;
    }

private:
    NyXmlEnumWord<E> const& row() const
    {
        for (NyXmlEnumWord<E> const& row : table)
            if (row.value == m_theValue)
                return row;
        return table[0];
    }
    bool reportRefused(NyXmlReader& reader, bool result)
    {
        if (m_isRefused)
            NyXmlWordWork::report(reader, "word of the enumeration");
        m_isRefused = false;
        return result;
    }

    E m_theValue = table[0].value;
    bool m_isRefused = false; ///< the last text was no word; until it is reported
};

#endif
