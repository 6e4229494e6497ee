// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_SCHEMA_DETAIL_NYEXACTDOCUMENT_H
#define NYXMLKIT_SCHEMA_DETAIL_NYEXACTDOCUMENT_H

#include <nyXmlKit/schema/detail/NyExactGrammar.h>

#include <map>
#include <string>

namespace NyExactDocument {

/// The XSD text of each file by its name.
///
/// \param fileName  as NyXmlSchema::write() has it
std::map<std::string, std::string> files(NyExactGrammar grammar, std::string const& fileName);

} // namespace NyExactDocument

#endif
