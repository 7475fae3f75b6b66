#pragma once

#include <filesystem/basic_path.hpp>

#include <string>
#include <utility>

namespace nura::filesystem::detail {

/// Makes paths of text that is in native form already.
struct native_form_access {
    static path make(std::u16string text, bool expand_tilde = true)
    {
        return {path::in_native_form{}, std::move(text), expand_tilde};
    }
};

} // namespace nura::filesystem::detail
