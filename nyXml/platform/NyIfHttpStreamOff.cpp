// Takes the place of NyIfHttpStream.cpp in a library that is built without HTTP: no address leads anywhere.

#include <nyXml/platform/NyIfHttpStream.h>
#include <nyXml/platform/detail/NyGate.h>

#include <streambuf>
#include <utility>

class NyIfHttpStream::Body : public std::streambuf {}; // at its end from the start

NyIfHttpStream::NyIfHttpStream(std::string const& address, int mode) : NyIfHttpStream(address, mode, Limits()) {}

NyIfHttpStream::NyIfHttpStream(std::string const&, int, Limits const&) : std::istream(nullptr), m_Body(std::make_unique<Body>())
{
    rdbuf(m_Body.get());
    setstate(std::ios::failbit);
}

NyIfHttpStream::Gate NyIfHttpStream::setGate(Gate newGate)
{
    static NyGate& gate = *new NyGate; // nothing is opened, so nobody asks it
    return gate.replace(std::move(newGate));
}

NyIfHttpStream::~NyIfHttpStream() = default;
