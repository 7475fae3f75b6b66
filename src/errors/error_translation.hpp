#pragma once

#include <string>

namespace nura::filesystem::detail {

/// The one place that decides which exception an error number becomes, and throws it.
///
/// `first` is the native name that the failure concerns, `second` that of the other operand;
/// either may be empty. The second name survives only in `InvalidArgument` and `SystemError`.
[[noreturn]] void throw_errno_exception(int error, std::string const& first,
                                        std::string const& second);

/// A native name as an exception carries it. Never fails on a name that cannot be decoded.
std::u16string native_name_for_exception(std::string const& native);

} // namespace nura::filesystem::detail
