#pragma once

#include <memory>
#include <string>
#include <string_view>

/// The program's command line as one string, in which options are looked for as mere substrings: a
/// "-v" anywhere counts, be it in a path or in another option's value. Intended.
class CommandLineOptions {
 public:
  /// The one object, made with `line` by the first request; later ones hand in "".
  static CommandLineOptions& instance(std::string_view line);
  /// Lets the next request make a new one.
  static void destroy();

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
  static std::unique_ptr<CommandLineOptions> single;

  std::string text;
  int found = -1;
};
