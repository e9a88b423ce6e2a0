// A working day at the window, from its start to its end. What the tester gets is looked at step by
// step; what the user sees is copied from the log into the command line, and sent.

#include "tests/e2e/app/app_fixture.h"

namespace {

const Parameter::List kItems{"beta", "alpha", "gamma"};

struct Question {
  int tag;
  std::vector<Parameter> parameters;
  const char* typed;  ///< before Return; "\t" and " " walk through the controls
  std::string answer;
  const char* title = kPromptTitle;
  int cancel = MSG_UI_CANCEL;
};

const Question kQuestions[] = {
    {MSG_T_QUESTION, {"Box", "Go on?"}, "", "1000 MSG_UI_OK", "Box", MSG_UI_NOT_OK},
    {MSG_T_ERROR_BOX, {"Box", "No."}, "", "1011 MSG_UI_ACK", "Box", MSG_UI_ACK},
    {MSG_T_ASK_STRING, {"t", "Name?"}, "a b", "1004 MSG_UI_STRING \"a b\""},
    // Of the fixed answers only the text fits.
    {MSG_T_ASK_INTEGER, {"Other", "Instance number (0)"}, "x17", "1005 MSG_UI_VALUE \"17\""},
    {MSG_T_ASK_RANGE, {"t", "Which?", -1, 5}, "\t ", "1005 MSG_UI_VALUE \"*\""},
    {MSG_T_ASK_LIST, {"t", "One\nof", 0, kItems}, "", "1006 MSG_UI_LIST_CHOICE \"alpha\""},
    {MSG_T_ASK_BITS, {"t", "Any of", kItems}, " ", "1009 MSG_UI_BITS [\"beta\"]"},
    {MSG_T_ASK_BITS, {"t", "Any of", kItems}, "", "1009 MSG_UI_BITS []"},
    {MSG_T_ASK_SIGNAL_PARAM, {"t", "Of", 0, kItems}, "1, a", "1013 MSG_UI_SIGNAL_PARAM \"1, a\""},
    {MSG_T_ASK_FILE,
     {"F", "/", "log", "Logs"},
     "no such.log",
     "1008 MSG_UI_FILE \"/no such.log\"",
     "F"},
};

constexpr const char* kDaySet = ":Mine\nOne\ndo One;and more\n:MENU &More\n&First\nsend;as one\n";
constexpr const char* kChangedSet =
    ":Mine\nOne\ndo One;and more\nTwo\ndo Two\n:Second\n:Third\n:MENU &More\n&First\nsend;as one\n";

class DayTest : public AppTest {
 protected:
  void opensASystem();
  void worksWithButtons();
  void answersQuestions();
  void looksAtTheLog();
  void goesHome();

  /// One message with this text, to this tool; then the keyboard is back at the command line.
  void expectSent(int tag, const std::string& text, int dest,
                  SourceLine where = SourceLine::current()) {
    const Message sent = postmaster.expect({tag, where});
    EXPECT_EQ(std::pair(sent.text(), sent.dest), std::pair(text, dest));
    awaitCommandLine();
  }
};

void DayTest::opensASystem() {
  folder.write("my system.sym", "symbols\n");
  folder.write("day.btn", kDaySet);
  user.press(XK_o, screen::kControl);
  answer("Open Symbol File", "my system.sym");
  expectSent(MSG_UI_COMMAND, "system " + (folder / "my system.sym").string(), NELKV);
  postmaster.send(MSG_T_PROMPT, "system");
  postmaster.send(MSG_T_SYSTEM_OPENED, folder.path().string(), "my system");
  answer("Korvane UI Load Buttons", "day.btn");  // there is no nelkv.btn
  awaitCommandLine();
}

void DayTest::worksWithButtons() {
  choose(XK_m, XK_f);
  hear({"send;as one"});
  click(30, 112);  // One
  hear({"do One"});
  tell("done\n");
  postmaster.send(MSG_T_PROMPT, "do One");
  hear({"and more"});
  awaitCommandLine();
  choose(XK_f, XK_d);
  expectSent(MSG_UI_COMMAND, "Change-Directory", NELKV);
  user.press(XK_F1);
  expectSent(MSG_HELP_REQUEST, "tessil-generator", NELLINK);
  choose(XK_h, XK_a);
  answer("About Korvane");
  awaitCommandLine();
  awaitSleep();
  user.press(XK_Tab);
  user.press(XK_space);
  user.awaitMenu();
  user.press(XK_a);
  answer("Korvane UI Add Button", "Two\tdo Two");
  awaitCommandLine();
  addGroup("Second");
}

void DayTest::answersQuestions() {
  screen::KeySymbol cancel = XK_Escape;
  for (const Question& row : kQuestions) {
    const Message question{kFrameDirected, row.tag, NELKV, NELKVUI, row.parameters};
    SCOPED_TRACE(describe(question));
    postmaster.sendRaw(toWire(question));
    answer(row.title, row.typed);
    EXPECT_EQ(describe(postmaster.expect(std::stoi(row.answer))), row.answer);
    postmaster.sendRaw(toWire(question));
    answer(row.title, "", cancel);
    postmaster.expect(row.cancel);
    cancel = cancel == kClose ? XK_Escape : kClose;
  }
  awaitCommandLine();
}

void DayTest::looksAtTheLog() {
  constexpr const char* kCleared = "------------- Text Log Cleared --------------";
  choose(XK_v, XK_t);
  expectInLog(kCleared);
  choose(XK_v, XK_s);
  // The only place of the selection is where a search from the start does not look.
  answer(kMainTitle);
  awaitCommandLine();
  tell("numbered\n");
  choose(XK_v, XK_f);
  postmaster.expect(MSG_UI_FIND);
  postmaster.send(MSG_T_FIND, 0, 1, kItems);
  answer(kPromptTitle, "umbe");
  awaitCommandLine();
  user.press(XK_c, screen::kControl);
  user.press(XK_v, screen::kControl);
  user.press(XK_Return);
  expectSent(MSG_UI_COMMAND, "umbe", NELKV);
}

// Asked once however often the window is closed, and for a name and about a file once in a day.
void DayTest::goesHome() {
  choose(XK_b, XK_s);
  answer("Korvane UI Save Buttons");
  answer("Korvane UI Error");  // whether to overwrite
  awaitCommandLine();
  addGroup("Third");
  for (int i = 0; i < 3; ++i) {
    user.close(mainWindow);
  }
  user.awaitWindow(kExitTitle);
  expectAnswer();
  answer(kExitTitle, "", XK_Escape);
  awaitCommandLine();
  user.close(mainWindow);
  answer(kExitTitle);
  postmaster.expect(MSG_UI_EXIT);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
  EXPECT_EQ(readFile(folder / "day.btn"), kChangedSet);
}

TEST_F(DayTest, Passes) {
  connect();
  opensASystem();
  worksWithButtons();
  answersQuestions();
  looksAtTheLog();
  goesHome();
}

}  // namespace
