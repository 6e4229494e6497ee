#include <nyXml/writer/detail/NyDecimalText.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {

__extension__ using Wide = unsigned __int128;

constexpr int digitCount = 20;
constexpr int defaultPrecision = 6;

// The range of the exact conversion. With 53 bits of the number and up to 75 of a power of five, a product just fits in 128 bits.
constexpr int leastExponent = -12;
constexpr double least = 1e-12;
constexpr double limit = 1e20;
constexpr int greatestScale = digitCount - 1 - leastExponent + 1; // one more for an exponent that was guessed too high

constexpr std::array<Wide, greatestScale + 1> powersOfFive = [] {
    std::array<Wide, greatestScale + 1> table{};
    table[0] = 1;
    for (std::size_t i = 1; i < table.size(); ++i)
        table[i] = table[i - 1] * 5;
    return table;
}();

/// 10^-12 to 10^20. Those below 1 are rounded, so that a comparison with them may be wrong for one number.
constexpr std::array<double, digitCount - leastExponent + 1> powersOfTen = {
    1e-12, 1e-11, 1e-10, 1e-9, 1e-8, 1e-7, 1e-6, 1e-5, 1e-4, 1e-3, 1e-2, 1e-1, 1e0,  1e1,  1e2,  1e3,  1e4,
    1e5,   1e6,   1e7,   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20,
};

constexpr Wide smallestOfTwentyDigits = Wide{ 10000000000000000000u };
constexpr std::uint64_t tenToThe10 = 10000000000u;

/// Pairs of digits, "00" to "99".
constexpr std::array<char, 200> pairs = [] {
    std::array<char, 200> table{};
    for (std::size_t i = 0; i < 100; ++i) {
        table[2 * i] = static_cast<char>('0' + i / 10);
        table[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return table;
}();

void putPair(char* target, std::uint32_t value) { std::memcpy(target, &pairs[2 * value], 2); }

void putTenDigits(char* target, std::uint64_t value)
{
    auto const high = static_cast<std::uint32_t>(value / 100000000);
    auto const low = static_cast<std::uint32_t>(value % 100000000);
    std::uint32_t const upper = low / 10000;
    std::uint32_t const lower = low % 10000;
    putPair(target, high);
    putPair(target + 2, upper / 100);
    putPair(target + 4, upper % 100);
    putPair(target + 6, lower / 100);
    putPair(target + 8, lower % 100);
}

/// Twenty digits and the decimal exponent of the first one.
struct Decimal {
    Wide digits;
    int exponent;
};

/// A sign, twenty digits, a point and either "0.000" or an exponent, twice over.
constexpr std::size_t exactRoom = 64;

/// value * 10^scale, cut to an integer, and what was cut off.
struct Scaled {
    Wide integer;
    Wide rest;
    Wide half; ///< half a unit of the integer, in the measure of the rest
};

Scaled scale(std::uint64_t mantissa, int binaryExponent, int decimalScale)
{
    Wide const product = powersOfFive[static_cast<std::size_t>(decimalScale)] * mantissa;
    int const shift = binaryExponent + decimalScale; // 10^n is 5^n * 2^n
    if (shift >= 0)
        return { product << shift, 0, 1 }; // nothing is cut off, and less than a half it is
    return { product >> -shift, product & ((Wide{ 1 } << -shift) - 1), Wide{ 1 } << (-shift - 1) };
}

/// The exact value rounded to twenty digits, half to even. Positive values from `least` up to `limit`.
Decimal toDecimal(double value)
{
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    std::uint64_t const mantissa = (bits & 0xfffffffffffffu) | 0x10000000000000u;
    int const topBit = static_cast<int>(bits >> 52) - 1023;

    // log10(2) in 18 bits is close enough: the guess is right or one too low, and the comparison sets that right.
    int exponent = topBit * 78913 >> 18;
    if (value >= powersOfTen[static_cast<std::size_t>(exponent + 1 - leastExponent)])
        ++exponent;
    Scaled scaled = scale(mantissa, topBit - 52, digitCount - 1 - exponent);
    if (scaled.integer < smallestOfTwentyDigits) { // the power of ten was a rounded one, above the true one
        --exponent;
        scaled = scale(mantissa, topBit - 52, digitCount - 1 - exponent);
    }
    bool const odd = (scaled.integer & 1) != 0;
    if (scaled.rest > scaled.half || (scaled.rest == scaled.half && odd))
        ++scaled.integer;
    // Never rounded up to 21 digits: the closest any double of the range comes to a power of ten from below is 2e-17 of it.
    assert(scaled.integer < smallestOfTwentyDigits * 10);
    return { scaled.integer, exponent };
}

// Hot: every real of every document. The bytes are those of the general way below, in less than half its time; benchmarks/ has it.
// Copies have fixed lengths and go beyond what counts, since a copy of unknown length costs as much as ten digits.
char* putExactly(char* out, double value) noexcept
{
    *out = '-';
    out += std::signbit(value) ? 1 : 0;
    auto const [decimal, exponent] = toDecimal(std::fabs(value));

    // decimal / 10^10 in 64 bits: ten of the factors of two go by the shift
    std::uint64_t const upper = static_cast<std::uint64_t>(decimal >> 10) / (tenToThe10 >> 10);
    std::uint64_t const lower = static_cast<std::uint64_t>(decimal) - upper * tenToThe10;
    std::array<char, 2 * digitCount> digits{};
    putTenDigits(digits.data(), upper);
    putTenDigits(digits.data() + digitCount / 2, lower);
    int length = lower != 0 ? digitCount : digitCount / 2;
    while (digits[static_cast<std::size_t>(length - 1)] == '0') // the first digit is none
        --length;

    if (exponent < -4) { // 1.5e-07; none of these has one digit alone
        std::memcpy(out + 1, digits.data(), digitCount);
        out[0] = digits[0];
        out[1] = '.';
        out += length + 1;
        std::memcpy(out, "e-", 2);
        putPair(out + 2, static_cast<std::uint32_t>(-exponent));
        out += 4;
    } else if (exponent < 0) { // 0.0015
        std::memcpy(out, "0.000", 5);
        std::memcpy(out + 1 - exponent, digits.data(), digitCount);
        out += 1 - exponent + length;
    } else { // 1500, 15.25
        int const whole = exponent + 1;
        std::memcpy(out, digits.data(), digitCount);
        std::memcpy(out + whole + 1, digits.data() + whole, digitCount);
        out[whole] = '.';
        out += length > whole ? length + 1 : whole;
    }
    return out;
}

} // namespace

std::size_t NyDecimalText::room(int precision) noexcept
{
    constexpr std::size_t besidesDigits = 16; // sign, point, "0.000", exponent
    std::size_t const digits = static_cast<std::size_t>(precision < 0 ? defaultPrecision : precision);
    return std::max(exactRoom, besidesDigits + digits);
}

char* NyDecimalText::put(char* target, double value, int precision) noexcept
{
    double const magnitude = std::fabs(value);
    if (precision == digitCount && magnitude >= least && magnitude < limit)
        return putExactly(target, value);
    auto const result = std::to_chars(target, target + room(precision), value, std::chars_format::general,
                                      precision < 0 ? defaultPrecision : precision);
    assert(result.ec == std::errc());
    return result.ptr;
}
