#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tester {

/// What a word of the user was found to mean, or why it means nothing.
template <typename T>
struct Lookup {
  std::optional<T> value;
  std::string problem;  ///< one sentence, when there is no value

  explicit operator bool() const { return value.has_value(); }
};

template <typename T>
Lookup<T> found(T value) {
  return {std::move(value), ""};
}

template <typename T>
Lookup<T> notFound(std::string problem) {
  return {std::nullopt, std::move(problem)};
}

/// Whether `word` abbreviates `name`: each part between hyphens begins the part of the name in the
/// same place; parts at the end may be left out ("l-p" and "list" for "list-process"). The case of
/// letters does not matter.
bool abbreviates(std::string_view word, std::string_view name);

/// The one of `names` that the word is or abbreviates; the whole name wins over longer ones.
/// `kind` says in a problem text what was looked for: "process".
Lookup<std::string> findName(std::string_view word, const std::vector<std::string>& names,
                             std::string_view kind);

/// "a, b, c"
std::string joinNames(const std::vector<std::string>& names);

/// Cuts a command into its words. Words are separated by blanks; a part between two double or two
/// single quotes belongs to one word, blanks included, without the quotes.
Lookup<std::vector<std::string>> splitWords(std::string_view command);

/// The text without blanks and line ends around it.
std::string trimmed(std::string_view text);

}  // namespace tester
