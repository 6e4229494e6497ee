#ifndef NYXMLKIT_MODEL_NYXMLDATETIME_H
#define NYXMLKIT_MODEL_NYXMLDATETIME_H

#include <nyXmlKit/model/NyXmlWord.h>

#include <chrono>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <ratio>
#include <string>
#include <string_view>

/// Offset of local time from UTC in minutes, up to 14 hours; nothing for a time that doesn't say where. Zero is written as Z.
using NyXmlZone = std::optional<std::chrono::minutes>;

/// A date and a time of day, as XSD's dateTime: 2010-09-12T10:20:30.5+02:00.
struct NYXML_EXPORT NyXmlDateTimeValue {
    using Local = std::chrono::time_point<std::chrono::system_clock, std::chrono::seconds>;

    Local local{};                       ///< what the clock on the wall says, as if it stood in UTC
    std::chrono::nanoseconds fraction{}; ///< of the second; 0 to 999999999
    NyXmlZone zone;

    NyXmlDateTimeValue() = default;
    /// In UTC.
    explicit NyXmlDateTimeValue(std::chrono::system_clock::time_point time);
    /// The moment in UTC; a time without zone is taken for one in UTC.
    std::chrono::system_clock::time_point time() const;

    /// The same text: one moment told in two zones is not equal.
    bool operator==(NyXmlDateTimeValue const& other) const
    {
        return local == other.local && fraction == other.fraction && zone == other.zone;
    }
    bool operator<(NyXmlDateTimeValue const& other) const; ///< by the moment
};

/// A day, as XSD's date: 2010-09-12.
struct NYXML_EXPORT NyXmlDateValue {
    using Days = std::chrono::duration<std::int64_t, std::ratio<86400>>;
    using Day = std::chrono::time_point<std::chrono::system_clock, Days>;

    Day day{};
    NyXmlZone zone;

    NyXmlDateValue() = default;
    /// \param month  1 to 12  \param dayOfMonth  1 to 31
    NyXmlDateValue(std::int64_t year, unsigned int month, unsigned int dayOfMonth);
    bool operator==(NyXmlDateValue const& other) const { return day == other.day && zone == other.zone; }
    bool operator<(NyXmlDateValue const& other) const { return day < other.day; }
};

/// A time of day, as XSD's time: 10:20:30.
struct NYXML_EXPORT NyXmlTimeValue {
    std::chrono::nanoseconds sinceMidnight{};
    NyXmlZone zone;

    bool operator==(NyXmlTimeValue const& other) const { return sinceMidnight == other.sinceMidnight && zone == other.zone; }
    bool operator<(NyXmlTimeValue const& other) const { return sinceMidnight < other.sinceMidnight; }
};

// Digits behind the ninth of a second are dropped, and zeros at its end are not written: else a text comes back as it was. 24:00:00 is
// midnight of the next day. There is no leap second.
struct NYXML_EXPORT NyXmlDateTimeRules : NyXmlWordRules<NyXmlDateTimeValue> {
    static constexpr char const* typeWord = "dateTime";
    static bool take(NyXmlDateTimeValue& value, std::string_view text) noexcept;
    static std::string give(NyXmlDateTimeValue const& value);
};
struct NYXML_EXPORT NyXmlDateRules : NyXmlWordRules<NyXmlDateValue> {
    static constexpr char const* typeWord = "date";
    static bool take(NyXmlDateValue& value, std::string_view text) noexcept;
    static std::string give(NyXmlDateValue const& value);
};
struct NYXML_EXPORT NyXmlTimeRules : NyXmlWordRules<NyXmlTimeValue> {
    static constexpr char const* typeWord = "time";
    static bool take(NyXmlTimeValue& value, std::string_view text) noexcept;
    static std::string give(NyXmlTimeValue const& value);
};

/// As they are written, for visitors.
NYXML_EXPORT std::ostream& operator<<(std::ostream& stream, NyXmlDateTimeValue const& value);
NYXML_EXPORT std::ostream& operator<<(std::ostream& stream, NyXmlDateValue const& value);
NYXML_EXPORT std::ostream& operator<<(std::ostream& stream, NyXmlTimeValue const& value);

// The words use their rules alone; these satisfy what NyXmlBasicType asks of a type.
template <>
struct NYXML_EXPORT NyXmlTextOf<NyXmlDateTimeValue> : NyXmlDateTimeRules {
    static constexpr bool isWord = true;
    static void give(NyXmlWriter& writer, NyXmlDateTimeValue const& value);
};
template <>
struct NYXML_EXPORT NyXmlTextOf<NyXmlDateValue> : NyXmlDateRules {
    static constexpr bool isWord = true;
    static void give(NyXmlWriter& writer, NyXmlDateValue const& value);
};
template <>
struct NYXML_EXPORT NyXmlTextOf<NyXmlTimeValue> : NyXmlTimeRules {
    static constexpr bool isWord = true;
    static void give(NyXmlWriter& writer, NyXmlTimeValue const& value);
};

using NyXmlDateTime = NyXmlWord<NyXmlDateTimeRules>;
using NyXmlDate = NyXmlWord<NyXmlDateRules>;
using NyXmlTime = NyXmlWord<NyXmlTimeRules>;

extern template class NyXmlWord<NyXmlDateTimeRules>;
extern template class NyXmlWord<NyXmlDateRules>;
extern template class NyXmlWord<NyXmlTimeRules>;

#endif
