#ifndef NYXMLKIT_MODEL_NYXMLMODEL_H
#define NYXMLKIT_MODEL_NYXMLMODEL_H

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXmlKit/model/NyXmlClass.h>
#include <nyXmlKit/model/detail/NyXmlRegistrar.h>
#include <nyXmlKit/model/detail/NyXmlSharing.h>

#include <cstddef>
#include <type_traits>
#include <typeinfo>

class NyXmlVersioned;

/// What NyXmlModel adds to a base, once for each base. Not for applications. Its names have a prefix where an application's members could
/// be called alike.
template <class Base>
class NYXML_EXPORT NyXmlModelOver : public Base, public NyXmlModelKind {
    static_assert(std::is_base_of_v<NyXmlCompoundType, Base>, "the base of a model class derives from NyXmlCompoundType");

public:
    using Base::Base;

    // NyXmlObject
    bool xmlInit() override
    {
        NyXmlRegistrar const theRegistrar(*this, *this);
        return Base::xmlInit();
    }
    bool read(NyXmlReader& theReader) override
    {
        NyXmlSharing::Scope const theScope;
        NyXmlModelWork::forget(*this, this->xmlClass());
        bool const theResult = Base::read(theReader);
        if constexpr (!std::is_base_of_v<NyXmlVersioned, Base>) // which knows the version
            if (theResult && this->xmlClass().hasRequired())
                NyXmlModelWork::reportMissing(*this, this->xmlClass(), theReader);
        return theResult;
    }
    bool write(NyXmlWriter& theWriter) const override
    {
        NyXmlSharing::Scope const theScope;
        if constexpr (isOfCompound(&Base::write))
            return NyXmlModelWork::write(*this, this->xmlClass(), theWriter);
        else
            return Base::write(theWriter);
    }
    /// False for an object of another class, of a derived one too.
    bool equality(NyXmlObject const* theOther) const override
    {
        if (theOther == nullptr || typeid(*theOther) != typeid(*this))
            return false;
        auto const& theSame = static_cast<NyXmlModelOver const&>(*theOther);
        if constexpr (!std::is_same_v<Base, NyXmlCompoundType>)
            if (!(static_cast<Base const&>(*this) == static_cast<Base const&>(theSame)))
                return false;
        return NyXmlModelWork::sameMembers(*this, theSame, this->xmlClass());
    }

    // NyXmlCompoundType
    bool writeAttributes(NyXmlWriter& theWriter) const override
    {
        bool const theResult = NyXmlObject::write(theWriter);
        if (NyXmlModelWork::writesAsCore(*this, this->xmlClass(), theWriter))
            return Base::writeAttributes(theWriter);
        NyXmlModelWork::writeAttributes(*this, this->xmlClass(), theWriter,
                                        [](NyXmlCompoundType const& theSelf, NyToken const& theToken) {
                                            return static_cast<NyXmlModelOver const&>(theSelf).isReadOnlyAttribute(theToken);
                                        });
        return theResult;
    }
    bool writeElements(NyXmlWriter& theWriter) const override
    {
        if (NyXmlModelWork::writesAsCore(*this, this->xmlClass(), theWriter))
            return Base::writeElements(theWriter);
        NyXmlModelWork::writeElements(*this, this->xmlClass(), theWriter,
                                      [](NyXmlCompoundType const& theSelf, NyToken const& theToken) {
                                          return static_cast<NyXmlModelOver const&>(theSelf).isReadOnlyComponent(theToken);
                                      });
        return true;
    }
    bool writeSchemaElements(NyXmlSchema& theSchema) const override
    {
        if (NyXmlModelWork::describesAsCore(*this, this->xmlClass()) || !this->hasChildren())
            return Base::writeSchemaElements(theSchema);
        NyXmlModelWork::writeSchemaElements(*this, this->xmlClass(), theSchema);
        return true;
    }
    void registerComponent(NyToken const& theToken, NyXmlObject* theObject) override
    {
        NyXmlRegistrar::note(*this, *this, false, false, theToken, theObject);
        Base::registerComponent(theToken, theObject);
    }
    void registerComponentReadOnly(NyToken const& theToken, NyXmlObject* theObject) override
    {
        NyXmlRegistrar::note(*this, *this, false, true, theToken, theObject);
        Base::registerComponentReadOnly(theToken, theObject);
    }
    void registerAttributeComponent(NyToken const& theToken, NyXmlObject* theObject) override
    {
        NyXmlRegistrar::note(*this, *this, true, false, theToken, theObject);
        Base::registerAttributeComponent(theToken, theObject);
    }
    void registerAttributeComponentReadOnly(NyToken const& theToken, NyXmlObject* theObject) override
    {
        NyXmlRegistrar::note(*this, *this, true, true, theToken, theObject);
        Base::registerAttributeComponentReadOnly(theToken, theObject);
    }

private:
    template <class Class>
    static constexpr bool isOfCompound(bool (Class::*)(NyXmlWriter&) const)
    {
        return std::is_same_v<Class, NyXmlCompoundType>;
    }
};

extern template class NyXmlModelOver<NyXmlCompoundType>;

/// The base of a class that is its members, its name and registerComponents(): what else an object needs is made from these.
///
/// \code
///     class Joint : public NyXmlModel<Joint> {
///     public:
///         static constexpr auto xmlName = "urn:demo/robots#joint";
///         void registerComponents() override
///         {
///             attribute("id", id);
///             element("angle", angle);
///         }
///         NyXmlBasicType<unsigned int> id;
///         NyXmlBasicType<double> angle;
///     };
/// \endcode
/// Copies, fresh objects, the token, equality(), == and != follow: two objects are equal if they are of the same class and all that is
/// registered is equal, and so a member is left out as a default exactly if all of it has the values of a fresh object.
///
/// Registrations are the core's; the short forms beside them put an element into the namespace of the class and an attribute into none.
/// A name with a `#` of its own is taken whole. Members that may be absent, stand there several times or are chosen by the document are
/// those of the headers beside this one.
///
/// A member may be missing in a document, unless it is registered as required: `requiredElement("mass", mass)`.
///
/// A derived class says so: `class Welder : public NyXmlModel<Welder, Robot>`. What Robot registers is registered ahead of its own,
/// compared and written with it; Welder says only what it adds. A class that gets a base later reads its older documents, since
/// elements have no place for bases. The base may also be a class that derives from NyXmlCompoundType by hand.
///
/// Members are written by name, as the core does it, unless the class says
/// `static constexpr auto xmlOrder = NyXmlOrder::asRegistered;`.
///
/// All members lie in the object, and all objects of a class register the same ones: a class that does otherwise works, by the core's
/// component maps.
///
/// \tparam Self  the class that derives, with `xmlName` as above, a default constructor and copies
/// \tparam Base  a model class, or one that derives from NyXmlCompoundType
template <class Self, class Base = NyXmlCompoundType>
class NYXML_EXPORT NyXmlModel : public std::conditional_t<std::is_base_of_v<NyXmlModelKind, Base>, Base, NyXmlModelOver<Base>> {
    using Above = std::conditional_t<std::is_base_of_v<NyXmlModelKind, Base>, Base, NyXmlModelOver<Base>>;

public:
    using Above::Above;

    /// Null for an abstract class, of which there are no objects.
    [[nodiscard]] NyXmlObject* clone() const override
    {
        if constexpr (std::is_abstract_v<Self>) {
            return nullptr;
        } else {
            static_assert(std::is_copy_constructible_v<Self>, "a model class can be copied");
            return new Self(static_cast<Self const&>(*this));
        }
    }
    [[nodiscard]] NyXmlObject* newObject() const override
    {
        if constexpr (std::is_abstract_v<Self>) {
            return nullptr;
        } else {
            static_assert(std::is_default_constructible_v<Self>, "a model class has a default constructor");
            return new Self;
        }
    }
    /// xmlName.
    NyToken const& token() const override { return classToken(); }
    static NyToken const& classToken()
    {
        static_assert(hasOwnName(), "a model class says its name: static constexpr auto xmlName = \"namespace#name\";");
        static NyToken const theToken(Self::xmlName);
        return theToken;
    }

    NyXmlClass const& xmlClass() const override
    {
        static_assert(std::is_base_of_v<NyXmlModel, Self>, "NyXmlModel<Self> is the base of class Self itself");
        static NyXmlClass const theClass(typeid(Self), orderOf<Self>(0), sizeof(Self), versionOf<Self>(0));
        return theClass;
    }
    void registerBases() override
    {
        if constexpr (std::is_base_of_v<NyXmlModelKind, Base>)
            Above::registerBases();
        if constexpr (isDefined(&NyXmlModel::registerComponents))
            Above::registerComponents();
    }

    /// Equal values of all that is registered.
    bool operator==(Self const& theOther) const { return this->equality(&theOther); }
    bool operator!=(Self const& theOther) const { return !this->equality(&theOther); }

protected:
    // Names are literals: by its address a name is known again for the next object. Others go to the core's registerComponent().

    /// The member answers to the child element of this name, in the namespace of this class.
    template <std::size_t length, class Member>
    void element(char const (&theName)[length], Member& theMember)
    {
        static_assert(std::is_base_of_v<NyXmlObject, Member>,
                      "an element is an object: NyXmlBasicType<double>, say, and no plain double");
        NyXmlRegistrar::enter(*this, nullptr, false, Self::xmlName, theName, &theMember);
    }
    /// The member answers to the attribute of this name.
    template <std::size_t length, class Member>
    void attribute(char const (&theName)[length], Member& theMember)
    {
        checkAttribute<Member>();
        NyXmlRegistrar::enter(*this, nullptr, true, Self::xmlName, theName, &theMember);
    }

    // The same for members that must be there. Every document has them, also if they equal their default and defaults are left out. One
    // that lacks them is reported (print type 4) and read as far as it goes; the exact schema refuses it. A required NyXmlRepeated has an
    // item at least. Vectors, orientations and paths don't know whether they were read: that one is missing, strict reading says.

    template <std::size_t length, class Member>
    void requiredElement(char const (&theName)[length], Member& theMember)
    {
        checkRequired<Member>();
        NyXmlRegistrar::enter(*this, &this->xmlClass(), false, Self::xmlName, theName, &theMember);
    }
    template <std::size_t length, class Member>
    void requiredAttribute(char const (&theName)[length], Member& theMember)
    {
        checkRequired<Member>();
        checkAttribute<Member>();
        NyXmlRegistrar::enter(*this, &this->xmlClass(), true, Self::xmlName, theName, &theMember);
    }

    template <std::size_t length, class Member>
    void element(char (&theName)[length], Member& theMember) = delete;
    template <std::size_t length, class Member>
    void attribute(char (&theName)[length], Member& theMember) = delete;

    /// Several at once: `elements("angle", angle, "limit", limit);`.
    template <std::size_t length, class Member, class... More>
    void elements(char const (&theName)[length], Member& theMember, More&&... more)
    {
        element(theName, theMember);
        if constexpr (sizeof...(more) > 0)
            elements(more...);
    }
    template <std::size_t length, class Member, class... More>
    void attributes(char const (&theName)[length], Member& theMember, More&&... more)
    {
        attribute(theName, theMember);
        if constexpr (sizeof...(more) > 0)
            attributes(more...);
    }
    template <std::size_t length, class Member, class... More>
    void requiredElements(char const (&theName)[length], Member& theMember, More&&... more)
    {
        requiredElement(theName, theMember);
        if constexpr (sizeof...(more) > 0)
            requiredElements(more...);
    }
    template <std::size_t length, class Member, class... More>
    void requiredAttributes(char const (&theName)[length], Member& theMember, More&&... more)
    {
        requiredAttribute(theName, theMember);
        if constexpr (sizeof...(more) > 0)
            requiredAttributes(more...);
    }

    // For classes over NyXmlVersioned: registrations that hold in some versions of the document. `since(2)`, `until(3)`, `between(2, 3)`.

    template <std::size_t length, class Member>
    void element(char const (&theName)[length], Member& theMember, NyXmlVersions theVersions)
    {
        if (enterVersioned(false, false, theName, theMember, theVersions))
            element(theName, theMember);
    }
    template <std::size_t length, class Member>
    void requiredElement(char const (&theName)[length], Member& theMember, NyXmlVersions theVersions)
    {
        if (enterVersioned(true, false, theName, theMember, theVersions))
            requiredElement(theName, theMember);
    }
    template <std::size_t length, class Member>
    void requiredAttribute(char const (&theName)[length], Member& theMember, NyXmlVersions theVersions)
    {
        if (enterVersioned(true, true, theName, theMember, theVersions))
            requiredAttribute(theName, theMember);
    }
    template <std::size_t length, class Member>
    void attribute(char const (&theName)[length], Member& theMember, NyXmlVersions theVersions)
    {
        if (enterVersioned(false, true, theName, theMember, theVersions))
            attribute(theName, theMember);
    }
    /// A name of older documents that means nothing any more: passed over in silence.
    void oldElement(char const* theName, NyXmlVersions theVersions)
    {
        NyXmlRegistrar::enterOld(*this, false, theName, theVersions, nullptr);
    }
    void oldAttribute(char const* theName, NyXmlVersions theVersions)
    {
        NyXmlRegistrar::enterOld(*this, true, theName, theVersions, nullptr);
    }
    /// A name of older documents: read into an object of class Old, which is then lifted into what the class holds now.
    template <class Old>
    void oldElement(char const* theName, NyXmlVersions theVersions, void (*theLift)(Self& self, Old const& old))
    {
        NyXmlRegistrar::enterOld(*this, false, theName, theVersions, readOld(theLift));
    }
    template <class Old>
    void oldAttribute(char const* theName, NyXmlVersions theVersions, void (*theLift)(Self& self, Old const& old))
    {
        NyXmlRegistrar::enterOld(*this, true, theName, theVersions, readOld(theLift));
    }

private:
    template <class Member>
    static constexpr void checkAttribute()
    {
        static_assert(std::is_base_of_v<NyXmlObject, Member>,
                      "an attribute is an object: NyXmlBasicType<double>, say, and no plain double");
        static_assert(hasAttributeForm(&Member::readAttribute),
                      "an attribute is one text, which this class is not: make it an element");
    }
    template <class Member>
    static constexpr void checkRequired()
    {
        static_assert(std::is_base_of_v<NyXmlObject, Member>,
                      "a member is an object: NyXmlBasicType<double>, say, and no plain double");
        static_assert(!isOptional<Member>(0), "a required member is always there: make it a plain one and no NyXmlOptional");
    }
    template <class Member>
    bool enterVersioned(bool isRequired, bool isAttribute, char const* theName, Member& theMember, NyXmlVersions theVersions)
    {
        static_assert(std::is_base_of_v<NyXmlObject, Member>,
                      "a member is an object: NyXmlBasicType<double>, say, and no plain double");
        return NyXmlRegistrar::enterVersioned(*this, this->xmlClass(), isRequired, isAttribute, theName, theVersions, &theMember);
    }
    template <class Member>
    static constexpr auto isOptional(int) -> decltype(Member::isOptional)
    {
        return Member::isOptional;
    }
    template <class>
    static constexpr bool isOptional(long)
    {
        return false;
    }
    template <class Old>
    static NyXmlClass::ReadOld readOld(void (*theLift)(Self& self, Old const& old))
    {
        return [theLift](NyXmlCompoundType& theCompound, NyXmlReader& theReader, bool isAttribute) {
            Old theOld;
            if (isAttribute)
                theOld.readAttribute(theReader);
            else
                theOld.read(theReader);
            theLift(static_cast<Self&>(theCompound), theOld);
        };
    }

    template <class Class>
    static constexpr bool isDefined(void (Class::*)())
    {
        return !std::is_same_v<Class, NyXmlCompoundType>; // where it is pure
    }
    template <class Class>
    static constexpr bool hasAttributeForm(bool (Class::*)(NyXmlReader&))
    {
        return !std::is_same_v<Class, NyXmlObject>;
    }
    template <class Class>
    static constexpr auto orderOf(int) -> decltype(Class::xmlOrder)
    {
        return Class::xmlOrder;
    }
    template <class>
    static constexpr NyXmlOrder orderOf(long)
    {
        return NyXmlOrder::byName;
    }
    template <class Class>
    static constexpr auto versionOf(int) -> decltype(+Class::xmlVersion)
    {
        static_assert(Class::xmlVersion > 0, "versions of documents count from 1");
        return Class::xmlVersion;
    }
    template <class>
    static constexpr unsigned int versionOf(long)
    {
        return 0;
    }
    template <class Class>
    static constexpr auto nameOf(int) -> decltype(&Class::xmlName)
    {
        return &Class::xmlName;
    }
    template <class>
    static constexpr std::nullptr_t nameOf(long)
    {
        return nullptr;
    }
    static constexpr bool hasOwnName()
    {
        if constexpr (std::is_null_pointer_v<decltype(nameOf<Self>(0))>)
            return false;
        else if constexpr (std::is_same_v<decltype(nameOf<Self>(0)), decltype(nameOf<Base>(0))>)
            return nameOf<Self>(0) != nameOf<Base>(0);
        else
            return true;
    }
};

#endif
