// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_READER_DETAIL_NYXMLCONTENT_H
#define NYXML_READER_DETAIL_NYXMLCONTENT_H

#include <nyXml/core/detail/NyWhiteSpace.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

/// The text of an element, of which words are cut off. A part of NyXmlFileReader, of no use to others.
///
/// It is looked at where it stands in the reader's block, and becomes a string when somebody asks for one or the block is about to change
/// (own()). A word is cut off by moving the place where the rest begins, for a run of two million numbers is ordinary and moving the
/// rest for each of them is not.
class NyXmlContent {
public:
    NyXmlContent() = default;
    NyXmlContent(NyXmlContent const&) = delete;
    /// The copy owns its text.
    NyXmlContent& operator=(NyXmlContent const& other)
    {
        if (this != &other)
            assign(other.view());
        return *this;
    }

    std::string_view view() const noexcept
    {
        return m_isInBlock ? m_inBlock : std::string_view(m_string.data() + m_start, m_string.size() - m_start);
    }
    bool empty() const noexcept { return view().empty(); }

    /// The same as a string, which may be changed. Those who want it pay for what was cut off.
    std::string& string()
    {
        if (m_isInBlock)
            assign(m_inBlock);
        else if (m_start != 0)
            m_string.erase(0, std::exchange(m_start, 0));
        return m_string;
    }

    void clear() noexcept
    {
        m_inBlock = {};
        m_isInBlock = true;
    }

    /// \param text  stays where it is until own()
    void lookAt(std::string_view text) noexcept
    {
        m_inBlock = text;
        m_isInBlock = true;
    }

    /// A copy of the text, which is not our own.
    void assign(std::string_view text)
    {
        m_string.clear();
        m_string.append(text.data(), text.size()); // half the price of assign(), which reckons with the string's own text
        m_start = 0;
        m_isInBlock = false;
    }

    /// Takes the string's text, and leaves it another.
    void swap(std::string& text) noexcept
    {
        m_string.swap(text);
        m_start = 0;
        m_isInBlock = false;
    }

    /// Makes the text independent of the block.
    void own()
    {
        if (m_isInBlock)
            assign(m_inBlock);
    }

    /// Takes the white space off both ends of a text that is not all white. Long content is not moved for it.
    void trim()
    {
        std::string_view const trimmed = NyWhiteSpace::trimmed(view());
        if (m_isInBlock) {
            m_inBlock = trimmed;
            return;
        }
        m_start = static_cast<std::size_t>(trimmed.data() - m_string.data());
        m_string.resize(m_start + trimmed.size());
    }

    /// Hot: once for every number of a sequence. Nothing moves, so that the word is good until the content is asked for or replaced.
    std::string_view cutWord() noexcept
    {
        std::string_view const text = view();
        std::size_t const end = NyWhiteSpace::findWhite(text);
        cut(NyWhiteSpace::findBlack(text, end));
        return text.substr(0, end);
    }

    /// All of it, and none of it is content any more.
    std::string_view cutAll() noexcept
    {
        std::string_view const text = view();
        cut(text.size());
        return text;
    }

private:
    void cut(std::size_t size) noexcept
    {
        if (m_isInBlock)
            m_inBlock.remove_prefix(size);
        else
            m_start += size;
    }

    std::string_view m_inBlock;
    std::string m_string;    ///< if not in the block
    std::size_t m_start = 0; ///< where in m_string the content begins
    bool m_isInBlock = true;
};

#endif
