// What NyXmlObject does with a schema, and createSchema() with a value too: both stand above the object root, hence a source of its own.

#include <nyXml/core/NyXmlObject.h>

#include <nyXml/core/NyXml.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/values/NyXmlBasicType.h>

bool NyXmlObject::writeSchema(NyXmlSchema& schema) const
{
    if (!xmlInitialized())
        const_cast<NyXmlObject*>(this)->xmlInit(); // lazily, as for a write
    schema.describing(*this);
    return true;
}

bool NyXmlObject::createSchema(std::string const& fileName, NyToken const& rootToken) const
{
    NyXmlSchema schema;
    schema.writeStartTag(rootToken, NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
    schema.setAttributeName(NyXml::NyVersionToken); // every document may tell its version
    NyXmlBasicType<std::string>().writeSchema(schema);
    writeSchema(schema);
    schema.writeEndTag();
    // A file that can't be opened is no failure of the description. Who wants to know asks NyXmlSchema::write().
    schema.write(fileName);
    return true;
}
