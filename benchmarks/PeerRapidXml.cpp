// RapidXML at its fastest: nothing translated, nothing terminated, values in their elements.

#include "Runs.h"
#include "Text.h"

#include <rapidxml/rapidxml.hpp>

namespace bench {

namespace {

using Node = rapidxml::xml_node<>;
using Attribute = rapidxml::xml_attribute<>;

Node* parsed(rapidxml::xml_document<>& tree, std::string& document)
{
    tree.parse<rapidxml::parse_fastest>(document.data());
    return tree.first_node();
}

std::string_view value(rapidxml::xml_base<> const* base) { return { base->value(), base->value_size() }; }
std::string_view name(rapidxml::xml_base<> const* base) { return { base->name(), base->name_size() }; }

template <class T>
T number(rapidxml::xml_base<> const* base)
{
    return numberFrom<T>(value(base));
}

Point point(Node* node)
{
    Attribute const* const x = node->first_attribute();
    Attribute const* const y = x->next_attribute();
    return { number<double>(x), number<double>(y), number<double>(y->next_attribute()) };
}

void readPart(Node* node, Part& part)
{
    part.id = number<unsigned int>(node->first_attribute());
    for (Node* member = node->first_node(); member != nullptr; member = member->next_sibling()) {
        std::string_view const tag = name(member);
        if (tag == "active") {
            part.active = value(member) == "1";
        } else if (tag == "mass") {
            part.mass = number<double>(member);
        } else if (tag == "position") {
            part.position = point(member);
        } else if (tag == "title") {
            part.title = value(member);
        } else if (tag == "tags") {
            part.tags.reserve(number<unsigned int>(member->first_attribute()));
            for (Node* item = member->first_node(); item != nullptr; item = item->next_sibling())
                part.tags.emplace_back(value(item));
        }
    }
}

void readNumbers(std::string& document, Numbers& held)
{
    rapidxml::xml_document<> tree;
    Node* const root = parsed(tree, document);
    held.reserve(number<unsigned int>(root->first_attribute()));
    appendNumbers(value(root->first_node()), held);
}

void readCatalog(std::string& document, Catalog& held)
{
    rapidxml::xml_document<> tree;
    Node* const root = parsed(tree, document);
    held.reserve(number<unsigned int>(root->first_attribute()));
    for (Node* node = root->first_node(); node != nullptr; node = node->next_sibling())
        readPart(node, held.emplace_back());
}

void readTexts(std::string& document, Texts& held)
{
    rapidxml::xml_document<> tree;
    Node* const root = parsed(tree, document);
    held.reserve(number<unsigned int>(root->first_attribute()));
    for (Node* node = root->first_node(); node != nullptr; node = node->next_sibling())
        held.emplace_back(value(node));
}

void readFile(std::string const& path, Part& held)
{
    rapidxml::xml_document<> tree;
    readPart(parsed(tree, fileBytes(path)), held);
}

void readPath(std::string& document, Path& held)
{
    rapidxml::xml_document<> tree;
    Node* const root = parsed(tree, document);
    held.reserve(number<unsigned int>(root->first_attribute()));
    for (Node* node = root->first_node(); node != nullptr; node = node->next_sibling())
        held.push_back(point(node));
}

void readWeights(std::string& document, Weights& held)
{
    rapidxml::xml_document<> tree;
    for (Node* node = parsed(tree, document)->first_node(); node != nullptr; node = node->next_sibling())
        held.emplace_hint(held.end(), value(node->first_node()), number<double>(node->last_node()));
}

} // namespace

void addRapidXml(Runs& runs)
{
    runs.read("readNumbers/RapidXML", numbersDocument, readNumbers, numbers);
    runs.read("readCatalog/RapidXML", catalogDocument, readCatalog, catalog);
    runs.read("readPath/RapidXML", pathDocument, readPath, path);
    runs.read("readMap/RapidXML", weightsDocument, readWeights, weights);
    runs.read("readTexts/RapidXML", textsDocument, readTexts, texts);
    runs.readFiles("readFiles/RapidXML", readFile, plainPart);
    runs.read<rapidxml::xml_document<>>(
        "walk/RapidXML", catalogDocument, [](std::string& document, rapidxml::xml_document<>& tree) { parsed(tree, document); },
        [](rapidxml::xml_document<> const& tree) { return name(tree.first_node()) == "catalog"; });
}

} // namespace bench
