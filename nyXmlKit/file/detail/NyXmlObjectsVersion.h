// In-house, no part of the face.

#ifndef NYXMLKIT_FILE_DETAIL_NYXMLOBJECTSVERSION_H
#define NYXMLKIT_FILE_DETAIL_NYXMLOBJECTSVERSION_H

#include <utility>

class NyXmlReader;

/// A reader that leaves the `version` of the document's root to the object. An included document has the library's, as ever.
template <class Base>
class NyXmlObjectsVersion : public Base {
public:
    template <class... Arguments>
    explicit NyXmlObjectsVersion(Arguments&&... arguments) : Base(std::forward<Arguments>(arguments)...)
    {
        this->template offerShortcuts<NyXmlObjectsVersion, Base>();
    }

protected:
    bool checkVersion() override { return std::exchange(m_isRootDue, false) || Base::checkVersion(); }

private:
    friend class NyXmlReader;

    bool m_isRootDue = true;
};

#endif
