#include "errors/raise.hpp"
#include "native/standard_path.hpp"
#include "operations/failure_attribution.hpp"

#include <filesystem/operations.hpp>

namespace nura::filesystem {

namespace {

/// Creates by `creation`, a function of the standard library that answers whether it made a
/// directory.
void create_by(bool (*creation)(std::filesystem::path const&, std::error_code&), path const& p)
{
    std::filesystem::path const name = detail::to_standard_path(p.pathname());
    std::error_code error = detail::refusal_of(name);
    if (!error && creation(name, error)) {
        return;
    }
    // Only now, so that the failure is the same whatever the standard library makes of it.
    if (p.empty()) {
        detail::raise_empty_path();
    }
    detail::raise_for_error_code(error, &p, nullptr);
    detail::raise(FileExistsError{p.pathname()});
}

} // namespace

void create_directory(path const& p)
{
    create_by([](auto const& name,
                 auto& error) { return std::filesystem::create_directory(name, error); },
              p);
}

void create_directory(std::u16string const& p)
{
    create_directory(path{p});
}

void create_directories(path const& p)
{
    create_by([](auto const& name,
                 auto& error) { return std::filesystem::create_directories(name, error); },
              p);
}

void create_directories(std::u16string const& p)
{
    create_directories(path{p});
}

} // namespace nura::filesystem
