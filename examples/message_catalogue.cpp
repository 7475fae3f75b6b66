// A message catalogue: turns the identifier of a failure into a sentence of the user's language,
// with the pathname filled in.

#include <filesystem/filesystem.hpp>

#include <iostream>
#include <map>
#include <string>

namespace nfs = nura::filesystem;

using catalogue = std::map<std::string, std::string>;

catalogue const english{
    {"nura:filesystem:PathNotFound", "There is nothing called {}."},
    {"nura:filesystem:NotDirectoryError", "{} is not a folder."},
};
catalogue const german{
    {"nura:filesystem:PathNotFound", "Es gibt nichts namens {}."},
    {"nura:filesystem:NotDirectoryError", "{} ist kein Ordner."},
};

std::string message(nfs::FsysExceptionBase const& failure, catalogue const& texts)
{
    auto const entry = texts.find(failure.message_id());
    if (entry == texts.end()) {
        return nfs::describe(failure);
    }
    std::string text = entry->second;
    return text.replace(text.find("{}"), 2, nfs::path::display(failure.pathname()));
}

int main()
{
    for (char16_t const* const name : {u"/keine/Straße", u"/etc/passwd", u"/"}) {
        try {
            nfs::remove_directory(name);
        } catch (nfs::FsysExceptionBase const& failure) {
            std::cout << message(failure, english) << '\n' << message(failure, german) << '\n';
        }
    }
}
