// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXML_READER_DETAIL_NYXMLWORDSINK_H
#define NYXML_READER_DETAIL_NYXMLWORDSINK_H

#include <nyXml/platform/NyXmlExport.h>

#include <string_view>

/// Takes the words of a long run while the run is still being read, so that the run is never in memory as a whole.
class NYXML_EXPORT NyXmlWordSink {
public:
    /// Takes the next words of the run, whole ones, with white space between them and perhaps at the bounds.
    virtual void takeWords(std::string_view words) = 0;

    /// All that was taken of this run was no content after all.
    virtual void forgetWords() = 0;

protected:
    ~NyXmlWordSink() = default;
};

#endif
