// In-house, no part of the face: installed only because public headers need it.

#ifndef NYXMLKIT_MODEL_DETAIL_NYXMLSHARING_H
#define NYXMLKIT_MODEL_DETAIL_NYXMLSHARING_H

#include <nyXml/platform/NyXmlExport.h>

#include <atomic>
#include <memory>

class NyXmlObject;
class NyXmlReader;
class NyXmlWriter;

/// Who is who among the shared objects of the document that this thread reads or writes.
class NYXML_EXPORT NyXmlSharing {
public:
    static constexpr char const* numberName = "sharedId";
    static constexpr char const* referenceName = "sharedRef";

    /// Lives while an object of a model class reads or writes itself; the outermost one bounds the numbers. Costs a look as long as no
    /// program has a shared member.
    class Scope {
    public:
        Scope() : m_isOurs(theUse.load(std::memory_order_relaxed))
        {
            if (m_isOurs)
                enter();
        }
        ~Scope()
        {
            if (m_isOurs)
                leave();
        }
        Scope(Scope const&) = delete;
        Scope& operator=(Scope const&) = delete;

    private:
        bool m_isOurs;
    };

    /// \return true
    static bool setInUse() noexcept;

    /// The object of the element that the reader stands on: a new one, one that was met, or one that is still to come.
    /// \param isHere  set to whether the element holds the object, and does not refer to it
    static std::shared_ptr<NyXmlObject> objectOfElement(NyXmlReader& reader, std::shared_ptr<NyXmlObject> (*make)(),
                                                        bool& isHere);

    /// Passes over the element that the reader stands on. \param isOfClass  false is reported: the number is that of another class
    static bool skip(NyXmlReader& reader, bool isOfClass);

    /// Writes the number of an object that is shared. \return whether the object itself is to be written here
    static bool beginsHere(NyXmlWriter& writer, NyXmlObject const& object, bool isShared);

    /// Equal objects, or none both. Two that are being compared already are taken for equal, or a circle would have no end.
    static bool areEqual(NyXmlObject const* one, NyXmlObject const* two);

private:
    static void enter();
    static void leave();

    static std::atomic<bool> theUse;
};

#endif
