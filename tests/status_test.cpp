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

TEST(status, finds_nothing_under_names_that_name_nothing)
{
    temporary_root const root;
    std::ofstream{root.at("file")} << "text";
    std::filesystem::create_symlink("nowhere", root.at("dangling"));
    string const nul(1, u'\0');
    string const dangling = root.name("dangling");
    for (string const& name : {string{}, root.name("no/x"), nul, root.name("file") + nul + u"x",
                               string{u"a\xD800"}, dangling}) {
        path const p{name};
        EXPECT_FALSE(exists(name) || exists(p) || status_express_light(name).exists());
        EXPECT_FALSE(status(name).exists() || status(p).exists());
        EXPECT_EQ(symlink_status(name).is_symlink(), name == dangling);
        EXPECT_EQ(symlink_status(p).exists(), name == dangling);
    }
    file_status const nothing = status(u"");
    EXPECT_TRUE(nothing.type() == 0xFFFF0000 && nothing.permissions() == 0 && nothing.size() == 0);
    for (auto const& time :
         {nothing.access_time(), nothing.modification_time(), nothing.status_change_time(),
          light_file_status{}.modification_time()}) {
        EXPECT_EQ(ticks_of(time), 0x7FFFFFFFFFFFFFFE);
    }
}

TEST(status, takes_strings_to_native_form_but_for_the_express_one)
{
    state_of_process const kept;
    temporary_root const root;
    std::ofstream{root.at("file")} << "text";
    ::setenv("HOME", root.at("").c_str(), 1);
    string const given = u"~//file/";
    EXPECT_TRUE(exists(given) && status(given).exists() && symlink_status(given).exists());
    path const literal{given, false};
    EXPECT_FALSE(exists(literal) || status(literal).exists() || symlink_status(literal).exists() ||
                 status_express_light(u"~/file").exists());
    string const below = root.name("file/");
    EXPECT_TRUE(fails<NotDirectoryError>([&] { (void)status_express_light(below); }, {below}));
    string const large = root.name(std::string(300, 'x'));
    EXPECT_TRUE(fails<FileNameTooLarge>([&] { (void)exists(large + u"//"); }, {large}));
}

TEST(status, reports_what_the_system_answers_each_query_in_its_own_way)
{
    string const name = u"/a/\u00E9";
    path const p{name};
    struct row {
        int number;
        failure_check type;
        int throwing; // the queries of a lower rank
    };
    for (auto const& [number, type, throwing] :
         std::initializer_list<row>{{ENOENT, fails<PathNotFound>, 0},
                                    {EINVAL, fails<InvalidArgument>, 0},
                                    {ENOTSUP, fails<InvalidArgument>, 1},
                                    {ENOTDIR, fails<NotDirectoryError>, 2},
                                    {EACCES, fails<AccessDenied>, 3},
                                    {ENAMETOOLONG, fails<FileNameTooLarge>, 3},
                                    {ELOOP, fails<SystemError>, 3}}) {
        bool const lists = number == ELOOP || number == ENOTSUP;
        auto const expect = [&, &n = number, &is = type, &t = throwing](
                                int rank, string const& named, std::function<bool()> const& ask) {
            scripted = n;
            failure const expected{named, std::vector<string>(lists), n == ELOOP ? n : 0};
            auto const outcome = is([&] { EXPECT_FALSE(ask()); }, expected);
            scripted.reset();
            EXPECT_EQ(bool{outcome}, rank < t) << n << ' ' << rank << ": " << outcome.message();
        };
        expect(0, name, [&] { return status_express_light(name).exists(); });
        expect(1, u"", [&] { return status(name).exists(); });
        expect(1, u"", [&] { return status(p).exists(); });
        expect(1, u"", [&] { return symlink_status(name).exists(); });
        expect(1, u"", [&] { return symlink_status(p).exists(); });
        expect(2, name, [&] { return exists(name); });
        expect(2, name, [&] { return exists(p); });
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
        for (auto const& [seconds, nanoseconds, ticks] : rows) {
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
            EXPECT_EQ(file.permissions(), 07654U);
            EXPECT_EQ(ticks_of(file.access_time()), epoch + 1'000'000);
            EXPECT_EQ(ticks_of(file.modification_time()), ticks);
            EXPECT_EQ(ticks_of(file.status_change_time()), epoch + 2);
            EXPECT_EQ(light.type(), type << 12);
            EXPECT_EQ(ticks_of(light.modification_time()), ticks);
            EXPECT_TRUE(file.size() == 1ULL << 40 && light.size() == file.size());
        }
    }
}

} // namespace
} // namespace nura::filesystem::test
