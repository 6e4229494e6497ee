#include <nyXmlKit/model/NyXmlDateTime.h>

#include <charconv>
#include <ostream>
#include <system_error>

namespace {

using std::chrono::minutes;
using std::chrono::nanoseconds;
using std::chrono::seconds;

constexpr seconds wholeDay = std::chrono::hours(24);

struct Civil {
    std::int64_t year;
    unsigned int month;
    unsigned int day;
};

// Days since 1970 in the proleptic Gregorian calendar, and back, counted in eras of 400 years that begin in March, so that a leap day is
// the last day of its year.
std::int64_t daysOf(Civil date) noexcept
{
    std::int64_t const year = date.year - (date.month <= 2 ? 1 : 0);
    std::int64_t const era = (year >= 0 ? year : year - 399) / 400;
    std::int64_t const yearOfEra = year - era * 400;
    std::int64_t const dayOfYear = (153 * (date.month > 2 ? date.month - 3 : date.month + 9) + 2) / 5 + date.day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

Civil civilOf(std::int64_t days) noexcept
{
    days += 719468;
    std::int64_t const era = (days >= 0 ? days : days - 146096) / 146097;
    std::int64_t const dayOfEra = days - era * 146097;
    std::int64_t const yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    std::int64_t const dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    std::int64_t const shifted = (5 * dayOfYear + 2) / 153;
    auto const month = static_cast<unsigned int>(shifted < 10 ? shifted + 3 : shifted - 9);
    return { yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month,
             static_cast<unsigned int>(dayOfYear - (153 * shifted + 2) / 5 + 1) };
}

/// Takes a text apart from its front. Every verb is false, and the text is not to be looked at any more, if it isn't there.
class Cursor {
public:
    explicit Cursor(std::string_view text) noexcept : m_rest(text) {}

    bool atEnd() const noexcept { return m_rest.empty(); }
    bool skip(char c) noexcept
    {
        if (m_rest.empty() || m_rest.front() != c)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }
    bool takeTwo(unsigned int& number, unsigned int least, unsigned int most) noexcept
    {
        if (countDigits() < 2)
            return false;
        number = static_cast<unsigned int>((m_rest[0] - '0') * 10 + (m_rest[1] - '0'));
        m_rest.remove_prefix(2);
        return number >= least && number <= most;
    }
    bool takeYear(std::int64_t& year) noexcept
    {
        bool const isNegative = skip('-');
        std::size_t const digits = countDigits();
        if (digits < 4 || digits > 9) // 9 digits of years are more than nanoseconds can be counted in
            return false;
        std::from_chars(m_rest.data(), m_rest.data() + digits, year);
        m_rest.remove_prefix(digits);
        year = isNegative ? -year : year;
        return true;
    }
    bool takeDate(std::int64_t& days) noexcept
    {
        Civil date{};
        if (!(takeYear(date.year) && skip('-') && takeTwo(date.month, 1, 12) && skip('-') && takeTwo(date.day, 1, 31)))
            return false;
        days = daysOf(date);
        return civilOf(days).day == date.day; // there is no 31st of April
    }
    bool takeTime(seconds& time, nanoseconds& fraction) noexcept
    {
        unsigned int hour = 0, minute = 0, second = 0;
        if (!(takeTwo(hour, 0, 24) && skip(':') && takeTwo(minute, 0, 59) && skip(':') && takeTwo(second, 0, 59)))
            return false;
        fraction = nanoseconds(0);
        if (skip('.') && !takeFraction(fraction))
            return false;
        time = std::chrono::hours(hour) + minutes(minute) + seconds(second);
        return hour < 24 || (time == wholeDay && fraction == nanoseconds(0));
    }
    bool takeZone(NyXmlZone& zone) noexcept
    {
        zone.reset();
        if (skip('Z')) {
            zone = minutes(0);
            return true;
        }
        bool const isWest = skip('-');
        if (!isWest && !skip('+'))
            return true;
        unsigned int hour = 0, minute = 0;
        if (!(takeTwo(hour, 0, 14) && skip(':') && takeTwo(minute, 0, hour == 14 ? 0 : 59)))
            return false;
        minutes const offset = std::chrono::hours(hour) + minutes(minute);
        zone = isWest ? -offset : offset;
        return true;
    }

private:
    std::size_t countDigits() const noexcept
    {
        std::size_t const end = m_rest.find_first_not_of("0123456789");
        return end == std::string_view::npos ? m_rest.size() : end;
    }
    bool takeFraction(nanoseconds& fraction) noexcept
    {
        std::size_t const digits = countDigits();
        std::int64_t count = 0;
        for (std::size_t i = 0; i < 9; ++i)
            count = count * 10 + (i < digits ? m_rest[i] - '0' : 0);
        fraction = nanoseconds(count);
        m_rest.remove_prefix(digits);
        return digits > 0;
    }

    std::string_view m_rest;
};

void appendPadded(std::string& text, std::int64_t number, std::size_t width)
{
    std::string const digits = std::to_string(number);
    text.append(digits.size() < width ? width - digits.size() : 0, '0').append(digits);
}

void appendDate(std::string& text, std::int64_t days)
{
    Civil const date = civilOf(days);
    if (date.year < 0)
        text += '-';
    appendPadded(text, date.year < 0 ? -date.year : date.year, 4);
    text += '-';
    appendPadded(text, date.month, 2);
    text += '-';
    appendPadded(text, date.day, 2);
}

void appendTime(std::string& text, seconds time, nanoseconds fraction)
{
    auto const count = time.count();
    appendPadded(text, count / 3600, 2);
    text += ':';
    appendPadded(text, count / 60 % 60, 2);
    text += ':';
    appendPadded(text, count % 60, 2);
    if (fraction == nanoseconds(0))
        return;
    text += '.';
    appendPadded(text, fraction.count(), 9);
    text.erase(text.find_last_not_of('0') + 1);
}

void appendZone(std::string& text, NyXmlZone const& zone)
{
    if (!zone)
        return;
    if (*zone == minutes(0)) {
        text += 'Z';
        return;
    }
    text += *zone < minutes(0) ? '-' : '+';
    auto const count = (*zone < minutes(0) ? -*zone : *zone).count();
    appendPadded(text, count / 60, 2);
    text += ':';
    appendPadded(text, count % 60, 2);
}

} // namespace

template class NyXmlWord<NyXmlDateTimeRules>;
template class NyXmlWord<NyXmlDateRules>;
template class NyXmlWord<NyXmlTimeRules>;

NyXmlDateTimeValue::NyXmlDateTimeValue(std::chrono::system_clock::time_point time)
    : local(std::chrono::floor<seconds>(time)),
      fraction(std::chrono::duration_cast<nanoseconds>(time - local)),
      zone(minutes(0))
{}

std::chrono::system_clock::time_point NyXmlDateTimeValue::time() const
{
    using Clock = std::chrono::system_clock;
    return std::chrono::time_point_cast<Clock::duration>(local - zone.value_or(minutes(0))) +
           std::chrono::duration_cast<Clock::duration>(fraction);
}

bool NyXmlDateTimeValue::operator<(NyXmlDateTimeValue const& other) const
{
    auto const moment = local - zone.value_or(minutes(0)), otherMoment = other.local - other.zone.value_or(minutes(0));
    return moment < otherMoment || (moment == otherMoment && fraction < other.fraction);
}

NyXmlDateValue::NyXmlDateValue(std::int64_t year, unsigned int month, unsigned int dayOfMonth)
    : day(Days(daysOf({ year, month, dayOfMonth })))
{}

bool NyXmlDateTimeRules::take(NyXmlDateTimeValue& value, std::string_view text) noexcept
{
    Cursor cursor(text);
    NyXmlDateTimeValue taken;
    std::int64_t days = 0;
    seconds time(0);
    if (!(cursor.takeDate(days) && cursor.skip('T') && cursor.takeTime(time, taken.fraction) && cursor.takeZone(taken.zone) &&
          cursor.atEnd()))
        return false;
    taken.local = NyXmlDateTimeValue::Local(days * wholeDay + time);
    value = taken;
    return true;
}

std::string NyXmlDateTimeRules::give(NyXmlDateTimeValue const& value)
{
    auto const days = std::chrono::floor<NyXmlDateValue::Days>(value.local.time_since_epoch());
    std::string text;
    appendDate(text, days.count());
    text += 'T';
    appendTime(text, value.local.time_since_epoch() - days, value.fraction);
    appendZone(text, value.zone);
    return text;
}

bool NyXmlDateRules::take(NyXmlDateValue& value, std::string_view text) noexcept
{
    Cursor cursor(text);
    NyXmlDateValue taken;
    std::int64_t days = 0;
    if (!(cursor.takeDate(days) && cursor.takeZone(taken.zone) && cursor.atEnd()))
        return false;
    taken.day = NyXmlDateValue::Day(NyXmlDateValue::Days(days));
    value = taken;
    return true;
}

std::string NyXmlDateRules::give(NyXmlDateValue const& value)
{
    std::string text;
    appendDate(text, value.day.time_since_epoch().count());
    appendZone(text, value.zone);
    return text;
}

bool NyXmlTimeRules::take(NyXmlTimeValue& value, std::string_view text) noexcept
{
    Cursor cursor(text);
    NyXmlTimeValue taken;
    seconds time(0);
    nanoseconds fraction(0);
    if (!(cursor.takeTime(time, fraction) && cursor.takeZone(taken.zone) && cursor.atEnd()))
        return false;
    taken.sinceMidnight = time % wholeDay + fraction;
    value = taken;
    return true;
}

std::string NyXmlTimeRules::give(NyXmlTimeValue const& value)
{
    auto const time = std::chrono::floor<seconds>(value.sinceMidnight);
    std::string text;
    appendTime(text, time, value.sinceMidnight - time);
    appendZone(text, value.zone);
    return text;
}

std::ostream& operator<<(std::ostream& stream, NyXmlDateTimeValue const& value)
{
    return stream << NyXmlDateTimeRules::give(value);
}
std::ostream& operator<<(std::ostream& stream, NyXmlDateValue const& value) { return stream << NyXmlDateRules::give(value); }
std::ostream& operator<<(std::ostream& stream, NyXmlTimeValue const& value) { return stream << NyXmlTimeRules::give(value); }

void NyXmlTextOf<NyXmlDateTimeValue>::give(NyXmlWriter& writer, NyXmlDateTimeValue const& value)
{
    NyXmlWordWork::give(writer, typeid(value), NyXmlDateTimeRules::give(value));
}
void NyXmlTextOf<NyXmlDateValue>::give(NyXmlWriter& writer, NyXmlDateValue const& value)
{
    NyXmlWordWork::give(writer, typeid(value), NyXmlDateRules::give(value));
}
void NyXmlTextOf<NyXmlTimeValue>::give(NyXmlWriter& writer, NyXmlTimeValue const& value)
{
    NyXmlWordWork::give(writer, typeid(value), NyXmlTimeRules::give(value));
}
