#ifndef NYXML_TRAVERSAL_NYXMLOBJECTVISITOR_H
#define NYXML_TRAVERSAL_NYXMLOBJECTVISITOR_H

#include <nyXml/core/NyToken.h>
#include <nyXml/core/NyXml.h>
#include <nyXml/core/detail/NyStreamText.h>
#include <nyXml/platform/NyXmlExport.h>

#include <cstddef>
#include <list>
#include <sstream>
#include <string>
#include <typeinfo>

class NyBaseExpressionTreeElement;
class NyXmlBaseVariableCompoundType;
class NyXmlCompoundType;
class NyXmlObject;
class NyXmlOrientation;
class NyXmlVector;
class NyXmlVectorVector;
template <class T>
class NyXmlBasicType;
template <class T>
class NyXmlEnumType;
template <class E>
class NyXmlVectorType;
template <class K, class V>
class NyXmlMapType;
template <class A, class B>
class NyXmlPairType;

/// Walks a tree of objects without knowing their classes and tells each of them as a few lines of text.
///
/// A subclass implements visitCurrentObject(), which finds the object, the name it was reached under and its lines in the
/// protected fields. A walk starts with accept() of its root; the root's name is what m_theCurrentToken holds then:
/// \code
///     class Listing : public NyXmlObjectVisitor {
///     public:
///         explicit Listing(NyToken const& root) { m_theCurrentToken = root; }
///
///     private:
///         bool visitCurrentObject() override
///         {
///             std::cout << std::string(m_theObjectStack.size(), ' ') << m_theMessages.back() << '\n';
///             return true; // and now its children
///         }
///     };
///     Listing listing("cell");
///     cell.accept(&listing);
/// \endcode
///
/// The first line is always the static type of the overload that was reached, typeid(X const*).name(): a class without an
/// accept() of its own shows up as NyXmlObject. The walk does not enter attributes, nor the items of NyXmlVectorBasicType,
/// NyXmlSetType and NyXmlListType.
///
/// Use from one thread at a time.
class NYXML_EXPORT NyXmlObjectVisitor {
public:
    virtual ~NyXmlObjectVisitor();

    /// How many generations are reported: with 0 or 1 the root alone, with 2 its children too. -1, the default, is no limit.
    virtual void setTraversalDepth(int depth);

protected:
    /// Enters \p object. True if its children are to be visited; is paired with afterDepthTraversal() whatever it answers.
    virtual bool checkDepthTraversal(NyXmlObject const* object);

    /// Leaves the object that was entered last.
    virtual void afterDepthTraversal();

    /// Reports the current object. True to go on to its children; its siblings follow in any case.
    virtual bool visitCurrentObject() = 0;

public:
    // Called by accept() of each class, for itself. The name of the object stands in m_theCurrentToken.

    /// Every class without an overload: a leaf that "has not been specialized", also said on the print facility.
    void visit(NyXmlObject const* object);

    /// Lines: name; the value as a standard stream inserts it. A leaf.
    template <class T>
    void visit(NyXmlBasicType<T> const* object)
    {
        begin(object, typeid(object).name());
        addName();
        addLine(textOf(object->value()));
        visitCurrentObject();
    }

    /// Lines: name; the word of the current value. A leaf.
    template <class T>
    void visit(NyXmlEnumType<T> const* object)
    {
        begin(object, typeid(object).name());
        addName();
        addLine(object->enumString());
        visitCurrentObject();
    }

    void visit(NyXmlVector const* object);      ///< Lines: name; "x=1 y=2 z=3". A leaf.
    void visit(NyXmlOrientation const* object); ///< Lines: name; "q0=1 q1=0 q2=0 q3=0". A leaf.

    /// Line: name and count. Children: the items, each as NyXml::NyElementToken.
    template <class E>
    void visit(NyXmlVectorType<E> const* object)
    {
        begin(object, typeid(object).name());
        addNameAndCount(object->size());
        if (enter(object)) {
            unsigned int index = 0;
            for (auto const& item : object->vectorContainer())
                visitChild(&item, NyXml::NyElementToken, "Visitor: NyXmlVectorType ", index++, __PRETTY_FUNCTION__);
        }
        afterDepthTraversal();
    }

    /// Line: name and count. Each coordinate is then reported by a call of its own, as x, y or z of this object: their answers
    /// and the depth limit play no part.
    void visit(NyXmlVectorVector const* object);

    /// Line: name and count. Children: key and value of each entry, in key order.
    template <class K, class V>
    void visit(NyXmlMapType<K, V> const* object)
    {
        begin(object, typeid(object).name());
        addNameAndCount(object->size());
        if (enter(object)) {
            unsigned int index = 0;
            for (auto const& entry : object->mapContainer()) {
                visitChild(&entry.first, NyXml::NyKeyToken, "Visitor: NyXmlMapType key ", index, __PRETTY_FUNCTION__);
                visitChild(&entry.second, NyXml::NyValueToken, "Visitor: NyXmlMapType value ", index, __PRETTY_FUNCTION__);
                ++index;
            }
        }
        afterDepthTraversal();
    }

    /// Line: name. Children: the members as NyXml::NyFirstToken and NyXml::NySecondToken, whatever their tags are called.
    template <class A, class B>
    void visit(NyXmlPairType<A, B> const* object)
    {
        begin(object, typeid(object).name());
        addName();
        if (enter(object)) {
            visitChild(&object->first(), NyXml::NyFirstToken, "Visitor: NyXmlPairType first", noIndex, __PRETTY_FUNCTION__);
            visitChild(&object->second(), NyXml::NySecondToken, "Visitor: NyXmlPairType second", noIndex, __PRETTY_FUNCTION__);
        }
        afterDepthTraversal();
    }

    /// Lines: "has attributes" if it has; name and number of element components. Children: these components under their own
    /// names. The depth operations are called only for a compound that has children and whose visitCurrentObject() agreed.
    void visit(NyXmlCompoundType const* object);

    /// Line: name and number of additional libraries. Children: these names, each as NyXml::NyAddLibrariesToken; the members
    /// belong to the subclass. The depth operations are called only if visitCurrentObject() agreed.
    void visit(NyXmlBaseVariableCompoundType const* object);

    /// Line: name. Child: the container, if there is one, under the container's own token. Then the object is reported a second
    /// time, as a compound, whatever was answered; its name is then the one that the walk through the container left behind.
    void visit(NyBaseExpressionTreeElement const* object);

protected:
    std::list<NyXmlObject const*> m_theObjectStack;  ///< the objects being descended through, the root first
    std::list<std::string> m_theMessages;            ///< the lines of the current object
    NyToken m_theCurrentToken;                       ///< the name under which it was reached
    NyXmlObject const* m_theCurrentObject = nullptr; ///< the object itself
    int m_theTraversalDepth = -1;                    ///< compared as unsigned, so that -1 is no limit

private:
    static constexpr unsigned int noIndex = ~0u;

    /// Starts the report of an object with its type line.
    void begin(NyXmlObject const* object, char const* typeName);
    void addLine(std::string const& line);
    void addName();
    void addNameAndCount(std::size_t count);

    /// Reports a container and enters it, in this order and always both. True if its children are wanted.
    bool enter(NyXmlObject const* object);

    /// Hands the walk to a child; a null one is reported with \p prefix, and the walk goes on.
    void visitChild(NyXmlObject const* child, NyToken const& token, char const* prefix, unsigned int index, char const* location);

    template <class T>
    static std::string textOf(T const& value)
    {
        std::ostringstream text;
        text.imbue(std::locale::classic());
        return NyStreamText::of(text, value);
    }
    static std::string const& textOf(std::string const& value) { return value; }
};

#endif
