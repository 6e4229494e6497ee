#ifndef NYXMLKIT_FILE_NYXMLFAULT_H
#define NYXMLKIT_FILE_NYXMLFAULT_H

#include <nyXml/platform/NyXmlExport.h>

#include <string>

/// One thing that was wrong with a document, and where.
struct NYXML_EXPORT NyXmlFault {
    enum class Kind {
        FILE_ERROR,      ///< the file cannot be opened, read or written
        NOT_WELL_FORMED, ///< as the reader says
        ROOT,            ///< there is no root of the expected name; the object was not touched
        BROKEN_OFF,      ///< the document ends inside its root
        BEHIND_ROOT,     ///< something stands behind the root
        UNREAD,          ///< strict: the object left its element before the end
        UNKNOWN_MEMBER,  ///< an element or attribute that nobody answers to
        MISSING_MEMBER,  ///< a required member of a model class; strict: any member
        REPEATED_MEMBER, ///< strict
        BAD_TEXT,        ///< strict: a text that is not one of its type
        WRONG_SIZE,      ///< a `size` that is not the number of items
        BAD_VALUE,       ///< what a value says of its content, else
        LINK,            ///< an include that cannot be followed
        VERSION,         ///< the document is newer than the library, or much older
        PLUG_IN,         ///< a library of classes that cannot be loaded
        LIMIT,           ///< a broken limit of a NyXmlGuard, which the text names; the reading has ended there
        EXCEPTION,       ///< an object threw, and its reading ended there
    };

    Kind kind = Kind::BAD_VALUE;
    std::string text; ///< one line. Sentences of the library stand in it as they are
    std::string file; ///< the document, or the included one
    int line = 0;     ///< from 1; 0 if it has no place
    int column = 0;   ///< from 1; 0 where nobody knows, which is all but an ill-formed document in XML 1.0
    std::string path; ///< names of the open elements, such as "gpx/trk/trkseg/trkpt"; empty outside the root

    /// "model.xml:12: cell/robots/robot: what is wrong", with a column "model.xml:12:7: ..."
    std::string str() const;
};

#endif
