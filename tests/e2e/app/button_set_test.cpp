// The life of a button set: made, used, saved, and there again the next time.

#include <algorithm>

#include "tests/e2e/app/app_fixture.h"

namespace {

using screen::ScreenArea;

constexpr const char* kSaved = ":Mine\nOne\ndo One\n";

class ButtonSetTest : public AppTest {
 protected:
  /// Headers and buttons of the groups that are seen, line by line; a header is two fields.
  std::vector<ScreenArea> groupFields() {
    std::vector<ScreenArea> found = user.fields(mainWindow);
    const int top = found.front().y + 20;     // below the menu bar
    const int right = found.front().x + 260;  // left of log and command line
    std::erase_if(found, [&](const ScreenArea& field) {
      const bool isTool = field.width == 24 && field.height == 22;
      return isTool || field.y < top || field.x > right || field.height < 16 || field.height > 32 ||
             field.width < 24 || field.width > 150;
    });
    return found;
  }
  /// Waits until so many of them are there.
  std::vector<ScreenArea> awaitGroupFields(std::size_t count) {
    user.waitFor([&] { return groupFields().size() == count; },
                 std::to_string(count) + " fields of groups");
    return groupFields();
  }
  void awaitField(const ScreenArea& place) {
    user.waitFor([&] { return std::ranges::count(user.fields(mainWindow), place) > 0; }, "a field");
  }

  /// Starts with a set in the system's folder.
  void startWith(std::string_view set) {
    folder.write("nelkv.btn", set);
    connect();
    openSystemIn(folder.path());
  }
  /// The user has added a group that is not saved.
  void startAndChangeTheSet() {
    startWith(kSaved);
    awaitGroupFields(3);
    choose(XK_b, XK_g);
    answer("Korvane UI Add Group", "Second");
    awaitGroupFields(5);
  }
  /// Presses the button behind the first one of the save question.
  void discard() {
    const Window question = user.awaitWindow("Korvane UI Exit");
    user.press(XK_Tab);
    user.press(XK_space);
    user.awaitGone(question);
  }
  std::string savedSet() const { return readFile(folder / "nelkv.btn"); }

  TemporaryFolder folder;
};

TEST_F(ButtonSetTest, IsMadeUsedAndSavedByTheUser) {
  connect();
  openSystemIn(folder.path());
  answer("Korvane UI Load Buttons", "", XK_Escape);
  awaitCommandLine();
  choose(XK_b, XK_g);
  answer("Korvane UI Add Group", "Mine");
  // The menu is at its button with the toolbar and without.
  ScreenArea opener = awaitGroupFields(2)[1];
  user.awaitWindow(kMainTitle);
  user.press(XK_t, screen::kControl);
  opener.y -= 30;
  awaitField(opener);
  user.clickLeft(opener);
  user.awaitMenu();
  user.click({opener.x + 20, opener.y + opener.height, 20, 24});
  const Window add = user.awaitWindow("Korvane UI Add Button");
  std::size_t fields = 2;
  for (const std::string label : {"One", "Two", "Three"}) {
    user.type(label + "\tdo " + label + "\t\t ");  // Apply
    awaitGroupFields(++fields);
    postmaster.hasMessage(Milliseconds{400});  // the focus goes back to the label, seen by nobody
  }
  user.press(XK_Escape);
  user.awaitGone(add);
  user.awaitWindow(kMainTitle);
  user.press(XK_t, screen::kControl);
  opener.y += 30;
  awaitField(opener);

  user.click(awaitGroupFields(5)[3]);
  user.type("typed at once\n");
  postmaster.expect(MSG_UI_COMMAND, "do Two");
  postmaster.expect(MSG_UI_COMMAND, "typed at once");
  user.clickLeft(awaitGroupFields(5)[1]);
  user.awaitMenu();
  user.press(XK_d);
  answer("Korvane UI Delete Button", " ");  // the first row
  user.click(awaitGroupFields(4)[0]);       // folds the group
  awaitCommandLine();

  user.close(mainWindow);
  answer("Korvane UI Exit");  // Save
  answer("Korvane UI Save Buttons");
  postmaster.expect(MSG_UI_EXIT);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
  EXPECT_EQ(savedSet(), ":COLLAPSED Mine\nTwo\ndo Two\nThree\ndo Three\n");
}

TEST_F(ButtonSetTest, KeepsTheProgramUntilItIsSavedOrDiscarded) {
  startAndChangeTheSet();
  for (int attempt = 0; attempt < 2; ++attempt) {
    user.press(XK_q, screen::kControl);
    answer("Korvane UI Exit", "", XK_Escape);
    awaitCommandLine();
  }
  // Asked once however often the window is closed.
  for (int i = 0; i < 3; ++i) {
    user.close(mainWindow);
  }
  const Window once = user.awaitWindow("Korvane UI Exit");
  expectAnswer();
  user.press(XK_Escape);
  user.awaitGone(once);
  awaitCommandLine();
  // The tester's last word leaves no choice but the question is asked all the same.
  postmaster.send(MSG_T_EXIT_CONFIRM);
  discard();
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
  EXPECT_EQ(savedSet(), kSaved);
}

TEST_F(ButtonSetTest, IsAskedForBeforeTheEndThatALostLinkBringsAndNothingElseIsPossible) {
  startAndChangeTheSet();
  postmaster.send(MSG_SHUTDOWN, 0, 0, 0, 0);
  postmaster.expect(MSG_SHUTDOWN_ACK);
  answer(kLostTitle);
  answer("Korvane UI Exit", "", XK_Escape);
  discard();
  expectEnd();
}

TEST_F(ButtonSetTest, IsNotWrittenWhenTheEndComesBeforeTheAnswer) {
  const std::string unsafe = std::string("early\n") + kSaved;
  startWith(unsafe);
  awaitGroupFields(3);
  choose(XK_b, XK_a);
  answer("Korvane UI Save Buttons");
  user.awaitWindow("Korvane UI Error");
  postmaster.send(MSG_T_EXIT_CONFIRM);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
  EXPECT_EQ(savedSet(), unsafe);
}

TEST_F(ButtonSetTest, BringsMenusAndLosesThemToAnotherSet) {
  startWith(":G\nButton\na;\"b;c\"\n:MENU &More\n&First\nsend;as one\nseparator\n");
  folder.write("other set.btn", ":H\nfirst\ny\nsecond\nw\n");
  user.click(awaitGroupFields(3)[2]);
  postmaster.expect(MSG_UI_COMMAND, "a");
  choose(XK_m, XK_f);
  postmaster.expect(MSG_UI_COMMAND, "send;as one");
  choose(XK_b, XK_l);
  answer("Korvane UI Load Buttons", "no such file");
  answer("Korvane UI Error");
  answer("Korvane UI Load Buttons", "other set.btn");
  user.click(awaitGroupFields(4)[3]);
  postmaster.expect(MSG_UI_COMMAND, "w");
  user.press(XK_m, screen::kAlt);
  EXPECT_FALSE(user.seesMenu(Milliseconds{200}));
}

}  // namespace
