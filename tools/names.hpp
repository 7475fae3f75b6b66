#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace client {

/// A name as it came in: the `number`th of the `source`.
struct raw_name {
    std::string bytes;
    char const* source;
    std::size_t number;
};

/// What the client itself does not do, such as to take a name that is not UTF-8: converted all the
/// same, it would name another file.
class refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Visits the names of a command line in order. The argument "-" stands for the names on standard
/// input, each up to a `separator`; each is visited as soon as it is read.
/// \throws std::system_error if standard input cannot be read, and whatever `visit` throws
void for_each_name(std::vector<std::string> const& arguments, char separator,
                   std::function<void(raw_name)> const& visit);

/// The pathname that converts to exactly the bytes of `name`.
/// \throws refusal if there is none
[[nodiscard]] std::u16string decoded(raw_name const& name);

/// `name` for people, as written: doubled separators stay, control units are escaped.
[[nodiscard]] std::string shown(std::u16string_view name);

/// `name` for programs. Every name here was once UTF-8: none holds an unpaired surrogate.
[[nodiscard]] std::string utf8(std::u16string_view name);

} // namespace client
