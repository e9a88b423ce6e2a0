// What the checker of button files says.

#include "btnlint/lint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "button_file/button_file_reader.h"
#include "tester/commands.h"
#include "tests/support/basics.h"

namespace {

std::string lintText(const std::string& bytes) {
  std::FILE* const file = std::tmpfile();
  std::fwrite(bytes.data(), 1, bytes.size(), file);
  std::rewind(file);
  std::ostringstream output;
  btnlint::lint("f", file, output);
  std::fclose(file);
  return output.str();
}

TEST(ButtonFileChecker, SaysWhatIsLostInTheOrderOfTheLines) {
  const std::string file =
      "# comment\nearly\n: A # x|\n label\n\ngo # 3\ndef" + std::string(1, '\0') +
      "inition\nodd\x1B\x9B\n:B#\n:menu M\n:MENU M\nSeparator\na\nset separator\nmy separators\n"
      "separator\nb\n# was a definition\nc\nseparator\n: C\n" +
      std::string(3000, 'x') + "\n";
  EXPECT_EQ(lintText(file), R"(f:2: before the first header, so it is ignored: "early"
f:3: "|" in a name: menus and collapsed groups are cut there, other groups lose those at the end: ": A # x|"
f:4: blanks or tabs in front are lost: "label"
f:5: empty line behind a label: the next line is taken for the definition
f:6: skipped for its "#", so the lines behind it may be paired otherwise: "go # 3"
f:7: the line is lost from its NUL byte on: "def"
f:8: label without a definition, dropped: "odd??"
f:9: header skipped for its "#"; what follows does not go where it should: ":B#"
f:10: header word not in capitals, so this is an expanded group of that name: ":menu M"
f:14: definition with "separator" in a menu: a separator appears behind the entry: "set separator"
f:15: holds "separator", so it is read as a separator: "my separators"
f:18: skipped for its "#", so the lines behind it may be paired otherwise: "# was a definition"
f:20: a single separator line at the end of a menu, dropped: "separator"
f:21: the name begins with a blank or a tab: ": C"
f:22: line of 1000 characters or more, read as several lines; a further one begins with: ")" +
                                std::string(60, 'x') + "\"...\n");
}

TEST(ButtonFileChecker, SaysOnceWhatIsWrongWithAWholeFile) {
  const auto times = [](int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) {
      all += text;
    }
    return all;
  };
  const std::string longest(btnlint::kMaxFileBytes, '\n');
  for (const auto& [bytes, remarks] : std::vector<std::pair<std::string, std::string>>{
           {"  # c\r\n:A\r\n\r\nl\r\nd\r\n", ""},
           {":A\n" + std::string(999, 'x') + "\r\nd\n:MENU M\nseparator\n\na\nb", ""},
           {"", "f: holds no group and no menu\n"},
           {"# c\n", "f: holds no group and no menu\n"},
           {times(9, "l\nd\n"), "f: no header, so all of it is ignored\n"},
           {std::string(":\0A\0\n\0", 6),
            "f: in UTF-16; only text of 8 bits a character is read\n"},
           {"\xFF\xFE", "f: in UTF-16; only text of 8 bits a character is read\n"},
           {":A\rl\rd\r", "f: carriage returns without a line feed end no line\n"},
           {":A\nl\rd\nx\r\r\n", "f: carriage returns without a line feed end no line\n"},
           {"\xEF\xBB\xBF:A\n:B\n",
            "f: begins with a byte order mark, which makes its first line another one\n"},
           {":A\n" + longest, "f: longer than 1 MiB; only the beginning was checked\n"}}) {
    EXPECT_EQ(lintText(bytes), remarks) << bytes.substr(0, 9);
  }
  const std::string many = lintText(":A\n" + times(1100, "#x\na#\n"));
  EXPECT_EQ(std::count(many.begin(), many.end(), '\n'), btnlint::kMaxLineRemarks + 1);
  EXPECT_NE(many.find("further remarks"), std::string::npos);
}

TEST(ExampleButtons, AreCleanAndSendCommandsOfTheTester) {
  const std::string text = readFile(NEL_EXAMPLE_BUTTONS);
  EXPECT_EQ(lintText(text), "");
  int commands = 0;
  const auto check = [&](const std::string& definition) {
    std::istringstream pieces(definition);
    for (std::string command; std::getline(pieces, command, ';'); ++commands) {
      EXPECT_NO_THROW(tester::findCommand(command.substr(0, command.find(' ')))) << command;
    }
  };
  const ButtonSet set = readButtonFile(std::string_view(text));
  for (const ButtonGroup& group : set.groups) {
    for (const Button& button : group.buttons) {
      check(button.definition);
    }
  }
  for (const ButtonMenu& menu : set.menus) {
    for (const MenuEntry& entry : menu.entries) {
      check(entry.isSeparator() ? "" : entry.definition);
    }
  }
  EXPECT_GT(commands, 0);
}

}  // namespace
