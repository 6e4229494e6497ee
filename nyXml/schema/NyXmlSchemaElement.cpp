#include <nyXml/schema/NyXmlSchemaElement.h>

#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/schema/NyXmlSchemaGroupType.h>

#include <cstddef>
#include <utility>

namespace {

bool isChoice(NyXmlSchemaElementType const& record)
{
    return record.startTagMode() == NyXmlSchemaElementType::XML_STARTTAG_CHOICE;
}

} // namespace

NyXmlSchemaElement::NyXmlSchemaElement(NyXmlSchema* schema, NyXmlSchemaElement* parent) : m_theSchema(schema), m_theParent(parent)
{}

NyXmlSchemaElement::~NyXmlSchemaElement() = default;

bool NyXmlSchemaElement::operator==(NyXmlSchemaElement const& other) const
{
    return m_theSchema == other.m_theSchema && m_theParent == other.m_theParent && m_theElementName == other.m_theElementName &&
           m_theNamespace == other.m_theNamespace && m_theStartTagMode == other.m_theStartTagMode &&
           m_theGroupIndex == other.m_theGroupIndex && m_theContentType == other.m_theContentType &&
           m_theTypeIdString == other.m_theTypeIdString && m_theType == other.m_theType && m_theChildren == other.m_theChildren &&
           m_theAttributes == other.m_theAttributes;
}

NyXmlSchemaElement* NyXmlSchemaElement::writeStartTag(NyToken const& token, XML_STARTTAG_OPTION mode, unsigned int groupIndex)
{
    return m_theChildren.emplace_back(m_theSchema, this).setName(token, mode, groupIndex);
}

NyXmlSchemaElement* NyXmlSchemaElement::setName(NyToken const& token, XML_STARTTAG_OPTION mode, unsigned int groupIndex)
{
    m_theElementName = token;
    m_theNamespace = token.xmlNamespace();
    m_theStartTagMode = mode;
    m_theGroupIndex = groupIndex;
    return this;
}

void NyXmlSchemaElement::setAttributeName(NyToken const& token) { m_theAttributes.emplace_back().setElementName(token); }

void NyXmlSchemaElement::setAttributeType(std::string const& type)
{
    if (!m_theAttributes.empty())
        m_theAttributes.back().setType(type);
}

void NyXmlSchemaElement::setContentType(std::string const& type)
{
    if (m_theContentType.empty())
        m_theContentType = type;
    else
        m_theContentType = m_theSchema->insertSimpleType(type, m_theNamespace);
}

void NyXmlSchemaElement::setPointers(NyXmlSchema const* schema, NyXmlSchemaElement const* parent)
{
    m_theSchema = const_cast<NyXmlSchema*>(schema);
    m_theParent = const_cast<NyXmlSchemaElement*>(parent);
}

bool NyXmlSchemaElement::isRecursiveElement(NyToken const& token) const
{
    for (NyXmlSchemaElement const* element = this; element != nullptr; element = element->parent()) {
        if (element->m_theElementName == token)
            return true;
    }
    return false;
}

NyXmlSchemaElementType NyXmlSchemaElement::elementType()
{
    NyXmlSchemaElementType record;
    record.setElementName(m_theElementName);
    record.setNamespace(m_theNamespace);
    record.setStartTagMode(m_theStartTagMode);
    record.setGroupIndex(m_theGroupIndex);
    record.setType(m_theType);
    record.setNillable(NyXmlSchemaElementType::isEmptyType(m_theType));
    return record;
}

// The reduction of a closed element, step by step. What it enters where:
//
//     an element with children or attributes        a complex type "demo:robot.Type"
//     alternatives among its children               a group "demo:robot.Group", for which a placeholder stands in the complex type
//     an element with text alone                    nothing: its type is the XSD type of the text, or a list type made before
//     an element with nothing at all                the complex type "demo:empty.Type", one for each namespace
//     an element in another namespace than its parent   a global element as well
//
// The losses on the way are part of the format, since the files of a model must not change from one release to the next: each is
// told where it happens.

NyXmlSchemaElement* NyXmlSchemaElement::writeEndTag()
{
    if (m_theChildren.empty() && m_theAttributes.empty()) {
        // The type of a simple element is a word: to describe it again is cheaper than to remember it.
        m_theType = m_theContentType;
        m_theSchema->unRegister(m_theElementName, m_theTypeIdString);
    } else {
        enterComplexType();
    }
    if (m_theType.empty() && m_theContentType.empty())
        enterEmptyType();
    declareIfGlobal();
    if (!m_theTypeIdString.empty())
        m_theSchema->updateRegistry(m_theElementName, m_theTypeIdString, m_theType, m_theContentType);
    return m_theParent;
}

NyXmlSchemaElement* NyXmlSchemaElement::writeEndTagRecursive()
{
    // The outermost element of this name and class enters, or has entered, its type under the same conventional name.
    m_theType = qualifiedName(".Type");
    declareIfGlobal();
    return m_theParent;
}

void NyXmlSchemaElement::enterComplexType()
{
    NyXmlSchemaComplexType complexType;
    complexType.setElementName(m_theElementName);
    complexType.setNamespace(m_theNamespace);
    complexType.setContentType(m_theContentType);

    std::vector<NyXmlSchemaElementType> records = recordsOfChildren();
    distribute(records, complexType);
    complexType.setAttributeVector(m_theAttributes);

    m_theType = m_theSchema->insertComplexType(complexType, qualifiedName(".Type"));
    m_theChildren.clear();
}

// First pass: one record for each child.
std::vector<NyXmlSchemaElementType> NyXmlSchemaElement::recordsOfChildren()
{
    std::vector<NyXmlSchemaElementType> records;
    records.reserve(m_theChildren.size());
    for (NyXmlSchemaElement& child : m_theChildren) {
        NyXmlSchemaElementType record = child.elementType();
        if (!records.empty() && records.back().isTypeConvertible(record, true)) {
            // Twins are how a sequence of items shows up that was walked item by item, and the first twin speaks for all the rest.
            // Children of another kind behind it are lost with them.
            records.back().convertType(record);
            return records;
        }
        records.push_back(std::move(record));
    }
    return records;
}

// Second pass: records go to the complex type, or to a group of alternatives if they belong to one.
//
// A new group index is the only place where modes are looked at. In a run of records with one index the first record decides for
// all: what follows a choice is a member of its group, and a choice that follows an ordinary child is none.
void NyXmlSchemaElement::distribute(std::vector<NyXmlSchemaElementType>& records, NyXmlSchemaComplexType& complexType)
{
    std::vector<NyXmlSchemaElementType> members; // of the group that is being gathered
    bool inGroup = false;

    for (std::size_t i = 0; i < records.size(); ++i) {
        bool const opensRun = i == 0 || records[i].groupIndex() != records[i - 1].groupIndex();
        if (opensRun) {
            // A run that does not end in a choice leaves its members waiting, for the next group or for nothing.
            if (i > 0 && isChoice(records[i - 1]))
                closeGroup(records[i - 1], members, complexType);
            inGroup = isChoice(records[i]);
        }
        if (inGroup)
            members.push_back(records[i]);
        else
            complexType.pushBack(records[i]);
    }
    if (inGroup)
        closeGroup(records.back(), members, complexType);
}

// Enters the group and lets its last record, which is also a member, stand for it in the complex type. The group and its placeholder
// have that record's mode, whatever it is.
void NyXmlSchemaElement::closeGroup(NyXmlSchemaElementType& last, std::vector<NyXmlSchemaElementType>& members,
                                    NyXmlSchemaComplexType& complexType)
{
    NyXmlSchemaGroupType group;
    group.setNamespace(m_theNamespace);
    group.setStartTagMode(last.startTagMode());
    group.setElementVector(members);

    last.setElementName(m_theSchema->insertGroupType(group, qualifiedName(".Group")));
    complexType.pushBack(last);
    members.clear();
}

void NyXmlSchemaElement::enterEmptyType()
{
    NyXmlSchemaComplexType emptyType;
    emptyType.setNamespace(m_theNamespace);
    m_theType = m_theSchema->insertComplexType(emptyType, m_theSchema->convertNamespaceToPrefix(m_theNamespace) + ":empty.Type");
}

void NyXmlSchemaElement::declareIfGlobal()
{
    // A parent in another namespace can only refer to the element, so that it has to be declared on its own.
    if (m_theParent != nullptr && m_theNamespace != m_theParent->m_theNamespace)
        m_theSchema->globalElement(m_theElementName, m_theNamespace, m_theType);
}

std::string NyXmlSchemaElement::qualifiedName(char const* suffix) const
{
    return m_theSchema->convertNamespaceToPrefix(m_theNamespace) + ":" + m_theElementName.token() + suffix;
}
