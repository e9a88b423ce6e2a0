// The dialogue with the tester and the user: commands, texts, boxes.

#include "tests/e2e/app/app_fixture.h"

namespace {

TEST_F(AppTest, SendsWhatIsTypedPieceByPieceAsTheTesterConfirmsIt) {
  connect();
  user.type("list-process \"a;b\" \xE4\n");
  const Message typed = postmaster.expect(MSG_UI_COMMAND, "list-process \"a;b\" \xE4");
  EXPECT_EQ(std::pair(typed.sender, typed.dest), std::pair(int{NELKVUI}, int{NELKV}));
  user.type("a;b;c\n");
  hear({"a"});
  postmaster.send(MSG_T_PROMPT, "a");
  tell("");
  expectAnswer();  // the rest of the line waits for some text
  tell("text\n");
  postmaster.send(MSG_T_PROMPT, "a");
  hear({"b", "c"});
  // A new line drops what the last one left waiting.
  user.type(";old\nnew;x\n");
  hear({"", "new"});
  tell("more text");
  postmaster.send(MSG_T_PROMPT, "new");
  hear({"x"});
}

TEST_F(AppTest, FollowsTheTestersTitleAndDirectory) {
  const auto expectToWorkIn = [this](const std::filesystem::path& expected) {
    expectAnswer();
    EXPECT_EQ(read_symlink(procFolder() / "cwd"), expected);
  };
  connect();
  postmaster.send(MSG_T_TITLE, "Crossing");
  user.awaitWindow("Korvane UI - Crossing");
  folder.write("nelkv.btn", "");
  openSystem();
  expectToWorkIn(folder.path());
  // Neither a directory to go to nor a button set: the user is asked for one.
  postmaster.send(MSG_T_SYSTEM_OPENED, "/no/such/folder", "crossing");
  answer("Korvane UI Load Buttons", "", XK_Escape);
  expectToWorkIn(folder.path());
  // What the user has chosen counts, even if the tester has gone elsewhere meanwhile.
  std::filesystem::create_directory(folder / "sub dir");
  postmaster.send(MSG_T_ASK_DIRECTORY, "", "");
  user.awaitWindow("Select Source Directory");
  user.press(XK_End);
  user.type("sub dir\n");
  openSystem();
  user.awaitWindow("Select Source Directory");
  user.press(XK_Return);
  postmaster.expect(MSG_UI_DIRECTORY, (folder / "sub dir").string() + "/");
  expectToWorkIn(folder / "sub dir");
}

TEST_F(AppTest, TakesKeysAsSoonAsTheWindowHasTheFocusAndLosesNoneInAFloodOfText) {
  start();
  shakeHands();
  user.awaitWindow(kMainTitle);
  user.type("at once\n");
  hear({"at once"});
  postmaster.send(MSG_START_POLL_TIMER);  // a second one does no harm
  for (int i = 0; i < 20; ++i) {
    const std::string line = "command " + std::to_string(i);
    user.type(line);
    for (int messages = 0; messages < 500; ++messages) {
      tell("line\n");
    }
    user.press(XK_Return);
    hear({line});
  }
  awaitCommandLine();
}

}  // namespace
