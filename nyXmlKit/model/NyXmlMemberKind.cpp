#include <nyXmlKit/model/NyXmlMemberKind.h>

#include <nyXml/core/NyXmlObject.h>

NyXmlMemberKind::~NyXmlMemberKind() = default;

unsigned int NyXmlMemberKind::minOccurs() const { return 1; }

unsigned int NyXmlMemberKind::maxOccurs() const { return 1; }

std::unique_ptr<NyXmlObject> NyXmlMemberKind::newItem() const { return nullptr; }

std::string NyXmlMemberKind::typeWord() const { return std::string(); }

std::vector<std::string> NyXmlMemberKind::words() const { return {}; }

std::vector<NyXmlMemberKind::Alternative> NyXmlMemberKind::alternatives() const { return {}; }

unsigned int NyXmlMemberKind::maxAlternatives() const { return 0; }

std::vector<std::string> NyXmlMemberKind::ownAttributes() const { return {}; }

NyXmlOccurrence::~NyXmlOccurrence() = default;
