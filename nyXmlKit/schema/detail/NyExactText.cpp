#include <nyXmlKit/schema/detail/NyExactText.h>

#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlBinaryString.h>
#include <nyXml/values/NyXmlEmbeddedString.h>
#include <nyXml/values/NyXmlEnumType.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

struct Definition {
    char const* type;
    char const* text;
};

// Where the library's texts are not those of a type that XSD has. White space at both ends is no part of any text: readers strip it, and
// long content stands on a line of its own.
constexpr Definition definitions[] = {
    { "boolean.ValueType", "    <xs:restriction base=\"xs:boolean\">\n"
                           "      <xs:pattern value=\"[01]\"/>\n" // true and false would not give what they name
                           "    </xs:restriction>\n" },
    { "char.ValueType", "    <xs:restriction base=\"xs:string\">\n"
                        "      <xs:pattern value=\"\\s*[!-&#xFF;]\\s*|\\s\"/>\n" // the character itself, which may be a blank
                        "    </xs:restriction>\n" },
    { "base64.ValueType", "    <xs:restriction base=\"xs:base64Binary\">\n"
                          "      <xs:pattern value=\"[A-Za-z0-9+/=]*\"/>\n" // one unbroken run
                          "    </xs:restriction>\n" },
    // XSD has INF, -INF and NaN; documents have inf, -inf, nan and -nan.
    { "double.ValueType", "    <xs:union memberTypes=\"xs:double\">\n"
                          "      <xs:simpleType>\n"
                          "        <xs:restriction base=\"xs:token\">\n"
                          "          <xs:pattern value=\"[+\\-]?([iI][nN][fF]([iI][nN][iI][tT][yY])?|[nN][aA][nN])\"/>\n"
                          "        </xs:restriction>\n"
                          "      </xs:simpleType>\n"
                          "    </xs:union>\n" },
    { "float.ValueType", "    <xs:union memberTypes=\"xs:float\">\n"
                         "      <xs:simpleType>\n"
                         "        <xs:restriction base=\"xs:token\">\n"
                         "          <xs:pattern value=\"[+\\-]?([iI][nN][fF]([iI][nN][iI][tT][yY])?|[nN][aA][nN])\"/>\n"
                         "        </xs:restriction>\n"
                         "      </xs:simpleType>\n"
                         "    </xs:union>\n" },
    // A pattern and no smallest value: -0 is written, and XSD holds it for less than 0.
    { "nonNegReal.ValueType", "    <xs:union>\n"
                              "      <xs:simpleType>\n"
                              "        <xs:restriction base=\"xs:double\">\n"
                              "          <xs:pattern value=\"[+]?[0-9.].*|-0\"/>\n"
                              "        </xs:restriction>\n"
                              "      </xs:simpleType>\n"
                              "      <xs:simpleType>\n"
                              "        <xs:restriction base=\"xs:token\">\n"
                              "          <xs:pattern value=\"[+]?[iI][nN][fF]([iI][nN][iI][tT][yY])?\"/>\n"
                              "        </xs:restriction>\n"
                              "      </xs:simpleType>\n"
                              "    </xs:union>\n" },
};

struct TypeWord {
    std::type_info const& info;
    char const* word;
};

template <class T>
bool takeWords(NyXmlObject const& object, std::optional<NyExactText>& text)
{
    auto const* const enumeration = dynamic_cast<NyXmlEnumType<T> const*>(&object);
    if (enumeration == nullptr)
        return false;
    text = NyExactText{};
    text->words = enumeration->enumStrings();
    return true;
}

} // namespace

NyExactText NyExactText::of(std::type_info const& info)
{
    static TypeWord const rows[] = {
        { typeid(bool), "boolean.ValueType" },
        { typeid(char), "char.ValueType" },
        { typeid(unsigned char), "unsignedByte" },
        { typeid(short), "short" },
        { typeid(unsigned short), "unsignedShort" },
        { typeid(int), "int" },
        { typeid(unsigned int), "unsignedInt" },
        { typeid(long), sizeof(long) == 8 ? "long" : "int" },
        { typeid(unsigned long), sizeof(long) == 8 ? "unsignedLong" : "unsignedInt" },
        { typeid(long long), "long" },
        { typeid(unsigned long long), "unsignedLong" },
        { typeid(float), "float.ValueType" },
        { typeid(double), "double.ValueType" },
        { typeid(NyAngle), "double.ValueType" },
        { typeid(NyNonNegReal), "nonNegReal.ValueType" },
    };
    NyExactText text;
    for (TypeWord const& row : rows) {
        if (info == row.info)
            text.type = row.word;
    }
    return text;
}

std::optional<NyExactText> NyExactText::of(NyXmlObject const& object)
{
    std::optional<NyExactText> text;
    if (auto const* const kind = dynamic_cast<NyXmlMemberKind const*>(&object)) {
        std::string const word = kind->typeWord();
        if (!word.empty())
            text = ofName(word);
        std::vector<std::string> words = kind->words();
        if (!words.empty()) {
            text = NyExactText{};
            text->words = std::move(words);
        }
        if (text)
            return text;
    }
    if (dynamic_cast<NyBaseXmlBasicType const*>(&object) == nullptr)
        return text;
    if (dynamic_cast<NyXmlBinaryString const*>(&object) != nullptr)
        return ofName("base64.ValueType");
    if (dynamic_cast<NyXmlEmbeddedString const*>(&object) != nullptr)
        return ofName(markup);
    takeWords<int>(object, text) || takeWords<unsigned int>(object, text) || takeWords<short>(object, text) ||
        takeWords<unsigned short>(object, text) || takeWords<unsigned char>(object, text) || takeWords<bool>(object, text) ||
        takeWords<NyNonNegReal>(object, text);
    return text;
}

NyExactText NyExactText::ofName(std::string const& name)
{
    static char const* const known[] = {
        "string",
        "normalizedString",
        "token",
        "language",
        "Name",
        "NCName",
        "NMTOKEN",
        "NMTOKENS",
        "ID",
        "IDREF",
        "IDREFS",
        "boolean",
        "decimal",
        "integer",
        "nonPositiveInteger",
        "negativeInteger",
        "nonNegativeInteger",
        "positiveInteger",
        "long",
        "int",
        "short",
        "byte",
        "unsignedLong",
        "unsignedInt",
        "unsignedShort",
        "unsignedByte",
        "duration",
        "dateTime",
        "time",
        "date",
        "gYearMonth",
        "gYear",
        "gMonthDay",
        "gDay",
        "gMonth",
        "hexBinary",
        "base64Binary",
        "anyURI",
    };
    NyExactText text;
    if (std::find(std::begin(known), std::end(known), name) != std::end(known) || name == markup || !definitionOf(name).empty())
        text.type = name;
    return text;
}

std::string NyExactText::definitionOf(std::string const& type)
{
    for (Definition const& definition : definitions) {
        if (type == definition.type)
            return definition.text;
    }
    return {};
}
