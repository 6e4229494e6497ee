// Documents that nobody here wrote: the reader's events are those that Expat pushes, and its verdict is Expat's. The documents are not part
// of the project: NYXML_CONFORMANCE_SUITE names the folder of the W3C's XML conformance suite, NYXML_REAL_DOCUMENTS one of documents
// from public repositories.

#include <nyXmlKit/standard/NyXmlStandardReader.h>

#include "../Support.h"

#include <expat.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::string_view white = " \t\n\r";

std::string trimmed(std::string const& text)
{
    std::size_t const begin = text.find_first_not_of(white);
    return begin == text.npos ? std::string() : text.substr(begin, text.find_last_not_of(white) + 1 - begin);
}

std::string local(std::string const& name) { return name.substr(name.find(':') + 1); }

/// What Expat pushes, as values would see it: texts of leaves alone, names without prefix.
struct Pushed {
    struct Open {
        std::string text;
        bool hasChild = false;
    };
    std::string listing;
    std::vector<Open> open;
    std::set<std::string> instancePrefixes{ "xsi:" };

    void start(char const* name, char const** attributes)
    {
        if (!open.empty())
            open.back().hasChild = true;
        open.emplace_back();
        listing += "start " + local(name);
        for (char const** next = attributes; *next != nullptr; next += 2)
            if (NyXmlFileReader::m_schemaInstanceNamespace == next[1])
                instancePrefixes.insert(local(next[0]) + ':');
        std::map<std::string, std::string> given;
        for (; *attributes != nullptr; attributes += 2) {
            std::string const attribute = attributes[0];
            bool const isOurs = attribute == "xmlns" || attribute.compare(0, 6, "xmlns:") == 0 || attribute == "xml:space" ||
                                instancePrefixes.count(attribute.substr(0, attribute.find(':') + 1)) != 0;
            if (!isOurs)
                given.emplace(local(attribute), attributes[1]);
        }
        for (auto const& [attribute, value] : given)
            listing.append(" ").append(attribute).append("=").append(value);
        listing += '\n';
    }
    void end()
    {
        std::string const text = open.back().hasChild ? std::string() : trimmed(open.back().text);
        listing += "end " + text + "\n";
        open.pop_back();
    }
};

std::string byExpat(std::string const& document, char const* encoding, XML_Error& error)
{
    Pushed pushed;
    std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> const parser(XML_ParserCreate(encoding), XML_ParserFree);
    XML_SetUserData(parser.get(), &pushed);
    XML_SetElementHandler(
        parser.get(),
        [](void* data, char const* name, char const** attributes) { static_cast<Pushed*>(data)->start(name, attributes); },
        [](void* data, char const*) { static_cast<Pushed*>(data)->end(); });
    XML_SetCharacterDataHandler(parser.get(), [](void* data, char const* text, int size) {
        auto& target = *static_cast<Pushed*>(data);
        if (!target.open.empty())
            target.open.back().text.append(text, static_cast<std::size_t>(size));
    });
    bool const isGood = XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), 1) == XML_STATUS_OK;
    error = XML_GetErrorCode(parser.get());
    return pushed.listing + (isGood ? "eof" : std::string("error ") + XML_ErrorString(error));
}

class Reader : public NyXmlStandardReader {
public:
    using NyXmlStandardReader::NyXmlStandardReader;

protected:
    bool checkVersion() override { return true; } // it would take an attribute away
};

std::string byReader(std::string const& document, Messages& messages)
{
    std::istringstream stream(document);
    Reader reader("document", stream);
    std::string listing;
    for (;;) {
        auto const mode = reader.readXml();
        if (mode == NyXmlFileReader::XML_READER_EOF)
            return listing + "eof";
        if (mode == NyXmlFileReader::XML_READER_ERROR) {
            std::string const text = messages.take();
            std::string const before = "Error: file not well formed.\n\t";
            std::size_t const begin = text.rfind(before) + before.size();
            return listing + "error " + text.substr(begin, text.find(".\n\tFile: ", begin) - begin);
        }
        if (mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG) {
            listing += "start " + reader.element().token();
            while (reader.remainingNumOfAttributes() != 0) {
                listing += ' ' + reader.attributeName().token() + '=';
                listing += reader.attributeValue();
            }
            listing += '\n';
        }
        if (mode != NyXmlFileReader::XML_READER_START_TAG)
            listing += "end " + (mode == NyXmlFileReader::XML_READER_CONTENT ? trimmed(reader.content()) : "") + "\n";
    }
}

/// Compares the two on each document below a folder. \return how many there were
std::size_t compare(char const* folder, bool (*isDocument)(fs::path const& path))
{
    std::size_t count = 0;
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file() || !isDocument(entry.path()))
            continue;
        ++count;
        SCOPED_TRACE(entry.path().string());
        std::ifstream stream(entry.path(), std::ios::binary);
        std::string const document{ std::istreambuf_iterator<char>(stream), {} };
        Messages messages;
        std::string const seen = byReader(document, messages);
        XML_Error error = XML_ERROR_NONE;
        std::string const pushed = byExpat(document, nullptr, error);
        bool const isIconvs = error == XML_ERROR_UNKNOWN_ENCODING && seen != pushed;
        EXPECT_EQ(isIconvs ? seen.substr(seen.size() - 3) : seen, isIconvs ? "eof" : pushed);
    }
    return count;
}

TEST(StandardReader, SeesTheConformanceSuiteAsExpatDoes)
{
    char const* const folder = std::getenv("NYXML_CONFORMANCE_SUITE");
    if (folder == nullptr)
        GTEST_SKIP() << "NYXML_CONFORMANCE_SUITE names no folder";
    EXPECT_GT(compare(folder, [](fs::path const& path) { return path.extension() == ".xml" || path.extension() == ".ent"; }),
              2500u);
}

TEST(StandardReader, SeesRealDocumentsAsExpatDoes)
{
    char const* const folder = std::getenv("NYXML_REAL_DOCUMENTS");
    if (folder == nullptr)
        GTEST_SKIP() << "NYXML_REAL_DOCUMENTS names no folder";
    EXPECT_GT(compare(folder, [](fs::path const& path) { return path.extension() != ".gz" && path.extension() != ".py"; }), 30u);
}

} // namespace
