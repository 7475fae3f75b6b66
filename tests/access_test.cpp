#include "support.hpp"

namespace nura::filesystem::test {

TEST(access, answers_as_the_system_does_or_turns_failures_into_answers_by_the_mode)
{
    scene const s;
    auto const expect = [&](auto const& name, unsigned mode, auto const& error, bool yes) {
        auto const ask = [=](auto const& p) { EXPECT_EQ(access(p, mode), yes) << mode; };
        EXPECT_TRUE(fails_with(error, {s.name(name)}, both(ask, s.name(name)))) << name << mode;
    };
    for (unsigned mode = 1; mode < 16; ++mode) {
        unsigned const asked = (mode & access_read) << 1 | (mode & access_write) >> 1 | mode >> 3;
        for (unsigned granted = 0; granted < 8; ++granted) {
            ASSERT_EQ(::chmod(s.at("file").c_str(), granted), 0);
            run_as(nobody, [&] { expect("file", mode, "ok", (asked & ~granted) == 0); });
        }
        // The error that the system is made to answer, the name, and what comes of it without
        // and with the question whether the file exists; "ok" is the answer no.
        for (auto const& [script, name, without, with] : table<4>(R"(
                 ok missing ENOENT ok    ok dangling ENOENT ok   ok file/x ENOTDIR ENOTDIR
                 ok loop ELOOP ELOOP     EACCES file ok ok       EACCES missing ok EACCES
                 EIO file EIO EIO        EROFS file EROFS EROFS  ok LONG ENAMETOOLONG ENAMETOOLONG)")) {
            hook = [error = number_of(script)](auto const& call, auto const&) {
                return call == "access" ? error : 0;
            };
            bool const writes = script == "EROFS" && (mode & access_write) != 0;
            expect(name, mode, writes ? "ok" : mode % 2 == 0 ? without : with, false);
            hook = nullptr;
        }
    }
    for (unsigned const mode : {0U, 16U, ~0U}) {
        auto const ask = [=](char16_t const* p) { return [=] { (void)access(p, mode); }; };
        EXPECT_TRUE(fails<InvalidArgument>(ask(u"/x"), {{}, {}, 0, "Unsupported Access Mode"}));
        EXPECT_TRUE(fails<InvalidArgument>(ask(u""), empty_refused));
    }
}

TEST(permissions, become_added_to_or_removed_from_the_mode)
{
    scene const s;
    auto const number = [](auto const& text) { return unsigned(std::stoul(text, nullptr, 0)); };
    failure const invalid{{}, {}, 0, "File Permission not valid"};
    // The mode before, the argument, the mode after; a link that is not meant itself stands for
    // its target.
    for (auto const& [before, argument, after] : table<3>(R"(
             0640 0x81A4 0644    0640 0 0             0640 0xFFF 07777     04640 0xEFFF 07777
             0640 0x80180 0600   0240 0x10100 0640    0240 0x1E000 0240    0240 0x10000 0240
             0640 0x20000 0640   04777 0x20100 04377  04777 0x20807 0770   0640 0x40180 0600
             0640 0x60080 0440   0640 0xFFFF bad      0640 0x7FFFF bad     0640 0x30000 bad)")) {
        for (std::string const name : {"file", "to-file"}) {
            unsigned const perms = number(argument);
            auto const change = [=](auto const& p) { permissions(p, perms); };
            bool const refused = (perms & file_status::perms_symlink) != 0 && name == "to-file";
            for (auto const& call : both(change, s.name(name))) {
                ASSERT_EQ(::chmod(s.at("file").c_str(), number(before)), 0);
                EXPECT_TRUE(after == "bad" ? fails<InvalidArgument>(call, invalid)
                                           : fails_with(refused ? "EOPNOTSUPP" : "ok", {}, call));
                auto const& expected = after == "bad" || refused ? before : after;
                EXPECT_EQ(status(s.name("file")).permissions(), number(expected)) << argument;
            }
        }
    }
}

} // namespace nura::filesystem::test
