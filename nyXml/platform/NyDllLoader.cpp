#include <nyXml/platform/NyDllLoader.h>

#include <dlfcn.h>

void* NyDllLoader::loadDll(std::string const& name, std::string const&, bool)
{
    // An empty name would be the program itself. Local, so that plug-ins that export the same names don't answer for one another:
    // classes that both sides know come from the shared library that both are linked with, and are one and the same all the same.
    m_theHandle = name.empty() ? nullptr : dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
    return m_theHandle;
}

void* NyDllLoader::getFunction(std::string const& name)
{
    return m_theHandle ? dlsym(m_theHandle, name.c_str()) : nullptr; // without a handle the system would search the whole process
}
