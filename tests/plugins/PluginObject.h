#ifndef NYXML_TESTS_PLUGINS_PLUGINOBJECT_H
#define NYXML_TESTS_PLUGINS_PLUGINOBJECT_H

#include <nyXml/compound/NyBaseXmlFactory.h>
#include <nyXml/core/NyXmlObject.h>

#include <string>
#include <utility>

/// What the test plug-ins make: a class that application and plug-ins both know. It tells which of them made it.
class NYXML_EXPORT PluginObject : public NyXmlObject {
public:
    explicit PluginObject(std::string origin) : m_origin(std::move(origin)) {}
    std::string const& origin() const { return m_origin; }

    NyXmlObject* clone() const override { return new PluginObject(*this); }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* object = dynamic_cast<PluginObject const*>(other);
        return object != nullptr && object->m_origin == m_origin;
    }
    NyXmlObject* newObject() const override { return new PluginObject(m_origin); }
    NyToken const& token() const override
    {
        static NyToken const token("pluginObject");
        return token;
    }

private:
    std::string m_origin;
};

extern "C" NYXML_EXPORT NyToken const* getClassToken(int index);
extern "C" NYXML_EXPORT NyXmlCreator getCreator(int index);

#endif
