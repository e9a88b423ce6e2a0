// A large button set on the screen: loading it, folding all groups, and scrolling to its end. Needs
// a display.

#include <benchmark/benchmark.h>

#include <fstream>
#include <memory>
#include <string>

#include <unistd.h>

#include "buttons/button_host.h"
#include "buttons/control_pane.h"
#include "buttons/group_pane.h"
#include "framework/controls/scroll_bar.h"
#include "framework/core/application.h"
#include "framework/core/frame.h"
#include "framework/draw/measure.h"
#include "framework/layout/sizers.h"
#include "framework/menus/menu.h"

#include <Xm/XmAll.h>

namespace {

constexpr int kGroups = 500;
constexpr int kButtonsPerGroup = 20;
constexpr int kPaneWidth = 160;  // dialog units

/// A main window in which nothing but the buttons is.
class Host : public zAppFrame, public ziButtonHost {
 public:
  Host() : zAppFrame(nullptr, new zSizer(50, 50, 800, 600), 0xCF0000, "Benchmark") {
    auto owned = std::make_unique<zMenu>(this);
    bar = owned.get();
    setMenu(std::move(owned));
    area = std::make_unique<zGravSizer>(kGravityLeft, zDialogUnit(kPaneWidth, 0).width(), sizer());
    pane = std::make_unique<ControlPane>(this, new zGravSizer(kGravityFill, 0, area.get()), *this);
    pane->show();
    show();
    settle();
  }
  ~Host() override { pane.reset(); }

  static void settle() {
    while ((XtAppPending(zApp::instance()->context()) & XtIMXEvent) != 0) {
      XtAppProcessEvent(zApp::instance()->context(), XtIMXEvent);
    }
    XSync(zApp::instance()->display(), False);
  }

  zWindow& window() override { return *this; }
  zMenu& mainMenu() override { return *bar; }
  RWCString applicationTitle() override { return ""; }
  int toolBarHeight() override { return 0; }
  void executeCommandLine(const RWCString& /*line*/) override {}
  void showStatus(const RWCString& /*text*/) override {}
  void setMenuHelp(std::span<const zHelpText> /*rows*/) override {}

 private:
  zMenu* bar;
  std::unique_ptr<zGravSizer> area;
  std::unique_ptr<ControlPane> pane;
};

/// A button file of 10,000 buttons, gone with this object.
class LargeFile {
 public:
  LargeFile() {
    std::ofstream file(path);
    for (int group = 0; group < kGroups; ++group) {
      file << ":Group " << group << '\n';
      for (int button = 0; button < kButtonsPerGroup; ++button) {
        file << "Button " << button << "\ncommand " << button << '\n';
      }
    }
  }
  ~LargeFile() { static_cast<void>(unlink(path.c_str())); }

  const std::string path = "/tmp/nel_bench_" + std::to_string(getpid()) + ".btn";
};

Host& host() {
  static char name[] = "bench_buttons";
  static char* arguments[] = {name, nullptr};
  static zApp application(1, arguments, name);
  static Host frame;
  return frame;
}

void loadSet(const LargeFile& file) {
  theGroupPane->document().read(file.path, ButtonSetDocument::Reading::load);
  Host::settle();
}

GroupPane& loadedSet() {
  static const LargeFile file;
  host();
  if (theGroupPane->groups().empty()) {
    loadSet(file);
  }
  return *theGroupPane;
}

// In place of a set as large.
void loadFile(benchmark::State& state) {
  const LargeFile file;
  loadedSet();
  for (auto _ : state) {
    loadSet(file);
  }
}
BENCHMARK(loadFile)->Unit(benchmark::kMillisecond);

void foldAndUnfoldAll(benchmark::State& state) {
  GroupPane& set = loadedSet();
  for (auto _ : state) {
    set.collapseAll();
    Host::settle();
    set.expandAll();
    Host::settle();
  }
}
BENCHMARK(foldAndUnfoldAll)->Unit(benchmark::kMillisecond);

// By ten thousand pixels each time: windows that were never seen are made on the way.
void jump(benchmark::State& state) {
  constexpr int kStep = 10000;
  GroupPane& set = loadedSet();
  zWindowDlist::Iter walk(set.parent()->parent()->children());
  auto* bar = windowCast<zScrollBarCtrl>(walk.next());
  int position = 0;
  for (auto _ : state) {
    position = position + kStep > bar->scrollPos()->maximum() ? 0 : position + kStep;
    bar->scrollPos()->setPosition(position);
    set.scrolled(*bar);
    Host::settle();
  }
}
BENCHMARK(jump)->Unit(benchmark::kMillisecond);

}  // namespace
