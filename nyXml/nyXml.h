#ifndef NYXML_NYXML_H
#define NYXML_NYXML_H

/// Every public header of the library. Larger applications include what they use instead.

#include <nyXml/compound/NyBaseExpressionTreeElement.h>
#include <nyXml/compound/NyBaseXmlFactory.h>
#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>
#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/compound/NyXmlFactory.h>
#include <nyXml/core/NyToken.h>
#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlInfo.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyAngle.h>
#include <nyXml/platform/NyApplication.h>
#include <nyXml/platform/NyConnectionManager.h>
#include <nyXml/platform/NyDllLoader.h>
#include <nyXml/platform/NyIfHttpStream.h>
#include <nyXml/platform/NyNonNegReal.h>
#include <nyXml/platform/NyOrientation.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/platform/NyStringConversion.h>
#include <nyXml/platform/NyVector.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/reader/NyXmlFileReader.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/schema/NyXmlSchemaAttributeType.h>
#include <nyXml/schema/NyXmlSchemaComplexType.h>
#include <nyXml/schema/NyXmlSchemaElement.h>
#include <nyXml/schema/NyXmlSchemaElementType.h>
#include <nyXml/schema/NyXmlSchemaGlobalElementType.h>
#include <nyXml/schema/NyXmlSchemaGroupType.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/traversal/NyXmlSignals.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlBinaryString.h>
#include <nyXml/values/NyXmlEmbeddedString.h>
#include <nyXml/values/NyXmlEnumType.h>
#include <nyXml/values/NyXmlListType.h>
#include <nyXml/values/NyXmlMapType.h>
#include <nyXml/values/NyXmlOrientation.h>
#include <nyXml/values/NyXmlPairType.h>
#include <nyXml/values/NyXmlSetType.h>
#include <nyXml/values/NyXmlTextOf.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/NyXmlVectorBasicType.h>
#include <nyXml/values/NyXmlVectorType.h>
#include <nyXml/values/NyXmlVectorVector.h>
#include <nyXml/writer/NyXmlWriter.h>

#endif
