#include <nyXml/compound/NyXmlFactory.h>

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyDllLoader.h>
#include <nyXml/platform/NyPrint.h>

#include <ostream>

namespace {

// What a plug-in exports.
using ClassTokenAccessor = NyToken const* (*)(int index);
using CreatorAccessor = NyXmlCreator (*)(int index);

constexpr int noticeType = Ny::Print::NOTICE;
constexpr int faultType = Ny::Print::FAULT;

template <class Accessor>
Accessor accessorOf(NyDllLoader& loader, char const* name)
{
    return reinterpret_cast<Accessor>(loader.getFunction(name));
}

std::string extensionOf(std::string const& library)
{
    std::size_t const dot = library.rfind('.');
    return dot == std::string::npos ? std::string() : library.substr(dot + 1);
}

} // namespace

NyBaseXmlFactory::~NyBaseXmlFactory() = default;

NyXmlFactory::~NyXmlFactory() = default;

void NyXmlFactory::registerComponentCreator(NyToken const& token, NyXmlCreator creator) { m_CreatorMap[token] = creator; }

void NyXmlFactory::registerComponentCreator(NyToken const* token, NyXmlCreator creator)
{
    registerComponentCreator(*token, creator);
}

NyXmlObject* NyXmlFactory::newObjectFromToken(NyToken const& token) const
{
    auto const entry = m_CreatorMap.find(token);
    return entry == m_CreatorMap.end() ? nullptr : entry->second();
}

bool NyXmlFactory::loadLibrary(std::string const& library)
{
    std::string const location = __PRETTY_FUNCTION__;
    auto const complain = [&location](char const* sentence, std::string const& name = std::string()) {
        Ny::Print::ostream(faultType, location) << sentence << name << std::endl;
        return false;
    };

    if (library.empty())
        return complain("NyXmlFactory::loadLibrary -- library attribute string is empty");
    NyDllLoader loader;
    if (loader.loadDll(library, extensionOf(library), false) == nullptr)
        return complain("NyXmlFactory::loadLibrary -- handle to shared library is not valid ", library);
    auto const classToken = accessorOf<ClassTokenAccessor>(loader, "getClassToken");
    if (classToken == nullptr)
        return complain("NyXmlFactory::loadLibrary -- getClassToken accessor not found in shared library ", library);
    auto const creatorOf = accessorOf<CreatorAccessor>(loader, "getCreator");
    if (creatorOf == nullptr)
        return complain("NyXmlFactory::loadLibrary -- getCreator accessor not found in shared library ", library);

    NyToken const endOfList;
    int count = 0;
    for (;; ++count) {
        NyToken const* const token = classToken(count);
        if (*token == endOfList)
            break;
        NyXmlCreator const creator = creatorOf(count);
        if (creator == nullptr)
            break;
        registerComponentCreator(token, creator);
    }
    Ny::Print::ostream(noticeType, location) << "NyXmlFactory::loadLibrary -- loaded shared library: " << library << "  with  "
                                             << count << " NyXmlObject creators " << std::endl;
    return true;
}

NyXmlFactory::CreatorMap const& NyXmlFactory::creatorMap() const { return m_CreatorMap; }

// As maps compare: sizes, then tokens and creators place by place.
bool NyXmlFactory::operator==(NyXmlFactory const& other) const
{
    return NyBaseXmlFactory::operator==(other) && m_CreatorMap == other.m_CreatorMap;
}
