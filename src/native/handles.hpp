#pragma once

#include <dirent.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <utility>

/// Owners of what the system and the C library hand out.
namespace nura::filesystem::posix::detail {

/// A file descriptor, or none.
class descriptor {
public:
    descriptor() noexcept = default;
    explicit descriptor(int number) noexcept : number_{number} {}
    descriptor(descriptor&& other) noexcept : number_{other.release()} {}
    descriptor& operator=(descriptor&& other) noexcept
    {
        descriptor taken{std::move(other)};
        std::swap(number_, taken.number_);
        return *this;
    }
    ~descriptor()
    {
        if (*this) {
            ::close(number_);
        }
    }

    explicit operator bool() const noexcept { return number_ >= 0; }
    [[nodiscard]] int number() const noexcept { return number_; }
    [[nodiscard]] int release() noexcept { return std::exchange(number_, -1); }

private:
    int number_ = -1;
};

struct stream_closer {
    void operator()(DIR* stream) const noexcept { ::closedir(stream); }
};

using directory_stream = std::unique_ptr<DIR, stream_closer>;

struct allocation_freer {
    void operator()(void* allocation) const noexcept { std::free(allocation); } // NOLINT
};

/// Text that the C library allocated.
using allocated_text = std::unique_ptr<char, allocation_freer>;

} // namespace nura::filesystem::posix::detail
