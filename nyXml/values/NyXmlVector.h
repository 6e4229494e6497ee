#ifndef NYXML_VALUES_NYXMLVECTOR_H
#define NYXML_VALUES_NYXMLVECTOR_H

#include <nyXml/core/NyXmlObject.h>
#include <nyXml/platform/NyVector.h>
#include <nyXml/platform/NyXmlExport.h>

#include <iosfwd>

class NyXmlVectorVector;

/// Three coordinates as attributes of an element: `<at x="1" y="2" z="3"/>`.
class NYXML_EXPORT NyXmlVector : public NyXmlObject {
public:
    NyXmlVector() = default; ///< all zero
    NyXmlVector(NyXmlVector const&) = default;
    NyXmlVector(NyVector const& value) noexcept
        : m_theValue(value) {} // implicit: a vector may stand where an object is asked for
    NyXmlVector& operator=(NyXmlVector const&) = default;
    /// Assigns the coordinates alone; the object does not become specified by it.
    NyXmlVector& operator=(NyVector const& value) noexcept
    {
        m_theValue = value;
        return *this;
    }

    // NyXmlObject
    ~NyXmlVector() override;
    void accept(NyXmlObjectVisitor* visitor) const override;
    [[nodiscard]] NyXmlObject* clone() const override;

    /// Takes x, y and z by name. What is not mentioned keeps its value, other attributes are passed over; any number of attributes but
    /// 3 is reported with print type 4 and forgiven. Neither initialises the object nor marks it specified.
    ///
    /// \return false, with a report of print type 4, if something stands between the tags
    bool read(NyXmlReader& reader) override;
    bool write(NyXmlWriter& writer) const override;
    bool writeSchema(NyXmlSchema& schema) const override;
    bool equality(NyXmlObject const* other) const override;
    [[nodiscard]] NyXmlObject* newObject() const override;
    NyToken const& token() const override; ///< classToken()

    static NyToken const& classToken(); ///< NyXml::NyLinearToken
    static NyXmlVector nullObject() { return {}; }

    operator NyVector const&() const noexcept { return m_theValue; }
    /// \param index  0 for x, 1 for y, 2 for z; nothing else
    double operator[](unsigned int index) const noexcept { return m_theValue[index]; }

    void set(double const& x, double const& y, double const& z) noexcept { m_theValue.set(x, y, z); }
    void setX(double const& x) noexcept { m_theValue.setX(x); }
    void setY(double const& y) noexcept { m_theValue.setY(y); }
    void setZ(double const& z) noexcept { m_theValue.setZ(z); }
    void setValue(NyVector const& value) noexcept { m_theValue = value; }

    /// Exact, without a tolerance.
    bool operator==(NyXmlVector const& other) const noexcept { return m_theValue == other.m_theValue; }
    bool operator!=(NyXmlVector const& other) const noexcept { return !(*this == other); }
    // With a plain vector: without these there is no choosing between converting the one or the other side.
    bool operator==(NyVector const& other) const noexcept { return m_theValue == other; }
    bool operator!=(NyVector const& other) const noexcept { return m_theValue != other; }

    /// 24 bytes: x, y, z as doubles of this machine. \return false if they don't come; the value is left alone then
    bool readBin(std::istream& stream);
    /// \return false if the stream did not take them
    bool writeBin(std::ostream& stream) const;

    /// Writes vectors as a matrix for numeric tools: `name=[...`, a row of three numbers each, `]`. The name is that of the file, without
    /// folders and extension. \return false if the file can't be opened
    static bool dump(NyXmlVectorVector const& vectors, char const* fileName);

private:
    NyVector m_theValue;
};

#endif
