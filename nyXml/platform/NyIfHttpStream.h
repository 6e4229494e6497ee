#ifndef NYXML_PLATFORM_NYIFHTTPSTREAM_H
#define NYXML_PLATFORM_NYIFHTTPSTREAM_H

#include <nyXml/platform/NyXmlExport.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <istream>
#include <memory>
#include <string>

/// Reads a document over HTTP or HTTPS as it arrives.
///
/// The constructor returns when the server's answer has begun or is known not to come; the body is then fetched piece by piece by
/// the reads, on the reading thread, and what nobody has read yet takes up a bounded buffer. Redirects are followed as long as they
/// lead to http or https. The proxies of the environment (http_proxy, https_proxy, all_proxy, no_proxy) are used as libcurl uses
/// them.
///
/// libcurl is looked for when the first address of the process is opened. Where it is not installed, or where the library was built
/// without HTTP (NYXML_HTTP=OFF), every address ends as if its server were not there.
///
/// Nothing throws or prints. A stream that is good() after construction has an answer, which may be empty. After any failure (no
/// such host, no connection, a status of 400 or more, a redirect that leads nowhere, an address of another kind or one that the gate
/// refuses, no answer in time) it is fail(). A body that
/// breaks off, or that a server stops sending, ends early, with the bad bit set.
class NYXML_EXPORT NyIfHttpStream : public std::istream {
public:
    /// How long a server may keep us waiting. Only waiting counts: a reader may take its time between two reads.
    struct Limits {
        std::chrono::milliseconds connect{ 10000 }; ///< for one connection, the look-up of the host included
        std::chrono::milliseconds answer{ 30000 };  ///< for the answer to begin, all redirects and connections together
        std::chrono::milliseconds stall{ 30000 };   ///< for the next leastBytes of the body
        std::size_t leastBytes = 64;                ///< a server that sends less in that time counts as dead
    };

    /// Says whether an address may be opened. It is given in full and without detours: "http://host/secret.xml" for the text
    /// "HTTP://host/public/../secret.xml".
    using Gate = std::function<bool(std::string const& address)>;

    /// Has every address asked for before anything is sent, each new one of a redirect too. A refused one ends like one that is not
    /// there. An empty gate, as at the start, lets everything through.
    ///
    /// The gate is asked by the constructor, on the constructing thread, on several at once if several construct, and what it
    /// throws comes out of the constructor. It may be set at any time; the one before may still be asked by another thread when
    /// this returns.
    /// \return the gate before, for who wants to ask that one too
    static Gate setGate(Gate gate);

    /// \param address  "http://..." or "https://..."; a backslash in its path counts as a slash, because relative links join
    ///                 directories with one
    /// \param mode     1, to read; there is no other
    NyIfHttpStream(std::string const& address, int mode);

    /// The same with limits of the caller's.
    NyIfHttpStream(std::string const& address, int mode, Limits const& limits);

    /// Drops the connection, read to the end or not.
    ~NyIfHttpStream() override;

private:
    class Body;
    std::unique_ptr<Body> m_Body;
};

#endif
