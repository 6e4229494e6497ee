// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_READER_DETAIL_NYXMLLEAFRUN_H
#define NYXML_READER_DETAIL_NYXMLLEAFRUN_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>

#include <array>
#include <cstddef>
#include <string_view>

class NyXmlFileReader;
class NyXmlReader;
struct NyXmlShortcuts;

/// Takes the leaves that come next, `<name>text</name>` or `<name a="1" b="2"/>`, in one step each, where they stand in the block.
///
/// Hot: nearly all of a document is leaves, and two events with their questions cost four times as much. Once the run is at its end the
/// reader stands as behind the events of the last leaf. Nobody may look at it before that, so whoever takes a leaf runs no code of an
/// application until then.
///
/// Everything that is not written as plainly as can be, or not whole in the block, is refused, and nothing has changed: readXml() says
/// what it is. A reader that is not exactly the library's refuses everything, unless it has offered shortcuts of its own.
class NYXML_EXPORT NyXmlLeafRun {
public:
    explicit NyXmlLeafRun(NyXmlReader& reader);
    /// \param document         null for a run that refuses everything
    /// \param isBehindLeafTag  its last event is a leaf that a run took, and not an element that somebody stands in
    NyXmlLeafRun(NyXmlFileReader* document, bool isBehindLeafTag);
    ~NyXmlLeafRun();
    NyXmlLeafRun(NyXmlLeafRun const&) = delete;
    NyXmlLeafRun& operator=(NyXmlLeafRun const&) = delete;

    /// \param name  as isPlainName() has it, without a namespace; outlives the reader
    /// \param text  not empty, without the white space at its bounds; valid until the reader moves
    bool takeText(NyToken const& name, std::string_view& text);

    /// An empty tag with just these attributes in this order, which is that of their names.
    template <std::size_t N>
    bool takeAttributes(NyToken const& name, std::array<NyToken const*, N> const& attributes, std::string_view (&values)[N])
    {
        return takeAttributes(name, attributes.data(), values, N);
    }

    /// The same for attributes that are counted when the program runs.
    bool takeAttributes(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t count);
    /// The same for values that are everyday reals, converted while their ends are looked for. False, and no leaf is taken, for all others.
    bool takeReal(NyToken const& name, double& value);
    template <std::size_t N>
    bool takeReals(NyToken const& name, std::array<NyToken const*, N> const& attributes, double (&values)[N])
    {
        return takeReals(name, attributes.data(), values, N);
    }

    /// To be called when the last leaf is taken.
    void end();

    /// In place of end(): the reader stays where it was before the first leaf. \return false
    bool forget() noexcept { return m_isAny = false; }

    /// Whether a tag of these bytes is an element of just this name, and no include.
    static bool isPlainName(std::string_view name) noexcept;

private:
    void begin(NyXmlFileReader* document, bool isBehindLeafTag);
    bool takeReals(NyToken const& name, NyToken const* const* attributes, double* values, std::size_t count);
    /// A text from \p start up to \p close, where there is nothing or the element's end tag.
    bool takeTextUpTo(char const* close, char const* start, NyToken const& token);
    /// An empty tag, each value taken by \p takeValue from its first byte and number: it gives the value's end, null to refuse all.
    template <class TakeValue>
    bool takeEmptyTag(NyToken const& name, NyToken const* const* attributes, std::size_t count, TakeValue takeValue);
    /// Behind `<name`, null if that does not come next.
    char const* behindTagName(std::string_view name) const noexcept;

    NyXmlFileReader* m_reader = nullptr; ///< null if nothing can be taken from its text
    NyXmlReader* m_front = nullptr;      ///< with m_shortcuts
    NyXmlShortcuts const* m_shortcuts = nullptr;
    char const* m_at = nullptr; ///< with a zero byte somewhere behind it
    char const* m_end = nullptr;

    // The last leaf.
    bool m_isAny = false;
    bool m_isBehindLeafTag = false; ///< in front of the first leaf
    bool m_isText = false;          ///< an empty tag if not
    NyToken const* m_name = nullptr;
    std::size_t m_attributeCount = 0;
    std::string_view m_text; ///< of the last text, empty if there was none
};

#endif
