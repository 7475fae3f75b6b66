#pragma once

#include <iconv.h>

#include <cstddef>
#include <string>

namespace nura::filesystem::posix::detail {

/// The encoding of native names on this system.
inline constexpr char const* native_encoding = "UTF-8";

/// The directions of conversion; each has its own converter in each thread.
inline constexpr std::size_t from_native = 0;
inline constexpr std::size_t to_native = 1;

/// The calling thread's converter for one direction: opened by the thread's first call, with
/// the encodings of that call, and closed when the thread ends. A failed open is kept like any
/// other handle: every later call in the thread returns `(iconv_t)-1`.
template <std::size_t Direction>
iconv_t get_thread_local_iconv_converter(char const* tocode, char const* fromcode);

extern template iconv_t get_thread_local_iconv_converter<from_native>(char const*, char const*);
extern template iconv_t get_thread_local_iconv_converter<to_native>(char const*, char const*);

/// The native name of `source` in `encoding`: what cannot be converted is substituted, an
/// incomplete sequence at the end makes the result empty, as a converter that cannot be used
/// does.
std::string to_filesystem_native_impl(std::u16string const& source, char const* encoding);

} // namespace nura::filesystem::posix::detail
