#ifndef NYXMLKIT_TESTS_MODELSUPPORT_H
#define NYXMLKIT_TESTS_MODELSUPPORT_H

#include "../ValueSupport.h"

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>

template <class Object>
Object copyOf(Object const& object)
{
    std::unique_ptr<NyXmlObject> const copy(object.clone());
    return dynamic_cast<Object const&>(*copy);
}

/// As it is written, in one line, so that a row of a test is one.
inline std::string lineOf(NyXmlObject const& object, bool withDefaults = true)
{
    std::string line;
    std::istringstream stream(writtenValue(object, withDefaults));
    for (std::string part; std::getline(stream, part);)
        line += part.substr(std::min(part.find_first_not_of(' '), part.size()));
    return line;
}

#endif
