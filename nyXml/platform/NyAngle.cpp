#include <nyXml/platform/NyAngle.h>

#include <istream>
#include <ostream>

std::ostream& operator<<(std::ostream& stream, NyAngle const& angle) { return stream << static_cast<double>(angle); }

std::istream& operator>>(std::istream& stream, NyAngle& angle)
{
    double value = 0.0;
    if (stream >> value)
        angle = value;
    return stream;
}
