#ifndef NYXML_PLATFORM_NYPRINT_H
#define NYXML_PLATFORM_NYPRINT_H

#include <nyXml/platform/NyXmlExport.h>

#include <functional>
#include <iosfwd>
#include <string>

namespace Ny {

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
    /// Runs on the reporting thread, on several at once if several report. What it throws leaves write(); an insertion into
    /// ostream() swallows it and drops the rest of that message.
    using Handler = std::function<void(int printType, std::string const& location, std::string const& text)>;

    /// Reports a text in printf's format, of any length, in one piece. Numbers have the form of the "C" locale.
    static void write(int printType, char const* format, ...) __attribute__((format(printf, 2, 3)));

    /// Begins a message that is put together by insertion, usually in one statement.
    ///
    /// Nothing is held back: each insertion has reached the handler when it returns.
    /// \param location  signature of the reporting operation; copied
    /// \return a stream of the calling thread, in the classic locale and with default formatting, whatever the last message
    ///         left in it. It belongs to this message until the same thread's next call.
    static std::ostream& ostream(int printType, std::string const& location);

    /// Sends all messages to \p handler; an empty one restores the default. Call it before threads report.
    static void setHandler(Handler handler);
};

} // namespace Ny

#endif
