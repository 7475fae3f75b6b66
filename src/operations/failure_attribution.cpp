#include "operations/failure_attribution.hpp"

#include "errors/error_translation.hpp"
#include "native/standard_path.hpp"
#include "pathname/grammar.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <cerrno>

namespace nura::filesystem::detail {

namespace {

/// A source of this many units is the one to blame for any failure.
constexpr std::size_t longest_blameless_source = 1023;

/// What `probe` answers; false if it fails. A question that is asked only to choose a pathname
/// never takes the place of the failure that is being reported.
template <class Probe>
bool holds(Probe probe)
{
    try {
        return probe();
    } catch (...) {
        return false;
    }
}

bool is_missing(std::u16string const& p)
{
    return !holds([&] { return exists(p); });
}

/// Whether the directory that holds `source` can be written to. A single relative name is held
/// by the current directory.
bool parent_is_writable(std::u16string const& source)
{
    return holds([&] {
        std::u16string const form = make_native_form(source, true);
        std::u16string const parent = extract_parent_path(form);
        bool const single_name = parent.empty() && !form.empty() && !is_absolute(form);
        return access(single_name ? pathname_traits<char16_t>::CURRENT_DIRECTORY : parent,
                      access_write);
    });
}

bool is_readable(std::u16string const& p)
{
    return holds([&] { return access(make_native_form(p, true), access_read); });
}

enum class blamed { first, second, both };

blamed blamed_of_path_pair(int error, std::u16string const& source)
{
    if ((error == ENOENT && is_missing(source)) || source.size() > longest_blameless_source) {
        return blamed::first;
    }
    switch (error) {
    case ENOENT:
    case EEXIST:
    case ENOTDIR:
    case EISDIR:
    case ENAMETOOLONG:
    case ENOTEMPTY:
        return blamed::second;
    case EACCES:
        return parent_is_writable(source) ? blamed::second : blamed::first;
    default:
        return blamed::both;
    }
}

blamed blamed_of_boost_path_pair(int error, std::u16string const& source)
{
    if ((error == ENOENT && is_missing(source)) || error == EISDIR ||
        source.size() > longest_blameless_source) {
        return blamed::first;
    }
    switch (error) {
    case ENOENT:
    case EEXIST:
    case ENAMETOOLONG:
        return blamed::second;
    case EACCES:
        return is_readable(source) ? blamed::second : blamed::first;
    default:
        return blamed::both;
    }
}

std::string standard_name(path const& p)
{
    return to_standard_path(p.pathname()).native();
}

std::string low_bytes(std::u16string const& text)
{
    std::string bytes;
    bytes.reserve(text.size());
    for (char16_t const unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
    }
    return bytes;
}

} // namespace

void raise_for_error_code(std::error_code const& error, path const* first, path const* second)
{
    if (error.value() == 0) {
        return;
    }
    if (first != nullptr && second != nullptr) {
        raise_for_path_pair(error.value(), standard_name(*first), standard_name(*second));
    }
    throw_errno_exception(error.value(), first != nullptr ? standard_name(*first) : std::string{},
                          {});
}

void raise_for_path_pair(int error, std::string const& first, std::string const& second)
{
    switch (blamed_of_path_pair(error, pathname_traits<char16_t>::from_filesystem(first))) {
    case blamed::first:
        throw_errno_exception(error, first, {});
    case blamed::second:
        throw_errno_exception(error, second, {});
    case blamed::both:
        break;
    }
    throw_errno_exception(error, first, second);
}

void raise_for_boost_path_pair(boost::system::error_code const& error, std::u16string const& from,
                               std::u16string const& to)
{
    if (error.value() == 0) {
        return;
    }
    switch (blamed_of_boost_path_pair(error.value(), from)) {
    case blamed::first:
        raise_for_boost_error(error, from, {});
        break;
    case blamed::second:
        raise_for_boost_error(error, to, {});
        break;
    case blamed::both:
        raise_for_boost_error(error, from, to);
        break;
    }
}

void raise_for_boost_error(boost::system::error_code const& error, std::u16string const& first,
                           std::u16string const& second)
{
    if (error.value() != 0) {
        throw_errno_exception(error.value(), low_bytes(first), low_bytes(second));
    }
}

} // namespace nura::filesystem::detail
