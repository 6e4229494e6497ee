#ifndef NYXML_COMPOUND_NYXMLBASEVARIABLECOMPOUNDTYPE_H
#define NYXML_COMPOUND_NYXMLBASEVARIABLECOMPOUNDTYPE_H

#include <nyXml/compound/NyBaseXmlFactory.h>
#include <nyXml/compound/NyXmlFactory.h>
#include <nyXml/core/NyToken.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlVectorType.h>

#include <string>

/// Base of containers whose members' classes are chosen by the document: each child element names its class.
///
/// It holds the creators and the reading loop; keeping and writing the members is the subclass's business:
/// \code
///     class Tools : public NyXmlBaseVariableCompoundType {
///     public:
///         void registerComponents() override { registerComponentCreator(Gripper::classToken(), Gripper::create); }
///         bool readValueFromToken(NyToken const& element, NyXmlReader& reader) override
///         {
///             if (element == NyXml::NyAddLibrariesToken.token()) {
///                 m_AddLibraries.read(reader);
///                 processLibraries();
///                 return true;
///             }
///             std::unique_ptr<NyXmlObject> tool(newObjectFromToken(element));
///             if (!tool)
///                 return false;
///             tool->read(reader);
///             m_tools.push_back(std::move(tool));
///             return true;
///         }
///         bool write(NyXmlWriter& writer) const override; // the base's write() first, then each tool in its tags
///         ...
/// \endcode
///
/// A document brings classes of its own in two ways. A child's attribute `library="tools/extra.nyp"` names a plug-in file as it
/// is, which is loaded before that child is read. The element `addLibraries` lists plug-ins without their extension, for a
/// subclass that reads it as above. What was loaded stays known to this object for its next read.
///
/// A child that the subclass refuses is reported (print type 4) and skipped, and a library that cannot be loaded is reported by
/// the factory; the read goes on and succeeds.
class NYXML_EXPORT NyXmlBaseVariableCompoundType : public NyXmlObject {
public:
    using LibraryVector = NyXmlVectorType<NyXmlBasicType<std::string>>;

    NyXmlBaseVariableCompoundType();

    /// Takes the list of libraries. No creators: a copy registers its own on first use, and what a document loaded stays behind.
    NyXmlBaseVariableCompoundType(NyXmlBaseVariableCompoundType const& other);

    // NyXmlObject

    ~NyXmlBaseVariableCompoundType() override;
    void accept(NyXmlObjectVisitor* visitor) const override;

    /// Calls registerComponents().
    bool xmlInit() override;

    /// Hands each child to readValueFromToken(), after the library of its `library` attribute is loaded. Takes no attribute of
    /// the own element. False only if the reader has failed.
    bool read(NyXmlReader& reader) override;

    /// Writes the element `addLibraries`, unless there are none. The subclass writes its members behind it.
    bool write(NyXmlWriter& writer) const override;

    /// Describes `addLibraries` and everything that can be created as alternatives. Makes one object with each creator for it.
    bool writeSchema(NyXmlSchema& schema) const override;

    // NyXmlBaseVariableCompoundType

    /// The place to register the creators that are always known. Runs with xmlInit().
    virtual void registerComponents() = 0;

    /// The class of this name is made by the creator from now on.
    virtual void registerComponentCreator(NyToken const& token, NyXmlCreator creator);

    /// Makes a member. Initialises this object if that is still to come.
    /// \return the caller's to delete; null for a name that nobody registered, without a report
    [[nodiscard]] virtual NyXmlObject* newObjectFromToken(NyToken const& token) const;

    /// Names of plug-in libraries without their extension, as they are written.
    virtual NyXmlVectorType<NyXmlBasicType<std::string>> const& addLibraries() const;
    /// Loads nothing: see processLibraries().
    virtual void setAddLibraries(NyXmlVectorType<NyXmlBasicType<std::string>> const& libraries);

    virtual NyXmlFactory::CreatorMap const& creatorMap() const;

    /// Reads one child: the reader stands on its start tag. True if it was taken and read whole; a child that is refused is
    /// skipped.
    virtual bool readValueFromToken(NyToken const& element, NyXmlReader& reader) = 0;

protected:
    /// Loads every library of addLibraries(), each name with ".nyp" behind it. Nobody but subclasses calls it.
    virtual void processLibraries();

public:
    /// Takes the list of libraries; the creators stay as they are.
    NyXmlBaseVariableCompoundType& operator=(NyXmlBaseVariableCompoundType const& other);

    /// Equal lists of libraries, and once both objects are initialised equal creators too.
    bool operator==(NyXmlBaseVariableCompoundType const& other) const;

private:
    NyXmlFactory m_Factory;

protected:
    NyXmlVectorType<NyXmlBasicType<std::string>> m_AddLibraries; ///< for subclasses that read the element `addLibraries`
};

#endif
