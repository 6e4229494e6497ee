#include <nyXml/traversal/NyXmlObjectVisitor.h>

#include <nyXml/compound/NyBaseExpressionTreeElement.h>
#include <nyXml/compound/NyXmlBaseVariableCompoundType.h>
#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/platform/NyStringConversion.h>

#include <ostream>

// Stands here and not with the class: the core knows visitors by name only.
void NyXmlObject::accept(NyXmlObjectVisitor* visitor) const { visitor->visit(this); }

NyXmlObjectVisitor::~NyXmlObjectVisitor() = default;

void NyXmlObjectVisitor::setTraversalDepth(int depth) { m_theTraversalDepth = depth; }

bool NyXmlObjectVisitor::checkDepthTraversal(NyXmlObject const* object)
{
    m_theObjectStack.push_back(object);
    return m_theObjectStack.size() < static_cast<unsigned int>(m_theTraversalDepth);
}

void NyXmlObjectVisitor::afterDepthTraversal() { m_theObjectStack.pop_back(); }

void NyXmlObjectVisitor::visit(NyXmlObject const* object)
{
    char const* const typeName = typeid(object).name();
    begin(object, typeName);
    addLine("This class has not been specialized.\n");
    visitCurrentObject();
    Ny::Print::write(Ny::Print::FAULT, "object = %s\n", typeName);
}

void NyXmlObjectVisitor::visit(NyXmlCompoundType const* object)
{
    begin(object, typeid(object).name());
    if (object->hasAttributes())
        addLine("has attributes");
    addNameAndCount(object->componentMap().size());
    if (!visitCurrentObject() || !object->hasChildren())
        return; // a leaf is not entered at all
    if (checkDepthTraversal(object)) {
        unsigned int index = 0;
        for (auto const& [token, component] : object->componentMap())
            visitChild(component, token, "Visitor: NyXmlCompoundType ", index++, __PRETTY_FUNCTION__);
    }
    afterDepthTraversal();
}

void NyXmlObjectVisitor::visit(NyXmlBaseVariableCompoundType const* object)
{
    auto const& libraries = object->addLibraries();
    begin(object, typeid(object).name());
    addNameAndCount(libraries.size());
    if (!visitCurrentObject())
        return;
    if (checkDepthTraversal(object)) {
        unsigned int index = 0;
        for (auto const& library : libraries.vectorContainer())
            visitChild(&library, NyXml::NyAddLibrariesToken, "Visitor: NyXmlBaseVariableCompoundType ", index++,
                       __PRETTY_FUNCTION__);
    }
    afterDepthTraversal();
}

void NyXmlObjectVisitor::visit(NyBaseExpressionTreeElement const* object)
{
    begin(object, typeid(object).name());
    addName();
    bool const entered = enter(object);
    if (NyXmlBaseVariableCompoundType const* const container = object->container(); entered && container != nullptr) {
        m_theCurrentToken = container->token();
        container->accept(this);
    }
    visit(static_cast<NyXmlCompoundType const*>(object)); // its components are a compound's, whatever was answered for the node
    afterDepthTraversal();
}

void NyXmlObjectVisitor::begin(NyXmlObject const* object, char const* typeName)
{
    m_theCurrentObject = object;
    m_theMessages.clear();
    addLine(typeName);
}

void NyXmlObjectVisitor::addLine(std::string const& line) { m_theMessages.push_back(line); }

void NyXmlObjectVisitor::addName() { addLine(m_theCurrentToken.token()); }

void NyXmlObjectVisitor::addNameAndCount(std::size_t count)
{
    addLine(m_theCurrentToken.token() + " (" + NyINT2STRING(static_cast<int>(count)) + ")");
}

bool NyXmlObjectVisitor::enter(NyXmlObject const* object)
{
    bool const isWanted = visitCurrentObject();
    bool const isAllowed = checkDepthTraversal(object); // also for an object whose children are not wanted
    return isWanted && isAllowed;
}

void NyXmlObjectVisitor::visitChild(NyXmlObject const* child, NyToken const& token, char const* prefix, unsigned int index,
                                    char const* location)
{
    if (child != nullptr) {
        m_theCurrentToken = token;
        child->accept(this);
        return;
    }
    std::ostream& report = Ny::Print::ostream(Ny::Print::FAULT, location) << prefix;
    if (index != noIndex)
        report << index;
    report << " is non-NyXmlObject\n";
}
