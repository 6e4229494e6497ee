#ifndef NYXML_BENCHMARKS_RUNS_H
#define NYXML_BENCHMARKS_RUNS_H

#include "Data.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace bench {

/// One contender at one workload.
struct Run {
    std::string name;              ///< "<workload>/<contender>"
    std::function<void()> prepare; ///< before every run, not timed: fresh input, nothing held
    std::function<void()> run;     ///< what is timed
    std::function<bool()> right;   ///< after the first run: is the result what it should be?
    std::function<void()> drop;    ///< after every run, not timed: lets go of what is held
};

/// What a Part of a peer holds, for Runs::readFiles().
inline Part plainPart(Part const& part) { return part; }

/// All runs of the program. Every contender has a function that adds its own.
class Runs {
public:
    /// A read into a fresh Held. \p reader gets a copy of the document that it may parse in place; \p right sees what it left.
    template <class Held>
    void read(std::string const& name, std::string const& (*document)(), void (*reader)(std::string& document, Held& held),
              bool (*right)(Held const& held))
    {
        // Kept over the runs, so that the copy into it costs no fresh pages.
        auto text = std::make_shared<std::string>();
        auto held = std::make_shared<std::optional<Held>>();
        add({ name,
              [text, held, document] {
                  text->assign(document());
                  held->emplace();
              },
              [text, held, reader] { reader(*text, **held); }, [held, right] { return right(**held); },
              [held] { held->reset(); } });
    }

    /// A read into one of the plain structs, which must then equal \p data.
    template <class Held>
    void read(std::string const& name, std::string const& (*document)(), void (*reader)(std::string& document, Held& held),
              Held const& (*data)())
    {
        m_theExpected<Held> = data;
        read<Held>(name, document, reader, [](Held const& held) { return held == m_theExpected<Held>(); });
    }

    /// A read of many small files, each opened, read into a Part of its own and closed. \p plain says what stands in it.
    template <class Object>
    void readFiles(std::string const& name, void (*reader)(std::string const& path, Object& object),
                   Part (*plain)(Object const& object))
    {
        auto held = std::make_shared<std::vector<Object>>();
        add({ name, [] { smallFiles(); },
              [held, reader] {
                  held->reserve(smallFiles().size());
                  for (std::string const& path : smallFiles())
                      reader(path, held->emplace_back());
              },
              [held, plain] {
                  return std::equal(held->begin(), held->end(), smallParts().begin(), smallParts().end(),
                                    [plain](Object const& object, Part const& part) { return plain(object) == part; });
              },
              [held] { *held = std::vector<Object>(); } });
    }

    /// A write into an empty string, whose document must then hold \p data as an independent parser sees it.
    template <class Held>
    void write(std::string const& name, void (*writer)(std::string& document), Held const& (*data)())
    {
        auto text = std::make_shared<std::string>();
        add({ name, [text] { text->clear(); }, [text, writer] { writer(*text); }, [text, data] { return holds(*text, data()); },
              [] {} });
    }

    void add(Run run) { m_theRuns.push_back(std::move(run)); }

    std::vector<Run> const& all() const { return m_theRuns; }

private:
    static bool holds(std::string document, Numbers const& data);
    static bool holds(std::string document, Catalog const& data);
    static bool holds(std::string document, Path const& data);
    static bool holds(std::string document, Weights const& data);

    template <class Held>
    inline static Held const& (*m_theExpected)() = nullptr;

    std::vector<Run> m_theRuns;
};

void addLibrary(Runs& runs);
void addPugixml(Runs& runs);
void addRapidXml(Runs& runs);
void addExpat(Runs& runs);
void addLibxml2(Runs& runs);
void addStdio(Runs& runs);
void addStandard(Runs& runs);

/// The peer whose parser also looks at what the others wrote.
void pugixmlReadNumbers(std::string& document, Numbers& held);
void pugixmlReadCatalog(std::string& document, Catalog& held);
void pugixmlReadPath(std::string& document, Path& held);
void pugixmlReadWeights(std::string& document, Weights& held);

} // namespace bench

#endif
