#include "tree_removal.hpp"

#include "names.hpp"

#include <filesystem/operations.hpp>

#include <fmt/format.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>

namespace client {

namespace nfs = nura::filesystem;

namespace {

/// Whether `p` is the root directory, the home directory or a directory on the way to it. The
/// files are compared, not their names: links, dots and mounts make no difference.
bool holds_home(nfs::path const& p)
{
    nfs::path const home{u"~"};
    nfs::path at = nfs::exists(home) ? nfs::canonical(home) : nfs::path{u"/"};
    while (!at.empty() && !nfs::equivalent(p, at)) {
        at = at.parent_path();
    }
    return !at.empty();
}

void ask_about(std::u16string const& p)
{
    if (::isatty(STDIN_FILENO) != 1 || ::isatty(STDERR_FILENO) != 1) {
        throw refusal("there is no terminal to ask on: --yes is needed");
    }
    fmt::print(stderr, "Remove '{}' with all that is in it? [y/N] ", shown(p));
    std::string answer;
    std::getline(std::cin, answer);
    if (answer != "y" && answer != "yes") {
        throw refusal("left as it is");
    }
}

} // namespace

void remove_tree(std::u16string const& p, bool ask)
{
    if (holds_home(nfs::path{p})) {
        throw refusal("is, or holds, the root or the home directory: never removed");
    }
    if (ask) {
        ask_about(p);
    }
    nfs::remove_all(p);
}

} // namespace client
