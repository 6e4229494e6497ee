// In-house, no part of the face.

#ifndef NYXMLKIT_FILE_DETAIL_NYXMLSTRICTREADER_H
#define NYXMLKIT_FILE_DETAIL_NYXMLSTRICTREADER_H

#include <nyXml/reader/NyXmlReader.h>
#include <nyXmlKit/file/detail/NyXmlStrictChecker.h>
#include <nyXmlKit/guard/NyXmlGuard.h>

#include <array>
#include <cstddef>
#include <istream>
#include <string>
#include <string_view>
#include <utility>

/// A reader that has a checker follow all that objects get from it.
///
/// \tparam Base  a guarded reader
template <class Base>
class NyXmlStrictReader final : public Base {
    using Mode = NyXmlFileReader::XML_READER_MODE;

public:
    NyXmlStrictReader(std::string const& name, std::istream& stream, NyXmlGuard const& guard, NyXmlStrictChecker& checker)
        : Base(name, stream, guard),
          m_theChecker(checker)
    {
        m_theChecker.setReader(this);
        this->template offerShortcuts<NyXmlStrictReader, Base>();
    }

    Mode readXml() override
    {
        if (m_isPathRead)
            return finishPath();
        leaveEvent();
        m_isInBase = true;
        m_isIncluded = false;
        Mode const mode = Base::readXml();
        m_isInBase = false;
        follow(mode);
        return mode;
    }

    /// While a path is read it stays what it was, and tells the end.
    Mode mode() const override
    {
        if (!m_isPathRead || this->hasEnded())
            return Base::mode();
        return m_isPathAtEnd ? NyXmlFileReader::XML_READER_END_TAG : m_thePathsFirst;
    }

    std::string const& attributeValue() override
    {
        if (m_isInBase || this->hasEnded() || Base::remainingNumOfAttributes() == 0)
            return Base::attributeValue();
        m_theName = static_cast<std::string const&>(Base::attributeName());
        return checked(Base::attributeValue());
    }
    std::string const& attributeValue(NyToken const& name) override
    {
        if (m_isInBase || this->hasEnded() || Base::attributeName(name).empty())
            return Base::attributeValue(name);
        m_theName = static_cast<std::string const&>(name);
        return checked(Base::attributeValue(name));
    }

    bool nextMatchingEndTag() override
    {
        bool const isEmptyTag = this->mode() == NyXmlFileReader::XML_READER_EMPTY_TAG;
        std::size_t const depth = m_theChecker.depth();
        m_theChecker.forget();
        bool const isFound = Base::nextMatchingEndTag();
        while (isFound && !isEmptyTag && depth != 0 && m_theChecker.depth() >= depth)
            m_theChecker.end(false);
        m_isAtTag = m_isAtTag && isEmptyTag;
        return isFound;
    }
    std::string const& getChildrenAsString() override
    {
        leaveTag();
        m_isAtTag = false;
        std::string const& text = Base::getChildrenAsString();
        if (!this->hasEnded())
            m_theChecker.rawText(text);
        return text;
    }

    /// A path of vectors takes its numbers past the events. Here they come by events all the same, for each to be looked at.
    std::string const& getAttributeValueFast() override
    {
        if (!m_isPathRead && !m_theChecker.isInPath())
            return Base::getAttributeValueFast();
        return coordinate();
    }

    // Past the events what fits. What does not comes by its events, which know the place.

    bool takeLeaf(NyToken const& name, std::string_view& text)
    {
        if (Base::remainingNumOfAttributes() != 0)
            return false;
        leaveEvent();
        return this->takeLeafIf(name, text, [&](std::string_view found) { return m_theChecker.passText(name, found); });
    }
    bool takeLeaf(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t count)
    {
        if (Base::remainingNumOfAttributes() != 0)
            return false;
        leaveEvent();
        bool const isTaken = this->takeLeafIf(name, attributes, values, count,
                                              [&] { return m_theChecker.passTag(name, attributes, values, count); });
        if (isTaken)
            m_isAtTag = m_isEmptyTag = true;
        return isTaken;
    }
    Mode readInPieces(NyXmlWordSink& words)
    {
        PieceWatch watch(m_theChecker);
        return this->readInPiecesIf(words, watch);
    }
    using Base::takeContent;

protected:
    bool openFileTest() override
    {
        bool const isOpened = Base::openFileTest();
        m_isIncluded = m_isIncluded || isOpened;
        return isOpened;
    }

private:
    class PieceWatch final : public NyXmlReader::RunWatch {
    public:
        explicit PieceWatch(NyXmlStrictChecker& checker) : m_theChecker(checker) {}
        bool mayPass(std::string_view words) override
        {
            m_theChecker.piece(words);
            return true;
        }
        void forgetRun() override { m_theChecker.forgetPieces(); }

    private:
        NyXmlStrictChecker& m_theChecker;
    };

    void leaveTag()
    {
        if (!m_isAtTag)
            return;
        while (Base::remainingNumOfAttributes() != 0) {
            m_theChecker.leftAttribute(Base::attributeName());
            Base::attributeValue();
        }
    }
    void leaveEvent()
    {
        if (!m_isAtTag || this->hasEnded())
            return;
        leaveTag();
        m_isAtTag = false;
        if (m_isEmptyTag)
            m_theChecker.end(true);
    }

    void follow(Mode mode)
    {
        switch (mode) {
        case NyXmlFileReader::XML_READER_START_TAG:
        case NyXmlFileReader::XML_READER_EMPTY_TAG:
            m_theChecker.start(Base::element(), m_isIncluded);
            if (std::string const& name = this->repeatedAttribute(); !name.empty())
                m_theChecker.repeatedAttribute(name);
            m_isAtTag = true;
            m_isEmptyTag = mode == NyXmlFileReader::XML_READER_EMPTY_TAG;
            break;
        case NyXmlFileReader::XML_READER_CONTENT: m_theChecker.text(this->text()); break;
        case NyXmlFileReader::XML_READER_END_TAG: m_theChecker.end(false); break;
        case NyXmlFileReader::XML_READER_EOF:
        case NyXmlFileReader::XML_READER_ERROR: break;
        }
    }

    std::string const& checked(std::string const& value)
    {
        if (!this->hasEnded())
            m_theChecker.attribute(m_theName, value);
        return value;
    }

    // A path: element after element, three numbers each, up to the path's end, which may come before the reader of the path expects it.

    std::string const& coordinate()
    {
        static constexpr std::array<char const*, 3> names = { "x", "y", "z" };
        if (!m_isPathRead) {
            m_thePathsFirst = m_thePathsLast = Base::mode();
            m_isPathAtEnd = m_isEmptyTag && m_isAtTag;
            m_theCoordinate = 0;
        }
        if (m_theCoordinate == 0 && !m_isPathAtEnd) {
            m_isPathRead = false;
            m_thePathsLast = readXml();
            m_isPathAtEnd = !isTag(m_thePathsLast);
            for (std::size_t i = 0; i != names.size() && !m_isPathAtEnd; ++i)
                m_theCoordinates[i] = attributeValue(NyToken(names[i]));
            passElement(m_thePathsLast);
        }
        m_isPathRead = true;
        if (m_isPathAtEnd)
            return NyXmlFileReader::m_theNullString;
        std::string const& value = m_theCoordinates[m_theCoordinate];
        m_theCoordinate = (m_theCoordinate + 1) % names.size();
        return value;
    }

    /// Goes from an element's start to its end.
    void passElement(Mode mode)
    {
        std::size_t const depth = m_theChecker.depth();
        bool isOpen = mode == NyXmlFileReader::XML_READER_START_TAG;
        while (isOpen) {
            while (Base::remainingNumOfAttributes() != 0)
                attributeValue();
            Mode const next = readXml();
            isOpen = m_theChecker.depth() >= depth && next != NyXmlFileReader::XML_READER_ERROR &&
                     next != NyXmlFileReader::XML_READER_EOF;
        }
    }

    /// The event behind the numbers: the path's end, with what is too much passed over.
    Mode finishPath()
    {
        m_isPathRead = false;
        if (std::exchange(m_isPathAtEnd, false))
            return m_thePathsLast;
        for (;;) {
            Mode const mode = readXml();
            if (!isTag(mode))
                return mode;
            while (Base::remainingNumOfAttributes() != 0)
                attributeValue();
            passElement(mode);
        }
    }

    static bool isTag(Mode mode)
    {
        return mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG;
    }

    NyXmlStrictChecker& m_theChecker;
    bool m_isInBase = false; ///< the base asks for attributes of its own
    bool m_isIncluded = false;
    bool m_isAtTag = false; ///< its attributes may be asked for
    bool m_isEmptyTag = false;
    std::string m_theName;
    bool m_isPathRead = false;
    bool m_isPathAtEnd = false;
    Mode m_thePathsFirst = NyXmlFileReader::XML_READER_START_TAG; ///< at the first number
    Mode m_thePathsLast = NyXmlFileReader::XML_READER_END_TAG;
    std::size_t m_theCoordinate = 0;
    std::array<std::string, 3> m_theCoordinates;
};

#endif
