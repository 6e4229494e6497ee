// The samples of the pages on a first class that stand by themselves, as a program: a member with an old name, and a plug-in's member.

#include "Sample.h"

#include <memory>

namespace {

class Joint : public Sample<Joint> {
public:
    NyXmlBasicType<double> limit;

    void registerComponents() override
    {
        registerComponent(NyToken("urn:demo/arm#limit"), &limit);
        registerComponentReadOnly(NyToken("urn:demo/arm#maximum"), &limit); // its name until last year
    }
    bool operator==(Joint const& other) const { return limit == other.limit; }
};

/// Writes one member that came from a plug-in.
void writeMember(NyXmlWriter& writer, NyXmlObject const* member)
{
    writer.writeStartTag(member->token());
    writer.setAttributeName(NyXml::NyLibraryToken);
    writer.data("./weld.nyp"); // kept by whoever made the member: the object itself does not know
    member->write(writer);
    writer.writeEndTag();
}

} // namespace

int main()
{
    Joint joint;
    bool const oldNameIsRead = readWhole(joint, "<joint><maximum>2.5</maximum></joint>") && joint.limit == 2.5;
    bool const newNameIsWritten = written(joint).find("maximum") == std::string::npos && comesBack(joint);

    std::ostringstream stream;
    NyXmlWriter writer("sample.xml", stream);
    writeMember(writer, &joint);
    bool const libraryIsWritten = stream.str().find(" library=\"./weld.nyp\"") != std::string::npos;
    return oldNameIsRead && newNameIsWritten && libraryIsWritten ? 0 : 1;
}
