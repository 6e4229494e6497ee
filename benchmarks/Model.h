#ifndef NYXML_BENCHMARKS_MODEL_H
#define NYXML_BENCHMARKS_MODEL_H

#include "Data.h"

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/values/NyXmlVector.h>
#include <nyXml/values/NyXmlVectorBasicType.h>
#include <nyXml/values/NyXmlVectorType.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <istream>
#include <ostream>
#include <streambuf>
#include <string>

/// The catalog as an application of the library declares it, and streams over memory that cost next to nothing.
namespace bench {

inline constexpr char const* modelNamespace = "urn:bench/model";

class LibraryPart : public NyXmlCompoundType {
public:
    LibraryPart() = default;
    explicit LibraryPart(Part const& part)
        : m_theId(part.id),
          m_theActive(part.active),
          m_theMass(part.mass),
          m_thePosition(NyVector(part.position.x, part.position.y, part.position.z)),
          m_theTags(part.tags),
          m_theTitle(part.title)
    {}

    static NyToken const& classToken()
    {
        static NyToken const token(modelNamespace, "part");
        return token;
    }

    NyXmlObject* clone() const override { return new LibraryPart(*this); }
    NyXmlObject* newObject() const override { return new LibraryPart; }
    NyToken const& token() const override { return classToken(); }
    bool equality(NyXmlObject const* other) const override
    {
        auto const* part = dynamic_cast<LibraryPart const*>(other);
        return part != nullptr && part->plain() == plain();
    }

    void registerComponents() override
    {
        static NyToken const id("id"); // attributes take no namespace
        static NyToken const active(modelNamespace, "active");
        static NyToken const mass(modelNamespace, "mass");
        static NyToken const position(modelNamespace, "position");
        static NyToken const tags(modelNamespace, "tags");
        static NyToken const title(modelNamespace, "title");
        registerAttributeComponent(id, &m_theId);
        registerComponent(active, &m_theActive);
        registerComponent(mass, &m_theMass);
        registerComponent(position, &m_thePosition);
        registerComponent(tags, &m_theTags);
        registerComponent(title, &m_theTitle);
    }

    Part plain() const
    {
        return { m_theId.value(),
                 m_theActive.value(),
                 m_theMass.value(),
                 { m_thePosition[0], m_thePosition[1], m_thePosition[2] },
                 m_theTags.vectorContainer(),
                 m_theTitle.value() };
    }

private:
    NyXmlBasicType<unsigned int> m_theId;
    NyXmlBasicType<bool> m_theActive;
    NyXmlBasicType<double> m_theMass;
    NyXmlVector m_thePosition;
    NyXmlVectorBasicType<NyXmlBasicType<std::string>> m_theTags;
    NyXmlBasicType<std::string> m_theTitle;
};

using LibraryCatalog = NyXmlVectorType<LibraryPart>;

/// What a walk over the events of a document has met.
struct Walked {
    unsigned int elements = 0;
    unsigned int attributes = 0;
    std::size_t textBytes = 0; ///< values of attributes included
};

/// Pulls every event of the document and looks at the name of each element, at its attributes and at each text. (A reader complains
/// of attributes that nobody took.)
inline void walk(std::istream& stream, Walked& walked)
{
    NyXmlFileReader reader("document", stream);
    for (auto mode = reader.readXml(); mode != NyXmlFileReader::XML_READER_EOF; mode = reader.readXml()) {
        switch (mode) {
        case NyXmlFileReader::XML_READER_START_TAG:
        case NyXmlFileReader::XML_READER_EMPTY_TAG:
            walked.elements += reader.element().empty() ? 0 : 1;
            for (auto left = reader.remainingNumOfAttributes(); left > 0; --left) {
                walked.attributes += reader.attributeName().empty() ? 0 : 1;
                walked.textBytes += reader.attributeValue().size();
            }
            break;
        case NyXmlFileReader::XML_READER_CONTENT: walked.textBytes += reader.content().size(); break;
        case NyXmlFileReader::XML_READER_ERROR: return;
        case NyXmlFileReader::XML_READER_EOF:
        case NyXmlFileReader::XML_READER_END_TAG: break;
        }
    }
}

class MemoryInput : public std::streambuf {
public:
    explicit MemoryInput(std::string& text) { setg(text.data(), text.data(), text.data() + text.size()); }
};

class StringOutput : public std::streambuf {
public:
    explicit StringOutput(std::string& text) : m_theText(text) {}

protected:
    int_type overflow(int_type c) override
    {
        if (!traits_type::eq_int_type(c, traits_type::eof()))
            m_theText.push_back(traits_type::to_char_type(c));
        return traits_type::not_eof(c);
    }
    std::streamsize xsputn(char const* text, std::streamsize size) override
    {
        m_theText.append(text, static_cast<std::size_t>(size));
        return size;
    }

private:
    std::string& m_theText;
};

} // namespace bench

#endif
