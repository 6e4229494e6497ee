#ifndef NYXMLKIT_FILE_NYXMLDIALECT_H
#define NYXMLKIT_FILE_NYXMLDIALECT_H

/// Which reader or writer a document is for.
enum class NyXmlDialect {
    CORE,     ///< the library's own: bytes pass unchanged, nothing is escaped
    STANDARD, ///< XML 1.0 as others write and read it
};

#endif
