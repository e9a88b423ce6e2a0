// The life of a button set: made, used, saved, and there again the next time.

#include <algorithm>

#include "tests/e2e/app/app_fixture.h"

namespace {

constexpr const char* kLoadTitle = "Korvane UI Load Buttons";

class ButtonSetTest : public AppTest {
 protected:
  /// Headers and buttons of the groups that are seen, line by line; a header is two fields.
  std::vector<screen::ScreenArea> groupFields() {
    std::vector<screen::ScreenArea> found = user.fields(mainWindow);
    const int top = found.front().y + 40;     // below menu bar and toolbar
    const int right = found.front().x + 260;  // left of log and command line
    std::erase_if(found, [&](const screen::ScreenArea& field) {
      return field.y < top || field.x > right || field.height < 16 || field.height > 32 ||
             field.width < 24 || field.width > 150;
    });
    return found;
  }
  /// Waits until so many of them are there.
  std::vector<screen::ScreenArea> awaitGroupFields(std::size_t count) {
    const Deadline deadline(kAnswerTime);
    std::vector<screen::ScreenArea> found = groupFields();
    while (found.size() != count && !deadline.hasPassed()) {
      postmaster.hasMessage(Milliseconds{10});
      found = groupFields();
    }
    EXPECT_EQ(found.size(), count);
    return found;
  }

  /// Waits until a field of the window is there.
  void awaitField(const screen::ScreenArea& place) {
    const Deadline deadline(kAnswerTime);
    const auto isThere = [&] { return std::ranges::count(user.fields(mainWindow), place) > 0; };
    while (!isThere() && !deadline.hasPassed()) {
      postmaster.hasMessage(Milliseconds{10});
    }
  }

  void startInFolder() {
    connect();
    postmaster.send(MSG_T_SYSTEM_OPENED, folder.path().string(), "crossing");
  }

  /// The user has added a group that is not saved.
  void startAndChangeTheSet() {
    writeSet(":Mine\nOne\ndo One\n");
    startInFolder();
    awaitGroupFields(3);
    choose(XK_b, XK_g);
    user.awaitWindow("Korvane UI Add Group");
    user.type("Second\n");
    awaitGroupFields(5);
  }

  std::string savedSet() const {
    std::ifstream file(folder.path() / "nelkv.btn", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void writeSet(std::string_view bytes) const {
    std::ofstream(folder.path() / "nelkv.btn", std::ios::binary) << bytes;
  }

  TemporaryFolder folder;
};

TEST_F(ButtonSetTest, IsMadeUsedAndSavedByTheUserAndComesBack) {
  startInFolder();
  const Window load = user.awaitWindow(kLoadTitle);
  user.press(XK_Escape);
  user.awaitGone(load);
  awaitCommandLine();

  choose(XK_b, XK_g);
  const Window group = user.awaitWindow("Korvane UI Add Group");
  user.type("Mine\n");
  user.awaitGone(group);
  // The menu is at its button with the toolbar and without.
  screen::ScreenArea opener = awaitGroupFields(2)[1];
  user.press(XK_t, screen::kControl);
  opener.y -= 30;
  awaitField(opener);
  user.clickLeft(opener);
  user.awaitMenu();
  user.click({opener.x + 20, opener.y + opener.height, 20, 24});
  const Window add = user.awaitWindow("Korvane UI Add Button");
  for (const char* label : {"One", "Two", "Three"}) {
    user.type(label);
    user.press(XK_Tab);
    user.type(std::string("do ") + label);
    user.press(XK_Tab);
    user.press(XK_Tab);
    user.type(" ");  // Apply; the focus goes back to the label
    postmaster.hasMessage(Milliseconds{400});
  }
  user.press(XK_Escape);
  user.awaitGone(add);
  user.press(XK_t, screen::kControl);
  opener.y += 30;
  awaitField(opener);

  const auto buttons = awaitGroupFields(5);
  user.click(buttons[3]);
  user.type("typed at once\n");
  postmaster.expect(MSG_UI_COMMAND, "do Two");
  postmaster.expect(MSG_UI_COMMAND, "typed at once");

  user.clickLeft(awaitGroupFields(5)[1]);
  user.awaitMenu();
  user.press(XK_d);
  const Window remove = user.awaitWindow("Korvane UI Delete Button");
  user.press(XK_space);  // the first row
  user.press(XK_Return);
  user.awaitGone(remove);
  const auto left = awaitGroupFields(4);
  user.click(left[0]);  // folds the group
  awaitCommandLine();

  user.close(mainWindow);
  user.awaitWindow("Korvane UI Exit");
  user.press(XK_Return);  // Save
  const Window save = user.awaitWindow("Korvane UI Save Buttons");
  user.press(XK_Return);
  user.awaitGone(save);
  postmaster.expect(MSG_UI_EXIT);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
  EXPECT_EQ(savedSet(), ":COLLAPSED Mine\nTwo\ndo Two\nThree\ndo Three\n");
}

TEST_F(ButtonSetTest, RefusesTheEndWhenTheQuestionIsCancelledAndAsksAgain) {
  startAndChangeTheSet();
  for (int attempt = 0; attempt < 2; ++attempt) {
    user.press(XK_q, screen::kControl);
    const Window question = user.awaitWindow("Korvane UI Exit");
    user.press(XK_Escape);
    user.awaitGone(question);
    awaitCommandLine();
  }
  // The tester's last word leaves no choice but the question is asked all the same.
  postmaster.send(MSG_T_EXIT_CONFIRM);
  const Window question = user.awaitWindow("Korvane UI Exit");
  user.press(XK_Tab);
  user.press(XK_space);  // Discard
  user.awaitGone(question);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
  EXPECT_EQ(savedSet(), ":Mine\nOne\ndo One\n");
}

TEST_F(ButtonSetTest, WritesNothingWhenTheEndComesBeforeTheAnswer) {
  writeSet("early\n:Mine\nOne\ndo One\n");
  startInFolder();
  awaitGroupFields(3);
  choose(XK_b, XK_a);
  const Window form = user.awaitWindow("Korvane UI Save Buttons");
  user.press(XK_Return);
  user.awaitGone(form);
  user.awaitWindow("Korvane UI Error");
  postmaster.send(MSG_T_EXIT_CONFIRM);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
  EXPECT_EQ(savedSet(), "early\n:Mine\nOne\ndo One\n");
}

TEST_F(ButtonSetTest, IsAskedForBeforeTheEndThatALostLinkBringsAndNothingElseIsPossible) {
  startAndChangeTheSet();
  postmaster.send(MSG_SHUTDOWN, 0, 0, 0, 0);
  postmaster.expect(MSG_SHUTDOWN_ACK);
  confirm(kLostTitle);
  const Window question = user.awaitWindow("Korvane UI Exit");
  user.press(XK_Escape);
  user.awaitWindow("Korvane UI Exit", question);
  user.press(XK_Tab);
  user.press(XK_space);  // Discard
  expectEnd();
}

TEST_F(ButtonSetTest, BringsMenusAndLosesThemToAnotherSet) {
  writeSet(":G\nButton\na;\"b;c\"\n:MENU &More\n&First\nsend;as one\nseparator\n");
  startInFolder();
  user.click(awaitGroupFields(3)[2]);
  postmaster.expect(MSG_UI_COMMAND, "a");
  choose(XK_m, XK_f);
  postmaster.expect(MSG_UI_COMMAND, "send;as one");
  const std::string other = (folder.path() / "other set.btn").string();
  std::ofstream(other) << ":H\nfirst\ny\nsecond\nw\n";
  choose(XK_b, XK_l);
  const Window load = user.awaitWindow(kLoadTitle);
  user.type("no such file\n");
  confirm("Korvane UI Error");
  const Window again = user.awaitWindow(kLoadTitle, load);
  user.type("other set.btn\n");
  user.awaitGone(again);
  user.click(awaitGroupFields(4)[3]);
  postmaster.expect(MSG_UI_COMMAND, "w");
  user.press(XK_m, screen::kAlt);
  EXPECT_FALSE(user.seesMenu(Milliseconds{200}));
}

TEST_F(AppTest, ToolbarButtonsIssueTheCommandsOfTheMenus) {
  connect();
  std::vector<screen::ScreenArea> buttons = user.fields(mainWindow);
  std::erase_if(buttons, [](const auto& field) { return field.width != 24 || field.height != 22; });
  ASSERT_EQ(buttons.size(), 5U);
  user.click(buttons[3]);
  EXPECT_EQ(postmaster.expect(MSG_SHOW_ORGANIZER).dest, NELLINK);
  user.click(buttons[4]);
  postmaster.expect(MSG_HELP_REQUEST, "tessil-testerui");
  user.click(buttons[0]);
  const Window form = user.awaitWindow("Open Symbol File");
  user.press(XK_Escape);
  user.awaitGone(form);
  awaitCommandLine();
}

}  // namespace
