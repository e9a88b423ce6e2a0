// The life of a button set: made, used, saved, and there again the next time.

#include <algorithm>

#include "tests/e2e/app/app_fixture.h"

namespace {

using screen::ScreenArea;

constexpr const char* kExitTitle = "Korvane UI Exit";
constexpr const char* kLoadTitle = "Korvane UI Load Buttons";
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
  std::string savedSet() const { return readFile(folder / "nelkv.btn"); }

  TemporaryFolder folder;
};

TEST_F(ButtonSetTest, IsMadeUsedAndSavedByTheUser) {
  connect();
  openSystemIn(folder.path());
  answer(kLoadTitle, "", XK_Escape);
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
  command("typed at once", {"do Two", "typed at once"});
  user.clickLeft(awaitGroupFields(5)[1]);
  user.awaitMenu();
  user.press(XK_d);
  answer("Korvane UI Delete Button", " ");  // the first row
  user.click(awaitGroupFields(4)[0]);       // folds the group
  awaitCommandLine();

  user.close(mainWindow);
  answer(kExitTitle);  // Save
  answer("Korvane UI Save Buttons");
  postmaster.expect(MSG_UI_EXIT);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
  EXPECT_EQ(savedSet(), ":COLLAPSED Mine\nTwo\ndo Two\nThree\ndo Three\n");
}

TEST_F(ButtonSetTest, KeepsTheProgramUntilItIsSavedOrDiscarded) {
  startAndChangeTheSet();
  // Asked once however often the window is closed.
  for (int i = 0; i < 3; ++i) {
    user.close(mainWindow);
  }
  for (const bool isAskedAgain : {true, false}) {
    user.awaitWindow(kExitTitle);
    expectAnswer();
    answer(kExitTitle, "", XK_Escape);
    awaitCommandLine();
    if (isAskedAgain) {
      user.press(XK_q, screen::kControl);
    }
  }
  // The tester's last word leaves no choice but the question is asked all the same.
  postmaster.send(MSG_T_EXIT_CONFIRM);
  answer(kExitTitle, "\t", XK_space);  // Discard
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
  EXPECT_EQ(savedSet(), kSaved);
}

TEST_F(ButtonSetTest, IsAskedForBeforeTheEndThatALostLinkBringsAndNothingElseIsPossible) {
  startAndChangeTheSet();
  postmaster.send(MSG_SHUTDOWN, 0, 0, 0, 0);
  postmaster.expect(MSG_SHUTDOWN_ACK);
  answer(kLostTitle);
  answer(kExitTitle, "", XK_Escape);
  answer(kExitTitle, "\t", XK_space);
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
  hear({"a"});
  choose(XK_m, XK_f);
  hear({"send;as one"});
  choose(XK_b, XK_l);
  answer(kLoadTitle, "no such file");
  answer("Korvane UI Error");
  answer(kLoadTitle, "other set.btn");
  user.click(awaitGroupFields(4)[3]);
  hear({"w"});
  user.press(XK_m, screen::kAlt);
  awaitSleep();
  EXPECT_FALSE(user.hasPopup());
}

}  // namespace
