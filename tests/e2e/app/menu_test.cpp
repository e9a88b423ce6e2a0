// The menus and accelerators of the main window, by keyboard alone.

#include "tests/e2e/app/app_fixture.h"

namespace {

class MenuTest : public AppTest {
 protected:
  /// Opens the first pulldown from the bar. Nothing tells when the bar has taken the keyboard; a
  /// Down that comes before goes to the empty history and is pressed again.
  void openFirstByF10() {
    user.press(XK_F10);
    const Deadline deadline(kAnswerTime);
    do {
      user.press(XK_Down);
    } while (!user.seesMenu(Milliseconds{500}) && !deadline.hasPassed());
    user.awaitMenu();
  }
};

TEST_F(MenuTest, LeavesByMenuAndByAcceleratorWithoutTellingTheTester) {
  connect();
  choose(XK_f, XK_x);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
}

TEST_F(MenuTest, LeavesByControlQ) {
  connect();
  user.press(XK_q, screen::kControl);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
}

TEST_F(MenuTest, CommandsThatGoToOtherToolsArriveThere) {
  connect();
  choose(XK_f, XK_d);
  postmaster.expect(MSG_UI_COMMAND, "Change-Directory");
  awaitCommandLine();
  choose(XK_v, XK_f);
  EXPECT_EQ(postmaster.expect(MSG_UI_FIND).dest, NELKV);
  awaitCommandLine();
  struct Topic {
    screen::KeySymbol item;
    const char* key;
  };
  for (const Topic& topic : {Topic{XK_e, "tessil-generator"}, Topic{XK_u, "tessil-testerui"},
                             Topic{XK_k, "tessil-tester"}, Topic{XK_c, "tessil-tester-commands"}}) {
    choose(XK_h, topic.item);
    EXPECT_EQ(postmaster.expect(MSG_HELP_REQUEST, topic.key).dest, NELLINK);
    // The keyboard is back at the command line after each command.
    awaitCommandLine();
  }
  user.press(XK_F1);
  postmaster.expect(MSG_HELP_REQUEST, "tessil-generator");
  user.press(XK_h, screen::kControl);
  postmaster.expect(MSG_HELP_REQUEST, "tessil-testerui");
  user.press(XK_1, screen::kControl);
  EXPECT_EQ(postmaster.expect(MSG_SHOW_ORGANIZER).dest, NELLINK);
}

TEST_F(MenuTest, MenusOpenByF10AndCloseByEscape) {
  connect();
  openFirstByF10();
  user.press(XK_Escape);
  user.press(XK_Escape);
  user.awaitNoMenu();
  awaitCommandLine();
  openFirstByF10();
  user.press(XK_Down);
  user.press(XK_Return);
  postmaster.expectLater(MSG_UI_COMMAND, "Change-Directory");
}

TEST_F(MenuTest, NumbersAndClearsTheLog) {
  connect();
  postmaster.send(MSG_T_TEXT, "one\ntwo\n");
  expectAnswer();
  choose(XK_v, XK_l);
  postmaster.send(MSG_T_TEXT, "three\n");
  expectAnswer();
  user.expectText(mainWindow, "one\n     1: two\n     2: three\n     3: ");
}

TEST_F(MenuTest, ClearLeavesItsBanner) {
  connect();
  postmaster.send(MSG_T_TEXT, "one\ntwo\n");
  expectAnswer();
  choose(XK_v, XK_t);
  postmaster.send(MSG_T_TEXT, "x\n");
  expectAnswer();
  user.expectText(mainWindow, "------------- Text Log Cleared --------------\r\nx\n");
}

TEST_F(MenuTest, CopiesFromTheLogAndPastesBehindWhatIsTyped) {
  connect();
  // What is selected when the key comes counts, not what was when the menu was seen.
  choose(XK_v, XK_Escape);
  postmaster.send(MSG_T_TEXT, "list-process");
  expectAnswer();
  user.expectText(mainWindow, "list-process");
  user.press(XK_c, screen::kControl);
  user.type("-");
  user.press(XK_v, screen::kControl);
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "-list-process");
  // The same again is the newest entry already, and replaces what is typed.
  postmaster.send(MSG_T_TEXT, "drops the selection");
  expectAnswer();
  user.press(XK_c, screen::kControl);
  user.type("z");
  user.press(XK_v, screen::kControl);
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "zlist-process");
}

TEST_F(MenuTest, FindsTheSelectionAndTellsWhenThereIsNoMore) {
  connect();
  postmaster.send(MSG_T_TEXT, "word");
  expectAnswer();
  user.expectText(mainWindow, "word");
  choose(XK_v, XK_s);
  // The only place of the word is where a search from the start does not look.
  confirm(kMainTitle);
  awaitCommandLine();
  user.press(XK_F3);
  confirm(kMainTitle);
  confirm(kMainTitle);  // on from the start
  awaitCommandLine();
}

TEST_F(MenuTest, HiddenBarsComeBackAndTheWindowStaysUsable) {
  connect();
  for (int round = 0; round < 2; ++round) {
    user.press(XK_t, screen::kControl);
    user.press(XK_f, screen::kControl);
    awaitCommandLine();
  }
}

}  // namespace
