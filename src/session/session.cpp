#include "session/session.h"

#include <algorithm>

#include "link/message_numbers.h"
#include "link/tool_message.h"

Session theSession;

char* const g_AppTitle = theSession.appTitle.data();
std::string& g_TargetDir = theSession.targetDir;
int& g_PostOption = theSession.postOption;
std::string& g_SymbolName = theSession.symbolName;
std::string& g_Identification2 = theSession.identification2;
std::string& g_Identification3 = theSession.identification3;
int& g_TesterBusy = theSession.testerBusy;
int& g_IdleCount = theSession.idleCount;
int& g_ExitConfirmed = theSession.exitConfirmed;
std::string& g_CurrentDirectory = theSession.currentDirectory;
RWCString& copyBuffer = theSession.copyBuffer;
std::deque<std::string>& commandQueue = theSession.commandQueue;
bool& outputSinceCommand = theSession.outputSinceCommand;

namespace {

constexpr int kSilentPolls = 100;

const char* onlyInstance(std::string_view title, std::string_view text) {
  // The title counts without its last four characters. Intended.
  constexpr std::string_view kTitle = "Korvane Select";
  if (!title.starts_with(kTitle.substr(0, kTitle.size() - 4))) {
    return nullptr;
  }
  if (text.starts_with("Instance number (0)")) {
    return "0";
  }
  return text.starts_with("Instance number (*)") ? "*" : nullptr;
}

std::string stripBlanks(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string::npos) {
    return {};
  }
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

std::string Session::windowTitle(const char* system) const {
  return std::string(appTitle.data()) + " - " + system;
}

void Session::rememberSearch(const Search& search) {
  findHistory.push_back(search.text);
  findMatchCase = search.matchCase;
  findRegexp = search.useRegexp;
}

std::optional<Search> Session::newestSearch() const {
  if (findHistory.empty()) {
    return std::nullopt;
  }
  return Search{findHistory.back(), findMatchCase, findRegexp};
}

std::vector<RWCString> Session::searchesNewestFirst() const {
  return {findHistory.rbegin(), findHistory.rend()};
}

bool Session::hasPolledInVain() {
  if (++idleCount < kSilentPolls) {
    return false;
  }
  idleCount = 0;
  return true;
}

int Session::confirmExit(const std::function<int()>& ask,
                         const std::function<bool()>& mayAskAgain) {
  if (exitConfirmed != 0 || asksToExit) {
    return exitConfirmed;
  }
  asksToExit = true;
  do {
    exitConfirmed = ask();
  } while (exitConfirmed == 0 && isLinkLost && mayAskAgain());
  asksToExit = false;
  return exitConfirmed;
}

std::optional<std::string> onlyAnswer(int tag, const ToolMessage& message) {
  if (tag == MSG_T_ASK_RANGE && message.number(2) == message.number(3)) {
    return std::to_string(message.number(2));
  }
  const char* instance =
      tag == MSG_T_ASK_INTEGER ? onlyInstance(message.text(0), message.text(1)) : nullptr;
  return instance == nullptr ? std::nullopt : std::optional<std::string>(instance);
}

CommandLineOptions& CommandLineOptions::instance(std::string_view line) {
  static CommandLineOptions single(line);
  return single;
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
