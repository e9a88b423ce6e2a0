// The machine interface's output: what GDB really writes, cut anywhere, and what only a broken one
// would.

#include <gmock/gmock.h>

#include "tests/support/basics.h"
#include "tests/support/mi_pictures.h"

namespace gdb::mi {
namespace {

TEST(MiReader, ReadsAllThatGdbWroteHoweverItIsCut) {
  for (const auto& entry : std::filesystem::directory_iterator(NEL_RECORDED_DIR)) {
    if (entry.path().extension() == ".mi") {
      SCOPED_TRACE(entry.path().filename());
      const std::string bytes = readFile(entry.path());
      const std::string whole = pictures(bytes, bytes.size());
      EXPECT_EQ(whole.find("\n?"), std::string::npos);
      for (const std::size_t step : {1, 2, 3, 7, 500}) {
        ASSERT_EQ(pictures(bytes, step), whole);
      }
    }
  }
}

TEST(MiReader, FindsInWhatGdbWroteWhatASessionGoesBy) {
  // Parts of the records, in this order.
  const std::pair<const char*, std::vector<const char*>> rows[] = {
      {"breakpoints",
       {"\n=thread-group-added{id:'i1'}", "\n>", "\n=breakpoint-created{bkpt:{number:'1'",
        "addr:'<MULTIPLE>'", "locations:[{number:'4.1'", "\n=breakpoint-deleted{id:'1'}",
        "script:{'silent' 'print \"a\\n\\303\\274\"'}", "\n15^done{BreakpointTable:{nr_rows:'4'",
        "func:'twice(int)'", "\n18^exit{}"}},
      {"stops",
       {"\n*stopped{hw-awpt:{number:'4' exp:'counter'} reason:'access-watchpoint-trigger'",
        "value:{old:'0' new:'1'} frame:{", "\n*stopped{reason:'syscall-entry'"}},
      {"threads", {"\n=thread-selected{id:'2' frame:{", "\n16^done{variables:[{name:'value'"}},
      {"changes",
       {"\n=cmd-param-changed{param:'listsize' value:'3'}", "code:'undefined-command'}"}},
      {"values", {"\n10^done{value:'0x402008 \"gr\\303\\274n \\\"x\\\"\\n\"'}"}},
      {"board", {"\n@hello from the board\n", "\n@FPSCR: 00000000\r\n"}},
  };
  for (const auto& [file, parts] : rows) {
    const std::string all =
        pictures(readFile(NEL_RECORDED_DIR "/" + std::string(file) + ".mi"), 4096);
    std::size_t place = 0;
    for (const char* part : parts) {
      place = all.find(part, place);
      ASSERT_NE(place, std::string::npos) << file << ": " << part;
    }
  }
}

TEST(MiReader, ReadsEachLineByTheSyntaxAndTakesWhatIsNoneForGarbage) {
  const auto nested = [](int depth) {
    return "^done,a=" + std::string(depth, '[') + std::string(depth, ']');
  };
  const std::pair<std::string, std::string> rows[] = {
      {"(gdb) ", ">"},
      {"(gdb)", ">"},
      {"*stopped", "*stopped{}"},
      {"00012^connected", "00012^connected{}"},
      {"4+download,{section=\".text\",total-size=\"9\"}",
       "4+download{{section:'.text' total-size:'9'}}"},
      {"=x,f={},f={a=\"\"},l=[],\"bare\"", "=x{f:{} f:{a:''} l:[] 'bare'}"},
      {R"(^done,script={"silent","c"},l=[a="1","2",{b="3"},[[]]])",
       "^done{script:{'silent' 'c'} l:[a:'1' '2' {b:'3'} [[]]]}"},
      {R"(~"\"\\\n\t\r\b\f\a\e\v\303\274\0001\7\12x\q\377\"")",
       std::string("~\"\\\n\t\r\b\f\a\x1b\v\xc3\xbc\0"
                   "1\a\nxq\xff\"",
                   21)},
      {nested(Reader::kMaxDepth), ""},
  };
  for (const auto& [line, seen] : rows) {
    const std::string is = picture(readLine(line));
    EXPECT_TRUE(seen.empty() ? !is.starts_with('?') : is == seen) << line << "\n" << is;
  }
  const std::string garbage[] = {"",
                                 "(gdb) x",
                                 "12",
                                 "^",
                                 "~text",
                                 "~\"text\\",
                                 "~\"a\"b",
                                 "^done,",
                                 "^done,a=b",
                                 "^done,a=\"1\",",
                                 "^done,a={b=\"1\"]",
                                 "^done,a=[\"1\"\"2\"]",
                                 "^done,a=[\"1\",]",
                                 std::string("^do\0ne", 6),
                                 "^done\r",
                                 nested(Reader::kMaxDepth + 1),
                                 nested(1'000'000)};
  for (const std::string& line : garbage) {
    EXPECT_EQ(picture(readLine(line)), "?" + line);
  }
}

TEST(MiReader, GoesOnAfterALineTooLongAndFindsNamesOnlyWhereTheyAre) {
  const std::string longest = "~\"" + std::string(Reader::kMaxLine - 3, 'x') + "\"";
  Reader reader;
  const auto records = reader.feed(longest + "\n" + longest + "y\n1^done\n\n*sto");
  ASSERT_EQ(records.size(), 4);
  EXPECT_EQ(records[0].text.size(), Reader::kMaxLine - 3);
  EXPECT_EQ(records[1].kind, Record::Kind::kGarbage);
  EXPECT_EQ(records[1].text, longest);
  EXPECT_EQ(records[2].token, "1");
  EXPECT_EQ(reader.feed("pped,a=\"\"\n").at(0).name, "stopped");
  const Record record = readLine("=x,a=\"1\",a=\"2\",b={c=\"\"}");
  EXPECT_EQ(record.results["a"].string(), "1");
  EXPECT_TRUE(record.results["b"].has("c"));
  EXPECT_FALSE(record.results["b"].has("a"));
  EXPECT_EQ(picture(record.results["d"]["e"]), "''");
}

TEST(MiReader, QuotesAnyBytesToOneLineThatMeansThem) {
  std::string bytes;
  for (int code = 0; code < 256; ++code) {
    bytes += {static_cast<char>(code), '7'};  // a digit, which must not join an escape
  }
  const std::string quotedBytes = mi::quoted(bytes);
  EXPECT_EQ(std::ranges::count_if(quotedBytes, [](unsigned char c) { return c < ' '; }), 0);
  EXPECT_EQ(readLine("~" + quotedBytes).text, bytes);
}

}  // namespace
}  // namespace gdb::mi
