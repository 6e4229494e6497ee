#ifndef NYXML_PLATFORM_NYXMLEXPORT_H
#define NYXML_PLATFORM_NYXMLEXPORT_H

/// Marks what leaves the shared library. Everything else is compiled with hidden visibility.
///
/// One spelling serves the library and those who use it: with default visibility the run-time type identity of a class is one and
/// the same in the library, the application and every plug-in, which dynamic_cast and typeid across them rely on.
#define NYXML_EXPORT __attribute__((visibility("default")))

#endif
