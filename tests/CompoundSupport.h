#ifndef NYXML_TESTS_COMPOUNDSUPPORT_H
#define NYXML_TESTS_COMPOUNDSUPPORT_H

#include "ValueSupport.h"

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/core/NyXml.h>

/// The namespace of the tests' compounds.
inline std::string const ns = "urn:demo/cell";

/// What every object of a test's model needs beside its members. Two are equal if their values() are.
template <class Derived, class Base = NyXmlCompoundType>
class Model : public Base {
public:
    using Base::Base;
    NyXmlObject* clone() const override { return new Derived(static_cast<Derived const&>(*this)); }
    NyXmlObject* newObject() const override { return new Derived; }
    NyToken const& token() const override { return NyXml::NyNullToken; }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<Derived const*>(other);
        return same != nullptr && static_cast<Derived const&>(*this).values() == same->values();
    }
    int values() const { return 0; }
};

/// What stands behind the root's declaration of its namespace.
inline std::string written(NyXmlObject const& object, bool withDefaults = false)
{
    std::ostringstream stream;
    NyXmlWriter writer("cell.xml", stream);
    writer.setWriteDefaultDataFlag(withDefaults);
    writer.writeStartTag(NyToken(ns, "cell"));
    object.write(writer);
    writer.writeEndTag();
    std::string const mark = "xmlns=\"" + ns + "\"";
    return stream.str().substr(stream.str().find(mark) + mark.size());
}

#endif
