#ifndef NYXML_TESTS_COMPOUNDSUPPORT_H
#define NYXML_TESTS_COMPOUNDSUPPORT_H

#include "ValueSupport.h"

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/core/NyXml.h>

#include <limits>
#include <utility>

/// The namespace of the tests' compounds.
inline std::string const ns = "urn:t";

/// What every object of a test's model needs beside its members. Two are equal if their values() are; without any, nothing is equal,
/// and all is written.
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
    double values() const { return std::numeric_limits<double>::quiet_NaN(); }
};

/// A compound of members that are the caller's; those without a namespace are attributes. A class for each number.
template <int number = 0>
class Compound : public Model<Compound<number>> {
public:
    using Members = std::vector<std::pair<NyToken, NyXmlObject*>>;
    explicit Compound(Members const& members = {}) : m_members(members) { this->xmlInit(); }
    void registerComponents() override
    {
        for (auto const& [name, member] : m_members) {
            if (name.xmlNamespace().empty())
                this->registerAttributeComponent(name, member);
            else
                this->registerComponent(name, member);
        }
    }

private:
    Members m_members;
};

#endif
