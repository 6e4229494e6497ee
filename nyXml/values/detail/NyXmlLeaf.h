// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_VALUES_DETAIL_NYXMLLEAF_H
#define NYXML_VALUES_DETAIL_NYXMLLEAF_H

#include <nyXml/platform/NyXmlExport.h>

class NyToken;
class NyXmlLeafRun;
class NyXmlObject;

/// Values that may be read without an event, since they are exactly the library's own and nobody can tell.
namespace NyXmlLeaf {

/// Does what the object's read() does for an element of this name, if that comes next in the run. The name is as
/// NyXmlLeafRun asks for it. False, and nothing has changed, if not.
using Taker = bool (*)(NyXmlObject& object, NyXmlLeafRun& run, NyToken const& name);

/// The taker for the class of an object, null if there is none. Classes are known by the address of their type.
NYXML_EXPORT Taker takerOf(NyXmlObject const& object) noexcept;

} // namespace NyXmlLeaf

#endif
