// The samples of the pages on files and on strangers, as a program.

#include "Sample.h"

#include <nyXmlKit/nyXmlKit.h>

#include <cstdio>
#include <iostream>

namespace {

class Lamp : public Sample<Lamp> {
public:
    NyXmlBasicType<std::string> name;
    NyXmlBasicType<double> watts;

    void registerComponents() override
    {
        registerAttributeComponent(NyToken("name"), &name);
        registerComponent(NyToken("urn:demo/samples#watts"), &watts);
    }
    bool operator==(Lamp const& other) const { return name == other.name && watts == other.watts; }
};

bool writesAndReads(Lamp& lamp)
{
    NyXmlWriteOptions writing;
    writing.dialect = NyXmlDialect::STANDARD; // so that the name may hold what it likes
    if (auto const result = NyXmlFile::write("lamp.xml", lamp, writing); !result) {
        std::cerr << result.str(); // "the file cannot be written: No space left on device"
        return false;              // and lamp.xml is as it was
    }

    NyXmlReadOptions reading;
    reading.dialect = NyXmlDialect::STANDARD;
    if (auto const result = NyXmlFile::read("lamp.xml", lamp, reading); !result) {
        std::cerr << result.str(); // "lamp.xml:4: sample/wats: Bad token: wats on line 4"
        return false;
    }
    return true;
}

NyXmlReadResult readStrictly(std::istream& stream, Lamp& lamp)
{
    NyXmlReadOptions options;
    options.strictness = NyXmlReadOptions::Strictness::ALL;
    return NyXmlFile::read(stream, "lamp.xml", lamp, options);
}

NyXmlReadResult readWithProgress(Lamp& lamp, bool const& isStopped)
{
    NyXmlReadOptions options;
    options.progress = [&](std::uint64_t bytes, std::uint64_t total) {
        std::cout << bytes << " of " << total << '\n';
        return !isStopped; // false cancels
    };
    return NyXmlFile::read("lamp.xml", lamp, options);
}

NyXmlReadResult readUpload(std::istream& stream, Lamp& lamp)
{
    NyXmlReadOptions options;
    options.guard = NyXmlGuard::forStrangers();
    options.guard->bytes = 1'000'000;
    options.guard->links = NyXmlGuard::Links::BELOW_FOLDER;
    options.guard->folder = "/srv/uploads/42";
    auto result = NyXmlFile::read(stream, "upload.xml", lamp, options);
    if (result.has(NyXmlFault::Kind::LIMIT))
        std::cerr << "refused: " << result.faults.back().str() << '\n';
    return result;
}

} // namespace

int main()
{
    Lamp lamp;
    lamp.name = std::string(" <desk> & \"bench\"\n");
    lamp.watts = 12;
    Lamp const before = lamp;
    bool isRight = writesAndReads(lamp) && lamp == before;

    std::istringstream wrong("<sample name='a'><watts>12kW</watts></sample>");
    isRight = isRight && readStrictly(wrong, lamp).str() == "lamp.xml:1: sample/watts: \"12kW\" is not a number\n";
    bool const isStopped = true;
    isRight = isRight && readWithProgress(lamp, isStopped).isCancelled;
    std::istringstream upload("<sample name='a'><NyInclude type='simple' href='/etc/passwd'/></sample>");
    isRight = isRight && readUpload(upload, lamp).has(NyXmlFault::Kind::LIMIT);
    std::remove("lamp.xml");
    return isRight ? 0 : 1;
}
