// libxml2's streaming reader and its writer.

#include "Runs.h"
#include "Text.h"

#include <libxml/xmlreader.h>
#include <libxml/xmlwriter.h>

#include <cstring>
#include <memory>

namespace bench {

namespace {

char const* chars(xmlChar const* text) { return reinterpret_cast<char const*>(text); }
xmlChar const* xml(char const* text) { return reinterpret_cast<xmlChar const*>(text); }

class Reader {
public:
    explicit Reader(std::string const& document)
        : m_theReader(xmlReaderForMemory(document.data(), static_cast<int>(document.size()), nullptr, nullptr,
                                         XML_PARSE_HUGE | XML_PARSE_NOBLANKS | XML_PARSE_COMPACT | XML_PARSE_NONET))
    {}
    ~Reader() { xmlFreeTextReader(m_theReader); }
    Reader(Reader const&) = delete;
    Reader& operator=(Reader const&) = delete;

    bool next() { return xmlTextReaderRead(m_theReader) == 1; }
    int type() { return xmlTextReaderNodeType(m_theReader); }
    int depth() { return xmlTextReaderDepth(m_theReader); }
    std::string_view name() { return chars(xmlTextReaderConstName(m_theReader)); }
    std::string_view value() { return chars(xmlTextReaderConstValue(m_theReader)); }

    /// The next attribute's value, by position.
    template <class T>
    T nextAttribute()
    {
        xmlTextReaderMoveToNextAttribute(m_theReader);
        return numberFrom<T>(value());
    }
    Point point()
    {
        double const x = nextAttribute<double>();
        double const y = nextAttribute<double>();
        return { x, y, nextAttribute<double>() };
    }

private:
    xmlTextReaderPtr m_theReader;
};

void readNumbers(std::string& document, Numbers& held)
{
    Reader reader(document);
    while (reader.next()) {
        if (reader.type() == XML_READER_TYPE_TEXT)
            appendNumbers(reader.value(), held);
        else if (reader.type() == XML_READER_TYPE_ELEMENT && reader.depth() == 0)
            held.reserve(reader.nextAttribute<unsigned int>());
    }
}

void readCatalog(std::string& document, Catalog& held)
{
    enum Member { NONE, ACTIVE, MASS, TITLE, TAG };
    Member member = NONE;
    Reader reader(document);
    while (reader.next()) {
        int const type = reader.type();
        if (type == XML_READER_TYPE_TEXT) {
            switch (member) {
            case ACTIVE: held.back().active = reader.value() == "1"; break;
            case MASS: held.back().mass = numberFrom<double>(reader.value()); break;
            case TITLE: held.back().title = reader.value(); break;
            case TAG: held.back().tags.emplace_back(reader.value()); break;
            case NONE: break;
            }
            continue;
        }
        if (type != XML_READER_TYPE_ELEMENT)
            continue;
        switch (reader.depth()) {
        case 0: held.reserve(reader.nextAttribute<unsigned int>()); break;
        case 1: held.emplace_back().id = reader.nextAttribute<unsigned int>(); break;
        case 2: {
            std::string_view const name = reader.name();
            if (name == "position")
                held.back().position = reader.point();
            else if (name == "tags")
                held.back().tags.reserve(reader.nextAttribute<unsigned int>());
            else
                member = name == "active" ? ACTIVE : name == "mass" ? MASS : TITLE;
            break;
        }
        default: member = TAG;
        }
    }
}

void readTexts(std::string& document, Texts& held)
{
    Reader reader(document);
    while (reader.next()) {
        int const type = reader.type();
        if (type == XML_READER_TYPE_TEXT && reader.depth() == 2)
            held.emplace_back(reader.value());
        else if (type == XML_READER_TYPE_ELEMENT && reader.depth() == 0)
            held.reserve(reader.nextAttribute<unsigned int>());
    }
}

void readFile(std::string const& path, Part& part)
{
    char member = ' '; // the first letter of its name
    Reader reader(fileBytes(path));
    while (reader.next()) {
        int const type = reader.type();
        if (type == XML_READER_TYPE_ELEMENT) {
            member = reader.name().front();
            if (reader.depth() == 0)
                part.id = reader.nextAttribute<unsigned int>();
            else if (member == 'p')
                part.position = reader.point();
        } else if (type == XML_READER_TYPE_TEXT) {
            switch (member) {
            case 'a': part.active = reader.value() == "1"; break;
            case 'm': part.mass = numberFrom<double>(reader.value()); break;
            case 't': part.title = reader.value(); break;
            }
        }
    }
}

void readPath(std::string& document, Path& held)
{
    Reader reader(document);
    while (reader.next()) {
        if (reader.type() != XML_READER_TYPE_ELEMENT)
            continue;
        if (reader.depth() == 1)
            held.push_back(reader.point());
        else
            held.reserve(reader.nextAttribute<unsigned int>());
    }
}

void readWeights(std::string& document, Weights& held)
{
    std::string key;
    bool isKey = false;
    Reader reader(document);
    while (reader.next()) {
        int const type = reader.type();
        if (type == XML_READER_TYPE_ELEMENT && reader.depth() == 2)
            isKey = reader.name() == "key";
        if (type != XML_READER_TYPE_TEXT)
            continue;
        if (isKey)
            key = reader.value();
        else
            held.emplace_hint(held.end(), std::move(key), numberFrom<double>(reader.value()));
    }
}

struct Walked {
    unsigned int elements = 0;
    std::size_t textBytes = 0;
};

void walk(std::string& document, Walked& walked)
{
    Reader reader(document);
    while (reader.next()) {
        if (reader.type() == XML_READER_TYPE_ELEMENT)
            ++walked.elements;
        else if (reader.type() == XML_READER_TYPE_TEXT)
            walked.textBytes += reader.value().size();
    }
}

class Writer {
public:
    explicit Writer(std::string& document)
        : m_theWriter(xmlNewTextWriter(xmlOutputBufferCreateIO(
              append, [](void*) { return 0; }, &document, nullptr)))
    {
        xmlTextWriterSetIndent(m_theWriter, 1);
        xmlTextWriterStartDocument(m_theWriter, nullptr, "UTF-8", nullptr);
    }
    ~Writer()
    {
        xmlTextWriterEndDocument(m_theWriter);
        xmlFreeTextWriter(m_theWriter);
    }
    Writer(Writer const&) = delete;
    Writer& operator=(Writer const&) = delete;

    void start(char const* name) { xmlTextWriterStartElement(m_theWriter, xml(name)); }
    void end() { xmlTextWriterEndElement(m_theWriter); }
    void raw(char const* text, std::size_t size) { xmlTextWriterWriteRawLen(m_theWriter, xml(text), static_cast<int>(size)); }
    void attribute(char const* name, NumberText const& number)
    {
        xmlTextWriterStartAttribute(m_theWriter, xml(name));
        raw(number.c_str(), static_cast<std::size_t>(number.size()));
        xmlTextWriterEndAttribute(m_theWriter);
    }
    void size(std::size_t size) { attribute("size", NumberText(static_cast<unsigned int>(size))); }
    void element(char const* name, std::string_view text)
    {
        start(name);
        raw(text.data(), text.size());
        end();
    }
    void point(char const* name, Point const& point)
    {
        start(name);
        attribute("x", NumberText(point.x, writtenDigits));
        attribute("y", NumberText(point.y, writtenDigits));
        attribute("z", NumberText(point.z, writtenDigits));
        end();
    }

private:
    static int append(void* document, char const* text, int size)
    {
        static_cast<std::string*>(document)->append(text, static_cast<std::size_t>(size));
        return size;
    }

    xmlTextWriterPtr m_theWriter;
};

void writeNumbers(std::string& document)
{
    Writer writer(document);
    writer.start("numbers");
    writer.size(numbers().size());
    writer.element("group", runOf(numbers()));
    writer.end();
}

void writeCatalog(std::string& document)
{
    Writer writer(document);
    writer.start("catalog");
    writer.size(catalog().size());
    for (Part const& part : catalog()) {
        writer.start("element");
        writer.attribute("id", NumberText(part.id));
        writer.element("active", part.active ? "1" : "0");
        writer.element("mass", NumberText(part.mass, writtenDigits).view());
        writer.point("position", part.position);
        writer.start("tags");
        writer.size(part.tags.size());
        for (std::string const& tag : part.tags)
            writer.element("element", tag);
        writer.end();
        writer.element("title", part.title);
        writer.end();
    }
    writer.end();
}

void writePath(std::string& document)
{
    Writer writer(document);
    writer.start("path");
    writer.size(path().size());
    for (Point const& point : path())
        writer.point("element", point);
    writer.end();
}

void writeWeights(std::string& document)
{
    Writer writer(document);
    writer.start("weights");
    for (auto const& [key, value] : weights()) {
        writer.start("element");
        writer.element("key", key);
        writer.element("value", NumberText(value, writtenDigits).view());
        writer.end();
    }
    writer.end();
}

} // namespace

void addLibxml2(Runs& runs)
{
    runs.read("readNumbers/libxml2", numbersDocument, readNumbers, numbers);
    runs.read("readCatalog/libxml2", catalogDocument, readCatalog, catalog);
    runs.read("readPath/libxml2", pathDocument, readPath, path);
    runs.read("readMap/libxml2", weightsDocument, readWeights, weights);
    runs.read("readTexts/libxml2", textsDocument, readTexts, texts);
    runs.readFiles("readFiles/libxml2", readFile, plainPart);
    runs.read<Walked>("walk/libxml2", catalogDocument, walk,
                      [](Walked const& walked) { return walked.elements == catalogElements() && walked.textBytes > 0; });
    runs.write("writeNumbers/libxml2", writeNumbers, numbers);
    runs.write("writeCatalog/libxml2", writeCatalog, catalog);
    runs.write("writePath/libxml2", writePath, path);
    runs.write("writeMap/libxml2", writeWeights, weights);
}

} // namespace bench
