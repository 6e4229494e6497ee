#ifndef NYXMLKIT_MODEL_NYXMLMEMBERKIND_H
#define NYXMLKIT_MODEL_NYXMLMEMBERKIND_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>

#include <memory>
#include <string>
#include <vector>

class NyXmlObject;
class NyXmlWriter;

/// What a member says of itself to those who describe or check documents, beyond what every object can. Found by dynamic_cast:
/// \code
///     if (auto const* kind = dynamic_cast<NyXmlMemberKind const*>(object))
///         most = kind->maxOccurs();
/// \endcode
class NYXML_EXPORT NyXmlMemberKind {
public:
    static constexpr unsigned int unbounded = ~0u;

    /// A class that may stand where the document chooses among several.
    struct Alternative {
        NyToken name;                           ///< of its element
        std::unique_ptr<NyXmlObject> prototype; ///< in its default state
    };

    NyXmlMemberKind() = default;
    NyXmlMemberKind(NyXmlMemberKind const&) = default;
    NyXmlMemberKind& operator=(NyXmlMemberKind const&) = default;
    virtual ~NyXmlMemberKind();

    /// How often the member's element, or attribute, stands in its owner: 1 and 1 unless the member says otherwise.
    virtual unsigned int minOccurs() const;
    virtual unsigned int maxOccurs() const;

    /// A new object in its default state, of the class that stands in each of these elements or in the attribute. Null if that is the
    /// member itself.
    virtual std::unique_ptr<NyXmlObject> newItem() const;

    /// The XSD type of the text, as "dateTime"; empty if the member is no text, or one that its class tells well enough.
    virtual std::string typeWord() const;

    /// The words that the text may be, each once, in the order of the table; empty if it is no enumeration.
    virtual std::vector<std::string> words() const;

    /// The classes of which the document chooses inside the member's element, by name; empty if there is no choice.
    virtual std::vector<Alternative> alternatives() const;
    /// How many of them may stand there; 0 if there is no choice.
    virtual unsigned int maxAlternatives() const;

    /// Names of attributes that the member puts at its element, beside those of the object in it. All may be absent.
    virtual std::vector<std::string> ownAttributes() const;
};

/// A member that stands in its owner as often as its value says: not at all, once, or many times. Owners ask it to write its elements
/// itself, tags included; NyXmlModel does.
class NYXML_EXPORT NyXmlOccurrence : public NyXmlMemberKind {
public:
    ~NyXmlOccurrence() override;

    /// Whether nothing of it is to be written now.
    virtual bool isAbsent() const = 0;

    /// Makes it absent: the owner is about to be read anew.
    virtual void forget() = 0;

    /// Writes each element, tags included.
    virtual void writeElements(NyXmlWriter& writer, NyToken const& name) const = 0;
};

#endif
