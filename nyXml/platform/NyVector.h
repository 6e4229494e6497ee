#ifndef NYXML_PLATFORM_NYVECTOR_H
#define NYXML_PLATFORM_NYVECTOR_H

#include <nyXml/platform/NyXmlExport.h>

#include <cassert>

/// Three coordinates.
class NYXML_EXPORT NyVector {
public:
    constexpr NyVector() noexcept = default; ///< all zero
    constexpr NyVector(double x, double y, double z) noexcept : m_theCoordinates{ x, y, z } {}

    constexpr double x() const noexcept { return m_theCoordinates[0]; }
    constexpr double y() const noexcept { return m_theCoordinates[1]; }
    constexpr double z() const noexcept { return m_theCoordinates[2]; }

    void setX(double x) noexcept { m_theCoordinates[0] = x; }
    void setY(double y) noexcept { m_theCoordinates[1] = y; }
    void setZ(double z) noexcept { m_theCoordinates[2] = z; }
    void set(double x, double y, double z) noexcept { *this = NyVector(x, y, z); }

    /// \param index  0 for x, 1 for y, 2 for z; nothing else
    double operator[](unsigned int index) const noexcept
    {
        assert(index < 3);
        return m_theCoordinates[index];
    }
    double& operator[](unsigned int index) noexcept
    {
        assert(index < 3);
        return m_theCoordinates[index];
    }

    /// Exact, without a tolerance: a NaN makes two vectors unequal.
    friend constexpr bool operator==(NyVector const& left, NyVector const& right) noexcept
    {
        return left.x() == right.x() && left.y() == right.y() && left.z() == right.z();
    }
    friend constexpr bool operator!=(NyVector const& left, NyVector const& right) noexcept { return !(left == right); }

private:
    double m_theCoordinates[3] = { 0.0, 0.0, 0.0 };
};

#endif
