// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_VALUES_DETAIL_NYXMLITEMS_H
#define NYXML_VALUES_DETAIL_NYXMLITEMS_H

#include <nyXml/core/NyToken.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/reader/NyXmlFileReader.h>
#include <nyXml/values/detail/NyXmlOwnValues.h>

#include <cstddef>
#include <iosfwd>
#include <string>
#include <type_traits>
#include <vector>

class NyXmlLeafRun;

/// What a family of containers puts in its messages.
struct NyXmlItemFamily {
    char const* name; ///< the class, as "NyXmlVectorType"
    char const* word; ///< what the size message calls the container, as "array"
    bool saysWhere;   ///< whether the size message goes on with file and line
};

/// Where a container puts an item: the one thing in which the families differ on reading.
class NYXML_EXPORT NyXmlItemSink {
public:
    /// The size attribute, before the first item; may be wrong, and negative.
    virtual void expect(int count) = 0;

    /// The element has a body: called once, before the first item.
    virtual void begin() {}

    /// Takes one item. The reader stands on one word or one child element; whether the item liked what it read plays no part.
    virtual void readItem(NyXmlReader& reader) = 0;

    /// Takes one item from what comes next, if that is a leaf of this name and the item one that may be read so. Does what readItem()
    /// does. \return false, and nothing has changed, if not
    virtual bool takeItem(NyXmlLeafRun& run, NyToken const& name) = 0;

    /// Whether each item of a run is sure to take a word. Others are watched: one made of attributes or children takes none.
    virtual bool isOfWords() const { return false; }

    /// Goes from the start tag of a run to its content: readXml(), unless there is a faster way.
    virtual NyXmlFileReader::XML_READER_MODE beginRun(NyXmlReader& reader);

    /// Takes all words of a run. The reader stands on content and hands out one word per content().
    /// \return how many there were, those that beginRun() has taken included
    virtual unsigned int readWords(NyXmlReader& reader);

protected:
    ~NyXmlItemSink() = default;
};

/// The items of a container in order, as the writer asks for them: the one thing in which the families differ on writing.
class NYXML_EXPORT NyXmlItemSource {
public:
    /// Whether the next item may stand in a run.
    virtual bool isBasic() const = 0;

    /// Writes the next item without a frame, and goes to the one behind it.
    virtual void writeNext(NyXmlWriter& writer) = 0;

    /// Whether no code of the application runs in the others. There is an item.
    virtual bool isOurs() const = 0;

    /// Writes so many items, all of them as the next one.
    virtual void writeRun(NyXmlWriter& writer, unsigned int count)
    {
        while (count-- != 0)
            writeNext(writer);
    }

protected:
    ~NyXmlItemSource() = default;
};

/// The source for a range of objects. \tparam Iterator  its value type derives from NyXmlObject
template <class Iterator>
class NyXmlObjectSource final : public NyXmlItemSource {
public:
    explicit NyXmlObjectSource(Iterator first) : m_next(first) {}
    bool isBasic() const override { return m_next->isBasicType(); }
    void writeNext(NyXmlWriter& writer) override { (m_next++)->write(writer); }
    bool isOurs() const override { return NyXmlOwnValues::has(*m_next); }

private:
    Iterator m_next;
};

/// The document format of sequences, sets and lists, for the families' own use: loops and messages, once for all item types.
///
/// \code
///     <weights size="3"><group>1 2 5</group></weights>                           items that are basic
///     <names size="2"><element>a b</element><element>c</element></names>         others
/// \endcode
/// `where` is the signature of the reporting member.
namespace NyXmlItems {

inline constexpr NyXmlItemFamily vectorBasicType = { "NyXmlVectorBasicType", "array", true };
inline constexpr NyXmlItemFamily vectorType = { "NyXmlVectorType", "array", true };
inline constexpr NyXmlItemFamily setType = { "NyXmlSetType", "set", false };
inline constexpr NyXmlItemFamily listType = { "NyXmlListType", "list", false };

/// The most items that a size attribute may claim room for ahead of their coming: 64 MiB of them.
///
/// A document of a hundred bytes can claim any number; behind this bound a sequence grows as the items come.
/// \param itemSize  in bytes
/// \throws std::length_error if \p count is negative
NYXML_EXPORT std::size_t believable(int count, std::size_t itemSize);

/// Asks the system to back memory that will be filled by large pages, where it has them.
NYXML_EXPORT void wishLargePages(void const* memory, std::size_t size) noexcept;

/// Makes room for as many items as are believable. Hot: of megabytes of small items a quarter of the reading is their first touch of each
/// page.
template <class Item>
void reserve(std::vector<Item>& items, int count)
{
    items.reserve(believable(count, sizeof(Item)));
    if constexpr (!std::is_same_v<Item, bool>)
        wishLargePages(items.data(), items.capacity() * sizeof(Item));
}

/// Reads attributes and body of a container. Takes runs and single elements, side by side and under any name; other attributes than
/// the size are consumed in silence.
///
/// \return false for an error of the reader, and for a run without content, which is reported. A wrong size is reported and true.
NYXML_EXPORT bool read(NyXmlReader& reader, NyXmlItemFamily const& family, char const* where, NyXmlItemSink& sink);

/// Writes the size attribute.
NYXML_EXPORT void writeSize(NyXmlWriter& writer, unsigned int size);

/// Writes the body: one run around the items that are basic, one element for each of the others. Asked item by item.
NYXML_EXPORT void writeItems(NyXmlWriter& writer, unsigned int size, NyXmlItemSource& items);

/// Describes size, element and, if there may be one, the run. \param item  a default one
NYXML_EXPORT void writeSchema(NyXmlSchema& schema, NyXmlObject const& item, bool hasRun);

/// Describes an element that holds a key: the sets' and lists' description. \param item  a default one
NYXML_EXPORT void writeKeySchema(NyXmlSchema& schema, NyXmlObject const& item);

/// Whether an index, or the items from first up to but not including last, can be erased. A refusal is reported with print type 4.
NYXML_EXPORT bool canErase(NyXmlItemFamily const& family, char const* where, unsigned int index, unsigned int size);
NYXML_EXPORT bool canErase(char const* where, unsigned int first, unsigned int last, unsigned int size);

// A sequence written in pieces, so that an application need not hold it: header, items, footer. `isRun` says that the items are basic.

/// Starts a document with the root tag, the size attribute and the tag of the run.
/// \param writer  set to the document's writer, which writeFooter() deletes
/// \return false, and nothing has changed, if the stream has failed
NYXML_EXPORT bool writeHeader(NyXmlObject const& sequence, std::ostream& stream, NyXmlWriter*& writer,
                              std::string const& fileName, NyToken const& rootTag, unsigned int size, bool isRun);
/// Items without the tags of the run. \return false for a null writer
NYXML_EXPORT bool writeBody(NyXmlWriter* writer, unsigned int size, NyXmlItemSource& items);
/// Ends run and root, deletes the writer and sets it to null. \return false for a null writer
NYXML_EXPORT bool writeFooter(NyXmlWriter*& writer, bool isRun);

} // namespace NyXmlItems

#endif
