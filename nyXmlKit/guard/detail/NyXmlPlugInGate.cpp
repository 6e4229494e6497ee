#include <nyXmlKit/guard/detail/NyXmlPlugInGate.h>

#include <nyXml/platform/NyDllLoader.h>
#include <nyXmlKit/guard/detail/NyXmlGuardState.h>

#include <algorithm>
#include <future>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace {

/// The guards of this thread's readers. A library may be loaded if none of them has anything against it.
thread_local std::vector<NyXmlGuardState*> guards;

/// What the loader asks: us, and then the gate that was there before, which is known a moment later.
struct Gate {
    std::shared_future<NyDllLoader::Gate> before;

    bool operator()(std::string const& library) const
    {
        for (NyXmlGuardState* guard : guards)
            if (!guard->mayLoad(library))
                return false;
        NyDllLoader::Gate const& next = before.get();
        return !next || next(library);
    }
};

// The loader tells which gate it has only in exchange for another one. If it was ours, it goes back.
void putInFront()
{
    static std::mutex mutex;
    std::lock_guard<std::mutex> const lock(mutex);
    std::promise<NyDllLoader::Gate> promise;
    NyDllLoader::Gate const found = NyDllLoader::setGate(Gate{ promise.get_future().share() });
    promise.set_value(found);
    if (found.target<Gate>() != nullptr)
        NyDllLoader::setGate(found);
}

} // namespace

void NyXmlPlugInGate::enter(NyXmlGuardState& guard)
{
    putInFront();
    guards.push_back(&guard);
}

void NyXmlPlugInGate::leave(NyXmlGuardState& guard) noexcept
{
    auto const found = std::find(guards.begin(), guards.end(), &guard);
    if (found != guards.end())
        guards.erase(found);
}
