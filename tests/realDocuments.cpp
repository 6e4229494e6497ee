// Documents that nobody of this project wrote, against listings that another parser made. They are not part of the project: the
// environment variable NYXML_REAL_DOCUMENTS names a folder of documents, each with its listing beside it as <file>.events.gz. One event
// a line: START name, EMPTY name, ATTR name=value, CONTENT text, END name; in texts a backslash, a newline and a carriage return are
// written \\, \n and \r.

#include <nyXml/reader/NyXmlFileReader.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string escaped(std::string const& text)
{
    std::string result;
    for (char c : text)
        switch (c) {
        case '\\': result += "\\\\"; break;
        case '\n': result += "\\n"; break;
        case '\r': result += "\\r"; break;
        default: result += c;
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
        switch (mode) {
        case NyXmlFileReader::XML_READER_START_TAG:
            open.push_back(reader.element().token());
            listing += "START " + open.back() + "\n";
            break;
        case NyXmlFileReader::XML_READER_EMPTY_TAG: listing += "EMPTY " + reader.element().token() + "\n"; break;
        case NyXmlFileReader::XML_READER_END_TAG:
            listing += "END " + open.back() + "\n";
            open.pop_back();
            break;
        case NyXmlFileReader::XML_READER_CONTENT:
            listing += "CONTENT " + escaped(reader.content()) + "\n";
            open.pop_back();
            break;
        case NyXmlFileReader::XML_READER_EOF:
        case NyXmlFileReader::XML_READER_ERROR: return listing + "ERROR\n";
        }
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

// Shown in place of two long texts.
std::string firstDifference(std::string const& seen, std::string const& listed)
{
    std::size_t line = 0;
    while (line < seen.size() && line < listed.size() && seen[line] == listed[line])
        ++line;
    line = seen.rfind('\n', line) + 1;
    return "seen:   " + seen.substr(line, 200) + "\nlisted: " + listed.substr(std::min(line, listed.size()), 200);
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
        std::string const listed = listingBeside(path);
        std::string const seen = listingBy(path);
        EXPECT_FALSE(listed.empty());
        EXPECT_TRUE(seen == listed) << firstDifference(seen, listed);
    }
    EXPECT_NE(count, 0u) << "no document with a listing in " << folder;
}

} // namespace
