#include <nyXml/values/detail/NyXmlItems.h>

#include <nyXml/core/NyXml.h>
#include <nyXml/core/detail/NyLargePages.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/reader/detail/NyXmlLeafRun.h>
#include <nyXml/schema/NyXmlSchema.h>
#include <nyXml/values/NyXmlBasicType.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXml/writer/detail/NyXmlTogether.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace {

/// Consumes all attributes of the element. \return the size, 0 if there is none
int takeAttributes(NyXmlReader& reader, NyXmlItemSink& sink)
{
    int expected = 0;
    for (unsigned int left = reader.remainingNumOfAttributes(); left != 0; --left) {
        bool const isSize = reader.attributeName() == NyXml::NyCountToken;
        std::string const& value = reader.attributeValue();
        if (isSize) {
            expected = NyXmlText::toInt(value);
            sink.expect(expected);
        }
    }
    return expected;
}

/// Takes the items that come next as long as they are leaves of the usual name.
unsigned int readLeaves(NyXmlReader& reader, NyXmlItemSink& sink)
{
    unsigned int count = 0;
    NyXmlLeafRun run(reader);
    while (sink.takeItem(run, NyXml::NyElementToken))
        ++count;
    run.end();
    return count;
}

void complainAboutSize(NyXmlReader const& reader, NyXmlItemFamily const& family, char const* where, int expected,
                       unsigned int actual)
{
    std::ostream& stream = Ny::Print::ostream(Ny::Print::NOTICE, where);
    stream << family.name << " Error: " << family.word << " size not equal to attribute value -- " << expected << ", actual -- "
           << actual << '\n';
    if (family.saysWhere)
        stream << "Filename: " << reader.filename() << ", Line count: " << reader.lineCountOfFile() << '\n';
}

bool isBasic(NyXmlWriter& writer, NyXmlItemSource const& items, bool isOurs)
{
    NyXmlApart const apart(writer, !isOurs);
    return items.isBasic();
}

void writeNext(NyXmlWriter& writer, NyXmlItemSource& items, bool isOurs)
{
    NyXmlApart const apart(writer, !isOurs);
    items.writeNext(writer);
}

void writeItem(NyXmlWriter& writer, NyXmlItemSource& items, bool isOurs)
{
    if (isBasic(writer, items, isOurs)) {
        writeNext(writer, items, isOurs);
    } else {
        writer.writeStartTagUsingParentNamespace(NyXml::NyElementToken);
        writeNext(writer, items, isOurs);
        writer.writeEndTag();
    }
}

} // namespace

NyXmlFileReader::XML_READER_MODE NyXmlItemSink::beginRun(NyXmlReader& reader) { return reader.readXml(); }

unsigned int NyXmlItemSink::readWords(NyXmlReader& reader)
{
    // An item that takes no word would never come to the end of the run. Asked through the virtual operations alone, since a reader
    // of an application's own hands out words that the library's has never seen.
    unsigned int const words = isOfWords() ? std::numeric_limits<unsigned int>::max() : reader.contentCount();
    unsigned int count = 0;
    while (count < words && reader.isContentAvailable()) {
        readItem(reader);
        if (++count == 1 && !isOfWords() && reader.contentCount() == words)
            break;
    }
    return count;
}

std::size_t NyXmlItems::believable(int count, std::size_t itemSize)
{
    constexpr std::size_t bound = std::size_t(64) << 20;
    if (count < 0)
        throw std::length_error("vector<T> too long");
    return std::min<std::size_t>(static_cast<std::size_t>(count), bound / itemSize);
}

void NyXmlItems::wishLargePages(void const* memory, std::size_t size) noexcept { nyWishLargePages(memory, size); }

bool NyXmlItems::read(NyXmlReader& reader, NyXmlItemFamily const& family, char const* where, NyXmlItemSink& sink)
{
    std::string const& group = NyXml::NyGroupToken;
    int const expected = takeAttributes(reader, sink);
    if (reader.mode() == NyXmlFileReader::XML_READER_EMPTY_TAG)
        return true; // nothing is said about the size: <a size="5"/> is how some writers leave out a default
    sink.begin();

    unsigned int actual = readLeaves(reader, sink);
    auto event = reader.readXml();
    while (event == NyXmlFileReader::XML_READER_START_TAG || event == NyXmlFileReader::XML_READER_EMPTY_TAG) {
        if (reader.element() == group) {
            if (sink.beginRun(reader) != NyXmlFileReader::XML_READER_CONTENT) {
                Ny::Print::ostream(Ny::Print::FAULT, where) << family.name << " Error: XML parser should be in data mode\n";
                return false;
            }
            reader.setContentVectorFlag(true);
            actual += sink.readWords(reader);
        } else {
            sink.readItem(reader);
            ++actual;
        }
        actual += readLeaves(reader, sink);
        event = reader.readXml();
    }
    if (event == NyXmlFileReader::XML_READER_ERROR)
        return false; // the reader has said what is wrong
    if (expected < 0 || static_cast<unsigned int>(expected) != actual)
        complainAboutSize(reader, family, where, expected, actual);
    return true;
}

void NyXmlItems::writeSize(NyXmlWriter& writer, unsigned int size)
{
    NyXmlTogether together(writer);
    writer.setAttributeName(NyXml::NyCountToken);
    writer << size;
    together.end();
}

void NyXmlItems::writeItems(NyXmlWriter& writer, unsigned int size, NyXmlItemSource& items)
{
    NyXmlTogether together(writer);
    bool const isOurs = size != 0 && items.isOurs();
    for (unsigned int i = 0; i < size; ++i) {
        bool const isWord = isBasic(writer, items, isOurs);
        if (isWord && i == 0) {
            writer.writeStartTagUsingParentNamespace(NyXml::NyGroupToken);
            if (isOurs) { // no item is of another kind
                together.beginRun();
                items.writeRun(writer, size);
                writer.writeEndTag();
                break;
            }
        }
        writeItem(writer, items, isOurs);
        if (isWord && i == size - 1)
            writer.writeEndTag();
    }
    together.end();
}

void NyXmlItems::writeSchema(NyXmlSchema& schema, NyXmlObject const& item, bool hasRun)
{
    schema.setAttributeName(NyXml::NyCountToken);
    NyXmlBasicType<unsigned int>().writeSchema(schema);

    schema.writeStartTagUsingParentNamespace(NyXml::NyElementToken, NyXmlSchemaElementType::XML_STARTTAG_UNBOUNDED);
    item.writeSchema(schema);
    schema.writeEndTag();

    if (hasRun) {
        schema.writeStartTagUsingParentNamespace(NyXml::NyGroupToken, NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
        item.writeSchema(schema); // twice: the second type on the same content is what tells the builder of a run
        item.writeSchema(schema);
        schema.writeEndTag();
    }
}

void NyXmlItems::writeKeySchema(NyXmlSchema& schema, NyXmlObject const& item)
{
    schema.writeStartTagUsingParentNamespace(NyXml::NyElementToken, NyXmlSchemaElementType::XML_STARTTAG_UNBOUNDED);
    schema.writeStartTagUsingParentNamespace(NyXml::NyKeyToken, NyXmlSchemaElementType::XML_STARTTAG_SINGLE);
    item.writeSchema(schema);
    schema.writeEndTag();
    schema.writeEndTag();
}

bool NyXmlItems::canErase(NyXmlItemFamily const& family, char const* where, unsigned int index, unsigned int size)
{
    if (index < size)
        return true;
    Ny::Print::ostream(Ny::Print::FAULT, where)
        << family.name << "<ElementType>::erase(): index (" << index << ") exceeds vector size (" << size << ").\n";
    return false;
}

bool NyXmlItems::canErase(char const* where, unsigned int first, unsigned int last, unsigned int size)
{
    if (last > size) {
        Ny::Print::ostream(Ny::Print::FAULT, where) << "index (" << last << ") exceeds vector size (" << size << ").\n";
        return false;
    }
    if (first > last) {
        Ny::Print::ostream(Ny::Print::FAULT, where) << "first (" << first << ") is bigger than last (" << last << ").\n";
        return false;
    }
    return true;
}

bool NyXmlItems::writeHeader(NyXmlObject const& sequence, std::ostream& stream, NyXmlWriter*& writer, std::string const& fileName,
                             NyToken const& rootTag, unsigned int size, bool isRun)
{
    if (stream.fail())
        return false;
    auto document = std::make_unique<NyXmlWriter>(fileName, stream);
    document->writeStartTag(rootTag);
    sequence.NyXmlObject::write(*document); // its own write() would write all of it
    writeSize(*document, size);
    if (isRun)
        document->writeStartTagUsingParentNamespace(NyXml::NyGroupToken);
    writer = document.release();
    return true;
}

bool NyXmlItems::writeBody(NyXmlWriter* writer, unsigned int size, NyXmlItemSource& items)
{
    if (writer == nullptr)
        return false;
    NyXmlTogether together(*writer);
    bool const isOurs = size != 0 && items.isOurs();
    for (unsigned int i = 0; i < size; ++i)
        writeItem(*writer, items, isOurs);
    together.end();
    return true;
}

bool NyXmlItems::writeFooter(NyXmlWriter*& writer, bool isRun)
{
    if (writer == nullptr)
        return false;
    std::unique_ptr<NyXmlWriter> const document(std::exchange(writer, nullptr));
    if (isRun)
        document->writeEndTag();
    document->writeEndTag();
    return true;
}
