// The open elements: what of it is not worth being inline.

#include <nyXml/reader/detail/NyXmlElementStack.h>

NyXmlElementStack::Record& NyXmlElementStack::newRecord()
{
    m_records.push_back(std::make_unique<Record>());
    Record& made = *m_records.back();
    made.m_outer = m_top;
    (m_top != nullptr ? m_top->m_inner : m_outermost) = &made;
    return made;
}

void NyXmlElementStack::push()
{
    grow();
    unname();
}

void NyXmlElementStack::unname()
{
    assert(m_depth != 0);
    Record const* const parent = m_top->m_outer;
    name(parent != nullptr ? *parent->m_name : NyToken());
}

void NyXmlElementStack::name(NyToken const& token)
{
    assert(m_depth != 0);
    m_top->m_theElement = token;
    m_top->m_name = &m_top->m_theElement;
    m_top->m_bareName = nullptr;
}

std::vector<NyToken> NyXmlElementStack::names() const
{
    std::vector<NyToken> names;
    names.reserve(m_depth);
    for (std::size_t depth = 0; depth != m_depth; ++depth)
        names.push_back(*m_records[depth]->m_name);
    return names;
}

// The record's own token serves again: of a row of equals it stays as it is.
void NyXmlElementStack::pushCopy(std::string_view localName)
{
    NyToken& token = grow().m_theElement;
    if (!token.namespaceName().empty() || token.localName() != localName)
        token = NyToken(std::string(), std::string(localName));
    m_top->m_name = &token;
    m_top->m_bareName = nullptr;
}

void NyXmlElementStack::forgetDeclarations() noexcept
{
    for (; m_top->m_declarations != 0; --m_top->m_declarations) {
        m_theNamespaces.erase(m_declared.back());
        m_declared.pop_back();
    }
}

std::string const* NyXmlElementStack::binding(std::string const& prefix) const
{
    auto const found = m_theNamespaces.find(prefix);
    return found != m_theNamespaces.end() ? &found->second : nullptr;
}

void NyXmlElementStack::bind(std::string const& prefix, std::string const& text)
{
    assert(m_depth != 0);
    if (!m_theNamespaces.emplace(prefix, text).second)
        return;
    m_declared.push_back(prefix);
    ++m_top->m_declarations;
    m_top->m_bareName = nullptr;
}

NyXmlElementStack& NyXmlElementStack::operator=(NyXmlElementStack const& other)
{
    if (this == &other)
        return *this;
    clear();
    for (std::size_t depth = 0; depth != other.m_depth; ++depth) {
        Record const& record = *other.m_records[depth];
        grow();
        name(*record.m_name); // the other's tokens do not outlive the other
        m_top->m_declarations = record.m_declarations;
    }
    m_theNamespaces = other.m_theNamespaces;
    m_declared = other.m_declared;
    return *this;
}
