#include "errors/error_translation.hpp"
#include "errors/raise.hpp"
#include "native/system_call.hpp"

#include <filesystem/operations.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <boost/numeric/conversion/cast.hpp>

#include <unistd.h>

#include <cerrno>
#include <vector>

namespace nura::filesystem {

namespace {

std::size_t checked_length(ssize_t length)
{
    try {
        return boost::numeric_cast<std::size_t>(length);
    } catch (boost::numeric::bad_numeric_cast const&) {
        detail::raise(SystemError{{}, {}, 0});
    }
}

/// The text of the link `native`, as it is stored.
std::string link_text(std::string const& native)
{
    constexpr std::size_t step = 1024;
    for (std::vector<char> buffer(step);; buffer.resize(buffer.size() + step)) {
        ssize_t const answer =
            posix::detail::call_on(native, ::readlink, buffer.data(), buffer.size());
        if (answer == -1) {
            int const error = errno;
            detail::throw_errno_exception(error, native, {});
        }
        std::size_t const length = checked_length(answer);
        if (length < buffer.size()) {
            return {buffer.data(), length};
        }
        // A text that fills the buffer may have been cut.
    }
}

/// The text of the link `p`, a pathname in native form.
std::u16string read_link_at(std::u16string const& p)
{
    return p.empty() ? p : detail::from_filesystem(link_text(detail::make_native_access_form(p)));
}

} // namespace

path read_symlink(path const& p)
{
    return path{read_link_at(p.pathname())};
}

std::u16string read_symlink(std::u16string const& p)
{
    return read_link_at(detail::make_native_form(p, true));
}

} // namespace nura::filesystem
