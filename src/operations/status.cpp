#include "operations/status.hpp"

#include "errors/error_translation.hpp"
#include "native/system_call.hpp"
#include "operations/string_overload.hpp"

#include <filesystem/exceptions.hpp>
#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <boost/bind/bind.hpp>

#include <cerrno>
#include <cstdint>
#include <limits>

namespace nura::filesystem {

namespace detail {

namespace {

int stat_name(std::string const& native, struct stat* found)
{
    return posix::detail::call_on(native, ::stat, found);
}

int lstat_name(std::string const& native, struct stat* found)
{
    return posix::detail::call_on(native, ::lstat, found);
}

std::uint32_t file_type(mode_t mode)
{
    switch (mode & S_IFMT) {
    case S_IFREG:
        return file_status::regular_file;
    case S_IFDIR:
        return file_status::directory_file;
    case S_IFLNK:
        return file_status::symlink_file;
    case S_IFBLK:
        return file_status::block_file;
    case S_IFCHR:
        return file_status::character_file;
    case S_IFIFO:
        return file_status::fifo_file;
    case S_IFSOCK:
        return file_status::socket_file;
    default:
        return file_status::file_type_unknown;
    }
}

/// File systems store seconds far outside what a tick count of microseconds holds: it wraps, as
/// unsigned arithmetic does. The smallest product stands for negative infinity.
boost::posix_time::ptime to_time_point(timespec const& time)
{
    constexpr std::uint64_t ticks_per_second = 1'000'000;
    constexpr std::uint64_t epoch = 210'866'803'200'000'000; // microseconds since Julian day 0
    constexpr auto negative_infinity = std::numeric_limits<std::int64_t>::min();

    auto ticks = static_cast<std::uint64_t>(time.tv_sec) * ticks_per_second;
    if (ticks != static_cast<std::uint64_t>(negative_infinity)) {
        ticks += static_cast<std::uint64_t>(time.tv_nsec / 1000) + epoch;
    }
    return boost::posix_time::ptime{
        boost::posix_time::ptime::time_rep_type{static_cast<std::int64_t>(ticks)}};
}

} // namespace

stat_call bind_stat(std::string const& native)
{
    return boost::bind(stat_name, boost::cref(native), boost::placeholders::_1);
}

stat_call bind_lstat(std::string const& native)
{
    return boost::bind(lstat_name, boost::cref(native), boost::placeholders::_1);
}

bool native_exists(std::string const& native)
{
    struct stat found; // NOLINT(cppcoreguidelines-pro-type-member-init): output only
    if (stat_name(native, &found) == 0) {
        return true;
    }
    int const error = errno;
    if (error == ENOTDIR || error == ENOENT) {
        return false;
    }
    throw_errno_exception(error, native, {});
}

file_status make_file_status(stat_call const& call)
{
    struct stat found; // NOLINT(cppcoreguidelines-pro-type-member-init): output only
    errno = 0;
    if (call(&found) != 0) {
        int const error = errno;
        if (error == ENOENT) {
            return {};
        }
        throw_errno_exception(error, {}, {});
    }
    return {file_type(found.st_mode),     found.st_mode & 0xFFFU,
            to_time_point(found.st_atim), to_time_point(found.st_mtim),
            to_time_point(found.st_ctim), static_cast<std::uint64_t>(found.st_size)};
}

} // namespace detail

namespace {

/// What `query` answers, or `missing` where the library's own exceptions say that there is
/// nothing of that name or that nothing can have it.
template <class Answer, class Query>
Answer unless_missing(Answer missing, Query query)
{
    try {
        return query();
    } catch (PathNotFound const&) {
        return missing;
    } catch (InvalidArgument const&) {
        return missing;
    }
}

bool exists_at(std::u16string const& p)
{
    if (p.empty()) {
        return false;
    }
    return unless_missing(
        false, [&] { return detail::native_exists(detail::make_native_access_form(p)); });
}

file_status status_at(std::u16string const& p, detail::stat_call (*bind)(std::string const&))
{
    if (p.empty()) {
        return {};
    }
    return unless_missing(file_status{}, [&] {
        std::string const native = detail::make_native_access_form(p);
        return detail::make_file_status(bind(native));
    });
}

} // namespace

bool exists(path const& p)
{
    return exists_at(p.pathname());
}

bool exists(std::u16string const& p)
{
    return detail::with_native_form(p, exists_at);
}

file_status status(path const& p)
{
    return status_at(p.pathname(), detail::bind_stat);
}

file_status status(std::u16string const& p)
{
    return detail::with_native_form(
        p, [](std::u16string const& form) { return status_at(form, detail::bind_stat); });
}

file_status symlink_status(path const& p)
{
    return status_at(p.pathname(), detail::bind_lstat);
}

file_status symlink_status(std::u16string const& p)
{
    return detail::with_native_form(
        p, [](std::u16string const& form) { return status_at(form, detail::bind_lstat); });
}

light_file_status status_express_light(std::u16string const& p)
{
    if (p.empty()) {
        return {};
    }
    std::string const native = detail::make_native_access_form(p);
    struct stat found; // NOLINT(cppcoreguidelines-pro-type-member-init): output only
    if (detail::stat_name(native, &found) != 0) {
        int const error = errno;
        if (error == ENOENT || error == EINVAL) {
            return {};
        }
        detail::throw_errno_exception(error, native, {});
    }
    return {found.st_mode & file_status::file_type_mask, detail::to_time_point(found.st_mtim),
            static_cast<std::uint64_t>(found.st_size)};
}

} // namespace nura::filesystem
