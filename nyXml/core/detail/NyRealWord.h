// In-house, no part of the face: for the sources of the library, and not installed.

#ifndef NYXML_CORE_DETAIL_NYREALWORD_H
#define NYXML_CORE_DETAIL_NYREALWORD_H

/// The number of an everyday word of a run of reals: digits with a point among them, perhaps a minus in front, white space behind. The
/// same number as std::from_chars, in half the time, since the end of the word is found first and so the processor works on some words
/// at once.
/// \return the end of the word. Null, and the value is as it was, for all other words, long ones, and those in the last bytes of the text
char const* nyTakeRealWord(char const* begin, char const* end, double& value) noexcept;

#endif
