#include "native/name_conversion.hpp"

#include <filesystem/pathname_grammar.hpp>
#include <filesystem/pathname_traits.hpp>

#include <boost/thread/tss.hpp>

#include <array>
#include <bit>
#include <cerrno>
#include <cstring>
#include <memory>
#include <string_view>
#include <type_traits>
#include <vector>

namespace nura::filesystem::posix::detail {

namespace {

/// Names of at most this many units that are pure ASCII are copied without iconv.
constexpr std::size_t short_cut_limit = 259;

constexpr std::size_t buffer_size = 1024;

iconv_t no_converter()
{
    return reinterpret_cast<iconv_t>(-1); // NOLINT: what iconv_open answers on failure
}

/// The handle that the slot of this thread holds, where asking the slot would cost more than
/// the conversion of a short name. Null before the thread's converter is opened and again once
/// it is closed: the destructor of another thread-local object that converts after that gets a
/// new one.
template <std::size_t Direction>
[[gnu::tls_model("initial-exec")]] thread_local iconv_t current_converter = nullptr;

template <std::size_t Direction>
struct converter_closer {
    using pointer = iconv_t;

    void operator()(iconv_t converter) const noexcept
    {
        current_converter<Direction> = nullptr;
        ::iconv_close(converter);
    }
};

template <std::size_t Direction>
using converter_owner = std::unique_ptr<void, converter_closer<Direction>>;

/// The calling thread's converter, by way of the slot that owns it.
template <std::size_t Direction>
iconv_t open_converter(char const* tocode, char const* fromcode)
{
    static boost::thread_specific_ptr<converter_owner<Direction>> conv_thread_ptr;
    if (conv_thread_ptr.get() == nullptr) {
        auto holder = std::make_unique<converter_owner<Direction>>();
        holder->reset(::iconv_open(tocode, fromcode));
        // In this order: the installation itself allocates and may throw.
        conv_thread_ptr.reset(holder.get());
        holder.release(); // NOLINT(bugprone-unused-return-value): the slot owns it now
    }
    return current_converter<Direction> = conv_thread_ptr->get();
}

/// What is written in place of a unit that the converter rejects.
std::string_view substitute_in(char const* encoding)
{
    return std::string_view{encoding} == native_encoding ? "\xEF\xBF\xBD" : "\x1A";
}

/// A copy of text that is pure ASCII and short; what is copied here never reaches iconv.
template <class Out>
class short_ascii {
public:
    /// Whether `source` is such text; only then is there a copy.
    template <class In>
    bool holds(std::basic_string<In> const& source) noexcept
    {
        using unsigned_unit = std::make_unsigned_t<In>;
        std::size_t const length = source.size();
        if (length > short_cut_limit) {
            return false;
        }
        In const* const from = source.data();
        unsigned_unit seen = 0;
        for (std::size_t i = 0; i < length; ++i) {
            auto const unit = static_cast<unsigned_unit>(from[i]);
            seen = static_cast<unsigned_unit>(seen | unit);
            units_[i] = static_cast<Out>(unit);
        }
        return seen < 0x80;
    }

    [[nodiscard]] Out const* data() const noexcept { return units_.data(); }

private:
    std::array<Out, short_cut_limit> units_; // left uninitialised: only what is written is read
};

/// Swaps the bytes of UTF-16 units between memory order and little-endian order, in place.
void swap_to_or_from_little_endian(char* bytes, std::size_t size)
{
    if constexpr (std::endian::native == std::endian::big) {
        for (std::size_t i = 0; i + 1 < size; i += 2) {
            std::swap(bytes[i], bytes[i + 1]);
        }
    }
}

/// The bytes of `source` as iconv reads them.
template <class Char>
std::vector<char> input_bytes(std::basic_string<Char> const& source)
{
    auto const* const bytes = reinterpret_cast<char const*>(source.data()); // NOLINT
    std::vector<char> input(bytes, bytes + source.size() * sizeof(Char));
    if constexpr (sizeof(Char) > 1) {
        swap_to_or_from_little_endian(input.data(), input.size());
    }
    return input;
}

/// Appends bytes that iconv wrote.
template <class Char>
void append_bytes(std::basic_string<Char>& out, char* bytes, std::size_t size)
{
    if constexpr (sizeof(Char) > 1) {
        swap_to_or_from_little_endian(bytes, size);
    }
    std::size_t const before = out.size();
    out.resize(before + size / sizeof(Char));
    std::memcpy(out.data() + before, bytes, size);
}

/// Brings a converter back to its initial state on every way out.
class state_reset {
public:
    explicit state_reset(iconv_t converter) noexcept : converter_{converter} {}
    state_reset(state_reset const&) = delete;
    state_reset& operator=(state_reset const&) = delete;
    ~state_reset() { ::iconv(converter_, nullptr, nullptr, nullptr, nullptr); }

private:
    iconv_t converter_;
};

/// What the two directions differ in, beyond their character types.
struct substitution {
    std::string_view bytes; ///< written for what is rejected
    bool at_truncated_end;  ///< whether an incomplete sequence is substituted, or fails
};

/// Runs `source` through `converter`, unit by unit where it rejects something. False if the
/// converter cannot be used or stops for any other reason; `out` is then incomplete.
template <class Out, class In>
[[gnu::noinline]] bool convert(std::basic_string<In> const& source, std::basic_string<Out>& out,
                               iconv_t converter, substitution const& substitute)
{
    if (converter == no_converter()) {
        return false;
    }
    std::vector<char> input = input_bytes(source);
    char* in = input.data();
    std::size_t in_left = input.size();
    std::array<char, buffer_size> buffer{};
    char* cursor = buffer.data();
    std::size_t out_left = buffer.size();
    state_reset const reset{converter};

    while (in_left != 0) {
        char* const chunk = cursor;
        std::size_t const converted = ::iconv(converter, &in, &in_left, &cursor, &out_left);
        int const error = converted == static_cast<std::size_t>(-1) ? errno : 0;
        bool const rejected = error == EILSEQ || (error == EINVAL && substitute.at_truncated_end);
        if (error != 0 && error != E2BIG && !rejected) {
            return false;
        }
        bool flush = error == E2BIG;
        if (rejected && in_left != 0) {
            if (out_left >= substitute.bytes.size()) {
                std::memcpy(cursor, substitute.bytes.data(), substitute.bytes.size());
                cursor += substitute.bytes.size();
                out_left -= substitute.bytes.size();
                in += sizeof(In);
                in_left -= sizeof(In);
            } else {
                flush = true; // the next pass meets the same unit with an empty buffer
            }
        }
        append_bytes(out, chunk, static_cast<std::size_t>(cursor - chunk));
        if (flush) {
            cursor = buffer.data();
            out_left = buffer.size();
        }
    }
    return true;
}

} // namespace

template <std::size_t Direction>
iconv_t get_thread_local_iconv_converter(char const* tocode, char const* fromcode)
{
    iconv_t const current = current_converter<Direction>;
    return current != nullptr ? current : open_converter<Direction>(tocode, fromcode);
}

template iconv_t get_thread_local_iconv_converter<from_native>(char const*, char const*);
template iconv_t get_thread_local_iconv_converter<to_native>(char const*, char const*);

std::string to_filesystem_native_impl(std::u16string const& source, char const* encoding)
{
    static std::string_view const subst_chars = substitute_in(encoding);
    // Before anything else, the short-cut included: every thread opens its converter with its
    // first conversion.
    iconv_t const converter = get_thread_local_iconv_converter<to_native>(encoding, "UTF-16LE");
    short_ascii<char> copy;
    if (copy.holds(source)) {
        return {copy.data(), source.size()};
    }
    std::string native;
    // A name that ends in half a surrogate pair is incomplete and fails as a whole, while
    // incomplete native names, below, are substituted: the system may hand those out, and they
    // must stay visible.
    if (!convert(source, native, converter, {subst_chars, false})) {
        native.clear();
    }
    return native;
}

} // namespace nura::filesystem::posix::detail

namespace nura::filesystem {

std::string pathname_traits<char16_t>::to_filesystem(std::u16string const& pathname)
{
    return posix::detail::to_filesystem_native_impl(pathname, posix::detail::native_encoding);
}

std::u16string pathname_traits<char16_t>::from_filesystem(std::string const& name)
{
    namespace native = posix::detail;
    iconv_t const converter = native::get_thread_local_iconv_converter<native::from_native>(
        "UTF-16LE", native::native_encoding);
    native::short_ascii<char16_t> copy;
    if (copy.holds(name)) {
        return {copy.data(), name.size()};
    }
    std::u16string pathname;
    // U+FFFD in UTF-16LE.
    if (!native::convert(name, pathname, converter, {"\xFD\xFF", true})) {
        pathname.clear();
    }
    return pathname;
}

namespace detail {

std::string to_filesystem(std::u16string const& pathname)
{
    return pathname_traits<char16_t>::to_filesystem(pathname);
}

std::u16string from_filesystem(std::string const& name)
{
    return pathname_traits<char16_t>::from_filesystem(name);
}

std::string make_access_form(std::string const& name)
{
    return name;
}

std::string make_native_access_form(std::u16string const& s)
{
    return posix::detail::to_filesystem_native_impl(s, posix::detail::native_encoding);
}

} // namespace detail

} // namespace nura::filesystem
