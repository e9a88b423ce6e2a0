#include "btnlint/lint.h"

#include "button_file/button_file_reader.h"
#include "support/version.h"
#include "usage.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>
#include <map>
#include <string_view>
#include <vector>

namespace btnlint {

namespace {

constexpr std::size_t kMaxExcerpt = 60;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr auto kNowhere = std::string_view::npos;

/// Of both sets of control characters, since a file may be of any origin.
bool isControl(char c) {
  constexpr unsigned char kDelete = 0x7F;
  constexpr unsigned char kLastControl = 0x9F;
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || (byte >= kDelete && byte <= kLastControl);
}

/// The beginning of a line in quotes, harmless on a terminal.
std::string excerpt(std::string_view line) {
  std::string text(line.substr(0, kMaxExcerpt));
  std::replace_if(text.begin(), text.end(), isControl, '?');
  return '"' + text + (line.size() > kMaxExcerpt ? "\"..." : "\"");
}

/// At most kMaxFileBytes and one more.
std::string beginningOf(std::FILE* file) {
  std::string bytes(kMaxFileBytes + 1, '\0');
  bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
  return bytes;
}

bool isUtf16(std::string_view bytes) {
  return bytes.substr(0, 2) == "\xFF\xFE" || bytes.substr(0, 2) == "\xFE\xFF" ||
         (bytes.size() > 1 && (bytes[0] == '\0') != (bytes[1] == '\0'));
}

/// Whether a carriage return stands elsewhere than at the end of a line.
bool hasBareReturn(std::string_view bytes) {
  for (std::size_t at = 0; (at = bytes.find('\r', at)) != kNowhere;) {
    at = bytes.find_first_not_of('\r', at);
    if (at != kNowhere && bytes[at] != '\n') {
      return true;
    }
  }
  return false;
}

/// What is to be said of a file, about its lines one remark each.
class Remarks {
 public:
  void addLine(const ButtonFileNote& note) {
    beforeHeader += note.remark == ButtonFileRemark::kBeforeFirstHeader ? 1 : 0;
    std::string text(remarkText(note.remark));
    if (!note.text.empty()) {
      text += ": " + excerpt(note.text);
    }
    // Notes come nearly, but not quite, in the order of the lines.
    if (!lines.emplace(note.line, std::move(text)).second || lines.size() <= kMaxLineRemarks) {
      return;
    }
    lines.erase(std::prev(lines.end()));
    isCut = true;
  }
  void addWhole(std::string_view text) { whole.emplace_back(text); }
  void dropLine(std::size_t line) { lines.erase(line); }
  void dropLines() { lines.clear(); }
  bool hasTextBeforeHeader() const { return beforeHeader > 0; }

  std::size_t write(const std::string& name, std::ostream& output) const {
    for (const std::string& text : whole) {
      output << name << ": " << text << '\n';
    }
    for (const auto& [line, text] : lines) {
      output << name << ':' << line << ": " << text << '\n';
    }
    if (isCut && !lines.empty()) {
      output << name << ": further remarks are left out\n";
    }
    return whole.size() + lines.size();
  }

 private:
  std::vector<std::string> whole;
  std::map<std::size_t, std::string> lines;
  std::size_t beforeHeader = 0;
  bool isCut = false;
};

Remarks remarksOn(std::string_view bytes) {
  Remarks remarks;
  if (bytes.size() > kMaxFileBytes) {
    remarks.addWhole("longer than 1 MiB; only the beginning was checked");
    bytes = bytes.substr(0, kMaxFileBytes);
  }
  if (isUtf16(bytes)) {
    remarks.addWhole("in UTF-16; only text of 8 bits a character is read");
    return remarks;
  }
  const bool isOneLine = bytes.find('\n') == kNowhere;
  if (hasBareReturn(bytes)) {
    remarks.addWhole("carriage returns without a line feed end no line");
    if (isOneLine) {
      return remarks;
    }
  }
  const ButtonSet set =
      readButtonFile(bytes, [&](const ButtonFileNote& note) { remarks.addLine(note); });
  if (bytes.starts_with(kByteOrderMark)) {
    remarks.addWhole("begins with a byte order mark, which makes its first line another one");
    remarks.dropLine(1);
  }
  if (set.groups.empty() && set.menus.empty()) {
    remarks.addWhole(remarks.hasTextBeforeHeader() ? "no header, so all of it is ignored"
                                                   : "holds no group and no menu");
    remarks.dropLines();
  }
  return remarks;
}

constexpr char kDescription[] =
    "Reads button files as the user interface does and says what it will misread or lose.";

constexpr char kFooter[] =
    "Each remark is one line, FILE:LINE: text.\n"
    "\n"
    "Exit status: 0 when there was nothing to remark, 1 when there was, 2 for a wrong command "
    "line\n"
    "or a file that cannot be read.";

CommandLine usageError(const std::string& what) {
  return {std::nullopt, kExitTrouble, usageFault("nel-btnlint", what) + "\n"};
}

}  // namespace

std::size_t lint(const std::string& name, std::FILE* file, std::ostream& output) {
  return remarksOn(beginningOf(file)).write(name, output);
}

CommandLine parseCommandLine(int argc, const char* const* argv) {
  try {
    CLI::App app(kDescription, "nel-btnlint");
    app.footer(kFooter);
    std::vector<std::string> files;
    app.add_option("FILE", files, "Button files to check")->required()->type_name("");
    app.set_version_flag("--version", std::string("nel-btnlint ") + kProductVersion);
    try {
      app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
      return {std::nullopt, kExitClean, app.help()};
    } catch (const CLI::CallForVersion& version) {
      return {std::nullopt, kExitClean, std::string(version.what()) + "\n"};
    }
    return {std::move(files), kExitClean, {}};
  } catch (const CLI::Error& error) {
    return usageError(error.what());
  }
}

}  // namespace btnlint
