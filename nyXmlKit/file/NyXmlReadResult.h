#ifndef NYXMLKIT_FILE_NYXMLREADRESULT_H
#define NYXMLKIT_FILE_NYXMLREADRESULT_H

#include <nyXml/platform/NyXmlExport.h>
#include <nyXmlKit/file/NyXmlFault.h>

#include <string>
#include <vector>

/// What reading a document came to. The object holds what could be read, whatever stands here.
struct NYXML_EXPORT NyXmlReadResult {
    /// The root was there under its name, the document went on to its end, and errorCode is 0. There may be faults besides: members
    /// that nobody knows, say.
    bool isWhole = false;

    /// The progress function has said no. That is no fault, and the document is not whole.
    bool isCancelled = false;

    /// False for a document of a newer major version than the library.
    bool doesVersionFit = true;

    /// The worst that the readers of the document and of its includes had: 0, 2 possibly not valid, 1 not well formed.
    unsigned int errorCode = 0;

    /// In the order in which they were met.
    std::vector<NyXmlFault> faults;

    /// What was told for the record alone, such as a plug-in that was loaded.
    std::vector<std::string> notices;

    /// Whole and without a fault.
    explicit operator bool() const noexcept { return isWhole && faults.empty(); }

    bool has(NyXmlFault::Kind kind) const noexcept;

    /// The faults, one a line.
    std::string str() const;
};

#endif
