#include "fileSupport.h"

#include <nyXmlKit/guard/NyXmlGuarded.h>

#include <gtest/gtest.h>

#include <functional>

#include <sys/stat.h>

namespace {

using Guard = NyXmlGuard;

/// What ended the reading of a document, "limit line path", or how many faults there were.
std::string endOf(NyXmlReadResult const& result)
{
    if (!result.has(NyXmlFault::Kind::LIMIT))
        return std::to_string(result.faults.size()) + " faults";
    NyXmlFault const& fault = result.faults.back();
    static std::string const start = "limit broken: ";
    std::size_t const name = fault.text.find(start) + start.size();
    return fault.text.substr(name, fault.text.find(':', name) - name) + ' ' + std::to_string(fault.line) + ' ' + fault.path;
}

std::string nodes(int depth)
{
    std::string document;
    for (int i = 0; i < depth; ++i)
        document += i == 0 ? "<node>" : "<nodes size=\"1\"><element>";
    document += "<value>1</value>";
    for (int i = depth; i-- > 0;)
        document += i == 0 ? "</node>" : "</element></nodes>";
    return document;
}

// Each limit at its bound and one beyond it. What was read is kept.
TEST(Guard, LimitsHoldExactly)
{
    std::string const names = "<v size='3'><element>abc</element><element a='12345' b='1' c='2'/><element>d</element></v>";
    std::string const children = "<v><element>1</element><element>2</element><element>3</element></v>";
    std::string const runs = "<v><group>1</group><group> 2 3\n</group></v>";
    struct Row {
        char const* name;
        std::size_t Guard::*limit;
        std::size_t most;
        std::string document;
        char const* end;
    };
    Row const rows[] = {
        { "bytes", &Guard::bytes, names.size(), names, "bytes 1 " },
        { "depth", &Guard::depth, 6, nodes(3), "depth 1 node/nodes/element/nodes/element/value" },
        { "text", &Guard::text, 3, names, "text 1 v" },
        { "attributes", &Guard::attributes, 3, names, "attributes 1 v/element" },
        { "items", &Guard::items, 3, names, "items 1 v" },
        { "items that are there", &Guard::items, 3, children, "items 1 v/element" },
        { "items in runs", &Guard::items, 5, runs, "items 2 v" },
        { "faults", &Guard::faults, 1, names, "faults 1 v" },
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        NyXmlReadOptions options;
        options.anyRoot = true;
        options.guard.emplace();
        (*options.guard).*row.limit = row.most;
        FileNode node;
        NyXmlVectorType<NyXmlBasicType<std::string>> texts;
        NyXmlObject& object = row.document[1] == 'n' ? static_cast<NyXmlObject&>(node) : texts;
        EXPECT_EQ(endOf(readText(row.document, object, options)).find(" faults") != std::string::npos, true);
        (*options.guard).*row.limit = row.most - 1;
        NyXmlReadResult const result = readText(row.document, object, options);
        EXPECT_EQ(endOf(result), row.end) << result.str();
        EXPECT_FALSE(result.isWhole);
        EXPECT_FALSE(result.isCancelled);

        if (row.limit == &Guard::depth || row.limit == &Guard::attributes) {
            options.strictness = NyXmlReadOptions::Strictness::LEFT_OUT_FITS;
            EXPECT_EQ(endOf(readText(row.document, object, options)), row.end) << "read strictly";
        }
    }
}

// What nobody reads counts as well, however short the document is.
TEST(Guard, SkippedElementsCount)
{
    struct Row {
        std::size_t Guard::*limit;
        std::size_t most;
        char const* limitsName;
    };
    Row const rows[] = { { &Guard::depth, 4, "depth" },
                         { &Guard::text, 5, "text" },
                         { &Guard::attributes, 2, "attributes" },
                         { &Guard::items, 3, "items" } };
    std::string const document =
        "<node><q>\n<a xmlns:p='u' p:b='1' c='2'/><d><e/></d><f>xx<!-- -->&lt;zz</f></q><value>1</value></node>";
    for (Row const& row : rows) {
        SCOPED_TRACE(row.limitsName);
        NyXmlReadOptions options;
        options.dialect = NyXmlDialect::STANDARD;
        options.guard.emplace();
        (*options.guard).*row.limit = row.most;
        FileNode node;
        EXPECT_EQ(endOf(readText(document, node, options)), "1 faults");
        (*options.guard).*row.limit = row.most - 1;
        EXPECT_EQ(endOf(readText(document, node, options)), row.limitsName + std::string(" 2 node/q"));
    }
}

// Classes of applications read by the fast paths, too, which in the core's reader have no end of their own.
TEST(Guard, FastPathsReturnAtTheEnd)
{
    struct Row {
        char const* name;
        std::function<std::string(NyXmlReader&)> next;
        char const* all; ///< what it gives, call by call
    };
    Row const rows[] = {
        { "complex tag", [](NyXmlReader& reader) { return reader.getComplexStartTagFast(); }, "a,/a,,," },
        { "simple tag", [](NyXmlReader& reader) { return reader.getSimpleStartTagFast(); }, "a x=\"1\",/a,,," },
        { "attribute", [](NyXmlReader& reader) { return reader.getAttributeValueFast(); }, "1,,,," },
        { "last attribute", [](NyXmlReader& reader) { return reader.getLastAttributeValueFast(); }, "1,,,," },
        { "word", [](NyXmlReader& reader) { return reader.getContentByWordFast(); }, ",a,x=\"1\",>,23,,/a,>,,," },
        { "end tag", [](NyXmlReader& reader) { return reader.getEndTagFast(), std::string("."); }, ".,.,.,.," },
    };
    std::string const document = "<a x=\"1\" > 23\n</a >\n";
    for (Row const& row : rows) {
        SCOPED_TRACE(row.name);
        std::istringstream stream(document);
        NyXmlGuardedReader reader("doc.xml", stream, Guard());
        std::string all;
        while (all.size() < std::string(row.all).size())
            all += row.next(reader) + ',';
        EXPECT_EQ(all, row.all);
        EXPECT_EQ(reader.mode(), NyXmlFileReader::XML_READER_EOF);
        EXPECT_EQ(reader.brokenLimit(), Guard::Limit::NONE);

        Messages messages;
        Guard guard;
        guard.bytes = 2;
        std::istringstream cut(document);
        NyXmlGuardedReader limited("doc.xml", cut, guard);
        for (int i = 0; i != 5; ++i)
            row.next(limited);
        EXPECT_EQ(limited.mode(), NyXmlFileReader::XML_READER_ERROR);
        EXPECT_EQ(messages.text(), "NyXmlGuard Error: limit broken: bytes: more than 2 of them.\n\tFile: doc.xml\n\tLine: 1\n");
    }
}

} // namespace
