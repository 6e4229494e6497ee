// The library itself, used as an application does.

#include "Model.h"
#include "Runs.h"

#include <nyXml/values/NyXmlMapType.h>
#include <nyXml/values/NyXmlVectorVector.h>

#include <algorithm>
#include <fstream>

namespace bench {

namespace {

using LibraryNumbers = NyXmlVectorBasicType<NyXmlBasicType<double>>;
using LibraryTexts = NyXmlVectorBasicType<NyXmlBasicType<std::string>>;
using LibraryWeights = NyXmlMapType<NyXmlBasicType<std::string>, NyXmlBasicType<double>>;

template <class Object>
void readObject(std::string& document, Object& object)
{
    MemoryInput input(document);
    std::istream stream(&input);
    NyXmlReader reader("document", stream);
    reader.readXml();
    object.read(reader);
}

template <class Object>
void writeObject(std::string& document, char const* tag, Object const& object)
{
    StringOutput output(document);
    std::ostream stream(&output);
    NyXmlWriter writer("document.xml", stream);
    writer.writeStartTag(NyToken(modelNamespace, tag));
    object.write(writer);
    writer.writeEndTag();
}

void readFile(std::string const& path, LibraryPart& part)
{
    std::ifstream stream(path);
    NyXmlReader reader(path, stream);
    reader.readXml();
    part.read(reader);
}

void walkEvents(std::string& document, Walked& walked)
{
    MemoryInput input(document);
    std::istream stream(&input);
    walk(stream, walked);
}

bool isNumbers(LibraryNumbers const& held) { return held.vectorContainer() == numbers(); }

bool isCatalog(LibraryCatalog const& held)
{
    return std::equal(held.vectorContainer().begin(), held.vectorContainer().end(), catalog().begin(), catalog().end(),
                      [](LibraryPart const& part, Part const& plain) { return part.plain() == plain; });
}

bool isTexts(LibraryTexts const& held) { return held.vectorContainer() == texts(); }

bool isPath(NyXmlVectorVector const& held)
{
    if (held.size() != path().size())
        return false;
    for (unsigned int i = 0; i < held.size(); ++i)
        if (!(Point{ held[i].x(), held[i].y(), held[i].z() } == path()[i]))
            return false;
    return true;
}

bool isWeights(LibraryWeights const& held)
{
    return std::equal(held.mapContainer().begin(), held.mapContainer().end(), weights().begin(), weights().end(),
                      [](auto const& entry, auto const& plain) {
                          return entry.first.value() == plain.first && entry.second.value() == plain.second;
                      });
}

void writeNumbers(std::string& document)
{
    static LibraryNumbers const object(numbers());
    writeObject(document, "numbers", object);
}

void writeCatalog(std::string& document)
{
    static LibraryCatalog const object = [] {
        LibraryCatalog made;
        for (Part const& part : catalog())
            made.pushBack(LibraryPart(part));
        return made;
    }();
    writeObject(document, "catalog", object);
}

void writePath(std::string& document)
{
    static NyXmlVectorVector const object = [] {
        NyXmlVectorVector made;
        for (Point const& point : path())
            made.pushBack(NyVector(point.x, point.y, point.z));
        return made;
    }();
    writeObject(document, "path", object);
}

void writeWeights(std::string& document)
{
    static LibraryWeights const object = [] {
        LibraryWeights made;
        for (auto const& [key, value] : weights())
            made.add(key, value);
        return made;
    }();
    writeObject(document, "weights", object);
}

} // namespace

void addLibrary(Runs& runs)
{
    runs.read<LibraryNumbers>("readNumbers/nyXml", numbersDocument, readObject<LibraryNumbers>, isNumbers);
    runs.read<LibraryCatalog>("readCatalog/nyXml", catalogDocument, readObject<LibraryCatalog>, isCatalog);
    runs.read<NyXmlVectorVector>("readPath/nyXml", pathDocument, readObject<NyXmlVectorVector>, isPath);
    runs.read<LibraryWeights>("readMap/nyXml", weightsDocument, readObject<LibraryWeights>, isWeights);
    runs.read<LibraryTexts>("readTexts/nyXml", textsDocument, readObject<LibraryTexts>, isTexts);
    runs.readFiles<LibraryPart>("readFiles/nyXml", readFile, [](LibraryPart const& part) { return part.plain(); });
    runs.read<Walked>("walk/nyXml", catalogDocument, walkEvents, [](Walked const& walked) {
        return walked.elements == catalogElements() && walked.attributes == catalogAttributes();
    });
    runs.write("writeNumbers/nyXml", writeNumbers, numbers);
    runs.write("writeCatalog/nyXml", writeCatalog, catalog);
    runs.write("writePath/nyXml", writePath, path);
    runs.write("writeMap/nyXml", writeWeights, weights);
}

} // namespace bench
