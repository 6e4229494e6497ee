#include "Progress.h"

#include <nyXml/platform/NyApplication.h>
#include <nyXml/traversal/NyXmlSignals.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <utility>

#include <unistd.h>

namespace robotCell {

namespace {

bool barStandsOnLine = false;

} // namespace

Progress::Progress(std::string const& what) : m_theWhat(what), m_theTerminalFlag(isatty(STDOUT_FILENO) == 1)
{
    using Fraction = Ny::SignalReadWriteProgressTraits;
    using Status = Ny::SignalReadWriteStatusTraits;
    Ny::ConnectionManager& signals = Ny::Application::instance().connectionManager();
    m_theProgress = signals.createSlot<Fraction>(
        Fraction::name(), [this](double fraction) { m_theFraction = fraction; }, 0);
    m_theStatus = signals.createSlot<Status>(
        Status::name(), [this](std::string const& status) { show(status); }, 0);
}

Progress::~Progress() { endLine(); }

void Progress::endLine()
{
    if (barStandsOnLine)
        std::cout << '\n';
    barStandsOnLine = false;
}

void Progress::show(std::string const& status) const
{
    constexpr std::size_t width = 40;
    std::string const text = std::to_string(std::lround(100 * m_theFraction)) + " %" + (status.empty() ? "" : "  " + status);
    if (!m_theTerminalFlag) {
        std::cout << "  " << m_theWhat << ": " << text << '\n';
        return;
    }
    auto const filled = static_cast<std::size_t>(std::clamp(m_theFraction, 0.0, 1.0) * width);
    std::cout << "\r  " << m_theWhat << " [" << std::string(filled, '#') << std::string(width - filled, ' ') << "] " << text
              << "\033[K" // what is left of a longer text
              << std::flush;
    barStandsOnLine = true;
}

} // namespace robotCell
