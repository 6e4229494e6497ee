#include "Ranks.h"

#include <utility>

#ifdef BULK_WITH_MPI

#include <algorithm>

#include <mpi.h>

namespace bulk {

namespace {

enum Tag { DONE = 1, TEXT };

// MPI counts in int, and the faults of a million documents may be longer than that.
constexpr unsigned long long longestPart = 1ull << 30;

/// A text in parts: `move` sends or receives the next part, of the given length.
template <class Move>
void inParts(std::string& text, Move const& move)
{
    for (std::size_t from = 0; from < text.size(); from += longestPart)
        move(text.data() + from, static_cast<int>(std::min<unsigned long long>(longestPart, text.size() - from)));
}

} // namespace

Ranks::Ranks(int& argc, char**& argv)
{
    int provided = 0, rank = 0, count = 1;
    MPI_Init_thread(&argc, &argv, MPI_THREAD_FUNNELED, &provided); // threads read, and the main thread alone sends
    MPI_Comm_rank(MPI_COMM_WORLD, &rank);
    MPI_Comm_size(MPI_COMM_WORLD, &count);
    m_rank = static_cast<std::size_t>(rank);
    m_count = static_cast<std::size_t>(count);
}

Ranks::~Ranks() { MPI_Finalize(); }

std::string Ranks::shared(std::string text) const
{
    unsigned long long size = text.size();
    MPI_Bcast(&size, 1, MPI_UNSIGNED_LONG_LONG, 0, MPI_COMM_WORLD);
    text.resize(size);
    inParts(text, [](char* part, int length) { MPI_Bcast(part, length, MPI_CHAR, 0, MPI_COMM_WORLD); });
    return text;
}

std::size_t Ranks::doneByAll(std::size_t doneHere)
{
    unsigned long long more = doneHere - m_doneTold;
    m_doneTold = doneHere;
    if (!isFirst()) {
        if (more != 0)
            MPI_Send(&more, 1, MPI_UNSIGNED_LONG_LONG, 0, DONE, MPI_COMM_WORLD);
        return doneHere;
    }
    int isThere = 0;
    while (MPI_Iprobe(MPI_ANY_SOURCE, DONE, MPI_COMM_WORLD, &isThere, MPI_STATUS_IGNORE) == MPI_SUCCESS && isThere != 0) {
        MPI_Recv(&more, 1, MPI_UNSIGNED_LONG_LONG, MPI_ANY_SOURCE, DONE, MPI_COMM_WORLD, MPI_STATUS_IGNORE);
        m_doneOthers += more;
    }
    return doneHere + m_doneOthers;
}

std::vector<std::string> Ranks::gathered(std::string text) const
{
    unsigned long long size = text.size();
    if (!isFirst()) {
        MPI_Send(&size, 1, MPI_UNSIGNED_LONG_LONG, 0, TEXT, MPI_COMM_WORLD);
        inParts(text, [](char* part, int length) { MPI_Send(part, length, MPI_CHAR, 0, TEXT, MPI_COMM_WORLD); });
        return {};
    }
    std::vector<std::string> result = { std::move(text) };
    for (int from = 1; from < static_cast<int>(m_count); ++from) {
        MPI_Recv(&size, 1, MPI_UNSIGNED_LONG_LONG, from, TEXT, MPI_COMM_WORLD, MPI_STATUS_IGNORE);
        std::string& its = result.emplace_back(size, '\0');
        inParts(its, [from](char* part, int length) {
            MPI_Recv(part, length, MPI_CHAR, from, TEXT, MPI_COMM_WORLD, MPI_STATUS_IGNORE);
        });
    }
    return result;
}

} // namespace bulk

#else

namespace bulk {

Ranks::Ranks(int&, char**&) {}
Ranks::~Ranks() = default;
std::string Ranks::shared(std::string text) const { return text; }
std::size_t Ranks::doneByAll(std::size_t doneHere) { return doneHere; }
std::vector<std::string> Ranks::gathered(std::string text) const { return { std::move(text) }; }

} // namespace bulk

#endif
