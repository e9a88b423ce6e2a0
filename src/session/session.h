#pragma once

#include <array>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "support/rwc_string.h"

struct ToolMessage;

/// What the log was searched for, and how.
struct Search {
  RWCString text;
  bool matchCase = false;
  bool useRegexp = false;
};

/// What one run of the program knows, apart from windows: who the tester is, what it waits for,
/// what the user has searched for and agreed to. The main window and the functions of the messages
/// work on it. The globals below are its parts by the names that are agreed for them.
class Session {
 public:
  /// The title of the main window while `system` is open.
  std::string windowTitle(const char* system) const;

  /// Remembers what is searched for; findNext goes on with the newest.
  void rememberSearch(const Search& search);
  /// The newest search; nothing before the first.
  std::optional<Search> newestSearch() const;
  /// The texts searched for, newest first.
  std::vector<RWCString> searchesNewestFirst() const;

  /// Counts a poll of the link that brought no message. True with the hundredth in a row, when the
  /// count begins anew.
  bool hasPolledInVain();

  /// 1 if the program may end. `ask` puts the question to the user, whose yes is final: later calls
  /// ask no more. A call while the question is up gives 0. Without a link the user can't stay: the
  /// question is put again for as long as `mayAskAgain` says.
  int confirmExit(const std::function<int()>& ask, const std::function<bool()>& mayAskAgain);
  bool isAskingToExit() const { return asksToExit; }

  std::array<char, 21> appTitle = {"Korvane UI"};
  std::string targetDir;
  int postOption = 0;
  std::string symbolName = kUnknown;
  std::string identification2 = kUnknown;
  std::string identification3 = kUnknown;
  int testerBusy = 0;
  int idleCount = 0;
  int exitConfirmed = 0;
  bool isLinkLost = false;
  std::string currentDirectory;
  RWCString copyBuffer;

  std::deque<std::string> commandQueue;
  bool outputSinceCommand = false;

  /// What the Find dialog asked for. All runs that one end has ended share it: what was asked for
  /// twice is searched for once.
  std::optional<Search> wantedSearch;

 private:
  static constexpr const char* kUnknown = "- unknown -";

  std::vector<RWCString> findHistory;  ///< newest last
  bool findRegexp = false;
  bool findMatchCase = false;
  bool asksToExit = false;
};

/// The session of the program. appMain begins it anew.
extern Session theSession;

extern char* const g_AppTitle;     ///< "Korvane UI"
extern std::string& g_TargetDir;   ///< value of -t; parsed and used by nothing
extern int& g_PostOption;          ///< 1 when -post was given; used by nothing
extern std::string& g_SymbolName;  ///< from a message, as the next two; read by nothing
extern std::string& g_Identification2;
extern std::string& g_Identification3;
extern int& g_TesterBusy;                ///< 1 while the tester is, by its word; read by nothing
extern int& g_IdleCount;                 ///< polls without a message since the last one
extern int& g_ExitConfirmed;             ///< 1 once the user has agreed to the end
extern std::string& g_CurrentDirectory;  ///< as the directory dialog left it, with "/" at its end
extern RWCString& copyBuffer;            ///< of Copy and Paste; the X clipboard is not used
/// Pieces of the last line that have not been sent yet.
extern std::deque<std::string>& commandQueue;
/// True when text has come from the tester since the queue was released last.
extern bool& outputSinceCommand;

/// The answer to a question for a number that leaves no choice, so that nobody is asked.
std::optional<std::string> onlyAnswer(int tag, const ToolMessage& message);

/// The program's command line as one string, in which options are looked for as mere substrings: a
/// "-v" anywhere counts, be it in a path or in another option's value. Intended.
class CommandLineOptions {
 public:
  /// The one object, made with `line` by the first request; later ones hand in "".
  static CommandLineOptions& instance(std::string_view line);

  explicit CommandLineOptions(std::string_view line) : text(line) {}

  /// 1 if "-" and `name` occur, and then position() tells where; else 0.
  int hasOption(std::string_view name);
  int hasOptionChar(char ch);
  /// The text behind the option up to the next " -", without outer blanks. An option that ends the
  /// line loses its last character. Intended. 0, and `out` as it was, without the option.
  int getOptionValue(char ch, std::string& out);

  /// Index of the option found last, -1 for none.
  int position() const { return found; }

 private:
  std::string text;
  int found = -1;
};
