#include "support.hpp"

namespace nura::filesystem::test {

using namespace std::literals;

static bool cannot_encode(std::function<void()> const& call)
{
    return fails<FsysExceptionBase>(call).message() == "another exception: locale not supported"s;
}

TEST(operations, treat_names_that_cannot_be_each_in_its_way_and_touch_nothing)
{
    scene const s;
    std::filesystem::current_path(s.at(""));
    contents const before = s.all();
    // How the name is converted, what an empty one means, and which names an error carries.
    for (auto const& [name, route, empty, who] : table<4>(R"(
             access native refused <               permissions native refused -
             space narrowed refused <              change_current_path native ignored <
             create_directory standard refused <   create_directories standard refused <
             remove standard ignored <             remove,0 native ignored <
             remove,4000 native ignored <          remove_file native ignored <
             remove_symlink native ignored <       remove_directory native ignored <
             remove_all native ignored <           rename native refused &
             create_symlink standard ENOENT -      copy_symlink standard ENOENT -
             copy standard ENOENT &                copy_file standard ENOENT &
             copy_directory narrowed refused &     read_symlink native ignored <)")) {
        bool const pair = who == "&" || empty == "ENOENT";
        for (std::size_t i = 0; i < (pair ? 4 : 2); ++i) { // first name, second name; path, string
            SCOPED_TRACE(name + std::to_string(i));
            std::array names{name == "copy_file" ? u"to-file"s : u"to-full"s,
                             pair ? u"new"s : u""s};
            auto const call = [&, &calls = operations.at(name)](std::u16string const& text) {
                names[i / 2] = text;
                return calls(names[0], names[1])[i % 2];
            };
            ::setenv("HOME", "/h", 1);
            auto const cut = call(u"~/x\0y"s);
            names[i / 2] = i % 2 == 0 ? u"~/x\0y"s : u"/h/x\0y"s;
            named const carried{who == "-" ? u"" : names[0], who == "&" ? names[1] : u""};
            EXPECT_TRUE(fails_with("EINVAL", carried, cut));
            // A high surrogate at the end leaves nothing of a native name.
            auto const half = call(u"x\xD800");
            EXPECT_TRUE(route == "standard"
                            ? cannot_encode(half) && cannot_encode(call(u"x\xDC00y"))
                            : fails_with("ENOENT", {route == "native" ? u""s : u"x\0"s}, half));
            // The native form of a string is empty where no home directory can be found.
            run_as(54321, [&, &e = empty, &n = name] {
                ::unsetenv("HOME");
                for (std::u16string const text : {i % 2 == 0 ? u"" : u"~", u""}) {
                    bool const missing =
                        e == "ENOENT" || (n == "change_current_path" && !text.empty());
                    EXPECT_TRUE(e == "refused"
                                    ? fails<InvalidArgument>(call(text), empty_refused)
                                    : fails_with(missing ? "ENOENT" : "ok", {}, call(text)));
                }
            });
        }
    }
    EXPECT_EQ(s.all(), before);
    copy_directory(u"full"s, u"x\xDC00"s); // elsewhere it is replaced
    rename(u"x\xDC00"s, u"y\xDFFF"s);
    change_current_path(u"y\xDC00"s);
    EXPECT_EQ(get_current_path(), s.name("y\xEF\xBF\xBD"));
}

TEST(operations, leave_no_descriptor_open_when_they_fail)
{
    scene const s;
    scene const there{elsewhere};
    run_as(nobody, [&] {
        std::ptrdiff_t descriptors = 0;
        for (int round = 0; round <= (long_run ? 10'000 : 1'000); ++round) {
            for (auto const& [name, calls] : operations) {
                bool const walks = name == "remove_all" || name == "copy" || name == "rename";
                auto const from = s.name(walks ? "full" : name == "copy_file" ? "file" : "loop/x");
                EXPECT_THROW(calls(from, s.name("closed/x"))[0](), FsysExceptionBase) << name;
                EXPECT_THROW(calls(from, there.name("file"))[1](), FsysExceptionBase) << name;
            }
            // Converters and the like are open from now on.
            descriptors = round == 0 ? open_descriptors() : descriptors;
        }
        EXPECT_EQ(open_descriptors(), descriptors);
    });
}

} // namespace nura::filesystem::test
