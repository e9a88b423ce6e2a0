#include "app/command_line_options.h"

#include <algorithm>

std::unique_ptr<CommandLineOptions> CommandLineOptions::single;

namespace {

std::string stripBlanks(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

CommandLineOptions& CommandLineOptions::instance(std::string_view line) {
  if (single == nullptr) {
    single = std::make_unique<CommandLineOptions>(line);
  }
  return *single;
}

void CommandLineOptions::destroy() {
  single.reset();
}

int CommandLineOptions::hasOption(std::string_view name) {
  const std::size_t index = text.find("-" + std::string(name));
  found = index == std::string::npos ? -1 : static_cast<int>(index);
  return found >= 0 ? 1 : 0;
}

int CommandLineOptions::hasOptionChar(char ch) {
  return hasOption(std::string_view(&ch, 1));
}

int CommandLineOptions::getOptionValue(char ch, std::string& out) {
  if (hasOptionChar(ch) == 0) {
    return 0;
  }
  const std::size_t start = static_cast<std::size_t>(found) + 2;
  std::size_t end = text.find(" -", start);
  if (end == std::string::npos) {
    end = text.size() - 1;
  }
  const std::size_t length = end > start ? end - start : 0;
  out = stripBlanks(text.substr(std::min(start, text.size()), length));
  return 1;
}
