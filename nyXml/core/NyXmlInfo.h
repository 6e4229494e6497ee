#ifndef NYXML_CORE_NYXMLINFO_H
#define NYXML_CORE_NYXMLINFO_H

#include <nyXml/platform/NyXmlExport.h>

#include <string>

/// The version of the library, "4.0.0". NyXmlReader holds the "version" attribute of a document's root against it; applications that
/// write documents give it to their root element.
extern NYXML_EXPORT std::string const NyXmlLibraryVersion;

/// The identity card of this library for a host that manages modules. The library itself does not look at it.
namespace Ny::xmlInfo {

NYXML_EXPORT bool projectIsPlugin();                   ///< false: linked, not loaded at run time
NYXML_EXPORT std::string pluginLibraryFileName();      ///< empty, since this is no plug-in
NYXML_EXPORT std::string pluginLibraryFileExtension(); ///< empty, since this is no plug-in
NYXML_EXPORT std::string projectName();                ///< "xml"
NYXML_EXPORT std::string repositoryName();             ///< "stable"
NYXML_EXPORT std::string solutionName();               ///< "stableGroundwork"
NYXML_EXPORT std::string xmlNamespace();               ///< the default namespace address, ending in `#`

} // namespace Ny::xmlInfo

#endif
