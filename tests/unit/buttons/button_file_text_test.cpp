// What the bytes of a button file mean, the bytes that a set becomes, and what the checker says.

#include <gmock/gmock.h>

#include <filesystem>
#include <sstream>

#include "btnlint/lint.h"
#include "button_file/button_file_reader.h"
#include "tests/support/child_process.h"

namespace {

using std::string_literals::operator""s;

std::string xs(std::size_t count) {
  return std::string(count, 'x');
}

// Much of this looks careless, but files depend on it.
TEST(ButtonFile, MeansWhatItIsSavedAs) {
  const std::pair<std::string, std::string> rows[] = {
      // Headers by their first word, and pairs of lines below.
      {"# only\n\n \t\n#comments", ""},
      {":A\nl\nd\nm\ne\n:B\n", ":A\nl\nd\nm\ne\n:B\n"},
      {":A\n \t x \t\r\r\n\t \tx\r\n", ":A\n x \t\n \tx\n"},
      {":A\nl\n \r\nd\r ", ":A\nl\nd\r \n"},
      {"l\nd\n:A\nl\n:MENU m\na\nb\nc\n:MENU n\n:A\n:COLLAPSED c\nl\nd",
       ":A\n:A\n:COLLAPSED c\nl\nd\n:MENU m\na\nb\n:MENU n\n"},
      {":A\nl\nd\n:\n:COLLAPSED\n:MENU\na\nb\n:\n:COLLAPSED",
       ":A\nl\nd\n:\n:COLLAPSED \n:\n:COLLAPSED \n:MENU \na\nb\n"},
      {":MENUS x\n:COLLAPSEDX\n:menu y\n", ":MENUS x\n:COLLAPSEDX\n:menu y\n"},
      {": a\n:COLLAPSED   b \n:MENU  c\t\n", ": a\n:COLLAPSED b \n:MENU c\t\n"},
      {":COLLAPSED\tb\n:COLLAPSED \tc\n:MENU\td\n", ":COLLAPSED \tb\n:COLLAPSED \tc\n:MENU \td\n"},
      {"\t :A\n\t :l\nd\n", "::A\n :l\nd\n"},
      {"\t :MENU m\n", ":MENU m\n"},
      {":a|b||\n:COLLAPSED a|b\n:MENU |a\n:MENU|\n:|\n", ":a|b\n:COLLAPSED a\n:MENU\n:\n:MENU \n"},
      // Comments by the first word outside and by the whole line inside of a body.
      {":Name # x\nl\nd\n:MENU a # b\n", ":Name # x\nl\nd\n"},
      {":Na#me\nl\nd\n:B\nm # x\ne\nf\n:C # x", ":B\ne\nf\n"},
      {":MENU a # b\n", ":MENU a # b\n"},
      // Separators wherever the word stands in a menu, also one that nobody wrote.
      {":MENU m\nseparator\nDo it\nc\n", ":MENU m\nseparator\nseparator\nDo it\nc\n"},
      {":MENU m\nSeparator\nSEPARATOR\nmy separators\na\nb\nseparator\n",
       ":MENU m\nseparator\nseparator\nseparator\nseparator\na\nb\n"},
      {":MENU m\nFoo\na separator b\nBar\nc\n",
       ":MENU m\nFoo\na separator b\nseparator\nseparator\nBar\nc\n"},
      {":MENU m\nFoo\nseparator\nBar\nSeparate\n",
       ":MENU m\nseparator\nseparator\nseparator\nseparator\nBar\nSeparate\n"},
      {":MENU m\nFoo\na separator b\n:A\n", ":A\n:MENU m\nFoo\na separator b\n"},
      {":A\nseparator\nl\nd\n", ":A\nseparator\nl\n"},
      // A line of 1000 characters or more is several; a NUL byte ends one, to where the read ends.
      {":A\n" + xs(999) + "\nd\n", ":A\n" + xs(999) + "\nd\n"},
      {":A\n" + xs(1000) + "\nd\ne\n", ":A\n" + xs(999) + "\nx\nd\ne\n"},
      {":A\n" + xs(998) + "\r\nd\n", ":A\n" + xs(998) + "\nd\n"},
      {":" + xs(998) + ":B\nl\nd\n", ":" + xs(998) + "\n:B\nl\nd\n"},
      {":A\0B\nl\0x\n\0lost\nd\r\0x\n"s, ":A\nl\nd\n"},
      {":A\nl\0"s + xs(997) + "d\n", ":A\nl\nd\n"},
      {"\0\xFF\x80\n\xFE:\n\n\0"s, ""}};
  for (const auto& [bytes, saved] : rows) {
    EXPECT_EQ(formatButtonSet(readButtonFile(std::string_view(bytes))), saved) << bytes;
  }
}

std::string lintText(std::string bytes) {
  const UniqueFile file(fmemopen(bytes.data(), bytes.size(), "r"));
  std::ostringstream output;
  btnlint::lint("f", file.get(), output);
  return output.str();
}

TEST(ButtonFileChecker, SaysWhatIsLostInTheOrderOfTheLines) {
  const std::string file = "# comment\nearly\n: A # x|\n label\n\ngo # 3\ndef" +
                           std::string(1, '\0') +
                           "inition\no d\x1F\x7F\x9F\n:B#\n:menu M\n:MENU M\nSeparator\na\nset "
                           "separator\nmy separators\n"
                           "separator\nb\n# was a definition\nc\nseparator\n: C\n" +
                           std::string(3000, 'x') + "\n";
  EXPECT_EQ(lintText(file), R"(f:2: before the first header, so it is ignored: "early"
f:3: "|" in a name: menus and collapsed groups are cut there, other groups lose those at the end: ": A # x|"
f:4: blanks or tabs in front are lost: "label"
f:5: empty line behind a label: the next line is taken for the definition
f:6: skipped for its "#", so the lines behind it may be paired otherwise: "go # 3"
f:7: the line is lost from its NUL byte on: "def"
f:8: label without a definition, dropped: "o d???"
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
  const std::string longest(btnlint::kMaxFileBytes, '\n');
  const std::pair<std::string, std::string> rows[] = {
      {"  # c\r\n:A\r\n\r\nl\r\nd\r\n", ""},
      {":A\n" + std::string(999, 'x') + "\r\nd\n:MENU M\nseparator\n\na\nb", ""},
      {"", "holds no group and no menu"},
      {"l\nd\nl\nd\n", "no header, so all of it is ignored"},
      {std::string(":\0A\0\n\0", 6), "in UTF-16; only text of 8 bits a character is read"},
      {":A\rl\rd\r", "carriage returns without a line feed end no line"},
      {"\xEF\xBB\xBF:A\n:B\n",
       "begins with a byte order mark, which makes its first line another one"},
      {":A\n" + longest, "longer than 1 MiB; only the beginning was checked"}};
  for (const auto& [bytes, remark] : rows) {
    EXPECT_EQ(lintText(bytes), remark.empty() ? "" : "f: " + remark + "\n") << bytes.substr(0, 9);
  }
}

TEST(ButtonFileChecker, HasNothingToSayAboutTheExamples) {
  std::vector<std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(NEL_EXAMPLES)) {
    if (entry.path().extension() == ".btn") {
      files.push_back(entry.path().filename());
      EXPECT_EQ(lintText(readFile(entry.path())), "") << entry.path();
    }
  }
  EXPECT_THAT(files, testing::IsSupersetOf({"crossing.btn", "gdb.btn", "openocd.btn", "qemu.btn"}));
}

TEST(ButtonFileChecker, ReadsTheFilesOfItsCommandLine) {
  const TemporaryFolder folder;
  folder.write("good", ":A\n");
  folder.write("bad", "x\n:A\n");
  std::string said;
  for (const char* file : {"good", "bad", "none"}) {
    ChildProcess program({builtProgram("nel-btnlint"), {file, "good"}, {}, folder.path()});
    said += std::to_string(program.exitStatus()) + ": ";
    said += program.output() + program.errors();
  }
  EXPECT_EQ(said,
            "0: 1: bad:1: before the first header, so it is ignored: \"x\"\n"
            "2: nel-btnlint: cannot read none: No such file or directory\n");
}

}  // namespace
