#ifndef NYXMLKIT_NYXMLKIT_H
#define NYXMLKIT_NYXMLKIT_H

/// Every public header of the companion library. Larger applications include what they use instead.

#include <nyXmlKit/file/NyXmlDialect.h>
#include <nyXmlKit/file/NyXmlFault.h>
#include <nyXmlKit/file/NyXmlFile.h>
#include <nyXmlKit/file/NyXmlReadOptions.h>
#include <nyXmlKit/file/NyXmlReadResult.h>
#include <nyXmlKit/file/NyXmlWriteOptions.h>
#include <nyXmlKit/file/NyXmlWriteResult.h>
#include <nyXmlKit/guard/NyXmlFileInput.h>
#include <nyXmlKit/guard/NyXmlGuard.h>
#include <nyXmlKit/guard/NyXmlGuarded.h>
#include <nyXmlKit/model/NyXmlClass.h>
#include <nyXmlKit/model/NyXmlDateTime.h>
#include <nyXmlKit/model/NyXmlEnum.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>
#include <nyXmlKit/model/NyXmlModel.h>
#include <nyXmlKit/model/NyXmlObjectOf.h>
#include <nyXmlKit/model/NyXmlOptional.h>
#include <nyXmlKit/model/NyXmlPolymorphic.h>
#include <nyXmlKit/model/NyXmlRepeated.h>
#include <nyXmlKit/model/NyXmlShared.h>
#include <nyXmlKit/model/NyXmlVersioned.h>
#include <nyXmlKit/model/NyXmlWord.h>
#include <nyXmlKit/schema/NyXmlAnyOrder.h>
#include <nyXmlKit/schema/NyXmlExactSchema.h>
#include <nyXmlKit/standard/NyXmlStandardReader.h>
#include <nyXmlKit/standard/NyXmlStandardWriter.h>

#endif
