#ifndef NYXML_COMPOUND_NYBASEEXPRESSIONTREEELEMENT_H
#define NYXML_COMPOUND_NYBASEEXPRESSIONTREEELEMENT_H

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/platform/NyXmlExport.h>

class NyXmlBaseVariableCompoundType;

/// Base of a node in a tree of expressions: a compound that knows the variable compound which holds it.
///
/// The container tells its nodes when it reads them: `node->setContainer(this)`. Nobody else keeps the pointer up to date; it is
/// not part of the document.
class NYXML_EXPORT NyBaseExpressionTreeElement : public NyXmlCompoundType {
public:
    /// \param container  not owned and not touched; outlives the node or is set anew. Null for none.
    explicit NyBaseExpressionTreeElement(NyXmlBaseVariableCompoundType const* container = nullptr);

    /// A copy belongs to the same container, and so does the target of an assignment.
    NyBaseExpressionTreeElement(NyBaseExpressionTreeElement const& other);

    // NyXmlObject
    ~NyBaseExpressionTreeElement() override;
    void accept(NyXmlObjectVisitor* visitor) const override;

    // NyXmlCompoundType
    /// Registers nothing.
    void registerComponents() override;

    // NyBaseExpressionTreeElement
    virtual NyXmlBaseVariableCompoundType const* container() const;
    virtual void setContainer(NyXmlBaseVariableCompoundType const* container);

    NyBaseExpressionTreeElement& operator=(NyBaseExpressionTreeElement const& other);

    /// Compares as compounds, and that both have a container or neither has: nodes of different containers are equal.
    bool operator==(NyBaseExpressionTreeElement const& other) const;

private:
    NyXmlBaseVariableCompoundType const* m_Container;
};

#endif
