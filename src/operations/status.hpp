#pragma once

#include <filesystem/file_status.hpp>

#include <boost/function.hpp>

#include <string>

#include <sys/stat.h>

namespace nura::filesystem::detail {

/// Whether `native` names something, symbolic links followed.
bool native_exists(std::string const& native);

/// A call of `stat` or `lstat` that is bound to a name.
using stat_call = boost::function<int(struct stat*)>;

stat_call bind_stat(std::string const& native);
stat_call bind_lstat(std::string const& native);

/// The status that `call` finds. Failures carry no pathname: the call does not tell its name.
file_status make_file_status(stat_call const& call);

} // namespace nura::filesystem::detail
