#ifndef NYXML_PLATFORM_NYPRINT_H
#define NYXML_PLATFORM_NYPRINT_H

#include <nyXml/platform/NyXmlExport.h>

#include <functional>
#include <iosfwd>
#include <memory>
#include <string>

namespace Ny {

struct PrintListener;

/// Where every complaint of the library goes.
///
/// Any thread may report, also before main() and while the process ends. The bytes of a message depend on no locale. Without a
/// handler the text goes to standard error as it stands.
class NYXML_EXPORT Print {
public:
    enum PrintType {
        NOTICE = 3, ///< told for the record; the work went on as asked
        FAULT = 4,  ///< errors and warnings
    };

    /// Receives a piece of a message: the pieces of one message put together, in the order in which they come, are its exact bytes.
    ///
    /// \param printType  as reported; not only the values of PrintType
    /// \param location   signature of the reporting operation; empty for write(). Never part of the text
    /// \param text       not empty, and ends where the piece ends: a line feed comes only if the reporter wrote one
    ///
    /// Runs on the reporting thread, on several at once if several report. A handler may
    /// - report: what it reports goes to the handler outside it, so it can pass a message on and never calls itself. Outside a
    ///   ThreadScope is the one that it was made in, then the handler of the process, then standard error.
    /// - set another handler, which hears from the next piece on.
    /// - throw: it comes out of write() or of the insertion, and so of whatever operation of the library had something to report,
    ///   reading included; only destructors keep it to themselves. The rest of that message is lost, the next one is whole. A
    ///   document can be left this way, but the objects that were being read or written are then left in the middle.
    ///
    /// The same goes for std::bad_alloc when there is no memory left for a message.
    using Handler = std::function<void(int printType, std::string const& location, std::string const& text)>;

    /// Sends what one thread reports to a handler of its own: everything on the thread that made it, for as long as it lives.
    ///
    /// Scopes nest: the innermost alone hears, and neither those outside it nor the handler of the process do. Other threads are not
    /// touched, nor are those that this one starts. Make it a local variable; it ends on its own thread, and not in its own
    /// handler.
    /// \code
    ///     std::string complaints;
    ///     {
    ///         Ny::Print::ThreadScope scope([&](int, std::string const&, std::string const& text) { complaints += text; });
    ///         object.read(reader);
    ///     }
    /// \endcode
    class NYXML_EXPORT ThreadScope {
    public:
        /// \param handler  an empty one sends to standard error
        explicit ThreadScope(Handler handler);
        ~ThreadScope();
        ThreadScope(ThreadScope const&) = delete;
        ThreadScope& operator=(ThreadScope const&) = delete;

    private:
        std::unique_ptr<PrintListener> m_Listener;
    };

    /// Reports a text in printf's format, of any length, in one piece. Numbers have the form of the "C" locale.
    static void write(int printType, char const* format, ...) __attribute__((format(printf, 2, 3)));

    /// Begins a message that is put together by insertion, usually in one statement.
    ///
    /// Nothing is held back: each insertion has reached the handler when it returns.
    /// \param location  signature of the reporting operation; copied
    /// \return a stream of the calling thread, in the classic locale and with default formatting, whatever the last message
    ///         left in it. It belongs to this message until the same thread's next call. It throws what the handler throws
    ///         (std::ios::badbit is in its exceptions()).
    static std::ostream& ostream(int printType, std::string const& location);

    /// Sends all messages to \p handler, except those of threads with a ThreadScope; an empty one restores the default.
    ///
    /// May be called at any time. A message that another thread reports meanwhile goes to the old handler or to the new one, and
    /// the old one may still be running when this returns: what a handler refers to is safe to destroy only if no other thread
    /// reports.
    static void setHandler(Handler handler);
};

} // namespace Ny

#endif
