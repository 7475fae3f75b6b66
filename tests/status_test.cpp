#include "support.hpp"

#include <filesystem/operations.hpp>

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fstream>

namespace {

/// What `stat` and `lstat` answer in place of the system: an error number, or 0 and a file.
std::optional<int> scripted;
struct stat scripted_file;

int answer(char const* function, char const* name, struct stat* result)
{
    if (!scripted) {
        using system_call = int(char const*, struct stat*);
        return nura::filesystem::test::hidden_definition<system_call>(function)(name, result);
    }
    *result = scripted_file;
    errno = *scripted;
    return errno == 0 ? 0 : -1;
}

} // namespace

extern "C" int stat(char const* name, struct stat* result) noexcept
{
    return answer("stat", name, result);
}

extern "C" int lstat(char const* name, struct stat* result) noexcept
{
    return answer("lstat", name, result);
}

namespace nura::filesystem::test {
namespace {

using string = std::u16string;

constexpr std::int64_t epoch = 210'866'803'200'000'000;

std::int64_t ticks_of(boost::posix_time::ptime const& time)
{
    std::int64_t ticks = 0;
    static_assert(sizeof ticks == sizeof time);
    std::memcpy(&ticks, &time, sizeof ticks);
    return ticks;
}

/// A query of one name, which pathname its failures name, and whether it finds something. What
/// has a higher rank takes more errors for "nothing".
struct query {
    int rank;
    string named;
    std::function<bool()> finds;
};

std::vector<query> queries(string const& name, bool expand_tilde = true)
{
    path const p{name, expand_tilde};
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
    state_of_process const kept;
    temporary_root const root;
    std::ofstream{root.at("file")} << "text";
    std::filesystem::create_symlink("nowhere", root.at("dangling"));
    ::setenv("HOME", root.at("").c_str(), 1);
    auto const finders = [](std::vector<query> const& all) {
        std::string digits;
        for (query const& each : all) {
            digits += each.finds() ? '1' : '0';
        }
        return digits;
    };
    string const nul(1, u'\0');
    for (string const& name :
         {string{}, root.name("no/x"), nul, root.name("file") + nul + u"x", string{u"a\xD800"}}) {
        EXPECT_EQ(finders(queries(name)), "0000000") << testing::PrintToString(name);
    }
    EXPECT_EQ(finders(queries(root.name("dangling"))), "0000011");
    EXPECT_EQ(finders(queries(u"~//file", false)), "0101010");
    string const large = root.name(std::string(300, 'x'));
    EXPECT_TRUE(fails<FileNameTooLarge>([&] { (void)exists(large + u"//"); }, {large}));
    file_status const nothing = status(u"");
    EXPECT_TRUE(nothing.type() == 0xFFFF0000 && nothing.permissions() == 0 && nothing.size() == 0);
    for (auto const& time :
         {nothing.access_time(), nothing.modification_time(), nothing.status_change_time(),
          light_file_status{}.modification_time()}) {
        EXPECT_TRUE(time.is_not_a_date_time());
    }
}

TEST(status, reports_what_the_system_answers_each_query_in_its_own_way)
{
    // An error, and the rank of the first query that does not throw it.
    for (auto const& [error, silent] : table<2>("ENOENT 0  EINVAL 0  EOPNOTSUPP 1  ENOTDIR 2 "
                                                "EACCES 3  ENAMETOOLONG 3  ELOOP 3")) {
        for (query const& each : queries(u"/a/\u00E9")) {
            scripted = number_of(error);
            auto const outcome =
                fails_with(error, {each.named}, [&] { EXPECT_FALSE(each.finds()); });
            scripted.reset();
            EXPECT_EQ(bool{outcome}, each.rank < std::stoi(silent)) << error << outcome.message();
        }
    }
}

TEST(status, maps_every_mode_and_time)
{
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t wrapping = std::int64_t{1} << 57; // in microseconds just `least`
    constexpr std::int64_t rows[][3]{
        {1, 1999, epoch + 1'000'001},   {-2, 999'999'999, epoch - 1'000'001},
        {0, -1999, epoch - 1},          {least, 0, epoch},
        {~least, 0, epoch - 1'000'000}, {wrapping, 5000, least},
        {-wrapping, 0, least}};
    for (std::uint32_t type = 0; type < 16; ++type) {
        auto const& [seconds, nanoseconds, ticks] = rows[type % std::size(rows)];
        scripted_file.st_mode = type << 12 | 07654;
        scripted_file.st_size = std::int64_t{1} << 40;
        scripted_file.st_atim.tv_sec = 1;
        scripted_file.st_mtim = {seconds, nanoseconds};
        scripted_file.st_ctim.tv_nsec = 2000;
        scripted = 0;
        auto const file = symlink_status(u"x");
        auto const light = status_express_light(u"x");
        scripted.reset();
        bool const known = 0b1010101010110 >> type & 1;
        EXPECT_EQ(file.type(), known ? type << 12 : file_status::file_type_unknown);
        EXPECT_EQ(light.type(), type << 12);
        EXPECT_EQ(ticks_of(file.access_time()), epoch + 1'000'000);
        EXPECT_EQ(ticks_of(file.modification_time()), ticks);
        EXPECT_EQ(ticks_of(file.status_change_time()), epoch + 2);
        EXPECT_EQ(light.modification_time(), file.modification_time());
        EXPECT_TRUE(file.permissions() == 07654 && file.size() == 1ULL << 40);
        EXPECT_EQ(light.size(), file.size());
    }
}

} // namespace
} // namespace nura::filesystem::test
