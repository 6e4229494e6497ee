#ifndef NYXML_TESTS_SUPPORT_H
#define NYXML_TESTS_SUPPORT_H

#include <nyXml/platform/NyPrint.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <locale>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Collects what the library prints for as long as it lives: faults as they are, and each notice behind its number, as "3: text". One at
/// a time.
class Messages {
public:
    Messages()
    {
        Ny::Print::setHandler([this](int printType, std::string const& location, std::string const& text) {
            if (m_type != printType && printType != Ny::Print::FAULT)
                m_text += std::to_string(printType) + ": ";
            m_type = printType;
            m_locations.push_back(location);
            m_text += text;
        });
    }
    ~Messages() { Ny::Print::setHandler({}); }
    Messages(Messages const&) = delete;
    Messages& operator=(Messages const&) = delete;

    /// All text since the last take.
    std::string take()
    {
        m_type = Ny::Print::FAULT;
        m_locations.clear();
        return std::exchange(m_text, std::string());
    }
    std::string const& text() const { return m_text; }

    /// Locations since the last take, in order of report. A message that came in pieces is there several times.
    std::vector<std::string> const& locations() const { return m_locations; }

private:
    int m_type = Ny::Print::FAULT; ///< of the last piece
    std::vector<std::string> m_locations;
    std::string m_text;
};

/// Gives the process a locale that writes "1.234.567,5", for as long as it lives.
class GroupedNumbers {
public:
    GroupedNumbers() = default;
    ~GroupedNumbers() { std::locale::global(m_before); }
    GroupedNumbers(GroupedNumbers const&) = delete;
    GroupedNumbers& operator=(GroupedNumbers const&) = delete;

private:
    struct Grouped : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale const m_before = std::locale::global(std::locale(std::locale::classic(), new Grouped));
};

/// A directory of its own for a test's files, removed with all that is in it.
class ScratchDirectory {
public:
    ScratchDirectory()
    {
        if (mkdtemp(m_path.data()) == nullptr)
            throw std::runtime_error("no scratch directory");
    }
    ~ScratchDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    ScratchDirectory(ScratchDirectory const&) = delete;
    ScratchDirectory& operator=(ScratchDirectory const&) = delete;

    /// Writes a file, with the directories to it. \return its path
    std::string write(std::string const& name, std::string const& bytes) const
    {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }
    std::string path(std::string const& name) const { return m_path + '/' + name; }
    std::string const& path() const { return m_path; }

private:
    std::string m_path = (std::filesystem::temp_directory_path() / "nyXmlTest.XXXXXX").string();
};

#endif
