// Built by scripts/check-linking.sh in each way in which a program may be linked: whether the library still knows which classes
// override something is seen from what registering costs. Two plug-ins follow each other at one address as the program's arguments.

#include "Probe.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <new>

namespace {
int allocations = 0;
bool isBad = false;

void expect(bool holds, char const* what)
{
    if (!holds)
        std::printf("not so: %s\n", what);
    isBad = isBad || !holds;
}

class Plain : public Probe {};

class Overriding : public Probe {
public:
    mutable int asked = 0;
    ComponentMap const& componentMap() const override
    {
        ++asked;
        return Probe::componentMap();
    }
};

// What the second object of a class allocates on registering.
template <class Class>
int costOfSecond()
{
    Class first, second;
    first.xmlInit();
    int const before = allocations;
    second.xmlInit();
    return allocations - before;
}

// Of a library that is unloaded behind the call. Null if it is not there.
void* useLibrary(char const* path, bool overrides)
{
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    expect(library != nullptr, path);
    if (library == nullptr)
        return nullptr;
    auto const use = reinterpret_cast<int (*)()>(dlsym(library, "lookupsThatWereAsked"));
    expect(use() == (overrides ? 2 : 0), "a library's override is asked, and only where there is one");
    void* const type = *static_cast<void**>(dlsym(library, "theType"));
    dlclose(library);
    return type;
}
} // namespace

void* operator new(std::size_t size)
{
    ++allocations;
    if (void* const memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

int main(int argc, char** argv)
{
    expect(costOfSecond<Plain>() == 0, "the objects of a class share what they register");
    expect(costOfSecond<Overriding>() > 0, "an override is not passed over");
    Overriding first, second;
    expect(readsOwnName(first) && readsOwnName(second) && first.asked == 1 && second.asked == 1, "an override is asked");
    if (argc == 3) {
        void* const before = useLibrary(argv[1], false);
        void* const after = useLibrary(argv[2], true);
        std::printf("%s", before == after ? "" : "the second library came to lie elsewhere\n");
    }
    return isBad ? 1 : 0;
}
