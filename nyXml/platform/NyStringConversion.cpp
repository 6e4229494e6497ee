#include <nyXml/platform/NyStringConversion.h>

#include <array>
#include <charconv>

namespace {
template <class Number>
std::string shortestText(Number value)
{
    std::array<char, 32> text{}; // the longest double takes 24 bytes
    return std::string(text.data(), std::to_chars(text.data(), text.data() + text.size(), value).ptr);
}
} // namespace

std::string NyDOUBLE2STRING(double value) { return shortestText(value); }

std::string NyINT2STRING(int value) { return shortestText(value); }
