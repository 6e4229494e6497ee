#include <nyXml/core/NyToken.h>

#include <nyXml/core/detail/NyWhiteSpace.h>

#include <stdexcept>
#include <string_view>
#include <utility>

namespace {

constexpr unsigned int none = ~0u;

/// All ones asks for everything, as npos does. The two differ in width.
constexpr std::size_t wideCount(unsigned int count) { return count == none ? std::string::npos : count; }

/// A hit lies inside a name, so that only npos has to be looked at.
constexpr unsigned int narrowPosition(std::size_t position)
{
    return position == std::string::npos ? none : static_cast<unsigned int>(position);
}

// The standard leaves the texts of its exceptions open. Callers log them, so they are ours, one for all machines.

void checkPosition(std::string const& text, unsigned int position)
{
    if (position > text.size())
        throw std::out_of_range("invalid string position");
}

void checkSize(std::size_t size)
{
    if (size >= none)
        throw std::length_error("string too long");
}

} // namespace

std::string NyToken::xmlNamespace() const { return m_theNamespace; }

std::string NyToken::token() const { return m_theToken; }

std::string NyToken::namespaceAndToken() const { return m_theNamespace + '#' + m_theToken; }

void NyToken::strip()
{
    std::string_view const stripped = NyWhiteSpace::trimmed(m_theToken);
    if (stripped.empty())
        return;
    std::size_t const begin = static_cast<std::size_t>(stripped.data() - m_theToken.data());
    m_theToken.erase(begin + stripped.size());
    m_theToken.erase(0, begin);
}

NyToken& NyToken::operator=(std::string const& text)
{
    std::size_t const separator = text.find('#');
    if (separator == std::string::npos) {
        m_theToken = text;
        m_theNamespace.clear();
    } else {
        // The text may be a field of this token: it is read to its end before anything is overwritten.
        std::string name = text.substr(separator + 1);
        m_theNamespace.assign(text, 0, separator);
        m_theToken = std::move(name);
    }
    return *this;
}

std::string& NyToken::append(std::string const& text, unsigned int position, unsigned int count)
{
    checkPosition(text, position);
    return m_theToken.append(text, position, wideCount(count));
}

std::string& NyToken::append(char const* text, unsigned int count)
{
    checkSize(m_theToken.size() + std::size_t{ count });
    return m_theToken.append(text, count);
}

std::string& NyToken::erase(unsigned int position, unsigned int count)
{
    checkPosition(m_theToken, position);
    return m_theToken.erase(position, wideCount(count));
}

void NyToken::resize(unsigned int size)
{
    checkSize(size);
    m_theToken.resize(size);
}

unsigned int NyToken::find(std::string const& text, unsigned int position) const noexcept
{
    return narrowPosition(m_theToken.find(text, position));
}

unsigned int NyToken::find(char character, unsigned int position) const noexcept
{
    return narrowPosition(m_theToken.find(character, position));
}

unsigned int NyToken::find(char const* text, unsigned int position) const
{
    return narrowPosition(m_theToken.find(text, position));
}

unsigned int NyToken::find(char const* text, unsigned int position, unsigned int count) const
{
    return narrowPosition(m_theToken.find(text, position, wideCount(count)));
}

std::string NyToken::substr(unsigned int position, unsigned int count) const
{
    checkPosition(m_theToken, position);
    return m_theToken.substr(position, wideCount(count));
}

unsigned int NyToken::copy(char* target, unsigned int count, unsigned int position) const
{
    checkPosition(m_theToken, position);
    return static_cast<unsigned int>(m_theToken.copy(target, wideCount(count), position));
}
