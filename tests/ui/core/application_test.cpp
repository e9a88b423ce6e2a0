// The application object: its start and its end, accelerators.

#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "framework/core/process_entry.h"
#include "framework/core/x_settings.h"
#include "framework/draw/screen.h"
#include "tests/ui/core/core_test.h"

#include "framework/core/toolkit_xm.h"  // needs X behind it

namespace {

TEST(Accelerator, IsTheFirstRowBeforeTheEndWhoseKeyItIsAndWhoseModifiersAreAmongThoseDown) {
  const AcceleratorRow rows[] = {{0, 1, "o", kAccelCharacter, kAccelControl | kAccelShift},
                                 {0, 2, "open", kAccelCharacter, kAccelControl},
                                 {0, 3, "o", kAccelCharacter, kAccelAlt},
                                 {0, 4, "VK_F3", kAccelVirtualKey, 1},
                                 {7, 5, "p", kAccelKeysym, 0},
                                 {7, 6, "", kAccelCharacter, 0},
                                 {0, 0, nullptr, kAccelEnd, 0},
                                 {0, 8, "p", kAccelCharacter, 0}};
  const std::vector<zAccel> table = makeAccelerators(rows);
  const auto command = [&](unsigned character, unsigned keysym, unsigned modifiers) {
    const zAccel* found = findAccelerator(table, character, keysym, modifiers);
    return std::to_string(found == nullptr ? 0 : found->command);
  };
  constexpr unsigned kF3 = 65472;
  constexpr unsigned kShiftControl = kStateShift | kStateControl;
  EXPECT_EQ(command(15, 'o', kStateControl) + command('o', 'x', kStateControl) +
                command(15, 'o', kShiftControl) + command('o', 'o', kStateMod1) +
                command('o', 'o', kStateControl | kStateLock) + command('o', 'o', kStateShift) +
                command(kF3, kF3, kShiftControl) + command(15, 'p', kStateControl) +
                command(7, 7, 0) + command(0, 0, 0),
            "2213204050");
  std::string keysyms;
  for (const char* name :
       {"VK_F1", "VK_F12", "VK_DELETE", "VK_INSERT", "VK_UP", "VK_F", "VK_F1x"}) {
    keysyms += std::to_string(virtualKeysym(name).value_or(0)) + " ";
  }
  EXPECT_EQ(keysyms, "65470 65481 65535 65379 65362 0 0 ");
}

TEST(Resources, ThatAskForAFontInPointsNameOneOfThePixelsThatThisScreenTakesForThem) {
  // What is asked for, and how the name begins that it becomes.
  const std::pair<std::string, std::string> rows[] = {
      {"-*-courier-bold-o-*-*-*-120-*-*-*-*-*-*", "-adobe-courier-bold-o-normal--17-"},
      {"-*-helvetica-medium-r-*-*-*-100-*-*-p-*-*-*", "-adobe-helvetica-medium-r-normal--14-"},
      {"-*-courier-bold-o-*-*-14-120-*-*-*-*-*-*", "-*-"},
      {"-*-courier-bold-o-*-*-*-12x-*-*-*-*-*-*", "-*-"},
      {"-*-courier-bold-o-*-*-*-0-*-*-*-*-*-*", "-*-"},
      {"*-*-courier-bold-o-*-*-*-120-*-*-*-*-*-*", "*-*-"}};
  XrmDatabase database = XtDatabase(ui::display());
  for (const auto& [asked, begin] : rows) {
    XrmPutStringResource(&database, ("points.a" + asked).c_str(), asked.c_str());
  }
  const int usual = std::exchange(theScreen().dotsPerInchY, 100);
  resolveFontPoints(ui::display());
  theScreen().dotsPerInchY = usual;
  for (const auto& [asked, begin] : rows) {
    EXPECT_THAT(readXResource(ui::display(), ("points.a" + asked).c_str(), "A.B").value(),
                testing::StartsWith(begin));
  }
}

[[noreturn]] void runAlone(void (*appMain)(zApp* app)) {
  alarm(10);  // seconds
  std::string texts[] = {"nelkvui", "", "-xrm", "*MainWindow.fontList: 6x13"};
  char* arguments[] = {texts[0].data(), texts[1].data(), texts[2].data(), texts[3].data()};
  std::exit(runProcess(4, arguments, appMain));
}

TEST(ProcessDeathTest, RunsWithItsArgumentsUntilAnIdleHandlerInAnInnerLoopQuitsAndNobodyRefuses) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  const auto quitsInside = [](zApp* app) {
    TestFrame frame;
    static Recorder quits([] {
      auto* main = static_cast<TestFrame*>(zApp::instance()->mainWindow());
      main->handler.taken = quits.runs == 1 ? 1 : 0;
      main->closeAnswer = quits.runs == 2 ? 1 : 0;
      zApp::instance()->quit();
    });
    Recorder nests([] {
      zApp::instance()->idleList()->add(&quits, &Recorder::run);
      zApp::instance()->pumpWhile([] { return true; });
    });
    const zTimer timer(&nests, &Recorder::run, 1, zTimer::kOnce);
    app->go();
    app->idleList()->remove(&quits, &Recorder::run);
    std::cerr << app->programPath() << "/" << app->commandLine() << "/"
              << theScreen().defaultFontName << "/" << noted();
  };
  EXPECT_EXIT(runAlone(quitsInside), testing::ExitedWithCode(EXIT_SUCCESS),
              "^nelkvui/nelkvui  -xrm .MainWindow.fontList: 6x13/6x13/handler1:16:0 handler1:16:0 "
              "close:16:0 handler1:16:0 close:16:0 $");
}

}  // namespace
