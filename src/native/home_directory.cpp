#include <filesystem/pathname_traits.hpp>

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>

namespace nura::filesystem {

namespace {

/// The home directory in the password entry that `find` looks up, or empty. `find` is
/// `getpwuid_r` or `getpwnam_r`; both may succeed without having found an entry.
template <class Find, class Key>
std::string home_in_password_database(Find find, Key key)
{
    passwd entry{};
    std::array<char, 1024> buffer{};
    passwd* found = nullptr;
    int const error = find(key, &entry, buffer.data(), buffer.size(), &found);
    if (error != 0 || found == nullptr || found->pw_dir == nullptr) {
        return {};
    }
    return found->pw_dir;
}

std::string home_of_current_user()
{
    char const* const home = std::getenv("HOME");
    if (home != nullptr && *home != '\0') {
        return home;
    }
    return home_in_password_database(::getpwuid_r, ::getuid());
}

std::string home_of(std::string const& user)
{
    if (user.find('\0') != std::string::npos) {
        return {}; // no user is called that, and a cut name might be one
    }
    return home_in_password_database(::getpwnam_r, user.c_str());
}

} // namespace

std::string pathname_traits<char>::replace_tilde_with_home_dir(std::string const& name)
{
    if (name.empty() || name.front() != TILDE_CHARACTER) {
        return name;
    }
    std::size_t const name_end = name.find(PATHNAME_SEPARATOR_CHARACTER);
    std::size_t const user_end = name_end == std::string::npos ? name.size() : name_end;
    if (user_end == 1) {
        std::string home = home_of_current_user();
        // `~/` loses its separator, and without a home directory the rest is dropped as well.
        if (name.size() >= 3 && !home.empty()) {
            home.append(name, 1);
        }
        return home;
    }
    std::string home = home_of(name.substr(1, user_end - 1));
    if (home.empty()) {
        return name;
    }
    return home.append(name, user_end); // `~user/` keeps its separator
}

std::u16string
pathname_traits<char16_t>::replace_tilde_with_home_dir(std::u16string const& pathname)
{
    return from_filesystem(
        pathname_traits<char>::replace_tilde_with_home_dir(to_filesystem(pathname)));
}

} // namespace nura::filesystem
