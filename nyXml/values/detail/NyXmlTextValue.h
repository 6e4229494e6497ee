// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_VALUES_DETAIL_NYXMLTEXTVALUE_H
#define NYXML_VALUES_DETAIL_NYXMLTEXTVALUE_H

template <class T>
class NyXmlBasicType;

/// Whether a class is one of the basic values and no subclass of theirs, so that its read() takes a text and nothing else.
template <class C>
inline constexpr bool isNyXmlTextValue = false;
template <class T>
inline constexpr bool isNyXmlTextValue<NyXmlBasicType<T>> = true;

#endif
