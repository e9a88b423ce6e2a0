#include "btnlint/lint.h"

#include "btnlint/remark_text.h"
#include "buttons/file/button_file_reader.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace btnlint {

namespace {

constexpr std::size_t kMaxExcerpt = 60;

bool isControl(char c) {
  constexpr unsigned char kDelete = 0x7F;
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || byte == kDelete;
}

/// The beginning of a line in quotes, harmless on a terminal.
std::string excerpt(std::string_view line) {
  std::string text(line.substr(0, kMaxExcerpt));
  std::replace_if(text.begin(), text.end(), isControl, '?');
  return '"' + text + (line.size() > kMaxExcerpt ? "\"..." : "\"");
}

struct Remark {
  std::size_t line;
  std::string text;
};

}  // namespace

std::size_t lint(const std::string& name, std::FILE* file, std::ostream& output) {
  std::vector<Remark> remarks;
  readButtonFile(file, [&](const ButtonFileNote& note) {
    std::string text(remarkText(note.remark));
    if (!note.text.empty()) {
      text += ": " + excerpt(note.text);
    }
    remarks.push_back({note.line, std::move(text)});
  });
  // A label turns out to be the last one of its group only when the group is over.
  std::stable_sort(remarks.begin(), remarks.end(),
                   [](const Remark& a, const Remark& b) { return a.line < b.line; });
  for (const Remark& remark : remarks) {
    output << name << ':' << remark.line << ": " << remark.text << '\n';
  }
  return remarks.size();
}

}  // namespace btnlint
