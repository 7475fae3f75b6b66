#include "errors/error_translation.hpp"
#include "errors/raise.hpp"
#include "native/current_directory.hpp"
#include "native/display.hpp"
#include "native/handles.hpp"
#include "native/system_call.hpp"
#include "operations/absolute.hpp"
#include "operations/status.hpp"
#include "pathname/grammar.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/path_traits.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <boost/filesystem/path.hpp>

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <optional>

namespace nura::filesystem {

namespace {

using posix::detail::allocated_text;

/// A pathname in native form as a native name. A name that cannot be converted does not exist:
/// taken for the empty name, it would stand for the current directory.
std::string convertible(std::u16string const& p)
{
    std::string native = detail::make_native_access_form_with_cleanup(p);
    if (native.empty()) {
        detail::raise(PathNotFound{{}});
    }
    return native;
}

std::u16string canonical_of(std::u16string const& p, std::u16string const& base)
{
    std::string const native = convertible(p);
    bool const base_counts = !base.empty() && !detail::path_traits<char, char>::is_absolute(native);
    std::string const whole =
        detail::native_absolute(native, base_counts ? convertible(base) : std::string{});
    if (!detail::native_exists(whole)) {
        detail::raise(PathNotFound{{}});
    }
    // Allocated by the C library: a canonical name has no length that a buffer could have.
    allocated_text const resolved{::realpath(whole.c_str(), nullptr)};
    if (resolved == nullptr) {
        int const error = errno;
        detail::throw_errno_exception(error, whole, {});
    }
    return pathname_traits<char16_t>::from_filesystem(resolved.get());
}

/// The walk for pathnames whose elements may be anything: the longest leading part that exists
/// is found by asking for each part in turn, from the front.
path weakly_canonical_by_parts(path const& p)
{
    path built;
    auto element = p.begin();
    for (; element != p.end(); ++element) {
        path const candidate = built / *element;
        if (candidate.empty() || !exists(candidate)) {
            break;
        }
        built = candidate;
    }
    built = canonical(built);
    bool has_dot_element = false;
    for (; element != p.end(); ++element) {
        built /= *element;
        has_dot_element = has_dot_element || detail::grammar::is_dot_element(*element);
    }
    if (!has_dot_element) {
        return built;
    }
    boost::filesystem::path const native{
        detail::make_access_form(detail::to_filesystem(built.pathname()))};
    return path{detail::from_filesystem(native.lexically_normal().native())};
}

/// Whether the leading parts of `p` can be told apart in its native name: no element depends on
/// more than its own text, and no part converts in another way than the whole.
bool is_plain(path const& p)
{
    return detail::is_well_formed(p.pathname()) &&
           std::none_of(p.begin(), p.end(), [](std::u16string_view element) {
               return detail::grammar::is_dot_element(element) ||
                      element.front() == pathname_traits<char16_t>::TILDE_CHARACTER ||
                      element.find(u'\0') != std::u16string_view::npos;
           });
}

enum class finding { plain, link, missing, failure };

/// What stands at `name`, by one call that tells links from everything else.
finding look_at(std::string const& name)
{
    char unused = 0;
    if (::readlink(name.c_str(), &unused, sizeof unused) >= 0) {
        return finding::link;
    }
    switch (errno) {
    case EINVAL:
        return finding::plain;
    case ENOENT:
    case ENOTDIR:
        return finding::missing;
    default:
        return finding::failure;
    }
}

/// Puts what the link `name` leads to in its place.
finding resolve(std::string& name)
{
    allocated_text const resolved{::realpath(name.c_str(), nullptr)};
    if (resolved != nullptr) {
        name = resolved.get();
        return finding::plain;
    }
    return finding::failure;
}

/// A canonical name that grows by one element at a time.
class canonical_walk {
public:
    explicit canonical_walk(std::string start) : name_{std::move(start)} { drop_root(); }

    /// Goes on to `element`; stays unless there is something of that name.
    finding go_to(std::string_view element)
    {
        std::size_t const before = name_.size();
        name_ += separator;
        name_ += element;
        finding here = look_at(name_);
        if (here == finding::link) {
            here = resolve(name_);
            drop_root();
        }
        if (here != finding::plain) {
            name_.resize(before);
        }
        return here;
    }

    [[nodiscard]] std::string name() const { return name_.empty() ? root : name_; }

private:
    static constexpr char separator = pathname_traits<char>::PATHNAME_SEPARATOR_CHARACTER;
    static constexpr char const* root = pathname_traits<char>::ROOT_PATHNAME;

    /// While it grows, the root is what stands before the first separator: nothing.
    void drop_root()
    {
        if (name_.size() == 1) {
            name_.clear(); // absolute and of one unit: no other name is
        }
    }

    std::string name_;
};

/// The native name of the current directory, or nothing if it has none any more: a pathname of
/// which nothing exists does not need it.
std::string current_directory_or_empty()
{
    try {
        return detail::get_cwd_mt();
    } catch (FsysExceptionBase const&) {
        return {};
    }
}

/// The weakly canonical form of a plain `p` by a single walk: each element is looked at once,
/// behind the canonical name of what stands before it. Nothing where anything but a missing
/// element stops the walk: `weakly_canonical_by_parts` finds out what it means.
std::optional<path> weakly_canonical_by_one_walk(path const& p)
{
    std::string const native = detail::make_native_access_form(p.pathname());
    std::string const start = p.is_absolute() ? std::string{} : current_directory_or_empty();
    bool const too_long = start.size() + native.size() >= PATH_MAX;
    if (native.empty() || too_long || (start.empty() && p.is_relative())) {
        return std::nullopt;
    }
    canonical_walk walk{start};
    bool anything_found = p.is_absolute(); // the root
    std::size_t at = detail::grammar::root_path_length(std::string_view{native});
    std::size_t rest = detail::grammar::root_path_length(std::u16string_view{p.pathname()});
    while (at < native.size()) {
        std::size_t const end = detail::grammar::next_separator(std::string_view{native}, at);
        finding const here = walk.go_to(std::string_view{native}.substr(at, end - at));
        if (here == finding::failure) {
            return std::nullopt;
        }
        if (here == finding::missing) {
            break;
        }
        anything_found = true;
        at = end + 1;
        rest = detail::grammar::next_separator(std::u16string_view{p.pathname()}, rest) + 1;
    }
    path const found{anything_found ? detail::from_filesystem(walk.name()) : std::u16string{}};
    return rest < p.pathname().size() ? found / std::u16string_view{p.pathname()}.substr(rest)
                                      : found;
}

path weakly_canonical_of(path const& p)
{
    if (exists(p)) {
        return canonical(p);
    }
    if (is_plain(p)) {
        if (std::optional<path> const form = weakly_canonical_by_one_walk(p)) {
            return *form;
        }
    }
    return weakly_canonical_by_parts(p);
}

} // namespace

path canonical(path const& p, path const& base)
{
    return p.empty() ? path{} : path{canonical_of(p.pathname(), base.pathname())};
}

std::u16string canonical(std::u16string const& p, std::u16string const& base)
{
    std::u16string const form = detail::make_native_form(p, true);
    return form.empty() ? form : canonical_of(form, detail::make_native_form(base, true));
}

path weakly_canonical(path const& p)
{
    return p.empty() ? path{} : weakly_canonical_of(p);
}

std::u16string weakly_canonical(std::u16string const& p)
{
    return weakly_canonical(path{p}).pathname();
}

} // namespace nura::filesystem
