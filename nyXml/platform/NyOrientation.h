#ifndef NYXML_PLATFORM_NYORIENTATION_H
#define NYXML_PLATFORM_NYORIENTATION_H

#include <nyXml/platform/NyXmlExport.h>

/// A rotation as a quaternion, q0 being the real part.
class NYXML_EXPORT NyOrientation {
public:
    constexpr NyOrientation() noexcept = default; ///< no rotation: 1, 0, 0, 0
    /// Takes the components as they are; call normalize() for unit length.
    constexpr NyOrientation(double q0, double q1, double q2, double q3) noexcept : m_q0(q0), m_q1(q1), m_q2(q2), m_q3(q3) {}

    constexpr double q0() const noexcept { return m_q0; }
    constexpr double q1() const noexcept { return m_q1; }
    constexpr double q2() const noexcept { return m_q2; }
    constexpr double q3() const noexcept { return m_q3; }
    void set(double q0, double q1, double q2, double q3) noexcept { *this = NyOrientation(q0, q1, q2, q3); }

    /// Scales to unit length, however small or large the components are. What has it within rounding stays as it is, all zero does,
    /// and so does what holds an infinity or a NaN.
    void normalize() noexcept;

    /// Exact, without a tolerance: a quaternion and its negative are unequal although they turn alike.
    friend constexpr bool operator==(NyOrientation const& left, NyOrientation const& right) noexcept
    {
        return left.m_q0 == right.m_q0 && left.m_q1 == right.m_q1 && left.m_q2 == right.m_q2 && left.m_q3 == right.m_q3;
    }
    friend constexpr bool operator!=(NyOrientation const& left, NyOrientation const& right) noexcept { return !(left == right); }

private:
    double m_q0 = 1.0;
    double m_q1 = 0.0;
    double m_q2 = 0.0;
    double m_q3 = 0.0;
};

#endif
