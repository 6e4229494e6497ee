#include <nyXml/core/detail/NyRealWord.h>

#ifdef __SSE2__ // of every processor of 64 bits whose bytes come in this order; elsewhere all words go the other way

#include <emmintrin.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

__extension__ using Wide = unsigned __int128;

constexpr std::uint32_t mostDigits = 19; ///< that are sure to fit in 64 bits
constexpr std::uint32_t mostPlaces = 16; ///< behind the point
constexpr std::uint32_t mostWhole = 8;   ///< in front of it

/// 2^n / 5^places, rounded up, where n makes it a number of 128 bits.
constexpr std::array<Wide, mostPlaces + 1> reciprocals = [] {
    std::array<Wide, mostPlaces + 1> table{};
    table[0] = Wide{ 1 } << 127;
    std::uint64_t power = 1;
    for (std::size_t places = 1; places < table.size(); ++places) {
        power *= 5;
        Wide rest = 1;
        while (rest < power)
            rest *= 2;
        Wide quotient = 0;
        for (int bit = 0; bit != 128; ++bit) { // by hand: the dividend has more than 128 bits
            bool const fits = rest >= power;
            quotient = 2 * quotient + (fits ? 1 : 0);
            rest = 2 * (fits ? rest - power : rest);
        }
        table[places] = quotient + 1;
    }
    return table;
}();

std::uint64_t high(Wide value) noexcept { return static_cast<std::uint64_t>(value >> 64); }
std::uint64_t low(Wide value) noexcept { return static_cast<std::uint64_t>(value); }

/// The bits of digits / 10^places, rounded to the nearest double. With so few places a product with 128 bits of the power always tells on
/// which side of the middle between two doubles the number is (Lemire, Number Parsing at a Gigabyte per Second, 2021), and with so few
/// digits in front of the point it never is that middle.
std::uint64_t nearestDouble(std::uint64_t digits, int places) noexcept
{
    if (digits == 0)
        return 0;
    int const zeros = __builtin_clzll(digits);
    digits <<= zeros;
    Wide const power = reciprocals[static_cast<std::size_t>(places)];
    Wide product = Wide{ digits } * high(power);
    constexpr std::uint64_t dropped = 0x1ff;  // the bits below those that the rounding looks at
    if ((high(product) & dropped) == dropped) // what the rest of the power adds may matter
        product += high(Wide{ digits } * low(power));
    int const top = static_cast<int>(high(product) >> 63);
    int const shift = top + 9; // leaves 53 bits and one for rounding
    std::uint64_t mantissa = high(product) >> shift;
    mantissa = (mantissa + (mantissa & 1)) >> 1;
    // 63 and -zeros for where the digits stood, and the binary exponent of the power of ten.
    int exponent = 1023 + 63 - zeros + top + ((-places * 217706) >> 16);
    if (mantissa == std::uint64_t{ 1 } << 53) {
        mantissa >>= 1;
        ++exponent;
    }
    constexpr std::uint64_t hidden = std::uint64_t{ 1 } << 52;
    return (mantissa & ~hidden) | static_cast<std::uint64_t>(exponent) << 52;
}

constexpr std::array<std::uint32_t, 9> powersOfTen = { 1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000 };

/// The value of some of the eight bytes at the text, of the first ones, that are digits.
std::uint64_t valueOf(std::uint64_t digits, std::size_t count) noexcept
{
    std::uint64_t bytes = count == 0 ? 0 : digits << (64 - 8 * count); // zeros in front of fewer
    bytes = (bytes * 10 + (bytes >> 8)) & 0x00ff00ff00ff00ffu;         // pairs of digits,
    bytes = (bytes * 100 + (bytes >> 16)) & 0x0000ffff0000ffffu;       // pairs of those,
    return (bytes * 10000 + (bytes >> 32)) & 0x00000000ffffffffu;      // and of those
}

/// Eight bytes, digits among them as their values.
std::uint64_t eightAt(char const* text) noexcept
{
    std::uint64_t bytes;
    std::memcpy(&bytes, text, sizeof(bytes));
    return bytes ^ 0x3030303030303030u;
}

/// A bit for each of 16 bytes that is no digit.
std::uint32_t othersIn(char const* text) noexcept
{
    __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(text));
    __m128i const moved = _mm_add_epi8(bytes, _mm_set1_epi8(static_cast<char>(-128 - '0'))); // digits are the ten least now
    return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpgt_epi8(moved, _mm_set1_epi8(-128 + 9))));
}

} // namespace

char const* nyTakeRealWord(char const* begin, char const* end, double& value) noexcept
{
    if (end - begin < 32)
        return nullptr;
    std::uint32_t others = othersIn(begin) | othersIn(begin + 16) << 16;
    std::uint32_t const sign = others & 1;
    others &= ~sign;
    std::uint32_t const behindPoint = others & (others - 1);
    if (behindPoint == 0)
        return nullptr;
    auto const point = static_cast<std::uint32_t>(__builtin_ctz(others));
    auto const size = static_cast<std::uint32_t>(__builtin_ctz(behindPoint));
    std::uint32_t const places = size - point - 1;
    std::uint32_t const whole = point - sign;
    // A sign is there or not at random: a branch on it would be guessed wrong each other time.
    bool const isOdd = ((sign != 0) & (*begin != '-')) | (begin[point] != '.') | (whole - 1 >= mostWhole) |
                       (places - 1 >= mostPlaces) | (whole + places > mostDigits);
    if (isOdd)
        return nullptr;
    std::uint32_t const first = std::min(places, 8u);
    std::uint64_t digits = valueOf(eightAt(begin + sign), whole);
    digits = digits * powersOfTen[first] + valueOf(eightAt(begin + point + 1), first);
    digits = digits * powersOfTen[places - first] + valueOf(eightAt(begin + point + 9), places - first);
    std::uint64_t const bits = nearestDouble(digits, static_cast<int>(places)) | std::uint64_t{ sign } << 63;
    std::memcpy(&value, &bits, sizeof(value));
    return begin + size;
}

#else

char const* nyTakeRealWord(char const*, char const*, double&) noexcept { return nullptr; }

#endif
