#ifndef NYXMLKIT_FILE_NYXMLFILE_H
#define NYXMLKIT_FILE_NYXMLFILE_H

#include <nyXml/platform/NyXmlExport.h>
#include <nyXmlKit/file/NyXmlReadOptions.h>
#include <nyXmlKit/file/NyXmlReadResult.h>
#include <nyXmlKit/file/NyXmlWriteOptions.h>
#include <nyXmlKit/file/NyXmlWriteResult.h>

#include <iosfwd>
#include <string>

class NyXmlObject;

/// From a file to an object and back, in one call each.
///
/// \code
///     Cell cell;
///     if (auto const result = NyXmlFile::read("cell.xml", cell); !result)
///         std::cerr << result.str(); // "cell.xml:12: cell/robots/robot: Bad token: reech on line 12"
///     ...
///     if (auto const result = NyXmlFile::write("cell.xml", cell); !result)
///         std::cerr << result.str(); // the old document is still there
/// \endcode
///
/// A document never makes them throw, and nothing of what the library prints on the way reaches the application's own handler: it stands
/// in the result. Other threads are not disturbed, and may read and write documents of their own.
class NYXML_EXPORT NyXmlFile {
public:
    /// Reads a document into an object. What the object held stays where the document says nothing of it.
    ///
    /// The object reads itself as with a reader of the dialect. Behind it the document is read on to its end, so that a fault behind
    /// the root and a document that breaks off are told.
    [[nodiscard]] static NyXmlReadResult read(std::string const& path, NyXmlObject& object, NyXmlReadOptions const& options = {});

    /// The same from a stream, which stays the caller's. \param name  for messages, and where relative links start
    [[nodiscard]] static NyXmlReadResult read(std::istream& stream, std::string const& name, NyXmlObject& object,
                                              NyXmlReadOptions const& options = {});

    /// Writes a document in place of the one that is there, or as a new one.
    ///
    /// It is written beside the target, as `<path>.new-<number>`, brought to the disk and then renamed onto it: whatever goes wrong, a full
    /// disk or the end of the machine, the old document stays as it was, or the new one is there as a whole. A symbolic link is followed
    /// and stays. The new document has the permissions of the old one, and its owner where we may give it one; other hard
    /// links to the old document keep the old one. What is no regular file, such as a pipe, is written to as it is.
    [[nodiscard]] static NyXmlWriteResult write(std::string const& path, NyXmlObject const& object,
                                                NyXmlWriteOptions const& options = {});

    /// The same to a stream, which is flushed and stays the caller's. \param name  for messages and the name of the schema
    [[nodiscard]] static NyXmlWriteResult write(std::ostream& stream, std::string const& name, NyXmlObject const& object,
                                                NyXmlWriteOptions const& options = {});
};

#endif
