#ifndef NYXML_PLATFORM_NYSTRINGCONVERSION_H
#define NYXML_PLATFORM_NYSTRINGCONVERSION_H

#include <nyXml/platform/NyXmlExport.h>

#include <string>

/// The shortest text that reads back to the same number, whatever the locale: "0.25", "1", "1e+30".
///
/// With or without exponent, whichever is shorter, without where both are as long: 10000 is "10000" and 100000 is "1e+05".
/// Not finite: "inf", "-inf", "nan", "-nan".
NYXML_EXPORT std::string NyDOUBLE2STRING(double value);

/// Decimal, with a minus sign where there is one and nothing else.
NYXML_EXPORT std::string NyINT2STRING(int value);

#endif
