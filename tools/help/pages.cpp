#include "help/pages.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace help {

namespace {

constexpr std::array<Page, 6> kPages{{
    {"tessil-testerui", "man1/nelkvui.1", ""},
    {"tessil-tester", "man1/nelgdb.1", "gdb.md", "nelgdb"},
    {"tessil-tester-commands", "man1/nelgdb.1", "", "nelgdb"},
    {"tessil-tester", "man1/korvane.1", "first-ten-minutes.md"},
    {"tessil-tester-commands", "man1/nelkv.1", ""},
    {"tessil-generator", "man5/nelkv.btn.5", "button-file.md"},
}};

/// The file to show, plain or compressed as packages have it; empty when there is none.
std::string fileOf(const Page& page, const Surroundings& surroundings) {
  const bool isManual = page.document.empty();
  const std::string name = isManual ? surroundings.manuals + "/" + std::string(page.manual)
                                    : surroundings.documents + "/" + std::string(page.document);
  for (const char* end : {"", ".gz"}) {
    if (surroundings.exists(name + end)) {
      return name + end;
    }
  }
  return {};
}

}  // namespace

const Page& pageOf(std::string_view topic, std::string_view tester) {
  const auto* found = std::find_if(kPages.begin(), kPages.end(), [&](const Page& page) {
    return page.topic == topic && (page.tester.empty() || page.tester == tester);
  });
  return found != kPages.end() ? *found : kPages.front();
}

std::vector<std::string> viewerOf(const Page& page, const Surroundings& surroundings) {
  const std::string file = fileOf(page, surroundings);
  if (file.empty()) {
    return {};
  }
  const std::string own = surroundings.variable("PAGER");
  const std::string pager = page.document.empty() ? "man" : own.empty() ? "pager" : own;
  for (const std::string& terminal : {surroundings.variable("TERMINAL"),
                                      std::string("x-terminal-emulator"), std::string("xterm")}) {
    const auto program = terminal.empty() ? std::nullopt : surroundings.find(terminal);
    if (program) {
      return {*program, "-e", pager, file};
    }
  }
  for (const std::string& browser : {surroundings.variable("BROWSER"), std::string("xdg-open")}) {
    const auto program = browser.empty() ? std::nullopt : surroundings.find(browser);
    if (program && !page.document.empty()) {
      return {*program, file};
    }
  }
  return {};
}

std::string whereIs(const Page& page, const Surroundings& surroundings) {
  const std::size_t start = page.manual.find('/') + 1;
  std::string line =
      "< Help: man " + std::string(page.manual.substr(start, page.manual.rfind('.') - start));
  if (!page.document.empty()) {
    line += ", or " + surroundings.documents + "/" + std::string(page.document);
  }
  return line + " >\n";
}

}  // namespace help
