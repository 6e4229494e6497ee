#ifndef FUZZ_MODEL_H
#define FUZZ_MODEL_H

#include <nyXml/nyXml.h>

#include <memory>
#include <string>
#include <vector>

// A model with every family of values, for the targets that drive objects.

template <class Self, class Base = NyXmlCompoundType>
class ModelClass : public Base {
public:
    NyXmlObject* clone() const override { return new Self(static_cast<Self const&>(*this)); }
    NyXmlObject* newObject() const override { return new Self; }
    NyToken const& token() const override
    {
        static NyToken const name("urn:fuzz#model");
        return name;
    }
    bool equality(NyXmlObject const* other) const override { return dynamic_cast<Self const*>(other) != nullptr; }
};

class Mode : public NyXmlEnumType<int> {
public:
    NyXmlObject* clone() const override { return new Mode(*this); }
    NyXmlObject* newObject() const override { return new Mode; }
    bool xmlInit() override
    {
        setEnumString(0, "slow");
        setEnumString(1, "fast");
        return NyXmlEnumType<int>::xmlInit();
    }
};

template <class T>
using Basic = NyXmlBasicType<T>;

class Leaf : public ModelClass<Leaf> {
public:
    Basic<int> a;
    Basic<std::string> b;
    Basic<double> c;

    void registerComponents() override
    {
        registerAttributeComponent("a", &a);
        registerComponent("urn:fuzz#b", &b);
        registerComponent("urn:fuzz#c", &c);
    }
    bool operator==(Leaf const& other) const { return a == other.a && b == other.b && c == other.c; }
};

/// Members of the classes that the document names.
class Chosen : public ModelClass<Chosen, NyXmlBaseVariableCompoundType> {
public:
    Chosen() = default;
    Chosen(Chosen const& other) : ModelClass(other) {}
    Chosen& operator=(Chosen const& other) = default;

    void registerComponents() override
    {
        registerComponentCreator("leaf", [] { return static_cast<NyXmlObject*>(new Leaf); });
        registerComponentCreator("number", [] { return static_cast<NyXmlObject*>(new Basic<double>); });
    }
    bool readValueFromToken(NyToken const& element, NyXmlReader& reader) override
    {
        std::unique_ptr<NyXmlObject> member(newObjectFromToken(element));
        if (!member)
            return false;
        member->read(reader);
        if (m_members.size() < 100)
            m_members.push_back(std::move(member));
        return true;
    }
    bool write(NyXmlWriter& writer) const override
    {
        NyXmlBaseVariableCompoundType::write(writer);
        for (auto const& member : m_members) {
            writer.writeStartTag(member->token());
            member->write(writer);
            writer.writeEndTag();
        }
        return true;
    }
    bool operator==(Chosen const&) const { return true; }

private:
    std::vector<std::shared_ptr<NyXmlObject>> m_members;
};

class Everything : public ModelClass<Everything> {
public:
    Basic<char> a;
    Basic<unsigned char> b;
    Basic<short> c;
    Basic<unsigned short> d;
    Basic<unsigned int> e;
    Basic<bool> f;
    Basic<NyAngle> g;
    Basic<NyNonNegReal> h;
    Mode i;
    NyXmlVector j;
    NyXmlOrientation k;
    NyXmlVectorVector l;
    NyXmlBinaryString m;
    NyXmlEmbeddedString n;
    NyXmlVectorBasicType<Basic<double>> o;
    NyXmlVectorBasicType<Basic<std::string>> p;
    NyXmlVectorType<Leaf> q;
    NyXmlListType<Basic<int>> r;
    NyXmlSetType<Basic<std::string>> s;
    NyXmlMapType<Basic<std::string>, Basic<double>> t;
    NyXmlPairType<Basic<int>, Basic<std::string>> u;
    Chosen v;
    Leaf w;
    NyXmlVectorType<NyXmlVectorType<Basic<bool>>> x;

    void registerComponents() override
    {
        NyXmlObject* const attributes[] = { &a, &b, &c, &i };
        NyXmlObject* const elements[] = { &d, &e, &f, &g, &h, &j, &k, &l, &m, &n, &o, &p, &q, &r, &s, &t, &u, &v, &w, &x };
        char name = 'a';
        for (NyXmlObject* attribute : attributes)
            registerAttributeComponent(NyToken(std::string(1, name++)), attribute);
        for (NyXmlObject* element : elements)
            registerComponent(NyToken("urn:fuzz", std::string(1, name++)), element);
    }
    bool operator==(Everything const&) const { return true; }
};

#endif
