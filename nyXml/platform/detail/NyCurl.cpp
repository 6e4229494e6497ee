#include <nyXml/platform/detail/NyCurl.h>

#include <dlfcn.h>

#include <initializer_list>
#include <memory>

namespace {

void* openLibrary()
{
    for (char const* name : { "libcurl.so.4", "libcurl-gnutls.so.4" }) // one interface, with one security library or another
        if (void* const library = dlopen(name, RTLD_NOW | RTLD_LOCAL))
            return library;
    return nullptr;
}

template <class Function>
bool take(void* library, char const* name, Function& function)
{
    function = reinterpret_cast<Function>(dlsym(library, name));
    return function != nullptr;
}

// The library stays loaded, and the table is never destroyed: streams may be used while the process ends.
NyCurl const* load()
{
    auto curl = std::make_unique<NyCurl>();
    void* const library = openLibrary();
    bool const isWhole =
        library && take(library, "curl_global_init", curl->global_init) && take(library, "curl_easy_init", curl->easy_init) &&
        take(library, "curl_easy_cleanup", curl->easy_cleanup) && take(library, "curl_easy_setopt", curl->easy_setopt) &&
        take(library, "curl_easy_getinfo", curl->easy_getinfo) && take(library, "curl_easy_pause", curl->easy_pause) &&
        take(library, "curl_multi_init", curl->multi_init) && take(library, "curl_multi_cleanup", curl->multi_cleanup) &&
        take(library, "curl_multi_add_handle", curl->multi_add_handle) &&
        take(library, "curl_multi_remove_handle", curl->multi_remove_handle) &&
        take(library, "curl_multi_perform", curl->multi_perform) &&
        take(library, "curl_multi_info_read", curl->multi_info_read) && take(library, "curl_multi_poll", curl->multi_poll) &&
        take(library, "curl_url", curl->url) && take(library, "curl_url_cleanup", curl->url_cleanup) &&
        take(library, "curl_url_set", curl->url_set) && take(library, "curl_url_get", curl->url_get) &&
        take(library, "curl_free", curl->free) && take(library, "curl_strnequal", curl->strnequal);
    return isWhole && curl->global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK ? curl.release() : nullptr;
}

} // namespace

NyCurl const* NyCurl::find()
{
    static NyCurl const* const curl = load(); // once, whichever thread comes first
    return curl;
}
