#include "support.hpp"

#include <boost/filesystem/path.hpp>

#include <random>

namespace nura::filesystem::test {

using namespace std::literals;
using name = std::u16string;

/// A result, or all that an exception says.
static std::string outcome_of(std::function<name()> const& call)
{
    try {
        return testing::PrintToString(call());
    } catch (FsysExceptionBase const& e) {
        return e.what() + testing::PrintToString(
                              std::tuple{e.pathname(), e.other_pathnames(), e.error_number()});
    }
}

/// Resolution without a thought of speed: every leading part of a pathname is looked up by its
/// own name, and nothing that was learnt on the way is used again.
struct slow {
    static name form(name const& p) { return detail::make_native_form(p, true); }
    static name text(std::string const& native) { return detail::from_filesystem(native); }
    static std::string native(name const& p) { return detail::to_filesystem(p); }

    static bool exists(name const& p)
    {
        try {
            return status_express_light(p).exists();
        } catch (NotDirectoryError const&) {
            return false;
        }
    }

    static name canonical(name const& p, name const& base)
    {
        name full = form(p);
        if (name start = base.empty() ? get_current_path() : form(base);
            !native(full).empty() && full.front() != u'/') {
            if (!native(start).empty() && start.front() != u'/') {
                throw InvalidArgument{"Invalid Base Path", {}, {}};
            }
            full = native(start).empty() ? start : (start == u"/" ? u"" : start) + u"/" + full;
        }
        if (full.find(u'\0') != full.npos && !native(full).empty()) {
            throw InvalidArgument{"", text(native(full)), {u""}};
        }
        if (!exists(full)) {
            throw PathNotFound{{}};
        }
        std::error_code too_long;
        auto const found = std::filesystem::canonical(native(full), too_long);
        return too_long ? throw FileNameTooLarge{text(native(full))} : text(found.string());
    }

    static name weakly_canonical(path const& p)
    {
        if (exists(p.pathname())) {
            return canonical(p.pathname(), {});
        }
        path built;
        auto element = p.begin();
        for (; element != p.end() && exists((built / *element).pathname()); ++element) {
            built /= *element;
        }
        built = built.empty() ? built : path{canonical(built.pathname(), {})};
        bool dotted = false;
        for (; element != p.end(); ++element) {
            built /= *element;
            dotted = dotted || *element == u"." || *element == u"..";
        }
        boost::filesystem::path const all{native(built.pathname())};
        return dotted ? form(text(all.lexically_normal().string())) : built.pathname();
    }
};

static void compare(name const& p, name const& base, bool expand_tilde)
{
    path const q{p, expand_tilde};
    path const b{base, expand_tilde};
    auto const same = [](auto const& call, auto const& slowly) {
        EXPECT_EQ(outcome_of(call), outcome_of(slowly));
    };
    auto const real = [](name const& from, name const& to) {
        return from.empty() ? from : slow::canonical(from, to);
    };
    auto const held = [](path const& r) { return r.expand_tilde() ? r.pathname() : u"?"; };
    same([&] { return canonical(p, base); }, [&] { return real(slow::form(p), slow::form(base)); });
    same([&] { return held(canonical(q, b)); }, [&] { return real(q.pathname(), b.pathname()); });
    same([&] { return weakly_canonical(p); }, [&] { return slow::weakly_canonical(path{p}); });
    same([&] { return held(weakly_canonical(q)); }, [&] { return slow::weakly_canonical(q); });
}

/// A tree of awkward names, and pathnames into it and past it; the same for the same seed.
class random_tree {
    std::mt19937 random_;
    std::string start_;
    std::vector<std::string> entries_{""};
    std::string const longest_ = std::string(255, 'l');
    std::array<std::string, 10> const names_ =
        table<10>("a b .c ~ ~x \U0001F600 \uFFFD a\uFFFD \xFF " + longest_)[0];
    std::vector<name> const no_names_{
        u".",      u"..",      u"",       u"~",     u"~none",        u"missing",
        u"\xDC00", u"a\xD800", u"\xD800", u"a\0b"s, name(256, u'n'), name(4000, u'n')};

    auto any(auto const& values) { return values[random_() % values.size()]; }

public:
    bool one_in(unsigned n) { return random_() % n == 0; }

    /// Makes the tree below the current directory, which becomes one of its directories; modes
    /// are taken away, and the home directory may be anything.
    explicit random_tree(unsigned seed) : random_{seed}
    {
        for (auto depth = one_in(8) ? random_() % 20 : 0; depth > 0; --depth) {
            std::filesystem::create_directory(longest_);
            std::filesystem::current_path(longest_);
        }
        start_ = std::filesystem::current_path().string() + "/";
        std::vector<std::string> directories{""};
        std::error_code ignored;
        for (int left = 50; left > 0; --left) {
            std::string const entry = any(directories) + any(names_);
            if (one_in(3)) {
                std::string const near = any(names_);
                std::vector const texts{start_ + any(entries_), near, "../" + near, ".."s};
                std::filesystem::create_symlink(any(texts), entry, ignored);
            } else if (one_in(3)) {
                ::mknod(entry.c_str(), S_IFREG | 0644, 0); // not by way of a link, out of the tree
            } else if (std::filesystem::create_directory(entry, ignored)) {
                directories.push_back(entry + "/");
            }
            entries_.push_back(entry);
        }
        std::filesystem::current_path(slow::text(any(directories)), ignored);
        for (auto i = directories.size(); --i > 0;) {
            ::chmod((start_ + directories[i]).c_str(), one_in(6) ? one_in(2) ? 0 : 0444 : 0755);
        }
        std::vector const homes{start_, start_, start_ + any(entries_), "/"s, "a"s, "~x"s, ""s};
        ::setenv("HOME", any(homes).c_str(), 1);
    }

    name pathname()
    {
        std::vector const places{start_, start_, "~/"s, "~root/"s, "~none/"s, "//"s};
        name p = slow::text(one_in(3) ? any(names_) : any(places) + any(entries_));
        for (auto left = random_() % 5; left > 0; --left) {
            p += u'/' + (one_in(2) ? slow::text(any(names_)) : one_in(3) ? u".." : any(no_names_));
        }
        return p;
    }
};

static void compare_many()
{
    unsigned const trees = long_run ? 500 : 50;
    for (unsigned seed = 1; seed <= trees; ++seed) {
        temporary_root const root;
        std::filesystem::current_path(root.at(""));
        random_tree tree{seed};
        for (int left = 200; left > 0 && !testing::Test::HasFailure(); --left) {
            name const names[]{tree.pathname(), tree.one_in(2) ? u"" : tree.pathname()};
            compare(names[0], names[1], tree.one_in(2));
            EXPECT_FALSE(testing::Test::HasFailure())
                << "seed " << seed << ' ' << testing::PrintToString(names);
        }
        std::filesystem::current_path("/");
    }
}

TEST(resolution_model, agrees_with_and_without_rights_and_home)
{
    run_as(::geteuid(), compare_many);
    run_as(54321, compare_many);
}

} // namespace nura::filesystem::test
