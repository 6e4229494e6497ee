// The open elements: what of it is not worth being inline.

#include <nyXml/reader/NyXmlElementStack.h>

std::string const NyXmlElementStack::m_none;

void NyXmlElementStack::push()
{
    grow();
    unname();
}

void NyXmlElementStack::unname()
{
    assert(m_depth != 0);
    bool const hasParent = m_depth > 1;
    m_top->m_theElement = hasParent ? m_records[m_depth - 2].m_theElement : NyToken();
    m_top->m_isBare = hasParent && m_records[m_depth - 2].m_isBare;
}

void NyXmlElementStack::name(NyToken const& token)
{
    assert(m_depth != 0);
    m_top->m_theElement = token;
    m_top->m_isBare = !token.empty() && token.namespaceName().empty() && token.localName().find(':') == std::string::npos;
}

void NyXmlElementStack::forgetDeclarations()
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
}

NyXmlElementStack& NyXmlElementStack::operator=(NyXmlElementStack const& other)
{
    m_records = other.m_records;
    m_depth = other.m_depth;
    m_top = m_depth != 0 ? &m_records[m_depth - 1] : nullptr;
    m_theNamespaces = other.m_theNamespaces;
    m_declared = other.m_declared;
    return *this;
}
