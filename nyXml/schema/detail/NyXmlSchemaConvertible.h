// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_SCHEMA_DETAIL_NYXMLSCHEMACONVERTIBLE_H
#define NYXML_SCHEMA_DETAIL_NYXMLSCHEMACONVERTIBLE_H

#include <nyXml/schema/NyXmlSchemaElementType.h>

#include <algorithm>
#include <vector>

namespace Ny::schema {

/// The rule for the elements of complex types and of groups: they fit one by one, or one of the two lists is empty.
///
/// Group indices are not compared: they count open brackets, and the same class may be met inside more or fewer of them.
inline bool elementsAreConvertible(std::vector<NyXmlSchemaElementType> const& ours,
                                   std::vector<NyXmlSchemaElementType> const& others)
{
    if (ours.empty() || others.empty())
        return true;
    return std::equal(ours.begin(), ours.end(), others.begin(), others.end(),
                      [](auto const& our, auto const& other) { return our.isTypeConvertible(other, false); });
}

} // namespace Ny::schema

#endif
