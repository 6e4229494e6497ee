// Reads a robot cell from a document of several files, lists it, draws it, changes it, writes it anew with its schema, reads that
// back and compares. Then reads a faulty document, to show what the library says of it.
//
//     robotCell [OUTPUT FOLDER [DOCUMENT [PLUGIN FOLDER]]]

#include "Model.h"
#include "Progress.h"
#include "Walks.h"

#include <nyXml/platform/NyPrint.h>
#include <nyXml/writer/NyXmlWriter.h>
#include <nyXmlKit/file/NyXmlFile.h>
#include <nyXmlKit/schema/NyXmlExactSchema.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

using namespace robotCell;
namespace fs = std::filesystem;

namespace {

/// Shows what the library reports between our own lines, where it belongs in time.
void report(int /*printType*/, std::string const& /*location*/, std::string const& text)
{
    static bool atLineStart = true;
    if (atLineStart)
        Progress::endLine();
    for (char c : text) {
        if (atLineStart)
            std::cout << "  | ";
        std::cout << c;
        atLineStart = c == '\n';
    }
}

/// Nothing of what happens while it lives is reported.
struct Silence {
    Silence()
    {
        Ny::Print::setHandler([](int, std::string const&, std::string const&) {});
    }
    ~Silence() { Ny::Print::setHandler(report); }
};

/// Without what the visitor says of classes that it doesn't enter, as the sequences of numbers.
void walkInSilence(Cell const& cell, CellWalk& walk)
{
    Silence const silence;
    walk.walk(cell);
}

/// Shows faults as report() shows messages.
void show(std::vector<NyXmlFault> const& faults)
{
    Progress::endLine();
    for (NyXmlFault const& fault : faults)
        std::cout << "  | " << fault.str() << '\n';
}

/// Reads as others write XML, and looks at every text and member. A document need not hold what is as it always is.
NyXmlReadResult readCell(Cell& cell, fs::path const& document)
{
    NyXmlReadOptions options;
    options.dialect = NyXmlDialect::STANDARD;
    options.strictness = NyXmlReadOptions::Strictness::LEFT_OUT_FITS;
    Progress const progress("reading");
    NyXmlReadResult result = NyXmlFile::read(document.string(), cell, options);
    for (std::string const& notice : result.notices)
        report(Ny::Print::NOTICE, {}, notice + '\n');
    show(result.faults);
    return result;
}

NyXmlWriteResult writeCell(Cell const& cell, fs::path const& document)
{
    NyXmlWriteOptions options;
    options.dialect = NyXmlDialect::STANDARD;
    options.withVersion = true; // the reader checks it
    options.prepare = [&](NyXmlWriter& writer) {
        writer.setLanguageSelection(NyXmlWriter::LANGUAGE_XML);
        writer.setLinkTotal(cell.robots.size());
    };
    NyXmlWriteResult result = NyXmlFile::write(document.string(), cell, options);
    show(result.faults);
    return result;
}

void change(Cell& cell)
{
    cell.name = cell.name.value() + R"( <spare> & "new")"; // what a user types comes back as it is
    cell.operators.pushBack(Text("Edsger D."));
    for (auto& robot : cell.robots.vectorContainer()) {
        robot.enabled.setValue(true);
        robot.home.vectorContainer().back() += 0.25;
    }
    // A `library` attribute is not kept: who writes the members says where their classes come from.
    Texts libraries = cell.tasks.addLibraries();
    libraries.pushBack(Text("./weld"));
    cell.tasks.setAddLibraries(libraries);
}

bool writesAndReadsBack(Cell& cell, fs::path const& document)
{
    std::cout << "\nWriting " << document.filename().string() << '\n';
    bool written = false;
    {
        Progress const progress("writing");
        written = bool(writeCell(cell, document));
    }
    Cell again;
    bool const read = bool(readCell(again, document));
    bool const equal = written && read && again == cell;
    std::cout << "  read back: " << (equal ? "both are equal\n" : "they differ\n");
    return equal;
}

bool run(fs::path const& document, fs::path const& output)
{
    std::cout << "Reading " << document.filename().string() << ", the documents it links to and the plug-ins it names\n";
    Cell cell;
    if (!readCell(cell, document))
        return false;
    std::cout << '\n';
    Listing listing(std::cout);
    walkInSilence(cell, listing);

    std::ofstream drawing(output / "cell.dot", std::ios::binary);
    {
        Picture picture(drawing);
        walkInSilence(cell, picture);
    }
    drawing.close();
    std::cout << "\nThe same as a picture: " << (output / "cell.dot").string() << '\n';

    change(cell);
    fs::create_directories(output / "linked");
    cell.robots.setLinkFolder(output / "linked");
    bool const linkedEqual = writesAndReadsBack(cell, output / "linked" / "cell.xml");
    cell.robots.setLinkFolder({});
    bool const wholeEqual = writesAndReadsBack(cell, output / "cell.xml");

    cell.createSchema((output / "cell.xml").string(), Cell::classToken());
    fs::create_directories(output / "exact"); // the companion library's, under the same name
    NyXmlExactSchema::create(cell, (output / "exact" / "cell.xml").string(), Cell::classToken());
    std::cout << "  its schema: " << (output / "cell.robotCell.xsd").string() << "\n\n"
              << std::ifstream(output / "cell.xml", std::ios::binary).rdbuf();

    std::cout << "\nReading a faulty document\n";
    Cell damaged;
    NyXmlReadResult const result = readCell(damaged, document.parent_path() / "faulty.xml");
    std::cout << "  " << (result.isWhole ? "whole" : "not whole") << ", " << result.faults.size() << " faults, version "
              << (result.doesVersionFit ? "fits" : "is newer than ours") << ", error code " << result.errorCode
              << ". What could be read:\n\n";
    walkInSilence(damaged, listing);
    return linkedEqual && wholeEqual;
}

} // namespace

int main(int argc, char** argv)
{
    fs::path const output = fs::absolute(argc > 1 ? argv[1] : ".");
    fs::path const document = fs::absolute(argc > 2 ? argv[2] : ROBOTCELL_DATA "/cell.xml");
    // Documents name plug-ins as "./weld.nyp": they are looked for where the program runs.
    fs::current_path(argc > 3 ? argv[3] : ROBOTCELL_PLUGINS);

    Ny::Print::setHandler(report);
    bool const asExpected = run(document, output);
    Ny::Print::setHandler({});
    return asExpected ? 0 : 1;
}
