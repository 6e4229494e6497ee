#ifndef NYXMLKIT_GUARD_NYXMLGUARDED_H
#define NYXMLKIT_GUARD_NYXMLGUARDED_H

#include <nyXml/core/NyXml.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXmlKit/guard/NyXmlGuard.h>
#include <nyXmlKit/guard/detail/NyXmlGuardState.h>

#include <algorithm>
#include <cstddef>
#include <istream>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

/// A document reader that keeps a document within limits.
///
/// \code
///     NyXmlGuardedReader reader("upload.xml", stream, NyXmlGuard::forStrangers());
///     auto mode = reader.readXml();
///     if (mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG)
///         model.read(reader);
///     if (reader.brokenLimit() != NyXmlGuard::Limit::NONE) ...
/// \endcode
///
/// A limit that is broken is reported (print type 4) as "NyXmlGuard Error: limit broken: " with its name, what was too much, file and line.
/// From then on the reader gives nothing but XML_READER_ERROR, no attributes and empty texts, so that objects that are being read
/// come to an end. What was read is kept. The base may complain about the document's sudden end besides.
///
/// What a `size` attribute is to an object is not known: one of any element counts as a claim. A skipped element counts as any other, and
/// links in it are not followed. Which plug-ins may be loaded holds for the thread that made the reader, for as long as the reader
/// lives.
///
/// The messages about links that cannot be followed are the base's; one that cannot be opened is told with its path.
///
/// \tparam Base  NyXmlReader, or a subclass that is constructed from a name and a stream, and that reads includes from what is given to
///               open()
template <class Base>
class NYXML_EXPORT NyXmlGuarded : protected NyXmlGuardState, public Base {
    static_assert(std::is_base_of_v<NyXmlReader, Base>, "a guarded reader is made from a document reader");
    using Mode = NyXmlFileReader::XML_READER_MODE;

public:
    using NyXmlGuardState::ByteListener;

    /// \param stream  stays the caller's and must outlive the reader; nothing is read before the first readXml()
    NyXmlGuarded(std::string const& name, std::istream& stream, NyXmlGuard const& guard)
        : NyXmlGuardState(name, stream, guard),
          Base(name, NyXmlGuardState::input())
    {
        NyXmlGuardState::setReader(this);
        this->template offerShortcuts<NyXmlGuarded, Base>();
    }
    ~NyXmlGuarded() override { NyXmlGuardState::setReader(nullptr); }

    /// The limit that ended the reading, Limit::NONE if none did.
    NyXmlGuard::Limit brokenLimit() const noexcept { return NyXmlGuardState::broken(); }

    /// Ends the reading as a broken limit does, but without a message.
    void endReading() noexcept { NyXmlGuardState::end(); }

    /// Whether a limit or endReading() has ended it.
    bool hasEnded() const noexcept { return NyXmlGuardState::hasEnded(); }

    /// Has the bytes of each read counted, those of included documents too. A listener that returns false ends the reading.
    void setByteListener(ByteListener listener) { NyXmlGuardState::setListener(std::move(listener)); }

    // NyXmlReader

    Mode readXml() override
    {
        if (hasEnded())
            return NyXmlFileReader::XML_READER_ERROR;
        NyXmlGuardState::anEventIsDue();
        m_isInputOver = false;
        Mode const mode = Base::readXml();
        note(mode);
        return hasEnded() ? NyXmlFileReader::XML_READER_ERROR : mode;
    }

    Mode mode() const override
    {
        if (hasEnded())
            return NyXmlFileReader::XML_READER_ERROR;
        return m_isInputOver ? NyXmlFileReader::XML_READER_EOF : Base::mode();
    }
    unsigned int errorCode() const override { return hasEnded() ? 1 : Base::errorCode(); }

    NyToken const& attributeName() const override { return hasEnded() ? NyXmlFileReader::m_theNullToken : Base::attributeName(); }
    NyToken const& attributeName(NyToken const& name) const override
    {
        return hasEnded() ? NyXmlFileReader::m_theNullToken : Base::attributeName(name);
    }
    unsigned int remainingNumOfAttributes() const override { return hasEnded() ? 0 : Base::remainingNumOfAttributes(); }
    std::string const& attributeValue() override
    {
        if (hasEnded())
            return NyXmlFileReader::m_theNullString;
        bool const isClaim = NyXmlGuardState::watchesItems() && isSize(Base::attributeName());
        return checked(Base::attributeValue(), isClaim);
    }
    std::string const& attributeValue(NyToken const& name) override
    {
        return hasEnded() ? NyXmlFileReader::m_theNullString : checked(Base::attributeValue(name), isSize(name));
    }

    std::string const& content() const override { return hasEnded() ? NyXmlFileReader::m_theNullString : Base::content(); }
    std::string const& contentByWord() const override
    {
        return hasEnded() ? NyXmlFileReader::m_theNullString : Base::contentByWord();
    }
    bool isContentAvailable() const override { return !hasEnded() && Base::isContentAvailable(); }
    void setContentVectorFlag(bool flag) override
    {
        if (flag && NyXmlGuardState::watchesItems() && !hasEnded())
            NyXmlGuardState::checkWords(Base::contentCount()); // what is handed out by words is a run of items
        Base::setContentVectorFlag(flag);
    }

    bool nextMatchingEndTag() override;
    std::string const& getChildrenAsString() override
    {
        if (hasEnded())
            return NyXmlFileReader::m_theNullString;
        NyXmlGuardState::anEventIsDue();
        std::string const& text = Base::getChildrenAsString();
        NyXmlGuardState::leave();
        return checked(text, false);
    }

    // Where the core's own fast paths would not return, at the end of the input, the text is empty and the mode XML_READER_EOF, or
    // XML_READER_ERROR if it is a limit that has ended it.

    std::string const& getComplexStartTagFast() override
    {
        return fastFrom('<', [this]() -> std::string const& { return Base::getComplexStartTagFast(); });
    }
    std::string const& getSimpleStartTagFast() override
    {
        return fastFrom('<', [this]() -> std::string const& { return Base::getSimpleStartTagFast(); });
    }
    std::string const& getAttributeValueFast() override;
    std::string const& getLastAttributeValueFast() override;
    std::string const& getContentByWordFast() override
    {
        return fastFrom(aWord, [this]() -> std::string const& { return Base::getContentByWordFast(); });
    }
    void getEndTagFast() override
    {
        fastFrom('>', [this]() -> std::string const& {
            Base::getEndTagFast();
            return NyXmlFileReader::m_theNullString;
        });
    }

protected:
    /// The text of the event, when it has just come.
    std::string_view text() const
    {
        if constexpr (std::is_same_v<Base, NyXmlReader>)
            return Base::contentView(); // no subclass in between, so the text is there
        else
            return Base::content();
    }

    // Past the events, as NyXmlReader::offerShortcuts() has it. What goes beyond a limit comes by its event, which says so.

    bool takeLeaf(NyToken const& name, std::string_view& text)
    {
        return takeLeafIf(name, text, [](std::string_view) { return true; });
    }
    bool takeLeaf(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t count)
    {
        return takeLeafIf(name, attributes, values, count, [] { return true; });
    }
    Mode readInPieces(NyXmlWordSink& words) { return readRunBy(words, nullptr); }
    std::string_view takeContent() { return hasEnded() ? std::string_view() : Base::takeContent(); }

    Mode readInPiecesIf(NyXmlWordSink& words, NyXmlReader::RunWatch& watch) { return readRunBy(words, &watch); }
    template <class MayPass>
    bool takeLeafIf(NyToken const& name, std::string_view& text, MayPass mayPass)
    {
        bool const isTaken = Base::takeLeafIf(name, text, [&](std::string_view found) {
            return NyXmlGuardState::mayPassLeaf(0, found.size(), m_wasEmptyTag) && mayPass(found);
        });
        if (isTaken)
            noteLeaf(false);
        return isTaken;
    }
    template <class MayPass>
    bool takeLeafIf(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t count,
                    MayPass mayPass)
    {
        bool const isTaken = Base::takeLeafIf(name, attributes, values, count, [&] {
            std::size_t longest = 0;
            for (std::size_t i = 0; i != count; ++i)
                longest = std::max(longest, values[i].size());
            return NyXmlGuardState::mayPassLeaf(count, longest, m_wasEmptyTag) && mayPass();
        });
        if (isTaken)
            noteLeaf(true);
        return isTaken;
    }

    /// Looks at each link before anything is opened.
    bool openFileTest() override;
    bool closeFileTest() override
    {
        bool const isClosed = Base::closeFileTest();
        if (isClosed)
            NyXmlGuardState::closeLink();
        return isClosed;
    }

private:
    friend class NyXmlReader;

    static bool isSize(NyToken const& name) { return static_cast<std::string const&>(name) == sizeName(); }
    static std::string const& sizeName() { return NyXml::NyCountToken; }

    void note(Mode mode)
    {
        switch (mode) {
        case NyXmlFileReader::XML_READER_START_TAG:
        case NyXmlFileReader::XML_READER_EMPTY_TAG:
            if (m_wasEmptyTag)
                NyXmlGuardState::leave();
            NyXmlGuardState::enter(Base::numOfAttributes());
            m_wasEmptyTag = mode == NyXmlFileReader::XML_READER_EMPTY_TAG;
            return;
        case NyXmlFileReader::XML_READER_CONTENT: NyXmlGuardState::checkLastPiece(text().size()); break;
        case NyXmlFileReader::XML_READER_END_TAG:
        case NyXmlFileReader::XML_READER_EOF:
        case NyXmlFileReader::XML_READER_ERROR: break;
        }
        if (m_wasEmptyTag)
            NyXmlGuardState::leave();
        m_wasEmptyTag = false;
        if (mode == NyXmlFileReader::XML_READER_CONTENT || mode == NyXmlFileReader::XML_READER_END_TAG)
            NyXmlGuardState::leave();
    }

    std::string const& checked(std::string const& text, bool isClaim)
    {
        NyXmlGuardState::checkText(text.size());
        if (isClaim && NyXmlGuardState::watchesItems())
            NyXmlGuardState::checkClaim(text);
        return hasEnded() ? NyXmlFileReader::m_theNullString : text;
    }

    void noteLeaf(bool isEmptyTag)
    {
        if (m_wasEmptyTag)
            NyXmlGuardState::leave();
        m_wasEmptyTag = isEmptyTag;
        NyXmlGuardState::enterLeaf();
        if (!isEmptyTag)
            NyXmlGuardState::leave();
    }

    static constexpr char aWord = '\0';

    template <class Call>
    std::string const& fast(Call call)
    {
        if (hasEnded())
            return NyXmlFileReader::m_theNullString;
        NyXmlGuardState::anEventIsDue();
        return checked(call(), false);
    }

    /// \param first  what the core's reader looks for without an end
    template <class Call>
    std::string const& fastFrom(char first, Call call)
    {
        return fast([&]() -> std::string const& {
            if constexpr (std::is_same_v<Base, NyXmlReader>) {
                m_isInputOver = !(first == aWord ? this->findWordForFastPath() : this->findForFastPath(first));
                if (m_isInputOver)
                    return NyXmlFileReader::m_theNullString;
            }
            return call();
        });
    }

    bool takeLink(std::string& href);
    Mode readRunBy(NyXmlWordSink& words, NyXmlReader::RunWatch* next);

    bool m_wasEmptyTag = false;
    bool m_isSkipping = false;
    bool m_isInputOver = false; ///< a fast path has come to the end
    std::string m_theFastText;
};

/// For documents in the core's dialect.
using NyXmlGuardedReader = NyXmlGuarded<NyXmlReader>;

/// A run, piece by piece. \param next  asked after us
template <class Base>
NyXmlFileReader::XML_READER_MODE NyXmlGuarded<Base>::readRunBy(NyXmlWordSink& words, NyXmlReader::RunWatch* next)
{
    class Pieces final : public NyXmlReader::RunWatch {
    public:
        Pieces(NyXmlGuarded& reader, NyXmlReader::RunWatch* next) : m_reader(reader), m_next(next) {}
        bool mayPass(std::string_view words) override
        {
            return m_reader.NyXmlGuardState::mayPassPiece(words) && (m_next == nullptr || m_next->mayPass(words));
        }
        void forgetRun() override
        {
            m_reader.NyXmlGuardState::forgetPieces();
            if (m_next != nullptr)
                m_next->forgetRun();
        }

    private:
        NyXmlGuarded& m_reader;
        NyXmlReader::RunWatch* m_next;
    };
    if (hasEnded())
        return NyXmlFileReader::XML_READER_ERROR;
    NyXmlGuardState::anEventIsDue();
    NyXmlGuardState::beginRun();
    Pieces watch(*this, next);
    return Base::readInPiecesIf(words, watch);
}

// The base skips in one go, which no limit would see.
template <class Base>
bool NyXmlGuarded<Base>::nextMatchingEndTag()
{
    if (mode() == NyXmlFileReader::XML_READER_EMPTY_TAG)
        return true;
    std::vector<std::string> open{ Base::element() };
    m_isSkipping = true;
    bool isClosed = false;
    while (!isClosed) {
        while (remainingNumOfAttributes() != 0)
            Base::attributeValue();
        Mode const mode = this->readXml();
        if (mode == NyXmlFileReader::XML_READER_START_TAG) {
            open.push_back(Base::element());
        } else if (mode == NyXmlFileReader::XML_READER_END_TAG || mode == NyXmlFileReader::XML_READER_CONTENT) {
            isClosed = open.back() == open.front(); // nested or not, as the base has it
            open.pop_back();
        } else if (mode != NyXmlFileReader::XML_READER_EMPTY_TAG) {
            break;
        }
    }
    m_isSkipping = false;
    if (!isClosed && mode() == NyXmlFileReader::XML_READER_EOF)
        Base::nextMatchingEndTag(); // complains
    return isClosed;
}

template <class Base>
std::string const& NyXmlGuarded<Base>::getAttributeValueFast()
{
    if constexpr (std::is_same_v<Base, NyXmlReader>)
        return fast([this]() -> std::string const& {
            std::string_view text;
            m_isInputOver = !Base::takeAttributeText(text);
            return m_theFastText.assign(text);
        });
    else
        return fast([this]() -> std::string const& { return Base::getAttributeValueFast(); });
}

template <class Base>
std::string const& NyXmlGuarded<Base>::getLastAttributeValueFast()
{
    if constexpr (std::is_same_v<Base, NyXmlReader>) {
        std::string const& text = NyXmlGuarded::getAttributeValueFast();
        NyXmlGuarded::getEndTagFast();
        return text;
    } else {
        return fast([this]() -> std::string const& { return Base::getLastAttributeValueFast(); });
    }
}

template <class Base>
bool NyXmlGuarded<Base>::openFileTest()
{
    static NyToken const include("NyInclude");
    if (Base::element() != include || m_isSkipping || hasEnded() || Base::mode() == NyXmlFileReader::XML_READER_ERROR)
        return false;

    std::string href;
    if (takeLink(href)) {
        bool isRemote = false;
        std::string const path = this->pathOfLink(href, isRemote);
        if (auto stream = NyXmlGuardState::openLink(path, isRemote))
            this->open(path, *stream.release()); // deleted with the reader's other includes
        else if (!hasEnded())
            Ny::Print::write(Ny::Print::FAULT, "NyXmlReader Error: not able to open file: %s\n", path.c_str());
    } else {
        Ny::Print::write(Ny::Print::FAULT, "NyXmlReader Error: XLink syntax not correct.\n\tFile: %s\n\tLine: %d\n",
                         this->filename(), this->lineCountOfFile());
    }
    return !hasEnded();
}

/// Takes all attributes of an include element. One too many is told once. False if one of the two is missing.
template <class Base>
bool NyXmlGuarded<Base>::takeLink(std::string& href)
{
    bool isTypeSeen = false;
    bool isLinkSeen = false;
    for (unsigned int left = Base::remainingNumOfAttributes(); left != 0 && !hasEnded(); --left) {
        std::string const name = Base::attributeName();
        std::string const& value = checked(Base::attributeValue(), false);
        if (name == "type") {
            isTypeSeen = true;
            if (value != "simple")
                Ny::Print::write(Ny::Print::FAULT,
                                 "NyXmlReader Error: XLink 'type' needs to be simple.\n\tFile: %s\n\tLine: %d\n",
                                 this->filename(), this->lineCountOfFile());
        } else if (name == "href") {
            isLinkSeen = true;
            href = value;
        } else {
            Ny::Print::write(Ny::Print::FAULT,
                             "NyXmlReader Error: attribute name can only be simple and href, not %s.\n\tFile: %s\n\tLine: %d\n",
                             name.c_str(), this->filename(), this->lineCountOfFile());
        }
    }
    return isTypeSeen && isLinkSeen && !hasEnded();
}

extern template class NyXmlGuarded<NyXmlReader>;

#endif
