#ifndef COMMON_MARKUP_H
#define COMMON_MARKUP_H

#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/values/NyXmlEmbeddedString.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <string>
#include <utility>
#include <vector>

/// An element of which the model knows no more than its name: attributes and all that is inside are kept as they are. For extensions that a
/// format leaves to others.
class Markup : public NyXmlEmbeddedString {
public:
    std::vector<std::pair<NyToken, std::string>> attributes;

    NyXmlObject* clone() const override { return new Markup(*this); }
    NyXmlObject* newObject() const override { return new Markup; }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* const same = dynamic_cast<Markup const*>(other);
        return same != nullptr && same->attributes == attributes && same->value() == value();
    }
    bool read(NyXmlReader& reader) override
    {
        attributes.clear();
        setValue(std::string());
        while (reader.remainingNumOfAttributes() > 0) {
            NyToken const name = reader.attributeName();
            attributes.emplace_back(name, reader.attributeValue(name));
        }
        bool const isEmpty = reader.mode() == NyXmlFileReader::XML_READER_EMPTY_TAG;
        return isEmpty ? NyXmlObject::read(reader) : NyXmlEmbeddedString::read(reader);
    }
    bool write(NyXmlWriter& writer) const override
    {
        for (auto const& [name, text] : attributes) {
            writer.setAttributeName(name);
            writer.data(text);
        }
        return NyXmlEmbeddedString::write(writer);
    }
};

#endif
