// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_TRAVERSAL_DETAIL_NYXMLSIGNALSFWD_H
#define NYXML_TRAVERSAL_DETAIL_NYXMLSIGNALSFWD_H

#include <boost/function/function_fwd.hpp>

#include <functional>
#include <string>

// Names the progress signals without Boost's signal headers, which cost a second in every file that includes a reader or writer.
// The default arguments are Boost's own and are spelled out, since only its header may declare them; NyXmlSignals.h compares.

namespace boost::signals2 {
class connection;
class mutex;
template <typename T>
class optional_last_value;
template <typename Signature, typename Combiner, typename Group, typename GroupCompare, typename SlotFunction,
          typename ExtendedSlotFunction, typename Mutex>
class signal;
} // namespace boost::signals2

namespace Ny {

/// The signal of the progress number. Incomplete here: include nyXml/traversal/NyXmlSignals.h to emit it.
using ReadWriteProgressSignal =
    boost::signals2::signal<void(double), boost::signals2::optional_last_value<void>, int, std::less<int>,
                            boost::function<void(double)>, boost::function<void(boost::signals2::connection const&, double)>,
                            boost::signals2::mutex>;

/// The signal of the status text. Incomplete here: include nyXml/traversal/NyXmlSignals.h to emit it.
using ReadWriteStatusSignal =
    boost::signals2::signal<void(std::string), boost::signals2::optional_last_value<void>, int, std::less<int>,
                            boost::function<void(std::string)>,
                            boost::function<void(boost::signals2::connection const&, std::string)>, boost::signals2::mutex>;

} // namespace Ny

#endif
