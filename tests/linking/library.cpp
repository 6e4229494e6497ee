// A library that is unloaded, and then comes again with or without an override.

#include "Probe.h"

namespace {
int asked = 0;

class Guest : public Probe {
public:
#ifdef WITH_OVERRIDE
    ComponentMap const& componentMap() const override
    {
        ++asked;
        return Probe::componentMap();
    }
#else
    void registerComponents() override { Probe::registerComponents(); } // so that both libraries are laid out alike
#endif
};
} // namespace

extern "C" {
extern std::type_info const* const theType;
std::type_info const* const theType = &typeid(Guest);

int lookupsThatWereAsked()
{
    Guest first, second;
    return readsOwnName(first) && readsOwnName(second) ? asked : -1;
}
}
