#ifndef NYXML_VALUES_NYXMLEMBEDDEDSTRING_H
#define NYXML_VALUES_NYXMLEMBEDDEDSTRING_H

#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/values/NyXmlBasicType.h>

#include <string>

/// A piece of markup that stands in a document as markup: `<note><b>x</b></note>` holds `<b>x</b>`.
///
/// Its tags must be balanced, or the document can't be read back. As with every string, clone() and newObject() give a plain
/// NyXmlBasicType<std::string>.
class NYXML_EXPORT NyXmlEmbeddedString : public NyXmlBasicType<std::string> {
public:
    NyXmlEmbeddedString() = default;
    NyXmlEmbeddedString(NyXmlEmbeddedString const&) = default;
    NyXmlEmbeddedString(std::string const& markup) : NyXmlBasicType<std::string>(markup) {} // implicit, as for all strings
    NyXmlEmbeddedString& operator=(NyXmlEmbeddedString const&) = default;
    using NyXmlBasicType<std::string>::operator=;
    ~NyXmlEmbeddedString() override;

    /// Takes the element's whole inner text, without the white space at its bounds.
    /// \return false, with a report of print type 4, for an element in the empty form
    bool read(NyXmlReader& reader) override;

    /// As any string, while the writer's isMarkup() is true: writers that escape strings leave this one alone.
    bool write(NyXmlWriter& writer) const override;
};

#endif
