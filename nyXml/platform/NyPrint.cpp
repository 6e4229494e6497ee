#include <nyXml/platform/NyPrint.h>

#include <cstdarg>
#include <cstdio>
#include <locale.h>
#include <ostream>
#include <streambuf>
#include <string_view>
#include <utility>

namespace Ny {
namespace {

void writeToStandardError(int, std::string const&, std::string const& text) { std::fwrite(text.data(), 1, text.size(), stderr); }

// Never destroyed: static objects report in their destructors too.
Print::Handler& currentHandler()
{
    static Print::Handler& handler = *new Print::Handler(writeToStandardError);
    return handler;
}

void report(int printType, std::string const& location, std::string_view text)
{
    if (!text.empty())
        currentHandler()(printType, location, std::string(text));
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
    MessageStream() : std::ostream(nullptr), m_Pristine(nullptr)
    {
        rdbuf(&m_Buffer);
        m_Pristine.imbue(std::locale::classic());
    }
    void begin(int printType, std::string const& location)
    {
        copyfmt(m_Pristine); // the last reporter's manipulators, and its width if it forgot to use it up
        clear();
        m_Buffer.begin(printType, location);
    }

private:
    PieceBuffer m_Buffer;
    std::ios m_Pristine;
};

// A thread's stream ends with the thread, but destructors that run still later report as well: those of static objects on the main
// thread come after its thread-local ones. They share a stream that is never destroyed; `ended` has no destructor and stays readable.
MessageStream& streamOfThisThread()
{
    thread_local bool ended = false;
    thread_local MessageStream* late = nullptr;
    struct Owner {
        MessageStream stream;
        ~Owner() { ended = true; }
    };
    thread_local Owner owner;
    if (!ended)
        return owner.stream;
    if (!late)
        late = new MessageStream;
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
    MessageStream& stream = streamOfThisThread();
    stream.begin(printType, location);
    return stream;
}

void Print::setHandler(Handler handler) { currentHandler() = handler ? std::move(handler) : writeToStandardError; }

} // namespace Ny
