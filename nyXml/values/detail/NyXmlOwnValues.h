// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_VALUES_DETAIL_NYXMLOWNVALUES_H
#define NYXML_VALUES_DETAIL_NYXMLOWNVALUES_H

#include <nyXml/platform/NyXmlExport.h>

class NyXmlObject;

/// The library's own value classes, told from those of applications.
namespace NyXmlOwnValues {

/// Whether the object is exactly of a class that is compiled into the library, so that none of its operations runs code of the
/// application. Never true by mistake; where a type has a second identity, it is false.
NYXML_EXPORT bool has(NyXmlObject const& object) noexcept;

} // namespace NyXmlOwnValues

#endif
