#ifndef NYXML_VALUES_NYXMLPAIRTYPE_H
#define NYXML_VALUES_NYXMLPAIRTYPE_H

#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/detail/NyXmlEntries.h>
#include <nyXml/values/detail/NyXmlItemClass.h>

#include <string>
#include <utility>

/// Two objects under tags that the owner may name: `<span><first>1</first><second>2</second></span>`.
///
/// \tparam A, B  NyXmlObjects with `==`. Compiled into the library for those at the end of this header.
template <class A, class B>
class NYXML_EXPORT NyXmlPairType : public NyXmlObject {
    static_assert(NyXmlItems::WholeClass<A>::value && NyXmlItems::WholeClass<B>::value);

public:
    NyXmlPairType() = default;
    /// A copy keeps the names of the tags.
    NyXmlPairType(NyXmlPairType const&) = default;
    NyXmlPairType(A const& first, B const& second) : m_thePair(first, second) {}
    NyXmlPairType& operator=(NyXmlPairType const&) = default;

    // NyXmlObject
    ~NyXmlPairType() override = default;
    void accept(NyXmlObjectVisitor* visitor) const override { visitor->visit(this); }
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlPairType(*this); }

    /// Takes the members in any order, under their tags or under the plain names `first` and `second`. A member that does not come keeps
    /// its value; of one that comes twice the later one stays.
    /// \return false if there was another child, reported with print type 4
    bool read(NyXmlReader& reader) override
    {
        if (!NyXmlObject::read(reader))
            return false;
        Sink sink(m_thePair);
        return NyXmlEntries::readPair(reader, __PRETTY_FUNCTION__, m_theFirstTag, m_theSecondTag, sink);
    }
    bool write(NyXmlWriter& writer) const override
    {
        bool const result = NyXmlObject::write(writer);
        NyXmlEntries::writeMember(writer, m_theFirstTag, first());
        NyXmlEntries::writeMember(writer, m_theSecondTag, second());
        return result;
    }
    bool writeSchema(NyXmlSchema& schema) const override
    {
        bool const result = NyXmlObject::writeSchema(schema);
        NyXmlEntries::writeMemberSchema(schema, m_theFirstTag, A());
        NyXmlEntries::writeMemberSchema(schema, m_theSecondTag, B());
        return result;
    }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlPairType const*>(other);
        return same != nullptr && *this == *same;
    }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlPairType; }
    NyToken const& token() const override { return classToken(); }

    // Its own
    virtual A& first() { return m_thePair.first; }
    virtual A const& first() const { return m_thePair.first; }
    virtual void setFirst(A const& first) { m_thePair.first = first; }
    virtual B& second() { return m_thePair.second; }
    virtual B const& second() const { return m_thePair.second; }
    virtual void setSecond(B const& second) { m_thePair.second = second; }
    virtual void set(A const& first, B const& second)
    {
        setFirst(first);
        setSecond(second);
    }
    virtual std::pair<A, B>& pairContainer() { return m_thePair; }
    virtual std::pair<A, B> const& pairContainer() const { return m_thePair; }

    /// Names the tags of the members.
    void setXmlTagNames(std::string const& first, std::string const& second)
    {
        m_theFirstTag = first;
        m_theSecondTag = second;
    }

    /// Compares the members; the names of the tags take no part.
    bool operator==(NyXmlPairType const& other) const
    {
        return NyXmlObject::operator==(other) && first() == other.first() && second() == other.second();
    }

    static NyToken const& classToken() { return NyXml::NyPairTypeToken; }
    static NyXmlPairType nullObject() { return NyXmlPairType(); }

private:
    class Sink final : public NyXmlMemberSink {
    public:
        explicit Sink(std::pair<A, B>& members) : m_members(members) {}
        void readFirst(NyXmlReader& reader) override { readMember(m_members.first, reader); }
        void readSecond(NyXmlReader& reader) override { readMember(m_members.second, reader); }

    private:
        static void readMember(NyXmlObject& member, NyXmlReader& reader)
        {
            member.xmlInit();
            member.read(reader);
        }

        std::pair<A, B>& m_members;
    };

    std::pair<A, B> m_thePair;
    std::string m_theFirstTag = NyXml::NyFirstToken.localName();
    std::string m_theSecondTag = NyXml::NySecondToken.localName();
};

extern template class NyXmlPairType<NyXmlBasicType<std::string>, NyXmlBasicType<std::string>>;
extern template class NyXmlPairType<NyXmlBasicType<std::string>, NyXmlBasicType<unsigned int>>;
extern template class NyXmlPairType<NyXmlBasicType<std::string>, NyXmlBasicType<bool>>;
extern template class NyXmlPairType<NyXmlBasicType<unsigned int>, NyXmlBasicType<unsigned int>>;
extern template class NyXmlPairType<NyXmlBasicType<double>, NyXmlBasicType<double>>;
extern template class NyXmlPairType<NyXmlVector, NyXmlVector>;

#endif
