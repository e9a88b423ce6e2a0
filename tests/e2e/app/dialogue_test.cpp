// The dialogue with the tester and the user: commands, texts, boxes, menus.

#include "tests/e2e/app/app_fixture.h"

namespace {

TEST_F(AppTest, SendsWhatIsTypedPieceByPieceAndBringsBackWhatTheTesterConfirmed) {
  connect();
  user.type("list-process \"a;b\" \xE4\n");
  const Message typed = postmaster.expect(MSG_UI_COMMAND, "list-process \"a;b\" \xE4");
  EXPECT_EQ(std::pair(typed.sender, typed.dest), std::pair(int{NELKVUI}, int{NELKV}));
  user.type("a;b;c\n");
  hear({"a"});
  postmaster.send(MSG_T_PROMPT, "a");
  tell("");
  expectAnswer();  // the rest of the line waits for some text
  tell("one\n");
  postmaster.send(MSG_T_PROMPT, "a");
  hear({"b", "c"});
  // A new line drops what the last one left waiting.
  user.type(";old\nnew;x\n");
  hear({"", "new"});
  tell("two, unfinished");
  postmaster.send(MSG_T_PROMPT, "new");
  hear({"x"});
  user.type("never confirmed\n");
  hear({"never confirmed"});
  user.press(XK_Down);
  user.press(XK_Return);
  hear({"new"});
  for (const screen::KeySymbol key : {XK_Down, XK_Down, XK_Return}) {
    user.press(key);
  }
  hear({"a"});
  EXPECT_EQ(log(), "one\ntwo, unfinished");
}

TEST_F(AppTest, AnswersAndAcknowledgesItsBoxes) {
  connect();
  postmaster.send(MSG_T_QUESTION, "Question", "Go on?");
  expectAnswer();  // the link is read under the box
  answer("Question", "", kClose);
  postmaster.expect(MSG_UI_NOT_OK);
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
  const auto workingFolder = [this] {
    return std::filesystem::read_symlink("/proc/" + std::to_string(postmaster.tool().id()) +
                                         "/cwd");
  };
  connect();
  postmaster.send(MSG_T_TITLE, "Crossing");
  user.awaitWindow("Korvane UI - Crossing");
  folder.write("nelkv.btn", "");
  openSystem();
  EXPECT_EQ(workingFolder(), folder.path());
  // Neither a directory to go to nor a button set: the user is asked for one.
  postmaster.send(MSG_T_SYSTEM_OPENED, "/no/such/folder", "crossing");
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

TEST_F(AppTest, TakesKeysAsSoonAsTheWindowHasTheFocusAndLosesNoneAndNoLineInAFloodOfText) {
  constexpr int kMessages = 10000;
  start();
  shakeHands();
  user.awaitWindow(kMainTitle);
  user.type("at once\n");
  hear({"at once"});
  postmaster.send(MSG_START_POLL_TIMER);  // a second one does no harm
  std::string expected;
  for (int i = 0; i < kMessages; ++i) {
    if (i % 500 == 499) {
      const std::string line = "command " + std::to_string(i);
      user.type(line + "\n");
      hear({line});
    }
    tell(std::to_string(i) + "\n");
    expected += std::to_string(i) + "\n";
  }
  awaitCommandLine();
  EXPECT_EQ(log(), expected);
}

// All the others are tried within one process: that they leave it is seen here.
TEST_F(AppTest, CarriesOutTheCommandsOfMenusAndKeys) {
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
  user.press(XK_F1);
  expectSent(MSG_HELP_REQUEST, "tessil-generator", NELLINK);
  choose(XK_h, XK_a);
  answer("About Korvane");
  folder.write("my system.sym", "symbols\n");
  folder.write("nelkv.btn", "");
  openSystem();
  user.press(XK_o, screen::kControl);
  answer("Open Symbol File", "my system.sym");
  expectSent(MSG_UI_COMMAND, "system " + (folder / "my system.sym").string(), NELKV);

  choose(XK_v, XK_Escape);
  tell("list-process");
  EXPECT_EQ(log(), "list-process");
  // What is selected when the key comes counts, not what was when the menu was seen.
  user.press(XK_c, screen::kControl);
  user.type("-");
  user.press(XK_v, screen::kControl);
  user.press(XK_Return);
  hear({"-list-process"});
  log();
  choose(XK_v, XK_s);
  // The only place of the selection is where a search from the start does not look.
  answer(kMainTitle);
  user.press(XK_F3);
  answer(kMainTitle);
  answer(kMainTitle);  // on from the start
  tell("\ntwo\n");
  choose(XK_v, XK_l);
  tell("three\n");
  EXPECT_EQ(log(), "list-process\n     1: two\n     2: three\n     3: ");
  choose(XK_v, XK_l);
  choose(XK_v, XK_t);
  tell("x\n");
  EXPECT_EQ(log(), "------------- Text Log Cleared --------------\r\nx\n");
}

}  // namespace
