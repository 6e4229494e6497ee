#ifndef NYXML_PLATFORM_NYCONNECTIONMANAGER_H
#define NYXML_PLATFORM_NYCONNECTIONMANAGER_H

#include <nyXml/platform/NyXmlExport.h>

#include <boost/function/function_fwd.hpp>
#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <boost/signals2/connection.hpp>
#include <boost/signals2/expired_slot.hpp>
#include <boost/signals2/shared_connection_block.hpp>

#include <atomic>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace Ny {

namespace ConnectionManagerTypes {

/// Keeps a slot connected. The slot is disconnected when the last owner of the handle lets go; a call of the slot that runs on
/// another thread at that moment runs to its end.
class NYXML_EXPORT Connection {
public:
    Connection() = default;
    Connection(Connection const&) = delete;
    Connection& operator=(Connection const&) = delete;
    virtual ~Connection() = 0;
};

/// The handle of one slot of the signal that \p Traits describe.
template <class Traits>
class NYXML_EXPORT ConnectionImpl : public Connection {
public:
    /// Becomes the one that keeps \p slot connected to \p signal.
    template <class SignalType>
    void connect(SignalType& signal, int group, boost::function<typename Traits::Signature> slot)
    {
        // Memory may run out when the signal knows the slot already, and nobody would hold a connection then. But the slot is
        // called only as long as what it watches is there.
        auto const whole = boost::make_shared<char>();
        typename SignalType::slot_type watching(std::move(slot));
        m_Connection = signal.connect(group, watching.track(whole));
        m_Whole = whole;
    }

private:
    boost::shared_ptr<void> m_Whole;
    boost::signals2::scoped_connection m_Connection;
};

/// A signal of any signature, as the manager's map holds it.
class NYXML_EXPORT SignalHolder {
public:
    virtual ~SignalHolder() = default;

    void setHeard() noexcept { m_isHeard = true; }
    std::atomic<bool> const& isHeard() const noexcept { return m_isHeard; }

private:
    std::atomic<bool> m_isHeard{ false };
};

/// Shares a signal with everybody who emits it.
///
/// Boost keeps a list of slots and a map of where in it each group begins. If memory runs out between the two, at a group's first slot,
/// the list has one that the map does not know, and when that goes the map may be left with a place that is gone. So each group in use,
/// and the two outermost, begin with a slot of ours that stays, and is blocked: whoever connects finds the group, and whoever goes is
/// not where it begins.
template <class SignalType>
class NYXML_EXPORT SignalHolderImpl : public SignalHolder {
public:
    explicit SignalHolderImpl(boost::shared_ptr<SignalType> signal) : m_Signal(std::move(signal))
    {
        openGroup(std::numeric_limits<int>::min());
        openGroup(std::numeric_limits<int>::max());
    }
    boost::shared_ptr<SignalType> const& signal() const noexcept { return m_Signal; }

    /// To be called before a slot connects to the group.
    void openGroup(int group)
    {
        std::lock_guard<std::recursive_mutex> const lock(
            m_Mutex); // Boost may destroy slots on the way, and those may connect others
        auto const [place, isNew] = m_Groups.try_emplace(group, boost::signals2::connection(), false);
        if (!isNew)
            return;
        using SlotFunction = typename SignalType::slot_function_type;
        SlotFunction const notBlockedYet = [](auto&&...) -> typename SlotFunction::result_type {
            throw boost::signals2::expired_slot(); // to Boost, a slot that is not there
        };
        try {
            boost::signals2::scoped_connection first(m_Signal->connect(group, notBlockedYet));
            place->second = boost::signals2::shared_connection_block(first);
            first.release();
        } catch (...) {
            m_Groups.erase(place);
            throw;
        }
    }

private:
    boost::shared_ptr<SignalType> m_Signal;
    std::map<int, boost::signals2::shared_connection_block> m_Groups;
    std::recursive_mutex m_Mutex;
};

} // namespace ConnectionManagerTypes

class ConnectionManager;

/// Gets the signal that \p Traits name. For those who emit it; who listens uses ConnectionManager::createSlot. It holds blocked slots of
/// the manager's own, so that it never says that it is empty.
template <class Traits>
boost::shared_ptr<typename Traits::SignalType> namedSignal(ConnectionManager& manager);

/// Whether anybody has listened to that signal yet, for those who emit it often: one that nobody hears takes its time, too.
/// \return valid for good; true from the first createSlot() on
template <class Traits>
std::atomic<bool> const& isSignalHeard(ConnectionManager& manager);

/// Brings together, by name, those who emit a signal and those who listen.
///
/// A signal is described by a traits type with `Signature`, `SignalType` (a Boost signal with int as group type) and
/// `static std::string name()`; the library's own two are in nyXml/traversal/NyXmlSignals.h:
/// \code
///     auto connection = Ny::Application::instance().connectionManager().createSlot<Ny::SignalReadWriteProgressTraits>(
///         Ny::SignalReadWriteProgressTraits::name(), [](double progress) { show(progress); }, 0);
///     ... // the slot hears every reader and writer of the process until `connection` goes
/// \endcode
///
/// The library's own signals are there from the start, so that getting one never changes anything and needs no lock. All
/// operations may be called on several threads at once.
class NYXML_EXPORT ConnectionManager {
public:
    ConnectionManager(ConnectionManager const&) = delete;
    ConnectionManager& operator=(ConnectionManager const&) = delete;

    /// Connects a slot, whether or not anything emits the signal yet.
    ///
    /// \param name   of the signal; made if there is none of that name
    /// \param slot   called on the emitting thread, also on several threads at once
    /// \param group  slots run in ascending order of their groups, and within a group in the order in which they connected
    /// \return the handle that keeps the slot connected; drop it and the slot is gone
    /// \throws std::bad_cast  if the signal of that name has another type
    template <class Traits>
    [[nodiscard]] boost::shared_ptr<ConnectionManagerTypes::Connection>
    createSlot(std::string const& name, boost::function<typename Traits::Signature> slot, int group)
    {
        auto const handle = boost::make_shared<ConnectionManagerTypes::ConnectionImpl<Traits>>();
        auto& holder = holderOf<Traits>(name);
        holder.openGroup(group);
        holder.setHeard();
        handle->connect(*holder.signal(), group, std::move(slot));
        return handle;
    }

private:
    friend class Application;
    template <class Traits>
    friend boost::shared_ptr<typename Traits::SignalType> namedSignal(ConnectionManager& manager);
    template <class Traits>
    friend std::atomic<bool> const& isSignalHeard(ConnectionManager& manager);

    using SignalHolder = ConnectionManagerTypes::SignalHolder;
    using SignalMap = std::map<std::string, std::unique_ptr<SignalHolder>>;

    /// Makes the library's own signals. The body stands where their traits are known: traversal/NyXmlSignals.cpp.
    ConnectionManager();
    ~ConnectionManager();

    template <class Traits>
    ConnectionManagerTypes::SignalHolderImpl<typename Traits::SignalType>& holderOf(std::string const& name)
    {
        using Holder = ConnectionManagerTypes::SignalHolderImpl<typename Traits::SignalType>;
        SignalHolder& holder =
            findOrMake(name, [] { return std::make_unique<Holder>(boost::make_shared<typename Traits::SignalType>()); });
        return dynamic_cast<Holder&>(holder);
    }

    template <class Traits>
    boost::shared_ptr<typename Traits::SignalType> createSignal(std::string const& name)
    {
        return holderOf<Traits>(name).signal();
    }

    SignalHolder& findOrMake(std::string const& name, std::function<std::unique_ptr<SignalHolder>()> const& make);

    SignalMap m_OwnSignals;   ///< the library's; complete, and never changed again, once the constructor is through
    SignalMap m_OtherSignals; ///< under names that applications thought of; guarded by the mutex
    std::mutex m_OtherSignalsMutex;
};

template <class Traits>
boost::shared_ptr<typename Traits::SignalType> namedSignal(ConnectionManager& manager)
{
    return manager.createSignal<Traits>(Traits::name());
}

template <class Traits>
std::atomic<bool> const& isSignalHeard(ConnectionManager& manager)
{
    return manager.holderOf<Traits>(Traits::name()).isHeard();
}

} // namespace Ny

#endif
