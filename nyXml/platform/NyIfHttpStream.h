#ifndef NYXML_PLATFORM_NYIFHTTPSTREAM_H
#define NYXML_PLATFORM_NYIFHTTPSTREAM_H

#include <nyXml/platform/NyXmlExport.h>

#include <chrono>
#include <cstddef>
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
/// Nothing throws or prints. A stream that is good() after construction has an answer, which may be empty. After any failure (no
/// such host, no connection, a status of 400 or more, an address of another kind, no answer in time) it is fail(). A body that
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
