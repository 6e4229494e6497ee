// Documents that nobody of this project wrote, against listings that another parser made. They are not part of the project: the
// environment variable NYXML_REAL_DOCUMENTS names a folder of documents, each with its listing beside it as <file>.events.gz. One event
// a line: START name, EMPTY name, ATTR name=value, CONTENT text, END name; in texts a backslash, a newline and a carriage return are
// written \\, \n and \r.

#include <nyXml/reader/NyXmlFileReader.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string escaped(std::string const& text)
{
    std::string result;
    for (char const c : text) {
        std::size_t const special = std::string_view("\\\n\r").find(c);
        if (special == std::string_view::npos)
            result += c;
        else
            result.append({ '\\', "\\nr"[special] });
    }
    return result;
}

// The document as the reader sees it, in the form of a listing.
std::string listingBy(fs::path const& document)
{
    std::ifstream stream(document, std::ios::binary);
    NyXmlFileReader reader(document.string(), stream);
    std::string listing;
    std::vector<std::string> open; // behind an end tag element() is the parent
    for (auto mode = reader.readXml(); mode != NyXmlFileReader::XML_READER_EOF; mode = reader.readXml()) {
        if (mode == NyXmlFileReader::XML_READER_ERROR)
            return listing + "ERROR\n";
        if (mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG)
            open.push_back(reader.element().token());
        static char const* const names[] = { "", "START ", "END ", "EMPTY ", "CONTENT " };
        listing += names[mode] + (mode == NyXmlFileReader::XML_READER_CONTENT ? escaped(reader.content()) : open.back()) + "\n";
        if (mode != NyXmlFileReader::XML_READER_START_TAG)
            open.pop_back();
        while (reader.remainingNumOfAttributes() != 0) {
            listing += "ATTR " + reader.attributeName().token() + "=";
            listing += escaped(reader.attributeValue()) + "\n";
        }
    }
    return listing + (reader.errorCode() != 0 ? "ERROR\n" : "");
}

std::string listingBeside(fs::path const& document)
{
    std::string const command = "gzip -dc '" + document.string() + ".events.gz'";
    std::unique_ptr<FILE, int (*)(FILE*)> const pipe(popen(command.c_str(), "r"), pclose);
    std::string listing;
    char part[65536];
    for (std::size_t count; pipe && (count = std::fread(part, 1, sizeof part, pipe.get())) != 0;)
        listing.append(part, count);
    return listing;
}

TEST(RealDocuments, AgreeWithTheirListings)
{
    char const* const folder = std::getenv("NYXML_REAL_DOCUMENTS");
    if (folder == nullptr)
        GTEST_SKIP() << "NYXML_REAL_DOCUMENTS names no folder";
    std::size_t count = 0;
    for (fs::directory_entry const& entry : fs::directory_iterator(folder)) {
        std::string const path = entry.path().string();
        if (!fs::exists(path + ".events.gz"))
            continue;
        SCOPED_TRACE(path);
        ++count;
        std::istringstream listed(listingBeside(path)), seen(listingBy(path));
        EXPECT_NE(listed.peek(), EOF);
        for (std::string line, other; std::getline(listed, line);)
            ASSERT_EQ(std::getline(seen, other) ? other : "nothing", line);
        EXPECT_EQ(seen.peek(), EOF);
    }
    EXPECT_NE(count, 0u) << "no document with a listing in " << folder;
}

} // namespace
