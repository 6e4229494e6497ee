#include <nyXml/core/detail/NyVirtualSlot.h>

#ifdef __GXX_ABI_VERSION
#include <dlfcn.h>
#endif

namespace {

// The name under which the dynamic linker knows just this address, or null.
char const* symbolAt(std::uintptr_t function) noexcept
{
#ifdef __GXX_ABI_VERSION
    void* address;
    static_assert(sizeof(address) == sizeof(function));
    std::memcpy(&address, &function, sizeof(address));
    Dl_info info;
    if (dladdr(address, &info) != 0 && info.dli_saddr == address)
        return info.dli_sname;
#else
    (void)function;
#endif
    return nullptr;
}

} // namespace

bool NyVirtualSlot::isSame(std::uintptr_t function, std::uintptr_t other) noexcept
{
    if (function == 0 || other == 0)
        return false;
    if (function == other)
        return true;
    char const* const name = symbolAt(function);
    char const* const otherName = symbolAt(other);
    return name != nullptr && otherName != nullptr && std::strcmp(name, otherName) == 0;
}
