#ifndef NYXML_VALUES_NYXMLMAPTYPE_H
#define NYXML_VALUES_NYXMLMAPTYPE_H

#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/traversal/NyXmlObjectVisitor.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlPairType.h>
#include <nyXml/values/NyXmlSetType.h>
#include <nyXml/values/NyXmlVectorBasicType.h>
#include <nyXml/values/detail/NyXmlEntries.h>
#include <nyXml/values/detail/NyXmlItemClass.h>
#include <nyXml/values/detail/NyXmlTextValue.h>

#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>

/// Objects by key, in key order in the document:
/// `<weights><element><key>left</key><value>1.5</value></element></weights>`.
///
/// \tparam K  an NyXmlObject with `<` and `==`
/// \tparam V  an NyXmlObject with `==`. Compiled into the library for the pairs at the end of this header.
template <class K, class V>
class NYXML_EXPORT NyXmlMapType : public NyXmlObject {
public:
    NyXmlMapType() = default;
    NyXmlMapType(NyXmlMapType const&) = default;
    NyXmlMapType(K const& key, V const& value) { m_theMap.emplace(key, value); }
    NyXmlMapType& operator=(NyXmlMapType const&) = default;

    // NyXmlObject
    ~NyXmlMapType() override { static_assert(NyXmlItems::WholeClass<K>::value && NyXmlItems::WholeClass<V>::value); }
    void accept(NyXmlObjectVisitor* visitor) const override { visitor->visit(this); }
    [[nodiscard]] NyXmlObject* clone() const override { return new NyXmlMapType(*this); }

    /// Replaces the entries. Of a key that comes twice the later value stays.
    ///
    /// One object serves all keys: where an empty element leaves a key alone, it is the key of the entry before. Each value starts anew.
    /// \return false at the first child that is no entry, reported with print type 4; the entries read so far stay
    bool read(NyXmlReader& reader) override
    {
        bool const result = NyXmlObject::read(reader);
        m_theMap.clear();
        Sink sink(m_theMap);
        return result && NyXmlEntries::readMap(reader, __PRETTY_FUNCTION__, sink);
    }
    bool write(NyXmlWriter& writer) const override
    {
        bool const result = NyXmlObject::write(writer);
        for (auto const& entry : m_theMap)
            NyXmlEntries::writeEntry(writer, entry.first, entry.second);
        return result;
    }
    bool writeSchema(NyXmlSchema& schema) const override
    {
        bool const result = NyXmlObject::writeSchema(schema);
        NyXmlEntries::writeMapSchema(schema, K(), V());
        return result;
    }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<NyXmlMapType const*>(other);
        return same != nullptr && *this == *same;
    }
    [[nodiscard]] NyXmlObject* newObject() const override { return new NyXmlMapType; }
    NyToken const& token() const override { return classToken(); }

    // Its own
    /// \param value  takes the value of the key; left alone if the key is absent  \return whether it is there
    virtual bool lookup(K const& key, V& value) const
    {
        V const* const found = lookupPointer(key);
        if (found != nullptr)
            value = *found;
        return found != nullptr;
    }
    /// The value inside the map, null if the key is absent. It stays the map's, and valid until its entry goes.
    virtual V* lookupPointer(K const& key)
    {
        auto const found = m_theMap.find(key);
        return found != m_theMap.end() ? &found->second : nullptr;
    }
    virtual V const* lookupPointer(K const& key) const
    {
        auto const found = m_theMap.find(key);
        return found != m_theMap.end() ? &found->second : nullptr;
    }
    /// Sets the value of the key, whether it had one or not.
    virtual void add(K const& key, V const& value) { m_theMap.insert_or_assign(key, value); }
    /// \return false if the key is absent
    virtual bool erase(K const& key) { return m_theMap.erase(key) != 0; }
    virtual void clear() { m_theMap.clear(); }
    virtual std::map<K, V> const& mapContainer() const { return m_theMap; }
    virtual std::map<K, V>& mapContainer() { return m_theMap; }
    /// The place of a key in key order, from 0. Walks there. \param index  the size if the key is absent  \return whether it is there
    virtual bool keyIndex(K const& key, unsigned int& index) const
    {
        index = 0;
        for (auto const& entry : m_theMap) {
            if (entry.first == key)
                return true;
            ++index;
        }
        return false;
    }
    /// The key at a place in key order. Walks there. \return false, with \p key left alone, if there is no such place
    virtual bool indexKey(unsigned int const& index, K& key) const
    {
        if (index >= size())
            return false;
        key = std::next(m_theMap.begin(), static_cast<std::ptrdiff_t>(index))->first;
        return true;
    }
    virtual unsigned int size() const { return static_cast<unsigned int>(m_theMap.size()); }

    bool operator==(NyXmlMapType const& other) const
    {
        if (!NyXmlObject::operator==(other) || m_theMap.size() != other.m_theMap.size())
            return false;
        auto theirs = other.m_theMap.begin();
        for (auto const& ours : m_theMap) {
            if (!(ours.first == theirs->first) || !(ours.second == theirs->second))
                return false;
            ++theirs;
        }
        return true;
    }

    static NyToken const& classToken() { return NyXml::NyMapTypeToken; }
    static NyXmlMapType nullObject() { return NyXmlMapType(); }

private:
    class Sink final : public NyXmlEntrySink {
    public:
        explicit Sink(std::map<K, V>& entries) : m_entries(entries) {}
        void readKey(NyXmlReader& reader) override
        {
            m_key.read(reader);
            enter();
        }
        void readValue(NyXmlReader& reader) override { m_value->read(reader); }
        bool isOfTexts() const override { return isNyXmlTextValue<K> && isNyXmlTextValue<V>; }
        void take([[maybe_unused]] NyXmlReader& reader, [[maybe_unused]] std::string_view key,
                  [[maybe_unused]] std::string_view value) override
        {
            if constexpr (isNyXmlTextValue<K> && isNyXmlTextValue<V>) {
                takeText(m_key, reader, key);
                enter();
                takeText(*m_value, reader, value);
            }
        }

    private:
        template <class T>
        static void takeText(NyXmlBasicType<T>& object, NyXmlReader& reader, std::string_view text)
        {
            object.NyXmlObject::read(reader);
            NyXmlTextOf<T>::take(object.value(), text);
        }

        /// Documents are in key order: at the end is where most entries go.
        void enter() { m_value = &m_entries.insert_or_assign(m_entries.end(), m_key, m_none)->second; }

        std::map<K, V>& m_entries;
        K m_key;
        V const m_none{};
        V* m_value = nullptr; ///< of the entry that was entered last
    };

    std::map<K, V> m_theMap;
};

extern template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<std::string>>;
extern template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<int>>;
extern template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<unsigned int>>;
extern template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<double>>;
extern template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<bool>>;
extern template class NyXmlMapType<NyXmlBasicType<std::string>,
                                   NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<double>>>;
extern template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<bool>>>;
extern template class NyXmlMapType<NyXmlBasicType<std::string>,
                                   NyXmlPairType<NyXmlBasicType<std::string>, NyXmlBasicType<std::string>>>;
extern template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlVectorBasicType<NyXmlBasicType<unsigned int>>>;
extern template class NyXmlMapType<NyXmlBasicType<std::string>, NyXmlVectorBasicType<NyXmlBasicType<double>>>;
extern template class NyXmlMapType<NyXmlBasicType<unsigned int>, NyXmlBasicType<unsigned int>>;
extern template class NyXmlMapType<NyXmlBasicType<unsigned int>, NyXmlBasicType<std::string>>;
extern template class NyXmlMapType<NyXmlBasicType<unsigned int>, NyXmlSetType<NyXmlBasicType<unsigned int>>>;

#endif
