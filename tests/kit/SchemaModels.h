#ifndef NYXMLKIT_TESTS_SCHEMAMODELS_H
#define NYXMLKIT_TESTS_SCHEMAMODELS_H

#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>
#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlEnumType.h>
#include <nyXml/values/NyXmlVectorType.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

/// Random numbers that are the same everywhere.
class Dice {
public:
    explicit Dice(unsigned int seed) : m_engine(seed) {}
    /// From 0 up to but not including \p count.
    unsigned int below(unsigned int count) { return static_cast<unsigned int>(m_engine() % count); }
    unsigned int bits() { return static_cast<unsigned int>(m_engine()); }
    bool chance(unsigned int percent) { return below(100) < percent; }

private:
    std::mt19937 m_engine;
};

/// A class of the random models: what its objects register.
struct SampleClass {
    struct Member {
        NyToken name;
        bool isAttribute;
        std::function<std::unique_ptr<NyXmlObject>()> make;
        std::function<std::unique_ptr<NyXmlObject>(NyXmlObject const&)> copy;
        /// \param depth  how many more classes may be nested
        std::function<void(NyXmlObject&, Dice&, unsigned int depth)> fill;
    };
    std::vector<Member> members;
};

/// An object of such a class: one C++ class for all of them, so that a name and a C++ class tell nothing of the members.
class Sample : public NyXmlCompoundType {
public:
    explicit Sample(SampleClass const* ofClass) : m_class(ofClass)
    {
        for (SampleClass::Member const& member : m_class->members)
            m_members.push_back(member.make());
    }
    Sample(Sample const& other) : NyXmlCompoundType(other), m_class(other.m_class)
    {
        for (std::size_t i = 0; i < m_class->members.size(); ++i)
            m_members.push_back(m_class->members[i].copy(*other.m_members[i]));
    }
    Sample& operator=(Sample const& other)
    {
        Sample copy(other);
        m_class = copy.m_class;
        m_members.swap(copy.m_members);
        setXmlInitialized(false);
        return *this;
    }

    NyXmlObject* clone() const override { return new Sample(*this); }
    NyXmlObject* newObject() const override { return new Sample(m_class); }
    NyToken const& token() const override
    {
        static NyToken const name("sample");
        return name;
    }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* const sample = dynamic_cast<Sample const*>(other);
        if (sample == nullptr || sample->m_class != m_class)
            return false;
        for (std::size_t i = 0; i < m_members.size(); ++i) {
            if (!m_members[i]->equality(sample->m_members[i].get()))
                return false;
        }
        return true;
    }
    bool operator==(Sample const& other) const { return equality(&other); }
    void registerComponents() override
    {
        for (std::size_t i = 0; i < m_members.size(); ++i) {
            auto const& member = m_class->members[i];
            member.isAttribute ? registerAttributeComponent(member.name, m_members[i].get())
                               : registerComponent(member.name, m_members[i].get());
        }
    }
    /// Gives most members a value.
    void fill(Dice& dice, unsigned int depth)
    {
        for (std::size_t i = 0; i < m_members.size(); ++i) {
            if (dice.chance(75))
                m_class->members[i].fill(*m_members[i], dice, depth);
        }
    }

private:
    SampleClass const* m_class;
    std::vector<std::unique_ptr<NyXmlObject>> m_members;
};

/// The item of a sequence or an alternative, which needs a class of its own to be made from nothing.
template <int Number>
class SampleItem : public Sample {
public:
    static inline SampleClass const* itemClass = nullptr;
    SampleItem() : Sample(itemClass) {}
    SampleItem(SampleItem const&) = default;
    SampleItem& operator=(SampleItem const&) = default;
    NyXmlObject* clone() const override { return new SampleItem(*this); }
    NyXmlObject* newObject() const override { return new SampleItem; }
    static NyXmlObject* create() { return new SampleItem; }
};

/// A sequence of such items.
template <int Number>
class SampleItems : public NyXmlVectorType<SampleItem<Number>> {
public:
    SampleItems() = default;
    SampleItems(SampleItems const& other) : NyXmlVectorType<SampleItem<Number>>(other) {}
    NyXmlObject* clone() const override { return new SampleItems(*this); }
    NyXmlObject* newObject() const override { return new SampleItems; }
};

/// Chooses among items 0 to 2 and a number.
class SampleChoice : public NyXmlBaseVariableCompoundType {
public:
    /// Names of the alternatives.
    static inline std::vector<NyToken> names;

    SampleChoice() = default;
    SampleChoice(SampleChoice const& other) : NyXmlBaseVariableCompoundType(other)
    {
        for (auto const& [which, object] : other.m_members)
            m_members.emplace_back(which, object->clone());
    }
    NyXmlObject* clone() const override { return new SampleChoice(*this); }
    NyXmlObject* newObject() const override { return new SampleChoice; }
    NyToken const& token() const override
    {
        static NyToken const name("choice");
        return name;
    }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* const choice = dynamic_cast<SampleChoice const*>(other);
        return choice != nullptr && m_members.empty() && choice->m_members.empty();
    }
    void registerComponents() override
    {
        for (std::size_t i = 0; i < names.size(); ++i)
            registerComponentCreator(names[i], creator(i));
    }
    bool readValueFromToken(NyToken const&, NyXmlReader&) override { return false; }
    bool write(NyXmlWriter& writer) const override
    {
        bool const result = NyXmlBaseVariableCompoundType::write(writer);
        for (auto const& [which, object] : m_members) {
            writer.writeStartTag(names[which]);
            if (which % 2 != 0) { // where the class is from, as applications write it
                writer.setAttributeName(NyXml::NyLibraryToken);
                writer.data("parts.nyp");
            }
            object->write(writer);
            writer.writeEndTag();
        }
        return result;
    }
    void fill(Dice& dice, unsigned int depth)
    {
        for (unsigned int count = depth == 0 ? 0 : dice.below(4); count > 0; --count) {
            std::size_t const which = dice.below(static_cast<unsigned int>(names.size()));
            std::unique_ptr<NyXmlObject> object(creator(which)());
            if (auto* const sample = dynamic_cast<Sample*>(object.get()))
                sample->fill(dice, depth - 1);
            m_members.emplace_back(which, std::move(object));
        }
    }

private:
    static NyXmlObject* createNumber() { return new NyXmlBasicType<unsigned short>(7); }
    static NyXmlCreator creator(std::size_t which)
    {
        static NyXmlCreator const creators[] = { &createNumber, &SampleItem<0>::create, &SampleItem<1>::create,
                                                 &SampleItem<2>::create };
        return creators[which];
    }
    std::vector<std::pair<std::size_t, std::unique_ptr<NyXmlObject>>> m_members;
};

/// An enumeration whose words are the object's and not its class's.
template <class T>
class SampleWord : public NyXmlEnumType<T> {
public:
    explicit SampleWord(std::vector<std::string> const* words) : m_words(words) {}
    SampleWord(SampleWord const& other) : NyXmlEnumType<T>(other), m_words(other.m_words) {}
    NyXmlObject* clone() const override { return new SampleWord(*this); }
    NyXmlObject* newObject() const override { return new SampleWord(m_words); }
    bool xmlInit() override
    {
        for (std::size_t i = 0; i < m_words->size(); ++i)
            this->setEnumString(T(static_cast<int>(i)), (*m_words)[i]);
        return NyXmlEnumType<T>::xmlInit();
    }

private:
    std::vector<std::string> const* m_words;
};

/// What a model is to be like.
struct ModelKind {
    char const* name;
    bool isPooled = false;          ///< names from a pool of twelve
    bool hasTrees = false;          ///< classes with sequences of their own class
    bool hasTwoNamespaces = false;  ///< of which each has elements of the other
    bool hasInfinities = false;     ///< and NaN
    bool leavesDefaultsOut = false; ///< when writing
    bool hasContainers = false;     ///< all value kinds instead of scalars
    bool hasWords = false;          ///< enumerations, runs of them too
    bool hasChoices = false;        ///< polymorphic members
    bool hasItems = false;          ///< sequences of classes
};

/// A random model: classes, a root object of them, and a document.
class SampleModel {
public:
    SampleModel(ModelKind const& kind, unsigned int seed);
    Sample const& root() const { return *m_root; }
    NyToken const& rootToken() const { return m_rootToken; }
    /// A document of the root with new values.
    std::string document();

private:
    SampleClass& newClass(unsigned int nesting);
    SampleClass::Member scalar(bool isAttribute);
    SampleClass::Member container();
    SampleClass::Member ofClasses(unsigned int nesting);
    NyToken name(bool isAttribute, std::vector<SampleClass::Member> const& taken);
    std::vector<std::string> const* words();

    ModelKind m_kind;
    Dice m_dice;
    unsigned int m_nameCount = 0;
    std::vector<std::unique_ptr<SampleClass>> m_classes;
    std::vector<std::unique_ptr<std::vector<std::string>>> m_words;
    NyToken m_rootToken;
    std::unique_ptr<Sample> m_root;
};

#endif
