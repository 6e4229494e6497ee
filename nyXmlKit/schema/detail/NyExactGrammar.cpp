#include <nyXmlKit/schema/detail/NyExactGrammar.h>

#include <algorithm>
#include <utility>

namespace {

void append(std::string& signature, std::string const& part) { signature.append(part).push_back('\0'); }

void append(std::string& signature, NyExactText const& text)
{
    append(signature, text.type);
    for (std::string const& word : text.words)
        append(signature, word);
    append(signature, text.isList ? "list" : "one");
}

// What can be said of an element without a look into its children.
std::string signatureOf(NyExactElement const& element)
{
    std::string signature;
    append(signature, element.ns);
    append(signature, element.name);
    for (NyExactAttribute const& attribute : element.attributes) {
        append(signature, attribute.ns);
        append(signature, attribute.name);
        append(signature, attribute.text);
        append(signature, attribute.isRequired ? "required" : "optional");
    }
    if (element.content)
        append(signature, *element.content);
    append(signature, element.inAnyOrder ? "any" : "sequence");
    for (NyExactParticle const& particle : element.particles) {
        append(signature, std::to_string(particle.alternatives.size()));
        append(signature, particle.isRequired ? "required" : "optional");
        append(signature, particle.isUnbounded ? "unbounded" : "one");
    }
    return signature;
}

} // namespace

std::size_t NyExactGrammar::add(std::string const& ns, std::string const& name)
{
    NyExactElement& element = m_elements.emplace_back();
    element.ns = ns;
    element.name = name;
    return m_elements.size() - 1;
}

std::size_t NyExactGrammar::resolved(std::size_t index) const
{
    while (m_elements[index].sameAs != NyExactElement::none)
        index = m_elements[index].sameAs;
    return index;
}

std::vector<std::size_t> NyExactGrammar::reachable() const
{
    std::vector<bool> isMet(m_elements.size());
    std::vector<std::size_t> met;
    auto const meet = [&](std::size_t index) {
        index = resolved(index);
        if (!isMet[index])
            met.push_back(index);
        isMet[index] = true;
    };
    for (std::size_t const root : m_roots)
        meet(root);
    for (std::size_t next = 0; next < met.size(); ++next) {
        for (NyExactParticle const& particle : m_elements[met[next]].particles)
            std::for_each(particle.alternatives.begin(), particle.alternatives.end(), meet);
    }
    std::sort(met.begin(), met.end()); // the order of the walk
    return met;
}

// All elements that look alike at first are one class; a class falls apart as long as the children of its members are of different
// classes. What is left can't be told apart at any depth, and recursion does no harm.
void NyExactGrammar::merge()
{
    std::vector<std::size_t> const elements = reachable();
    std::vector<std::size_t> classOf(m_elements.size());
    std::map<std::string, std::size_t> bySignature;
    for (std::size_t const index : elements)
        classOf[index] = bySignature.try_emplace(signatureOf(m_elements[index]), bySignature.size()).first->second;

    for (std::size_t before = 0, count = bySignature.size(); before != count;) {
        before = count;
        std::map<std::vector<std::size_t>, std::size_t> byChildren;
        std::vector<std::size_t> next(classOf.size());
        for (std::size_t const index : elements) {
            std::vector<std::size_t> key(1, classOf[index]);
            for (NyExactParticle const& particle : m_elements[index].particles) {
                for (std::size_t const child : particle.alternatives)
                    key.push_back(classOf[resolved(child)]);
            }
            next[index] = byChildren.try_emplace(std::move(key), byChildren.size()).first->second;
        }
        classOf = std::move(next);
        count = byChildren.size();
    }

    // Classes are numbered as their first members were met.
    m_classes.clear();
    for (std::size_t const index : elements) {
        if (classOf[index] != m_classes.size())
            continue;
        NyExactElement& element = m_classes.emplace_back(m_elements[index]);
        for (NyExactParticle& particle : element.particles) {
            for (std::size_t& child : particle.alternatives)
                child = classOf[resolved(child)];
        }
    }
    for (std::size_t& root : m_roots)
        root = classOf[resolved(root)];
}
