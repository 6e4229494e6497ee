#ifndef NYXMLKIT_MODEL_NYXMLPOLYMORPHIC_H
#define NYXMLKIT_MODEL_NYXMLPOLYMORPHIC_H

#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>
#include <nyXml/compound/NyXmlFactory.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>
#include <nyXmlKit/model/NyXmlObjectOf.h>

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

/// What NyXmlOneOf and NyXmlManyOf have in common: children whose classes the document chooses, one after the other in one element.
///
/// A child is of a class that was named to the template, of one registered with registerComponentCreator(), of one that a plug-in
/// brought, or of one that the reader's factory makes, in this order. A plug-in comes by the attribute `library` of a child, by the
/// element `addLibraries`, or by loadLibrary(). Children that a plug-in brought are written with its `library`, unless `addLibraries` lists
/// it: the document reads back in a process that has not met the plug-in. Each library is loaded once.
///
/// A child of an unknown class, or of one that is none of those asked for, is reported (print type 4) and skipped.
class NYXML_EXPORT NyXmlPolymorphic : public NyXmlBaseVariableCompoundType, public NyXmlMemberKind {
public:
    NyXmlPolymorphic() = default;
    /// Copies each child. What plug-ins brought stays known to the copy.
    NyXmlPolymorphic(NyXmlPolymorphic const& other);
    NyXmlPolymorphic& operator=(NyXmlPolymorphic const& other);
    ~NyXmlPolymorphic() override;

    bool empty() const noexcept { return m_theChildren.empty(); }
    void clear() noexcept { m_theChildren.clear(); }

    /// Loads a plug-in: a file as it is. \return false, with a report of the factory, if that is not possible
    bool loadLibrary(std::string const& library);

    // NyXmlObject
    bool read(NyXmlReader& reader) override;
    bool write(NyXmlWriter& writer) const override;
    bool equalsDefault() const override;
    bool equality(NyXmlObject const* other) const override;

    // NyXmlBaseVariableCompoundType
    void registerComponentCreator(NyToken const& token, NyXmlCreator creator) override;
    [[nodiscard]] NyXmlObject* newObjectFromToken(NyToken const& token) const override;
    NyXmlFactory::CreatorMap const& creatorMap() const override;
    bool readValueFromToken(NyToken const& element, NyXmlReader& reader) override;

    // NyXmlMemberKind
    std::vector<Alternative> alternatives() const override;
    std::vector<std::string> ownAttributes() const override; ///< of the children: `library`

protected:
    struct Child {
        std::unique_ptr<NyXmlObject> object;
        NyToken name;        ///< of its element
        std::string library; ///< by which it is written; empty for a class that is known without
    };

    /// Whether the object is of the class that all children derive from.
    virtual bool isWanted(NyXmlObject const& object) const = 0;

    /// Adds a child under the name of its class.
    void add(std::unique_ptr<NyXmlObject> object);
    /// Makes a child by the name of its class. \return null, and nothing is added, for a name that is unknown or not wanted
    NyXmlObject* addByName(NyToken const& name);

    void processLibraries() override;

    std::vector<Child> m_theChildren;

private:
    /// Notes which library brought which class.
    class NYXML_EXPORT Factory : public NyXmlFactory {
    public:
        using NyXmlFactory::registerComponentCreator;
        void registerComponentCreator(NyToken const& token, NyXmlCreator creator) override;
        /// Once for each library. \param isListed  in `addLibraries`, so that its classes need no attribute
        bool load(std::string const& library, bool isListed);
        std::string libraryOf(NyToken const& token) const;

    private:
        struct Library {
            std::string name;
            bool isListed;
        };
        std::vector<Library> m_theLibraries;             ///< in the order of loading
        std::map<std::string, std::string> m_theOrigins; ///< class to library
        std::string m_theLoading;                        ///< whose classes are being registered; empty for the application's
    };

    NyToken nameOf(NyToken const& element) const;

    Factory m_theFactory;
};

/// One child, or none, whose class the document chooses: `<geometry><box size="1 2 3"/></geometry>`.
///
/// \code
///     NyXmlOneOf<Shape, Box, Cylinder> geometry; // element("geometry", geometry);
///     if (Box const* box = geometry.as<Box>()) ...
///     geometry.make<Cylinder>().radius = 2;
/// \endcode
/// Of several children the last one counts. \tparam Base  what all of them derive from, itself from NyXmlObject
/// \tparam Classes  those that are known; named by their token()
template <class Base, class... Classes>
class NYXML_EXPORT NyXmlOneOf;

/// Children whose classes the document chooses, in the order of the document: `<tasks><move/><wait/><move/></tasks>`.
template <class Base, class... Classes>
class NYXML_EXPORT NyXmlManyOf;

/// What both do by their types. Not for applications.
template <class Self, class Base, class... Classes>
class NYXML_EXPORT NyXmlPolymorphicOf : public NyXmlPolymorphic {
public:
    [[nodiscard]] NyXmlObject* clone() const override { return new Self(static_cast<Self const&>(*this)); }
    [[nodiscard]] NyXmlObject* newObject() const override { return new Self; }
    NyToken const& token() const override { return NyXml::NyVarVectorTypeToken; }
    void registerComponents() override
    {
        static_assert((std::is_base_of_v<Base, Classes> && ...),
                      "the classes to choose from derive from the base that was named");
        static_assert((NyXmlWholeClass<Classes>::value && ...));
        (registerComponentCreator(Classes().token(), []() -> NyXmlObject* { return new Classes; }), ...);
    }
    bool operator==(Self const& other) const { return equality(&other); }
    bool operator!=(Self const& other) const { return !equality(&other); }

protected:
    bool isWanted(NyXmlObject const& object) const override { return dynamic_cast<Base const*>(&object) != nullptr; }
    Base& at(std::size_t index) const { return dynamic_cast<Base&>(*m_theChildren[index].object); }
    template <class Class, class... Arguments>
    Class& addNew(Arguments&&... arguments)
    {
        static_assert(std::is_base_of_v<Base, Class>, "a child derives from the base that was named");
        auto object = std::make_unique<Class>(std::forward<Arguments>(arguments)...);
        Class& child = *object;
        add(std::move(object));
        return child;
    }
};

template <class Base, class... Classes>
class NYXML_EXPORT NyXmlOneOf : public NyXmlPolymorphicOf<NyXmlOneOf<Base, Classes...>, Base, Classes...> {
public:
    explicit operator bool() const noexcept { return !this->empty(); }
    Base& operator*() const { return this->at(this->m_theChildren.size() - 1); } ///< only if there is one
    Base* operator->() const { return &**this; }
    /// The child if it is of this class, or null.
    template <class Class>
    Class* as() const
    {
        return this->empty() ? nullptr : dynamic_cast<Class*>(&**this);
    }
    /// Puts a new child there.
    template <class Class, class... Arguments>
    Class& make(Arguments&&... arguments)
    {
        this->clear();
        return this->template addNew<Class>(std::forward<Arguments>(arguments)...);
    }
    /// The same by the name of its class. \return null, and nothing is there, for an unknown one
    Base* make(NyToken const& name)
    {
        this->clear();
        return this->addByName(name) == nullptr ? nullptr : &**this;
    }

    bool readValueFromToken(NyToken const& element, NyXmlReader& reader) override
    {
        bool const result = NyXmlPolymorphic::readValueFromToken(element, reader);
        if (this->m_theChildren.size() > 1)
            this->m_theChildren.erase(this->m_theChildren.begin());
        return result;
    }
    unsigned int maxAlternatives() const override { return 1; }
};

template <class Base, class... Classes>
class NYXML_EXPORT NyXmlManyOf : public NyXmlPolymorphicOf<NyXmlManyOf<Base, Classes...>, Base, Classes...> {
public:
    std::size_t size() const noexcept { return this->m_theChildren.size(); }
    Base& operator[](std::size_t index) const { return this->at(index); }
    template <class Class, class... Arguments>
    Class& append(Arguments&&... arguments)
    {
        return this->template addNew<Class>(std::forward<Arguments>(arguments)...);
    }
    /// The same by the name of its class. \return null, and nothing is added, for an unknown one
    Base* append(NyToken const& name) { return this->addByName(name) == nullptr ? nullptr : &(*this)[size() - 1]; }
    void erase(std::size_t index) { this->m_theChildren.erase(this->m_theChildren.begin() + static_cast<std::ptrdiff_t>(index)); }

    unsigned int maxAlternatives() const override { return NyXmlMemberKind::unbounded; }
};

#endif
