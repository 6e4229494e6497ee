// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_WRITER_DETAIL_NYXMLTOGETHER_H
#define NYXML_WRITER_DETAIL_NYXMLTOGETHER_H

#include <nyXml/writer/NyXmlWriter.h>

#include <utility>

/// Keeps the bytes of the library's own calls together, so that an object of many calls costs the stream one.
///
/// Callers of the writer find the bytes of a call with the stream when it returns, and the library's own calls have the library for
/// their caller. So a value's write() opens one of these, makes its calls and says end(); the outermost one sends. Before any code of the
/// application runs in the middle, NyXmlApart sends what there is. Long documents are sent on the way; a writer with overrides, whose
/// operations are code of the application, or with a schema to mirror does as without.
///
/// \code
///     NyXmlTogether together(writer);
///     writer.writeStartTag(token);
///     {
///         NyXmlApart const apart(writer, !NyXmlOwnValues::has(member));
///         member.write(writer);
///     }
///     writer.writeEndTag();
///     together.end();
/// \endcode
class NyXmlTogether {
public:
    explicit NyXmlTogether(NyXmlWriter& writer) noexcept : m_writer(writer), m_keeps(writer.isPlain() && !writer.m_WriteSchema)
    {
        m_writer.m_Together += m_keeps ? 1 : 0;
    }

    /// Without end(), which is to say for an exception: what was written before it is with the stream.
    ~NyXmlTogether()
    {
        if (!m_keeps || leave() != 0)
            return;
        try {
            m_writer.sendBytes();
        } catch (...) {
            // The stream's own exception. The one on its way came first.
        }
    }
    NyXmlTogether(NyXmlTogether const&) = delete;
    NyXmlTogether& operator=(NyXmlTogether const&) = delete;

    /// Throws what the stream throws.
    void end()
    {
        if (m_keeps && leave() == 0)
            m_writer.sendBytes();
    }

    /// Nothing but data of the library's own comes until the end tag of the open element, so that they need not be held until then.
    void beginRun() noexcept { m_writer.m_IsRun = m_keeps; }

private:
    unsigned int leave() noexcept
    {
        m_keeps = false;
        m_writer.m_IsRun = false;
        return --m_writer.m_Together;
    }

    NyXmlWriter& m_writer;
    bool m_keeps;
};

/// Lets code of the application run amid calls that are kept together: it finds their bytes with the stream, and so it is after each of
/// its own calls.
class NyXmlApart {
public:
    explicit NyXmlApart(NyXmlWriter& writer, bool isNeeded = true) : m_writer(writer)
    {
        if (!isNeeded || writer.m_Together == 0)
            return;
        writer.sendBytes();
        m_together = std::exchange(writer.m_Together, 0);
    }
    ~NyXmlApart()
    {
        if (m_together != 0)
            m_writer.m_Together = m_together;
    }
    NyXmlApart(NyXmlApart const&) = delete;
    NyXmlApart& operator=(NyXmlApart const&) = delete;

private:
    NyXmlWriter& m_writer;
    unsigned int m_together = 0;
};

#endif
