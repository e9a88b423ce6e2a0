// The dialogue with the tester and the user, and the roads out.

#include "tests/e2e/app/app_fixture.h"

namespace {

TEST_F(AppTest, ShowsTheTestersTextAndSendsTheUsersCommands) {
  connect();
  postmaster.send(MSG_T_TEXT, "one\n");
  postmaster.send(MSG_T_TEXT, "");
  postmaster.send(MSG_T_TEXT, "two, unfinished");
  user.type("list-process \"a;b\" ?\n");
  postmaster.expect(MSG_UI_COMMAND, "list-process \"a;b\" ?");
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "?\?");
  user.type("\xE4\xDF\n");
  const Message umlauts = postmaster.expect(MSG_UI_COMMAND, "\xE4\xDF");
  EXPECT_EQ(umlauts.sender, NELKVUI);
  EXPECT_EQ(umlauts.dest, NELKV);
  const std::string longLine(900, 'x');
  user.type(longLine + "\n");
  postmaster.expect(MSG_UI_COMMAND, longLine);
  user.expectText(mainWindow, "one\ntwo, unfinished");
}

TEST_F(AppTest, TypedTextReachesTheCommandLineWhateverTheSizeOfTheWindow) {
  connect();
  struct Size {
    int width, height;
  };
  for (const Size& size : {Size{600, 280}, Size{900, 700}, Size{640, 400}}) {
    user.resize(mainWindow, size.width, size.height);
    awaitCommandLine();
  }
}

TEST_F(AppTest, SendsTheRestOfALineWhenTheTesterHasAnsweredAndConfirmed) {
  connect();
  user.type("a;b;c\n");
  postmaster.expect(MSG_UI_COMMAND, "a");
  postmaster.send(MSG_T_PROMPT, "a");
  expectAnswer();
  postmaster.send(MSG_T_TEXT, "output\n");
  expectAnswer();
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
  user.type("never confirmed\n");
  postmaster.expect(MSG_UI_COMMAND, "never confirmed");
  user.press(XK_Down);
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "second");
  user.press(XK_Down);
  user.press(XK_Down);
  user.press(XK_Up);
  user.press(XK_Down);
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "first");
  // What stands in the entry when the confirmation comes is put in front of it. Intended.
  user.type("x");
  expectAnswer();
  postmaster.send(MSG_T_PROMPT, "y");
  expectAnswer();
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "x");
  user.press(XK_Down);
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "xy");
}

TEST_F(AppTest, AnswersAQuestionBoxByTheButtonPressed) {
  connect();
  const auto ask = [this](const char* caption) {
    postmaster.send(MSG_T_QUESTION, caption, "Go on?");
    return user.awaitWindow(caption);
  };
  ask("Korvane - Page file");
  expectAnswer();  // the link is read under the box
  user.press(XK_Return);
  postmaster.expect(MSG_UI_OK);
  ask("Question");
  user.press(XK_Escape);
  postmaster.expect(MSG_UI_NOT_OK);
  const Window third = ask("Third");
  user.close(third);
  postmaster.expect(MSG_UI_NOT_OK);
  user.awaitGone(third);
  awaitCommandLine();
}

TEST_F(AppTest, AcknowledgesAnErrorBoxWhenItIsClosedAndAWarningNever) {
  connect();
  postmaster.send(MSG_T_ERROR_BOX, "Error", "text");
  user.awaitWindow("Error");
  expectAnswer();
  confirm("Error");
  postmaster.expect(MSG_UI_ACK);
  postmaster.send(MSG_T_WARNING_BOX, "Warning", "text\nin lines");
  confirm("Warning");
  postmaster.send(MSG_LINK_WARNING_BOX, "Link warning", std::string(4000, 'w'));
  confirm("Link warning");
  expectAnswer();
}

// Intended: the end of an inner box ends the wait of the outer one too.
TEST_F(AppTest, EndsABoxTogetherWithTheOneThatCameUpUnderIt) {
  connect();
  postmaster.send(MSG_T_ERROR_BOX, "Outer", "text");
  const Window outer = user.awaitWindow("Outer");
  postmaster.send(MSG_T_ERROR_BOX, "Inner", "text");
  confirm("Inner");
  postmaster.expect(MSG_UI_ACK);
  postmaster.expect(MSG_UI_ACK);
  user.awaitGone(outer);
  awaitCommandLine();
}

TEST_F(AppTest, FollowsTheTestersTitleAndDirectory) {
  connect();
  postmaster.send(MSG_T_TITLE, "Crossing");
  user.awaitWindow("Korvane UI - Crossing");
  postmaster.send(MSG_T_TITLE, "Other");
  user.awaitWindow("Korvane UI - Other");
  const TemporaryFolder folder;
  openSystemIn(folder.path());
  EXPECT_EQ(workingFolder(), folder.path());
  postmaster.send(MSG_T_BUSY);
  postmaster.send(MSG_T_IDLE);
  // Neither a directory to go to nor a button set: the user is asked for one.
  postmaster.send(MSG_T_SYSTEM_OPENED, "/no/such/folder", "crossing");
  user.awaitWindow("Korvane UI Load Buttons");
  expectAnswer();
  user.press(XK_Escape);
  expectAnswer();
  EXPECT_EQ(workingFolder(), folder.path());
}

TEST_F(AppTest, LeavesWhenTheUserClosesTheWindow) {
  connect();
  closeAndExpectEnd();
  EXPECT_FALSE(postmaster.hasSocketName());
  EXPECT_EQ(postmaster.tool().errors(), "");
}

class TestersEnd : public AppTest, public testing::WithParamInterface<int> {};

// No word to the tester that the user interface goes: it has said so itself.
TEST_P(TestersEnd, LeavesWithoutTellingTheTester) {
  connect();
  postmaster.send(GetParam());
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
  EXPECT_FALSE(postmaster.hasSocketName());
}

INSTANTIATE_TEST_SUITE_P(AppTest, TestersEnd, testing::Values(MSG_T_EXIT, MSG_T_EXIT_CONFIRM));

TEST_F(AppTest, LeavesUnderAnOpenBoxToo) {
  connect();
  postmaster.send(MSG_T_ERROR_BOX, "Error", "text");
  user.awaitWindow("Error");
  postmaster.send(MSG_T_EXIT);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
}

TEST_F(AppTest, LeavesWhenTheWindowIsClosedUnderAnOpenBox) {
  connect();
  postmaster.send(MSG_T_QUESTION, "Question", "text");
  user.awaitWindow("Question");
  closeAndExpectEnd();
}

TEST_F(AppTest, LosesNoKeyAndNoLineInAFloodOfText) {
  start();
  shakeHands();
  constexpr int kMessages = 10000;
  constexpr int kPerCommand = 500;
  std::string expected;
  const auto send = [&](int from) {
    for (int i = from; i < from + kPerCommand; ++i) {
      const std::string line = std::to_string(i) + "\n";
      postmaster.send(MSG_T_TEXT, line);
      expected += line;
    }
  };
  send(0);
  awaitCommandLine();
  for (int i = kPerCommand; i < kMessages; i += kPerCommand) {
    send(i);
    const std::string command = "command " + std::to_string(i);
    user.type(command + "\n");
    postmaster.expect(MSG_UI_COMMAND, command);
    postmaster.send(MSG_T_PROMPT, command);
  }
  expectAnswer();
  user.expectText(mainWindow, expected);
}

}  // namespace
