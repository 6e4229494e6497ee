#include "Data.h"

#include "Text.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <utility>

namespace bench {

namespace {

unsigned int numberCount = 1000000;
unsigned int partCount = 100000;
unsigned int pointCount = 300000;
unsigned int weightCount = 200000;
unsigned int textCount = 500000;
unsigned int fileCount = 5000;

/// The same sequence on every machine: the distributions of the standard library are not.
class Dice {
public:
    explicit Dice(unsigned int seed) : m_theEngine(seed) {}

    unsigned int below(unsigned int bound) { return static_cast<unsigned int>(m_theEngine() % bound); }
    double real() { return (static_cast<double>(m_theEngine() >> 11) * 0x1p-53 - 0.5) * 2000.0; }
    std::string words(int count)
    {
        std::string text = word();
        while (--count > 0)
            text.append(" ").append(word());
        return text;
    }
    char const* word()
    {
        static char const* const words[] = { "axis",   "base", "cable",   "drive", "encoder",
                                             "flange", "gear", "housing", "joint", "key" };
        return words[below(10)];
    }

private:
    std::mt19937_64 m_theEngine;
};

void append(std::string& document, double number) { document += NumberText(number, 17).view(); }

void appendPoint(std::string& document, char const* tag, Point const& point)
{
    document.append("<").append(tag).append(" x=\"");
    append(document, point.x);
    document += "\" y=\"";
    append(document, point.y);
    document += "\" z=\"";
    append(document, point.z);
    document += "\"/>\n";
}

/// <tag id=""><active/><mass/><position/>
void beginPart(std::string& document, char const* tag, Part const& part)
{
    document.append("<").append(tag).append(" id=\"").append(std::to_string(part.id)).append("\">\n");
    document += part.active ? "  <active>1</active>\n" : "  <active>0</active>\n";
    document += "  <mass>";
    append(document, part.mass);
    document += "</mass>\n  ";
    appendPoint(document, "position", part.position);
}

void appendPart(std::string& document, Part const& part)
{
    document += ' ';
    beginPart(document, "element", part);
    document += "  <tags size=\"" + std::to_string(part.tags.size()) + "\">\n";
    for (std::string const& tag : part.tags)
        document += "   <element>" + tag + "</element>\n";
    document += "  </tags>\n  <title>" + part.title + "</title>\n </element>\n";
}

/// The files of the small parts in a folder of their own.
class SmallFiles {
public:
    SmallFiles()
    {
        if (mkdtemp(m_theFolder.data()) == nullptr)
            throw std::runtime_error("no folder for small files");
        for (Part const& part : smallParts()) {
            std::string document;
            beginPart(document, "part", part);
            document += "  <title>" + part.title + "</title>\n</part>\n";
            m_thePaths.push_back(m_theFolder + '/' + std::to_string(part.id) + ".xml");
            std::ofstream(m_thePaths.back(), std::ios::binary) << document;
        }
    }
    ~SmallFiles()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_theFolder, ignored);
    }
    SmallFiles(SmallFiles const&) = delete;
    SmallFiles& operator=(SmallFiles const&) = delete;

    std::vector<std::string> const& paths() const { return m_thePaths; }

private:
    std::string m_theFolder = (std::filesystem::temp_directory_path() / "nyXmlBench.XXXXXX").string();
    std::vector<std::string> m_thePaths;
};

} // namespace

void divideSizesBy(unsigned int divisor)
{
    for (unsigned int* const count : { &numberCount, &partCount, &pointCount, &weightCount, &textCount, &fileCount })
        *count /= divisor;
}

Numbers const& numbers()
{
    static Numbers const data = [] {
        Dice dice(1);
        Numbers made(numberCount);
        for (double& number : made)
            number = dice.real();
        return made;
    }();
    return data;
}

std::string const& numbersDocument()
{
    static std::string const document = [] {
        std::string made = "<numbers size=\"" + std::to_string(numberCount) + "\">\n <group>\n  ";
        unsigned int column = 0;
        for (double const number : numbers()) {
            append(made, number);
            made += ++column % 10 == 0 ? "\n  " : " ";
        }
        return made + "</group>\n</numbers>\n";
    }();
    return document;
}

void forEachPart(std::function<void(Part const&)> const& take)
{
    Dice dice(2);
    Part part;
    for (part.id = 1; part.id <= partCount; ++part.id) {
        part.active = dice.below(2) == 1;
        part.mass = dice.real();
        part.position = { dice.real(), dice.real(), dice.real() };
        part.tags.clear();
        for (int i = 0; i < 3; ++i)
            part.tags.push_back(dice.words(2));
        part.title = dice.words(5);
        take(part);
    }
}

Catalog const& catalog()
{
    static Catalog const data = [] {
        Catalog made;
        made.reserve(partCount);
        forEachPart([&made](Part const& part) { made.push_back(part); });
        return made;
    }();
    return data;
}

std::string const& catalogDocument()
{
    static std::string const document = [] {
        std::string made = "<catalog size=\"" + std::to_string(partCount) + "\">\n";
        for (Part const& part : catalog())
            appendPart(made, part);
        return made + "</catalog>\n";
    }();
    return document;
}

unsigned int catalogParts() { return partCount; }

unsigned int catalogElements() { return 1 + partCount * 9; }

unsigned int catalogAttributes() { return 1 + partCount * 5; }

Path const& path()
{
    static Path const data = [] {
        Dice dice(3);
        Path made(pointCount);
        for (Point& point : made)
            point = { dice.real(), dice.real(), dice.real() };
        return made;
    }();
    return data;
}

std::string const& pathDocument()
{
    static std::string const document = [] {
        std::string made = "<path size=\"" + std::to_string(pointCount) + "\">\n";
        for (Point const& point : path()) {
            made += ' ';
            appendPoint(made, "element", point);
        }
        return made + "</path>\n";
    }();
    return document;
}

Weights const& weights()
{
    static Weights const data = [] {
        Dice dice(4);
        Weights made;
        while (made.size() < weightCount) {
            std::string key = dice.words(2) + " ";
            key += std::to_string(dice.below(100000000));
            made.emplace(std::move(key), dice.real());
        }
        return made;
    }();
    return data;
}

std::string const& weightsDocument()
{
    static std::string const document = [] {
        std::string made = "<weights>\n";
        for (auto const& [key, value] : weights()) {
            made += " <element>\n  <key>" + key + "</key>\n  <value>";
            append(made, value);
            made += "</value>\n </element>\n";
        }
        return made + "</weights>\n";
    }();
    return document;
}

Texts const& texts()
{
    static Texts const data = [] {
        Dice dice(5);
        Texts made(textCount);
        for (std::string& text : made) {
            std::size_t const size = 5 + dice.below(36);
            text = dice.words(8).substr(0, size);
            text.resize(size, '.');
            text.back() = 'e'; // no blank at the end, which a parser may drop
        }
        return made;
    }();
    return data;
}

std::string const& textsDocument()
{
    static std::string const document = [] {
        std::string made = "<texts size=\"" + std::to_string(textCount) + "\">\n";
        for (std::string const& text : texts())
            made.append(" <element>").append(text).append("</element>\n");
        return made + "</texts>\n";
    }();
    return document;
}

Catalog const& smallParts()
{
    static Catalog const data = [] {
        Dice dice(6);
        Catalog made(fileCount);
        for (Part& part : made) {
            part.id = static_cast<unsigned int>(&part - made.data()) + 1;
            part.active = dice.below(2) == 1;
            part.mass = dice.real();
            part.position = { dice.real(), dice.real(), dice.real() };
            part.title = dice.words(5);
        }
        return made;
    }();
    return data;
}

std::vector<std::string> const& smallFiles()
{
    static SmallFiles const files;
    return files.paths();
}

std::string& fileBytes(std::string const& path)
{
    thread_local std::string bytes;
    int const file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    bytes.resize(file >= 0 && fstat(file, &status) == 0 ? static_cast<std::size_t>(status.st_size) : 0);
    ssize_t const got = read(file, bytes.data(), bytes.size());
    bytes.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    close(file);
    return bytes;
}

} // namespace bench
