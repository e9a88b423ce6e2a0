#include "tester/commands/names.h"

#include <algorithm>
#include <cctype>

#include "tester/engine/value.h"

namespace tester {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\f\v";

/// Takes the part up to the next hyphen off the front of `text`.
std::string_view takePart(std::string_view& text) {
  const std::size_t hyphen = text.find('-');
  const std::string_view part = text.substr(0, hyphen);
  text.remove_prefix(hyphen == std::string_view::npos ? text.size() : hyphen + 1);
  return part;
}

}  // namespace

bool abbreviates(std::string_view word, std::string_view name) {
  while (!word.empty()) {
    if (name.empty()) {
      return false;
    }
    const std::string_view wordPart = takePart(word);
    const std::string_view namePart = takePart(name);
    if (!equalIgnoringCase(wordPart, namePart.substr(0, wordPart.size()))) {
      return false;
    }
  }
  return true;
}

Lookup<std::string> findName(std::string_view word, const std::vector<std::string>& names,
                             std::string_view kind) {
  std::vector<std::string> candidates;
  for (const std::string& name : names) {
    if (equalIgnoringCase(word, name)) {
      return found(name);
    }
    if (!word.empty() && abbreviates(word, name)) {
      candidates.push_back(name);
    }
  }
  if (candidates.size() == 1) {
    return found(candidates.front());
  }
  const std::string quoted = '"' + std::string(word) + '"';
  if (candidates.empty()) {
    return notFound<std::string>("Unknown " + std::string(kind) + ' ' + quoted + '.');
  }
  return notFound<std::string>("Ambiguous " + std::string(kind) + ' ' + quoted +
                               ", it may be: " + joinNames(candidates) + '.');
}

std::string joinNames(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) {
    text += (text.empty() ? "" : ", ") + name;
  }
  return text;
}

Lookup<std::vector<std::string>> splitWords(std::string_view command) {
  std::vector<std::string> words;
  bool inWord = false;
  char quote = 0;
  for (const char character : command) {
    if (quote == 0 && kBlanks.find(character) != std::string_view::npos) {
      inWord = false;
      continue;
    }
    if (!inWord) {
      words.emplace_back();
    }
    inWord = true;
    if (character == quote) {
      quote = 0;
    } else if (quote == 0 && (character == '"' || character == '\'')) {
      quote = character;
    } else {
      words.back() += character;
    }
  }
  if (quote != 0) {
    return notFound<std::vector<std::string>>("A quoted text is not closed.");
  }
  return found(std::move(words));
}

std::string trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) {
    return "";
  }
  return std::string(text.substr(first, text.find_last_not_of(kBlanks) - first + 1));
}

}  // namespace tester
