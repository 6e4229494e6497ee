// In-house, no part of the face: for the sources of this folder, and not installed.
#ifndef NYXML_PLATFORM_DETAIL_NYGATE_H
#define NYXML_PLATFORM_DETAIL_NYGATE_H

#include <functional>
#include <memory>
#include <string>
#include <utility>

/// Holds the function that decides what may be opened. Any thread may ask and replace it; one that is being asked lives to its answer.
class NyGate {
public:
    using Function = std::function<bool(std::string const&)>;

    /// \return the function before
    Function replace(Function function)
    {
        return *std::atomic_exchange(&m_Function, std::make_shared<Function const>(std::move(function)));
    }

    bool isOpenFor(std::string const& name) const
    {
        std::shared_ptr<Function const> const function = std::atomic_load(&m_Function);
        return !*function || (*function)(name);
    }

private:
    std::shared_ptr<Function const> m_Function = std::make_shared<Function const>();
};

#endif
