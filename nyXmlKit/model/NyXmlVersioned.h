#ifndef NYXMLKIT_MODEL_NYXMLVERSIONED_H
#define NYXMLKIT_MODEL_NYXMLVERSIONED_H

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXmlKit/model/NyXmlClass.h>
#include <nyXmlKit/model/NyXmlMemberKind.h>

#include <string>
#include <vector>

/// The base of model classes that know older versions of their documents: `class Robot : public NyXmlModel<Robot, NyXmlVersioned>`.
///
/// \code
///     class Robot : public NyXmlModel<Robot, NyXmlVersioned> {
///     public:
///         static constexpr auto xmlName = "urn:demo/arm#robot";
///         static constexpr unsigned int xmlVersion = 3;
///         void registerComponents() override
///         {
///             element("reach", reach);                          // in all versions
///             element("speed", speed, since(2));                // called "velo" before
///             element("velo", speed, until(1));
///             oldElement("colour", until(2));                   // not known any more
///             oldElement<NyXmlBasicType<int>>("angle", until(2), [](Robot& robot, NyXmlBasicType<int> const& degrees) {
///                 robot.angle = degrees * 0.017453292519943295;
///             });
///             element("angle", angle, since(3));
///         }
/// \endcode
/// A class with an xmlVersion writes it at its element, as the attribute `formatVersion`; a document without it is of version 1. Classes
/// without one go by the innermost class around them that has one, and by the latest version where there is none. Registrations with
/// versions are taken from documents of these versions alone, elsewhere their name is unknown; what holds for the present version is
/// written, compared and described.
///
/// A document of a later version than the class's is reported (print type 4) and read as one of the present version.
class NYXML_EXPORT NyXmlVersioned : public NyXmlCompoundType, public NyXmlMemberKind {
public:
    NyXmlVersioned() = default;
    NyXmlVersioned(NyXmlVersioned const&) = default;
    NyXmlVersioned& operator=(NyXmlVersioned const&) = default;
    ~NyXmlVersioned() override;

    static constexpr NyXmlVersions since(unsigned int first) { return { first, NyXmlVersions::latest }; }
    static constexpr NyXmlVersions until(unsigned int last) { return { 1, last }; }
    static constexpr NyXmlVersions between(unsigned int first, unsigned int last) { return { first, last }; }

    /// Runs after an object was read from a document of an older version: the place for what a single member cannot tell.
    virtual void lift(unsigned int fromVersion);

    // NyXmlObject
    bool read(NyXmlReader& reader) override;
    /// The version is written also where all else is left out as a default.
    bool write(NyXmlWriter& writer) const override;

    // NyXmlCompoundType
    bool writeSchemaAttributes(NyXmlSchema& schema) const override;

    // NyXmlMemberKind
    std::vector<std::string> ownAttributes() const override; ///< `formatVersion`, if the class has a version

protected:
    bool readValueFromToken(NyToken const& token, NyXmlReader& reader) override;
    bool readAttributeFromToken(NyToken const& token, NyXmlReader& reader) override;

private:
    NyXmlClass const& ofClass() const;
};

#endif
