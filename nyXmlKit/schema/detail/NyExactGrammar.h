// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_SCHEMA_DETAIL_NYEXACTGRAMMAR_H
#define NYXMLKIT_SCHEMA_DETAIL_NYEXACTGRAMMAR_H

#include <nyXmlKit/schema/detail/NyExactText.h>

#include <cstddef>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

struct NyExactAttribute {
    std::string ns; ///< nearly always empty
    std::string name;
    NyExactText text;
    bool isRequired = false;
};

/// One place in an element's content: an element, or one of several.
struct NyExactParticle {
    std::vector<std::size_t> alternatives; ///< indices of elements
    bool isRequired = false;
    bool isUnbounded = false;
};

/// An element of documents with all that may stand in it.
struct NyExactElement {
    std::string ns; ///< as a validator sees it
    std::string name;
    std::vector<NyExactAttribute> attributes;
    std::optional<NyExactText> content;
    std::vector<NyExactParticle> particles;
    bool inAnyOrder = false;
    std::size_t sameAs = none; ///< the element that stands for this one

    static constexpr std::size_t none = ~std::size_t(0);

    bool isMarkup() const { return content && content->type == NyExactText::markup; }
    /// Nothing but a text: such an element needs no type of its own.
    bool isText() const { return attributes.empty() && particles.empty() && content && !isMarkup(); }
    bool isEmpty() const { return attributes.empty() && particles.empty() && !content; }
};

/// All elements met on a walk, and which of them are alike.
class NyExactGrammar {
public:
    /// Indices and references stay good.
    std::size_t add(std::string const& ns, std::string const& name);
    NyExactElement& operator[](std::size_t index) { return m_elements[index]; }
    NyExactElement const& operator[](std::size_t index) const { return m_elements[index]; }

    void addRoot(std::size_t index) { m_roots.push_back(index); }

    /// Makes one of all elements that have the same name and the same content, however deep, and forgets those that no root leads to.
    ///
    /// All indices of particles and roots are of classes() from then on.
    void merge();

    /// After merge(): the elements that differ, in the order in which they were met.
    std::vector<NyExactElement> const& classes() const { return m_classes; }
    std::vector<std::size_t> const& roots() const { return m_roots; }

private:
    std::size_t resolved(std::size_t index) const;
    std::vector<std::size_t> reachable() const;

    std::deque<NyExactElement> m_elements;
    std::vector<std::size_t> m_roots;
    std::vector<NyExactElement> m_classes;
};

#endif
