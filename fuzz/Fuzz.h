#ifndef FUZZ_FUZZ_H
#define FUZZ_FUZZ_H

#include <nyXml/platform/NyPrint.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// Ends the run as a crash, with what went wrong.
[[noreturn]] inline void fault(std::string const& what)
{
    std::fputs((what + '\n').c_str(), stderr);
    std::abort();
}

/// Collects what the library prints for as long as it lives.
class Said {
public:
    Said()
    {
        Ny::Print::setHandler([this](int type, std::string const&, std::string const& text) {
            if (m_text.size() < 65536) // an include with an attribute too many is complained of for long
                m_text += std::to_string(type) + ": " + text;
        });
    }
    ~Said() { Ny::Print::setHandler({}); }
    Said(Said const&) = delete;
    Said& operator=(Said const&) = delete;

    std::string const& text() const { return m_text; }

private:
    std::string m_text;
};

/// The first bytes of an input as choices, the rest as a document.
class Input {
public:
    Input(std::uint8_t const* data, std::size_t size) : m_seed(2166136261u)
    {
        std::size_t const head = size < 4 ? size : 4;
        for (std::size_t i = 0; i < head; ++i)
            m_seed = (m_seed ^ data[i]) * 16777619u;
        m_document.assign(reinterpret_cast<char const*>(data) + head, size - head);
    }
    std::string const& document() const { return m_document; }

    /// A number below \p bound, the same for the same input.
    unsigned int below(unsigned int bound)
    {
        m_seed = m_seed * 1664525u + 1013904223u;
        return (m_seed >> 8) % bound;
    }

private:
    std::uint32_t m_seed;
    std::string m_document;
};

#endif
