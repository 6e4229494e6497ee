#include <nyXml/platform/NyIfHttpStream.h>
#include <nyXml/platform/detail/NyCurl.h>
#include <nyXml/platform/detail/NyGate.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <streambuf>
#include <string_view>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

struct EasyCleanup {
    void operator()(CURL* easy) const { NyCurl::find()->easy_cleanup(easy); }
};
struct MultiCleanup {
    void operator()(CURLM* multi) const { NyCurl::find()->multi_cleanup(multi); }
};
struct UrlCleanup {
    void operator()(CURLU* url) const { NyCurl::find()->url_cleanup(url); }
};

constexpr int mostRedirects = 10;

NyGate& gate()
{
    static NyGate& gate = *new NyGate; // never destroyed: documents are read while the process ends, too
    return gate;
}

// http://host/dir\sub/file.xml -> http://host/dir/sub/file.xml
std::string withSlashes(std::string address)
{
    auto const pathEnd = address.begin() + static_cast<std::ptrdiff_t>(std::min(address.find_first_of("?#"), address.size()));
    std::replace(address.begin(), pathEnd, '\\', '/');
    return address;
}

// Joins an address, or a path as a redirect gives it, to the address before: HTTP://host/public/../secret.xml -> http://host/secret.xml.
// In the form in which it is asked for, so that who decides by the text decides about the address. Empty for one that is none.
std::string fullAddress(NyCurl const& curl, std::string const& before, std::string const& address)
{
    std::unique_ptr<CURLU, UrlCleanup> const url(curl.url());
    for (std::string const& part : { before, address }) {
        if (!url || (!part.empty() &&
                     curl.url_set(url.get(), CURLUPART_URL, part.c_str(), CURLU_GUESS_SCHEME | CURLU_URLENCODE) != CURLUE_OK))
            return std::string();
    }
    char* text = nullptr;
    if (curl.url_get(url.get(), CURLUPART_URL, &text, 0) != CURLUE_OK)
        return std::string();
    std::unique_ptr<char, decltype(curl.free)> const owned(text, curl.free);
    return text;
}

std::string_view withoutBlanks(std::string_view text)
{
    std::size_t const begin = std::min(text.find_first_not_of(" \t\r\n"), text.size());
    return text.substr(begin, text.find_last_not_of(" \t\r\n") + 1 - begin);
}

} // namespace

/// The body of the answer. The transfer makes progress only inside open() and underflow(), on the thread that calls them.
class NyIfHttpStream::Body : public std::streambuf {
public:
    Body(NyIfHttpStream& owner, Limits const& limits) : m_Owner(owner), m_Limits(limits) {}
    ~Body() override
    {
        if (m_Added)
            m_Curl->multi_remove_handle(m_Multi.get(), m_Easy.get());
    }

    /// True once the answer has begun, false if there is none.
    bool open(std::string const& address)
    {
        if (!prepare() || !request(withSlashes(address)))
            return false;
        Clock::time_point const deadline = Clock::now() + m_Limits.answer;
        perform();
        while (!hasBegun()) {
            milliseconds const left = std::chrono::duration_cast<milliseconds>(deadline - Clock::now());
            if (left.count() <= 0) {
                end(CURLE_OPERATION_TIMEDOUT);
            } else {
                wait(left);
                perform();
            }
        }
        offerBuffer();
        return m_Answered || m_Size != 0 || m_Result == CURLE_OK;
    }

protected:
    int_type underflow() override
    {
        m_Size = 0;
        while (m_Size == 0 && !m_Over)
            fetch();
        offerBuffer();
        if (m_Size != 0)
            return traits_type::to_int_type(*gptr());
        if (m_Result != CURLE_OK)
            m_Owner.setstate(std::ios::badbit); // not thrown: who reads from this buffer directly does not expect it
        return traits_type::eof();
    }

private:
    bool prepare()
    {
        if (!m_Curl)
            return false;
        m_Easy.reset(m_Curl->easy_init());
        m_Multi.reset(m_Curl->multi_init());
        if (!m_Easy || !m_Multi)
            return false;

        bool done = true;
        auto const set = [this, &done](CURLoption option, auto value) {
            done = m_Curl->easy_setopt(m_Easy.get(), option, value) == CURLE_OK && done;
        };
        set(CURLOPT_USERAGENT, "nyXml");
#if LIBCURL_VERSION_NUM >= 0x075500
        set(CURLOPT_PROTOCOLS_STR, "http,https"); // for redirects too: a server must not point us at our own files
#else
        set(CURLOPT_PROTOCOLS, static_cast<long>(CURLPROTO_HTTP | CURLPROTO_HTTPS));
#endif
        set(CURLOPT_FAILONERROR, 1L);
        set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L); // a proxy's consent is not the answer
        set(CURLOPT_NOSIGNAL, 1L);
        set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(m_Limits.connect.count()));
#if LIBCURL_VERSION_NUM >= 0x075700
        set(CURLOPT_QUICK_EXIT, 1L); // giving up on a name server must not wait for it after all
#endif
        set(CURLOPT_WRITEFUNCTION, &Body::takeBytes);
        set(CURLOPT_WRITEDATA, this);
        set(CURLOPT_HEADERFUNCTION, &Body::takeHeaderLine);
        set(CURLOPT_HEADERDATA, this);
        return done;
    }

    bool request(std::string const& address)
    {
        m_Address = fullAddress(*m_Curl, m_Address, address);
        m_Added = !m_Address.empty() && gate().isOpenFor(m_Address) &&
                  m_Curl->easy_setopt(m_Easy.get(), CURLOPT_URL, m_Address.c_str()) == CURLE_OK &&
                  m_Curl->multi_add_handle(m_Multi.get(), m_Easy.get()) == CURLM_OK;
        return m_Added;
    }

    // What libcurl would do by itself, if it did not have to ask for each address.
    void follow()
    {
        m_Redirected = m_Added = false;
        m_Curl->multi_remove_handle(m_Multi.get(), m_Easy.get());
        std::string const location = std::exchange(m_Location, std::string());
        if (location.empty() || ++m_Redirects > mostRedirects || !request(location))
            end(CURLE_TOO_MANY_REDIRECTS);
    }

    // Called by libcurl with a part of the body. What does not fit stays with libcurl, which then stops reading from the server.
    static std::size_t takeBytes(char* bytes, std::size_t, std::size_t size, void* self)
    {
        Body& body = *static_cast<Body*>(self);
        if (body.m_Redirected)
            return size; // words for people
        if (size > body.m_Buffer.size() - body.m_Size) {
            body.m_Paused = true;
            return CURL_WRITEFUNC_PAUSE;
        }
        std::memcpy(body.m_Buffer.data() + body.m_Size, bytes, size);
        body.m_Size += size;
        body.m_ArrivedInWindow += size;
        return size;
    }

    // Called by libcurl with each line of a header. An empty line ends it: of the answer, unless it is a redirect or a prelude.
    static std::size_t takeHeaderLine(char* line, std::size_t, std::size_t size, void* self)
    {
        static constexpr std::string_view locationField = "Location:";
        Body& body = *static_cast<Body*>(self);
        std::string_view const text = withoutBlanks(std::string_view(line, size));
        if (text.empty())
            body.takeHeaderEnd();
        else if (size > locationField.size() && body.m_Location.empty() &&
                 body.m_Curl->strnequal(line, locationField.data(), locationField.size()))
            return body.takeLocation(withoutBlanks(text.substr(locationField.size()))) ? size : 0;
        return size;
    }

    void takeHeaderEnd()
    {
        long status = 0;
        m_Curl->easy_getinfo(m_Easy.get(), CURLINFO_RESPONSE_CODE, &status);
        m_Redirected = status >= 300 && status < 400;
        if (!m_Redirected)
            m_Location.clear(); // says where something was made
        m_Answered = m_Answered || (status >= 200 && status < 300);
    }

    // Nothing may be thrown through libcurl.
    bool takeLocation(std::string_view location) noexcept
    try {
        m_Location = location;
        return true;
    } catch (...) {
        return false;
    }

    void perform()
    {
        if (m_Paused) {
            m_Paused = false;
            m_Curl->easy_pause(m_Easy.get(), CURLPAUSE_CONT);
        }
        int running = 0;
        if (m_Curl->multi_perform(m_Multi.get(), &running) != CURLM_OK)
            end(CURLE_RECV_ERROR);
        if (m_Redirected)
            return follow();
        int left = 0;
        while (CURLMsg const* message = m_Curl->multi_info_read(m_Multi.get(), &left)) {
            if (message->msg == CURLMSG_DONE)
                end(message->data.result);
        }
    }

    void wait(milliseconds atMost)
    {
        int const timeout = static_cast<int>(std::clamp<milliseconds::rep>(atMost.count(), 1, 1000));
        if (m_Curl->multi_poll(m_Multi.get(), nullptr, 0, timeout, nullptr) != CURLM_OK)
            end(CURLE_RECV_ERROR);
    }

    // One step towards the next bytes. A window of waiting ends well with enough bytes, and badly with its time.
    void fetch()
    {
        perform();
        if (m_ArrivedInWindow >= m_Limits.leastBytes) {
            m_ArrivedInWindow = 0;
            m_WaitedInWindow = Clock::duration::zero();
        }
        if (m_Size != 0 || m_Over)
            return;
        if (m_WaitedInWindow >= m_Limits.stall)
            return end(CURLE_OPERATION_TIMEDOUT);
        Clock::time_point const before = Clock::now();
        wait(std::chrono::ceil<milliseconds>(m_Limits.stall - m_WaitedInWindow));
        m_WaitedInWindow += Clock::now() - before;
    }

    bool hasBegun() const { return m_Answered || m_Size != 0 || m_Over; }

    void end(CURLcode result)
    {
        m_Over = true;
        m_Result = result;
    }

    void offerBuffer() { setg(m_Buffer.data(), m_Buffer.data(), m_Buffer.data() + m_Size); }

    // libcurl hands over at most CURL_MAX_WRITE_SIZE bytes at a time, so an empty buffer always takes the next part.
    static constexpr std::size_t bufferSize = 65536;
    static_assert(bufferSize >= CURL_MAX_WRITE_SIZE, "a part of the body must fit into the empty buffer");

    NyCurl const* const m_Curl = NyCurl::find();
    NyIfHttpStream& m_Owner;
    Limits const m_Limits;
    std::unique_ptr<CURLM, MultiCleanup> m_Multi;
    std::unique_ptr<CURL, EasyCleanup> m_Easy; // behind the multi handle: goes first
    bool m_Added = false;
    bool m_Redirected = false; // the header of an answer is in, and it sends us to m_Location, or to nowhere
    int m_Redirects = 0;
    std::string m_Address; // asked for last, in full
    std::string m_Location;
    bool m_Answered = false; // the header of the final answer is in, and it is a success
    bool m_Paused = false;   // libcurl holds a part of the body that did not fit
    bool m_Over = false;     // nothing more will come; m_Result tells why
    CURLcode m_Result = CURLE_OK;
    std::size_t m_ArrivedInWindow = 0;
    Clock::duration m_WaitedInWindow = Clock::duration::zero();
    std::size_t m_Size = 0; // bytes in the buffer, from its start
    std::array<char, bufferSize> m_Buffer;
};

NyIfHttpStream::NyIfHttpStream(std::string const& address, int mode) : NyIfHttpStream(address, mode, Limits()) {}

NyIfHttpStream::NyIfHttpStream(std::string const& address, int, Limits const& limits)
    : std::istream(nullptr),
      m_Body(std::make_unique<Body>(*this, limits))
{
    rdbuf(m_Body.get());
    if (!m_Body->open(address))
        setstate(std::ios::failbit);
}

NyIfHttpStream::Gate NyIfHttpStream::setGate(Gate newGate) { return gate().replace(std::move(newGate)); }

NyIfHttpStream::~NyIfHttpStream() = default;
