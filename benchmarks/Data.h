#ifndef NYXML_BENCHMARKS_DATA_H
#define NYXML_BENCHMARKS_DATA_H

#include <functional>
#include <map>
#include <string>
#include <tuple>
#include <vector>

/// What the contenders read and write: plain structs, filled from a seed, and the documents that hold them.
namespace bench {

struct Point {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    bool operator==(Point const& other) const { return x == other.x && y == other.y && z == other.z; }
};

struct Part {
    unsigned int id = 0;
    bool active = false;
    double mass = 0.0;
    Point position;
    std::vector<std::string> tags;
    std::string title;

    bool operator==(Part const& other) const
    {
        return std::tie(id, active, mass, position, tags, title) ==
               std::tie(other.id, other.active, other.mass, other.position, other.tags, other.title);
    }
};

using Numbers = std::vector<double>;
using Catalog = std::vector<Part>;
using Path = std::vector<Point>;
using Texts = std::vector<std::string>;
using Weights = std::map<std::string, double>;

/// Makes all data and documents smaller than said below. To be called before any of them is asked for.
void divideSizesBy(unsigned int divisor);

/// <numbers size="1000000"><group>a run of numbers of 17 digits, ten on a line</group></numbers>
Numbers const& numbers();
std::string const& numbersDocument();

/// <catalog size="100000"> and for each part
/// <element id="1"><active/><mass/><position x="" y="" z=""/><tags size="3"><element/>...</tags><title/></element>
Catalog const& catalog();
std::string const& catalogDocument();

/// The parts one by one, each the same as in catalog(), which is not made for it.
void forEachPart(std::function<void(Part const&)> const& take);

unsigned int catalogParts();

/// In the catalog's document, the root included.
unsigned int catalogElements();
unsigned int catalogAttributes();

/// <path size="300000"><element x="" y="" z=""/>...</path>
Path const& path();
std::string const& pathDocument();

/// <weights><element><key/><value/></element>...</weights>, 200,000 of them in the order of their keys
Weights const& weights();
std::string const& weightsDocument();

/// <texts size="500000"><element>5 to 40 bytes</element>...</texts>
Texts const& texts();
std::string const& textsDocument();

/// A part without tags in each of 5,000 files of some 240 bytes: <part id="1"><active/><mass/><position x="" y="" z=""/><title/></part>
Catalog const& smallParts();
/// Their paths. The files are written at the first call, and are gone when the program ends.
std::vector<std::string> const& smallFiles();

/// Reads a whole file into a buffer that the next call uses again: no way is quicker.
std::string& fileBytes(std::string const& path);

} // namespace bench

#endif
