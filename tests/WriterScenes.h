#ifndef NYXML_TESTS_WRITERSCENES_H
#define NYXML_TESTS_WRITERSCENES_H

// Scenes for a writer and its literal twin: calls from outside and trees of objects, with code of an application in the middle that looks
// at the stream whenever it is called, streams that break and calls that throw.

#include <nyXml/compound/NyXmlCompoundType.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/values/NyXmlBinaryString.h>
#include <nyXml/values/NyXmlEnumType.h>
#include <nyXml/values/NyXmlListType.h>
#include <nyXml/values/NyXmlMapType.h>
#include <nyXml/values/NyXmlVectorType.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

namespace writerScenes {

/// Takes so many bytes and then no more.
class LimitedBuffer : public std::streambuf {
public:
    std::string bytes;
    std::size_t limit = std::string::npos;

protected:
    int_type overflow(int_type c) override
    {
        char const byte = traits_type::to_char_type(c);
        return xsputn(&byte, 1) == 1 ? c : traits_type::eof();
    }
    std::streamsize xsputn(char const* text, std::streamsize size) override
    {
        std::size_t const taken = std::min(static_cast<std::size_t>(size), limit - bytes.size());
        bytes.append(text, taken);
        return static_cast<std::streamsize>(taken);
    }
};

/// Where a scene's choices come from: a seed, or the bytes of an input, behind which all is 0.
class Choices {
public:
    explicit Choices(unsigned int seed) : m_random(seed) {}
    Choices(unsigned char const* bytes, std::size_t size) : m_bytes(bytes), m_left(size) {}

    unsigned int operator()()
    {
        if (m_bytes == nullptr)
            return static_cast<unsigned int>(m_random());
        unsigned int value = 0;
        for (int taken = 0; taken < 2 && m_left != 0; ++taken, --m_left)
            value = value * 256 + *m_bytes++;
        return value;
    }

private:
    std::mt19937 m_random;
    unsigned char const* m_bytes = nullptr;
    std::size_t m_left = 0;
};

/// One run of a scene, with what all the code in it could see.
struct Scene {
    explicit Scene(Choices const& choices) : random(choices), decisions(choices) {}

    LimitedBuffer buffer;
    std::ostream stream{ &buffer };
    std::string log;
    Choices random;     ///< of what is done from outside
    Choices decisions;  ///< of what code does that is called
    int countdown = -1; ///< calls until one throws

    unsigned int below(unsigned int bound) { return random() % bound; }
    bool decide(unsigned int chances) { return decisions() % chances == 0; }
    void see(std::string const& what)
    {
        log += what + ' ' + std::to_string(buffer.bytes.size()) + (stream.good() ? "\n" : " failed\n");
        if (countdown >= 0 && countdown-- == 0)
            throw std::runtime_error("thrown by code of the application");
    }
};

inline Scene* scene = nullptr; ///< the one that runs

/// The writer by the book: each piece of a document goes to the stream as soon as it is known.
class LiteralWriter : public NyXmlWriter {
public:
    LiteralWriter(std::string const& name, std::ostream& stream) : NyXmlWriter(name, stream), m_stream(stream), m_name(name) {}

    void writeStartTag(NyToken const& token) override
    {
        std::string const xmlNamespace = token.xmlNamespace();
        std::string tag = token.token(), prefix;
        if (xmlNamespace.empty()) {
            Ny::Print::write(4, "NyXmlWriter Warning: All elements should have namespace: %s\n\tFile: %s\n", tag.c_str(),
                             m_name.c_str());
        } else {
            if (m_rootNamespace.empty())
                m_rootNamespace = xmlNamespace;
            if (xmlNamespace != m_rootNamespace) {
                prefix = lastSegment(xmlNamespace);
                tag = prefix + ':' + tag;
            }
        }
        if (m_records.empty()) {
            m_records.push_back({ {}, {}, {} });
            writeHeader(NyToken(tag).token(), xmlNamespace);
        } else {
            m_records.push_back(Record(m_records.back()));
            if (m_mode == 1 || m_mode == 3)
                put(">\n");
            writeTab(m_records.size() - 1);
            put("<");
            put(tag);
        }
        Record& record = m_records.back();
        record.token = tag;
        record.ownNamespace = xmlNamespace;
        if (!xmlNamespace.empty() && record.prefixes.emplace(prefix, xmlNamespace).second) {
            put(prefix.empty() ? " xmlns" : " xmlns:" + prefix);
            put("=\"");
            put(xmlNamespace);
            put("\"");
        }
        m_content.clear();
        m_count = 0;
        m_columns = 10;
        m_mode = 1;
    }
    void writeStartTagUsingParentNamespace(NyToken const& token) override
    {
        writeStartTag(m_records.empty() ? token : NyToken(m_records.back().ownNamespace + '#' + token.token()));
    }
    void setAttributeName(NyToken const& token) override
    {
        std::string name = token.token();
        if (!token.xmlNamespace().empty()) {
            std::string const whole = token.namespaceAndToken(), prefix = lastSegment(token.xmlNamespace());
            Ny::Print::write(4, "NyXmlWriter Error: no namespace on attributes preferred: %s\n\tFile: %s\n", whole.c_str(),
                             m_name.c_str());
            if (!m_records.empty() && m_records.back().prefixes.count(prefix) != 0)
                name = prefix + ':' + name;
            else
                Ny::Print::write(4, "NyXmlWriter Error: attribute namespace doesn't exist: %s\n\tFile: %s\n", whole.c_str(),
                                 m_name.c_str());
        }
        put(" ");
        put(name);
        put("=");
        m_mode = 2;
    }
    void setNumOfContentColumns(unsigned int columns) override { m_columns = columns; }
    void writeEndTag() override
    {
        std::size_t const depth = m_records.size();
        if (depth == 0 || m_mode == 0 || m_mode == 2) {
            Ny::Print::write(4, "NyXmlWriter Error: end tag following incorrect mode %d.  File %s\n", m_mode, m_name.c_str());
        } else if (m_mode == 1) {
            put(" xsi:nil=\"true\"/>\n");
        } else if (m_mode == 3) {
            put("/>\n");
        } else {
            if (m_mode == 4) {
                put(">");
                if (m_content.size() > 50) {
                    put("\n");
                    writeTab(depth);
                    put(m_content);
                    put("\n");
                    writeTab(depth - 1);
                } else {
                    put(m_content);
                }
            } else {
                writeTab(depth - 1);
            }
            put("</");
            put(m_records.back().token.token());
            put(">\n");
        }
        if (depth != 0)
            m_records.pop_back();
        m_mode = 5;
    }
    void data(std::string const& value) override
    {
        if (m_mode == 2) {
            put("\"");
            put(value);
            put("\"");
            m_mode = 3;
        } else if (m_mode == 0 || m_mode == 5) {
            Ny::Print::write(4, "NyXmlWriter Error: element %s is placing content at incorrect location.\n\tFile: %s\n",
                             m_records.empty() ? "" : m_records.back().token.c_str(), m_name.c_str());
        } else {
            if (m_count != 0)
                m_content += m_columns != 0 && m_count % m_columns == 0 ? '\n' + std::string(2 * m_records.size(), ' ') : " ";
            ++m_count;
            m_content += value;
            m_mode = 4;
        }
    }

private:
    struct Record {
        NyToken token;
        std::map<std::string, std::string> prefixes;
        std::string ownNamespace;
    };

    static std::string lastSegment(std::string const& text) { return text.substr(text.rfind('/') + 1); }
    void put(std::string const& bytes) { m_stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size())); }
    void writeTab(std::size_t count)
    {
        for (; count != 0; --count)
            put(indent());
    }
    void writeHeader(std::string const& tag, std::string const& xmlNamespace)
    {
        put(NyXmlWriter::header() + '\n');
        put("<" + tag);
        if (!xmlNamespace.empty())
            put(" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"\n  xsi:schemaLocation=\"" + xmlNamespace + "\n  d." +
                lastSegment(xmlNamespace) + ".xsd\"");
    }

    std::ostream& m_stream;
    std::string m_name, m_rootNamespace, m_content;
    std::vector<Record> m_records;
    unsigned int m_count = 0, m_columns = 10;
    int m_mode = 0;
};

inline char const* const namespaces[] = { "u", "u", "u", "x/v", "y/v", "x/", "w#a", "" };
inline char const* const names[] = { "a", "element", "size", "a_name_of_more_than_16_bytes", "e#e", "" };

inline NyToken anyToken(Scene& s) { return { namespaces[s.below(8)], names[s.below(8) % 6] }; }

inline std::string anyText(Scene& s) { return std::string(s.below(4) == 0 ? s.below(120) : s.below(12), "x <&"[s.below(4)]); }

/// One call from outside, in or out of place.
inline void callAny(Scene& s, NyXmlWriter& writer)
{
    switch (s.below(16)) {
    case 0: writer.writeStartTag(anyToken(s)); break;
    case 1:
    case 2: writer.writeStartTagUsingParentNamespace(anyToken(s)); break;
    case 3: writer.setAttributeName(s.below(5) == 0 ? anyToken(s) : NyToken(names[s.below(4)])); break;
    case 4: writer.setNumOfContentColumns(s.below(12)); break;
    case 5:
    case 6:
    case 7: writer.writeEndTag(); break;
    case 8: writer.data(anyText(s)); break;
    case 9: writer << anyText(s); break;
    case 10: writer << static_cast<double>(s.random()) / 1e6; break;
    case 11: writer << -static_cast<int>(s.below(100000)); break;
    case 12: writer << (s.below(2) == 0) << 'c' << static_cast<unsigned char>(s.below(256)); break;
    case 13: writer << NyAngle(0.1 * s.below(100)) << static_cast<short>(s.below(9)) << 7u; break;
    case 14: writer.setIndent(std::string(s.below(3), ' ')); break;
    case 15:
        if (s.below(50) == 0) // beyond what is held in one piece
            for (int i = 0; i < 3000; ++i)
                writer << std::string(40, 'y');
        break;
    }
}

// --- code of an application: it looks at the stream whenever it is called ---

class Watcher : public NyXmlObject {
public:
    NyXmlObject* clone() const override { return new Watcher(*this); }
    NyXmlObject* newObject() const override { return new Watcher; }
    NyToken const& token() const override { return NyXml::NyNullToken; }
    bool equality(NyXmlObject const*) const override
    {
        scene->see("equality");
        return scene->decide(4);
    }
    bool isBasicType() const override
    {
        scene->see("isBasicType");
        return scene->decide(4);
    }
    bool xmlInit() override
    {
        scene->see("xmlInit");
        return NyXmlObject::xmlInit();
    }
    bool write(NyXmlWriter& writer) const override
    {
        scene->see("write");
        if (!NyXmlObject::write(writer))
            return false;
        switch (scene->decisions() % 5) {
        case 0: break;
        case 1: scene->stream << "<!-- the owner's own -->"; break;
        case 2: writer << 1.5 << std::string("text"); break;
        case 3: NyXmlVector(NyVector(1, 2, 3)).write(writer); break;
        case 4:
            writer.writeStartTagUsingParentNamespace("inside");
            scene->see("inside");
            NyXmlVectorBasicType<NyXmlBasicType<int>>(5, 7).write(writer);
            scene->see("behind a value");
            writer.writeEndTag();
            break;
        }
        scene->see("written");
        return true;
    }
    bool operator==(Watcher const&) const { return equality(nullptr); }
    bool operator<(Watcher const&) const { return false; }
};

/// A type with an operator of its own.
struct Plain {
    friend std::ostream& operator<<(std::ostream& stream, Plain const&)
    {
        scene->see("operator");
        return stream << "plain";
    }
    friend std::istream& operator>>(std::istream& stream, Plain&) { return stream; }
    bool operator==(Plain const&) const { return true; }
    bool operator<(Plain const&) const { return false; }
};

/// A word that is not quite the library's.
class Word : public NyXmlBasicType<int> {
public:
    using NyXmlBasicType<int>::NyXmlBasicType;
    NyXmlObject* newObject() const override { return new Word; }
    bool write(NyXmlWriter& writer) const override
    {
        scene->see("word");
        return NyXmlBasicType<int>::write(writer);
    }
};

class Mode : public NyXmlEnumType<int> {
public:
    std::string const& enumString() const override
    {
        scene->see("enumString");
        return NyXmlEnumType<int>::enumString();
    }
    NyXmlObject* newObject() const override { return new Mode; }
    bool xmlInit() override
    {
        setEnumString(0, "zero");
        return NyXmlEnumType<int>::xmlInit();
    }
};

inline std::unique_ptr<NyXmlObject> anyObject(Scene& s, unsigned int depth);

class Compound : public NyXmlCompoundType {
public:
    Compound() : Compound(*scene, 3) {}
    Compound(Scene& s, unsigned int depth) : m_isWatched(s.below(3) == 0)
    {
        for (unsigned int i = s.below(5); i != 0; --i)
            m_components.emplace_back(anyToken(s), s.below(3), anyObject(s, depth + 1));
    }
    NyXmlObject* clone() const override { return new Compound; }
    NyXmlObject* newObject() const override { return new Compound; }
    NyToken const& token() const override { return NyXml::NyNullToken; }
    bool equality(NyXmlObject const*) const override
    {
        scene->see("equality of compound");
        return scene->decide(3);
    }
    void registerComponents() override
    {
        scene->see("registerComponents");
        for (auto const& [token, kind, object] : m_components) {
            if (kind == 0)
                registerAttributeComponent(token.localName(), object.get());
            else if (kind == 1 || !m_isWatched)
                registerComponent(token, object.get());
            else
                registerComponentReadOnly(token, object.get());
        }
    }
    bool writeAttributes(NyXmlWriter& writer) const override
    {
        bool const result = NyXmlCompoundType::writeAttributes(writer);
        scene->see("attributes");
        return result;
    }
    bool hasChildren() const override
    {
        scene->see("hasChildren");
        return NyXmlCompoundType::hasChildren();
    }
    bool operator==(Compound const&) const { return true; }

protected:
    bool isReadOnlyComponent(NyToken token) const override
    {
        scene->see("isReadOnlyComponent");
        return NyXmlCompoundType::isReadOnlyComponent(token);
    }

private:
    bool m_isWatched;
    std::vector<std::tuple<NyToken, unsigned int, std::shared_ptr<NyXmlObject>>> m_components;
};

template <class T>
std::unique_ptr<NyXmlObject> filled(Scene& s, T value)
{
    auto made = std::make_unique<NyXmlVectorType<T>>();
    for (unsigned int i = s.below(4); i != 0; --i)
        made->pushBack(value);
    return made;
}

inline std::unique_ptr<NyXmlObject> anyObject(Scene& s, unsigned int depth)
{
    using Text = NyXmlBasicType<std::string>;
    switch (s.below(depth < 4 ? 18 : 8)) {
    case 0: return std::make_unique<NyXmlBasicType<double>>(0.1 * s.below(100));
    case 1: return std::make_unique<Text>(anyText(s));
    case 2: return std::make_unique<NyXmlVector>(NyVector(s.below(9), 0.1, -1));
    case 3: return std::make_unique<Watcher>();
    case 4: return std::make_unique<NyXmlBasicType<Plain>>();
    case 5: return std::make_unique<Word>(static_cast<int>(s.below(9)));
    case 6: return std::make_unique<Mode>();
    case 7: {
        unsigned int const size = s.below(40) == 0 ? 20000 : s.below(25);
        return std::make_unique<NyXmlVectorBasicType<NyXmlBasicType<double>>>(size, 0.3 * s.below(9));
    }
    case 8: return std::make_unique<Compound>(s, depth);
    case 9: return filled(s, Text(anyText(s)));
    case 10: return filled(s, Word(3));
    case 11: return filled(s, Watcher());
    case 12: return std::make_unique<NyXmlVectorBasicType<NyXmlBasicType<Plain>>>(s.below(4));
    case 13: return std::make_unique<NyXmlPairType<Text, Watcher>>(Text("first"), Watcher());
    case 14: return std::make_unique<NyXmlMapType<Text, Watcher>>(Text("key"), Watcher());
    case 15: return std::make_unique<NyXmlMapType<Text, NyXmlBasicType<double>>>(Text("key"), 0.5);
    case 16: return std::make_unique<NyXmlVectorVector>(s.below(30) == 0 ? 1000 : s.below(4), NyVector(0.1, 2, 3));
    default: return filled(s, NyXmlVectorBasicType<NyXmlBasicType<int>>(s.below(15), 4));
    }
}

/// Plays one scene. \return all that could be seen
template <class Writer>
std::string played(Choices const& choices)
{
    Scene s(choices);
    scene = &s;
    Ny::Print::setHandler(
        [&s](int printType, std::string const&, std::string const& text) { s.see(std::to_string(printType) + ": " + text); });
    bool const breaks = s.below(8) == 0, throws = s.below(2) == 0;
    if (breaks)
        s.buffer.limit = s.below(3000);
    if (breaks && throws)
        s.stream.exceptions(std::ios::badbit);
    if (s.below(8) == 0)
        s.countdown = static_cast<int>(s.below(30));

    Writer writer("d.xml", s.stream);
    writer.setWriteDefaultDataFlag(s.below(2) == 0);
    try {
        bool const isOfObjects = s.below(2) == 0;
        for (unsigned int calls = s.below(isOfObjects ? 8 : 60); calls != 0; --calls) {
            if (isOfObjects) {
                writer.writeStartTag(anyToken(s));
                auto const object = anyObject(s, 0);
                object->write(writer);
                s.see("behind the object");
                if (s.below(2) == 0)
                    writer.writeEndTag();
            } else {
                callAny(s, writer);
            }
            s.see("behind the call");
        }
    } catch (std::runtime_error const& exception) { // and what a stream throws
        s.log += exception.what();
    }
    Ny::Print::setHandler({});
    scene = nullptr;
    return s.log + s.buffer.bytes;
}

} // namespace writerScenes

#endif
