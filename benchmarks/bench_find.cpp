// Speed of Find over a log of 1,000,000 lines, some 50 MB, with no hit: plain searches beside
// one pass of memmem and the copy of the text that the widget hands out, and regular expressions.

#include <benchmark/benchmark.h>
#include <cstring>
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
      text += line % 3 == 0 ? " transition x=1, wait\n" : " Transition Start abac\n";
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

void regularExpression(benchmark::State& state, const char* pattern) {
  search(state, {.text = pattern, .regexp = true}, false);
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
BENCHMARK_CAPTURE(regularExpression, groupTwice, "\\(ab\\)\\1")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(regularExpression, gap, "x.*y")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(regularExpression, classes, "[a-z]*[0-9]z")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(regularExpression, hostile, ".*.*.*.*.*[^ -~]")->Unit(benchmark::kMillisecond);

}  // namespace
