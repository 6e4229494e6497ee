#ifndef NYXML_PLATFORM_NYDLLLOADER_H
#define NYXML_PLATFORM_NYDLLLOADER_H

#include <nyXml/platform/NyXmlExport.h>

#include <functional>
#include <string>

/// Loads one shared library and finds its functions. Prints nothing.
///
/// The library stays loaded when the loader goes, to the end of the process: objects and functions that came from it outlive the
/// loader.
class NYXML_EXPORT NyDllLoader {
public:
    NyDllLoader() = default;

    /// Says whether a library may be loaded. It is given the name as it stands; the system may still search for it, follow links and
    /// replace "$ORIGIN" and the like in it.
    using Gate = std::function<bool(std::string const& name)>;

    /// Has every name asked for before it is loaded. A refused one ends like one that is not there. An empty gate, as at the start,
    /// lets everything through.
    ///
    /// The gate is asked by loadDll(), on its thread, on several at once if several load, and what it throws comes out of
    /// loadDll(). It may be set at any time; the one before may still be asked by another thread when this returns.
    /// \return the gate before, for who wants to ask that one too
    static Gate setGate(Gate gate);

    /// Loads a library, or takes hold of it again if it is loaded already, and forgets the one before.
    ///
    /// \param name       given to the operating system as it stands: a name with a slash is a path, one without is searched where
    ///                   the system searches libraries; nothing is put behind it
    /// \param extension  the part of the name behind its last '.'; for systems that load by kind of file, and not looked at here
    /// \param flag       for such systems too, and not looked at here
    /// \return a handle that is good for a test against null, which means that there is no such library, that one of its own
    ///         libraries or symbols is missing, that the gate refuses it, or that the name is none: empty, with a zero byte in it, or
    ///         longer than the longest path of the system
    void* loadDll(std::string const& name, std::string const& extension, bool flag);

    /// The address of an exported function of the library, null if there is none or nothing is loaded.
    void* getFunction(std::string const& name);

private:
    void* m_theHandle = nullptr;
};

#endif
