#include <nyXml/platform/NyOrientation.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// What division by the length leaves is off by no more than this, so that to normalise twice is to normalise once, and a document
// stays the same however often it is read and written.
constexpr double roundingOfSquaredLength = 8 * std::numeric_limits<double>::epsilon();

} // namespace

void NyOrientation::normalize() noexcept
{
    if (!std::isfinite(m_q0) || !std::isfinite(m_q1) || !std::isfinite(m_q2) || !std::isfinite(m_q3))
        return;
    if (std::fabs(m_q0 * m_q0 + m_q1 * m_q1 + m_q2 * m_q2 + m_q3 * m_q3 - 1.0) <= roundingOfSquaredLength)
        return;
    double const largest = std::max({ std::fabs(m_q0), std::fabs(m_q1), std::fabs(m_q2), std::fabs(m_q3) });
    if (largest == 0.0)
        return;

    // A power of two brings the largest near 1, so that no square overflows or vanishes; it costs no digit.
    int const exponent = -std::ilogb(largest);
    set(std::scalbn(m_q0, exponent), std::scalbn(m_q1, exponent), std::scalbn(m_q2, exponent), std::scalbn(m_q3, exponent));
    double const length = std::sqrt(m_q0 * m_q0 + m_q1 * m_q1 + m_q2 * m_q2 + m_q3 * m_q3);
    set(m_q0 / length, m_q1 / length, m_q2 / length, m_q3 / length);
}
