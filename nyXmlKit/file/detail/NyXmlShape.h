// In-house, no part of the face.

#ifndef NYXMLKIT_FILE_DETAIL_NYXMLSHAPE_H
#define NYXMLKIT_FILE_DETAIL_NYXMLSHAPE_H

#include <nyXml/compound/NyXmlFactory.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXmlKit/file/detail/NyXmlTextRule.h>

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <typeindex>
#include <utility>
#include <vector>

class NyBaseXmlBasicType;
class NyXmlBaseVariableCompoundType;
class NyXmlCompoundType;
class NyXmlMemberKind;

struct NyXmlShape;

/// An element or attribute that may stand in a shape.
struct NyXmlShapeMember {
    std::string name;
    unsigned int least = 1;
    unsigned int most = 1;
    bool isLeftOutAsDefault = false; ///< when a writer leaves out what equals its default
    NyXmlObject* object = nullptr;   ///< of which the shape is made when it is needed
    mutable NyXmlShape* shape = nullptr;
    bool isOptionalValue = false;
};

/// What an element may hold, as the object that reads it has it.
struct NyXmlShape {
    enum class Kind {
        ANYTHING, ///< nothing is known
        TEXT,     ///< one text
        BASE64,   ///< one text of that kind
        MEMBERS,  ///< attributes and children by name. What is not among them the object complains of
        TUPLE,    ///< the same, but the object does not complain of attributes, or counts them its own way
        CHOICE,   ///< children that the document chooses
        SEQUENCE, ///< `size` and items
        RUN,      ///< items as words
        MAP,      ///< entries
        ENTRY,    ///< key and value
        PATH,     ///< vectors that are read past the reader's events
    };

    Kind kind = Kind::ANYTHING;
    NyXmlTextRule text;
    bool isOfDifferent = false;               ///< SEQUENCE: a set, which has each item once
    std::vector<NyXmlShapeMember> attributes; ///< by name
    std::vector<NyXmlShapeMember> children;   ///< by name
    NyXmlShape* item = nullptr;               ///< of sequences, runs and maps (the entry)
    NyXmlBaseVariableCompoundType* variable = nullptr;
    /// Names of children that stand for others, each with the other.
    std::vector<std::pair<std::string, std::string>> aliases;

    static NyXmlShapeMember const* find(std::vector<NyXmlShapeMember> const& members, std::string_view name, std::size_t& next);
};

/// Makes shapes of objects, as far down as a document goes.
///
/// The objects are copies or fresh ones of our own, never those that are being read: what an object does with its members while it is
/// read is its own affair.
class NyXmlShapes {
public:
    NyXmlShapes();
    ~NyXmlShapes();
    NyXmlShapes(NyXmlShapes const&) = delete;
    NyXmlShapes& operator=(NyXmlShapes const&) = delete;

    NyXmlShape& anything() { return m_theAnything; }

    /// Of a document's root.
    NyXmlShape& of(NyXmlObject const& root);

    /// Of what stands under a name.
    NyXmlShape& of(NyXmlShapeMember const& member);

    /// Of a child whose class the document chooses.
    NyXmlShape& chosen(NyXmlShape& parent, std::string const& name);

    /// A plug-in has been loaded: its classes may be chosen from now on.
    void learn(std::string const& library);

private:
    NyXmlShape& build(NyXmlObject& object);
    NyXmlShape& buildItem(NyXmlObject& object);
    NyXmlShape& make(NyXmlShape::Kind kind);
    NyXmlObject* own(NyXmlObject* object);
    void buildKind(NyXmlShape& shape, NyXmlMemberKind const& kind);
    void buildMembers(NyXmlShape& shape, NyXmlCompoundType& compound);
    NyXmlShape& buildDescribed(NyXmlObject& object);
    NyXmlShape& textOf(std::type_info const* type);

    NyXmlShape m_theAnything;
    std::vector<std::unique_ptr<NyXmlShape>> m_theShapes;
    std::vector<std::unique_ptr<NyXmlObject>> m_theObjects;
    std::map<std::type_index, NyXmlShape*> m_theItems; ///< all items of a class are made alike
    std::map<std::pair<NyXmlShape const*, std::string>, NyXmlShape*> m_theChosen;
    NyXmlFactory m_thePlugIns;
};

#endif
