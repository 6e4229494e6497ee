#ifndef NYXML_READER_NYXMLREADER_H
#define NYXML_READER_NYXMLREADER_H

#include <nyXml/compound/NyBaseXmlFactory.h>
#include <nyXml/core/NyToken.h>
#include <nyXml/platform/NyXmlExport.h>
#include <nyXml/reader/NyXmlFileReader.h>
#include <nyXml/reader/detail/NyXmlLeafRun.h>
#include <nyXml/reader/detail/NyXmlShortcuts.h>
#include <nyXml/traversal/detail/NyXmlSignalsFwd.h>

#include <boost/shared_ptr.hpp>

#include <iosfwd>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <vector>

/// What every read() receives: one document, however many files it is written in.
///
/// A stack of file readers. An element `<NyInclude type="simple" href="b.xml"/>` puts another document on top, and nobody above sees
/// either the element or the end of that document: where it stood, its root stands. Besides, the reader checks the version of each
/// document, owns the factory for classes that documents name, and reports progress.
/// \code
///     std::ifstream stream("model.xml");
///     NyXmlReader reader("model.xml", stream);
///     auto mode = reader.readXml();
///     bool whole = (mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG) &&
///                  reader.versionFlag() && model.read(reader);
///     whole = whole && reader.readXml() == NyXmlFileReader::XML_READER_EOF && reader.errorCode() == 0;
/// \endcode
/// The last event matters: to the model, a document that breaks off right behind a text looks as one that is over. Asked once more, only
/// a whole one is at its end.
///
/// Nothing is thrown for a bad document: messages go to the print facility with type 4, see NyXmlFileReader for those of the text
/// itself. An include that cannot be opened costs a message and nothing else: mode and error code stay and the reading goes on behind it.
///
/// From one thread at a time. All but the constructors, open(), the factory and the link count need an opened reader.
class NYXML_EXPORT NyXmlReader {
public:
    /// To be opened with open().
    NyXmlReader();

    /// \param name    the document's path: for messages, and where relative links start
    /// \param stream  stays the caller's and must outlive the reader; nothing is read before the first readXml()
    NyXmlReader(std::string const& name, std::istream& stream);

    /// Takes over the open documents, the version flags and the factory; no link count, and no signals: a copy counts in silence.
    ///
    /// The copy reads on from the same streams, so that only one of the two can read on in a sensible way. Streams of includes and the
    /// factory are released by the last reader that holds them.
    NyXmlReader(NyXmlReader const& other);

    /// Releases the streams of includes that are still open, then the factory. A document left in its middle may draw complaints.
    virtual ~NyXmlReader();

    /// Begins a document. Once per reader: whatever lies above the first document counts as an include, and its stream is deleted with
    /// it.
    virtual void open(std::string const& name, std::istream& stream);

    /// Goes to the next event. Include elements and the ends of included documents are dealt with on the way. After the first event of
    /// each document its "version" attribute is examined and taken away.
    ///
    /// \return XML_READER_EOF at the end of the outermost document. XML_READER_ERROR is final, also inside an include.
    virtual NyXmlFileReader::XML_READER_MODE readXml();

    /// False if the document examined last is of a newer major version than the library; true otherwise, and without a "version".
    virtual bool versionFlag() const;

    // The operations of the document now on top, see NyXmlFileReader. Name, line and error code are that document's, too: the error
    // code of an include goes with it, so look at it before its end.

    virtual NyXmlFileReader::XML_READER_MODE mode() const;
    virtual NyToken const& element() const;
    virtual NyToken const& attributeName(NyToken const& name) const;
    virtual NyToken const& attributeName() const;
    virtual std::string const& attributeValue(NyToken const& name);
    virtual std::string const& attributeValue();
    virtual unsigned int numOfAttributes() const;
    virtual unsigned int remainingNumOfAttributes() const;
    virtual std::string const& content() const;
    virtual std::string const& contentByWord() const;
    virtual unsigned int contentCount() const;
    virtual bool isContentAvailable() const;
    virtual void setContentVectorFlag(bool flag);
    virtual char const* filename() const;
    virtual int lineCountOfFile() const;
    virtual bool nextMatchingEndTag();
    virtual std::string const& getChildrenAsString();
    virtual std::istream& stream() const;

    // The fast paths. The caller promises what NyXmlFileReader says: the token is there, on one line and shorter than a block. At the
    // end of the input there is nothing to find and the call does not return. They see no includes: the document on top is all there is.

    virtual std::string const& getComplexStartTagFast();
    virtual std::string const& getSimpleStartTagFast();
    virtual std::string const& getAttributeValueFast();
    virtual std::string const& getLastAttributeValueFast();
    virtual std::string const& getContentByWordFast();
    virtual void getEndTagFast();

    /// Takes ownership, and deletes the factory so far. May be null.
    virtual void setFactoryPointer(NyBaseXmlFactory* factory);

    /// \return the reader's factory, or null
    virtual NyBaseXmlFactory const* factoryPointer() const;

    /// Registers a class that documents may name.
    /// \return true if this call had to make the factory, with newFactory(); false if there was one
    virtual bool registerComponentCreator(NyToken const& token, NyXmlCreator creator);

    virtual unsigned int errorCode() const;

    /// How many links are to come, 0 if nobody knows. Sends nothing.
    virtual void setLinkTotal(unsigned int total);

    /// Begins to count anew. The total stays. Sends nothing.
    virtual void resetLinkCount();

    /// Counts one link and sends the count through the total, or the bare count without one, on "signalReadWriteProgress"; then an
    /// empty text on "signalReadWriteMsg". Whoever follows links calls it: the reader counts none by itself.
    virtual void incrementLinkCount();

    /// As copying, for the documents, the flags and the factory; signals and counters stay. A document that is open in both keeps its
    /// own stream and takes the other's text in hand, as NyXmlFileReader's assignment has it.
    NyXmlReader& operator=(NyXmlReader const& other);

    /// The names of the open elements, outermost first, from the first document through all includes to element(). Include elements are
    /// not among them. Empty for a reader that is not opened; of a subclass that hands out events of its own it knows nothing.
    std::vector<NyToken> openElements() const;

    /// The document on top, for ways past the events: null if somebody could tell, as a subclass can, or if the front has to look at the
    /// next event.
    NyXmlFileReader* plainDocument() const;

    // Ways to the text without a copy, for values that read a lot of it. They are not virtual: take them only if
    // typeid(reader) == typeid(NyXmlReader), or a subclass does not see them. Valid until the next call that reads.

    /// The word that contentByWord() would give, cut off the content. Empty for empty content.
    std::string_view takeContentWord() noexcept { return m_theTop->takeContentWord(); }

    /// What attributeValue() would give.
    std::string_view takeAttribute() { return m_theTop->takeAttribute(); }

    /// What getAttributeValueFast() would give. False at the end of the input, where that call does not return.
    bool takeAttributeText(std::string_view& text) { return m_theTop->takeAttributeText(text); }
    bool takeAttributeReal(double& number) { return m_theTop->takeAttributeReal(number); }

    /// Takes a whole entry of a map that is written as plainly as can be. False, and nothing has changed, if readXml() has to look at it.
    bool takeEntry(std::string_view& key, std::string_view& value) { return m_theTop->takeEntry(key, value); }

    /// What content() would give if the vector flag is off.
    std::string_view contentView() const noexcept { return m_theTop->contentView(); }

    // The same from a subclass that has offered it, see offerShortcuts().

    /// What this reader gives past the events, null for nothing. Of exactly this class nobody has to ask.
    NyXmlShortcuts const* shortcuts() const
    {
        return m_theShortcuts != nullptr && typeid(*this) == *m_theShortcuts->reader ? m_theShortcuts : nullptr;
    }

    /// Whether a run comes as a whole, by readRun() and takeRun().
    bool hasWholeRuns() const { return typeid(*this) == typeid(NyXmlReader) || shortcuts() != nullptr; }

    /// takeContent() of a reader that hasWholeRuns().
    std::string_view takeRun()
    {
        NyXmlShortcuts const* const ways = shortcuts();
        return ways != nullptr ? ways->takeContent(*this) : takeContent();
    }

    /// The same, and none of it is content any more.
    std::string_view takeContent() noexcept { return m_theTop->takeContent(); }

    /// readXml() at the start tag of a run that may be long. What is too much for one block goes to \p words as it comes, and the content
    /// is what follows behind them, at least one word. If the event is not XML_READER_CONTENT, no word has been taken. For a reader that
    /// hasWholeRuns().
    NyXmlFileReader::XML_READER_MODE readRun(NyXmlWordSink& words);

protected:
    /// Runs after every event. If the element is a `NyInclude`, opens what it links to. A subclass that wants to know of links
    /// overrides it.
    ///
    /// The element carries `type="simple"` and `href`, and is best written in its empty form: an end tag of its own would end the element
    /// around it for the caller. Any further attribute is reported and not consumed, so that the report never ends: who cannot trust
    /// a document looks at its includes first.
    ///
    /// \return true if it was an include, also one that could not be opened: read on
    virtual bool openFileTest();

    /// If an included document is at its end, closes it. \return true if so: the document below reads on
    virtual bool closeFileTest();

    /// Takes a link apart. "http://h/d/e/f" is host "http://h", directory "d/e", file "f"; without "http://" in front the host is empty.
    /// Backslashes separate as well as slashes.
    virtual void parseHref(std::string const& href, std::string& host, std::string& directory, std::string& file);

    /// Takes the "version" attribute, if there is one, and compares the numbers in front of the first dot. Prints a warning for
    /// a document newer than the library and for one that is two or more behind; the reading goes on.
    /// \return false for a newer one
    virtual bool checkVersion();

    /// The factory of a reader that was given none: a new NyXmlFactory.
    virtual NyBaseXmlFactory* newFactory() const;

    /// Whether a fast path for what begins, or ends, with this byte would return, and the same for a word. For a subclass that makes them
    /// return at the end of the input, too. What stands in front is given up.
    bool findForFastPath(char delimiter) { return m_theTop->findForFastPath(delimiter); }
    bool findWordForFastPath() { return m_theTop->findWordForFastPath(); }

    /// A name that the last tag gave to more than one attribute, see NyXmlFileReader.
    std::string const& repeatedAttribute() const { return m_theTop->repeatedAttribute(); }

    /// Where a link leads from the present document, by the parts that parseHref() gives of both. A relative link begins at that
    /// document's host and directory, and a backslash joins the two directories: "d/c.xml" in "a/b.xml" is "a\d/c.xml". One whose
    /// directory begins with `/` or `c:` takes the host alone: "/d/c.xml" in "http://h/a/b.xml" is "http://h//d/c.xml". One with a host
    /// of its own takes nothing. In a local document "/c.xml" and "c:c.xml" are taken as they stand.
    ///
    /// \param remote  set to whether the path has a host and is read over HTTP
    std::string pathOfLink(std::string const& href, bool& remote);

    /// For a subclass whose hooks need not see each event: lets values that read a lot take leaves and runs in one step each, as they
    /// take them from the library's own reader. Otherwise they ask the virtual operations alone.
    ///
    /// A class that offers it has these three, which NyXmlReader calls (a friend, where they are not public). Each may refuse, and
    /// then the same comes by readXml(). A class derived from it gives nothing past its events until it offers that itself.
    /// \code
    ///     /// `<name>text</name>` comes next: takes it. The text is not empty, without white space at its bounds, and
    ///     /// valid until the next call that reads.
    ///     bool takeLeaf(NyToken const& name, std::string_view& text);
    ///     /// `<name a="1" b="2"/>` comes next, with just these attributes.
    ///     bool takeLeaf(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t count);
    ///     /// All of content(), which is empty from then on.
    ///     std::string_view takeContent();
    /// \endcode
    /// A fourth one reads a run block by block:
    /// \code
    ///     /// readXml() at the start tag of a run; words may be taken before, all but the last ones.
    ///     NyXmlFileReader::XML_READER_MODE readInPieces(NyXmlWordSink& words);
    /// \endcode
    /// All four stand here as the library's own reader has them.
    /// \tparam Reader  the subclass; to be called by its constructor
    /// \tparam Base    what Reader is derived from. If that is a class of somebody else's that has offered nothing, nothing is offered
    template <class Reader, class Base = NyXmlReader>
    void offerShortcuts()
    {
        if (!std::is_same_v<Base, NyXmlReader> && (m_theShortcuts == nullptr || *m_theShortcuts->reader != typeid(Base)))
            return;
        static NyXmlShortcuts const ways = {
            &typeid(Reader),
            [](NyXmlReader& reader, NyToken const& name, std::string_view& text) {
                return static_cast<Reader&>(reader).takeLeaf(name, text);
            },
            [](NyXmlReader& reader, NyToken const& name, NyToken const* const* attributes, std::string_view* values,
               std::size_t count) { return static_cast<Reader&>(reader).takeLeaf(name, attributes, values, count); },
            [](NyXmlReader& reader, NyXmlWordSink& words) { return static_cast<Reader&>(reader).readInPieces(words); },
            [](NyXmlReader& reader) { return static_cast<Reader&>(reader).takeContent(); },
        };
        m_theShortcuts = &ways;
    }

    /// The first of them for a subclass that reads by this class: from the document on top.
    /// \param mayPass  called with the text. False leaves everything as it was
    template <class MayPass>
    bool takeLeafIf(NyToken const& name, std::string_view& text, MayPass mayPass)
    {
        NyXmlLeafRun run(documentOfLeaves(), m_isBehindLeafTag);
        bool const isTaken = run.takeText(name, text) && (mayPass(text) || run.forget());
        m_isBehindLeafTag = m_isBehindLeafTag && !isTaken;
        return isTaken;
    }

    // As they are for a subclass of this very class.
    bool takeLeaf(NyToken const& name, std::string_view& text)
    {
        return takeLeafIf(name, text, [](std::string_view) { return true; });
    }
    bool takeLeaf(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t count)
    {
        return takeLeafIf(name, attributes, values, count, [] { return true; });
    }
    NyXmlFileReader::XML_READER_MODE readInPieces(NyXmlWordSink& words) { return readBlocks(words); }

    /// Who is asked about the pieces of a run.
    class RunWatch {
    public:
        /// \param words  whole ones, with white space between them. False drops them
        virtual bool mayPass(std::string_view words) = 0;

        /// All that has come of this run was no content after all.
        virtual void forgetRun() = 0;

    protected:
        ~RunWatch() = default;
    };

    /// The fourth for a subclass that reads by this class.
    NyXmlFileReader::XML_READER_MODE readInPiecesIf(NyXmlWordSink& words, RunWatch& watch);

    /// The second.
    template <class MayPass>
    bool takeLeafIf(NyToken const& name, NyToken const* const* attributes, std::string_view* values, std::size_t count,
                    MayPass mayPass)
    {
        NyXmlLeafRun run(documentOfLeaves(), m_isBehindLeafTag);
        bool const isTaken = run.takeAttributes(name, attributes, values, count) && (mayPass() || run.forget());
        m_isBehindLeafTag = m_isBehindLeafTag || isTaken;
        return isTaken;
    }

private:
    void findTop();
    void push(std::string const& name, std::istream& stream);
    void pop();
    NyXmlFileReader::XML_READER_MODE examineEvent();
    bool takeLink(std::string& path, bool& remote);
    void openLink(std::string const& path, bool remote);
    NyXmlFileReader* documentOfLeaves() const;
    NyXmlFileReader::XML_READER_MODE readBlocks(NyXmlWordSink& words);

    std::list<NyXmlFileReader> m_theFileReaders;
    bool m_theCheckVersionFlag = true;
    bool m_theVersionFlag = true;
    /// Shared with copies of this reader only.
    std::shared_ptr<NyBaseXmlFactory> m_theFactoryPointer;
    boost::shared_ptr<Ny::ReadWriteStatusSignal> m_MessageSignal;
    boost::shared_ptr<Ny::ReadWriteProgressSignal> m_ProgressSignal;
    unsigned int m_LinkTotal = 0;
    unsigned int m_LinkCount = 0;

    /// The last of m_theFileReaders, null if there is none: every event and every word passes through it.
    NyXmlFileReader* m_theTop = nullptr;
    bool m_isSendingSignals = true; ///< on signals that are found when the first link is counted
    NyXmlShortcuts const* m_theShortcuts = nullptr;
    bool m_isBehindLeafTag = false; ///< the last event is an empty tag that was taken as a leaf
    /// One for each document but the outermost. Copies of this reader share it, and the last one to let go closes the stream.
    std::vector<std::shared_ptr<void>> m_theStreamUsers;
};

#endif
