// In-house, no part of the face: for the sources of this folder, and not installed.
#ifndef NYXML_PLATFORM_DETAIL_NYCURL_H
#define NYXML_PLATFORM_DETAIL_NYCURL_H

#include <curl/curl.h>

/// The functions of libcurl that we use, looked for when the first address is opened. Linked with, it would bring thirty libraries
/// into every program, four fifths of the time that an empty one takes to start.
struct NyCurl {
    /// \return null where there is no libcurl, or one without all of these
    static NyCurl const* find();

    decltype(&::curl_global_init) global_init = nullptr;
    decltype(&::curl_easy_init) easy_init = nullptr;
    decltype(&::curl_easy_cleanup) easy_cleanup = nullptr;
    decltype(&::curl_easy_setopt) easy_setopt = nullptr;
    decltype(&::curl_easy_getinfo) easy_getinfo = nullptr;
    decltype(&::curl_easy_pause) easy_pause = nullptr;
    decltype(&::curl_multi_init) multi_init = nullptr;
    decltype(&::curl_multi_cleanup) multi_cleanup = nullptr;
    decltype(&::curl_multi_add_handle) multi_add_handle = nullptr;
    decltype(&::curl_multi_remove_handle) multi_remove_handle = nullptr;
    decltype(&::curl_multi_perform) multi_perform = nullptr;
    decltype(&::curl_multi_info_read) multi_info_read = nullptr;
    decltype(&::curl_multi_poll) multi_poll = nullptr;
    decltype(&::curl_url) url = nullptr;
    decltype(&::curl_url_cleanup) url_cleanup = nullptr;
    decltype(&::curl_url_set) url_set = nullptr;
    decltype(&::curl_url_get) url_get = nullptr;
    decltype(&::curl_free) free = nullptr;
    decltype(&::curl_strnequal) strnequal = nullptr;
};

#endif
