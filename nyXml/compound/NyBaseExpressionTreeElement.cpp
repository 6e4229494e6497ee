#include <nyXml/compound/NyBaseExpressionTreeElement.h>

#include <nyXml/traversal/NyXmlObjectVisitor.h>

NyBaseExpressionTreeElement::NyBaseExpressionTreeElement(NyXmlBaseVariableCompoundType const* container) : m_Container(container)
{}

NyBaseExpressionTreeElement::NyBaseExpressionTreeElement(NyBaseExpressionTreeElement const& other) = default;

NyBaseExpressionTreeElement::~NyBaseExpressionTreeElement() = default;

NyBaseExpressionTreeElement& NyBaseExpressionTreeElement::operator=(NyBaseExpressionTreeElement const& other) = default;

bool NyBaseExpressionTreeElement::operator==(NyBaseExpressionTreeElement const& other) const
{
    return NyXmlCompoundType::operator==(other) && (m_Container == nullptr) == (other.m_Container == nullptr);
}

void NyBaseExpressionTreeElement::accept(NyXmlObjectVisitor* visitor) const { visitor->visit(this); }

void NyBaseExpressionTreeElement::registerComponents() {}

NyXmlBaseVariableCompoundType const* NyBaseExpressionTreeElement::container() const { return m_Container; }

void NyBaseExpressionTreeElement::setContainer(NyXmlBaseVariableCompoundType const* container) { m_Container = container; }
