// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_SCHEMA_DETAIL_NYEXACTTEXT_H
#define NYXMLKIT_SCHEMA_DETAIL_NYEXACTTEXT_H

#include <optional>
#include <string>
#include <typeinfo>
#include <vector>

class NyXmlObject;

/// The type of a text: of an attribute, of an element's content or of the words of a run.
struct NyExactText {
    std::string type = "string";    ///< "int": of XSD; "double.ValueType", with a dot: one of definitionOf()
    std::vector<std::string> words; ///< if there are any, an enumeration of them, whatever the type
    bool isList = false;            ///< words of this type instead of one

    bool operator==(NyExactText const& other) const
    {
        return type == other.type && words == other.words && isList == other.isList;
    }

    /// What the library writes for a value of this run-time type.
    static NyExactText of(std::type_info const& info);

    /// What an object says of its own text beyond the run-time type of its value; nothing of most objects.
    static std::optional<NyExactText> of(NyXmlObject const& object);

    /// The type of this name, as an object may give it instead of a run-time type. A name that XSD has not is a string.
    static NyExactText ofName(std::string const& name);

    /// What stands between `<xs:simpleType name="...">` and its end tag; empty for a name that is none of ours.
    static std::string definitionOf(std::string const& type);

    /// The pseudo type of an element that holds markup of any kind.
    static constexpr char const* markup = "markup.ValueType";
};

#endif
