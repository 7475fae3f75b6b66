#include <filesystem/basic_path.hpp>

#include "native/display.hpp"
#include "native/standard_path.hpp"
#include "pathname/city_hash.hpp"
#include "pathname/grammar.hpp"

namespace nura::filesystem {

namespace grammar = detail::grammar;

template <class N, class C, class T>
basic_path<N, C, T> basic_path<N, C, T>::from_utf8(std::string_view text, bool expand_tilde)
{
    std::string const bytes{text};
    string_type const units = pathname_traits<C>::from_filesystem(bytes);
    if (units.empty() && !bytes.empty()) {
        detail::raise_invalid_argument("No converter for UTF-8");
    }
    if (detail::to_standard_path(units).native() != bytes) {
        detail::raise(InvalidArgument{"Text is not valid UTF-8", units, {}});
    }
    return basic_path{units, expand_tilde};
}

template <class N, class C, class T>
std::string basic_path<N, C, T>::to_utf8() const
{
    if (!detail::is_well_formed(pathname_)) {
        detail::raise(InvalidArgument{"Text is not valid UTF-16", pathname_, {}});
    }
    return detail::to_standard_path(pathname_).native(); // needs no converter of this thread
}

template <class N, class C, class T>
std::string basic_path<N, C, T>::display() const
{
    return detail::display_form(pathname_);
}

template <class N, class C, class T>
std::string basic_path<N, C, T>::display(string_view_type text)
{
    return detail::display_form(text);
}

template <class N, class C, class T>
basic_path<N, C, T>::operator std::filesystem::path() const
{
    return detail::to_standard_path(pathname_);
}

template <class N, class C, class T>
basic_path<N, C, T> basic_path<N, C, T>::root_path() const
{
    return {in_native_form{}, string_type{grammar::root_path(string_view_type{pathname_})},
            expand_tilde_};
}

template <class N, class C, class T>
basic_path<N, C, T> basic_path<N, C, T>::root_name() const
{
    return {in_native_form{}, {}, expand_tilde_};
}

template <class N, class C, class T>
basic_path<N, C, T> basic_path<N, C, T>::root_directory() const
{
    return root_path();
}

template <class N, class C, class T>
basic_path<N, C, T> basic_path<N, C, T>::relative_path() const
{
    return {in_native_form{}, string_type{grammar::relative_path(string_view_type{pathname_})},
            expand_tilde_};
}

template <class N, class C, class T>
basic_path<N, C, T> basic_path<N, C, T>::parent_path() const
{
    return {in_native_form{}, string_type{grammar::parent_path(string_view_type{pathname_})},
            expand_tilde_};
}

template <class N, class C, class T>
std::basic_string_view<C> basic_path<N, C, T>::filename() const& noexcept
{
    return grammar::filename(string_view_type{pathname_});
}

template <class N, class C, class T>
std::basic_string_view<C> basic_path<N, C, T>::stem() const& noexcept
{
    return grammar::stem(string_view_type{pathname_});
}

template <class N, class C, class T>
std::basic_string_view<C> basic_path<N, C, T>::extension() const& noexcept
{
    return grammar::extension(string_view_type{pathname_});
}

template <class N, class C, class T>
detail::pathname_elements basic_path<N, C, T>::elements() const
{
    return detail::extract_pathname_elements(pathname_);
}

template <class N, class C, class T>
basic_path<N, C, T>& basic_path<N, C, T>::operator/=(string_view_type tail)
{
    if (!tail.empty()) {
        grammar::concatenate(pathname_, tail, expand_tilde_);
    }
    return *this;
}

template <class N, class C, class T>
basic_path<N, C, T>& basic_path<N, C, T>::operator/=(basic_path const& tail)
{
    if (!tail.empty()) {
        grammar::concatenate(pathname_, string_view_type{tail.pathname_}, false);
    }
    return *this;
}

template <class N, class C, class T>
basic_path<N, C, T>& basic_path<N, C, T>::remove_filename()
{
    grammar::remove_filename(pathname_);
    return *this;
}

template <class N, class C, class T>
basic_path<N, C, T>& basic_path<N, C, T>::replace_extension(string_view_type extension)
{
    grammar::replace_extension(pathname_, extension);
    return *this;
}

template <class N, class C, class T>
basic_path<N, C, T>& basic_path<N, C, T>::remove_extension()
{
    grammar::remove_extension(pathname_);
    return *this;
}

template <class N, class C, class T>
std::size_t basic_path<N, C, T>::hash() const noexcept
{
    return static_cast<std::size_t>(detail::city_hash(pathname_));
}

template class basic_path<>;

} // namespace nura::filesystem
