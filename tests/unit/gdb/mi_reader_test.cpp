// The machine interface's output: what GDB really writes, cut anywhere, and what only a broken one
// would.

#include <gmock/gmock.h>

#include <iterator>
#include <sstream>

#include "gdb/mi/reader.h"
#include "tests/support/basics.h"

namespace gdb::mi {
namespace {

std::string picture(const Value& value) {
  if (value.kind() == Value::Kind::kString) {
    return "'" + value.string() + "'";
  }
  const bool isTuple = value.kind() == Value::Kind::kTuple;
  std::string all = isTuple ? "{" : "[";
  for (const auto& [name, element] : value.elements()) {
    all += (all.size() > 1 ? " " : "") + (name.empty() ? "" : name + ":") + picture(element);
  }
  return all + (isTuple ? "}" : "]");
}

std::string picture(const Record& record) {
  constexpr std::string_view kMarks = "^*+=~@&>?";
  return record.token + kMarks[static_cast<std::size_t>(record.kind)] + record.name + record.text +
         (record.name.empty() ? "" : picture(record.results));
}

std::vector<Record> read(const std::string& bytes, std::size_t step) {
  Reader reader;
  std::vector<Record> all;
  for (std::size_t i = 0; i < bytes.size(); i += step) {
    std::ranges::move(reader.feed(std::string_view(bytes).substr(i, step)),
                      std::back_inserter(all));
  }
  return all;
}

std::string pictures(const std::string& bytes, std::size_t step) {
  std::string all;
  for (const Record& record : read(bytes, step)) {
    all += '\n' + picture(record);
  }
  return all;
}

/// A value by names and positions with dots between: "frame.args.0.name".
const Value& at(const Value& value, const std::string& path) {
  const std::size_t dot = path.find('.');
  const std::string step = path.substr(0, dot);
  const bool isPosition = step.find_first_not_of("0123456789") == std::string::npos;
  const Value& next = isPosition ? value.elements().at(std::stoul(step)).value : value[step];
  return dot == std::string::npos ? next : at(next, path.substr(dot + 1));
}

/// Whether a record is what is described: the picture of one with a text, or mark and class and
/// values at their paths, in which "~" stands for a blank.
bool matches(const Record& record, const std::string& description) {
  std::istringstream words(description);
  std::string word;
  words >> word;
  if (record.name.empty()) {
    return picture(record) == description;
  }
  bool isIt =
      picture({.kind = record.kind, .token = record.token, .name = record.name}) == word + "''";
  while (isIt && words >> word) {
    const std::size_t equals = word.find('=');
    std::ranges::replace(word, '~', ' ');
    isIt = at(record.results, word.substr(0, equals)).string() == word.substr(equals + 1);
  }
  return isIt;
}

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
  struct Row {
    const char* file;
    std::vector<std::string> records;  ///< in this order, others between them
  };
  const Row rows[] = {
      {"breakpoints",
       {"=thread-group-added id=i1", ">", "=breakpoint-created bkpt.number=1 bkpt.line=26",
        "=breakpoint-created bkpt.addr=<MULTIPLE> bkpt.locations.1.number=4.2",
        "=breakpoint-created bkpt.addr=<PENDING>", "=breakpoint-deleted id=1",
        "=breakpoint-modified bkpt.script.0=silent",
        "15^done BreakpointTable.nr_rows=4 BreakpointTable.body.2.locations.0.func=twice(int)",
        "18^exit"}},
      {"run",
       {"=thread-group-started pid=24690", "=thread-created id=1", "*running thread-id=all",
        "=breakpoint-modified bkpt.times=1", "*stopped bkptno=1 disp=del",
        "=thread-group-exited id=i1", "=thread-group-started pid=24749",
        "*stopped reason=exited-normally"}},
      {"steps",
       {"*stopped reason=end-stepping-range frame.func=twice frame.args.0.value=3",
        "*stopped reason=function-finished gdb-result-var=$1 return-value=6",
        "*stopped reason=location-reached frame.line=29",
        "&28\t./stdio-common/printf.c: No such file or directory.\n",
        "=thread-selected id=1 frame.level=0 frame.func=__printf"}},
      {"stops",
       {"=breakpoint-modified bkpt.times=2",
        "~\nValue = ", "*stopped reason=access-watchpoint-trigger hw-awpt.exp=counter value.new=0",
        "*stopped value.old=0 value.new=1 frame.file=prog.cpp",
        "*stopped bkptno=5 reason=syscall-entry syscall-name=write"}},
      {"signals",
       {"~\nProgram", "~ stopped.\n", "*stopped signal-name=0", "*stopped signal-name=SIGABRT",
        "=thread-group-exited exit-code=", "*stopped reason=exited-signalled signal-name=SIGABRT",
        "*stopped reason=signal-received signal-name=SIGINT",
        "*stopped reason=exited-signalled signal-name=SIGSEGV"}},
      {"exits",
       {"=thread-exited id=1 group-id=i1", "=thread-group-exited id=i1 exit-code=0106",
        "*stopped reason=exited exit-code=0106", "*running thread-id=all", "*stopped bkptno=1",
        "=thread-group-exited exit-code=", "11^exit"}},
      {"attach",
       {"=thread-group-started pid=29864", "*stopped reason= frame.line=40 stopped-threads=all",
        "=thread-group-exited id=i1"}},
      {"gdbserver",
       {"=tsv-created name=trace_timestamp", "*stopped reason= frame.func=_start",
        "11^error code=", "*stopped", "@, timestamp", "*running", "=thread-group-exited id=i1"}},
      {"extended", {"=cmd-param-changed param=remote~exec-file", "*stopped bkptno=1"}},
      {"threads",
       {"=thread-created id=2", "*running thread-id=2", "*stopped thread-id=1",
        "=thread-selected id=2 frame.func=__GI___clock_nanosleep",
        "14^done threads.1.id=2 current-thread-id=1", "15^done stack.0.level=0 stack.1.level=1",
        "16^done variables.0.arg=1"}},
      {"fork",
       {"*stopped reason=exited-normally", "=thread-group-added id=i2",
        "=thread-group-exited id=i1", "*running thread-id=2", "*stopped exit-code=03"}},
      {"changes",
       {"=memory-changed len=0x4", "=cmd-param-changed param=listsize value=3",
        "18^error code=undefined-command", "19^done matches.2=break~twice(double)",
        "20^done symbols.debug.0.symbols.0.name=add_prefixlist", "21^done register-names.0=rax"}},
      {"values",
       {"9^done stack-args.1.args.0.name=argc",
        "10^done value=0x402008~\"gr\\303\\274n~\\\"x\\\"\\n\"", "12^done children.0.exp=public",
        "15^done features.0=frozen-varobjs",
        "16^done groups.0.cores.0=1 groups.0.threads.0.frame.args.0.value=0"}},
      {"core", {"*stopped signal-name=SIGABRT", "=thread-group-started", "12^exit"}},
      {"board",
       {"@hello from the board\n", "*stopped bkptno=1 frame.args.1.name=n@entry",
        "@FPSCR: 00000000\r\n", "*stopped signal-name=SIGINT thread-id=1"}},
  };
  for (const auto& [file, descriptions] : rows) {
    const std::string bytes = readFile(NEL_RECORDED_DIR "/" + std::string(file) + ".mi");
    const std::vector<Record> records = read(bytes, bytes.size());
    auto record = records.begin();
    for (const std::string& description : descriptions) {
      record = std::find_if(record, records.end(),
                            [&](const Record& each) { return matches(each, description); });
      ASSERT_NE(record, records.end()) << file << ": " << description;
      ++record;
    }
  }
}

TEST(MiReader, ReadsEachLineByTheSyntaxAndTakesWhatIsNoneForGarbage) {
  const auto nested = [](int depth) {
    return "^done,a=" + std::string(depth, '[') + std::string(depth, ']');
  };
  struct Row {
    std::string line;
    std::string seen;
  };
  const Row rows[] = {
      {"(gdb) ", ">"},
      {"(gdb)", ">"},
      {"^done", "^done{}"},
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
      {R"(~"'\\000' <repeats 299 times>")", R"(~'\000' <repeats 299 times>)"},
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
                                 "^,a=\"1\"",
                                 "*** stack smashing detected ***: terminated",
                                 "no newline yet=breakpoint-modified,bkpt={}",
                                 "~text",
                                 "~\"text",
                                 "~\"text\\",
                                 "~\"a\"b",
                                 "7~",
                                 "^done,",
                                 "^done,a",
                                 "^done,a=",
                                 "^done,a=b",
                                 "^done,=\"1\"",
                                 "^done,a=\"1\",",
                                 "^done,a={",
                                 "^done,a={b=\"1\"]",
                                 "^done,a={b=\"1\"}}",
                                 "^done,a=[\"1\"\"2\"]",
                                 "^done,a=[\"1\",]",
                                 "^done a=\"1\"",
                                 std::string("^do\0ne", 6),
                                 "^done\r",
                                 "\xff\xfe",
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
