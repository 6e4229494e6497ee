// The front: documents that include one another, in memory. The input is cut at form feeds; the pieces are a.xml, b.xml and so on.

#include "Fuzz.h"
#include "Model.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace {

struct Enough {};

/// A folder of files that lie in memory, kept for the whole run.
std::string const& folder()
{
    static std::string const path = [] {
        std::string const name = "/dev/shm/nyXmlFuzz." + std::to_string(::getpid());
        std::filesystem::create_directories(name);
        std::atexit([] {
            std::error_code ignored;
            std::filesystem::remove_all("/dev/shm/nyXmlFuzz." + std::to_string(::getpid()), ignored);
        });
        return name;
    }();
    return path;
}

/// Gives up where the library would not: at an include with an attribute too many, and at a hundred of them.
class BoundedReader : public NyXmlReader {
public:
    using NyXmlReader::NyXmlReader;
    std::string const& getAttributeValueFast() override { throw Enough(); } // looks for a value for ever if there is none

protected:
    bool openFileTest() override
    {
        if (element() == NyToken("NyInclude")) {
            unsigned int const known =
                (attributeName(NyToken("type")).empty() ? 0 : 1) + (attributeName(NyToken("href")).empty() ? 0 : 1);
            if (remainingNumOfAttributes() != known || ++m_count > 100)
                throw Enough();
        }
        return NyXmlReader::openFileTest();
    }
    /// Links lead into the folder, wherever they mean to.
    void parseHref(std::string const& href, std::string& host, std::string& directory, std::string& file) override
    {
        NyXmlReader::parseHref(href, host, directory, file);
        host.clear();
        directory.clear();
        if (file != "doc.xml")
            directory = folder();
        if (file.size() > 8 || file.find('\0') != std::string::npos)
            file = "a.xml";
    }

private:
    int m_count = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    Input choices(data, size);
    std::string document = choices.document();
    char name = 'a';
    for (std::size_t cut; name < 'e' && (cut = document.rfind('\f')) != std::string::npos; ++name) {
        std::ofstream(folder() + "/" + name + ".xml", std::ios::binary) << document.substr(cut + 1);
        document.erase(cut);
    }
    Said said;
    std::istringstream stream(document);
    try {
        BoundedReader reader("doc.xml", stream);
        Everything object;
        if (choices.below(2) == 0) {
            reader.readXml();
            object.read(reader);
            reader.readXml();
        } else
            for (int events = 0; events < 5000; ++events) {
                auto const mode = reader.readXml();
                if (mode == NyXmlFileReader::XML_READER_EOF || mode == NyXmlFileReader::XML_READER_ERROR)
                    break;
                if (choices.below(3) == 0)
                    reader.attributeValue();
                if (choices.below(16) == 0 && !reader.element().empty())
                    reader.nextMatchingEndTag();
            }
    } catch (Enough const&) {
    } catch (std::length_error const&) {}
    for (char left = 'a'; left < name; ++left)
        std::filesystem::remove(folder() + "/" + left + ".xml");
    return 0;
}
