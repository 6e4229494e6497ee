// Expat: events pushed into a handler for each workload.

#include "Runs.h"
#include "Text.h"

#include <expat.h>

#include <cstring>

namespace bench {

namespace {

bool is(char const* name, char const* other) { return std::strcmp(name, other) == 0; }

/// What the handlers have in common: the depth of the open element and the text of one.
struct Handler {
    unsigned int depth = 0; ///< of the element whose tags are being seen, from 1
    bool wantsText = false;
    std::string text;

    void want()
    {
        wantsText = true;
        text.clear();
    }
    void addText(char const* part, std::size_t size)
    {
        if (wantsText)
            text.append(part, size);
    }
};

Point point(XML_Char const** attributes)
{
    return { numberFrom<double>(attributes[1]), numberFrom<double>(attributes[3]), numberFrom<double>(attributes[5]) };
}

/// Words are converted as they come. Only one that a piece of text may have cut is kept for the next piece.
struct NumbersHandler : Handler {
    Numbers& held;

    explicit NumbersHandler(Numbers& numbers) : held(numbers) {}

    void start(char const*, XML_Char const** attributes)
    {
        if (depth == 1)
            held.reserve(numberFrom<unsigned int>(attributes[1]));
    }
    void addText(char const* part, std::size_t size)
    {
        if (depth != 2)
            return;
        std::string_view run(part, size);
        if (!text.empty()) {
            std::size_t rest = 0;
            while (rest < run.size() && !isBlank(run[rest]))
                ++rest;
            text.append(run.substr(0, rest));
            run.remove_prefix(rest);
            if (run.empty())
                return;
            held.push_back(numberFrom<double>(text));
            text.clear();
        }
        std::size_t whole = run.size();
        while (whole > 0 && !isBlank(run[whole - 1]))
            --whole;
        text = run.substr(whole);
        appendNumbers(run.substr(0, whole), held);
    }
    void end(char const*)
    {
        if (depth == 2 && !text.empty())
            held.push_back(numberFrom<double>(text));
    }
};

struct CatalogHandler : Handler {
    Catalog& held;

    explicit CatalogHandler(Catalog& catalog) : held(catalog) {}

    void start(char const* name, XML_Char const** attributes)
    {
        if (depth == 4) {
            want();
        } else if (depth == 3) {
            if (is(name, "position"))
                held.back().position = point(attributes);
            else if (is(name, "tags"))
                held.back().tags.reserve(numberFrom<unsigned int>(attributes[1]));
            else
                want();
        } else if (depth == 2) {
            held.emplace_back().id = numberFrom<unsigned int>(attributes[1]);
        } else {
            held.reserve(numberFrom<unsigned int>(attributes[1]));
        }
    }
    void end(char const* name)
    {
        if (!wantsText)
            return;
        wantsText = false;
        Part& part = held.back();
        if (depth == 4)
            part.tags.push_back(text);
        else if (is(name, "active"))
            part.active = text == "1";
        else if (is(name, "mass"))
            part.mass = numberFrom<double>(text);
        else if (is(name, "title"))
            part.title = text;
    }
};

/// One part, one level higher than in a catalog and without tags.
struct PartHandler : Handler {
    Part& held;

    explicit PartHandler(Part& part) : held(part) {}

    void start(char const* name, XML_Char const** attributes)
    {
        if (depth == 1)
            held.id = numberFrom<unsigned int>(attributes[1]);
        else if (is(name, "position"))
            held.position = point(attributes);
        else
            want();
    }
    void end(char const* name)
    {
        wantsText = false;
        if (is(name, "active"))
            held.active = text == "1";
        else if (is(name, "mass"))
            held.mass = numberFrom<double>(text);
        else if (is(name, "title"))
            held.title = text;
    }
};

struct TextsHandler : Handler {
    Texts& held;

    explicit TextsHandler(Texts& texts) : held(texts) {}

    void start(char const*, XML_Char const** attributes)
    {
        if (depth == 2)
            held.emplace_back();
        else
            held.reserve(numberFrom<unsigned int>(attributes[1]));
    }
    void end(char const*) {}
    void addText(char const* part, std::size_t size)
    {
        if (depth == 2)
            held.back().append(part, size);
    }
};

struct PathHandler : Handler {
    Path& held;

    explicit PathHandler(Path& path) : held(path) {}

    void start(char const*, XML_Char const** attributes)
    {
        if (depth == 2)
            held.push_back(point(attributes));
        else
            held.reserve(numberFrom<unsigned int>(attributes[1]));
    }
    void end(char const*) {}
    void addText(char const*, std::size_t) {}
};

struct WeightsHandler : Handler {
    Weights& held;
    std::string key;

    explicit WeightsHandler(Weights& weights) : held(weights) {}

    void start(char const*, XML_Char const**)
    {
        if (depth == 3)
            want();
    }
    void end(char const* name)
    {
        if (depth != 3)
            return;
        wantsText = false;
        if (is(name, "key"))
            key.swap(text);
        else
            held.emplace_hint(held.end(), std::move(key), numberFrom<double>(text));
    }
};

struct Walked {
    unsigned int elements = 0;
    std::size_t textBytes = 0;
};

struct WalkHandler : Handler {
    Walked& held;

    explicit WalkHandler(Walked& walked) : held(walked) {}

    void start(char const*, XML_Char const**) { ++held.elements; }
    void end(char const*) {}
    void addText(char const*, std::size_t size) { held.textBytes += size; }
};

template <class Handler, class Held>
void parse(std::string& document, Held& held)
{
    Handler handler(held);
    XML_Parser const parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, &handler);
    XML_SetElementHandler(
        parser,
        [](void* data, XML_Char const* name, XML_Char const** attributes) {
            auto& target = *static_cast<Handler*>(data);
            ++target.depth;
            target.start(name, attributes);
        },
        [](void* data, XML_Char const* name) {
            auto& target = *static_cast<Handler*>(data);
            target.end(name);
            --target.depth;
        });
    XML_SetCharacterDataHandler(parser, [](void* data, XML_Char const* text, int size) {
        static_cast<Handler*>(data)->addText(text, static_cast<std::size_t>(size));
    });
    XML_Parse(parser, document.data(), static_cast<int>(document.size()), 1);
    XML_ParserFree(parser);
}

void readFile(std::string const& path, Part& part) { parse<PartHandler>(fileBytes(path), part); }

} // namespace

void addExpat(Runs& runs)
{
    runs.read("readNumbers/Expat", numbersDocument, parse<NumbersHandler, Numbers>, numbers);
    runs.read("readCatalog/Expat", catalogDocument, parse<CatalogHandler, Catalog>, catalog);
    runs.read("readPath/Expat", pathDocument, parse<PathHandler, Path>, path);
    runs.read("readMap/Expat", weightsDocument, parse<WeightsHandler, Weights>, weights);
    runs.read("readTexts/Expat", textsDocument, parse<TextsHandler, Texts>, texts);
    runs.readFiles("readFiles/Expat", readFile, plainPart);
    runs.read<Walked>("walk/Expat", catalogDocument, parse<WalkHandler, Walked>,
                      [](Walked const& walked) { return walked.elements == catalogElements() && walked.textBytes > 0; });
}

} // namespace bench
