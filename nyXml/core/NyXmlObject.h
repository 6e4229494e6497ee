#ifndef NYXML_CORE_NYXMLOBJECT_H
#define NYXML_CORE_NYXMLOBJECT_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>

#include <string>

class NyXmlObjectVisitor;
class NyXmlReader;
class NyXmlSchema;
class NyXmlWriter;

/// Root of everything that reads itself from a document, writes itself to one, describes itself to a schema and is visited.
///
/// The owner frames a child and the child fills the frame: an object never reads or writes its own tag.
///
/// Reading. On entry to read() the object's start tag is consumed: the mode is XML_READER_START_TAG or XML_READER_EMPTY_TAG and the
/// attributes wait in the reader. They are taken before any further readXml(). On return the element is closed:
///  - XML_READER_END_TAG    children were read, or there was nothing between the tags
///  - XML_READER_CONTENT    a leaf with text; the reader has consumed the end tag with it
///  - XML_READER_EMPTY_TAG  the empty-element form, for which readXml() is not called
///
/// The next readXml() of the owner gives the next sibling or the owner's own end tag. For a document's root the application is the
/// owner:
/// \code
///     NyXmlReader reader("model.xml", stream);
///     auto mode = reader.readXml();
///     if (mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG)
///         model.read(reader);
///     bool whole = reader.readXml() == NyXmlFileReader::XML_READER_EOF && reader.errorCode() == 0; // and did not break off
/// \endcode
///
/// Writing and schema. The owner calls writeStartTag(token), the object's write(), writeEndTag(); for an attribute
/// setAttributeName(token) and write().
///
/// An override of read(), readAttribute(), write() or writeSchema() calls its base class first and stops with false if that gives
/// false. read() is false for a structural fault only: a bad text is reported, or passed over, and the reading goes on.
///
/// An object belongs to one thread at a time, also for write() and writeSchema(), which initialise it when they are the first to meet
/// it.
class NYXML_EXPORT NyXmlObject {
public:
    static constexpr unsigned char m_theXmlInitializedBit = 1; ///< xmlInit() has run on this object
    static constexpr unsigned char m_theSpecifiedBit = 2;      ///< the value was given, by a document or by copying

    NyXmlObject() noexcept = default;

    /// A copy counts as given, but its members lie in another object: it is not initialised, whatever the source was, and registers
    /// them afresh on first use.
    NyXmlObject(NyXmlObject const&) noexcept : m_theFlags(m_theSpecifiedBit) {}

    virtual ~NyXmlObject() = default;

    /// Calls the visit() of the object's own class. The base reports itself as a plain NyXmlObject.
    virtual void accept(NyXmlObjectVisitor* visitor) const;

    /// \return a copy on the heap, the caller's to delete
    [[nodiscard]] virtual NyXmlObject* clone() const = 0;

    /// Runs on the first read(), write() or writeSchema(): the place to register components. An override calls this one or
    /// setXmlInitialized(true), else it runs again each time. \return true; nobody looks at it
    virtual bool xmlInit();

    /// Initialises the object if that is still to come and marks it specified; leaves the reader alone.
    virtual bool read(NyXmlReader& reader);

    /// Takes the value from an attribute: the owner has looked at attributeName(), the object takes attributeValue(). A class without
    /// an attribute form of its own does what its read() does.
    virtual bool readAttribute(NyXmlReader& reader);

    /// Initialise the object if that is still to come; write nothing. The schema is told of the object, NyXmlSchema::describing().
    virtual bool write(NyXmlWriter& writer) const;
    virtual bool writeSchema(NyXmlSchema& schema) const;

    /// Writes the XSD files of this object, one for each namespace met.
    ///
    /// \param fileName   everything from the last ".xml" or ".xsd" on is cut off; prefix and ".xsd" of each namespace are put behind
    /// \param rootToken  name and namespace of the document's root element
    /// \return true, also if a file could not be opened
    virtual bool createSchema(std::string const& fileName, NyToken const& rootToken) const;

    virtual bool xmlInitialized() const;
    virtual void setXmlInitialized(bool initialized);

    /// Whether the value was given, by a document or by copying. Items of a sequence that was read always say so: each begins as a copy.
    virtual bool specified() const;
    virtual void setSpecified(bool specified);

    /// True for a value that is one text: containers write those even when they equal their default. Strings answer false.
    virtual bool isBasicType() const;

    /// Whether a freshly made object of this class has the same value, whatever the constructor of its owner has set. Makes one for
    /// it at each call.
    virtual bool equalsDefault() const;

    /// Compares values; false for an object of another class.
    virtual bool equality(NyXmlObject const* other) const = 0;

    /// \return an object of the same class in its default state, the caller's to delete
    [[nodiscard]] virtual NyXmlObject* newObject() const = 0;

    /// The class's own name: that under which factories and the schema builder know it, not that of an element.
    virtual NyToken const& token() const = 0;

    /// Marks the target specified and takes nothing from the source: the target's components stay registered.
    NyXmlObject& operator=(NyXmlObject const&) noexcept
    {
        m_theFlags |= m_theSpecifiedBit;
        return *this;
    }

    /// True: there is no value here and the flags take no part. Derived comparisons begin with it.
    bool operator==(NyXmlObject const&) const noexcept { return true; }

private:
    unsigned char m_theFlags = 0;
};

#endif
