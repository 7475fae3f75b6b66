#include "status_words.hpp"

#include "names.hpp"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <array>
#include <charconv>
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

void add_bytes(result& found, std::string_view key, std::uint64_t bytes)
{
    found.add_value(key, bytes, counted(bytes, "byte"));
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

std::uint32_t type_code(std::string_view name)
{
    if (name == "directory") {
        return file_status::directory_file;
    }
    return name == "file" ? file_status::regular_file : file_status::file_type_auto;
}

std::string permission_letters(std::uint32_t permissions)
{
    std::string letters;
    for (unsigned place = 0; place < 9; ++place) {
        bool const granted = (permissions & file_status::owner_read >> place) != 0;
        bool const special = (permissions & file_status::set_uid_on_exec >> place / 3) != 0;
        std::string_view const plain = granted ? "rwxrwxrwx" : "---------";
        std::string_view const marked = granted ? "rwsrwsrwt" : "--S--S--T";
        letters += (special ? marked : plain)[place];
    }
    return letters;
}

std::uint32_t permission_bits(std::string const& octal)
{
    char const* const end = octal.data() + octal.size();
    std::uint32_t bits = 0;
    auto const [stop, error] = std::from_chars(octal.data(), end, bits, 8);
    if (error != std::errc{} || stop != end || bits > 07777) {
        throw refusal(fmt::format("'{}' is no octal number up to 7777", octal));
    }
    return bits;
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
        add_bytes(found, "size", status.size());
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
        add_bytes(found, "size", status.size());
        found.add("modification_time", time_words(status.modification_time()));
    }
    return found;
}

result space_result(nura::filesystem::space_info const& space)
{
    result found;
    add_bytes(found, "capacity", space.capacity);
    add_bytes(found, "free", space.free);
    add_bytes(found, "available", space.available);
    return found;
}

} // namespace client
