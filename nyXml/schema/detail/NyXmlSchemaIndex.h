// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_SCHEMA_DETAIL_NYXMLSCHEMAINDEX_H
#define NYXML_SCHEMA_DETAIL_NYXMLSCHEMAINDEX_H

#include <nyXml/schema/NyXmlSchema.h>

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

/// A table of records by name that knows which is the first one, in the order of the names, that is convertible with a given one.
/// Ours alone: no application includes this.
///
/// Hot: every element with children or attributes asks this when it closes, and 2,000 classes easily have a thousand types that are
/// all called "element.Type", with suffixes. To ask each record in turn took 4 to 25 seconds for them, this takes 0.3, and doubles
/// with the model (benchmarks/Schema.cpp). Records are kept in buckets by the hash of what convertible ones have in common, so that
/// isTypeConvertible() decides among few. What may fit a record are
/// - records whose elements have the same names and types,
/// - records whose elements have the same names, and some of them an empty type, which fits every type,
/// - records without elements,
/// and for a record that has itself an empty type, or no elements, all that the names, or the rest, allow.
template <class Record>
class NyXmlSchemaFirstFit {
public:
    using Table = std::map<std::string, Record>;
    using Entry = typename Table::value_type;

    /// \param table  outlives us, and changes through us alone
    explicit NyXmlSchemaFirstFit(Table& table) : m_theTable(table)
    {
        for (Entry& entry : m_theTable)
            addToBuckets(entry);
    }

    /// The first record that is convertible with this one, null if there is none.
    Entry* find(Record const& record) const
    {
        Traits const traits(record);
        Entry* first = nullptr;
        if (traits.hasNoElements) {
            lookInto(traits.bucket(ALL), record, first);
            return first;
        }
        lookInto(traits.bucket(WITHOUT_ELEMENTS), record, first);
        if (traits.hasEmptyType) {
            lookInto(traits.bucket(SAME_NAMES), record, first);
        } else {
            lookInto(traits.bucket(SAME_TYPES), record, first);
            lookInto(traits.bucket(SOME_EMPTY_TYPE), record, first);
        }
        return first;
    }

    /// Enters a record under a name, with "_1" behind it for as long as it is taken. \return the name
    std::string const& enter(Record const& record, std::string const& name)
    {
        // Names are never given back, so the search goes on where it ended the last time. A model with a thousand kinds of "element"
        // has names with a thousand suffixes.
        std::string free = name;
        auto const last = m_theLastTaken.find(name);
        if (last != m_theLastTaken.end())
            free = last->second;
        while (m_theTable.count(free) != 0)
            free += "_1";
        if (free != name)
            m_theLastTaken[name] = free;
        Entry& entry = *m_theTable.emplace(free, record).first;
        addToBuckets(entry);
        return entry.first;
    }

    void merge(Entry& entry, Record const& record)
    {
        // Without empty types and with elements there is nothing that a merge could change and a bucket could tell.
        Traits const traits(entry.second);
        bool const moves = traits.hasNoElements || traits.hasEmptyType;
        if (moves)
            removeFromBuckets(entry);
        entry.second.convertType(record);
        if (moves)
            addToBuckets(entry);
    }

private:
    struct ByName {
        bool operator()(Entry const* one, Entry const* other) const { return one->first < other->first; }
    };
    using Bucket = std::set<Entry*, ByName>;

    enum BucketKind : std::size_t { ALL, WITHOUT_ELEMENTS, SAME_NAMES, SOME_EMPTY_TYPE, SAME_TYPES };

    /// Hash values of what convertible records have in common. Equal values of unlike records do no harm: they share a bucket.
    struct Traits {
        explicit Traits(Record const& record)
            : frame(hashOfFrame(record)),
              names(frame),
              types(frame),
              hasNoElements(record.elementVector().empty())
        {
            for (NyXmlSchemaElementType const& element : record.elementVector()) {
                names = mix(mix(mix(names, element.elementName().localName()), element.elementName().namespaceName()),
                            element.getNamespace());
                types = mix(types, element.type());
                hasEmptyType = hasEmptyType || NyXmlSchemaElementType::isEmptyType(element.type());
            }
        }
        std::size_t bucket(BucketKind kind) const
        {
            switch (kind) {
            case ALL:
            case WITHOUT_ELEMENTS: return mix(frame, kind);
            case SAME_NAMES:
            case SOME_EMPTY_TYPE: return mix(names, kind);
            case SAME_TYPES: break;
            }
            return mix(names, types);
        }

        std::size_t frame; ///< of all but the elements
        std::size_t names; ///< of the frame and the elements' names
        std::size_t types; ///< of the frame and the elements' types
        bool hasNoElements;
        bool hasEmptyType = false;
    };

    static std::size_t mix(std::size_t hash, std::size_t value)
    {
        return hash ^ (value + 0x9e3779b9u + (hash << 6) + (hash >> 2));
    }
    static std::size_t mix(std::size_t hash, std::string const& text) { return mix(hash, std::hash<std::string>()(text)); }

    static std::size_t hashOfFrame(NyXmlSchemaComplexType const& type)
    {
        std::size_t hash = mix(mix(std::size_t(0), type.elementName().localName()), type.elementName().namespaceName());
        hash = mix(mix(hash, type.getNamespace()), type.contentType());
        for (NyXmlSchemaAttributeType const& attribute : type.attributeVector()) {
            hash = mix(mix(hash, attribute.elementName().localName()), attribute.elementName().namespaceName());
            hash = mix(hash, attribute.type());
        }
        return hash;
    }
    static std::size_t hashOfFrame(NyXmlSchemaGroupType const& group)
    {
        return mix(mix(std::size_t(0), group.getNamespace()), static_cast<std::size_t>(group.startTagMode()));
    }

    /// Which buckets hold a record.
    static std::vector<BucketKind> kindsOf(Traits const& traits)
    {
        if (traits.hasNoElements)
            return { ALL, WITHOUT_ELEMENTS };
        return { ALL, SAME_NAMES, traits.hasEmptyType ? SOME_EMPTY_TYPE : SAME_TYPES };
    }

    void addToBuckets(Entry& entry)
    {
        Traits const traits(entry.second);
        for (BucketKind kind : kindsOf(traits))
            m_theBuckets[traits.bucket(kind)].insert(&entry);
    }

    void removeFromBuckets(Entry& entry)
    {
        Traits const traits(entry.second);
        for (BucketKind kind : kindsOf(traits))
            m_theBuckets[traits.bucket(kind)].erase(&entry);
    }

    /// Moves \p first to the bucket's first convertible entry if that comes before it.
    void lookInto(std::size_t bucket, Record const& record, Entry*& first) const
    {
        auto const found = m_theBuckets.find(bucket);
        if (found == m_theBuckets.end())
            return;
        for (Entry* entry : found->second) {
            if (first != nullptr && first->first <= entry->first)
                return;
            if (entry->second.isTypeConvertible(record)) {
                first = entry;
                return;
            }
        }
    }

    Table& m_theTable;
    std::unordered_map<std::size_t, Bucket> m_theBuckets;
    std::unordered_map<std::string, std::string> m_theLastTaken; ///< a name asked for, and the last one that was made of it
};

/// Ways into the tables of one schema.
class NyXmlSchema::Index {
public:
    explicit Index(NyXmlSchema& schema) : complexTypes(schema.m_theComplexTypes), groupTypes(schema.m_theGroupTypes)
    {
        for (NyXmlSchemaGlobalElementType const& global : schema.m_theGlobalElements)
            globalElements.insert(visitKey(global.elementName(), global.getNamespace()));
    }

    NyXmlSchemaFirstFit<NyXmlSchemaComplexType> complexTypes;
    NyXmlSchemaFirstFit<NyXmlSchemaGroupType> groupTypes;
    std::set<VisitKey> globalElements; ///< name, its namespace, and the namespace that declares it
};

#endif
