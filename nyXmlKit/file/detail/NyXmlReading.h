// In-house, no part of the face.

#ifndef NYXMLKIT_FILE_DETAIL_NYXMLREADING_H
#define NYXMLKIT_FILE_DETAIL_NYXMLREADING_H

#include <nyXml/reader/NyXmlFileReader.h>
#include <nyXmlKit/file/NyXmlReadOptions.h>
#include <nyXmlKit/file/NyXmlReadResult.h>
#include <nyXmlKit/file/detail/NyXmlFaultCollector.h>
#include <nyXmlKit/file/detail/NyXmlInputWatch.h>

#include <cstdint>
#include <exception>
#include <iosfwd>
#include <string>

class NyXmlObject;
class NyXmlOpenFile;
class NyXmlReader;
class NyXmlStrictChecker;

/// One document on its way into an object.
class NyXmlReading {
public:
    /// \param name, options  stay the caller's and must outlive us
    NyXmlReading(std::string const& name, std::istream& stream, NyXmlReadOptions const& options);

    /// From a file, which knows its size and why it ended.
    NyXmlReading(std::string const& path, NyXmlOpenFile& file, NyXmlReadOptions const& options);

    /// Where all messages of this thread have to go while read() runs.
    NyXmlFaultCollector& faults() { return m_theFaults; }

    NyXmlReadResult read(NyXmlObject& object);

private:
    using Mode = NyXmlFileReader::XML_READER_MODE;

    template <class Plain, class Guarded>
    void readBy(NyXmlObject& object);
    template <class Guarded>
    void readGuarded(NyXmlObject& object);
    template <class Plain>
    void readPlain(NyXmlObject& object);
    template <class Reader>
    void readWith(Reader& reader, NyXmlObject& object);
    void readDocument(NyXmlReader& reader, NyXmlObject& object);
    bool findRoot(NyXmlReader& reader, NyToken const& token);
    void readObject(NyXmlReader& reader, NyXmlObject& object);
    void readRest(NyXmlReader& reader);
    void dropAttributes(NyXmlReader& reader);
    void examineEnd();
    bool advance(std::size_t bytes, std::uint64_t included);
    std::uint64_t totalWith(std::uint64_t included) const;
    void worsen(unsigned int code);
    void stop();

    std::string const& m_theName;
    NyXmlReadOptions const& m_theOptions;
    NyXmlInputWatch m_theInput;
    NyXmlOpenFile* const m_theFile = nullptr;
    bool const m_isStrict;
    std::uint64_t m_theBytes = 0;
    NyXmlStrictChecker* m_theChecker = nullptr; ///< while a strict reading runs
    NyXmlFaultCollector m_theFaults;
    NyXmlFaultCollector::Follower const* m_theReadersPlace = nullptr; ///< while a reading runs
    NyXmlReadResult m_theResult;
    std::exception_ptr m_theException; ///< thrown by the application's progress function
    bool m_isRootRead = false;
    bool m_isEndSeen = false;
};

#endif
