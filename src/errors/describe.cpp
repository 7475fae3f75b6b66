#include <filesystem/describe.hpp>
#include <filesystem/exceptions.hpp>

#include "native/display.hpp"
#include "native/unit_escape.hpp"

#include <cstring>
#include <string_view>
#include <vector>

namespace nura::filesystem {

namespace {

struct kind_words {
    std::string_view type;
    std::string_view reason;
};

/// The name of a type and what it says, by its code.
kind_words words_for(FsysExceptionBase const& failure)
{
    switch (failure.kind()) {
    case 1:
        return {"InvalidArgument", "invalid argument"};
    case 2:
        return {"InvalidOperation", "operation not available on this system"};
    case 3:
        return {"FileNameTooLarge", "file name too long"};
    case 6:
        return {"AccessDenied", "permission denied"};
    case 7:
        return {"PathNotFound", "no such file or directory"};
    case 8:
        return {"NotDirectoryError", "not a directory"};
    case 9:
        return {"DirectoryNotEmpty", "directory not empty"};
    case 10:
        return {"FileIsDirectory", "is a directory"};
    case 11:
        return {"FileExistsError", "file exists"};
    default:
        return {"SystemError", ""};
    }
}

/// The system's English text for `error`, with a small first letter like the others.
std::string system_text(int error)
{
    if (error == 0) {
        return "no error number (of a move: the copy is complete, the source is not removed)";
    }
    char const* const description = ::strerrordesc_np(error);
    if (description == nullptr) {
        return "unknown error";
    }
    std::string text{description};
    bool const abbreviation = text.size() > 1 && text[1] >= 'A' && text[1] <= 'Z';
    if (!abbreviation && text[0] >= 'A' && text[0] <= 'Z') {
        text[0] = static_cast<char>(text[0] - 'A' + 'a');
    }
    return text;
}

/// Text from elsewhere on one line: control bytes are escaped.
std::string on_one_line(std::string_view text)
{
    std::string line;
    for (char const byte : text) {
        auto const unit = static_cast<unsigned char>(byte);
        if (unit < 0x20 || unit == 0x7F) {
            detail::append_escaped(line, unit);
        } else {
            line += byte;
        }
    }
    return line;
}

std::string quoted(std::u16string const& pathname)
{
    return '\'' + detail::display_form(pathname) + '\'';
}

std::string pathnames_of(FsysExceptionBase const& failure, std::u16string const& fallback)
{
    std::u16string const& first = failure.pathname().empty() ? fallback : failure.pathname();
    std::string text = first.empty() ? std::string{} : quoted(first);
    for (std::u16string const& other : failure.other_pathnames()) {
        if (!other.empty()) {
            text += text.empty() ? "" : " -> ";
            text += quoted(other);
        }
    }
    return text;
}

std::string reason_of(FsysExceptionBase const& failure, kind_words const& words)
{
    if (words.reason.empty()) {
        return system_text(failure.error_number());
    }
    std::string reason{words.reason};
    auto const* const argument = dynamic_cast<InvalidArgument const*>(&failure);
    if (argument != nullptr && !argument->text().empty()) {
        reason += ": " + on_one_line(argument->text());
    }
    return reason;
}

std::string after(std::string pathnames, std::string const& text)
{
    return pathnames.empty() ? text : std::move(pathnames) + ": " + text;
}

} // namespace

std::string describe(std::exception const& failure, std::u16string const& fallback)
{
    auto const* const ours = dynamic_cast<FsysExceptionBase const*>(&failure);
    if (ours == nullptr) {
        return after(fallback.empty() ? std::string{} : quoted(fallback),
                     on_one_line(failure.what()));
    }
    kind_words const words = words_for(*ours);
    std::string line = after(pathnames_of(*ours, fallback), reason_of(*ours, words));
    line += " [";
    line += words.type;
    if (words.reason.empty()) {
        line += ' ' + std::to_string(ours->error_number());
    }
    return line += ']';
}

} // namespace nura::filesystem
