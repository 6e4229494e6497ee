#ifndef NYXML_BENCHMARKS_TEXT_H
#define NYXML_BENCHMARKS_TEXT_H

#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>

/// Numbers from texts and texts of numbers for the peers, by the fastest means that the standard library has.
namespace bench {

/// A number in so many digits, as "%.*g" prints it.
class NumberText {
public:
    NumberText(double number, int digits)
        : m_theEnd(std::to_chars(m_theText, m_theText + sizeof m_theText - 1, number, std::chars_format::general, digits).ptr)
    {
        *m_theEnd = '\0';
    }
    explicit NumberText(unsigned int number) : m_theEnd(std::to_chars(m_theText, m_theText + sizeof m_theText - 1, number).ptr)
    {
        *m_theEnd = '\0';
    }
    NumberText(NumberText const&) = delete;
    NumberText& operator=(NumberText const&) = delete;

    char const* c_str() const { return m_theText; }
    int size() const { return static_cast<int>(m_theEnd - m_theText); }
    std::string_view view() const { return { m_theText, static_cast<std::size_t>(m_theEnd - m_theText) }; }

private:
    char m_theText[64];
    char* m_theEnd;
};

constexpr int writtenDigits = 20;

template <class T>
T numberFrom(std::string_view text)
{
    T number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

inline bool isBlank(char c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; }

/// Appends every number of a run of words; \p numbers is a container of doubles.
template <class Numbers>
void appendNumbers(std::string_view run, Numbers& numbers)
{
    char const* at = run.data();
    char const* const end = at + run.size();
    for (;;) {
        while (at != end && isBlank(*at))
            ++at;
        double number = 0.0;
        auto const result = std::from_chars(at, end, number);
        if (result.ptr == at)
            return;
        numbers.push_back(number);
        at = result.ptr;
    }
}

/// The run of words that the numbers make, ten on a line.
template <class Numbers>
std::string runOf(Numbers const& numbers)
{
    std::string run;
    run.reserve(numbers.size() * 24);
    unsigned int column = 0;
    for (double const number : numbers) {
        run += NumberText(number, writtenDigits).view();
        run += ++column % 10 == 0 ? '\n' : ' ';
    }
    return run;
}

} // namespace bench

#endif
