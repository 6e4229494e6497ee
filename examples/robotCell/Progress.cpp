#include "Progress.h"

#include <nyXml/platform/NyApplication.h>
#include <nyXml/traversal/NyXmlSignals.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <utility>

#include <unistd.h>

namespace robotCell {

Progress::Progress(std::string const& what) : m_theWhat(what), m_theTerminalFlag(isatty(STDOUT_FILENO) == 1)
{
    using Traits = Ny::SignalReadWriteProgressTraits;
    m_theConnection = Ny::Application::instance().connectionManager().createSlot<Traits>(
        Traits::name(), [this](double fraction) { show(fraction); }, 0);
}

Progress::~Progress()
{
    if (m_theTerminalFlag)
        std::cout << '\n';
}

void Progress::show(double fraction)
{
    constexpr std::size_t width = 40;
    long const percent = std::lround(100 * fraction);
    if (!m_theTerminalFlag) {
        std::cout << "  " << m_theWhat << ": " << percent << " %\n";
        return;
    }
    auto const filled = static_cast<std::size_t>(std::clamp(fraction, 0.0, 1.0) * width);
    std::cout << "\r  " << m_theWhat << " [" << std::string(filled, '#') << std::string(width - filled, ' ') << "] " << percent
              << " %" << std::flush;
}

unsigned int countLinks(std::string const& document)
{
    std::ifstream stream(document, std::ios::binary);
    if (!stream)
        return 0;
    NyXmlFileReader reader(document, stream);
    unsigned int count = 0;
    auto mode = reader.readXml();
    while (mode != NyXmlFileReader::XML_READER_EOF && mode != NyXmlFileReader::XML_READER_ERROR) {
        if (mode == NyXmlFileReader::XML_READER_EMPTY_TAG && reader.element() == "NyInclude")
            ++count;
        while (reader.remainingNumOfAttributes() != 0)
            reader.attributeValue(); // what is not taken draws a warning
        mode = reader.readXml();
    }
    return count;
}

} // namespace robotCell
