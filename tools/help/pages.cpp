#include "help/pages.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace help {

namespace {

constexpr std::array<Page, 4> kPages{{
    {"tessil-testerui", "nelkvui", ""},
    {"tessil-tester", "korvane", "first-ten-minutes.md"},
    {"tessil-tester-commands", "nelkv", ""},
    {"tessil-generator", "nelkv.btn", "button-file.md"},
}};

}  // namespace

const Page& pageOf(std::string_view topic) {
  const auto* found = std::find_if(kPages.begin(), kPages.end(),
                                   [&](const Page& page) { return page.topic == topic; });
  return found != kPages.end() ? *found : kPages.front();
}

std::vector<std::string> viewerOf(const Page& page, const Surroundings& surroundings) {
  const std::string document =
      page.document.empty() ? "" : surroundings.documents + "/" + std::string(page.document);
  for (const std::string& terminal : {surroundings.variable("TERMINAL"),
                                      std::string("x-terminal-emulator"), std::string("xterm")}) {
    const auto program = terminal.empty() ? std::nullopt : surroundings.find(terminal);
    if (!program) {
      continue;
    }
    std::vector<std::string> words = {*program, "-e"};
    const std::string pager = surroundings.variable("PAGER");
    if (document.empty()) {
      words.insert(words.end(), {"man", std::string(page.manual)});
    } else {
      words.insert(words.end(), {pager.empty() ? "pager" : pager, document});
    }
    return words;
  }
  for (const std::string& browser : {surroundings.variable("BROWSER"), std::string("xdg-open")}) {
    const auto program = browser.empty() ? std::nullopt : surroundings.find(browser);
    if (program && !document.empty()) {
      return {*program, document};
    }
  }
  return {};
}

std::string whereIs(const Page& page, const Surroundings& surroundings) {
  std::string line = "< Help: man " + std::string(page.manual);
  if (!page.document.empty()) {
    line += ", or " + surroundings.documents + "/" + std::string(page.document);
  }
  return line + " >\n";
}

}  // namespace help
