// Reads a robot cell from a document of several files, shows it, changes it, writes it anew, reads that back and compares.
// Then reads a faulty document, to show what the library says of it.
//
//     robotCell [DOCUMENT] [PLUGIN FOLDER] [OUTPUT FOLDER]

#include "Model.h"

#include <nyXml/compound/NyXmlFactory.h>
#include <nyXml/core/NyXml.h>
#include <nyXml/core/NyXmlInfo.h>
#include <nyXml/platform/NyPrint.h>
#include <nyXml/reader/NyXmlReader.h>
#include <nyXml/writer/NyXmlWriter.h>

#include <filesystem>
#include <fstream>
#include <iostream>

using namespace robotCell;
namespace fs = std::filesystem;

namespace {

struct Places {
    fs::path document;
    fs::path plugins;
    fs::path output;
};

/// What reading a document came to. The object holds what could be read, whatever the rest says.
struct Outcome {
    bool read;
    bool versionFits;
    unsigned int errorCode;
};

Outcome readCell(Cell& cell, fs::path const& document, fs::path const& plugins)
{
    std::ifstream stream(document, std::ios::binary);
    if (!stream)
        std::cout << "cannot open " << document.string() << '\n';

    NyXmlReader reader(document.string(), stream);
    auto factory = std::make_unique<NyXmlFactory>();
    factory->loadLibrary((plugins / "gripper.nyp").string());
    reader.setFactoryPointer(factory.release()); // the reader's from here

    auto const mode = reader.readXml(); // to the root's start tag
    bool const atRoot = mode == NyXmlFileReader::XML_READER_START_TAG || mode == NyXmlFileReader::XML_READER_EMPTY_TAG;
    bool const versionFits = reader.versionFlag();
    bool const done = atRoot && cell.read(reader);
    return { done, versionFits, reader.errorCode() };
}

bool writeCell(Cell const& cell, fs::path const& document)
{
    std::ofstream stream(document, std::ios::binary);
    {
        NyXmlWriter writer(document.string(), stream);
        writer.setLanguageSelection(NyXmlWriter::LANGUAGE_XML);
        writer.writeStartTag(Cell::classToken());
        writer.setAttributeName(NyXml::NyVersionToken);
        writer.data(NyXmlLibraryVersion);
        cell.write(writer);
        writer.writeEndTag();
    }
    return stream.flush().good();
}

void show(Cell const& cell)
{
    std::cout << "  cell \"" << cell.name.value() << "\", operated by";
    for (auto const& name : cell.operators.vectorContainer())
        std::cout << ' ' << name.value();
    std::cout << '\n';
    for (auto const& robot : cell.robots.vectorContainer()) {
        std::cout << "  robot " << robot.id.value() << " (" << robot.model.value() << ", "
                  << (robot.enabled.value() ? "enabled" : "disabled") << ") at y = " << robot.base.y.value() << ", home";
        for (double angle : robot.home.vectorContainer())
            std::cout << ' ' << angle;
        std::cout << '\n';
        for (auto const& joint : robot.joints.vectorContainer())
            std::cout << "    joint " << joint.name.value() << " from " << joint.lower.value() << " to " << joint.upper.value()
                      << '\n';
    }
    std::cout << "  tool: " << (cell.tool() != nullptr ? cell.tool()->token().token() : "none") << '\n';
}

void change(Cell& cell)
{
    cell.operators.pushBack(Text("Edsger D."));
    for (auto& robot : cell.robots.vectorContainer()) {
        robot.enabled.setValue(true);
        robot.home.vectorContainer().back() += 0.25;
    }
}

void showDocument(fs::path const& document)
{
    std::ifstream stream(document, std::ios::binary);
    std::cout << stream.rdbuf() << '\n';
}

int run(Places const& places)
{
    std::cout << "Reading " << places.document.filename().string() << " and the documents that it includes\n";
    Cell cell;
    Outcome const first = readCell(cell, places.document, places.plugins);
    if (!first.read || first.errorCode != 0)
        return 1;
    show(cell);

    std::cout << "\nChanging it and writing it anew, as one document\n\n";
    change(cell);
    fs::path const written = places.output / "cell.xml";
    if (!writeCell(cell, written))
        return 1;
    showDocument(written);

    std::cout << "Reading that back\n";
    Cell again;
    Outcome const second = readCell(again, written, places.plugins);
    bool const equal = second.read && second.errorCode == 0 && again == cell;
    std::cout << (equal ? "  both are equal\n" : "  they differ\n");

    std::cout << "\nReading a faulty document\n";
    Cell damaged;
    Outcome const third = readCell(damaged, places.document.parent_path() / "faulty.xml", places.plugins);
    std::cout << "  read: " << (third.read ? "to its end" : "broken off") << ", version "
              << (third.versionFits ? "fits" : "is newer than ours") << ", error code " << third.errorCode
              << ". What could be read:\n";
    show(damaged);
    return equal ? 0 : 1;
}

/// Shows what the library reports between our own lines, where it belongs in time.
void report(int /*printType*/, std::string const& /*location*/, std::string const& text)
{
    static bool atLineStart = true;
    for (char c : text) {
        if (atLineStart)
            std::cout << "  | ";
        std::cout << c;
        atLineStart = c == '\n';
    }
}

} // namespace

int main(int argc, char** argv)
{
    Places places{ ROBOTCELL_DATA "/cell.xml", ROBOTCELL_PLUGINS, "." };
    fs::path* const arguments[] = { &places.document, &places.plugins, &places.output };
    for (int i = 1; i < argc && i <= 3; ++i)
        *arguments[i - 1] = argv[i];

    Ny::Print::setHandler(report);
    int const result = run(places);
    Ny::Print::setHandler({});
    return result;
}
