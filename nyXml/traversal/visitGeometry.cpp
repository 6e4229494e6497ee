// The visits that tell coordinates. Apart from the others because they alone need the geometry values.

#include <nyXml/traversal/NyXmlObjectVisitor.h>

#include <nyXml/platform/NyStringConversion.h>
#include <nyXml/values/NyXmlOrientation.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/NyXmlVectorVector.h>

#include <initializer_list>
#include <utility>

namespace {

using Coordinates = std::initializer_list<std::pair<NyToken const&, double>>;

// x=1 y=2 z=3
std::string lineOf(Coordinates coordinates)
{
    std::string line;
    for (auto const& [token, value] : coordinates)
        line += (line.empty() ? "" : " ") + token.token() + "=" + NyDOUBLE2STRING(value);
    return line;
}

} // namespace

void NyXmlObjectVisitor::visit(NyXmlVector const* object)
{
    NyXmlVector const& vector = *object;
    begin(object, typeid(object).name());
    addName();
    addLine(lineOf(
        { { NyXml::NyVectorXToken, vector[0] }, { NyXml::NyVectorYToken, vector[1] }, { NyXml::NyVectorZToken, vector[2] } }));
    visitCurrentObject();
}

void NyXmlObjectVisitor::visit(NyXmlOrientation const* object)
{
    begin(object, typeid(object).name());
    addName();
    addLine(lineOf({ { NyXml::NyQuaternion0Token, object->q0() },
                     { NyXml::NyQuaternion1Token, object->q1() },
                     { NyXml::NyQuaternion2Token, object->q2() },
                     { NyXml::NyQuaternion3Token, object->q3() } }));
    visitCurrentObject();
}

void NyXmlObjectVisitor::visit(NyXmlVectorVector const* object)
{
    char const* const typeName = typeid(object).name();
    begin(object, typeName);
    addNameAndCount(object->size());
    visitCurrentObject();
    // The coordinates are no objects: a subclass's depth operations have no part in them, but the stack shows whose they are.
    m_theObjectStack.push_back(object);
    for (unsigned int i = 0; i < object->size(); ++i) {
        auto const& vector = (*object)[i];
        for (auto const& [token, value] : Coordinates{ { NyXml::NyVectorXToken, vector[0] },
                                                       { NyXml::NyVectorYToken, vector[1] },
                                                       { NyXml::NyVectorZToken, vector[2] } }) {
            m_theCurrentToken = token;
            begin(object, typeName);
            addName();
            addLine(NyDOUBLE2STRING(value));
            visitCurrentObject();
        }
    }
    m_theObjectStack.pop_back();
}
