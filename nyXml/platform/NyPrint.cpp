#include <nyXml/platform/NyPrint.h>

#include <cstdarg>
#include <cstdio>
#include <deque>
#include <locale.h>
#include <ostream>
#include <streambuf>
#include <string_view>
#include <utility>

namespace Ny {

/// Hears what its thread reports, while its scope lives.
struct PrintListener {
    Print::Handler handler;
    PrintListener* outer; ///< who heard before, and hears what this one's handler reports
};

namespace {

void writeToStandardError(int, std::string const&, std::string const& text) { std::fwrite(text.data(), 1, text.size(), stderr); }

using SharedHandler = std::shared_ptr<Print::Handler const>;

// Never destroyed: static objects report in their destructors too. Changed and read by std::atomic_store and atomic_load alone, so
// that a handler that is replaced while it runs lives to its end.
SharedHandler& processHandler()
{
    static SharedHandler& handler = *new SharedHandler(std::make_shared<Print::Handler const>(writeToStandardError));
    return handler;
}

/// Who hears this thread next. A handler that runs is taken out, so that what it reports itself reaches the one outside it.
struct Hearing {
    PrintListener* innermost;     ///< null when no scope lives, or all of them are busy
    bool isProcessHandlerRunning; ///< standard error is left
    std::size_t depth;            ///< how many handlers run
};
thread_local Hearing hearing{ nullptr, false, 0 };

/// Puts everything back when a handler is through, thrown or not.
class HandlerRuns {
public:
    HandlerRuns() noexcept : m_Before(hearing) { ++hearing.depth; }
    ~HandlerRuns() { hearing = m_Before; }
    HandlerRuns(HandlerRuns const&) = delete;
    HandlerRuns& operator=(HandlerRuns const&) = delete;

private:
    Hearing const m_Before;
};

void report(int printType, std::string const& location, std::string_view text)
{
    if (text.empty())
        return;
    std::string const piece(text);
    HandlerRuns const runs;
    if (PrintListener* const listener = hearing.innermost) {
        hearing.innermost = listener->outer;
        listener->handler(printType, location, piece);
    } else if (!hearing.isProcessHandlerRunning) {
        hearing.isProcessHandlerRunning = true;
        SharedHandler const handler = std::atomic_load(&processHandler());
        (*handler)(printType, location, piece);
    } else {
        writeToStandardError(printType, location, piece);
    }
}

/// Passes on what is inserted, at once and in the pieces in which it comes.
class PieceBuffer : public std::streambuf {
public:
    void begin(int printType, std::string const& location)
    {
        m_PrintType = printType;
        m_Location = location;
    }

protected:
    std::streamsize xsputn(char const* text, std::streamsize size) override
    {
        report(m_PrintType, m_Location, std::string_view(text, static_cast<std::size_t>(size)));
        return size;
    }
    int_type overflow(int_type c) override
    {
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            char const byte = traits_type::to_char_type(c);
            report(m_PrintType, m_Location, std::string_view(&byte, 1));
        }
        return traits_type::not_eof(c);
    }

private:
    int m_PrintType = 0;
    std::string m_Location;
};

class MessageStream : public std::ostream {
public:
    MessageStream() : std::ostream(nullptr), m_Pristine(&m_Buffer)
    {
        rdbuf(&m_Buffer);
        m_Pristine.imbue(std::locale::classic());
        m_Pristine.exceptions(std::ios::badbit); // inserters catch what the buffer throws; this makes them throw it again
    }
    void begin(int printType, std::string const& location)
    {
        clear();
        copyfmt(m_Pristine); // the last reporter's manipulators, and its width if it forgot to use it up
        m_Buffer.begin(printType, location);
    }

private:
    PieceBuffer m_Buffer;
    std::ios m_Pristine;
};

/// One stream for each message that a thread has open: a handler that reports does so in the middle of somebody's statement.
class MessageStreams {
public:
    MessageStream& at(std::size_t depth)
    {
        while (m_Streams.size() <= depth)
            m_Streams.emplace_back();
        return m_Streams[depth];
    }

private:
    std::deque<MessageStream> m_Streams;
};

// A thread's streams end with the thread, but destructors that run still later report as well: those of static objects on the main
// thread come after its thread-local ones. They share streams that are never destroyed; `ended` has no destructor and stays readable.
MessageStreams& streamsOfThisThread()
{
    thread_local bool ended = false;
    thread_local MessageStreams* late = nullptr;
    struct Owner {
        MessageStreams streams;
        ~Owner() { ended = true; }
    };
    thread_local Owner owner;
    if (!ended)
        return owner.streams;
    if (!late)
        late = new MessageStreams;
    return *late;
}

/// Numbers as in the "C" locale for as long as it lives, on this thread alone.
class ClassicNumbers {
public:
    ClassicNumbers() : m_Previous(uselocale(classic())) {}
    ~ClassicNumbers() { uselocale(m_Previous); }
    ClassicNumbers(ClassicNumbers const&) = delete;
    ClassicNumbers& operator=(ClassicNumbers const&) = delete;

private:
    static locale_t classic()
    {
        static locale_t const locale = newlocale(LC_ALL_MASK, "C", nullptr); // null leaves the locale as it is
        return locale;
    }
    locale_t m_Previous;
};

} // namespace

void Print::write(int printType, char const* format, ...)
{
    std::string text(512, '\0'); // most messages fit; a longer one tells its size and is formatted again
    int size = 0;
    {
        ClassicNumbers const numbers;
        va_list arguments;
        va_start(arguments, format);
        va_list again;
        va_copy(again, arguments);
        size = std::vsnprintf(text.data(), text.size() + 1, format, arguments);
        va_end(arguments);
        if (size > static_cast<int>(text.size())) {
            text.resize(static_cast<std::size_t>(size));
            size = std::vsnprintf(text.data(), text.size() + 1, format, again);
        }
        va_end(again);
    }
    if (size < 0)
        text = format; // a wide text that has no bytes: better the bare sentence than none
    else
        text.resize(static_cast<std::size_t>(size));
    report(printType, std::string(), text);
}

std::ostream& Print::ostream(int printType, std::string const& location)
{
    MessageStream& stream = streamsOfThisThread().at(hearing.depth);
    stream.begin(printType, location);
    return stream;
}

void Print::setHandler(Handler handler)
{
    std::atomic_store(&processHandler(), std::make_shared<Handler const>(handler ? std::move(handler) : writeToStandardError));
}

Print::ThreadScope::ThreadScope(Handler handler)
    : m_Listener(new PrintListener{ handler ? std::move(handler) : writeToStandardError, hearing.innermost })
{
    hearing.innermost = m_Listener.get();
}

Print::ThreadScope::~ThreadScope()
{
    PrintListener** link = &hearing.innermost;
    while (*link && *link != m_Listener.get()) // a scope made later may still live
        link = &(*link)->outer;
    if (*link)
        *link = m_Listener->outer;
}

} // namespace Ny
