#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gdb {

/// GDB waits for more than a command on its console.
enum class Dialogue {
  kNone,
  kYesNo,       ///< "(y or n) "
  kYesDefault,  ///< "([y] or n) ": an empty answer is yes
  kNoDefault,   ///< "(y or [n]) "
  kMoreLines,   ///< ">", with a blank before it for each depth: define, commands, while, python
  kPython,      ///< ">>> "
  kMenu,        ///< "> " after a list that begins with "[0] cancel"
  kPager,       ///< "--Type <RET> for more, q to quit, c to continue without paging--"
};

/// A piece of what came on the console: text, or the end of the command with that number.
struct ConsolePiece {
  std::string text = {};
  std::optional<unsigned> prompt = {};
};

/// Takes GDB's console apart. Its prompt is set before each command to "\x1e<N>\x1f", so that the
/// end of a command is told from all that a command may print.
class ConsoleSplitter {
 public:
  /// What is set as the prompt for the command with that number.
  static std::string promptOf(unsigned number);

  /// Takes the next bytes, however they are cut. A text that may be the beginning of a prompt waits
  /// for what follows.
  std::vector<ConsolePiece> feed(std::string_view bytes);

  /// What the text so far ends in. It is sure only when nothing follows for a while: GDB may have
  /// been caught in the middle of a line.
  Dialogue dialogue() const;
  /// The line of a dialogue's prompt, and of kYesNo, kYesDefault, kNoDefault and kMenu what was
  /// printed before it since the last prompt, at most 2000 bytes: what the user is asked.
  std::string question() const;
  /// The line before the dialogue when it ends in a colon: what a script says that it asks for.
  std::string heading() const;
  /// The dialogue was answered: what stands there is no question any more.
  void answered();

 private:
  /// Keeps of the text what dialogue() and question() need.
  void remember(std::string_view text);

  std::string held;      ///< may be the beginning of a prompt
  std::string recent;    ///< the end of the text since the last prompt
  bool hasMenu = false;  ///< a menu began in the text since the last prompt
};

}  // namespace gdb
