#ifndef NYXML_TESTS_KIT_FILESUPPORT_H
#define NYXML_TESTS_KIT_FILESUPPORT_H

#include "../Support.h"

#include <nyXml/nyXml.h>
#include <nyXmlKit/file/NyXmlFile.h>

#include <sstream>
#include <string>

/// What a model class has in common.
template <class Self>
class FileClass : public NyXmlCompoundType {
public:
    NyXmlObject* clone() const override { return new Self(static_cast<Self const&>(*this)); }
    NyXmlObject* newObject() const override { return new Self; }
    NyToken const& token() const override
    {
        static NyToken const token(Self::name);
        return token;
    }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* same = dynamic_cast<Self const*>(other);
        return same != nullptr && static_cast<Self const&>(*this) == *same;
    }
};

class FileMode : public NyXmlEnumType<int> {
public:
    using NyXmlEnumType<int>::operator=;
    NyXmlObject* clone() const override { return new FileMode(*this); }
    NyXmlObject* newObject() const override { return new FileMode; }
    bool xmlInit() override
    {
        setEnumString(0, "slow");
        setEnumString(1, "fast");
        return NyXmlEnumType<int>::xmlInit();
    }
};

/// <joint id="1" mode="fast"><angle>0.5</angle><name>elbow</name></joint>
class FileJoint : public FileClass<FileJoint> {
public:
    static constexpr char const* name = "joint";
    void registerComponents() override
    {
        registerAttributeComponent("id", &id);
        registerAttributeComponent("mode", &mode);
        registerComponent("angle", &angle);
        registerComponent("name", &label);
    }
    bool operator==(FileJoint const& other) const
    {
        return id == other.id && mode.value() == other.mode.value() && angle == other.angle && label == other.label;
    }

    NyXmlBasicType<unsigned int> id;
    FileMode mode;
    NyXmlBasicType<double> angle;
    NyXmlBasicType<std::string> label;
};

/// Compounds in each other, without end.
class FileNode : public FileClass<FileNode> {
public:
    static constexpr char const* name = "node";
    void registerComponents() override
    {
        registerComponent("value", &value);
        registerComponent("nodes", &nodes);
    }
    bool operator==(FileNode const& other) const { return value == other.value && nodes == other.nodes; }

    NyXmlBasicType<int> value;
    NyXmlVectorType<FileNode> nodes;
};

/// Reads a document from memory, as "doc.xml".
inline NyXmlReadResult readText(std::string const& document, NyXmlObject& object, NyXmlReadOptions const& options = {})
{
    std::istringstream stream(document);
    return NyXmlFile::read(stream, "doc.xml", object, options);
}

/// The same, and tells the faults: "KIND line path; ..."
inline std::string faultsIn(NyXmlReadResult const& result)
{
    static constexpr char const* kinds[] = { "FILE",    "NOT_WELL_FORMED", "ROOT",     "BROKEN_OFF", "BEHIND_ROOT", "UNREAD",
                                             "UNKNOWN", "MISSING",         "REPEATED", "BAD_TEXT",   "SIZE",        "VALUE",
                                             "LINK",    "VERSION",         "PLUG_IN",  "LIMIT",      "EXCEPTION" };
    std::string told;
    for (NyXmlFault const& fault : result.faults)
        told += (told.empty() ? "" : "; ") + std::string(kinds[static_cast<int>(fault.kind)]) + ' ' + std::to_string(fault.line) +
                ' ' + fault.path;
    return told;
}

template <class Object>
std::string faultsOf(std::string const& document, NyXmlReadOptions const& options = {})
{
    Object object;
    return faultsIn(readText(document, object, options));
}

#endif
