#ifndef NYXML_PLATFORM_NYANGLE_H
#define NYXML_PLATFORM_NYANGLE_H

#include <nyXml/platform/NyXmlExport.h>

#include <iosfwd>

/// An angle: a number with a type of its own. Its unit is the caller's.
///
/// Takes part in arithmetic and in ==, != and < as the double that it converts to, so it compares with plain numbers as well.
class NYXML_EXPORT NyAngle {
public:
    constexpr NyAngle(double value = 0.0) noexcept : m_theValue(value) {} // implicit: a number where an angle is wanted is one
    constexpr operator double() const noexcept { return m_theValue; }

private:
    double m_theValue;
};

/// As the stream inserts a double.
NYXML_EXPORT std::ostream& operator<<(std::ostream& stream, NyAngle const& angle);

/// As the stream extracts a double, except that a failed extraction leaves \p angle alone.
NYXML_EXPORT std::istream& operator>>(std::istream& stream, NyAngle& angle);

#endif
