#include <nyXml/writer/NyDecimalText.h>

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

/// value * 10^scale, cut to an integer, and what was cut off.
struct Scaled {
    Wide integer;
    Wide rest;
    Wide half; ///< of the unit in which the rest is counted; 0 if nothing can be cut off
};

Scaled scale(std::uint64_t mantissa, int binaryExponent, int decimalScale)
{
    Wide const product = powersOfFive[static_cast<std::size_t>(decimalScale)] * mantissa;
    int const shift = binaryExponent + decimalScale; // 10^n is 5^n * 2^n
    if (shift >= 0)
        return { product << shift, 0, 0 };
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
    if (scaled.rest > scaled.half || (scaled.rest == scaled.half && scaled.half != 0 && odd))
        ++scaled.integer;
    if (scaled.integer == smallestOfTwentyDigits * 10)
        return { smallestOfTwentyDigits, exponent + 1 };
    return { scaled.integer, exponent };
}

// Hot: every real of every document. The bytes are those of the general way below, in about half its time; benchmarks/writer has it.
std::size_t putExactly(char* target, double value)
{
    char* out = target;
    if (std::signbit(value)) {
        *out++ = '-';
        value = -value;
    }
    auto const [decimal, exponent] = toDecimal(value);

    // decimal / 10^10 in 64 bits: ten of the factors of two go by the shift
    std::uint64_t const upper = static_cast<std::uint64_t>(decimal >> 10) / (tenToThe10 >> 10);
    std::uint64_t const lower = static_cast<std::uint64_t>(decimal) - upper * tenToThe10;
    std::array<char, digitCount> digits;
    putTenDigits(digits.data(), upper);
    int length = digitCount / 2;
    if (lower != 0) {
        putTenDigits(digits.data() + digitCount / 2, lower);
        length = digitCount;
    }
    while (digits[static_cast<std::size_t>(length - 1)] == '0') // the first digit is none
        --length;
    auto put = [&out, &digits](int from, int to) { out = std::copy(digits.data() + from, digits.data() + to, out); };

    if (exponent < -4) { // 1.5e-07
        put(0, 1);
        if (length > 1) {
            *out++ = '.';
            put(1, length);
        }
        *out++ = 'e';
        *out++ = '-';
        putPair(out, static_cast<std::uint32_t>(-exponent));
        out += 2;
    } else if (exponent < 0) { // 0.0015
        out = std::copy_n("0.000", 1 - exponent, out);
        put(0, length);
    } else if (length <= exponent + 1) { // 1500
        put(0, length);
        out = std::fill_n(out, exponent + 1 - length, '0');
    } else { // 15.25
        put(0, exponent + 1);
        *out++ = '.';
        put(exponent + 1, length);
    }
    return static_cast<std::size_t>(out - target);
}

} // namespace

void NyDecimalText::assign(std::string& text, double value, int precision)
{
    double const magnitude = std::fabs(value);
    if (precision == digitCount && magnitude >= least && magnitude < limit) {
        std::array<char, 32> target; // sign, point, five more zeros or an exponent: 20 digits never need it all
        text.assign(target.data(), putExactly(target.data(), value));
        return;
    }
    if (precision < 0)
        precision = 6;
    constexpr std::size_t besidesDigits = 16; // sign, point, "0.000", exponent
    text.resize(static_cast<std::size_t>(precision) + besidesDigits);
    auto const result = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, precision);
    assert(result.ec == std::errc());
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
}
