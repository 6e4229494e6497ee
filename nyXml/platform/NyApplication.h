#ifndef NYXML_PLATFORM_NYAPPLICATION_H
#define NYXML_PLATFORM_NYAPPLICATION_H

#include <nyXml/platform/NyConnectionManager.h>
#include <nyXml/platform/NyXmlExport.h>

namespace Ny {

/// The one object that stands for the running process.
class NYXML_EXPORT Application {
public:
    /// Made by the first call, on whichever thread that is, and never destroyed: what lives in static variables may still read and
    /// write while the process ends.
    static Application& instance();

    Application(Application const&) = delete;
    Application& operator=(Application const&) = delete;

    /// Where listeners connect to the library's signals; the same object on every call.
    ConnectionManager& connectionManager() noexcept { return m_ConnectionManager; }

private:
    Application() = default;
    ~Application() = default;

    ConnectionManager m_ConnectionManager;
};

} // namespace Ny

#endif
