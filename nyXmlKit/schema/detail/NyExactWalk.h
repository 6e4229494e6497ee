// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_SCHEMA_DETAIL_NYEXACTWALK_H
#define NYXMLKIT_SCHEMA_DETAIL_NYEXACTWALK_H

#include <nyXml/core/NyToken.h>
#include <nyXml/schema/NyXmlSchemaElementType.h>
#include <nyXmlKit/schema/detail/NyExactGrammar.h>

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

class NyXmlBaseVariableCompoundType;
class NyXmlCompoundType;
class NyXmlObject;

/// Turns the calls that a builder gets into a grammar.
///
/// Members of an object are described wherever they stand, since two objects of a class may hold different things; there are as many of
/// them as there are in memory. Objects that are made for the description alone, such as the default item of a sequence or an
/// alternative, look alike wherever a name and a class meet. They are described once, and this is where recursion ends.
class NyExactWalk {
public:
    using Mode = NyXmlSchemaElementType::XML_STARTTAG_OPTION;

    bool open(NyToken const& token, Mode mode);
    bool openInParentNamespace(std::string const& localName, Mode mode);
    void nameAttribute(NyToken const& token);
    void give(NyExactText text); ///< to the attribute just named, or else to the element's content
    void giveType(std::type_info const& info);
    void close();
    void openGroup() { ++m_group; }
    void closeGroup() { --m_group; }
    bool isKnown(NyToken const& token, std::string const& typeId);
    void describing(NyXmlObject const& object);

    /// Ends a walk. Namespaces whose prefixes hide each other in documents can be told only when all have been met.
    /// \return whether the walk has to be made once more; it starts empty then
    bool wantsAnother();

    NyExactGrammar const& grammar() const { return m_grammar; }

private:
    /// A child as its parent saw it, before places are made of children.
    struct Child {
        std::size_t element;
        Mode mode;
        unsigned int group;
        bool isRequired;
        bool isWord;
    };
    /// An open element.
    struct Frame {
        std::size_t element; ///< its record
        NyToken token;       ///< as the caller gave it
        Mode mode;
        unsigned int group;
        std::size_t declarations; ///< namespaces in force around it
        bool isAlias = false;     ///< all that comes belongs to the parent's record
        bool isKnown = false;     ///< described elsewhere: nothing is recorded
        bool isRequired = false;
        bool isReference = false; ///< it may stand for an object that is elsewhere, and is bare then
        std::string typeId;       ///< what the caller asked isKnown() with
        bool isWord = false;      ///< what the object that described itself here is, which may be gone when the element closes
        bool isDescribed = false;
        bool isSetOrList = false;
        bool isMap = false;
        bool isPoint = false;
        bool isPath = false;
        bool isChoice = false;                       ///< its children are classes that the document chooses
        bool isInNamespaceOfParent = false;          ///< these children, if they have no namespace
        unsigned int most = 0;                       ///< how many of them may stand in it; 0 for any number
        NyXmlCompoundType const* compound = nullptr; ///< good while it describes itself
        NyXmlBaseVariableCompoundType const* variable = nullptr;
        std::vector<std::string> ownAttributes; ///< beside those of the object
        std::vector<Child> children;
    };

    /// The element whose record takes what comes.
    Frame& holder() { return *(m_frames.rbegin() + (m_frames.back().isAlias ? 1 : 0)); }
    NyExactElement& record() { return m_grammar[holder().element]; }
    std::string effectiveNamespace(std::string const& ns);
    std::string const* declared(std::string const& prefix) const;
    bool isKeyOfItem(NyToken const& token) const;
    NyXmlObject const* memberOf(Frame const* owner, NyToken const& token) const;
    void enter(Frame& frame, Frame const* owner, NyXmlObject const& object);
    std::string keyOf(Frame const& frame, Frame const* owner, NyXmlObject const& object) const;
    void learn(Frame& frame, NyXmlObject const& object);
    void finish(Frame const& frame);
    void makeParticles(Frame const& frame);
    void addRun(NyExactElement& element, std::size_t item);

    NyExactGrammar m_grammar;
    std::vector<Frame> m_frames;
    std::vector<std::pair<std::string, std::string>> m_declarations; ///< prefix and namespace, the innermost last
    std::string m_rootNamespace;
    unsigned int m_group = 0;
    bool m_isAttributeNamed = false;
    std::size_t m_attribute = 0;       ///< of the element's, the one that was named last
    std::optional<NyExactText> m_hint; ///< what the object said that is about to give a type
    std::map<std::string, std::size_t> m_described;
    std::map<std::string, std::set<std::string>> m_namespacesOf; ///< by prefix
    std::set<std::string> m_attributePrefixes;
    std::set<std::string> m_ambiguous; ///< prefixes that decide what an element is
};

#endif
