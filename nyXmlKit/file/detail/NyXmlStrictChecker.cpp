#include <nyXmlKit/file/detail/NyXmlStrictChecker.h>

#include <nyXml/core/NyXml.h>
#include <nyXml/reader/NyXmlReader.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <system_error>
#include <utility>

namespace {

using Fault = NyXmlFault::Kind;
using Member = NyXmlShapeMember;

std::string const& sizeName() { return NyXml::NyCountToken; }
std::string const& groupName() { return NyXml::NyGroupToken; }
std::string const& elementName() { return NyXml::NyElementToken; }
std::string const& libraryName() { return NyXml::NyLibraryToken; }

std::string quoted(std::string_view text)
{
    constexpr std::size_t longest = 100;
    return '"' + std::string(text.substr(0, longest)) + (text.size() > longest ? "...\"" : "\"");
}

constexpr auto whiteBytes = [] {
    std::array<bool, 256> table{};
    for (char const c : { ' ', '\t', '\n', '\r' })
        table[static_cast<unsigned char>(c)] = true;
    return table;
}();

bool isWhite(char c) { return whiteBytes[static_cast<unsigned char>(c)]; }

std::string_view nextWord(std::string_view& text)
{
    char const* start = text.data();
    char const* const end = start + text.size();
    while (start != end && isWhite(*start))
        ++start;
    char const* behind = start;
    while (behind != end && !isWhite(*behind))
        ++behind;
    text = { behind, static_cast<std::size_t>(end - behind) };
    return { start, static_cast<std::size_t>(behind - start) };
}

bool isBase64(std::string_view text)
{
    std::size_t const padding = text.size() - std::min(text.find('='), text.size());
    bool const isPadded = padding <= 2 && text.substr(text.size() - padding).find_first_not_of('=') == std::string_view::npos;
    return text.size() % 4 == 0 && isPadded &&
           text.substr(0, text.size() - padding)
                   .find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/") ==
               std::string_view::npos;
}

} // namespace

NyXmlStrictChecker::NyXmlStrictChecker(NyXmlFaultCollector& faults, NyXmlObject const& root, bool leftOutFits)
    : m_theFaults(faults),
      m_isLeftOutFit(leftOutFits),
      m_theRoot(&m_theShapes.of(root))
{
    m_theRun.kind = Kind::RUN;
}

void NyXmlStrictChecker::add(Fault kind, std::string const& text)
{
    if (m_isClosed)
        return;
    NyXmlFault fault;
    fault.kind = kind;
    fault.text = text;
    fault.file = m_theReader->filename();
    fault.line = m_theReader->lineCountOfFile();
    fault.path = NyXmlFaultCollector::pathOf(names());
    m_theFaults.add(std::move(fault));
}

std::vector<NyToken> NyXmlStrictChecker::names() const
{
    std::vector<NyToken> names;
    std::size_t const count = m_theDepth + (m_wasText ? 1 : 0);
    for (std::size_t i = 0; i != count; ++i)
        names.emplace_back(std::string(), m_theFrames[i].name);
    return names;
}

NyXmlFaultCollector::Told NyXmlStrictChecker::tells() const
{
    NyXmlFaultCollector::Told told;
    told.sizes = !m_isClosed && m_theLast == Kind::SEQUENCE;
    told.attributeCounts = !m_isClosed && m_theDepth != 0 && top().shape != nullptr && top().shape->kind == Kind::TUPLE;
    return told;
}

// Elements

NyXmlStrictChecker::Frame& NyXmlStrictChecker::push(std::string const& name, NyXmlShape* shape)
{
    if (m_theDepth == m_theFrames.size())
        m_theFrames.emplace_back();
    Frame& frame = m_theFrames[m_theDepth++];
    std::string kept = std::move(frame.name); // for its memory
    frame = Frame();
    frame.name = std::move(kept);
    frame.name = name;
    frame.shape = shape;
    frame.seen = m_theSeen.size();
    if (shape != nullptr)
        m_theSeen.resize(frame.seen + shape->attributes.size() + shape->children.size(), 0);
    return frame;
}

void NyXmlStrictChecker::start(std::string const& name, bool isIncluded)
{
    m_wasText = false;
    if (m_theDepth == 0) {
        push(name, m_theRoot);
        return;
    }
    choose();
    Frame& parent = top();
    ++parent.parts;
    NyXmlShape* const shape = enter(parent, name, isIncluded);
    bool const isKey = parent.shape->kind == Kind::ENTRY && parent.parts == 1;
    Frame& frame = push(name, shape); // the parent may have moved
    frame.isKey = isKey;
    if (m_thePending)
        add(m_thePending->first, m_thePending->second);
    m_thePending.reset();
}

NyXmlShape* NyXmlStrictChecker::enter(Frame& parent, std::string const& name, bool isIncluded)
{
    NyXmlShape& shape = *parent.shape;
    auto const unknown = [&](char const* wanted) {
        if (!isIncluded && name != wanted)
            m_thePending.emplace(Fault::UNKNOWN_MEMBER,
                                 "unknown element " + quoted(name) + " where " + quoted(wanted) + " should be");
    };
    switch (shape.kind) {
    case Kind::TUPLE:
        if (isInVectorOfPath()) // which nobody looks into
            m_thePending.emplace(Fault::UNKNOWN_MEMBER, "unknown element " + quoted(name));
        [[fallthrough]];
    case Kind::MEMBERS: return enterMember(parent, name);
    case Kind::CHOICE: return shape.variable != nullptr ? nullptr : &m_theShapes.chosen(shape, name);
    case Kind::SEQUENCE:
    case Kind::PATH:
        if (name == groupName() && shape.kind == Kind::SEQUENCE)
            return &m_theRun;
        unknown(elementName().c_str());
        ++parent.items;
        return shape.item;
    case Kind::MAP: return name == elementName() ? shape.item : &m_theShapes.anything(); // the map complains
    case Kind::ENTRY:
        if (parent.parts > 2)
            break;
        unknown(shape.children[parent.parts - 1].name.c_str());
        return shape.children[parent.parts - 1].shape;
    case Kind::ANYTHING:
    case Kind::TEXT:
    case Kind::BASE64:
    case Kind::RUN: break;
    }
    return &m_theShapes.anything();
}

NyXmlShape* NyXmlStrictChecker::enterMember(Frame& parent, std::string const& name)
{
    std::vector<Member> const& members = parent.shape->children;
    Member const* member = NyXmlShape::find(members, name, parent.nextChild);
    for (auto const& [alias, other] : parent.shape->aliases)
        if (member == nullptr && name == alias)
            member = NyXmlShape::find(members, other, parent.nextChild);
    if (member == nullptr)
        return &m_theShapes.anything(); // the object complains, or knows more than we do
    unsigned int& seen =
        m_theSeen[parent.seen + parent.shape->attributes.size() + static_cast<std::size_t>(member - members.data())];
    if (++seen > member->most)
        m_thePending.emplace(Fault::REPEATED_MEMBER,
                             "element " + quoted(name) + " stands there " + std::to_string(seen) + " times");
    return &m_theShapes.of(*member);
}

/// What a leaf of this name would be, null if that takes a closer look. \p seen counts it, if it is a member.
NyXmlShape* NyXmlStrictChecker::leafIn(Frame& parent, std::string const& name, unsigned int*& seen)
{
    if (parent.shape == nullptr)
        return nullptr;
    if (parent.shape->kind == Kind::SEQUENCE)
        return name == elementName() && !parent.shape->isOfDifferent ? parent.shape->item : nullptr;
    if (parent.shape->kind != Kind::MEMBERS)
        return nullptr;
    std::vector<Member> const& members = parent.shape->children;
    Member const* const member = NyXmlShape::find(members, name, parent.nextChild);
    if (member == nullptr)
        return nullptr;
    seen = &m_theSeen[parent.seen + parent.shape->attributes.size() + static_cast<std::size_t>(member - members.data())];
    return *seen < member->most ? &m_theShapes.of(*member) : nullptr;
}

/// \param seen  of the member that the leaf is, null for an item
void NyXmlStrictChecker::countLeaf(Frame& parent, unsigned int* seen)
{
    ++parent.parts;
    if (seen != nullptr)
        ++*seen;
    else
        ++parent.items;
}

bool NyXmlStrictChecker::passText(NyToken const& name, std::string_view text)
{
    if (m_theDepth == 0)
        return false;
    Frame& parent = top();
    unsigned int* seen = nullptr;
    NyXmlShape const* const shape = leafIn(parent, name.localName(), seen);
    if (shape == nullptr || shape->kind != Kind::TEXT || !shape->text.matches(text))
        return false;
    countLeaf(parent, seen);
    if (m_theDepth == m_theFrames.size())
        m_theFrames.emplace_back();
    m_theFrames[m_theDepth].name = name.localName(); // for names()
    m_wasText = true;
    m_theLast = Kind::TEXT;
    return true;
}

bool NyXmlStrictChecker::passTag(NyToken const& name, NyToken const* const* attributes, std::string_view const* values,
                                 std::size_t count)
{
    if (m_theDepth == 0)
        return false;
    Frame& parent = top();
    unsigned int* seen = nullptr;
    NyXmlShape* const shape = leafIn(parent, name.localName(), seen);
    if (shape == nullptr || shape->kind != Kind::TUPLE || shape->attributes.size() != count || !shape->children.empty())
        return false;
    for (std::size_t i = 0; i != count; ++i) {
        Member const& member = shape->attributes[i];
        NyXmlShape const& text = m_theShapes.of(member);
        if (member.name != attributes[i]->localName() || text.kind != Kind::TEXT || !text.text.matches(values[i]))
            return false;
    }
    countLeaf(parent, seen);
    m_wasText = false;
    Frame& frame = push(name.localName(), shape);
    frame.parts = count;
    std::fill_n(m_theSeen.begin() + static_cast<std::ptrdiff_t>(frame.seen), count, 1u);
    return true;
}

// A child of a choice becomes known when it has named its library, and that has been loaded.
void NyXmlStrictChecker::choose()
{
    Frame& frame = top();
    if (frame.shape != nullptr)
        return;
    learnLibraries();
    frame.shape = &m_theShapes.chosen(*m_theFrames[m_theDepth - 2].shape, frame.name);
    frame.seen = m_theSeen.size();
    m_theSeen.resize(frame.seen + frame.shape->attributes.size() + frame.shape->children.size(), 0);
}

// Which libraries were loaded the library itself tells, for the record.
void NyXmlStrictChecker::learnLibraries()
{
    static std::string const start = "loaded shared library: ";
    m_theFaults.flush();
    auto const& notices = m_theFaults.notices();
    for (; m_theNoticesSeen < notices.size(); ++m_theNoticesSeen) {
        std::string const& notice = notices[m_theNoticesSeen];
        std::size_t const name = notice.find(start);
        if (name != std::string::npos)
            m_theShapes.learn(notice.substr(name + start.size(), notice.rfind("  with  ") - name - start.size()));
    }
}

void NyXmlStrictChecker::forget()
{
    if (m_theDepth != 0)
        top().shape = &m_theShapes.anything();
}

// Attributes

void NyXmlStrictChecker::repeatedAttribute(std::string const& name)
{
    if (top().shape == nullptr || top().shape->kind != Kind::ANYTHING)
        add(Fault::REPEATED_MEMBER, "attribute " + quoted(name) + " stands there several times");
}

void NyXmlStrictChecker::takeClaim(Frame& frame, std::string const& value)
{
    long long claim = 0;
    auto const result = std::from_chars(value.data(), value.data() + value.size(), claim);
    frame.claim = claim;
    frame.isClaimBad = result.ec != std::errc() || result.ptr != value.data() + value.size() || claim < 0;
    if (frame.isClaimBad)
        add(Fault::BAD_TEXT, "attribute " + quoted(sizeName()) + ": " + quoted(value) + " is not a number of items");
}

void NyXmlStrictChecker::attribute(std::string const& name, std::string const& value)
{
    if (m_theDepth == 0)
        return;
    bool const isOfChoice = m_theDepth > 1 && m_theFrames[m_theDepth - 2].shape->kind == Kind::CHOICE;
    if (isOfChoice && name == libraryName())
        return;
    choose();
    Frame& frame = top();
    ++frame.parts;
    NyXmlShape const& shape = *frame.shape;
    if ((shape.kind == Kind::SEQUENCE || shape.kind == Kind::PATH) && name == sizeName())
        return takeClaim(frame, value);
    Member const* const member = NyXmlShape::find(shape.attributes, name, frame.nextAttribute);
    if (member != nullptr) {
        ++m_theSeen[frame.seen + static_cast<std::size_t>(member - shape.attributes.data())];
        checkText(m_theShapes.of(*member), value, name);
    } else if (shape.kind != Kind::MEMBERS || !shape.aliases.empty()) { // those complain themselves
        unusedAttribute(name);
    }
}

void NyXmlStrictChecker::leftAttribute(std::string const& name)
{
    m_areAttributesLeft = true;
    unusedAttribute(name);
}

void NyXmlStrictChecker::unusedAttribute(std::string const& name)
{
    if (m_theDepth != 0 && top().shape != nullptr && top().shape->kind != Kind::ANYTHING)
        add(Fault::UNKNOWN_MEMBER, "unknown attribute " + quoted(name));
}

// Texts

// Hot: once for each text. Words are made for those alone that do not fit.
void NyXmlStrictChecker::checkText(NyXmlShape const& shape, std::string_view text, std::string_view attribute)
{
    if (shape.kind != Kind::TEXT || shape.text.fits(text))
        return;
    std::string const where = attribute.empty() ? std::string() : "attribute " + quoted(attribute) + ": ";
    add(Fault::BAD_TEXT, where + quoted(text) + " is not " + shape.text.wanted());
}

void NyXmlStrictChecker::text(std::string_view text)
{
    if (m_theDepth == 0)
        return;
    choose();
    Frame& frame = top();
    frame.hasText = true;
    m_isInPieces = false;
    switch (frame.shape->kind) {
    case Kind::TEXT:
        checkText(*frame.shape, text);
        if (frame.isKey && m_theDepth > 2)
            checkDifferent(m_theFrames[m_theDepth - 3], "key ", *frame.shape, text);
        else if (m_theDepth > 1 && m_theFrames[m_theDepth - 2].shape->isOfDifferent)
            checkDifferent(m_theFrames[m_theDepth - 2], "item ", *frame.shape, text);
        break;
    case Kind::RUN: checkWords(text); break;
    case Kind::TUPLE:
        if (!isInVectorOfPath())
            break;
        [[fallthrough]];
    case Kind::MEMBERS:
    case Kind::CHOICE:
    case Kind::SEQUENCE:
    case Kind::MAP:
    case Kind::PATH:
        add(Fault::UNREAD, "nobody reads the text " + quoted(text));
        forget();
        break;
    case Kind::ANYTHING:
    case Kind::BASE64:
    case Kind::ENTRY: break; // these complain, or take it
    }
    end(false);
    m_wasText = true;
}

// Of a run.
void NyXmlStrictChecker::checkWords(std::string_view words)
{
    Frame& sequence = m_theFrames[m_theDepth - 2];
    NyXmlShape const& item = *sequence.shape->item;
    bool const isEveryday = item.kind == Kind::TEXT && !sequence.shape->isOfDifferent;
    for (std::string_view rest = words;;) {
        sequence.items += isEveryday ? item.text.passEveryday(rest, whiteBytes) : 0;
        std::string_view const word = nextWord(rest);
        if (word.empty())
            break;
        ++sequence.items;
        if (item.kind != Kind::TEXT || !item.text.matches(word))
            checkText(item, word);
        if (sequence.shape->isOfDifferent)
            checkDifferent(sequence, "item ", item, word);
    }
}

void NyXmlStrictChecker::checkDifferent(Frame& holder, char const* what, NyXmlShape const& shape, std::string_view text)
{
    if (holder.given == nullptr)
        holder.given = std::make_unique<std::unordered_set<std::string>>();
    if (!holder.given->insert(shape.text.valueOf(text)).second)
        add(Fault::REPEATED_MEMBER, what + quoted(text) + " is there already");
}

void NyXmlStrictChecker::piece(std::string_view words)
{
    if (!std::exchange(m_isInPieces, true))
        m_theItemsInPieces = 0;
    if (m_theDepth == 0 || top().shape == nullptr || top().shape->kind != Kind::RUN)
        return;
    Frame& sequence = m_theFrames[m_theDepth - 2];
    std::size_t const before = sequence.items;
    checkWords(words);
    m_theItemsInPieces += sequence.items - before;
}

// They were none of the run: it has none, or begins behind a comment and has been looked at by now.
void NyXmlStrictChecker::forgetPieces()
{
    m_isInPieces = false;
    for (std::size_t i = m_theDepth; i-- > 0;)
        if (m_theFrames[i].shape != nullptr && m_theFrames[i].shape->kind == Kind::SEQUENCE) {
            m_theFrames[i].items -= std::exchange(m_theItemsInPieces, 0);
            return;
        }
}

void NyXmlStrictChecker::rawText(std::string_view text)
{
    if (m_theDepth == 0)
        return;
    choose();
    top().hasText = true;
    if (top().shape->kind == Kind::BASE64 && !isBase64(text))
        add(Fault::BAD_TEXT, quoted(text) + " is not base64");
    end(false);
}

void NyXmlStrictChecker::checkMissing(Frame const& frame, std::vector<Member> const& members, std::size_t seen, char const* what)
{
    for (std::size_t i = 0; i != members.size(); ++i) {
        bool const isMissed = members[i].least != 0 && !(m_isLeftOutFit && members[i].isLeftOutAsDefault);
        if (isMissed && m_theSeen[frame.seen + seen + i] == 0)
            add(Fault::MISSING_MEMBER, std::string(what) + quoted(members[i].name) + " is missing");
    }
}

// An object that equals its default may be left out down to its bare tag.
void NyXmlStrictChecker::checkMembers(Frame const& frame)
{
    if (m_isLeftOutFit && frame.parts == 0)
        return;
    checkMissing(frame, frame.shape->attributes, 0, "attribute ");
    checkMissing(frame, frame.shape->children, frame.shape->attributes.size(), "element ");
}

void NyXmlStrictChecker::end(bool isEmptyTag)
{
    m_wasText = false;
    if (m_theDepth == 0)
        return;
    choose();
    Frame& frame = top();
    m_theLast = frame.shape->kind;
    switch (frame.shape->kind) {
    case Kind::TEXT:
        if (!frame.hasText && !(frame.isKey && isEmptyTag)) // an empty key is refused by the map
            checkText(*frame.shape, std::string_view());
        break;
    case Kind::MEMBERS:
    case Kind::TUPLE: checkMembers(frame); break;
    case Kind::SEQUENCE:
    case Kind::PATH: {
        long long const claim = frame.claim.value_or(0);
        if (!frame.isClaimBad && claim >= 0 && static_cast<unsigned long long>(claim) != frame.items)
            add(Fault::WRONG_SIZE, "size says " + std::to_string(claim) + " items, and there are " + std::to_string(frame.items));
        break;
    }
    case Kind::ANYTHING:
    case Kind::BASE64:
    case Kind::CHOICE:
    case Kind::RUN:
    case Kind::MAP:
    case Kind::ENTRY: break;
    }
    m_theSeen.resize(std::min(frame.seen, m_theSeen.size()));
    --m_theDepth;
}
