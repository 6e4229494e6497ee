#ifndef NYXML_CORE_NYXML_H
#define NYXML_CORE_NYXML_H

#include <nyXml/core/NyToken.h>

/// The names that the document format itself uses.
///
/// Constant from the moment the library is loaded until it is unloaded, and safe to read from any thread. They are all built in one
/// go, so an application's own static tokens may be made from them: a library that links to this one is initialised after it.
namespace NyXml {

/// The namespace of the classes below with an empty local name: `NyXml::ns + "vectorType"` is NyVectorTypeToken.
extern NYXML_EXPORT NyToken const ns;

// The library's classes, as factories and the schema builder know them. In the namespace.
extern NYXML_EXPORT NyToken const NyBasicTypeToken;         ///< "basicType"
extern NYXML_EXPORT NyToken const NyDefaultToken;           ///< "default"
extern NYXML_EXPORT NyToken const NyEnumTypeToken;          ///< "enumType"
extern NYXML_EXPORT NyToken const NyLinearToken;            ///< "linear"
extern NYXML_EXPORT NyToken const NyListTypeToken;          ///< "listType"
extern NYXML_EXPORT NyToken const NyMapTypeToken;           ///< "mapType"
extern NYXML_EXPORT NyToken const NyVarMapTypeToken;        ///< "varMapType"
extern NYXML_EXPORT NyToken const NyNullToken;              ///< "null"
extern NYXML_EXPORT NyToken const NyOrientationToken;       ///< "orientation"
extern NYXML_EXPORT NyToken const NySetTypeToken;           ///< "setType"
extern NYXML_EXPORT NyToken const NyPairTypeToken;          ///< "pairType"
extern NYXML_EXPORT NyToken const NyVectorTypeToken;        ///< "vectorType"
extern NYXML_EXPORT NyToken const NyVarVectorTypeToken;     ///< "varVectorType"
extern NYXML_EXPORT NyToken const NyVarElemTypeToken;       ///< "varElemType"
extern NYXML_EXPORT NyToken const NyVarSharedElemTypeToken; ///< "varSharedElemType"

// Elements and attributes of documents. Without a namespace.
extern NYXML_EXPORT NyToken const NyAddLibrariesToken; ///< "addLibraries"
extern NYXML_EXPORT NyToken const NyElementToken;      ///< "element"
extern NYXML_EXPORT NyToken const NyGroupToken;        ///< "group"
extern NYXML_EXPORT NyToken const NyKeyToken;          ///< "key"
extern NYXML_EXPORT NyToken const NyValueToken;        ///< "value"
extern NYXML_EXPORT NyToken const NyFirstToken;        ///< "first"
extern NYXML_EXPORT NyToken const NySecondToken;       ///< "second"
extern NYXML_EXPORT NyToken const NyLibraryToken;      ///< "library"
extern NYXML_EXPORT NyToken const NyCountToken;        ///< "size", the one that is not called what it says
extern NYXML_EXPORT NyToken const NyQuaternion0Token;  ///< "q0"
extern NYXML_EXPORT NyToken const NyQuaternion1Token;  ///< "q1"
extern NYXML_EXPORT NyToken const NyQuaternion2Token;  ///< "q2"
extern NYXML_EXPORT NyToken const NyQuaternion3Token;  ///< "q3"
extern NYXML_EXPORT NyToken const NyVectorXToken;      ///< "x"
extern NYXML_EXPORT NyToken const NyVectorYToken;      ///< "y"
extern NYXML_EXPORT NyToken const NyVectorZToken;      ///< "z"
extern NYXML_EXPORT NyToken const NyVersionToken;      ///< "version"

} // namespace NyXml

#endif
