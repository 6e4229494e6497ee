#include <nyXml/traversal/NyXmlSignals.h>

namespace Ny {

std::string SignalReadWriteProgressTraits::name() { return "signalReadWriteProgress"; }

std::string SignalReadWriteStatusTraits::name() { return "signalReadWriteMsg"; }

namespace {
template <class Traits>
std::unique_ptr<ConnectionManagerTypes::SignalHolder> makeSignal()
{
    using SignalType = typename Traits::SignalType;
    return std::make_unique<ConnectionManagerTypes::SignalHolderImpl<SignalType>>(boost::make_shared<SignalType>());
}
} // namespace

ConnectionManager::ConnectionManager()
{
    m_OwnSignals[SignalReadWriteProgressTraits::name()] = makeSignal<SignalReadWriteProgressTraits>();
    m_OwnSignals[SignalReadWriteStatusTraits::name()] = makeSignal<SignalReadWriteStatusTraits>();
}

template boost::shared_ptr<ConnectionManagerTypes::Connection>
ConnectionManager::createSlot<SignalReadWriteProgressTraits>(std::string const&, boost::function<void(double)>, int);
template boost::shared_ptr<ConnectionManagerTypes::Connection>
ConnectionManager::createSlot<SignalReadWriteStatusTraits>(std::string const&, boost::function<void(std::string)>, int);
template boost::shared_ptr<ReadWriteProgressSignal> namedSignal<SignalReadWriteProgressTraits>(ConnectionManager& manager);
template boost::shared_ptr<ReadWriteStatusSignal> namedSignal<SignalReadWriteStatusTraits>(ConnectionManager& manager);
template std::atomic<bool> const& isSignalHeard<SignalReadWriteProgressTraits>(ConnectionManager& manager);
template std::atomic<bool> const& isSignalHeard<SignalReadWriteStatusTraits>(ConnectionManager& manager);

} // namespace Ny
