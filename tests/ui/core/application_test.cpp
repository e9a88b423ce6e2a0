// The application object: its start and its end, accelerators, settings.

#include <cstdlib>
#include <iostream>

#include "framework/core/process_entry.h"
#include "framework/core/x_settings.h"
#include "framework/draw/screen.h"
#include "tests/ui/core/core_test.h"

#include "framework/core/toolkit_xm.h"

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

void setResource(const std::string& name, const std::string& value) {
  XrmDatabase database = XtDatabase(ui::display());
  XrmPutStringResource(&database, name.c_str(), value.c_str());
}

TEST(Settings, AreReadAnewButForTheDebugLevelAndTheChildWindowSwitch) {
  const zXSettings before = std::exchange(g_XSettings, {});
  const int levelBefore = debugLevel();
  setDebugLevel(-1);
  for (const char* key : {"useChildMDI", "debugOn", "positionIsFrameWorkaround",
                          "incFontInDialogBy", "promptKeyDelay", "startSize"}) {
    setResource(std::string("set.") + key, "40x30");
  }
  setResource("other.incFontInDialogBy", "True");
  setResource("other.startSize", "50x60+0+0");
  std::string read;
  for (const char* application : {"set", "other"}) {
    readXSettings(ui::display(), application);
    const zXSettings& now = g_XSettings;
    read += testing::PrintToString(
        std::vector<int>{now.useChildMdi, debugLevel(), now.positionIsFrameWorkaround,
                         now.incFontInDialogBy, now.promptKeyDelay, now.startSize.width});
  }
  EXPECT_EQ(read, "{ 40, 40, 1, 40, 40, 40 }{ 40, 40, 0, 1, 300, 0 }");
  g_XSettings = before;
  setDebugLevel(levelBefore);
}

[[noreturn]] void runAlone(void (*appMain)(zApp* app)) {
  constexpr unsigned kSeconds = 10;
  alarm(kSeconds);
  std::string texts[] = {"nelkvui", "", "-xrm", "*MainWindow.fontList: 6x13"};
  char* arguments[] = {texts[0].data(), texts[1].data(), texts[2].data(), texts[3].data()};
  std::exit(runProcess(4, arguments, appMain));
}

/// Expects a process of its own to end, which may open displays. What it is to say goes to standard
/// error.
void expectEnd(void (*appMain)(zApp* app), const std::string& said, int status) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(runAlone(appMain), testing::ExitedWithCode(status), said);
}

TEST(ProcessDeathTest, RunsWithItsArgumentsUntilAnIdleHandlerInAnInnerLoopQuitsAndNobodyRefuses) {
  expectEnd(
      [](zApp* app) {
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
      },
      "^nelkvui/nelkvui  -xrm .MainWindow.fontList: 6x13/6x13/handler1:16:0 handler1:16:0 "
      "close:16:0 handler1:16:0 close:16:0 $",
      EXIT_SUCCESS);
}

// Xt crashes when an error handler returns.
TEST(ProcessDeathTest, AnErrorOfTheToolkitEndsTheProcessButNoWarningAndNoProtocolError) {
  expectEnd(
      [](zApp* app) {
        Recorder fails([] {
          XMapWindow(zApp::instance()->display(), 77);
          XSync(zApp::instance()->display(), False);
          XtAppWarning(zApp::instance()->context(), "odd");
          XtAppError(zApp::instance()->context(), "broken");
        });
        const zTimer timer(&fails, &Recorder::run, 1, zTimer::kOnce);
        app->go();
      },
      "^Error: broken\n$", EXIT_FAILURE);
}

}  // namespace
