#ifndef NYXMLKIT_SCHEMA_NYXMLANYORDER_H
#define NYXMLKIT_SCHEMA_NYXMLANYORDER_H

#include <nyXml/platform/NyXmlExport.h>

/// A class that derives from this as well says that its child elements may stand in any order in a document:
/// \code
///     class Joint : public NyXmlCompoundType, public NyXmlAnyOrder { ... };
/// \endcode
/// Compounds read them in any order anyway; it is NyXmlExactSchema that else asks for the order in which they are written. Where one of
/// the children may come several times, all of them may: XSD 1.0 has no way to say both.
class NYXML_EXPORT NyXmlAnyOrder {
public:
    virtual ~NyXmlAnyOrder() = default;

protected:
    NyXmlAnyOrder() = default;
    NyXmlAnyOrder(NyXmlAnyOrder const&) = default;
    NyXmlAnyOrder& operator=(NyXmlAnyOrder const&) = default;
};

#endif
