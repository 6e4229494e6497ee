#include "Model.h"

#include <nyXml/compound/NyBaseXmlFactory.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/writer/NyXmlWriter.h>

namespace robotCell {

namespace {

std::unique_ptr<NyXmlObject> copyOf(NyXmlObject const* object)
{
    return std::unique_ptr<NyXmlObject>(object != nullptr ? object->clone() : nullptr);
}

} // namespace

Cell::Cell(Cell const& other)
    : ModelClass(other),
      name(other.name),
      operators(other.operators),
      robots(other.robots),
      m_theTool(copyOf(other.tool()))
{}

Cell& Cell::operator=(Cell const& other)
{
    ModelClass::operator=(other);
    name = other.name;
    operators = other.operators;
    robots = other.robots;
    m_theTool = copyOf(other.tool());
    return *this;
}

bool Cell::operator==(Cell const& other) const
{
    bool const sameTool =
        m_theTool && other.m_theTool ? m_theTool->equality(other.m_theTool.get()) : m_theTool == other.m_theTool;
    return sameTool && name == other.name && operators == other.operators && robots == other.robots;
}

void Cell::registerComponents()
{
    registerAttributeComponent(NyToken("name"), &name);
    registerComponent(element("operators"), &operators);
    registerComponent(element("robots"), &robots);
}

bool Cell::readValueFromSpecialToken(NyToken const& token, NyXmlReader& reader)
{
    NyBaseXmlFactory const* factory = reader.factoryPointer();
    std::unique_ptr<NyXmlObject> tool(factory != nullptr ? factory->newObjectFromToken(token) : nullptr);
    if (!tool)
        return ModelClass::readValueFromSpecialToken(token, reader); // complains; the element is skipped then
    tool->read(reader);
    m_theTool = std::move(tool);
    return true;
}

bool Cell::writeElements(NyXmlWriter& writer) const
{
    if (!ModelClass::writeElements(writer))
        return false;
    if (m_theTool) {
        writer.writeStartTagUsingParentNamespace(m_theTool->token());
        m_theTool->write(writer);
        writer.writeEndTag();
    }
    return true;
}

} // namespace robotCell
