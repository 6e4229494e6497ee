#ifndef NYXML_COMPOUND_NYXMLFACTORY_H
#define NYXML_COMPOUND_NYXMLFACTORY_H

#include <nyXml/compound/NyBaseXmlFactory.h>
#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>

#include <map>
#include <string>

/// A table of creators by class name, filled by the application and by plug-in libraries.
///
/// A plug-in exports two functions under exactly these names:
/// \code
///     extern "C" NYXML_EXPORT NyToken const* getClassToken(int index); // from 0; behind the last class: an empty token, never null
///     extern "C" NYXML_EXPORT NyXmlCreator getCreator(int index);      // null ends the list, too
/// \endcode
/// Tokens and creators stay valid for the rest of the process; so does the library, which is never unloaded.
///
/// No lock: a factory belongs to the thread that reads the document.
class NYXML_EXPORT NyXmlFactory : public NyBaseXmlFactory {
public:
    /// Creators by class name. Local names alone make the key: two tokens that differ in their namespace share one entry.
    using CreatorMap = std::map<NyToken, NyXmlCreator>;

    NyXmlFactory() = default;

    /// A copied factory knows no creators. Assigning does take them over.
    NyXmlFactory(NyXmlFactory const& other) : NyBaseXmlFactory(other) {}

    ~NyXmlFactory() override;

    void registerComponentCreator(NyToken const& token, NyXmlCreator creator) override;
    NyXmlObject* newObjectFromToken(NyToken const& token) const override;

    /// Forwards to the form with a reference, for the pointers of a plug-in. Null is not allowed.
    virtual void registerComponentCreator(NyToken const* token, NyXmlCreator creator);

    /// Loads a plug-in and registers all it offers. A class that is known already belongs to the later library.
    ///
    /// Prints what it did (print type 3), or what was wrong (print type 4): an empty name, a library that cannot be loaded, an accessor
    /// that is missing. Loads are not remembered: the same library again registers the same creators and prints the same.
    ///
    /// \param library  given to the operating system as it is; what is behind its last `.` goes to the loader as the extension
    /// \return true if the library was loaded, also if it offers no class
    virtual bool loadLibrary(std::string const& library);

    virtual CreatorMap const& creatorMap() const;

    NyXmlFactory& operator=(NyXmlFactory const&) = default;

    /// Equal tokens, namespaces included, with the same creators in the same places.
    bool operator==(NyXmlFactory const& other) const;

private:
    CreatorMap m_CreatorMap;
};

#endif
