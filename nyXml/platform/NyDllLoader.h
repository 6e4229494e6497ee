#ifndef NYXML_PLATFORM_NYDLLLOADER_H
#define NYXML_PLATFORM_NYDLLLOADER_H

#include <nyXml/platform/NyXmlExport.h>

#include <string>

/// Loads one shared library and finds its functions. Prints nothing.
///
/// The library stays loaded when the loader goes, to the end of the process: objects and functions that came from it outlive the
/// loader.
class NYXML_EXPORT NyDllLoader {
public:
    NyDllLoader() = default;

    /// Loads a library, or takes hold of it again if it is loaded already, and forgets the one before.
    ///
    /// \param name       given to the operating system as it stands: a name with a slash is a path, one without is searched where
    ///                   the system searches libraries; nothing is put behind it
    /// \param extension  the part of the name behind its last '.'; for systems that load by kind of file, and not looked at here
    /// \param flag       for such systems too, and not looked at here
    /// \return a handle that is good for a test against null, which means that there is no such library, that one of its own
    ///         libraries or symbols is missing, or that the name is empty
    void* loadDll(std::string const& name, std::string const& extension, bool flag);

    /// The address of an exported function of the library, null if there is none or nothing is loaded.
    void* getFunction(std::string const& name);

private:
    void* m_theHandle = nullptr;
};

#endif
