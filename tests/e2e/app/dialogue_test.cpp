// The dialogue with the tester and the user: commands, texts, boxes, menus.

#include "tests/e2e/app/app_fixture.h"

namespace {

TEST_F(AppTest, ShowsTheTestersTextAndSendsTheUsersCommands) {
  connect();
  for (const char* text : {"one\n", "", "two, unfinished"}) {
    postmaster.send(MSG_T_TEXT, text);
  }
  for (const std::string& line : {std::string("list-process \"a;b\" ?"), std::string(900, 'x')}) {
    command(line);
  }
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "?\?");
  user.type("\xE4\xDF\n");
  const Message umlauts = postmaster.expect(MSG_UI_COMMAND, "\xE4\xDF");
  EXPECT_EQ(umlauts.sender, NELKVUI);
  EXPECT_EQ(umlauts.dest, NELKV);
  user.expectText(mainWindow, "one\ntwo, unfinished");
}

TEST_F(AppTest, SendsTheRestOfALineWhenTheTesterHasAnsweredAndConfirmed) {
  connect();
  user.type("a;b;c\n");
  postmaster.expect(MSG_UI_COMMAND, "a");
  postmaster.send(MSG_T_PROMPT, "a");
  tell("");
  tell("output\n");
  postmaster.send(MSG_T_PROMPT, "a");
  postmaster.expect(MSG_UI_COMMAND, "b");
  postmaster.expect(MSG_UI_COMMAND, "c");
  // A new line drops what the last one left waiting.
  user.type(";old\nnew;x\n");
  postmaster.expect(MSG_UI_COMMAND, "");
  postmaster.expect(MSG_UI_COMMAND, "new");
  postmaster.send(MSG_T_TEXT, "output\n");
  postmaster.send(MSG_T_PROMPT, "new");
  postmaster.expect(MSG_UI_COMMAND, "x");
  expectAnswer();
}

TEST_F(AppTest, BringsBackConfirmedCommandsOnly) {
  connect();
  postmaster.send(MSG_T_PROMPT, "first");
  postmaster.send(MSG_T_PROMPT, "second");
  expectAnswer();
  command("never confirmed");
  user.press(XK_Down);
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "second");
  for (const screen::KeySymbol key : {XK_Down, XK_Down, XK_Up, XK_Down, XK_Return}) {
    user.press(key);
  }
  postmaster.expect(MSG_UI_COMMAND, "first");
  // What stands in the entry when the confirmation comes is put in front of it. Intended.
  user.type("x");
  awaitSleep();
  postmaster.send(MSG_T_PROMPT, "y");
  expectAnswer();
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "x");
  user.press(XK_Down);
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "xy");
}

TEST_F(AppTest, AnswersAndAcknowledgesItsBoxes) {
  connect();
  postmaster.send(MSG_T_QUESTION, "Korvane - Page file", "Go on?");
  expectAnswer();  // the link is read under the box
  answer("Korvane - Page file");
  postmaster.expect(MSG_UI_OK);
  postmaster.send(MSG_T_QUESTION, "Second", "Go on?");
  answer("Second", "", XK_Escape);
  postmaster.expect(MSG_UI_NOT_OK);
  postmaster.send(MSG_T_QUESTION, "Third", "Go on?");
  user.close(user.awaitWindow("Third"));
  postmaster.expect(MSG_UI_NOT_OK);
  postmaster.send(MSG_T_WARNING_BOX, "Warning", "text\nin lines");
  answer("Warning");
  postmaster.send(MSG_LINK_WARNING_BOX, "Link warning", std::string(4000, 'w'));
  answer("Link warning");
  expectAnswer();  // no word of the warnings
  // Intended: the end of an inner box ends the wait of the outer one too.
  postmaster.send(MSG_T_ERROR_BOX, "Outer", "text");
  const Window outer = user.awaitWindow("Outer");
  postmaster.send(MSG_T_ERROR_BOX, "Inner", "text");
  answer("Inner");
  postmaster.expect(MSG_UI_ACK);
  postmaster.expect(MSG_UI_ACK);
  user.awaitGone(outer);
  awaitCommandLine();
}

TEST_F(AppTest, FollowsTheTestersTitleAndDirectory) {
  const TemporaryFolder folder;
  const auto workingFolder = [this] {
    return std::filesystem::read_symlink("/proc/" + std::to_string(postmaster.tool().id()) +
                                         "/cwd");
  };
  connect();
  for (const std::string title : {"Crossing", "Other"}) {
    postmaster.send(MSG_T_TITLE, title);
    user.awaitWindow("Korvane UI - " + title);
  }
  folder.write("nelkv.btn", "");
  openSystemIn(folder.path());
  expectAnswer();
  EXPECT_EQ(workingFolder(), folder.path());
  postmaster.send(MSG_T_BUSY);
  postmaster.send(MSG_T_IDLE);
  // Neither a directory to go to nor a button set: the user is asked for one.
  openSystemIn("/no/such/folder");
  answer("Korvane UI Load Buttons", "", XK_Escape);
  expectAnswer();
  EXPECT_EQ(workingFolder(), folder.path());
  // The directory dialog goes there by itself.
  std::filesystem::create_directory(folder / "sub dir");
  postmaster.send(MSG_T_ASK_DIRECTORY, "", "");
  user.awaitWindow("Select Source Directory");
  user.press(XK_End);
  user.type("sub dir\n\n");
  postmaster.expect(MSG_UI_DIRECTORY, (folder / "sub dir").string() + "/");
  expectAnswer();
  EXPECT_EQ(workingFolder(), folder / "sub dir");
}

TEST_F(AppTest, LosesNoKeyAndNoLineInAFloodOfText) {
  start();
  shakeHands();
  constexpr int kMessages = 10000;
  constexpr int kPerCommand = 500;
  std::string expected;
  for (int i = 0; i < kMessages; ++i) {
    if (i == kPerCommand) {
      awaitCommandLine();
    } else if (i % kPerCommand == 0 && i > 0) {
      const std::string line = "command " + std::to_string(i);
      command(line);
      postmaster.send(MSG_T_PROMPT, line);
    }
    postmaster.send(MSG_T_TEXT, std::to_string(i) + "\n");
    expected += std::to_string(i) + "\n";
  }
  expectAnswer();
  user.expectText(mainWindow, expected);
}

struct MenuRow {
  screen::KeySymbol menu, item;  ///< without a menu, an accelerator
  unsigned modifiers;
  int tag;
  const char* text;
  int dest;
};

TEST_F(AppTest, SendsTheCommandsOfMenusAndAcceleratorsToTheirTools) {
  connect();
  for (const MenuRow& row : {
           MenuRow{XK_f, XK_d, 0, MSG_UI_COMMAND, "Change-Directory", NELKV},
           MenuRow{XK_v, XK_f, 0, MSG_UI_FIND, "", NELKV},
           MenuRow{XK_h, XK_e, 0, MSG_HELP_REQUEST, "tessil-generator", NELLINK},
           MenuRow{XK_h, XK_u, 0, MSG_HELP_REQUEST, "tessil-testerui", NELLINK},
           MenuRow{XK_h, XK_k, 0, MSG_HELP_REQUEST, "tessil-tester", NELLINK},
           MenuRow{XK_h, XK_c, 0, MSG_HELP_REQUEST, "tessil-tester-commands", NELLINK},
           MenuRow{0, XK_F1, 0, MSG_HELP_REQUEST, "tessil-generator", NELLINK},
           MenuRow{0, XK_h, screen::kControl, MSG_HELP_REQUEST, "tessil-testerui", NELLINK},
           MenuRow{0, XK_1, screen::kControl, MSG_SHOW_ORGANIZER, "", NELLINK},
       }) {
    if (row.menu != 0) {
      choose(row.menu, row.item);
    } else {
      user.press(row.item, row.modifiers);
    }
    const Message sent = postmaster.expect(row.tag);
    EXPECT_EQ(std::pair(sent.text(), sent.dest), std::pair(std::string(row.text), row.dest));
    // The keyboard is back at the command line after each command.
    awaitCommandLine();
  }
  std::vector<screen::ScreenArea> buttons = user.fields(mainWindow);
  std::erase_if(buttons, [](const auto& field) { return field.width != 24 || field.height != 22; });
  ASSERT_EQ(buttons.size(), 5U);
  user.click(buttons[3]);
  EXPECT_EQ(postmaster.expect(MSG_SHOW_ORGANIZER).dest, NELLINK);
  user.click(buttons[4]);
  postmaster.expect(MSG_HELP_REQUEST, "tessil-testerui");
  user.click(buttons[0]);
  answer("Open Symbol File", "", XK_Escape);
  awaitCommandLine();
}

TEST_F(AppTest, MenusOpenByF10AndTheWindowStaysUsableInEverySizeAndWithoutBars) {
  connect();
  for (const screen::KeySymbol key : {XK_Escape, XK_d}) {
    user.press(XK_F10);
    // Nothing tells when the bar has taken the keyboard; a Down that comes before goes to the empty
    // history and is pressed again.
    const Deadline deadline(kAnswerTime);
    do {
      user.press(XK_Down);
    } while (!user.seesMenu(Milliseconds{2000}) && !deadline.hasPassed());
    user.press(key);
    if (key == XK_Escape) {
      user.press(key);  // the bar's keyboard, too
    } else {
      postmaster.expectLater(MSG_UI_COMMAND, "Change-Directory");
    }
    user.awaitNoMenu();
    awaitCommandLine();
  }
  const std::pair<int, int> sizes[] = {{600, 280}, {900, 700}, {640, 400}, {700, 500}};
  for (const auto& [width, height] : sizes) {
    user.resize(mainWindow, width, height);
    user.press(XK_t, screen::kControl);
    user.press(XK_f, screen::kControl);
    awaitCommandLine();
  }
}

TEST_F(AppTest, NumbersClearsCopiesAndFindsInTheLog) {
  connect();
  tell("one\ntwo\n");
  choose(XK_v, XK_l);
  tell("three\n");
  user.expectText(mainWindow, "one\n     1: two\n     2: three\n     3: ");
  choose(XK_v, XK_l);
  choose(XK_v, XK_t);
  tell("x\n");
  user.expectText(mainWindow, "------------- Text Log Cleared --------------\r\nx\n");
}

TEST_F(AppTest, CopiesFromTheLogPastesBehindWhatIsTypedAndFindsTheSelection) {
  connect();
  // What is selected when the key comes counts, not what was when the menu was seen.
  choose(XK_v, XK_Escape);
  tell("list-process");
  user.expectText(mainWindow, "list-process");
  user.press(XK_c, screen::kControl);
  user.type("-");
  user.press(XK_v, screen::kControl);
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "-list-process");
  user.expectText(mainWindow, "list-process");
  choose(XK_v, XK_s);
  // The only place of the selection is where a search from the start does not look.
  answer(kMainTitle);
  awaitCommandLine();
  user.press(XK_F3);
  answer(kMainTitle);
  answer(kMainTitle);  // on from the start
  awaitCommandLine();
  // The same again is the newest entry already, and replaces what is typed.
  tell("drops the selection");
  user.press(XK_c, screen::kControl);
  user.type("z");
  user.press(XK_v, screen::kControl);
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "zlist-process");
}

}  // namespace
