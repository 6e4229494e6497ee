// pugixml: parses in place, without the passes that our documents have no use for, and walks its tree.

#include "Runs.h"
#include "Text.h"

#include <pugixml.hpp>

namespace bench {

namespace {

constexpr unsigned int options = pugi::parse_minimal | pugi::parse_embed_pcdata;

pugi::xml_node parsed(pugi::xml_document& tree, std::string& document)
{
    tree.load_buffer_inplace(document.data(), document.size(), options, pugi::encoding_utf8);
    return tree.first_child();
}

template <class T>
T number(pugi::xml_attribute attribute)
{
    return numberFrom<T>(attribute.value());
}

template <class T>
T number(pugi::xml_node node)
{
    return numberFrom<T>(node.value());
}

/// The attributes x, y and z in their order.
Point point(pugi::xml_node node)
{
    pugi::xml_attribute const x = node.first_attribute();
    pugi::xml_attribute const y = x.next_attribute();
    return { number<double>(x), number<double>(y), number<double>(y.next_attribute()) };
}

void readPart(pugi::xml_node node, Part& part)
{
    part.id = number<unsigned int>(node.first_attribute());
    for (pugi::xml_node const member : node) {
        std::string_view const name = member.name();
        if (name == "active") {
            part.active = member.value()[0] == '1';
        } else if (name == "mass") {
            part.mass = number<double>(member);
        } else if (name == "position") {
            part.position = point(member);
        } else if (name == "title") {
            part.title = member.value();
        } else if (name == "tags") {
            part.tags.reserve(number<unsigned int>(member.first_attribute()));
            for (pugi::xml_node const tag : member)
                part.tags.emplace_back(tag.value());
        }
    }
}

void readTexts(std::string& document, Texts& held)
{
    pugi::xml_document tree;
    pugi::xml_node const root = parsed(tree, document);
    held.reserve(number<unsigned int>(root.first_attribute()));
    for (pugi::xml_node const node : root)
        held.emplace_back(node.value());
}

void readFile(std::string const& path, Part& held)
{
    pugi::xml_document tree;
    readPart(parsed(tree, fileBytes(path)), held);
}

void setPoint(pugi::xml_node node, Point const& point)
{
    node.append_attribute("x").set_value(NumberText(point.x, writtenDigits).c_str());
    node.append_attribute("y").set_value(NumberText(point.y, writtenDigits).c_str());
    node.append_attribute("z").set_value(NumberText(point.z, writtenDigits).c_str());
}

void appendText(pugi::xml_node parent, char const* name, char const* text)
{
    parent.append_child(name).append_child(pugi::node_pcdata).set_value(text);
}

void appendSize(pugi::xml_node node, std::size_t size)
{
    node.append_attribute("size").set_value(NumberText(static_cast<unsigned int>(size)).c_str());
}

class Text : public pugi::xml_writer {
public:
    explicit Text(std::string& text) : m_theText(text) {}
    void write(void const* data, std::size_t size) override { m_theText.append(static_cast<char const*>(data), size); }

private:
    std::string& m_theText;
};

void save(pugi::xml_document const& tree, std::string& document)
{
    Text text(document);
    tree.save(text, " ", pugi::format_indent | pugi::format_no_escapes, pugi::encoding_utf8);
}

void writeNumbers(std::string& document)
{
    pugi::xml_document tree;
    pugi::xml_node root = tree.append_child("numbers");
    appendSize(root, numbers().size());
    appendText(root, "group", runOf(numbers()).c_str());
    save(tree, document);
}

void fillCatalog(pugi::xml_document& tree)
{
    pugi::xml_node root = tree.append_child("catalog");
    appendSize(root, catalog().size());
    for (Part const& part : catalog()) {
        pugi::xml_node node = root.append_child("element");
        node.append_attribute("id").set_value(NumberText(part.id).c_str());
        appendText(node, "active", part.active ? "1" : "0");
        appendText(node, "mass", NumberText(part.mass, writtenDigits).c_str());
        setPoint(node.append_child("position"), part.position);
        pugi::xml_node tags = node.append_child("tags");
        appendSize(tags, part.tags.size());
        for (std::string const& tag : part.tags)
            appendText(tags, "element", tag.c_str());
        appendText(node, "title", part.title.c_str());
    }
}

void writeCatalog(std::string& document)
{
    pugi::xml_document tree;
    fillCatalog(tree);
    save(tree, document);
}

/// The save alone, of a tree that is there already.
void saveCatalog(std::string& document)
{
    static pugi::xml_document const tree = [] {
        pugi::xml_document filled;
        fillCatalog(filled);
        return filled;
    }();
    save(tree, document);
}

void writePath(std::string& document)
{
    pugi::xml_document tree;
    pugi::xml_node root = tree.append_child("path");
    appendSize(root, path().size());
    for (Point const& point : path())
        setPoint(root.append_child("element"), point);
    save(tree, document);
}

void writeWeights(std::string& document)
{
    pugi::xml_document tree;
    pugi::xml_node root = tree.append_child("weights");
    for (auto const& [key, value] : weights()) {
        pugi::xml_node node = root.append_child("element");
        appendText(node, "key", key.c_str());
        appendText(node, "value", NumberText(value, writtenDigits).c_str());
    }
    save(tree, document);
}

} // namespace

void pugixmlReadNumbers(std::string& document, Numbers& held)
{
    pugi::xml_document tree;
    pugi::xml_node const root = parsed(tree, document);
    held.reserve(number<unsigned int>(root.first_attribute()));
    appendNumbers(root.first_child().value(), held);
}

void pugixmlReadCatalog(std::string& document, Catalog& held)
{
    pugi::xml_document tree;
    pugi::xml_node const root = parsed(tree, document);
    held.reserve(number<unsigned int>(root.first_attribute()));
    for (pugi::xml_node const node : root)
        readPart(node, held.emplace_back());
}

void pugixmlReadPath(std::string& document, Path& held)
{
    pugi::xml_document tree;
    pugi::xml_node const root = parsed(tree, document);
    held.reserve(number<unsigned int>(root.first_attribute()));
    for (pugi::xml_node const node : root)
        held.push_back(point(node));
}

void pugixmlReadWeights(std::string& document, Weights& held)
{
    pugi::xml_document tree;
    for (pugi::xml_node const node : parsed(tree, document))
        held.emplace_hint(held.end(), node.first_child().value(), number<double>(node.last_child()));
}

void addPugixml(Runs& runs)
{
    runs.read("readNumbers/pugixml", numbersDocument, pugixmlReadNumbers, numbers);
    runs.read("readCatalog/pugixml", catalogDocument, pugixmlReadCatalog, catalog);
    runs.read("readPath/pugixml", pathDocument, pugixmlReadPath, path);
    runs.read("readMap/pugixml", weightsDocument, pugixmlReadWeights, weights);
    runs.read("readTexts/pugixml", textsDocument, readTexts, texts);
    runs.readFiles("readFiles/pugixml", readFile, plainPart);
    runs.read<pugi::xml_document>(
        "walk/pugixml", catalogDocument, [](std::string& document, pugi::xml_document& tree) { parsed(tree, document); },
        [](pugi::xml_document const& tree) {
            return tree.first_child().last_child().last_child().value() == catalog().back().title;
        });
    runs.write("writeNumbers/pugixml", writeNumbers, numbers);
    runs.write("writeCatalog/pugixml", writeCatalog, catalog);
    runs.write("writeCatalog/pugixml save alone", saveCatalog, catalog);
    runs.write("writePath/pugixml", writePath, path);
    runs.write("writeMap/pugixml", writeWeights, weights);
}

} // namespace bench
