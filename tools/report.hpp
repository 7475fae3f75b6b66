#pragma once

#include <nlohmann/json.hpp>

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace client {

/// Exit statuses. A failure of the library gives `typed_failure` and its kind. Where several
/// names end differently the highest number wins; lost output is always `failure`.
struct exit_status {
    static constexpr int done = 0;
    static constexpr int no = 1;
    static constexpr int usage = 2;
    static constexpr int failure = 3;
    static constexpr int typed_failure = 10;
};

enum class tone { plain, good, bad, faint, strong };

struct line {
    std::string label;
    std::string text;
    tone how = tone::plain;
};

/// What a command found out, once for people and once for programs. A line without a label is
/// one word that stands before the name. Without any nothing is said to people.
struct result {
    bool yes = true;
    std::optional<std::u16string> alone{}; ///< a name as the whole answer, for scripts
    std::vector<line> lines{};
    nlohmann::ordered_json data = nlohmann::ordered_json::object();

    /// Adds `text` under `key`; as a line it stands after the words of `key`.
    void add(std::string_view key, std::string const& text, tone how = tone::plain);

    /// Adds what people and programs read in different forms.
    void add_value(std::string_view key, nlohmann::ordered_json value, std::string text,
                   tone how = tone::plain);

    /// Adds a pathname or a part of one.
    void add_name(std::string_view key, std::u16string_view name);
};

/// The answer of a question.
[[nodiscard]] result yes_or_no(std::string_view key, bool yes);

/// What went wrong: `describe`, with `names` where the failure has no pathname of its own.
[[nodiscard]] std::string failure_words(std::exception const& failure,
                                        std::vector<std::u16string> const& names);

/// `failure` as the member "error" of a JSON answer.
[[nodiscard]] nlohmann::ordered_json failure_data(std::exception const& failure,
                                                  std::vector<std::u16string> const& names);

/// Writes out what standard output still holds back.
/// \throws std::system_error
void flush_results();

/// Writes results on standard output and failures on standard error, or both as JSON objects,
/// one a line, on standard output; and keeps the exit status.
class report {
public:
    using pathnames = std::vector<std::u16string>;

    /// A name as the whole answer is written exactly if it ends `with_nul`, else for people.
    report(std::string_view command, bool as_json, bool with_nul);

    /// \throws std::system_error, as `failure` does, if standard output cannot be written
    void success(pathnames const& names, result const& found);
    void failure(pathnames const& names, std::exception const& failure);

    [[nodiscard]] int status() const noexcept { return status_; }

private:
    std::string command_;
    bool as_json_;
    bool with_nul_;
    bool coloured_results_;
    bool coloured_failures_;
    int status_ = exit_status::done;
};

} // namespace client
