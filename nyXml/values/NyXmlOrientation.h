#ifndef NYXML_VALUES_NYXMLORIENTATION_H
#define NYXML_VALUES_NYXMLORIENTATION_H

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyOrientation.h>
#include <nyXml/platform/NyXmlExport.h>

#include <iosfwd>

/// A rotation as attributes of an element: `<rot q0="1" q1="0" q2="0" q3="0"/>`. What is read always has unit length.
class NYXML_EXPORT NyXmlOrientation : public NyXmlObject {
public:
    NyXmlOrientation() = default; ///< no rotation
    NyXmlOrientation(NyXmlOrientation const&) = default;
    NyXmlOrientation(NyOrientation const& value) noexcept : m_theValue(value) {} // implicit, as for NyXmlVector
    NyXmlOrientation& operator=(NyXmlOrientation const&) = default;
    /// Assigns the components alone; the object does not become specified by it.
    NyXmlOrientation& operator=(NyOrientation const& value) noexcept
    {
        m_theValue = value;
        return *this;
    }

    // NyXmlObject
    ~NyXmlOrientation() override;
    void accept(NyXmlObjectVisitor* visitor) const override;
    [[nodiscard]] NyXmlObject* clone() const override;

    /// Takes q0 to q3 by name and normalises. What is not mentioned counts as 0, other attributes are passed over; any number of
    /// attributes but 4 is reported with print type 4 and forgiven. Neither initialises the object nor marks it specified.
    ///
    /// \return false, with a report of print type 4, if something stands between the tags
    bool read(NyXmlReader& reader) override;
    bool write(NyXmlWriter& writer) const override;
    bool writeSchema(NyXmlSchema& schema) const override;
    bool equality(NyXmlObject const* other) const override;
    [[nodiscard]] NyXmlObject* newObject() const override;
    NyToken const& token() const override; ///< classToken()

    static NyToken const& classToken(); ///< NyXml::NyOrientationToken
    static NyXmlOrientation nullObject() { return {}; }

    double q0() const noexcept { return m_theValue.q0(); }
    double q1() const noexcept { return m_theValue.q1(); }
    double q2() const noexcept { return m_theValue.q2(); }
    double q3() const noexcept { return m_theValue.q3(); }

    /// Exact, without a tolerance.
    bool operator==(NyXmlOrientation const& other) const noexcept { return m_theValue == other.m_theValue; }
    bool operator!=(NyXmlOrientation const& other) const noexcept { return !(*this == other); }

    /// 32 bytes: q0 to q3 as doubles of this machine, taken as they are. \return false if they don't come; the value is left alone then
    bool readBin(std::istream& stream);
    /// \return false if the stream did not take them
    bool writeBin(std::ostream& stream) const;

private:
    NyOrientation m_theValue;
};

#endif
