#ifndef NYXML_READER_NYXMLFILEREADER_H
#define NYXML_READER_NYXMLFILEREADER_H

#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/reader/detail/NyXmlAttributeList.h>
#include <nyXml/reader/detail/NyXmlContent.h>
#include <nyXml/reader/detail/NyXmlElementStack.h>
#include <nyXml/reader/detail/NyXmlNameTable.h>
#include <nyXml/reader/detail/NyXmlTextBlock.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class NyXmlWordSink;

/// Pulls events from one XML stream, one per readXml().
///
/// The dialect is small. Comments, processing instructions and the declaration are skipped; there are no entities, no CDATA, no DOCTYPE
/// and no decoding: bytes pass through unchanged. A tag ends at its first `>`, quotes or not. Prefixes are dropped from element and
/// attribute names. Of an attribute value with a `#` only what is behind the first `#` arrives. White space is space, tab, newline and
/// carriage return. A zero byte makes the reader drop what is left of the 16383 bytes that it has just read.
///
/// Memory is bounded by the longest run of text and the number of open elements. Use from one thread at a time.
///
/// A fault in the document never throws. It prints "NyXmlFileReader Error: ..." with file and line (print type 4) and sets errorCode().
/// A bad attribute does not stop the document, so look at the code at the end:
/// \code
///     NyXmlFileReader reader("model.xml", stream);
///     for (auto mode = reader.readXml(); mode != NyXmlFileReader::XML_READER_EOF; mode = reader.readXml()) {
///         if (mode == NyXmlFileReader::XML_READER_ERROR)
///             break; // final: a further call only repeats the complaint
///         ...
///     }
///     if (reader.errorCode() != 0)
///         ...
/// \endcode
///
/// A stream that fails is a stream at its end, also if it is set to throw std::ios_base::failure. Whatever else a stream buffer throws
/// through its stream comes out of the call that read.
///
/// References that the reader hands out are valid until the next call that reads; where there is nothing to hand out it is one of the
/// three constants.
///
/// Subclasses may override any operation and are honoured in all of them. A reader of exactly this class goes through tags where they
/// stand in the block and passes over its own virtual operations: the same events and messages at a third of the time.
class NYXML_EXPORT NyXmlFileReader {
public:
    enum XML_READER_MODE : int {
        XML_READER_EOF = 0,       ///< nothing read yet, or the end reached. Reading on there is an error
        XML_READER_START_TAG = 1, ///< element() is the new element and its attributes wait
        XML_READER_END_TAG = 2,   ///< an element has closed; element() is its parent
        XML_READER_EMPTY_TAG =
            3, ///< as START_TAG, for `<a/>`: there will be no end tag, and element() is `a` until the next readXml()
        XML_READER_CONTENT = 4, ///< content() is the element's text. Its end tag is consumed as well: element() is its parent
        XML_READER_ERROR = 5,   ///< final
    };

    enum DEFAULT_NAMESPACE_OPTION : int {
        ELEMENT_NAMESPACE = 0,   ///< the name of an element
        ATTRIBUTE_NAMESPACE = 1, ///< the name of an attribute
    };

    static NyToken const m_theNullToken;      ///< stands for a name where there is none
    static std::string const m_theNullString; ///< stands for a value where there is none
    static std::string const m_schemaInstanceNamespace;

    /// Reads standard input, under an empty name.
    NyXmlFileReader();

    /// \param name    used in messages only; any text
    /// \param stream  stays the caller's and must outlive the reader; nothing is read before the first readXml()
    NyXmlFileReader(std::string const& name, std::istream& stream);

    /// Reads on from the same stream, with the source's text in hand: only one of the two can read on in a sensible way.
    NyXmlFileReader(NyXmlFileReader const& other);

    /// Complains about what the document left behind: more than one open element, or attributes that nobody took. One open element, the
    /// root, draws no complaint, for an application may stop inside it. Leaves the stream alone. Throws nothing, whatever a print
    /// handler does.
    virtual ~NyXmlFileReader();

    /// Goes to the next event. \return the new mode; XML_READER_ERROR after a fault of the document, see the class
    virtual XML_READER_MODE readXml();

    virtual std::istream& stream() const;
    virtual char const* filename() const;

    /// Of the last fault, which may not be the worst: 0 no error, 1 not well formed, 2 possibly not valid: attributes were left when the
    /// next tag came. Never cleared by the reader.
    virtual unsigned int errorCode() const;
    virtual void setErrorCode(unsigned int code);

    /// The last event, without moving.
    virtual XML_READER_MODE mode() const { return m_theMode; }

    /// The innermost open element, m_theNullToken if there is none.
    virtual NyToken const& element() const { return m_theElementStack.empty() ? m_theNullToken : m_theElementStack.top(); }

    /// The stored name that has the local name of \p name; m_theNullToken if the tag has no such attribute or it was taken.
    virtual NyToken const& attributeName(NyToken const& name) const;

    /// The first attribute left, in byte order of the local names; m_theNullToken if none is left. Does not move on.
    virtual NyToken const& attributeName() const;

    /// Takes an attribute off the current tag. A second call for the same name finds nothing.
    ///
    /// \param name  matched by local name alone; its namespace plays no part
    /// \return the text between the quotes, or m_theNullString if there is no such attribute; prints nothing
    virtual std::string const& attributeValue(NyToken const& name);

    /// Takes the first attribute left, the one that attributeName() names.
    virtual std::string const& attributeValue();

    /// How many attributes the last tag brought, taken or not.
    virtual unsigned int numOfAttributes() const;

    /// How many are left. Those that are left when the next tag comes draw a warning.
    virtual unsigned int remainingNumOfAttributes() const;

    /// The text of the last XML_READER_CONTENT without the white space at its bounds, less the words cut off; it stays until a start tag
    /// is left behind. With the vector flag set: contentByWord().
    virtual std::string const& content() const;

    /// Cuts the next word off the content, const or not, in time that does not depend on the length of the rest. Empty if there is none.
    virtual std::string const& contentByWord() const;

    /// The number of words left; 1 also for empty content.
    virtual unsigned int contentCount() const;

    /// True while the content is not empty.
    virtual bool isContentAvailable() const;

    /// Lets content() give one word per call. Falls back to false when a start tag is left behind.
    virtual void setContentVectorFlag(bool flag);

    /// Line of the cursor, from 1, at most 2147483647. A best effort after a fast path, which skips newlines inside its own token.
    virtual int lineCountOfFile() const;

    /// Skips the element that has just started, with all that is in it; its attributes are dropped in silence.
    ///
    /// Stops at the first end tag of this name, nested or not: what nobody claims is shallow and uniquely named.
    /// \return false if the document ended or failed; it has been reported
    virtual bool nextMatchingEndTag();

    /// The text between the tags of the element that has just started, tags and all, without the white space at its bounds.
    ///
    /// Ends behind the end tag, in XML_READER_END_TAG. Text behind the end tag and in front of the next `<` is dropped. Elements whose
    /// name begins with this element's name count as nested ones of the same name, and an end tag has no blanks in it. Without a `<`
    /// it reports, and the mode is XML_READER_ERROR. If the end tag is missing the result is the rest of the document.
    virtual std::string const& getChildrenAsString();

    /// DELETES the stream. For whoever made it for this reader; the reader is not used any more.
    virtual void close();

    // The fast paths cut tokens straight out of the text, for long runs of regular data. They see no events: mode, element, attributes
    // and content stay as they are, a comment is taken for a tag, and nothing is checked or reported. They and readXml() can take turns
    // at the bounds of tokens.
    //
    // The caller promises that the token is there, stands on one line and is shorter than 16 KiB. Without any further token of its kind,
    // as at the end of the input, THE CALL DOES NOT RETURN. A token that is not closed in the text in hand yields the rest of that text.
    // The result is valid until the next call that reads.

    /// `<name `: the name. The cursor stands on the first attribute.
    virtual std::string const& getComplexStartTagFast();
    /// `<name>`: the name LESS ITS LAST BYTE, "ab" for `<abc>`. Callers add it again or write one byte more.
    virtual std::string const& getSimpleStartTagFast();
    /// `"value"`: the next text in double quotes, whatever stands in front of it.
    virtual std::string const& getAttributeValueFast();
    /// The same, and steps behind the `>` that follows.
    virtual std::string const& getLastAttributeValueFast();
    /// The next word, up to white space or a `<`. The byte that ends it is consumed, `<` too: for readXml() to follow there must be white
    /// space between the last word and the end tag.
    virtual std::string const& getContentByWordFast();
    /// Steps behind the next `>`.
    virtual void getEndTagFast();

    /// Takes over all but the stream: the target reads on from its own.
    NyXmlFileReader& operator=(NyXmlFileReader const& other);

    /// The names of the open elements, outermost first; the last one is element(). For whoever tells where in a document something is.
    std::vector<NyToken> openElements() const { return m_theElementStack.names(); }

    /// A name that the last tag gave to more than one attribute, of which the first one counts; m_theNullString if there is none. For whoever
    /// has to tell what a document says in vain.
    std::string const& repeatedAttribute() const
    {
        std::string const* const name = m_theAttributes.repeatedName();
        return name != nullptr ? *name : m_theNullString;
    }

    // For the hot paths of the library. Not virtual, so that a subclass does not see them.

    /// The word that contentByWord() would give, cut off the content without a copy. Empty for empty content. Valid until the next call
    /// that reads, or asks for the content.
    std::string_view takeContentWord() noexcept;

    /// What attributeValue() gives, without a copy: empty if no attribute is left. Valid until the next call that reads.
    std::string_view takeAttribute();

    /// What getAttributeValueFast() gives, without a copy, and with an end: false when the input holds no further text in double quotes.
    /// \param text  valid until the next call that reads
    bool takeAttributeText(std::string_view& text);
    /// The number of that text, if it is an everyday one. False, and nothing has changed, for all others.
    bool takeAttributeReal(double& number);

    /// Whether the delimiter, or a word, is still to come, so that a fast path for it returns. What stands in front of it is given up, as the
    /// fast path would do.
    bool findForFastPath(char delimiter) { return m_theBlock.findDelim(delimiter); }
    bool findWordForFastPath() { return m_theBlock.findNextWord(); }

    /// Takes a whole entry of a map, `<element><key>text</key><value>text</value></element>`, and stands behind it as after its last event.
    ///
    /// False, and nothing has changed, for everything else that may come: an entry with attributes or other names, an empty text, or
    /// one of which only a part is in the text in hand. readXml() says what it is.
    /// \param key, value  without the white space at their bounds; valid until the next call that reads
    bool takeEntry(std::string_view& key, std::string_view& value);

    /// What content() gives without the vector flag, without a copy. Valid like the above.
    std::string_view contentView() const noexcept { return m_theContent.view(); }

    /// The same, and none of it is content any more.
    std::string_view takeContent() noexcept;

    /// At a start tag: hands out the words of a run that is too long for one block, but for the last of them, which the next readXml()
    /// will give as the content. Does nothing for a shorter text, nor in a subclass.
    /// \return whether anything was handed out
    bool takeRun(NyXmlWordSink& words);

    /// To be called after that readXml(). \return whether the content goes on where the words ended; if not, they were no content, since
    /// text behind a comment takes the place of the text before it
    bool endRun() noexcept { return std::exchange(m_isRunContinued, false); }

protected:
    /// One step through the text: skips comments and declarations, fills the content. \return the event, or XML_READER_ERROR with a
    /// report. Comments in a row are one call, so that their number does not matter to the call stack.
    virtual XML_READER_MODE nextEvent();

    /// \param tag  the text between `<` and `>`; changed
    virtual XML_READER_MODE tagType(std::string& tag);

    /// Opens an element and collects its attributes. \param line  a start tag without slash; changed. \return false after a report
    virtual bool parseElementAndAttributes(std::string& line);

    /// Takes the prefix off: the local name loses everything up to its first `:`. Puts no URI in its place.
    virtual NyToken& swapNamespacePrefixWithUri(NyToken& token, DEFAULT_NAMESPACE_OPTION option) const;

    /// Cuts the first word off \p text, with the white space behind it. Valid until the next call of this or of nextQuotedToken().
    ///
    /// Overridden, it gets the rest of the content for every word, which takes time for each word by the length of the rest.
    virtual std::string const& nextWord(std::string& text) const;

    /// 1, and 1 for each word that follows white space: exact for a text without white space at its bounds.
    virtual unsigned int wordCount(std::string const& text) const;

    /// Cuts a text in quotes off \p text, with the white space behind it. The first byte is the quote. Reports if there is no second.
    virtual std::string const& nextQuotedToken(std::string& text);

    /// Moves up to the next \p delimiter, and over it if \p consume is true.
    /// \param line  becomes the text in front of it, or what is left of the input. \return false if the input ended before
    virtual bool getLineWithLineCount(std::string& line, char delimiter, bool consume);

    /// True for a comment or a declaration. \param line  the text between `<` and the first `>`; a comment with a `>` inside grows to
    /// its end. False after a report, too.
    virtual bool isComment(std::string& line);

    // White text stays as it is in these three.
    virtual void stripWhiteSpaceFromBounds(std::string& text) const;
    virtual void stripLeadingWhiteSpace(std::string& text) const;
    virtual void stripTrailingWhiteSpace(std::string& text) const;

    // Take off the first and the last byte, whatever it is.
    virtual void stripLeadingSlash(std::string& text) const;
    virtual void stripTrailingSlash(std::string& text) const;

    /// Always reports improper quotes, and changes nothing: it looks for the second quote behind the text. Nobody calls it.
    virtual void stripQuotes(std::string& text);

    virtual bool isWhiteSpace(std::string const& text) const;

    /// Prints the text with file and line. Sets nothing.
    virtual void warnMessage(char const* text) const;

private:
    friend class NyXmlLeafRun;

    // How to read, known at the first event: an override must see every step.
    enum class Way : char { UNKNOWN, PLAIN, IN_PLACE };
    Way way() const
    {
        if (m_theWay == Way::UNKNOWN)
            findWay();
        return m_theWay;
    }
    void findWay() const;
    static std::array<std::uintptr_t, 3> functionsOf(NyXmlFileReader const& reader);

    // The events where they stand in the block (NyXmlFileReaderInPlace.cpp).
    XML_READER_MODE everydayEvent();
    XML_READER_MODE everydayText(char const* text);
    XML_READER_MODE everydayEndTag(char const* at, std::string_view content);
    XML_READER_MODE everydayStartTag(char const* at);
    XML_READER_MODE everydayTag(char const* at);
    XML_READER_MODE nextEventInPlace();
    XML_READER_MODE walkInPlace(bool& isEndOfRun);
    std::size_t findTagInPlace(std::size_t& white);
    XML_READER_MODE tagInPlace(std::string_view tag, bool& isSkipped);
    bool endTagInPlace(std::string_view tag);
    bool startTagInPlace(std::string_view tag);
    void openElement(std::string_view name, bool isBare);
    bool attributesInPlace(std::string_view text);

    // What both ways share.
    XML_READER_MODE nextStep() { return m_theWay == Way::IN_PLACE ? everydayEvent() : anyEvent(); }
    XML_READER_MODE eventBehindEmptyTag();
    XML_READER_MODE anyEvent();
    XML_READER_MODE endInText(bool isText);
    XML_READER_MODE textOutOfPlace();
    XML_READER_MODE endInTag();
    XML_READER_MODE badTag();
    void dropAttributes();
    bool parseAttributes(std::string& line);
    std::string const& cutQuotedToken(std::string const& text, std::size_t& at);
    XML_READER_MODE endTag(std::string const& tag);
    void declareNamespace(std::string const& name, std::string const& value);
    XML_READER_MODE concludeText(XML_READER_MODE mode, std::size_t texts);
    XML_READER_MODE fault(char const* text);
    void lastFault(char const* text) noexcept;
    bool refuse(char const* text)
    {
        fault(text);
        return false;
    }

    // Content and fast paths.
    void stripContent();
    std::string const& setValue(std::string_view text) const
    {
        m_theValue.clear(); // and not assign(), which reckons with a text out of the value itself and takes twice as long
        return m_theValue.append(text.data(), text.size());
    }
    void stepOver(char delimiter);
    void cutValue(std::size_t end);

    void copyState(NyXmlFileReader const& other);

    std::string m_theFileName;
    unsigned int m_theErrorCode = 0;
    XML_READER_MODE m_theMode = XML_READER_EOF;
    NyXmlElementStack m_theElementStack;
    NyXmlAttributeList m_theAttributes;
    unsigned int m_theNumOfAttributes = 0;
    mutable NyXmlContent m_theContent;
    bool m_theContentVectorFlag = false;
    NyToken m_theEndTag; ///< read in place it is the name that was popped last, and this one is not kept up
    NyToken m_theSpareToken;
    mutable std::string m_theValue;
    NyXmlTextBlock m_theBlock; ///< with stream, cursor and line count
    NyToken m_theAttributeName;
    NyToken m_theAttributeValue;
    std::string m_thePrefix;

    bool m_isRunContinued = false; ///< words of the content went to a takeRun()
    int m_theLineOfRun = 0;        ///< where that run began
    mutable Way m_theWay = Way::UNKNOWN;
    mutable bool m_isWordCutOurs = false;  ///< nobody overrides nextWord()
    mutable bool m_isQuoteCutOurs = false; ///< nor what cuts attributes off a tag
    std::string m_theLine;                 ///< scratch
    std::unique_ptr<NyXmlNameTable> m_theNames;
    NyXmlName* m_theLastElement; ///< among these names, the one of the last start tag
};

#endif
