#pragma once

/// \file
/// What stands at a pathname: its type, permissions, times and size.

#if defined(BOOST_DATE_TIME_POSIX_TIME_STD_CONFIG)
#    error "BOOST_DATE_TIME_POSIX_TIME_STD_CONFIG changes the size and the unit of file times: \
nura filesystem was built without it"
#endif

#include <boost/date_time/posix_time/posix_time_types.hpp>

#include <chrono>
#include <cstdint>
#include <optional>

namespace nura::filesystem {

namespace detail {

/// `time` on the system clock; nothing for a special value (not-a-date-time, the infinities)
/// and for a time that the clock cannot hold.
[[nodiscard]] inline std::optional<std::chrono::system_clock::time_point>
to_system_clock(boost::posix_time::ptime const& time)
{
    using clock_duration = std::chrono::system_clock::duration;
    using std::chrono::duration_cast;
    using std::chrono::microseconds;

    boost::posix_time::ptime const epoch{boost::gregorian::date{1970, 1, 1}};
    auto const reach =
        boost::posix_time::microseconds{duration_cast<microseconds>(clock_duration::max()).count()};
    if (time.is_special() || time < epoch - reach || time > epoch + reach) {
        return std::nullopt;
    }
    return std::chrono::system_clock::time_point{
        duration_cast<clock_duration>(microseconds{(time - epoch).total_microseconds()})};
}

} // namespace detail

/// The answer of `status` and `symlink_status`.
///
/// Times are in UTC, to the microsecond. A default-constructed value says that nothing was
/// found: `file_not_found`, `no_perms`, not-a-date-time three times, size 0.
class file_status {
public:
    using time_point = boost::posix_time::ptime;

    /// \name File types
    /// The values are those of the `S_IF*` macros of POSIX.
    /// @{
    static constexpr std::uint32_t file_not_found = 0xFFFF0000;
    static constexpr std::uint32_t file_type_mask = 0xF000;
    static constexpr std::uint32_t file_type_unknown = 0x0;
    static constexpr std::uint32_t file_type_auto = 0x1;
    static constexpr std::uint32_t regular_file = 0x8000;
    static constexpr std::uint32_t directory_file = 0x4000;
    static constexpr std::uint32_t symlink_file = 0xA000;
    static constexpr std::uint32_t block_file = 0x6000;
    static constexpr std::uint32_t character_file = 0x2000;
    static constexpr std::uint32_t fifo_file = 0x1000;
    static constexpr std::uint32_t socket_file = 0xC000;
    static constexpr std::uint32_t reparse_file = 0xE000;
    /// @}
    /// \name Permissions
    /// The values are those of the mode bits of POSIX.
    /// @{
    static constexpr std::uint32_t no_perms = 0x0;
    static constexpr std::uint32_t owner_read = 0x100;
    static constexpr std::uint32_t owner_write = 0x80;
    static constexpr std::uint32_t owner_exec = 0x40;
    static constexpr std::uint32_t owner_all = 0x1C0;
    static constexpr std::uint32_t group_read = 0x20;
    static constexpr std::uint32_t group_write = 0x10;
    static constexpr std::uint32_t group_exec = 0x8;
    static constexpr std::uint32_t group_all = 0x38;
    static constexpr std::uint32_t others_read = 0x4;
    static constexpr std::uint32_t others_write = 0x2;
    static constexpr std::uint32_t others_exec = 0x1;
    static constexpr std::uint32_t others_all = 0x7;
    static constexpr std::uint32_t perms_all = 0x1FF;
    static constexpr std::uint32_t set_uid_on_exec = 0x800;
    static constexpr std::uint32_t set_gid_on_exec = 0x400;
    static constexpr std::uint32_t sticky_bit = 0x200;
    /// @}
    /// \name Attributes
    /// They share their bits with the file types.
    /// @{
    static constexpr std::uint32_t archive_file = 0x1000;
    static constexpr std::uint32_t system_file = 0x2000;
    static constexpr std::uint32_t hidden_file = 0x4000;
    static constexpr std::uint32_t non_indexed_file = 0x8000;
    static constexpr std::uint32_t perms_mask = 0xFFFF;
    static constexpr std::uint32_t perms_unknown = 0xFFFF;
    /// @}
    /// \name Ways to change permissions
    /// Combined with permission bits in the argument of `permissions`.
    /// @{
    static constexpr std::uint32_t perms_add = 0x10000;
    static constexpr std::uint32_t perms_remove = 0x20000;
    static constexpr std::uint32_t perms_symlink = 0x40000;
    /// @}

    /// Nothing was found.
    file_status() = default;

    file_status(std::uint32_t type, std::uint32_t permissions, time_point access_time,
                time_point modification_time, time_point status_change_time, std::uint64_t size)
        : type_{type}, permissions_{permissions}, access_time_{access_time},
          modification_time_{modification_time}, status_change_time_{status_change_time}, size_{
                                                                                              size}
    {
    }

    /// One of the file types, `file_type_unknown`, or `file_not_found`.
    [[nodiscard]] std::uint32_t type() const noexcept { return type_; }

    /// The nine permission bits with `set_uid_on_exec`, `set_gid_on_exec` and `sticky_bit`.
    [[nodiscard]] std::uint32_t permissions() const noexcept { return permissions_; }

    [[nodiscard]] time_point access_time() const { return access_time_; }
    [[nodiscard]] time_point modification_time() const { return modification_time_; }
    [[nodiscard]] time_point status_change_time() const { return status_change_time_; }

    /// Bytes.
    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }

    [[nodiscard]] bool exists() const noexcept { return type_ != file_not_found; }
    [[nodiscard]] bool is_regular_file() const noexcept { return type_ == regular_file; }
    [[nodiscard]] bool is_directory() const noexcept { return type_ == directory_file; }
    [[nodiscard]] bool is_symlink() const noexcept { return type_ == symlink_file; }

    /// True for what exists and is no regular file, directory or symbolic link.
    [[nodiscard]] bool is_other() const noexcept
    {
        return exists() && !is_regular_file() && !is_directory() && !is_symlink();
    }

    /// \name Times on the system clock
    /// Nothing if the time is a special value or outside the clock's range.
    /// @{
    using system_time = std::optional<std::chrono::system_clock::time_point>;

    [[nodiscard]] system_time access_time_point() const
    {
        return detail::to_system_clock(access_time_);
    }
    [[nodiscard]] system_time modification_time_point() const
    {
        return detail::to_system_clock(modification_time_);
    }
    [[nodiscard]] system_time status_change_time_point() const
    {
        return detail::to_system_clock(status_change_time_);
    }
    /// @}

private:
    std::uint32_t type_ = file_not_found;
    std::uint32_t permissions_ = no_perms;
    time_point access_time_;
    time_point modification_time_;
    time_point status_change_time_;
    std::uint64_t size_ = 0;
};

/// The answer of `status_express_light`. A default-constructed value says that nothing was
/// found: `file_status::file_not_found`, not-a-date-time, size 0.
class light_file_status {
public:
    using time_point = file_status::time_point;

    /// Nothing was found.
    light_file_status() = default;

    light_file_status(std::uint32_t type, time_point modification_time, std::uint64_t size)
        : type_{type}, modification_time_{modification_time}, size_{size}
    {
    }

    /// The type bits as the system gave them, also those that `file_status::type` calls
    /// `file_type_unknown`; or `file_status::file_not_found`.
    [[nodiscard]] std::uint32_t type() const noexcept { return type_; }

    [[nodiscard]] time_point modification_time() const { return modification_time_; }

    /// The modification time on the system clock, as `file_status` gives it.
    [[nodiscard]] file_status::system_time modification_time_point() const
    {
        return detail::to_system_clock(modification_time_);
    }

    /// Bytes.
    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }

    [[nodiscard]] bool exists() const noexcept { return type_ != file_status::file_not_found; }

private:
    std::uint32_t type_ = file_status::file_not_found;
    time_point modification_time_;
    std::uint64_t size_ = 0;
};

} // namespace nura::filesystem
