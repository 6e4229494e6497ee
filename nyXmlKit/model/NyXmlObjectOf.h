#ifndef NYXMLKIT_MODEL_NYXMLOBJECTOF_H
#define NYXMLKIT_MODEL_NYXMLOBJECTOF_H

#include <nyXml/values/NyXmlBasicType.h>

#include <string>
#include <type_traits>

template <class E>
class NyXmlEnum;
template <class Word>
class NyXmlWord;

/// The object that stands for a T in members such as NyXmlOptional<T>: a class of objects stands for itself, a plain value for the value
/// class that holds it. T may be incomplete.
template <class T>
struct NyXmlObjectOf {
    using Type =
        std::conditional_t<std::is_class_v<T>, T, std::conditional_t<std::is_enum_v<T>, NyXmlEnum<T>, NyXmlBasicType<T>>>;
};
template <>
struct NyXmlObjectOf<std::string> {
    using Type = NyXmlBasicType<std::string>;
};
template <>
struct NyXmlObjectOf<NyAngle> {
    using Type = NyXmlBasicType<NyAngle>;
};
template <>
struct NyXmlObjectOf<NyNonNegReal> {
    using Type = NyXmlBasicType<NyNonNegReal>;
};

/// Says in one line what a class lacks that is to be a member. For places where it is complete.
template <class Object>
struct NyXmlWholeClass {
    static_assert(std::is_base_of_v<NyXmlObject, Object>, "a member's class derives from NyXmlObject, or is a plain value");
    static_assert(!std::is_abstract_v<Object>,
                  "a member's class lacks an override: of registerComponents() in a model class, and of "
                  "clone(), newObject() and token() as well in a compound by hand");
    static constexpr bool value = true;
};

#endif
