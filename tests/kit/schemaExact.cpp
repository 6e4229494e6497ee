// The exact schema against validators that nobody here wrote: whatever the library writes is valid, and what has been spoilt is not.

#include "SchemaModels.h"
#include "SchemaSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr ModelKind modelKinds[] = {
    //                        pool  trees two   inf   defs  cont  words choic items
    { "unique names" },
    { "pooled names", true },
    { "tree classes", true, true },
    { "two namespaces", true, false, true },
    { "infinities", false, false, false, true, false, true },
    { "all value kinds", false, false, false, false, false, true, false, false, true },
    { "defaults left out", true, false, true, false, true, true, false, false, true },
    { "enumerations", true, false, false, false, false, true, true },
    { "polymorphic members", false, false, true, false, true, false, false, true, true },
    { "polymorphic trees", true, true, false, false, false, false, false, true },
    { "all of it", true, true, true, true, true, true, true, true, true },
};

// Where in a document something can be spoilt.
struct Spot {
    std::size_t begin, size;
    std::size_t endTag; // of the same name in the end tag, or 0
};
struct Spots {
    std::vector<Spot> names, numbers, words, required, optional;
};

bool isNumber(std::string const& word)
{
    return word == "inf" || word == "-inf" || word == "nan" || word == "-nan" ||
           (word.find_first_of("0123456789") != std::string::npos &&
            word.find_first_not_of("0123456789.e+-") == std::string::npos);
}

// What stands between two places, word by word. Words of the models' enumerations begin with WORD.
void findWords(std::string const& text, std::size_t begin, std::size_t end, Spots& spots)
{
    for (std::size_t at = begin; (at = text.find_first_not_of(" \n", at)) < end;) {
        std::size_t const size = std::min(text.find_first_of(" \n", at), end) - at;
        std::string const word = text.substr(at, size);
        if (isNumber(word))
            spots.numbers.push_back({ at, size, 0 });
        if (word.compare(0, 4, "WORD") == 0)
            spots.words.push_back({ at, size, 0 });
        at += size;
    }
}

Spots spotsOf(std::string const& text)
{
    Spots spots;
    std::vector<std::size_t> open;
    for (std::size_t at = text.find("<", 1); at != std::string::npos; at = text.find('<', at)) {
        std::size_t const end = text.find('>', at);
        if (text.compare(at, 9, "<EMBEDDED") == 0) { // markup of any kind, also markup that looks spoilt
            std::size_t const element = open.back();
            at = text.find("</" + text.substr(spots.names[element].begin, spots.names[element].size) + ">", at);
            spots.numbers.erase(std::remove_if(spots.numbers.begin(), spots.numbers.end(),
                                               [&](Spot const& spot) { return spot.begin > spots.names[element].begin; }),
                                spots.numbers.end());
            continue;
        }
        if (text[at + 1] == '/') {

            spots.names[open.back()].endTag = at + 2;
            open.pop_back();
        } else {
            std::size_t const nameEnd = text.find_first_of(" />", at);
            std::size_t cursor = nameEnd;
            spots.names.push_back({ at + 1, nameEnd - at - 1, 0 });
            if (text[end - 1] != '/')
                open.push_back(spots.names.size() - 1);
            while ((cursor = text.find_first_not_of(" \n", cursor)) < end && text[cursor] != '/') {
                std::size_t const equals = text.find('=', cursor);
                std::size_t const close = text.find('"', equals + 2);
                if (text.compare(cursor, 3, "xml") != 0 && text.compare(cursor, 3, "xsi") != 0) {
                    spots.names.push_back({ cursor, equals - cursor, 0 });
                    findWords(text, equals + 2, close, spots);
                }
                cursor = close + 1;
            }
        }
        std::size_t const next = text.find('<', end);
        if (next != std::string::npos)
            findWords(text, end + 1, next, spots);
        at = end;
    }
    for (Spot const& spot : spots.names) {
        std::size_t const local = text.compare(spot.begin, 6, "parts:") == 0 ? spot.begin + 6 : spot.begin;
        if (text.compare(local, 3, "req") == 0 && text[local + 3] != 'E') // of which there may be more
            spots.required.push_back(spot);
        if (text.compare(local, 3, "opt") == 0)
            spots.optional.push_back(spot);
    }
    return spots;
}

// Without an attribute, or an element.
std::string without(std::string text, Spot const& spot)
{
    std::size_t const value = text.find('"', spot.begin), tagEnd = text.find('>', spot.begin);
    std::size_t const end = text[spot.begin - 1] != '<' ? text.find('"', value + 1)
                            : spot.endTag != 0          ? text.find('>', spot.endTag)
                                                        : tagEnd;
    return text.erase(spot.begin - 1, end + 2 - spot.begin);
}

std::string renamed(std::string text, Spot const& spot)
{
    if (spot.endTag != 0)
        text.insert(spot.endTag + spot.size, "X");
    return text.insert(spot.begin + spot.size, "X");
}

} // namespace

// A few models of each kind; NYXML_TEST_SCHEMA_MODELS=200 for as many of each.
TEST(SchemaExact, AcceptsWhatIsWrittenAndNothingSpoilt)
{
    char const* const wanted = std::getenv("NYXML_TEST_SCHEMA_MODELS");
    unsigned int const count = wanted != nullptr ? static_cast<unsigned int>(std::atoi(wanted)) : 4;
    unsigned int spoilt[5] = {};
    for (ModelKind const& kind : modelKinds) {
        for (unsigned int seed = 1; seed <= count; ++seed) {
            SCOPED_TRACE(std::string(kind.name) + ", model " + std::to_string(seed));
            SampleModel model(kind, seed);
            ExactSchema const schema(model.root(), model.rootToken());
            Dice dice(seed);
            std::vector<std::string> const documents = { model.document(), model.document() };
            for (auto const& validator : schema.validators) {
                SCOPED_TRACE(validator->name());
                ASSERT_EQ(validator->fault(), "") << schema.all();
                for (std::string const& document : documents) {
                    ASSERT_EQ(validator->complaint(document), "") << document << schema.all();
                    Spots const spots = spotsOf(document);
                    auto const refuses = [&](std::vector<Spot> const& places, auto spoil, unsigned int& done) {
                        if (places.empty())
                            return;
                        std::string const changed = spoil(places[dice.below(static_cast<unsigned int>(places.size()))]);
                        EXPECT_NE(validator->complaint(changed), "") << changed << schema.all();
                        ++done;
                    };
                    auto const replaced = [&](Spot const& spot) {
                        return std::string(document).replace(spot.begin, spot.size, "seven");
                    };
                    auto const misspelt = [&](Spot const& spot) { return std::string(document).insert(spot.begin + 4, "x"); };
                    refuses(
                        spots.names, [&](Spot const& spot) { return renamed(document, spot); }, spoilt[0]);
                    refuses(spots.numbers, replaced, spoilt[1]);
                    refuses(spots.words, misspelt, spoilt[2]);
                    auto const leftOut = [&](Spot const& spot) { return without(document, spot); };
                    refuses(spots.required, leftOut, spoilt[3]);
                    if (!spots.optional.empty()) {
                        std::string const changed =
                            leftOut(spots.optional[dice.below(static_cast<unsigned int>(spots.optional.size()))]);
                        EXPECT_EQ(validator->complaint(changed), "") << changed << schema.all();
                        ++spoilt[4];
                    }
                }
                if (HasFailure())
                    return;
            }
        }
    }
    EXPECT_GT(spoilt[0], 11 * count);
    EXPECT_GT(spoilt[1], 11 * count);
    EXPECT_GT(spoilt[2], 2 * count);
    EXPECT_GT(spoilt[3], 2 * count);
    EXPECT_GT(spoilt[4], 2 * count);
}
