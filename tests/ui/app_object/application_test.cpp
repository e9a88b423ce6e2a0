#include "framework/core/application.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "framework/core/event.h"
#include "framework/core/frame.h"
#include "framework/core/notify.h"
#include "framework/core/toolkit_xm.h"
#include "framework/core/x_settings.h"
#include "framework/draw/screen.h"
#include "tests/ui/app_object/loop_helpers.h"
#include "tests/ui/app_object/x_faults.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

zApp& app() {
  return *zApp::instance();
}

/// A main window that keeps what reaches it.
class Frame : public zFrameWin {
 public:
  Frame() : zFrameWin(nullptr, nullptr, 0, "Test") {
    addPlainHandler(this, toHandler(&Frame::onMessage), kMsgClose);
  }
  int close(zEvent* event) override {
    seen.push_back("close " + std::to_string(event->message));
    return closeAnswer;
  }

  std::vector<std::string> seen;
  int handlerAnswer = 0;
  int closeAnswer = 0;

 private:
  int onMessage(zEvent* event) {
    seen.push_back("handler " + std::to_string(event->message));
    return handlerAnswer;
  }
};

TEST(Quit, IsRefusedByAHandlerOrByTheMainWindow) {
  Frame frame;
  frame.handlerAnswer = 1;
  app().quit();
  app().closeMainWindow();
  EXPECT_THAT(frame.seen, ElementsAre("handler 16", "handler 16"));
  frame.seen.clear();
  frame.handlerAnswer = 0;
  frame.closeAnswer = 1;
  app().quit();
  app().closeMainWindow();
  EXPECT_THAT(frame.seen, ElementsAre("handler 16", "close 16", "handler 16", "close 16"));
  EXPECT_TRUE(app().isRunning());
}

// Run in processes of their own, which end.
class LoopEndDeathTest : public testing::Test {
 protected:
  LoopEndDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

const auto kOrdinaryEnd = testing::ExitedWithCode(EXIT_SUCCESS);

/// Runs `appMain` with an application of its own, whose loop nothing wakes but what the test does.
void runApplication(void (*appMain)(zApp* app)) {
  char name[] = "nelkvui";
  char* arguments[] = {name, nullptr};
  endProcessLater();
  std::exit(runProcess(1, arguments, appMain));
}

void quitInIdlePass(zApp* app) {
  Frame frame;
  Owner quits([] {
    zApp::instance()->quit();
    return 0;
  });
  app->idleList()->add(&quits, &Owner::run);
  app->go();
  app->go();
  app->idleList()->remove(&quits, &Owner::run);
  std::cerr << "runs " << quits.runs << ", " << frame.seen.back();
}

TEST_F(LoopEndDeathTest, ComesAtOnceWhenAnIdleHandlerQuits) {
  EXPECT_EXIT(runApplication(quitInIdlePass), kOrdinaryEnd, "^runs 1, close 16$");
}

void stopInNestedLoop(zApp* app) {
  Owner nests([] {
    zApp::instance()->pumpWhile([] { return true; });
    std::cerr << "inner loop ended";
    return 0;
  });
  Owner stops([] {
    zApp::instance()->stop();
    return 0;
  });
  const zTimer outer(&nests, &Owner::run, 1, zTimer::kOnce);
  const zTimer inner(&stops, &Owner::run, 20, zTimer::kOnce);
  app->go();
}

TEST_F(LoopEndDeathTest, ReachesTheLoopsInsideToo) {
  EXPECT_EXIT(runApplication(stopInNestedLoop), kOrdinaryEnd, "^inner loop ended$");
}

void raiseInLoop(zApp* app) {
  Owner fails([] {
    raiseXtWarning("odd");
    raiseXtError("broken");
    return 0;
  });
  const zTimer timer(&fails, &Owner::run, 1, zTimer::kOnce);
  app->go();
}

// Xt crashes when an error handler returns.
TEST_F(LoopEndDeathTest, AnErrorOfTheToolkitEndsTheProcessAndAWarningDoesNot) {
  EXPECT_EXIT(runApplication(raiseInLoop), testing::ExitedWithCode(EXIT_FAILURE),
              "^Error: broken\n$");
}

class DebugOutput : public testing::Test {
 protected:
  ~DebugOutput() override { setDebugLevel(levelBefore); }

  template <class Action>
  static std::string printedBy(Action action) {
    testing::internal::CaptureStdout();
    action();
    return testing::internal::GetCapturedStdout();
  }

 private:
  int levelBefore = debugLevel();
};

TEST_F(DebugOutput, IsDroppedUnlessTheLevelIsAboveZero) {
  const auto say = [] { zDebugOut("value %d", 7); };
  for (const int silent : {-1, 0}) {
    setDebugLevel(silent);
    EXPECT_EQ(printedBy(say), "");
  }
  setDebugLevel(1);
  EXPECT_EQ(printedBy(say), "value 7\r\n");
  // The finished text serves as a format a second time; directives in it have no argument.
  EXPECT_EQ(printedBy([] { zDebugOut("%s", "100%% of %d %"); }), "100% of %d %\r\n");
}

TEST_F(DebugOutput, TellsProtocolErrorsAndTheProgramGoesOn) {
  setDebugLevel(1);
  const std::string text = printedBy([] { mapUnknownWindow(77); });
  EXPECT_THAT(text, HasSubstr("X Error of failed request: BadWindow (invalid Window parameter)\r\n"
                              "Opcode of failed request: 8, 0\r\n"
                              "Resource id in failed request: 77\r\n"
                              "Serial number of failed request: "));
  EXPECT_THAT(text, testing::EndsWith("\n\r\n"));
  setDebugLevel(0);
  EXPECT_EQ(printedBy([] { mapUnknownWindow(77); }), "");
}

TEST(Settings, CountTextsAsNumbersAndTheWordTrueAsOne) {
  struct Case {
    const char* text;
    int number;
  };
  for (const Case& row : {Case{"12", 12}, Case{"-3 points", -3}, Case{"True", 1}, Case{"true", 1},
                          Case{"TRUE", 0}, Case{"on", 0}, Case{"False", 0}}) {
    setXResource("settings.key", row.text);
    EXPECT_EQ(readXSetting(app().display(), "settings", "key"), row.number) << row.text;
  }
  EXPECT_EQ(readXSetting(app().display(), "settings", "other"), std::nullopt);
}

TEST(Settings, AreReadAnewButForTheDebugLevelAndTheChildWindowSwitch) {
  const int levelBefore = debugLevel();
  setDebugLevel(-1);
  g_XSettings = {};
  readXSettings(app().display(), "unset");
  EXPECT_EQ(g_XSettings.useChildMdi, 1);
  EXPECT_EQ(debugLevel(), 0);
  EXPECT_FALSE(g_XSettings.positionIsFrameWorkaround);
  EXPECT_EQ(g_XSettings.incFontInDialogBy, 0);
  for (const char* key : {"set.useChildMDI", "set.debugOn", "set.incFontInDialogBy"}) {
    setXResource(key, "2");
  }
  setXResource("set.positionIsFrameWorkaround", "True");
  readXSettings(app().display(), "set");
  EXPECT_EQ(g_XSettings.useChildMdi, 1);
  EXPECT_EQ(debugLevel(), 0);
  EXPECT_TRUE(g_XSettings.positionIsFrameWorkaround);
  EXPECT_EQ(g_XSettings.incFontInDialogBy, 2);
  g_XSettings = {};
  setDebugLevel(levelBefore);
}

TEST(Settings, OfFontsInPointsFollowTheScreen) {
  struct Case {
    const char* asked;
    const char* family;
    const char* pixels;
  };
  // 96 dots an inch.
  for (const Case& row :
       {Case{"-*-helvetica-bold-r-normal--*-110-*", "-helvetica-bold-r-", "--14-"},
        Case{"-*-courier-medium-o-*--*-180-*", "-courier-medium-o-", "--24-"},
        Case{"-*-helvetica-bold-r-*--11-*", "-helvetica-bold-r-", "--11-*"},
        Case{"-*-helvetica-bold-r-*--*-1x-*", "-helvetica-bold-r-", "--*-1x-*"}}) {
    setXResource("points*fontList", row.asked);
    resolveFontPoints(app().display());
    const std::string font =
        readXResource(app().display(), "points.list.fontList", "P.L.FontList").value_or("");
    EXPECT_THAT(font, AllOf(HasSubstr(row.family), HasSubstr(row.pixels))) << row.asked;
  }
}

TEST(Settings, GiveAFrameItsFirstSizeAsFarAsTheScreenAllows) {
  const std::string key = app().name() + ".startSize";
  ziScreen& screen = theScreen();
  const int plain = screen.dotsPerInchX;
  for (const int density : {1, 2}) {
    screen.dotsPerInchX = screen.dotsPerInchY = 96 * density;
    for (const char* wanted : {"5000x300", "400x5000"}) {
      setXResource(key, wanted);
      const zAppFrame frame(nullptr, new zSizer(nullptr), 0, "Test");
      const zRect place = frame.sizer()->rect();
      EXPECT_EQ(wanted[0] == '5' ? place.height() : place.width(),
                (wanted[0] == '5' ? 300 : 400) * density);
      EXPECT_LT(place.right, screen.screenWidth);
      EXPECT_LT(place.bottom, screen.screenHeight);
    }
  }
  screen.dotsPerInchX = screen.dotsPerInchY = plain;
  setXResource(key, "");
}

}  // namespace
