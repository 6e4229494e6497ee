#ifndef BULK_RANKS_H
#define BULK_RANKS_H

#include <cstddef>
#include <string>
#include <vector>

namespace bulk {

/// The processes that share the work, on one machine or on many. Without MPI there is one, and nothing is sent.
///
/// One per program, used by the main thread alone. The first process, rank 0, hands the work out and tells what came of it.
class Ranks {
public:
    Ranks(int& argc, char**& argv);
    Ranks(Ranks const&) = delete; // MPI begins and ends once
    Ranks& operator=(Ranks const&) = delete;
    ~Ranks();

    std::size_t rank() const noexcept { return m_rank; }
    std::size_t count() const noexcept { return m_count; }
    bool isFirst() const noexcept { return m_rank == 0; }

    /// The first process's text, in all of them. Every process calls it.
    std::string shared(std::string text) const;

    /// How much is done by all, as far as the first process has heard of it; the others are told of themselves alone. Does not wait.
    /// \param doneHere  by this process since the beginning; never less than in the call before
    std::size_t doneByAll(std::size_t doneHere);

    /// In the first process the texts of all, by rank; nothing in the others. Every process calls it.
    std::vector<std::string> gathered(std::string text) const;

private:
    std::size_t m_rank = 0;
    std::size_t m_count = 1;
    [[maybe_unused]] std::size_t m_doneTold = 0;   ///< of doneHere; without MPI nobody is told
    [[maybe_unused]] std::size_t m_doneOthers = 0; ///< as they told the first process
};

} // namespace bulk

#endif
