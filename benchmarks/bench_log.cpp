// The log beside the bare text widget: appends at any size, numbering, Clear, ends, zoom, resize.
// Needs a display. The argument of a benchmark is the size of the log in megabytes.

#include <benchmark/benchmark.h>

#include <fstream>
#include <string>

#include <unistd.h>

#include "framework/core/application.h"
#include "framework/core/frame.h"
#include "framework/layout/sizers.h"
#include "textarea/my_pane.h"
#include "textarea/text_pane.h"

#include <Xm/XmAll.h>

namespace {

constexpr int kMegabyte = 1 << 20;
constexpr int kLineLength = 100;
constexpr int kManyLines = 1000000;

const std::string& line() {
  static const std::string text = std::string(kLineLength - 1, 'x') + "\n";
  return text;
}

std::string lines(int count, const std::string& each) {
  std::string text;
  text.reserve(each.size() * static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    text += each;
  }
  return text;
}

/// The log in a frame of its own, filled to a size.
class Log {
 public:
  explicit Log(long megabytes)
      : frame(nullptr, new zSizer(50, 50, 800, 600), 0xCF0000, "Benchmark"),
        middle(&frame, new zGravSizer(kGravityFill, zDimension{}, frame.sizer())) {
    frame.show();
    fill(static_cast<int>(megabytes * (kMegabyte / kLineLength)), line());
  }

  void fill(int count, const std::string& each) {
    if (count > 0) {
      // The bookkeeping sees all of it; the widget gets it in one piece.
      pane().appendText(lines(count, each).c_str());
    }
    settle();
  }
  static void settle() {
    while ((XtAppPending(zApp::instance()->context()) & XtIMXEvent) != 0) {
      XtAppProcessEvent(zApp::instance()->context(), XtIMXEvent);
    }
    XSync(zApp::instance()->display(), False);
  }
  TextPane& pane() { return *theTextPane; }
  zAppFrame frame;

 private:
  MyPane middle;
};

void BM_BareAppend(benchmark::State& state) {
  Log log(state.range(0));
  Widget text = log.pane().widget();
  for (auto _ : state) {
    const XmTextPosition end = XmTextGetLastPosition(text);
    XmTextSetInsertionPosition(text, end);
    XmTextInsert(text, end, const_cast<char*>(line().c_str()));
    XSync(XtDisplay(text), False);
  }
}

void BM_LogAppend(benchmark::State& state) {
  Log log(state.range(0));
  for (auto _ : state) {
    log.pane().appendText(line().c_str());
  }
}

// With the text as it is without and with numbers.
void BM_BareReadAndSet(benchmark::State& state) {
  Log log(0);
  log.fill(kManyLines, state.range(0) == 0 ? "a short line\n" : "123456: a short line\n");
  Widget text = log.pane().widget();
  for (auto _ : state) {
    char* all = XmTextGetString(text);
    XmTextSetString(text, all);
    XtFree(all);
    Log::settle();
  }
}

void BM_NumberLines(benchmark::State& state) {
  Log log(0);
  log.fill(kManyLines, "a short line\n");
  for (auto _ : state) {
    log.pane().numberLines();
    Log::settle();
    state.PauseTiming();
    log.pane().unnumberLines();
    Log::settle();
    state.ResumeTiming();
  }
}

void BM_UnnumberLines(benchmark::State& state) {
  Log log(0);
  log.fill(kManyLines, "a short line\n");
  for (auto _ : state) {
    state.PauseTiming();
    log.pane().numberLines();
    Log::settle();
    state.ResumeTiming();
    log.pane().unnumberLines();
    Log::settle();
  }
}

void BM_Clear(benchmark::State& state) {
  Log log(0);
  for (auto _ : state) {
    state.PauseTiming();
    log.fill(kManyLines, "a short line\n");
    state.ResumeTiming();
    log.pane().clear();
    Log::settle();
  }
}

long residentBytes() {
  long total = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

// The counter says how many bytes of memory a byte of the log takes.
void BM_MemoryOfLog(benchmark::State& state) {
  constexpr int kLinesPerAppend = 100;
  for (auto _ : state) {
    Log log(0);
    const long before = residentBytes();
    const std::string piece = lines(kLinesPerAppend, line());
    const long wanted = state.range(0) * kMegabyte;
    while (log.pane().textEnd() < wanted) {
      log.pane().appendText(piece.c_str());
    }
    Log::settle();
    state.counters["bytes_per_byte"] =
        static_cast<double>(residentBytes() - before) / log.pane().textEnd();
  }
}

void BM_ToTopAndEnd(benchmark::State& state) {
  Log log(state.range(0));
  for (auto _ : state) {
    log.pane().scrollToTop();
    Log::settle();
    log.pane().scrollToEnd();
    Log::settle();
  }
}

void BM_ZoomInAndOut(benchmark::State& state) {
  Log log(state.range(0));
  for (auto _ : state) {
    log.pane().zoomIn();
    Log::settle();
    log.pane().zoomOut();
    Log::settle();
  }
}

void BM_Resize(benchmark::State& state) {
  Log log(state.range(0));
  int width = 700;
  for (auto _ : state) {
    width = width == 700 ? 900 : 700;
    log.frame.moveResize(50, 50, width, 600);
    Log::settle();
  }
}

BENCHMARK(BM_BareAppend)->Arg(0)->Arg(50)->Unit(benchmark::kMicrosecond)->Iterations(500);
BENCHMARK(BM_LogAppend)->Arg(0)->Arg(50)->Unit(benchmark::kMicrosecond)->Iterations(500);
BENCHMARK(BM_BareReadAndSet)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_NumberLines)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_UnnumberLines)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_Clear)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_MemoryOfLog)->Arg(50)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_ToTopAndEnd)->Arg(50)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_ZoomInAndOut)->Arg(50)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(BM_Resize)->Arg(50)->Unit(benchmark::kMillisecond)->Iterations(10);

}  // namespace

int main(int argc, char** argv) {
  zApp app(argc, argv, "bench_log");
  app.setName("nelkvui");
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
