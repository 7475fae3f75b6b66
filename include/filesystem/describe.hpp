#pragma once

/// \file
/// Failures in words.

#include "export.hpp"

#include <exception>
#include <string>

namespace nura::filesystem {

/// One English line in UTF-8 about `failure`, without a line feed at its end.
///
/// For the library's own exceptions: the pathnames as `path::display` prints them, the reason,
/// and in brackets the type with the error number where it has one. `fallback` stands in where
/// the exception carries no pathname. For any other exception: `fallback` if it is not empty,
/// and the text of `what()`, control bytes escaped.
///
/// \code
/// '/a/b': no such file or directory [PathNotFound]
/// '/a' -> '/ro/b': read-only file system [SystemError 30]
/// invalid argument: Empty Path not permitted [InvalidArgument]
/// \endcode
///
/// The text does not depend on the locale and may change between versions: programs decide by
/// the type.
[[nodiscard]] NURA_FILESYSTEM_EXPORT std::string describe(std::exception const& failure,
                                                          std::u16string const& fallback = {});

} // namespace nura::filesystem
