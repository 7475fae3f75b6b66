#pragma once

#include <filesystem/exceptions.hpp>

#include <boost/exception/enable_current_exception.hpp>

#include <string>

namespace nura::filesystem::detail {

/// The one place that throws the library's exceptions: always in the cloneable wrapper, so that
/// an exception pointer carries them to another thread with their type intact.
template <class Exception>
[[noreturn]] void raise(Exception const& exception)
{
    throw boost::enable_current_exception(exception);
}

/// An argument that the library itself refuses: a text and no pathname.
[[noreturn]] inline void raise_invalid_argument(std::string const& text)
{
    raise(InvalidArgument{text, {}, {}});
}

[[noreturn]] inline void raise_empty_path()
{
    raise_invalid_argument("Empty Path not permitted");
}

[[noreturn]] inline void throw_invalid_operation_exception()
{
    raise(InvalidOperation{});
}

} // namespace nura::filesystem::detail
