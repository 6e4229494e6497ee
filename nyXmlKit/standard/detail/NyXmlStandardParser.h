// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_STANDARD_DETAIL_NYXMLSTANDARDPARSER_H
#define NYXMLKIT_STANDARD_DETAIL_NYXMLSTANDARDPARSER_H

#include <nyXmlKit/standard/detail/NyXmlStandardInput.h>
#include <nyXmlKit/standard/detail/NyXmlStandardNames.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct XML_ParserStruct;

/// Turns what Expat pushes into events that can be pulled. Part of NyXmlStandardReader.
///
/// A block of the stream is parsed at a time, and its events wait in a queue; the parser is suspended when entities bring more than a
/// queue should hold. Texts and values of the queue lie one behind the other in one string, valid until the queue is filled again.
class NyXmlStandardParser {
public:
    struct Attribute {
        NyXmlStandardName const* name;
        std::string_view value; ///< the place is known when the queue is full: see begin
        std::size_t begin;
        bool isTaken;
    };

    struct Event {
        enum class Kind : char {
            START,
            END,
            TEXT,
            REFERENCE, ///< one character of white space that a character reference gave
            MARKUP,    ///< a comment or a processing instruction
            NOTE,      ///< something of the document is lost: the text says what
            END_OF_DOCUMENT,
            FAULT, ///< not well formed: the text says why
        };
        Kind kind;
        bool isEmpty; ///< START: `<a/>`, and no END will come
        int line;
        int column;                    ///< FAULT alone
        NyXmlStandardName const* name; ///< START
        std::size_t begin;             ///< of the text; START: of the attributes
        std::size_t size;
    };

    /// \param mayReadOn  asked before each block, and for each megabyte that entities bring
    NyXmlStandardParser(std::istream& stream, std::function<bool()> mayReadOn);
    ~NyXmlStandardParser();
    NyXmlStandardParser(NyXmlStandardParser const&) = delete;
    NyXmlStandardParser& operator=(NyXmlStandardParser const&) = delete;

    /// The next event. END_OF_DOCUMENT and FAULT stay.
    Event const& peek()
    {
        if (m_next == m_events.size())
            fill();
        return m_events[m_next];
    }
    /// An event behind the next one, null if it has not been parsed yet.
    Event const* ahead(std::size_t count) const noexcept
    {
        return count < m_events.size() - m_next ? &m_events[m_next + count] : nullptr;
    }
    void pop() noexcept
    {
        Event const& event = m_events[m_next++];
        if (event.kind == Event::Kind::START && !event.isEmpty)
            ++m_depth;
        else if (event.kind == Event::Kind::END)
            --m_depth;
        ++m_passed;
    }

    /// The same for so many events in one step, which open and close alike.
    void passLeaf(std::size_t events) noexcept
    {
        m_next += events;
        m_passed += events;
    }

    /// How many elements are open where the events have been passed to, and how many events those were.
    std::size_t depth() const noexcept { return m_depth; }
    std::uint64_t passed() const noexcept { return m_passed; }

    /// Whether the next peek() makes what was handed out so far invalid.
    bool isDrained() const noexcept { return m_next == m_events.size(); }

    std::string_view textOf(Event const& event) const { return { m_texts.data() + event.begin, event.size }; }

    /// In the order of the document.
    Attribute* attributesOf(Event const& event)
    {
        Attribute* const first = m_attributes.data() + event.begin;
        for (Attribute* attribute = first; attribute != first + event.size; ++attribute)
            attribute->value = std::string_view(m_texts.data() + attribute->begin, attribute->value.size());
        return first;
    }

    NyXmlStandardInput const& input() const noexcept { return m_input; }
    std::size_t bytesHeld() const noexcept { return m_textSize; }

private:
    struct Handlers;
    struct Free {
        void operator()(XML_ParserStruct* parser) const noexcept;
    };

    void begin();
    void fill();
    void refuse();
    void start(char const* name, char const** attributes);
    void end();
    void text(std::string_view text);
    void markup(std::string_view before, std::string_view text, std::string_view behind);
    void note(std::string_view before, std::string_view name, std::string_view behind);
    void entityDeclared();
    bool isReference();
    bool isEmptyTag();
    std::string_view rawText();
    void add(Event::Kind kind, std::string_view text);
    void addText(std::string_view text);
    void limitQueue();

    NyXmlStandardInput m_input;
    std::function<bool()> m_mayReadOn;
    std::unique_ptr<XML_ParserStruct, Free> m_parser;
    std::vector<Event> m_events;
    std::size_t m_next = 0;
    std::size_t m_depth = 0;
    std::uint64_t m_passed = 0;
    std::vector<Attribute> m_attributes;
    std::string m_texts;        ///< the first m_textSize bytes
    std::size_t m_textSize = 0; ///< counted apart: a string that grows by appending pieces costs three times as much
    NyXmlStandardNames m_names;
    std::string m_raw; ///< the bytes of an event, where they have to be looked at
    bool m_wantsRaw = false;
    bool m_hasEntities = false; ///< places in the stream say nothing about what an entity brings
    bool m_isSuspended = false;
    bool m_isFinal = false;
    std::exception_ptr m_exception; ///< thrown in a handler: it must not pass through the parser
};

#endif
