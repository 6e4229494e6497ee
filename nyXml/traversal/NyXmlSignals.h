#ifndef NYXML_TRAVERSAL_NYXMLSIGNALS_H
#define NYXML_TRAVERSAL_NYXMLSIGNALS_H

#include <nyXml/platform/NyConnectionManager.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/traversal/detail/NyXmlSignalsFwd.h>

#include <boost/signals2/signal.hpp>

#include <atomic>
#include <functional>
#include <string>
#include <type_traits>

namespace Ny {

/// The number that readers and writers send for every link: links so far over the announced total, or just links so far where no
/// total was announced. It can pass 1.
///
/// All readers and writers of the process share the signal, and a slot runs on the thread that reads or writes, before the read or
/// write goes on. Connect with ConnectionManager::createSlot, before or after readers and writers are made.
struct NYXML_EXPORT SignalReadWriteProgressTraits {
    using Signature = void(double);
    using SignalType = boost::signals2::signal<Signature, boost::signals2::optional_last_value<void>, int, std::less<int>>;
    static std::string name(); ///< "signalReadWriteProgress"
};

/// The text that follows each progress number: "Writing: " and the number from a writer, the empty text from a reader.
struct NYXML_EXPORT SignalReadWriteStatusTraits {
    using Signature = void(std::string);
    using SignalType = boost::signals2::signal<Signature, boost::signals2::optional_last_value<void>, int, std::less<int>>;
    static std::string name(); ///< "signalReadWriteMsg"
};

static_assert(std::is_same_v<SignalReadWriteProgressTraits::SignalType, ReadWriteProgressSignal> &&
                  std::is_same_v<SignalReadWriteStatusTraits::SignalType, ReadWriteStatusSignal>,
              "NyXmlSignalsFwd.h must spell out the default arguments of this Boost's signals");

extern template NYXML_EXPORT boost::shared_ptr<ConnectionManagerTypes::Connection>
ConnectionManager::createSlot<SignalReadWriteProgressTraits>(std::string const&, boost::function<void(double)>, int);
extern template NYXML_EXPORT boost::shared_ptr<ConnectionManagerTypes::Connection>
ConnectionManager::createSlot<SignalReadWriteStatusTraits>(std::string const&, boost::function<void(std::string)>, int);
extern template NYXML_EXPORT boost::shared_ptr<ReadWriteProgressSignal>
namedSignal<SignalReadWriteProgressTraits>(ConnectionManager& manager);
extern template NYXML_EXPORT boost::shared_ptr<ReadWriteStatusSignal>
namedSignal<SignalReadWriteStatusTraits>(ConnectionManager& manager);
extern template NYXML_EXPORT std::atomic<bool> const& isSignalHeard<SignalReadWriteProgressTraits>(ConnectionManager& manager);
extern template NYXML_EXPORT std::atomic<bool> const& isSignalHeard<SignalReadWriteStatusTraits>(ConnectionManager& manager);

} // namespace Ny

#endif
