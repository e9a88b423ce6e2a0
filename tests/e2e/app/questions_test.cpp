// The tester's questions: every one by the keyboard, answered and cancelled, and what happens when
// something else happens while one is open.

#include "tests/e2e/app/app_fixture.h"

namespace {

constexpr const char* kPrompt = "Korvane Select";
constexpr const char* kDirectoryDialog = "Select Source Directory";
const Parameter::List kItems{"beta", "alpha", "gamma"};

using Step = std::function<void(ScriptedPostmaster&)>;

struct QuestionCase {
  const char* name;
  const char* title;
  Step ask;
  std::string typed;  ///< before Return
  Step expectAnswer;
};

void PrintTo(const QuestionCase& question, std::ostream* out) {
  *out << question.name;
}

const QuestionCase kQuestions[] = {
    {"String", kPrompt, [](auto& p) { p.send(MSG_T_ASK_STRING, "title", "Name?"); }, "a \"name\"",
     [](auto& p) { p.expect(MSG_UI_STRING, "a \"name\""); }},
    {"EmptyString", kPrompt, [](auto& p) { p.send(MSG_T_ASK_STRING, "", std::string(3000, 'x')); },
     "", [](auto& p) { p.expect(MSG_UI_STRING, ""); }},
    {"Integer", kPrompt, [](auto& p) { p.send(MSG_T_ASK_INTEGER, "t", "Number?"); }, "x17",
     [](auto& p) { p.expect(MSG_UI_VALUE, "17"); }},
    // Of the fixed answers only the text fits.
    {"OtherInteger", kPrompt,
     [](auto& p) { p.send(MSG_T_ASK_INTEGER, "Other", "Instance number (0)"); }, "",
     [](auto& p) { p.expect(MSG_UI_VALUE, "0"); }},
    {"Range", kPrompt, [](auto& p) { p.send(MSG_T_ASK_RANGE, "t", "Which?", 2, 5); }, "4",
     [](auto& p) { p.expect(MSG_UI_VALUE, "4"); }},
    {"All", kPrompt, [](auto& p) { p.send(MSG_T_ASK_RANGE, "t", "Which?", -1, 5); }, "\t ",
     [](auto& p) { p.expect(MSG_UI_VALUE, "*"); }},
    {"List", kPrompt, [](auto& p) { p.send(MSG_T_ASK_LIST, "t", "One of\nthese", 0, kItems); }, "",
     [](auto& p) { p.expect(MSG_UI_LIST_CHOICE, "alpha"); }},
    {"Bits", kPrompt, [](auto& p) { p.send(MSG_T_ASK_BITS, "t", "Any of these", kItems); }, " ",
     [](auto& p) { p.expect(MSG_UI_BITS, Parameter::List{"beta"}); }},
    {"NoBits", kPrompt, [](auto& p) { p.send(MSG_T_ASK_BITS, "t", "Any of these", kItems); }, "",
     [](auto& p) { p.expect(MSG_UI_BITS, Parameter::List{}); }},
    {"SignalParameters", kPrompt,
     [](auto& p) { p.send(MSG_T_ASK_SIGNAL_PARAM, "t", "Press", 0, kItems); }, "1, (. 2 .)",
     [](auto& p) { p.expect(MSG_UI_SIGNAL_PARAM, "1, (. 2 .)"); }},
    {"File", "Log file", [](auto& p) { p.send(MSG_T_ASK_FILE, "Log file", "/", "log", "Logs"); },
     "no such.log", [](auto& p) { p.expect(MSG_UI_FILE, "/no such.log"); }},
};

class Questions : public AppTest, public testing::WithParamInterface<QuestionCase> {
 protected:
  void typeWithTabs(const std::string& text) {
    for (const char c : text) {
      if (c == '\t') {
        user.press(XK_Tab);
      } else {
        user.type({&c, 1});
      }
    }
  }
};

TEST_P(Questions, AreAnsweredByReturnAndCancelledByEscapeAndClose) {
  const QuestionCase& question = GetParam();
  connect();
  question.ask(postmaster);
  const Window first = user.awaitWindow(question.title);
  typeWithTabs(question.typed);
  user.press(XK_Return);
  question.expectAnswer(postmaster);
  user.awaitGone(first);
  question.ask(postmaster);
  const Window second = user.awaitWindow(question.title, first);
  user.press(XK_Escape);
  postmaster.expect(MSG_UI_CANCEL);
  user.awaitGone(second);
  question.ask(postmaster);
  const Window third = user.awaitWindow(question.title, second);
  user.close(third);
  postmaster.expect(MSG_UI_CANCEL);
  user.awaitGone(third);
  awaitCommandLine();
}

TEST_P(Questions, AreClosedWhenTheTesterEndsTheProgram) {
  connect();
  GetParam().ask(postmaster);
  user.awaitWindow(GetParam().title);
  postmaster.send(MSG_T_EXIT);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
}

INSTANTIATE_TEST_SUITE_P(AppTest, Questions, testing::ValuesIn(kQuestions),
                         [](const auto& question) { return question.param.name; });

TEST_F(AppTest, AnswersByItselfWhereThereIsNothingToAsk) {
  connect();
  postmaster.send(MSG_T_ASK_INTEGER, "Korvane Select", "Instance number (0)");
  postmaster.expect(MSG_UI_VALUE, "0");
  // Of the title and of the text only the beginnings count. Intended.
  postmaster.send(MSG_T_ASK_INTEGER, "Korvane Se", "Instance number (*) of Button");
  postmaster.expect(MSG_UI_VALUE, "*");
  postmaster.send(MSG_T_ASK_RANGE, "t", "Which?", -7, -7);
  postmaster.expect(MSG_UI_VALUE, "-7");
  postmaster.send(MSG_T_ASK_LIST, "t", "Which?", 0, Parameter::List{});
  postmaster.expect(MSG_UI_CANCEL);
  postmaster.send(MSG_T_ASK_SIGNAL_PARAM, "t", "Press", 1, Parameter::List{});
  postmaster.expect(MSG_UI_CANCEL);
  user.expectText(mainWindow,
                  "< No timer values available >\n"
                  "< Error: invalid Signalparameter-Definition >\n");
}

TEST_F(AppTest, CollectsListsFromSeveralMessages) {
  connect();
  postmaster.send(MSG_T_ASK_LIST, "t", "One of these", 1, Parameter::List{"m", "k"});
  postmaster.send(MSG_T_ASK_SIGNAL_PARAM, "t", "Press", 1, Parameter::List{"p"});
  user.type("still here\n");
  postmaster.expect(MSG_UI_COMMAND, "still here");
  postmaster.send(MSG_T_ASK_LIST, "t", "", 0, Parameter::List{"z", "a"});
  const Window list = user.awaitWindow(kPrompt);
  user.press(XK_End);
  user.press(XK_Up);
  user.press(XK_Return);
  postmaster.expect(MSG_UI_LIST_CHOICE, "m");
  user.awaitGone(list);
  // The other one has waited unseen.
  postmaster.send(MSG_T_ASK_SIGNAL_PARAM, "t", "", 0, Parameter::List{"q"});
  user.awaitWindow(kPrompt, list);
  user.type("v\n");
  postmaster.expect(MSG_UI_SIGNAL_PARAM, "v");
}

TEST_F(AppTest, FillsALongListWhileItIsShown) {
  connect();
  postmaster.send(MSG_T_ASK_LIST, "t", "Which?", 0, Parameter::List{"00001"});
  user.awaitWindow(kPrompt);
  for (int i = 0; i < 20; ++i) {
    Parameter::List items;
    for (int j = 0; j < 100; ++j) {
      items.push_back("item " + std::to_string(i * 100 + j));
    }
    postmaster.send(MSG_T_ASK_LIST, "t", "", 1, items);
  }
  expectAnswer();
  user.press(XK_Return);
  postmaster.expect(MSG_UI_LIST_CHOICE, "00001");
}

TEST_F(AppTest, AnswersBothOfTwoListsThatShareTheDialog) {
  connect();
  postmaster.send(MSG_T_ASK_LIST, "t", "Which?", 0, Parameter::List{"b"});
  const Window dialog = user.awaitWindow(kPrompt);
  postmaster.send(MSG_T_ASK_LIST, "t", "Which?", 0, Parameter::List{"c"});
  postmaster.send(MSG_T_ASK_SIGNAL_PARAM, "t", "", 0, Parameter::List{});
  postmaster.expect(MSG_UI_CANCEL);
  user.press(XK_Return);
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");
  user.awaitGone(dialog);
  awaitCommandLine();
}

TEST_F(AppTest, AnswersQuestionsInTheOrderInWhichTheUserEndsThem) {
  connect();
  postmaster.send(MSG_T_ASK_LIST, "t", "first", 0, Parameter::List{"a"});
  const Window first = user.awaitWindow(kPrompt);
  postmaster.send(MSG_T_ASK_STRING, "t", "second");
  const Window second = user.awaitWindow(kPrompt, first);
  user.close(first);
  postmaster.expect(MSG_UI_CANCEL);
  postmaster.send(MSG_T_ASK_LIST, "t", "third", 0, Parameter::List{"b"});
  const Window third = user.awaitWindow(kPrompt, second);
  user.press(XK_Return);
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");
  user.awaitGone(third);
  EXPECT_EQ(user.awaitWindow(kPrompt), second);
  user.type("c\n");
  postmaster.expect(MSG_UI_STRING, "c");
  awaitCommandLine();
}

TEST_F(AppTest, DropsAHalfFilledListWithItsQuestion) {
  connect();
  postmaster.send(MSG_T_ASK_LIST, "t", "first", 1, Parameter::List{"a"});
  postmaster.send(MSG_T_ASK_LIST, "t", "first", 0, Parameter::List{});
  postmaster.expect(MSG_UI_CANCEL);
  postmaster.send(MSG_T_ASK_LIST, "t", "second", 0, Parameter::List{"b"});
  user.awaitWindow(kPrompt);
  user.press(XK_Return);
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");
}

TEST_F(AppTest, KeysThatWereTypedAheadAnswerNothingThatComesUpMeanwhile) {
  constexpr int kForEver = 1 << 30;
  start({}, {}, kForEver);
  shakeHands();
  awaitCommandLine();
  postmaster.send(MSG_T_ASK_STRING, "t", "Name?");
  const Window prompt = user.awaitWindow(kPrompt);
  user.type("ab\n");
  postmaster.expect(MSG_UI_COMMAND, "ab");
  user.press(XK_Escape);
  user.close(prompt);
  postmaster.expect(MSG_UI_CANCEL);
  user.awaitGone(prompt);
  user.awaitWindow(kMainTitle);
  postmaster.send(MSG_T_ERROR_BOX, "Error", "text");
  const Window box = user.awaitWindow("Error");
  user.type("c");
  user.close(box);
  postmaster.expect(MSG_UI_ACK);
  user.awaitGone(box);
  user.awaitWindow(kMainTitle);
  // The user's own dialogs are his at once.
  choose(XK_h, XK_a);
  confirm("About Korvane");
  user.awaitWindow(kMainTitle);
  user.press(XK_Return);
  postmaster.expect(MSG_UI_COMMAND, "c");
}

TEST_F(AppTest, ComesBackFromItsIconWithAQuestion) {
  connect();
  user.iconify(mainWindow);
  postmaster.send(MSG_T_ASK_STRING, "t", "Name?");
  user.awaitWindow(kPrompt);
  user.type("a\n");
  postmaster.expect(MSG_UI_STRING, "a");
  awaitCommandLine();
}

TEST_F(AppTest, AsksOnceWhetherToSaveHoweverOftenItIsClosed) {
  const TemporaryFolder folder;
  connect();
  openSystemIn(folder.path());
  choose(XK_b, XK_g);
  const Window group = user.awaitWindow("Korvane UI Add Group");
  user.type("Mine\n");
  user.awaitGone(group);
  for (int i = 0; i < 3; ++i) {
    user.close(mainWindow);
  }
  const Window question = user.awaitWindow("Korvane UI Exit");
  expectAnswer();
  user.press(XK_Escape);
  user.awaitGone(question);
  awaitCommandLine();
}

TEST_F(AppTest, SearchesOnceForWhatWasAskedForTwice) {
  connect();
  postmaster.send(MSG_T_FIND, 0, 1, kItems);
  const Window dialog = user.awaitWindow(kPrompt);
  postmaster.send(MSG_T_FIND, 0, 1, kItems);
  expectAnswer();
  user.type("none\n");
  user.awaitGone(dialog);
  const Window box = user.awaitWindow(kMainTitle, mainWindow);
  user.press(XK_Return);
  user.awaitGone(box);
  expectAnswer();
  EXPECT_EQ(user.awaitWindow(kMainTitle, box), mainWindow);
}

TEST_F(AppTest, AnswersAQuestionUnderAnotherOneWhenItsTurnComes) {
  connect();
  postmaster.send(MSG_T_ASK_STRING, "t", "outer");
  const Window outer = user.awaitWindow(kPrompt);
  postmaster.send(MSG_T_TEXT, "text goes on\n");
  postmaster.send(MSG_T_ERROR_BOX, "Error", "text");
  confirm("Error");
  postmaster.expect(MSG_UI_ACK);
  postmaster.send(MSG_T_ASK_RANGE, "t", "inner", 1, 9);
  const Window inner = user.awaitWindow(kPrompt, outer);
  user.type("5\n");
  postmaster.expect(MSG_UI_VALUE, "5");
  user.awaitGone(inner);
  user.awaitWindow(kPrompt);
  user.type("done\n");
  postmaster.expect(MSG_UI_STRING, "done");
  user.awaitGone(outer);
  awaitCommandLine();
}

TEST_F(AppTest, LeavesWhenThePostmasterDiesUnderAnOpenQuestion) {
  connect();
  postmaster.send(MSG_T_FIND, 0, 1, kItems);
  user.awaitWindow(kPrompt);
  postmaster.hangUp();
  user.press(XK_Escape);  // the answer finds nobody
  confirm(kLostTitle);
  EXPECT_EQ(postmaster.exitStatus(), 0);
}

TEST_F(AppTest, AsksForADirectoryAndGoesThere) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder.path() / "sub dir");
  connect();
  openSystemIn(folder.path());
  postmaster.send(MSG_T_ASK_DIRECTORY, "", "");
  const Window unchanged = user.awaitWindow(kDirectoryDialog);
  user.press(XK_Escape);
  postmaster.expect(MSG_UI_CANCEL);
  user.awaitGone(unchanged);
  postmaster.send(MSG_T_ASK_DIRECTORY, "", "");
  const Window changed = user.awaitWindow(kDirectoryDialog, unchanged);
  user.press(XK_End);
  user.type("sub dir\n");  // goes there
  const std::string expected = (folder.path() / "sub dir").string() + "/";
  user.type("\n");
  postmaster.expect(MSG_UI_DIRECTORY, expected);
  expectAnswer();
  user.awaitGone(changed);
  EXPECT_EQ(workingFolder(), folder.path() / "sub dir");
}

TEST_F(AppTest, FindsWhatTheDialogAskedForAndGoesOn) {
  connect();
  postmaster.send(MSG_T_TEXT, "0 Timer\n1 Timer\n");
  expectAnswer();
  postmaster.send(MSG_T_FIND, 1, 1, Parameter::List{"Process"});
  postmaster.send(MSG_T_FIND, 1, 2, Parameter::List{});
  postmaster.send(MSG_T_FIND, 0, 3, Parameter::List{"Timer"});
  const Window dialog = user.awaitWindow(kPrompt);
  user.type("Timer\n");
  user.awaitGone(dialog);
  expectAnswer();
  awaitCommandLine();
  user.press(XK_F3);
  user.awaitWindow(kMainTitle, mainWindow);  // the box that says: not found
  user.press(XK_Return);                     // finds the same from the start
  // OK with nothing to search for is a cancelled search.
  postmaster.send(MSG_T_FIND, 0, 2, Parameter::List{});
  user.awaitWindow(kPrompt, dialog);
  user.press(XK_BackSpace);
  user.press(XK_Return);
  postmaster.expect(MSG_UI_CANCEL);
  // The dialog has left the hit selected.
  awaitCommandLine();
  user.press(XK_c, screen::kControl);
  user.press(XK_v, screen::kControl);
  user.type("\n");
  postmaster.expect(MSG_UI_COMMAND, "Timer");
}

TEST_F(AppTest, OpensTheSystemThatTheUserChooses) {
  const TemporaryFolder folder;
  const std::string path = (folder.path() / "my system.sym").string();
  std::ofstream(path) << "symbols\n";
  connect();
  openSystemIn(folder.path());
  user.press(XK_o, screen::kControl);
  const Window form = user.awaitWindow("Open Symbol File");
  user.type("my system.sym\n");
  postmaster.expect(MSG_UI_COMMAND, "system " + path);
  user.awaitGone(form);
  awaitCommandLine();
}

}  // namespace
