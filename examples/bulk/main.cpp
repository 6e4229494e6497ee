// When the documents outgrow one thread, or one machine: all tracks below a folder, read on all cores, and by MPI on many machines.
//
//     bulk <folder> [threads]
//     mpirun --map-by ppr:1:node --bind-to none bulkMpi <folder> [threads]
//
// Every process reads every n-th document, and in it every thread takes the next one that nobody has. Only what a document comes to is
// kept, so that memory holds one document a thread. The output is in the order of the names, the same whoever read what. The processes
// see the folder under the same name. Says 1 if a document has faults.

#include "../gpx/Summary.h"
#include "Ranks.h"

#include <nyXmlKit/file/NyXmlFile.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include <sched.h>
#include <unistd.h>

namespace {

using Names = std::vector<std::string>;

/// What documents come to. The bytes travel between machines of one kind.
struct Figures {
    std::size_t tracks = 0, points = 0, unknown = 0, faults = 0;
    double metres = 0, climb = 0;
};

struct Report {
    Figures figures;
    std::string faults; ///< the first ones, a line each
};

/// The documents below a folder, in an order that depends on no file system.
Names documentsBelow(std::string const& folder)
{
    namespace fs = std::filesystem;
    Names names;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error))
        if (std::error_code no; entry->path().extension() == ".gpx" && entry->is_regular_file(no))
            names.push_back(entry->path().string());
    if (error)
        std::cerr << folder << ": " << error.message() << '\n';
    std::sort(names.begin(), names.end());
    return names;
}

Names namesIn(std::string const& text)
{
    Names names;
    for (std::size_t from = 0, to = 0; from < text.size(); from = to + 1) {
        to = text.find('\0', from);
        names.push_back(text.substr(from, to - from));
    }
    return names;
}

void addFault(Report& report, std::string const& fault)
{
    if (++report.figures.faults <= 5) // a document of another kind has one a line
        report.faults += "    " + fault + '\n';
}

Report reportOf(std::string const& name)
{
    NyXmlReadOptions options;
    options.dialect = NyXmlDialect::STANDARD;
    options.strictness = NyXmlReadOptions::Strictness::LEFT_OUT_FITS;
    options.toSignals = false; // they are the program's, and here are many threads
    Report report;
    gpx::Gpx document;
    for (NyXmlFault const& fault : NyXmlFile::read(name, document, options).faults) {
        using Kind = NyXmlFault::Kind;
        if (fault.kind == Kind::UNKNOWN_MEMBER) // what programs add of their own
            ++report.figures.unknown;
        else
            addFault(report, fault.str());
    }
    gpx::Summary const summary = gpx::summaryOf(document);
    report.figures.tracks = document.tracks.size();
    report.figures.points = summary.points;
    if (std::isfinite(summary.metres) && std::isfinite(summary.climb)) {
        report.figures.metres = summary.metres;
        report.figures.climb = summary.climb;
    } else {
        addFault(report, name + ": places without end");
    }
    return report;
}

/// How far all have come: a bar on a terminal, a line for each tenth elsewhere.
class Progress {
public:
    explicit Progress(std::size_t total) : m_total(total), m_isTerminal(isatty(STDERR_FILENO) == 1) {}
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress()
    {
        if (m_isTerminal)
            std::cerr << "\r\033[K"; // the bar makes way for the output
    }
    void show(std::size_t done)
    {
        constexpr std::size_t width = 40;
        if (m_isTerminal) {
            std::size_t const filled = done * width / m_total;
            std::cerr << "\r[" << std::string(filled, '#') << std::string(width - filled, ' ') << "] " << done << " of "
                      << m_total << std::flush;
        } else if (done * 10 / m_total > m_tenths) {
            std::cerr << done << " of " << m_total << '\n';
        }
        m_tenths = done * 10 / m_total;
    }

private:
    std::size_t m_total;
    bool m_isTerminal;
    std::size_t m_tenths = 0;
};

/// The cores that this process may use; mpirun may have given it fewer than the machine has.
std::size_t coreCount()
{
    cpu_set_t cores;
    CPU_ZERO(&cores);
    if (sched_getaffinity(0, sizeof cores, &cores) != 0)
        return std::max(1u, std::thread::hardware_concurrency());
    return static_cast<std::size_t>(CPU_COUNT(&cores));
}

/// This process's reports: of its first document, and of every n-th from there.
std::vector<Report> read(Names const& names, std::size_t threadCount, bulk::Ranks& ranks)
{
    std::size_t const mine = (names.size() + ranks.count() - 1 - ranks.rank()) / ranks.count();
    std::vector<Report> reports(mine);
    std::atomic<std::size_t> next = 0, done = 0;
    auto const work = [&] {
        for (std::size_t i = next++; i < mine; i = next++) {
            std::string const& name = names[ranks.rank() + i * ranks.count()];
            try {
                reports[i] = reportOf(name);
            } catch (std::exception const& exception) { // memory may run out on one document and suffice for the next
                addFault(reports[i], name + ": " + exception.what());
            }
            ++done;
        }
    };
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < std::min(threadCount, mine); ++i)
        threads.emplace_back(work);
    if (ranks.isFirst()) { // waits for all, not for its own alone: the bar is that of the whole work
        Progress progress(names.size());
        for (std::size_t all = 0; all < names.size();) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            progress.show(all = ranks.doneByAll(done));
        }
    } else {
        while (ranks.doneByAll(done) < mine)
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    for (std::thread& thread : threads)
        thread.join();
    return reports;
}

// --- the way to the first process ------------------------------------------------------------------------------------------------

std::string packed(std::vector<Report> const& reports)
{
    std::string text;
    for (Report const& report : reports) {
        char figures[sizeof(Figures)];
        std::memcpy(figures, &report.figures, sizeof figures);
        text.append(figures, sizeof figures).append(report.faults) += '\0';
    }
    return text;
}

/// Takes the first report off a text of packed ones. \param from  where it begins, and then where the next one does
Report unpacked(std::string const& text, std::size_t& from)
{
    Report report;
    std::memcpy(&report.figures, text.data() + from, sizeof report.figures);
    from += sizeof report.figures;
    std::size_t const end = text.find('\0', from);
    report.faults = text.substr(from, end - from);
    from = end + 1;
    return report;
}

// --- the output ------------------------------------------------------------------------------------------------------------------

std::ostream& operator<<(std::ostream& out, Figures const& figures)
{
    out << figures.tracks << " tracks, " << figures.points << " points, " << figures.metres / 1000 << " km, " << figures.climb
        << " m up";
    if (figures.unknown != 0)
        out << ", " << figures.unknown << " elements and attributes that the model does not have";
    if (figures.faults != 0)
        out << ", " << figures.faults << " faults";
    return out << '\n';
}

/// False if a document has faults.
bool print(Names const& names, std::vector<std::string> const& texts)
{
    std::vector<std::size_t> places(texts.size());
    Figures sum;
    std::size_t faulty = 0;
    std::cout << std::fixed << std::setprecision(1);
    for (std::size_t i = 0; i < names.size(); ++i) {
        std::size_t const rank = i % texts.size();
        Report const report = unpacked(texts[rank], places[rank]);
        Figures const& figures = report.figures;
        std::cout << names[i] << ": " << figures << report.faults;
        if (figures.faults != 0) { // one place in the wrong ocean would spoil the sum
            ++faulty;
            continue;
        }
        sum.tracks += figures.tracks;
        sum.points += figures.points;
        sum.unknown += figures.unknown;
        sum.metres += figures.metres;
        sum.climb += figures.climb;
    }
    std::cout << names.size() << " documents, " << faulty << " with faults; the others: " << sum << std::flush;
    return faulty == 0;
}

} // namespace

int main(int argc, char** argv)
{
    bulk::Ranks ranks(argc, argv);
    std::size_t const threadCount = argc == 3 ? std::strtoul(argv[2], nullptr, 10) : coreCount();
    if (argc < 2 || argc > 3 || threadCount == 0) {
        if (ranks.isFirst())
            std::cerr << "bulk <folder> [threads]\n";
        return 2;
    }
    std::string list; // the first process looks, so that all divide the same
    if (ranks.isFirst())
        for (std::string const& name : documentsBelow(argv[1]))
            list.append(name) += '\0';
    Names const names = namesIn(ranks.shared(std::move(list)));
    if (names.empty()) {
        if (ranks.isFirst())
            std::cerr << argv[1] << ": no documents\n";
        return 2;
    }
    std::vector<std::string> const texts = ranks.gathered(packed(read(names, threadCount, ranks)));
    return !ranks.isFirst() || print(names, texts) ? 0 : 1;
}
