#include <nyXml/core/NyXml.h>

namespace NyXml {

// One file, in this order: the namespace stands before the tokens that are built from it.

NyToken const ns("http://nyxml.org/namespace/cr#");

NyToken const NyBasicTypeToken = ns + "basicType";
NyToken const NyDefaultToken = ns + "default";
NyToken const NyEnumTypeToken = ns + "enumType";
NyToken const NyLinearToken = ns + "linear";
NyToken const NyListTypeToken = ns + "listType";
NyToken const NyMapTypeToken = ns + "mapType";
NyToken const NyVarMapTypeToken = ns + "varMapType";
NyToken const NyNullToken = ns + "null";
NyToken const NyOrientationToken = ns + "orientation";
NyToken const NySetTypeToken = ns + "setType";
NyToken const NyPairTypeToken = ns + "pairType";
NyToken const NyVectorTypeToken = ns + "vectorType";
NyToken const NyVarVectorTypeToken = ns + "varVectorType";
NyToken const NyVarElemTypeToken = ns + "varElemType";
NyToken const NyVarSharedElemTypeToken = ns + "varSharedElemType";

NyToken const NyAddLibrariesToken("addLibraries");
NyToken const NyElementToken("element");
NyToken const NyGroupToken("group");
NyToken const NyKeyToken("key");
NyToken const NyValueToken("value");
NyToken const NyFirstToken("first");
NyToken const NySecondToken("second");
NyToken const NyLibraryToken("library");
NyToken const NyCountToken("size");
NyToken const NyQuaternion0Token("q0");
NyToken const NyQuaternion1Token("q1");
NyToken const NyQuaternion2Token("q2");
NyToken const NyQuaternion3Token("q3");
NyToken const NyVectorXToken("x");
NyToken const NyVectorYToken("y");
NyToken const NyVectorZToken("z");
NyToken const NyVersionToken("version");

} // namespace NyXml
