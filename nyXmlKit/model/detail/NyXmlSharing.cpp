#include <nyXmlKit/model/detail/NyXmlSharing.h>

#include <nyXml/core/NyToken.h>
#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Met {
    std::shared_ptr<NyXmlObject> object;
    bool isRead = false; ///< its own element was there
};

struct Document {
    std::map<std::string, Met> met;
    std::map<NyXmlObject const*, unsigned int> numbers;
};

thread_local unsigned int theDepth = 0;
thread_local std::unique_ptr<Document> theDocument; ///< null outside of any scope

NyToken const& idToken()
{
    static NyToken const token(NyXmlSharing::numberName);
    return token;
}
NyToken const& refToken()
{
    static NyToken const token(NyXmlSharing::referenceName);
    return token;
}

} // namespace

std::atomic<bool> NyXmlSharing::theUse{ false };

bool NyXmlSharing::setInUse() noexcept
{
    theUse.store(true, std::memory_order_relaxed);
    return true;
}

void NyXmlSharing::enter()
{
    if (theDepth++ == 0)
        theDocument = std::make_unique<Document>();
}

void NyXmlSharing::leave()
{
    if (--theDepth != 0)
        return;
    for (auto const& [number, met] : theDocument->met)
        if (!met.isRead)
            Ny::Print::write(Ny::Print::FAULT, "NyXmlShared Error: no object has the number %s.\n", number.c_str());
    theDocument.reset();
}

std::shared_ptr<NyXmlObject> NyXmlSharing::objectOfElement(NyXmlReader& reader, std::shared_ptr<NyXmlObject> (*make)(),
                                                           bool& isHere)
{
    isHere = true;
    if (reader.remainingNumOfAttributes() == 0)
        return make();
    std::string const id = reader.attributeValue(idToken());
    std::string const ref = reader.attributeValue(refToken());
    isHere = ref.empty();
    std::string const& number = isHere ? id : ref;
    if (number.empty() || !theDocument)
        return make();
    Met& met = theDocument->met[number];
    if (!met.object || (isHere && met.isRead)) // the later one of two with the same number counts from here on
        met.object = make();
    met.isRead = met.isRead || isHere;
    return met.object;
}

bool NyXmlSharing::skip(NyXmlReader& reader, bool isOfClass)
{
    if (!isOfClass)
        Ny::Print::write(Ny::Print::FAULT,
                         "NyXmlShared Error: file not valid.\n\tThe number is of another class.\n\tFile: %s\n\tLine: %d\n",
                         reader.filename(), reader.lineCountOfFile());
    if (reader.mode() == NyXmlFileReader::XML_READER_START_TAG)
        reader.nextMatchingEndTag();
    return isOfClass;
}

bool NyXmlSharing::beginsHere(NyXmlWriter& writer, NyXmlObject const& object, bool isShared)
{
    if (!isShared || !theDocument)
        return true;
    auto const [place, isNew] = theDocument->numbers.emplace(&object, static_cast<unsigned int>(theDocument->numbers.size() + 1));
    writer.setAttributeName(isNew ? idToken() : refToken());
    writer << place->second;
    return isNew;
}

bool NyXmlSharing::areEqual(NyXmlObject const* one, NyXmlObject const* two)
{
    if (one == two || one == nullptr || two == nullptr)
        return one == two;
    thread_local std::vector<std::pair<NyXmlObject const*, NyXmlObject const*>> pairs;
    auto const pair = std::make_pair(one, two);
    if (std::find(pairs.begin(), pairs.end(), pair) != pairs.end())
        return true;
    pairs.push_back(pair);
    bool const result = one->equality(two);
    pairs.pop_back();
    return result;
}
