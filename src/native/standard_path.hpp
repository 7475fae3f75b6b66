#pragma once

#include <filesystem>
#include <string_view>

namespace nura::filesystem::detail {

/// The standard path of the same name as `pathname`, by the standard library's own code
/// conversion.
///
/// \throws std::runtime_error "locale not supported" for text that is no UTF-16
std::filesystem::path to_standard_path(std::u16string_view pathname);

} // namespace nura::filesystem::detail
