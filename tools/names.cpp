#include "names.hpp"

#include <filesystem/basic_path.hpp>
#include <filesystem/pathname_grammar.hpp>

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <iostream>
#include <system_error>

namespace client {

namespace nfs = nura::filesystem;

namespace {

std::string escaped(std::string_view bytes)
{
    std::string text;
    for (char const byte : bytes) {
        if (byte >= ' ' && byte <= '~' && byte != '\\') {
            text += byte;
        } else {
            text += fmt::format("\\x{:02X}", static_cast<unsigned char>(byte));
        }
    }
    return text;
}

} // namespace

void for_each_name(std::vector<std::string> const& arguments, char separator,
                   std::function<void(raw_name)> const& visit)
{
    std::size_t number = 0;
    for (std::string const& argument : arguments) {
        ++number;
        if (argument != "-") {
            visit({argument, "name", number});
            continue;
        }
        std::size_t input_number = 0;
        for (std::string name; std::getline(std::cin, name, separator);) {
            visit({name, "standard input, name", ++input_number});
        }
        if (std::ferror(stdin) != 0) {
            throw std::system_error(errno, std::generic_category(), "standard input");
        }
    }
}

std::u16string decoded(raw_name const& name)
{
    std::u16string text = nfs::detail::from_filesystem(name.bytes);
    if (nfs::detail::to_filesystem(text) != name.bytes) {
        throw refusal(fmt::format("{} {}: '{}' is not valid UTF-8", name.source, name.number,
                                  escaped(name.bytes)));
    }
    return text;
}

std::string shown(std::u16string_view name)
{
    // A path would drop doubled separators: its part is to show what stands between them.
    std::string text;
    for (std::size_t start = 0; start <= name.size();) {
        std::size_t const end = std::min(name.find(u'/', start), name.size());
        text += nfs::path{name.substr(start, end - start), false}.display();
        text += end < name.size() ? "/" : "";
        start = end + 1;
    }
    return text;
}

std::string utf8(std::u16string_view name)
{
    return nfs::detail::to_filesystem(std::u16string{name});
}

} // namespace client
