#include <nyXml/platform/NyConnectionManager.h>

namespace Ny {

ConnectionManagerTypes::Connection::~Connection() = default;

ConnectionManager::~ConnectionManager() = default;

ConnectionManagerTypes::SignalHolder& ConnectionManager::findOrMake(std::string const& name,
                                                                    std::function<std::unique_ptr<SignalHolder>()> const& make)
{
    auto const own = m_OwnSignals.find(name);
    if (own != m_OwnSignals.end())
        return *own->second;

    std::lock_guard<std::mutex> const lock(m_OtherSignalsMutex);
    std::unique_ptr<SignalHolder>& holder = m_OtherSignals[name];
    if (!holder)
        holder = make();
    return *holder; // holders stay where they are for as long as the manager lives
}

} // namespace Ny
