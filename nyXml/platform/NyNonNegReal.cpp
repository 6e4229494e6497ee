#include <nyXml/platform/NyNonNegReal.h>

#include <istream>
#include <ostream>

std::ostream& operator<<(std::ostream& stream, NyNonNegReal const& value) { return stream << static_cast<double>(value); }

std::istream& operator>>(std::istream& stream, NyNonNegReal& value)
{
    double extracted = 0.0;
    if (!(stream >> extracted))
        return stream;
    if (extracted >= 0.0) // false for a NaN
        value = extracted;
    else
        stream.setstate(std::ios::failbit);
    return stream;
}
