#ifndef ROBOTCELL_PROGRESS_H
#define ROBOTCELL_PROGRESS_H

#include <nyXml/platform/NyConnectionManager.h>
#include <nyXml/reader/NyXmlReader.h>

#include <string>

namespace robotCell {

/// Shows how far reading or writing has come, for as long as it lives: a bar on a terminal, plain lines elsewhere.
///
/// It hears of it through the library's progress signal and needs neither the reader nor the writer for that.
class Progress {
public:
    explicit Progress(std::string const& what);
    ~Progress();

private:
    void show(double fraction);

    std::string m_theWhat;
    bool m_theTerminalFlag;
    boost::shared_ptr<Ny::ConnectionManagerTypes::Connection> m_theConnection; ///< the signal stops with it
};

/// A reader that counts the documents it follows. The library itself counts none: only an application knows which links it announces.
class LinkReader : public NyXmlReader {
public:
    using NyXmlReader::NyXmlReader;

protected:
    bool openFileTest() override
    {
        bool const followed = NyXmlReader::openFileTest();
        if (followed)
            incrementLinkCount();
        return followed;
    }
};

/// How many links stand in a document: a plain use of the pull parser. 0 for a document that can't be opened.
unsigned int countLinks(std::string const& document);

} // namespace robotCell

#endif
