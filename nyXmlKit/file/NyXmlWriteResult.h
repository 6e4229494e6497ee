#ifndef NYXMLKIT_FILE_NYXMLWRITERESULT_H
#define NYXMLKIT_FILE_NYXMLWRITERESULT_H

#include <nyXml/platform/NyXmlExport.h>
#include <nyXmlKit/file/NyXmlFault.h>

#include <string>
#include <vector>

/// What writing a document came to.
struct NYXML_EXPORT NyXmlWriteResult {
    enum class Step {
        NONE,   ///< nothing has failed
        OBJECT, ///< the object's write() said no
        OPEN,   ///< the file beside the target cannot be made
        WRITE,  ///< the disk is full, say
        SYNC,   ///< the bytes may not be on the disk
        RENAME, ///< the new document cannot take the place of the old one
        FOLDER, ///< the document is in place, but the disk may not know yet: after the end of the machine the old one may be back
    };

    /// What has failed. Up to RENAME the old document is as it was.
    Step failedStep = Step::NONE;

    /// The system's reason, such as "No space left on device"; empty if there is none.
    std::string reason;

    /// What writer and objects had to say. They don't keep the document from being written.
    std::vector<NyXmlFault> faults;

    bool isWritten() const noexcept { return failedStep == Step::NONE; }

    /// Written and without a fault.
    explicit operator bool() const noexcept { return isWritten() && faults.empty(); }

    /// What has failed and the faults, one a line.
    std::string str() const;
};

#endif
