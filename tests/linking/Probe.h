#ifndef NYXML_TESTS_LINKING_PROBE_H
#define NYXML_TESTS_LINKING_PROBE_H

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/core/NyXml.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/values/NyXmlBasicType.h>

#include <sstream>

/// A class with one component, "a".
class Probe : public NyXmlCompoundType {
public:
    NyXmlObject* clone() const override { return nullptr; }
    NyXmlObject* newObject() const override { return nullptr; }
    NyToken const& token() const override { return NyXml::NyNullToken; }
    bool equality(NyXmlObject const*) const override { return false; }
    void registerComponents() override { registerComponent(NyToken("a"), &value); }

    NyXmlBasicType<int> value;
};

inline bool readsOwnName(Probe& probe)
{
    std::istringstream stream("<probe><a>3</a></probe>");
    NyXmlReader reader("probe", stream);
    reader.readXml();
    probe.read(reader);
    return probe.value.value() == 3;
}

#endif
