#include <nyXmlKit/standard/detail/NyXmlStandardParser.h>

#include <nyXmlKit/standard/detail/NyXmlMarkup.h>

#include <expat.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace {

constexpr int blockSize = 16384;
constexpr std::size_t mostEvents = 8192;
constexpr std::size_t mostText = std::size_t{ 1 } << 20;

} // namespace

using Event = NyXmlStandardParser::Event;

/// What Expat calls. Nothing may be thrown through it.
struct NyXmlStandardParser::Handlers {
    template <class Action>
    static void guarded(void* data, Action action)
    {
        auto& self = *static_cast<NyXmlStandardParser*>(data);
        try {
            action(self);
        } catch (...) {
            if (!self.m_exception)
                self.m_exception = std::current_exception();
            XML_StopParser(self.m_parser.get(), XML_FALSE);
        }
    }
    static void start(void* data, XML_Char const* name, XML_Char const** attributes)
    {
        guarded(data, [=](NyXmlStandardParser& self) { self.start(name, attributes); });
    }
    static void end(void* data, XML_Char const*)
    {
        guarded(data, [](NyXmlStandardParser& self) { self.end(); });
    }
    static void text(void* data, XML_Char const* text, int size)
    {
        guarded(data, [=](NyXmlStandardParser& self) { self.text({ text, static_cast<std::size_t>(size) }); });
    }
    static void comment(void* data, XML_Char const* text)
    {
        guarded(data, [=](NyXmlStandardParser& self) { self.markup("<!--", text, "-->"); });
    }
    static void instruction(void* data, XML_Char const* target, XML_Char const* text)
    {
        guarded(data, [=](NyXmlStandardParser& self) {
            self.markup("<?", *text == '\0' ? std::string(target) : std::string(target) + ' ' + text, "?>");
        });
    }
    static void raw(void* data, XML_Char const* text, int size)
    {
        guarded(data, [=](NyXmlStandardParser& self) {
            if (self.m_wantsRaw)
                self.m_raw.append(text, static_cast<std::size_t>(size));
        });
    }
    static void declaration(void* data, XML_Char const*, int isParameter, XML_Char const* value, int, XML_Char const*,
                            XML_Char const*, XML_Char const*, XML_Char const*)
    {
        if (isParameter == 0 && value != nullptr)
            static_cast<NyXmlStandardParser*>(data)->entityDeclared();
    }
    static void skipped(void* data, XML_Char const* name, int isParameter)
    {
        if (isParameter == 0)
            guarded(data, [=](NyXmlStandardParser& self) { self.note("Entity ", name, " is not declared here, and left out"); });
    }
    static int external(XML_Parser parser, XML_Char const*, XML_Char const*, XML_Char const* system, XML_Char const*)
    {
        guarded(XML_GetUserData(parser), [=](NyXmlStandardParser& self) {
            self.note("External entity ", system != nullptr ? system : "", " is not fetched, and left out");
        });
        return XML_STATUS_OK;
    }
};

void NyXmlStandardParser::Free::operator()(XML_ParserStruct* parser) const noexcept { XML_ParserFree(parser); }

NyXmlStandardParser::NyXmlStandardParser(std::istream& stream, std::function<bool()> mayReadOn)
    : m_input(stream),
      m_mayReadOn(std::move(mayReadOn))
{}

NyXmlStandardParser::~NyXmlStandardParser() = default;

void NyXmlStandardParser::begin()
{
    m_parser.reset(XML_ParserCreate(m_input.begin()));
    XML_Parser const parser = m_parser.get();
    if (parser == nullptr)
        throw std::bad_alloc();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, &Handlers::start, &Handlers::end);
    XML_SetCharacterDataHandler(parser, &Handlers::text);
    XML_SetCommentHandler(parser, &Handlers::comment);
    XML_SetProcessingInstructionHandler(parser, &Handlers::instruction);
    XML_SetEntityDeclHandler(parser, &Handlers::declaration);
    XML_SetSkippedEntityHandler(parser, &Handlers::skipped);
    XML_SetExternalEntityRefHandler(parser, &Handlers::external);
}

/// Parses on until there is an event. What entities may bring is limited by Expat itself: a hundred times the document, if it is more
/// than 8 MiB.
void NyXmlStandardParser::fill()
{
    m_events.clear();
    m_attributes.clear();
    m_textSize = 0;
    m_next = 0;
    if (!m_parser && m_mayReadOn())
        begin();
    while (m_events.empty()) {
        if (!m_parser || !m_mayReadOn()) {
            refuse();
            return;
        }
        XML_Parser const parser = m_parser.get();
        XML_Status status;
        if (m_isSuspended) {
            status = XML_ResumeParser(parser);
        } else {
            void* const buffer = XML_GetBuffer(parser, blockSize);
            if (buffer == nullptr)
                throw std::bad_alloc();
            std::size_t const size = m_input.read(static_cast<char*>(buffer), blockSize);
            m_isFinal = size == 0;
            status = XML_ParseBuffer(parser, static_cast<int>(size), m_isFinal ? 1 : 0);
        }
        m_isSuspended = status == XML_STATUS_SUSPENDED;
        if (m_exception)
            std::rethrow_exception(std::exchange(m_exception, nullptr));
        if (status == XML_STATUS_ERROR) {
            if (XML_GetErrorCode(parser) == XML_ERROR_NO_MEMORY)
                throw std::bad_alloc();
            add(Event::Kind::FAULT, XML_ErrorString(XML_GetErrorCode(parser)));
            m_events.back().column = static_cast<int>(XML_GetCurrentColumnNumber(parser)) + 1;
        } else if (status == XML_STATUS_OK && m_isFinal) {
            add(Event::Kind::END_OF_DOCUMENT, {});
        }
    }
}

/// A fault of which others have told.
void NyXmlStandardParser::refuse() { m_events.push_back({ Event::Kind::FAULT, false, 0, 0, nullptr, 0, 0 }); }

void NyXmlStandardParser::add(Event::Kind kind, std::string_view text)
{
    m_events.push_back(
        { kind, false, static_cast<int>(XML_GetCurrentLineNumber(m_parser.get())), 0, nullptr, m_textSize, text.size() });
    addText(text);
}

// Hot: once for each piece of text, and most pieces are a line end or an indentation.
inline void NyXmlStandardParser::addText(std::string_view text)
{
    std::size_t const end = m_textSize + text.size();
    if (end > m_texts.size())
        m_texts.resize(std::max<std::size_t>(2 * end, blockSize));
    if (text.size() == 1)
        m_texts[m_textSize] = text[0];
    else if (!text.empty()) // whose data may be null
        std::memcpy(m_texts.data() + m_textSize, text.data(), text.size());
    m_textSize = end;
}

void NyXmlStandardParser::limitQueue()
{
    if (m_events.size() > mostEvents || m_textSize > mostText)
        XML_StopParser(m_parser.get(), XML_TRUE);
}

void NyXmlStandardParser::start(char const* name, char const** attributes)
{
    std::size_t const first = m_attributes.size();
    for (; *attributes != nullptr; attributes += 2) {
        std::string_view const value(attributes[1]);
        m_attributes.push_back({ m_names.find(attributes[0]), value, m_textSize, false });
        addText(value);
    }
    m_events.push_back({ Event::Kind::START, false, static_cast<int>(XML_GetCurrentLineNumber(m_parser.get())), 0,
                         m_names.find(name), first, m_attributes.size() - first });
    limitQueue();
}

void NyXmlStandardParser::end()
{
    if (!m_events.empty() && m_events.back().kind == Event::Kind::START && isEmptyTag())
        m_events.back().isEmpty = true;
    else
        add(Event::Kind::END, {});
    limitQueue();
}

/// The end that Expat makes of an empty tag takes up no bytes.
bool NyXmlStandardParser::isEmptyTag()
{
    return m_hasEntities ? rawText().empty() : XML_GetCurrentByteCount(m_parser.get()) == 0;
}

void NyXmlStandardParser::text(std::string_view text)
{
    if (text.size() == 1 && NyXmlMarkup::isWhite(text[0]) && isReference())
        return add(Event::Kind::REFERENCE, text);
    if (!m_events.empty() && m_events.back().kind == Event::Kind::TEXT)
        m_events.back().size += text.size();
    else
        m_events.push_back({ Event::Kind::TEXT, false, 0, 0, nullptr, m_textSize, text.size() });
    addText(text);
    if (m_textSize > mostText)
        limitQueue();
}

/// Whether one character of text is written as "&#9;" or longer, not as itself or a line end.
bool NyXmlStandardParser::isReference()
{
    if (m_hasEntities)
        return rawText().substr(0, 1) == "&";
    return XML_GetCurrentByteCount(m_parser.get()) > (m_input.isWide() ? 4 : 2);
}

/// The current event as it is written, in UTF-8.
std::string_view NyXmlStandardParser::rawText()
{
    m_raw.clear();
    m_wantsRaw = true;
    XML_DefaultCurrent(m_parser.get());
    m_wantsRaw = false;
    return m_raw;
}

/// What comes out of an entity goes by the place of the reference: from now on the bytes of such events are looked at.
void NyXmlStandardParser::entityDeclared()
{
    m_hasEntities = true;
    XML_SetDefaultHandlerExpand(m_parser.get(), &Handlers::raw);
}

void NyXmlStandardParser::markup(std::string_view before, std::string_view text, std::string_view behind)
{
    add(Event::Kind::MARKUP, before);
    addText(text);
    addText(behind);
    m_events.back().size += text.size() + behind.size();
    limitQueue();
}

void NyXmlStandardParser::note(std::string_view before, std::string_view name, std::string_view behind)
{
    markup(before, name, behind);
    m_events.back().kind = Event::Kind::NOTE;
}
