// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_READER_DETAIL_NYXMLELEMENTSTACK_H
#define NYXML_READER_DETAIL_NYXMLELEMENTSTACK_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/reader/detail/NyXmlNameTable.h>

#include <cassert>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The open elements of a document with the namespaces in scope. A part of NyXmlFileReader, of no use to others.
///
/// Records stay when elements close and serve the next element of the same depth, so that in the steady state nothing is allocated.
///
/// A prefix that is bound stays bound to its first text until the element that declared it closes. So there is only ever one binding
/// of a prefix, and one map with a list of who declared what does the work of a map in every record: an element that declares nothing
/// pays nothing.
class NYXML_EXPORT NyXmlElementStack {
public:
    bool empty() const noexcept { return m_depth == 0; }
    std::size_t size() const noexcept { return m_depth; }

    /// The innermost open element. There must be one.
    NyToken const& top() const noexcept
    {
        assert(m_depth != 0);
        return *m_top->m_name;
    }

    /// The names of the open elements, outermost first.
    std::vector<NyToken> names() const;

    /// The innermost element's name if an end tag of exactly its bytes closes it and it has declared nothing; null if that takes a closer
    /// look.
    NyXmlName const* bareName() const noexcept { return m_depth != 0 ? m_top->m_bareName : nullptr; }

    /// Opens an element that is as yet nameless: it goes by the name of the one around it.
    void push();

    /// Opens an element of this name, which outlives it. Hot: once for every element.
    void push(NyXmlName const& name)
    {
        Record& record = grow();
        record.m_name = &name.token;
        record.m_bareName = &name;
    }
    /// The same of a name that takes a closer look at the end tag.
    void push(NyToken const& name)
    {
        Record& record = grow();
        record.m_name = &name;
        record.m_bareName = nullptr;
    }
    /// The same with a copy.
    void pushCopy(std::string_view localName);

    /// Takes the name off the innermost element, as if it had been opened without.
    void unname();

    /// Names the innermost element.
    void name(NyToken const& token);

    void pop() noexcept
    {
        assert(m_depth != 0);
        if (m_top->m_declarations != 0)
            forgetDeclarations();
        --m_depth;
        m_top = m_top->m_outer;
    }

    /// The same of one that has a bareName().
    void popBare() noexcept
    {
        --m_depth;
        m_top = m_top->m_outer;
    }

    /// Whether the next push() of a name makes no new record.
    bool hasRecord() const noexcept { return inner() != nullptr; }

    /// The element that was popped last, as long as no other was opened since.
    NyToken const& popped() const noexcept { return *inner()->m_name; }

    /// The text that a prefix is bound to, null if it is free.
    std::string const* binding(std::string const& prefix) const;

    /// Binds a free prefix until the innermost element closes. One that is bound stays as it is.
    void bind(std::string const& prefix, std::string const& text);

    /// Closes all elements.
    void clear() noexcept
    {
        while (!empty())
            pop();
    }
    void swap(NyXmlElementStack& other) noexcept
    {
        m_records.swap(other.m_records);
        std::swap(m_depth, other.m_depth);
        std::swap(m_top, other.m_top);
        std::swap(m_outermost, other.m_outermost);
        m_theNamespaces.swap(other.m_theNamespaces);
        m_declared.swap(other.m_declared);
    }

    NyXmlElementStack() = default;
    NyXmlElementStack(NyXmlElementStack const& other) { *this = other; }
    NyXmlElementStack& operator=(NyXmlElementStack const& other);
    ~NyXmlElementStack() = default;

private:
    struct Record {
        Record* m_outer; ///< of the element around it
        Record* m_inner = nullptr;
        NyToken const* m_name = &m_theElement; ///< m_theElement, or what outlives it
        NyToken m_theElement;
        std::size_t m_declarations = 0; ///< how many at the end of m_declared are this element's
        NyXmlName const* m_bareName = nullptr;
    };

    /// Of the next element, null if none was ever so deep.
    Record* inner() const noexcept { return m_top != nullptr ? m_top->m_inner : m_outermost; }
    Record& grow()
    {
        Record* const next = inner();
        m_top = next != nullptr ? next : &newRecord();
        m_top->m_declarations = 0;
        ++m_depth;
        return *m_top;
    }
    Record& newRecord();
    void forgetDeclarations() noexcept;

    std::vector<std::unique_ptr<Record>> m_records; ///< names handed out stay where they are when it grows
    std::size_t m_depth = 0;
    Record* m_top = nullptr;
    Record* m_outermost = nullptr;
    std::map<std::string, std::string> m_theNamespaces;
    std::vector<std::string> m_declared; ///< the keys of m_theNamespaces in order of declaration
};

#endif
