// The companion library's reader and writer of XML 1.0, with the library's own objects. The contender to look at is Expat filling plain
// structs by hand: the aim is half as long again.

#include "Model.h"
#include "Runs.h"

#include <nyXml/values/NyXmlVectorVector.h>
#include <nyXmlKit/standard/NyXmlStandardReader.h>
#include <nyXmlKit/standard/NyXmlStandardWriter.h>

#include <algorithm>

namespace bench {

namespace {

using StandardNumbers = NyXmlVectorBasicType<NyXmlBasicType<double>>;

template <class Object>
void readStandard(std::string& document, Object& object)
{
    MemoryInput input(document);
    std::istream stream(&input);
    NyXmlStandardReader reader("document", stream);
    reader.readXml();
    object.read(reader);
}

void walkStandard(std::string& document, Walked& walked)
{
    MemoryInput input(document);
    std::istream stream(&input);
    NyXmlStandardReader reader("document", stream);
    for (auto mode = reader.readXml(); mode != NyXmlFileReader::XML_READER_EOF; mode = reader.readXml()) {
        if (mode == NyXmlFileReader::XML_READER_ERROR)
            return;
        if (mode == NyXmlFileReader::XML_READER_CONTENT)
            walked.textBytes += reader.content().size();
        if (mode != NyXmlFileReader::XML_READER_START_TAG && mode != NyXmlFileReader::XML_READER_EMPTY_TAG)
            continue;
        walked.elements += reader.element().empty() ? 0 : 1;
        for (auto left = reader.remainingNumOfAttributes(); left > 0; --left) {
            walked.attributes += reader.attributeName().empty() ? 0 : 1;
            walked.textBytes += reader.attributeValue().size();
        }
    }
}

bool isCatalog(LibraryCatalog const& held)
{
    return std::equal(held.vectorContainer().begin(), held.vectorContainer().end(), catalog().begin(), catalog().end(),
                      [](LibraryPart const& part, Part const& plain) { return part.plain() == plain; });
}

void writeCatalog(std::string& document)
{
    static LibraryCatalog const object = [] {
        LibraryCatalog made;
        for (Part const& part : catalog())
            made.pushBack(LibraryPart(part));
        return made;
    }();
    StringOutput output(document);
    std::ostream stream(&output);
    NyXmlStandardWriter writer("document.xml", stream);
    writer.writeStartTag(NyToken(modelNamespace, "catalog"));
    object.write(writer);
    writer.writeEndTag();
}

} // namespace

void addStandard(Runs& runs)
{
    runs.read<StandardNumbers>("readNumbers/nyXmlKit", numbersDocument, readStandard<StandardNumbers>,
                               [](StandardNumbers const& held) { return held.vectorContainer() == numbers(); });
    runs.read<LibraryCatalog>("readCatalog/nyXmlKit", catalogDocument, readStandard<LibraryCatalog>, isCatalog);
    runs.read<NyXmlVectorVector>("readPath/nyXmlKit", pathDocument, readStandard<NyXmlVectorVector>,
                                 [](NyXmlVectorVector const& held) { return held.size() == path().size(); });
    runs.read<Walked>("walk/nyXmlKit", catalogDocument, walkStandard, [](Walked const& walked) {
        return walked.elements == catalogElements() && walked.attributes == catalogAttributes();
    });
    runs.write("writeCatalog/nyXmlKit", writeCatalog, catalog);
}

} // namespace bench
