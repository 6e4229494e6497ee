#include <nyXml/core/NyXmlInfo.h>

std::string const NyXmlLibraryVersion("4.0.0");

namespace Ny::xmlInfo {

bool projectIsPlugin() { return false; }

std::string pluginLibraryFileName() { return {}; }

std::string pluginLibraryFileExtension() { return {}; }

std::string projectName() { return "xml"; }

std::string repositoryName() { return "stable"; }

std::string solutionName() { return "stableGroundwork"; }

std::string xmlNamespace() { return "http://nyxml.org/stable/stableGroundwork/xml/ny#"; }

} // namespace Ny::xmlInfo
