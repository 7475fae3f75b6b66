#pragma once

#include <nlohmann/json_fwd.hpp>

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

/// The bytes of a name are not UTF-8. Converted all the same, it would name another file.
class refused_name : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Visits the names of a command line in order. The argument "-" stands for the names on standard
/// input, each up to a `separator`; each is visited as soon as it is read.
/// \throws std::system_error if standard input cannot be read, and whatever `visit` throws
void for_each_name(std::vector<std::string> const& arguments, char separator,
                   std::function<void(raw_name)> const& visit);

/// The pathname that converts to exactly the bytes of `name`.
/// \throws refused_name if there is none
[[nodiscard]] std::u16string decoded(raw_name const& name);

/// `name` for people, as written: doubled separators stay, control units are escaped.
[[nodiscard]] std::string shown(std::u16string_view name);

/// A JSON string; for a name with unpaired surrogates, which no JSON string can hold, an object
/// of its "display" form and its "code_units".
[[nodiscard]] nlohmann::ordered_json to_json(std::u16string_view name);

} // namespace client
