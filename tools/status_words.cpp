#include "status_words.hpp"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <array>
#include <chrono>
#include <limits>
#include <utility>

namespace client {

using nura::filesystem::file_status;
using nura::filesystem::light_file_status;

namespace {

constexpr std::array<std::pair<std::uint32_t, char const*>, 9> type_names{{
    {file_status::regular_file, "regular file"},
    {file_status::directory_file, "directory"},
    {file_status::symlink_file, "symbolic link"},
    {file_status::block_file, "block device"},
    {file_status::character_file, "character device"},
    {file_status::fifo_file, "fifo"},
    {file_status::socket_file, "socket"},
    {file_status::reparse_file, "reparse point"},
    {file_status::file_not_found, "not found"},
}};

void add_type(result& found, std::uint32_t type)
{
    found.yes = type != file_status::file_not_found;
    found.add("type", type_words(type), found.yes ? tone::plain : tone::bad);
}

void add_size(result& found, std::uint64_t size)
{
    found.add_value("size", size, counted(size, "byte"));
}

} // namespace

std::string type_words(std::uint32_t type)
{
    for (auto const& [known, words] : type_names) {
        if (known == type) {
            return words;
        }
    }
    return "unknown";
}

std::string permission_letters(std::uint32_t permissions)
{
    struct special {
        std::uint32_t bit;
        std::size_t place;
        std::string_view letters; ///< without and with permission to execute
    };
    std::string letters = "rwxrwxrwx";
    for (std::size_t place = 0; place < letters.size(); ++place) {
        if ((permissions & file_status::owner_read >> place) == 0) {
            letters[place] = '-';
        }
    }
    for (special const& each : {special{file_status::set_uid_on_exec, 2, "Ss"},
                                {file_status::set_gid_on_exec, 5, "Ss"},
                                {file_status::sticky_bit, 8, "Tt"}}) {
        if ((permissions & each.bit) != 0) {
            letters[each.place] = each.letters[letters[each.place] == 'x' ? 1 : 0];
        }
    }
    return letters;
}

std::string time_words(boost::posix_time::ptime const& time)
{
    using namespace std::chrono;
    using boost::posix_time::ptime;

    ptime const epoch{boost::gregorian::date{1970, 1, 1}};
    boost::posix_time::microseconds const reach{std::numeric_limits<std::int64_t>::max()};
    if (time.is_not_a_date_time()) {
        return "no time";
    }
    if (time.is_special() || time < epoch - reach) {
        return "out of range";
    }
    microseconds const since{(time - epoch).total_microseconds()};
    seconds const whole = floor<seconds>(since);
    return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:06}Z", fmt::gmtime(whole.count()),
                       (since - whole).count());
}

std::string counted(std::uint64_t count, std::string_view noun)
{
    return fmt::format("{} {}{}", count, noun, count == 1 ? "" : "s");
}

result status_result(file_status const& status)
{
    result found;
    add_type(found, status.type());
    if (found.yes) {
        std::string const octal = fmt::format("{:04o}", status.permissions());
        std::string const letters = permission_letters(status.permissions());
        found.add_value("permissions", octal, octal + ' ' + letters);
        found.data["permission_letters"] = letters;
        add_size(found, status.size());
        found.add("access_time", time_words(status.access_time()));
        found.add("modification_time", time_words(status.modification_time()));
        found.add("status_change_time", time_words(status.status_change_time()));
    }
    return found;
}

result status_result(light_file_status const& status)
{
    result found;
    add_type(found, status.type());
    if (found.yes) {
        add_size(found, status.size());
        found.add("modification_time", time_words(status.modification_time()));
    }
    return found;
}

} // namespace client
