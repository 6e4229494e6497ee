#ifndef NYXML_COMPOUND_NYBASEXMLFACTORY_H
#define NYXML_COMPOUND_NYBASEXMLFACTORY_H

#include <nyXml/platform/NyXmlExport.h>

class NyToken;
class NyXmlObject;

/// Makes one object of one class. The object is the caller's to delete.
using NyXmlCreator = NyXmlObject* (*)();

/// Makes objects from the names of their classes. It is what a reader holds; NyXmlFactory is the one that the library supplies.
///
/// Copying and assigning a base has no effect, and any two are equal: what a factory knows is the derived class's.
class NYXML_EXPORT NyBaseXmlFactory {
public:
    NyBaseXmlFactory() = default;
    NyBaseXmlFactory(NyBaseXmlFactory const&) = default;
    virtual ~NyBaseXmlFactory();

    /// From now on \p token is made by \p creator, also if it was another's before.
    virtual void registerComponentCreator(NyToken const& token, NyXmlCreator creator) = 0;

    /// \return a new object, the caller's to delete; null for a token that nobody registered, without a message
    [[nodiscard]] virtual NyXmlObject* newObjectFromToken(NyToken const& token) const = 0;

    NyBaseXmlFactory& operator=(NyBaseXmlFactory const&) = default;
    bool operator==(NyBaseXmlFactory const&) const noexcept { return true; }
};

#endif
