#ifndef NYXML_CORE_NYTOKEN_H
#define NYXML_CORE_NYTOKEN_H

#include <nyXml/core/detail/NyShortText.h>
#include <nyXml/platform/NyXmlExport.h>

#include <string>

/// The name of an element, an attribute or a class: a local name with an optional namespace.
///
/// Two things to know before anything else:
///  - Equality of two tokens looks at both fields, order at the local name alone. Two tokens that differ only in their namespace are
///    therefore different, and still one and the same key of every map in the library.
///  - What looks like a string operation works on the local name and leaves the namespace alone.
///
/// The joined form is `namespace#name`. The `#` is never stored; it is searched for by the constructor and the assignment from one text,
/// and nowhere else. Both fields are plain bytes.
///
/// Positions, lengths and counts are `unsigned int`. All ones stands for "none" and "to the end", as npos does for strings.
class NYXML_EXPORT NyToken {
public:
    NyToken() = default;
    NyToken(NyToken const&) = default;
    NyToken(NyToken&&) noexcept = default;

    /// Namespace first. Both are stored as they are, a `#` in them included.
    NyToken(std::string const& xmlNamespace, std::string const& token) : m_theToken(token), m_theNamespace(xmlNamespace) {}

    /// Splits the text at its first `#`, see operator=(std::string const&). Implicit: a text names a token wherever one is asked for.
    NyToken(std::string const& text) { *this = text; }

    /// The same for a literal. The pointer must not be null.
    NyToken(char const* text) { *this = std::string(text); }

    virtual ~NyToken() = default;

    /// \return a copy of the namespace, without `#`; empty if there is none
    virtual std::string xmlNamespace() const;
    /// \return a copy of the local name
    virtual std::string token() const;
    /// \return namespace, `#`, local name. The `#` is there without a namespace, too: `#name`.
    virtual std::string namespaceAndToken() const;
    /// Takes white space off both ends of the local name. A name of nothing but white space stays as it is.
    virtual void strip();

    NyToken& operator=(NyToken const&) = default;
    NyToken& operator=(NyToken&&) noexcept = default;

    /// Splits the text at its first `#`: what is in front becomes the namespace, what is behind the local name, either may be empty.
    /// Without a `#` all of it is the local name and the namespace becomes empty. Reads back what namespaceAndToken() gives, unless
    /// the namespace itself holds a `#`.
    NyToken& operator=(std::string const& text);

    /// The same for a literal. A null pointer counts as empty, so that `token = {}` gives an empty token.
    NyToken& operator=(char const* text) { return *this = std::string(text != nullptr ? text : ""); }

    /// Replaces the local name by the text as it is: no `#` is searched for, the namespace stays.
    std::string& assign(std::string const& text) { return m_theToken.assign(text); }

    /// The local name and the namespace without a copy. Valid until the token changes.
    std::string const& localName() const noexcept { return m_theToken; }
    std::string const& namespaceName() const noexcept { return m_theNamespace; }

    /// The local name, not the joined form: a token serves wherever a string is asked for.
    operator std::string const&() const noexcept { return m_theToken; }
    char const* c_str() const noexcept { return m_theToken.c_str(); }

    /// Local names and namespaces, byte for byte.
    bool operator==(NyToken const& other) const noexcept
    {
        return NyShortText::same(m_theToken, other.m_theToken) && NyShortText::same(m_theNamespace, other.m_theNamespace);
    }
    bool operator!=(NyToken const& other) const noexcept { return !(*this == other); }

    /// The local name against the whole text: a `#` in the text has no meaning here and the namespace is not looked at. There is no
    /// such form of `!=`: that one makes a token of the text first and compares both fields.
    bool operator==(std::string const& text) const noexcept { return m_theToken == text; }
    bool operator==(char const* text) const { return m_theToken == text; }

    /// The local names alone.
    bool operator<(NyToken const& other) const noexcept { return m_theToken < other.m_theToken; }

    // From here on: std::string's operations on the local name. A position behind its end throws std::out_of_range, a text that would
    // become too long std::length_error.

    std::string& append(std::string const& text) { return m_theToken.append(text); }
    std::string& append(std::string const& text, unsigned int position, unsigned int count);
    std::string& append(char const* text, unsigned int count);
    NyToken& operator+=(std::string const& text)
    {
        m_theToken += text;
        return *this;
    }

    std::string& erase(unsigned int position = 0, unsigned int count = m_theNone);
    void clear() noexcept { m_theToken.clear(); }
    /// Fills with zero bytes if it grows.
    void resize(unsigned int size);
    void swap(std::string& text) noexcept { m_theToken.swap(text); }

    unsigned int size() const noexcept { return static_cast<unsigned int>(m_theToken.size()); }
    unsigned int length() const noexcept { return size(); }
    /// True for an empty local name, whatever the namespace.
    bool empty() const noexcept { return m_theToken.empty(); }

    /// \return where the first match begins, at \p position or behind it; all ones if there is none
    unsigned int find(std::string const& text, unsigned int position = 0) const noexcept;
    unsigned int find(char character, unsigned int position = 0) const noexcept;
    unsigned int find(char const* text, unsigned int position = 0) const;
    unsigned int find(char const* text, unsigned int position, unsigned int count) const;

    std::string substr(unsigned int position = 0, unsigned int count = m_theNone) const;

    /// Copies at most \p count characters from \p position on, without a terminator. \return how many
    unsigned int copy(char* target, unsigned int count, unsigned int position = 0) const;

private:
    static constexpr unsigned int m_theNone = ~0u;

    std::string m_theToken;
    std::string m_theNamespace;
};

inline bool operator==(std::string const& text, NyToken const& token) noexcept { return token == text; }

/// A copy of the token with the text behind its local name. The namespace stays, which is how namespaced tokens are made:
/// `NyToken("http://example.com/robots#") + "arm"`.
inline NyToken operator+(NyToken const& token, std::string const& text)
{
    NyToken result(token);
    result += text;
    return result;
}
inline NyToken operator+(NyToken const& token, char const* text) { return token + std::string(text); }

#endif
