// In-house, no part of the face: for the sources of the library, and not installed.

#ifndef NYXML_CORE_DETAIL_NYREALWORD_H
#define NYXML_CORE_DETAIL_NYREALWORD_H

/// Takes an everyday real: digits with a point among them, perhaps a minus in front. The same number as std::from_chars, in half the time,
/// since its end is found first and so the processor works on some numbers at once. The text is good up to \p end, beyond the number.
/// \return behind the last digit. Null for all others, long ones, and those in the last bytes of the text
char const* nyTakeRealWord(char const* begin, char const* end, double& value) noexcept;

#endif
