#include "Model.h"

#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <algorithm>
#include <fstream>

namespace robotCell {

namespace {

/// <move robot="1"><to size="3"><group>0.5 0 0.2</group></to></move>
class Move : public ModelClass<Move> {
public:
    static NyToken const& classToken()
    {
        static NyToken const token = element("move");
        return token;
    }
    bool operator==(Move const& other) const { return robot == other.robot && to == other.to; }

    Count robot;
    Numbers to; ///< angles, radians

protected:
    void registerComponents() override
    {
        registerAttributeComponent(NyToken("robot"), &robot);
        registerComponent(element("to"), &to);
    }
};

/// <wait><seconds>2</seconds></wait>
class Wait : public ModelClass<Wait> {
public:
    static NyToken const& classToken()
    {
        static NyToken const token = element("wait");
        return token;
    }
    bool operator==(Wait const& other) const { return seconds == other.seconds; }

    Number seconds;

protected:
    void registerComponents() override { registerComponent(element("seconds"), &seconds); }
};

template <class T>
NyXmlObject* create()
{
    return new T;
}

} // namespace

Tasks::Tasks(Tasks const& other) : NyXmlBaseVariableCompoundType(other)
{
    for (auto const& member : other.m_theMembers)
        m_theMembers.emplace_back(member->clone());
}

Tasks& Tasks::operator=(Tasks const& other)
{
    Tasks copy(other);
    NyXmlBaseVariableCompoundType::operator=(other);
    m_theMembers.swap(copy.m_theMembers);
    return *this;
}

bool Tasks::equality(NyXmlObject const* other) const
{
    auto const* same = dynamic_cast<Tasks const*>(other);
    return same != nullptr && *this == *same;
}

bool Tasks::operator==(Tasks const& other) const
{
    return addLibraries() == other.addLibraries() &&
           std::equal(m_theMembers.begin(), m_theMembers.end(), other.m_theMembers.begin(), other.m_theMembers.end(),
                      [](auto const& ours, auto const& theirs) { return ours->equality(theirs.get()); });
}

void Tasks::registerComponents()
{
    registerComponentCreator(Move::classToken(), create<Move>);
    registerComponentCreator(Wait::classToken(), create<Wait>);
}

bool Tasks::readValueFromToken(NyToken const& element, NyXmlReader& reader)
{
    if (element == NyXml::NyAddLibrariesToken) {
        Texts libraries;
        libraries.read(reader);
        setAddLibraries(libraries);
        processLibraries();
        return true;
    }
    std::unique_ptr<NyXmlObject> member(newObjectFromToken(element));
    if (!member)
        return false; // reported and skipped
    member->read(reader);
    m_theMembers.push_back(std::move(member));
    return true;
}

bool Tasks::write(NyXmlWriter& writer) const
{
    if (!NyXmlBaseVariableCompoundType::write(writer))
        return false;
    for (auto const& member : m_theMembers) {
        writer.writeStartTag(member->token());
        member->write(writer);
        writer.writeEndTag();
    }
    return true;
}

bool Robots::write(NyXmlWriter& writer) const
{
    if (m_theLinkFolder.empty())
        return NyXmlVectorType<Robot>::write(writer);

    writer.setAttributeName(NyXml::NyCountToken);
    writer << size();
    for (Robot const& robot : vectorContainer()) {
        writeLink(writer, robot);
        writer.incrementLinkCount(); // who follows links counts them
    }
    return true;
}

void Robots::writeLink(NyXmlWriter& writer, Robot const& robot) const
{
    std::string const fileName = "robot" + std::to_string(robot.id.value()) + ".xml";
    std::ofstream stream(m_theLinkFolder / fileName, std::ios::binary);
    NyXmlWriter document((m_theLinkFolder / fileName).string(), stream);
    document.writeStartTag(Robot::classToken());
    robot.write(document);
    document.writeEndTag();

    // The empty form, so that the reader can put the other document in its place.
    writer.writeStartTagUsingParentNamespace("NyInclude");
    writer.setAttributeName("href");
    writer << fileName;
    writer.setAttributeName("type");
    writer << "simple";
    writer.writeEndTag();
}

} // namespace robotCell
