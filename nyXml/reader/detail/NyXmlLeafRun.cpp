#include <nyXml/reader/detail/NyXmlLeafRun.h>

#include <nyXml/core/detail/NyRealWord.h>
#include <nyXml/core/detail/NyShortText.h>
#include <nyXml/core/detail/NyWhiteSpace.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/reader/detail/NyXmlShortcuts.h>
#include <nyXml/reader/detail/NyXmlTagText.h>
#include <nyXml/reader/detail/NyXmlTextSearch.h>

using NyXmlTagText::skipTo, NyXmlTextSearch::skipWhite;

namespace {

constexpr auto endsOwnValue = NyXmlTagText::tableOf({ "\0\"#<>", 5 }); // as writers of this library put it between double quotes

} // namespace

NyXmlLeafRun::NyXmlLeafRun(NyXmlReader& reader)
{
    begin(reader.plainDocument(), false);
    if (m_reader == nullptr) {
        m_shortcuts = reader.shortcuts();
        m_front = &reader;
    }
}

NyXmlLeafRun::NyXmlLeafRun(NyXmlFileReader* document, bool isBehindLeafTag) { begin(document, isBehindLeafTag); }

void NyXmlLeafRun::begin(NyXmlFileReader* file, bool isBehindLeafTag)
{
    if (file == nullptr || file->m_theWay != NyXmlFileReader::Way::IN_PLACE || file->m_theBlock.isUsedUp() ||
        file->m_theElementStack.empty() || file->m_theAttributes.remaining() != 0)
        return;
    switch (file->m_theMode) {
    case NyXmlFileReader::XML_READER_START_TAG:
    case NyXmlFileReader::XML_READER_END_TAG:
    case NyXmlFileReader::XML_READER_CONTENT: break;
    case NyXmlFileReader::XML_READER_EMPTY_TAG:
        if (!isBehindLeafTag)
            return;
        m_isBehindLeafTag = true;
        break;
    case NyXmlFileReader::XML_READER_EOF:
    case NyXmlFileReader::XML_READER_ERROR: return;
    }
    m_reader = file;
    std::string_view const rest = file->m_theBlock.rest();
    m_at = rest.data();
    m_end = rest.data() + rest.size();
}

// An exception is on its way: no other may follow.
NyXmlLeafRun::~NyXmlLeafRun()
{
    try {
        end();
    } catch (...) {}
}

char const* NyXmlLeafRun::behindTagName(std::string_view name) const noexcept
{
    if (m_reader == nullptr)
        return nullptr;
    char const* const open = skipWhite(m_at);
    bool const isHere = *open == '<' && static_cast<std::size_t>(m_end - open) > name.size() + 1 &&
                        NyShortText::same(name, { open + 1, name.size() });
    return isHere ? open + 1 + name.size() : nullptr;
}

bool NyXmlLeafRun::takeText(NyToken const& token, std::string_view& text)
{
    if (m_shortcuts != nullptr)
        return m_shortcuts->takeText(*m_front, token, text);
    char const* const start = behindTagName(token.localName());
    if (start == nullptr || *start != '>')
        return false;
    char const* const close = NyXmlTextSearch::findTag(start, static_cast<std::size_t>(m_end - start));
    if (close == nullptr || !takeTextUpTo(close, start + 1, token))
        return false;
    text = m_text;
    return true;
}

bool NyXmlLeafRun::takeReal(NyToken const& token, double& value)
{
    char const* const start = behindTagName(token.localName());
    if (start == nullptr || *start != '>')
        return false;
    double taken = 0.0;
    char const* const close = nyTakeRealWord(start + 1, m_end, taken);
    if (close == nullptr || *close != '<' || !takeTextUpTo(close, start + 1, token))
        return false;
    value = taken;
    return true;
}

bool NyXmlLeafRun::takeTextUpTo(char const* close, char const* start, NyToken const& token)
{
    std::string_view const name = token.localName();
    if (static_cast<std::size_t>(m_end - close) < name.size() + 3 || close[1] != '/' || close[name.size() + 2] != '>' ||
        !NyShortText::same(name, { close + 2, name.size() }))
        return false;
    std::string_view const text = NyWhiteSpace::trimmed({ start, static_cast<std::size_t>(close - start) });
    if (text.empty())
        return false;
    m_at = close + name.size() + 3;
    m_isAny = m_isText = true;
    m_name = &token;
    m_attributeCount = 0;
    m_text = text;
    return true;
}

template <class TakeValue>
bool NyXmlLeafRun::takeEmptyTag(NyToken const& name, NyToken const* const* attributes, std::size_t count, TakeValue takeValue)
{
    char const* at = behindTagName(name.localName());
    if (at == nullptr)
        return false;
    for (std::size_t i = 0; i != count; ++i) { // ` x="1"`
        std::string_view const attribute = attributes[i]->localName();
        char const* const start = skipWhite(at);
        if (start == at || static_cast<std::size_t>(m_end - start) < attribute.size() + 2 ||
            !NyShortText::same(attribute, { start, attribute.size() }) || start[attribute.size()] != '=' ||
            start[attribute.size() + 1] != '"')
            return false;
        at = takeValue(start + attribute.size() + 2, i);
        if (at == nullptr || *at != '"')
            return false;
        ++at;
    }
    at = skipWhite(at);
    if (at[0] != '/' || at[1] != '>')
        return false;
    m_at = at + 2;
    m_isAny = true;
    m_isText = false;
    m_name = &name;
    m_attributeCount = count;
    return true;
}

bool NyXmlLeafRun::takeAttributes(NyToken const& name, NyToken const* const* attributes, std::string_view* values,
                                  std::size_t count)
{
    if (m_shortcuts != nullptr)
        return m_shortcuts->takeAttributes(*m_front, name, attributes, values, count);
    return takeEmptyTag(name, attributes, count, [values](char const* value, std::size_t which) {
        char const* const end = skipTo(endsOwnValue, value);
        values[which] = { value, static_cast<std::size_t>(end - value) };
        return end;
    });
}

bool NyXmlLeafRun::takeReals(NyToken const& name, NyToken const* const* attributes, double* values, std::size_t count)
{
    return takeEmptyTag(name, attributes, count, [this, values](char const* value, std::size_t which) {
        return nyTakeRealWord(value, m_end, values[which]);
    });
}

// What the events would have left behind.
void NyXmlLeafRun::end()
{
    if (!m_isAny)
        return;
    m_isAny = false;
    NyXmlFileReader& reader = *m_reader;
    bool const isContentGone = reader.m_theMode == NyXmlFileReader::XML_READER_START_TAG || !m_text.empty();
    reader.m_theBlock.moveToIndex(static_cast<std::size_t>(m_at - reader.m_theBlock.text().data()));
    reader.m_theMode = m_isText ? NyXmlFileReader::XML_READER_CONTENT : NyXmlFileReader::XML_READER_EMPTY_TAG;
    reader.m_theAttributes.clear();
    reader.m_theNumOfAttributes = static_cast<unsigned int>(m_attributeCount);
    if (m_isBehindLeafTag)
        reader.m_theElementStack.pop();
    reader.m_theElementStack.push(*m_name);
    if (m_isText)
        reader.m_theElementStack.pop();
    if (isContentGone) {
        reader.m_theContentVectorFlag = false;
        reader.m_theContent.lookAt(m_text);
    }
}

bool NyXmlLeafRun::isPlainName(std::string_view name) noexcept
{
    using namespace NyXmlTagText;
    return !name.empty() && findAny(endsBareName, name) == name.size() && name != "NyInclude";
}
