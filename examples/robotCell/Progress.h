#ifndef ROBOTCELL_PROGRESS_H
#define ROBOTCELL_PROGRESS_H

#include <nyXml/platform/NyConnectionManager.h>

#include <string>

namespace robotCell {

/// Shows how far reading or writing has come, for as long as it lives: a bar on a terminal, plain lines elsewhere.
///
/// It hears of it through the library's two signals and needs neither the reader nor the writer for that. Of each step the fraction
/// comes first and then a text, which is empty when reading.
class Progress {
public:
    explicit Progress(std::string const& what);
    Progress(Progress const&) = delete; // the signals know this very object
    Progress& operator=(Progress const&) = delete;
    ~Progress();

    /// For those who print while a bar may stand on the terminal: what follows begins on a line of its own.
    static void endLine();

private:
    void show(std::string const& status) const;

    std::string m_theWhat;
    bool m_theTerminalFlag;
    double m_theFraction = 0.0;
    boost::shared_ptr<Ny::ConnectionManagerTypes::Connection> m_theProgress; ///< the signal stops with it
    boost::shared_ptr<Ny::ConnectionManagerTypes::Connection> m_theStatus;
};

} // namespace robotCell

#endif
