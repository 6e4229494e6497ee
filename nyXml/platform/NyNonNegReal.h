#ifndef NYXML_PLATFORM_NYNONNEGREAL_H
#define NYXML_PLATFORM_NYNONNEGREAL_H

#include <nyXml/platform/NyXmlExport.h>

#include <iosfwd>

/// A number that is never negative and never a NaN.
///
/// Takes part in arithmetic and in ==, != and < as the double that it converts to, so it compares with plain numbers as well.
class NYXML_EXPORT NyNonNegReal {
public:
    /// Implicit, so that a number may stand where one of these is wanted. A negative value, -0.0 included, or a NaN becomes 0.
    constexpr NyNonNegReal(double value = 0.0) noexcept : m_theValue(value > 0.0 ? value : 0.0) {}
    constexpr operator double() const noexcept { return m_theValue; }

private:
    double m_theValue;
};

/// As the stream inserts a double.
NYXML_EXPORT std::ostream& operator<<(std::ostream& stream, NyNonNegReal const& value);

/// As the stream extracts a double, except that a negative number or a NaN sets the fail bit, and that a failed extraction leaves
/// \p value alone.
NYXML_EXPORT std::istream& operator>>(std::istream& stream, NyNonNegReal& value);

#endif
