#pragma once

/// \file
/// The visibility macro of the library.
///
/// Everything in the library is compiled with hidden visibility; what carries
/// `NURA_FILESYSTEM_EXPORT` is its binary interface. Users of the static library
/// get `NURA_FILESYSTEM_STATIC` from the package, which empties the macro.

#if defined(NURA_FILESYSTEM_STATIC)
#    define NURA_FILESYSTEM_EXPORT
#else
#    define NURA_FILESYSTEM_EXPORT __attribute__((visibility("default")))
#endif
