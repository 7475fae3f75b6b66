#include "native/standard_path.hpp"
#include "operations/failure_attribution.hpp"

#include <filesystem/operations.hpp>

namespace nura::filesystem {

namespace {

bool is_for_directory(path const& target, unsigned type)
{
    return type == file_status::directory_file ||
           (status(target).type() & file_status::file_type_mask) == file_status::directory_file;
}

} // namespace

void create_symlink(path const& target, path const& link, unsigned int type)
{
    bool const to_directory = is_for_directory(target, type);
    std::filesystem::path const text = detail::to_standard_path(target.pathname());
    std::filesystem::path const name = detail::to_standard_path(link.pathname());
    std::error_code error = detail::refusal_of(text, name);
    if (!error && to_directory) {
        std::filesystem::create_directory_symlink(text, name, error);
    } else if (!error) {
        std::filesystem::create_symlink(text, name, error);
    }
    detail::raise_for_error_code(error, nullptr, nullptr); // this operation names no file
}

void create_symlink(std::u16string const& target, std::u16string const& link, unsigned int type)
{
    create_symlink(path{target}, path{link}, type);
}

void copy_symlink(path const& existing_link, path const& new_link)
{
    std::filesystem::path const existing = detail::to_standard_path(existing_link.pathname());
    std::filesystem::path const made = detail::to_standard_path(new_link.pathname());
    std::error_code error = detail::refusal_of(existing, made);
    if (!error) {
        std::filesystem::copy_symlink(existing, made, error);
    }
    detail::raise_for_error_code(error, nullptr, nullptr); // nor does this one
}

void copy_symlink(std::u16string const& existing_link, std::u16string const& new_link)
{
    copy_symlink(path{existing_link}, path{new_link});
}

} // namespace nura::filesystem
