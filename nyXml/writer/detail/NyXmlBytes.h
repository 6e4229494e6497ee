// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_WRITER_DETAIL_NYXMLBYTES_H
#define NYXML_WRITER_DETAIL_NYXMLBYTES_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

/// Bytes that are put together. Room is made once for all that a call appends, so that what is appended costs no further look, and a
/// call that finds no memory has changed nothing. Part of NyXmlWriter.
///
/// \code
///     char* at = bytes.room(name.size() + 1);
///     at = NyXmlBytes::put(at, name);
///     *at++ = '=';
///     bytes.endAt(at);
/// \endcode
class NyXmlBytes {
public:
    NyXmlBytes() = default;
    NyXmlBytes(NyXmlBytes const& other) { append(other.view()); }
    NyXmlBytes(NyXmlBytes&& other) noexcept { swap(other); }
    NyXmlBytes& operator=(NyXmlBytes other) noexcept
    {
        swap(other);
        return *this;
    }

    std::size_t size() const noexcept { return static_cast<std::size_t>(m_End - m_Memory.get()); }
    bool empty() const noexcept { return m_End == m_Memory.get(); }
    std::string_view view() const noexcept { return { m_Memory.get(), size() }; }

    /// Behind the last byte, where so many may be put.
    [[gnu::always_inline]] char* room(std::size_t count)
    {
        if (static_cast<std::size_t>(m_Limit - m_End) < count)
            grow(count);
        return m_End;
    }
    void endAt(char* end) noexcept { m_End = end; }
    void append(std::string_view bytes) { m_End = put(room(bytes.size()), bytes); }
    // Both keep the memory.
    void truncate(std::size_t size) noexcept { m_End = m_Memory.get() + size; }
    void clear() noexcept { m_End = m_Memory.get(); }

    void swap(NyXmlBytes& other) noexcept
    {
        m_Memory.swap(other.m_Memory);
        std::swap(m_End, other.m_End);
        std::swap(m_Limit, other.m_Limit);
    }

    /// Copies into room that is there. \return where the next byte goes
    [[gnu::always_inline]] static char* put(char* target, std::string_view bytes) noexcept
    {
        // Hot: names and texts are short, and a call takes longer than copying them does. Two words that overlap make up for all sizes
        // from one word to two.
        std::size_t const size = bytes.size();
        char const* const source = bytes.data();
        if (size > 2 * sizeof(std::uint64_t)) {
            std::memcpy(target, source, size);
        } else if (size >= sizeof(std::uint64_t)) {
            copyWords<std::uint64_t>(target, source, size);
        } else if (size >= sizeof(std::uint32_t)) {
            copyWords<std::uint32_t>(target, source, size);
        } else {
            for (std::size_t i = 0; i != size; ++i)
                target[i] = source[i];
        }
        return target + size;
    }

private:
    template <class Word>
    static void copyWords(char* target, char const* source, std::size_t size) noexcept
    {
        Word first;
        Word last;
        std::memcpy(&first, source, sizeof first);
        std::memcpy(&last, source + size - sizeof last, sizeof last);
        std::memcpy(target, &first, sizeof first);
        std::memcpy(target + size - sizeof last, &last, sizeof last);
    }

    void grow(std::size_t count)
    {
        constexpr std::size_t least = 512;
        std::size_t const held = size();
        std::size_t const capacity = std::max({ held + count, 2 * static_cast<std::size_t>(m_Limit - m_Memory.get()), least });
        std::unique_ptr<char[]> memory(new char[capacity]); // make_unique would write zeros into all of it
        if (held != 0)
            std::memcpy(memory.get(), m_Memory.get(), held);
        m_Memory = std::move(memory);
        m_End = m_Memory.get() + held;
        m_Limit = m_Memory.get() + capacity;
    }

    std::unique_ptr<char[]> m_Memory;
    char* m_End = nullptr;
    char* m_Limit = nullptr;
};

#endif
