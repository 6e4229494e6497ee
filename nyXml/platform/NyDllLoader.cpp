#include <nyXml/platform/NyDllLoader.h>
#include <nyXml/platform/detail/NyGate.h>

#include <dlfcn.h>

#include <climits>
#include <utility>

namespace {

NyGate& gate()
{
    static NyGate& gate = *new NyGate; // never destroyed: documents are read while the process ends, too
    return gate;
}

// An empty name would be the program itself. The system copies a name to the stack, which a long one overruns, and reads it up to the
// first zero byte: the gate would be asked for another library than the one that is loaded.
bool isName(std::string const& text) { return !text.empty() && text.size() < PATH_MAX && text.find('\0') == std::string::npos; }

} // namespace

void* NyDllLoader::loadDll(std::string const& name, std::string const&, bool)
{
    // Local, so that plug-ins that export the same names don't answer for one another: classes that both sides know come from the
    // shared library that both are linked with, and are one and the same all the same.
    m_theHandle = nullptr;
    if (isName(name) && gate().isOpenFor(name))
        m_theHandle = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
    return m_theHandle;
}

NyDllLoader::Gate NyDllLoader::setGate(Gate newGate) { return gate().replace(std::move(newGate)); }

void* NyDllLoader::getFunction(std::string const& name)
{
    return m_theHandle ? dlsym(m_theHandle, name.c_str()) : nullptr; // without a handle the system would search the whole process
}
