#pragma once

/// \file
/// A directory for an example to work in: it becomes the current directory and goes at the end.

#include <filesystem/filesystem.hpp>

#include <filesystem>
#include <string>

#include <unistd.h>

class scratch {
public:
    explicit scratch(char const* below = "/tmp")
        : directory_(std::filesystem::path{std::string{below} + "/nura-example-" +
                                           std::to_string(::getpid())})
    {
        nura::filesystem::create_directory(directory_);
        nura::filesystem::change_current_path(directory_);
    }
    scratch(scratch const&) = delete;
    scratch& operator=(scratch const&) = delete;
    ~scratch()
    {
        nura::filesystem::change_current_path(u"/");
        nura::filesystem::remove_all(directory_);
    }

    nura::filesystem::path const& directory() const { return directory_; }

private:
    nura::filesystem::path directory_;
};
