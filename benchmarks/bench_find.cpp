// Speed of Find over a log of 1,000,000 lines, some 50 MB, with no hit: plain searches beside
// one pass of memmem and the copy of the text that the widget hands out, and regular expressions
// beside the processor time of a whole run of grep that counts the lines of a file with the same
// text.

#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "textarea/find_text.h"

namespace {

constexpr int kLogLines = 1'000'000;
constexpr char kAbsentWord[] = "transition Missing";
constexpr char kAbsentPair[] = "zq";

const std::string& bigLog() {
  static const std::string log = [] {
    std::string text;
    for (int line = 0; line < kLogLines; ++line) {
      text += "* signal Ack" + std::to_string(line) + " of P:" + std::to_string(line % 97);
      text += line % 3 == 0 ? " transition x:1, wait\n" : " Transition Start abac\n";
    }
    return text;
  }();
  return log;
}

void countBytes(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bigLog().size()));
}

// Reference: what any search of a copy of the log costs at least.
void copyAndMemmem(benchmark::State& state, const char* text) {
  const std::string& log = bigLog();
  for ([[maybe_unused]] auto _ : state) {
    const std::string copy(log);
    benchmark::DoNotOptimize(memmem(copy.data(), copy.size(), text, std::strlen(text)));
  }
  countBytes(state);
}

// Reference: the pass alone.
void memmemAlone(benchmark::State& state, const char* text) {
  const std::string& log = bigLog();
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(memmem(log.data(), log.size(), text, std::strlen(text)));
  }
  countBytes(state);
}

void search(benchmark::State& state, const FindRequest& request, bool copied) {
  const std::string& log = bigLog();
  for ([[maybe_unused]] auto _ : state) {
    FindState find;
    const std::string copy(copied ? log : std::string());
    if (findInLog(copied ? copy : log, request, find) != FindResult::kNotFound) {
      state.SkipWithError("a hit where there is none");
      return;
    }
  }
  countBytes(state);
}

void plainWithCase(benchmark::State& state, const char* text, bool copied) {
  search(state, {.text = text, .matchCase = true}, copied);
}

void plainWithoutCase(benchmark::State& state, const char* text, bool copied) {
  search(state, {.text = text}, copied);
}

// The log as a file, removed at the end.
class LogFile {
 public:
  LogFile() { std::ofstream(path) << bigLog(); }
  ~LogFile() { std::filesystem::remove(path); }
  LogFile(const LogFile&) = delete;
  LogFile& operator=(const LogFile&) = delete;

  const std::string path = std::filesystem::temp_directory_path() / "nel_bench_find.log";
};

// Patterns that a shell's single quotes hold.
constexpr std::array kPatterns = {
    "x.*y",
    "x.*=",
    "[a-z]*[0-9]z",
    "[a-z]*[0-9][a-z]",
    "^signal",
    "wait.$",
    "P:[0-9]\\{3\\}",
    "\\([A-Z][a-z]*\\) \\(of\\) Q",
    "a*a*a*a*b*[#]",
    "\\(a*\\)\\(a*\\)\\(a*\\)\\(a*\\)#",
    "\\(x*\\)*[#]",
    ".*.*.*=.*",
    ".*.*.*:.*[=#]",
    ".*.*.*.*.*[^ -~]",
    "[ab]*a[ab]\\{8\\}c",
    "[a-z ]*[ai][a-z ]\\{8\\}[#]",
    ".*t.\\{30\\}[=#]",
    "t.\\{200\\}t.\\{200\\}t.\\{200\\}",
    ".*.*.*t.\\{200\\}t.\\{200\\}t.\\{200\\}",
    "\\(ab\\)\\1",
    "\\([a-z]*\\) \\1 [#]",
};

void regularExpression(benchmark::State& state) {
  const char* pattern = kPatterns[static_cast<std::size_t>(state.range(0))];
  state.SetLabel(pattern);
  search(state, {.text = pattern, .regexp = true}, false);
}

double secondsOfChildren() {
  constexpr double kMicro = 1e-6;
  rusage usage{};
  getrusage(RUSAGE_CHILDREN, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
         kMicro * static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec);
}

// Reference: grep, its start included.
void grep(benchmark::State& state) {
  static const LogFile file;
  const std::string pattern = kPatterns[static_cast<std::size_t>(state.range(0))];
  state.SetLabel(pattern);
  const std::string command = "LC_ALL=C exec grep -c -e '" + pattern + "' " + file.path;
  for ([[maybe_unused]] auto _ : state) {
    const double before = secondsOfChildren();
    std::FILE* output = popen(command.c_str(), "r");
    int lines = -1;
    if (output == nullptr || std::fscanf(output, "%d", &lines) != 1 || lines != 0) {
      state.SkipWithError("grep failed, or counted a line where there is none");
    }
    if (output != nullptr) {
      pclose(output);
    }
    state.SetIterationTime(secondsOfChildren() - before);
  }
  countBytes(state);
}

void runEachPattern(benchmark::internal::Benchmark* run) {
  run->DenseRange(0, static_cast<int>(kPatterns.size()) - 1)->Unit(benchmark::kMillisecond);
}

constexpr bool kCopied = true;
constexpr bool kInPlace = false;

BENCHMARK_CAPTURE(copyAndMemmem, word, kAbsentWord)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plainWithCase, copiedWord, kAbsentWord, kCopied)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plainWithoutCase, copiedWord, kAbsentWord, kCopied)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(copyAndMemmem, pair, kAbsentPair)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plainWithCase, copiedPair, kAbsentPair, kCopied)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plainWithoutCase, copiedPair, kAbsentPair, kCopied)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(memmemAlone, word, kAbsentWord)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plainWithCase, word, kAbsentWord, kInPlace)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(plainWithoutCase, word, kAbsentWord, kInPlace)->Unit(benchmark::kMillisecond);
BENCHMARK(regularExpression)->Apply(runEachPattern);
BENCHMARK(grep)->Apply(runEachPattern)->UseManualTime();

}  // namespace
