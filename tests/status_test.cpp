#include "support.hpp"

#include <bit>

namespace nura::filesystem::test {

using string = std::u16string;

static std::int64_t ticks_of(boost::posix_time::ptime const& time)
{
    return std::bit_cast<std::int64_t>(time);
}

/// A query of one name, which pathname its failures name, and whether it finds something. What
/// has a higher rank takes more errors for "nothing".
struct query {
    int rank;
    string named;
    std::function<bool()> finds;
};

static std::vector<query> queries(string const& name)
{
    path const p{name, false};
    return {{0, name, [=] { return status_express_light(name).exists(); }},
            {1, u"", [=] { return status(name).exists(); }},
            {1, u"", [=] { return status(p).exists(); }},
            {2, name, [=] { return exists(name); }},
            {2, name, [=] { return exists(p); }},
            {1, u"", [=] { return symlink_status(name).exists(); }},
            {1, u"", [=] { return symlink_status(p).exists(); }}};
}

TEST(status, finds_what_the_native_form_leads_to)
{
    scene const s;
    std::filesystem::current_path(s.at(""));
    ::setenv("HOME", s.at("").c_str(), 1);
    std::map<string, std::string> const names{
        {u"", "0000000"},        {u"no/x", "0000000"},     {{u"file\0x", 6}, "0000000"},
        {u"a\xD800", "0000000"}, {u"dangling", "0000011"}, {u"~//file", "0101010"}};
    for (auto const& [name, found] : names) {
        std::string digits;
        for (query const& each : queries(name)) {
            digits += each.finds() ? '1' : '0';
        }
        EXPECT_EQ(digits, found) << testing::PrintToString(name);
    }
    file_status const nothing = status(u"");
    EXPECT_TRUE(nothing.type() == 0xFFFF0000 && nothing.permissions() == 0 && nothing.size() == 0);
    EXPECT_TRUE(nothing.access_time().is_not_a_date_time());
}

TEST(status, reports_what_the_system_answers_each_query_in_its_own_way)
{
    // An error, and the rank of the first query that does not throw it.
    for (auto const& [error, silent] : table<2>("ENOENT 0  EINVAL 0  EOPNOTSUPP 1  ENOTDIR 2 "
                                                "EACCES 3  ENAMETOOLONG 3  ELOOP 3")) {
        for (query const& each : queries(u"/a/\u00E9")) {
            hook = [number = number_of(error)](auto const&, auto const&) { return number; };
            auto const result =
                fails_with(error, {each.named}, [&] { EXPECT_FALSE(each.finds()); });
            hook = nullptr;
            EXPECT_EQ(bool{result}, each.rank < std::stoi(silent)) << error << result.message();
        }
    }
}

TEST(status, has_types_modes_and_times_as_the_system_keeps_them)
{
    constexpr std::int64_t epoch = 210'866'803'200'000'000;
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t wrapping = std::int64_t{1} << 57; // in microseconds just `least`
    scene const s{elsewhere};
    std::int64_t const rows[][3]{{1, 1999, epoch + 1'000'001},
                                 {-2, 999'999'999, epoch - 1'000'001},
                                 {least, 0, epoch},
                                 {wrapping, 5000, least}};
    for (auto const& [seconds, nanoseconds, ticks] : rows) {
        for (std::string const name : {"file", "empty", "fifo", "to-file"}) {
            struct stat is {};
            timespec const times[]{{7, 0}, {seconds, nanoseconds}};
            ::chmod(s.at("file").c_str(), 07654);
            ::utimensat(AT_FDCWD, s.at(name).c_str(), times, AT_SYMLINK_NOFOLLOW);
            ASSERT_EQ(::lstat(s.at(name).c_str(), &is), 0);
            auto const file = symlink_status(s.name(name));
            auto const light = status_express_light(s.name(name));
            EXPECT_EQ(file.type() | file.permissions(), is.st_mode);
            EXPECT_EQ(file.size(), is.st_size);
            EXPECT_EQ(ticks_of(file.status_change_time()),
                      epoch + is.st_ctim.tv_sec * 1'000'000 + is.st_ctim.tv_nsec / 1000);
            if (is.st_mtim.tv_sec == seconds) { // not every file system keeps every time
                EXPECT_EQ(ticks_of(file.access_time()), epoch + 7'000'000);
                EXPECT_EQ(ticks_of(file.modification_time()), ticks);
            }
            EXPECT_TRUE(name == "to-file" ||
                        (light.type() == file.type() && light.size() == file.size() &&
                         light.modification_time() == file.modification_time()));
        }
    }
}

} // namespace nura::filesystem::test
