// The dialogue with the tester and the user: commands, texts, boxes, menus.

#include "tests/e2e/app/app_fixture.h"

namespace {

TEST_F(AppTest, ShowsTheTestersTextAndSendsTheUsersCommands) {
  connect();
  for (const char* text : {"one\n", "", "two, unfinished"}) {
    postmaster.send(MSG_T_TEXT, text);
  }
  command("list-process \"a;b\" ?");
  command(std::string(900, 'x'));
  command("", {"?\?"});
  user.type("\xE4\xDF\n");
  const Message umlauts = postmaster.expect(MSG_UI_COMMAND, "\xE4\xDF");
  EXPECT_EQ(std::pair(umlauts.sender, umlauts.dest), std::pair(int{NELKVUI}, int{NELKV}));
  user.expectText(mainWindow, "one\ntwo, unfinished");
}

TEST_F(AppTest, SendsTheRestOfALineWhenTheTesterHasAnsweredAndConfirmed) {
  connect();
  command("a;b;c", {"a"});
  postmaster.send(MSG_T_PROMPT, "a");
  tell("");
  tell("output\n");
  postmaster.send(MSG_T_PROMPT, "a");
  hear({"b", "c"});
  // A new line drops what the last one left waiting.
  command(";old\nnew;x", {"", "new"});
  postmaster.send(MSG_T_TEXT, "output\n");
  postmaster.send(MSG_T_PROMPT, "new");
  hear({"x"});
  expectAnswer();
}

TEST_F(AppTest, BringsBackConfirmedCommandsOnly) {
  connect();
  postmaster.send(MSG_T_PROMPT, "first");
  postmaster.send(MSG_T_PROMPT, "second");
  expectAnswer();
  command("never confirmed");
  user.press(XK_Down);
  command("", {"second"});
  user.press(XK_Down);
  user.press(XK_Down);
  command("", {"first"});
}

TEST_F(AppTest, AnswersAndAcknowledgesItsBoxes) {
  connect();
  postmaster.send(MSG_T_QUESTION, "Korvane - Page file", "Go on?");
  expectAnswer();  // the link is read under the box
  answer("Korvane - Page file");
  postmaster.expect(MSG_UI_OK);
  for (const screen::KeySymbol key : {screen::KeySymbol{XK_Escape}, kClose}) {
    postmaster.send(MSG_T_QUESTION, "Second", "Go on?");
    answer("Second", "", key);
    postmaster.expect(MSG_UI_NOT_OK);
  }
  for (const int warning : {MSG_T_WARNING_BOX, MSG_LINK_WARNING_BOX}) {
    postmaster.send(warning, "Warning", std::string(4000, 'w'));
    answer("Warning");
    expectAnswer();  // no word of the warning
  }
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
    return read_symlink(std::filesystem::path(procFolder()) / "cwd");
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

// All the others are tried within one process: that they leave it is seen here.
TEST_F(AppTest, SendsTheCommandsOfMenusAcceleratorsAndToolBarToTheirTools) {
  connect();
  const auto expectSent = [&](int tag, const std::string& text, int dest) {
    const Message sent = postmaster.expect(tag);
    EXPECT_EQ(std::pair(sent.text(), sent.dest), std::pair(text, dest));
    awaitCommandLine();  // the keyboard is back there after each command
  };
  choose(XK_f, XK_d);
  expectSent(MSG_UI_COMMAND, "Change-Directory", NELKV);
  choose(XK_v, XK_f);
  expectSent(MSG_UI_FIND, "", NELKV);
  choose(XK_h, XK_u);
  expectSent(MSG_HELP_REQUEST, "tessil-testerui", NELLINK);
  user.press(XK_F1);
  expectSent(MSG_HELP_REQUEST, "tessil-generator", NELLINK);
  std::vector<screen::ScreenArea> buttons = user.fields(mainWindow);
  std::erase_if(buttons, [](const auto& field) { return field.width != 24 || field.height != 22; });
  ASSERT_EQ(buttons.size(), 5U);
  user.click(buttons[3]);
  expectSent(MSG_SHOW_ORGANIZER, "", NELLINK);
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
    const auto isOpenByDown = [&] {
      user.press(XK_Down);
      awaitSleep();
      return user.hasPopup();
    };
    user.waitFor(isOpenByDown, "a menu");
    user.press(key);
    if (key == XK_Escape) {
      user.press(key);  // the bar's keyboard, too
    } else {
      postmaster.expectLater(MSG_UI_COMMAND, "Change-Directory");
    }
    user.awaitNoMenu();
    awaitCommandLine();
  }
  for (const auto& [width, height] : {std::pair(600, 280), {900, 700}, {640, 400}, {700, 500}}) {
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
  command("", {"-list-process"});
  user.expectText(mainWindow, "list-process");
  choose(XK_v, XK_s);
  // The only place of the selection is where a search from the start does not look.
  answer(kMainTitle);
  awaitCommandLine();
  user.press(XK_F3);
  answer(kMainTitle);
  answer(kMainTitle);  // on from the start
  awaitCommandLine();
}

}  // namespace
