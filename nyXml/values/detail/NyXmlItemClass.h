// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_VALUES_DETAIL_NYXMLITEMCLASS_H
#define NYXML_VALUES_DETAIL_NYXMLITEMCLASS_H

#include <nyXml/core/NyXmlObject.h>

#include <type_traits>

namespace NyXmlItems {

/// Says in one line what a class lacks that is to be an item. Asked by the destructors of containers: they are compiled wherever a container
/// is made, ahead of all that would stumble over such a class, and the class is complete there.
template <class E>
struct WholeClass {
    static_assert(std::is_base_of_v<NyXmlObject, E>, "an item derives from NyXmlObject: wrap a plain value in NyXmlBasicType");
    static_assert(!std::is_abstract_v<E>,
                  "an item's class lacks an override: of clone(), newObject(), token() and equality(), and "
                  "of registerComponents() in a compound");
    static constexpr bool value = true;
};

} // namespace NyXmlItems

#endif
