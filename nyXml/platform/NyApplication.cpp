#include <nyXml/platform/NyApplication.h>

namespace Ny {

Application& Application::instance()
{
    static Application& application = *new Application;
    return application;
}

} // namespace Ny
