// The tester's questions: every one by the keyboard, answered and cancelled, and what happens when
// something else happens while one is open.

#include "tests/e2e/app/app_fixture.h"

namespace {

using List = Parameter::List;

const List kItems{"beta", "alpha", "gamma"};

struct QuestionRow {
  const char* title;
  int question;
  std::vector<Parameter> parameters;
  const char* typed;  ///< before Return; "\t" and " " walk through the controls
  int answer;
  Parameter value;
};

const QuestionRow kQuestions[] = {
    {kPromptTitle, MSG_T_ASK_STRING, {"t", "Name?"}, "a \"name\"", MSG_UI_STRING, "a \"name\""},
    {kPromptTitle, MSG_T_ASK_STRING, {"", std::string(3000, 'x')}, "", MSG_UI_STRING, ""},
    {kPromptTitle, MSG_T_ASK_INTEGER, {"t", "Number?"}, "x17", MSG_UI_VALUE, "17"},
    // Of the fixed answers only the text fits.
    {kPromptTitle, MSG_T_ASK_INTEGER, {"Other", "Instance number (0)"}, "", MSG_UI_VALUE, "0"},
    {kPromptTitle, MSG_T_ASK_RANGE, {"t", "Which?", 2, 5}, "4", MSG_UI_VALUE, "4"},
    {kPromptTitle, MSG_T_ASK_RANGE, {"t", "Which?", -1, 5}, "\t ", MSG_UI_VALUE, "*"},
    {kPromptTitle, MSG_T_ASK_LIST, {"t", "One\nof", 0, kItems}, "", MSG_UI_LIST_CHOICE, "alpha"},
    {kPromptTitle, MSG_T_ASK_BITS, {"t", "Any of", kItems}, " ", MSG_UI_BITS, List{"beta"}},
    {kPromptTitle, MSG_T_ASK_BITS, {"t", "Any of", kItems}, "", MSG_UI_BITS, List{}},
    {kPromptTitle,
     MSG_T_ASK_SIGNAL_PARAM,
     {"t", "Press", 0, kItems},
     "1, (. 2 .)",
     MSG_UI_SIGNAL_PARAM,
     "1, (. 2 .)"},
    {"Log file",
     MSG_T_ASK_FILE,
     {"Log file", "/", "log", "Logs"},
     "no such.log",
     MSG_UI_FILE,
     "/no such.log"},
};

class QuestionTest : public AppTest {
 protected:
  void ask(const QuestionRow& row) {
    postmaster.sendRaw(toWire({kFrameDirected, row.question, NELKV, NELKVUI, row.parameters},
                              MessageDirection::kReceivedByUi));
  }
};

TEST_F(QuestionTest, AreAnsweredByReturnAndCancelledByEscapeAndClose) {
  connect();
  for (const QuestionRow& row : kQuestions) {
    SCOPED_TRACE(describe(Message{0, row.question, 0, 0, row.parameters}));
    ask(row);
    answer(row.title, row.typed);
    postmaster.expect(row.answer, row.value);
    ask(row);
    answer(row.title, "", XK_Escape);
    postmaster.expect(MSG_UI_CANCEL);
    ask(row);
    const Window closed = user.awaitWindow(row.title);
    user.close(closed);
    postmaster.expect(MSG_UI_CANCEL);
    user.awaitGone(closed);
  }
  awaitCommandLine();
}

TEST_F(QuestionTest, AreAnsweredByTheProgramWhereThereIsNothingToAsk) {
  connect();
  const List none;
  const QuestionRow rows[] = {
      {"", MSG_T_ASK_INTEGER, {"Korvane Select", "Instance number (0)"}, "", MSG_UI_VALUE, "0"},
      // Of the title and of the text only the beginnings count. Intended.
      {"", MSG_T_ASK_INTEGER, {"Korvane Se", "Instance number (*) of"}, "", MSG_UI_VALUE, "*"},
      {"", MSG_T_ASK_RANGE, {"t", "Which?", -7, -7}, "", MSG_UI_VALUE, "-7"}};
  for (const QuestionRow& row : rows) {
    ask(row);
    postmaster.expect(row.answer, row.value);
  }
  postmaster.send(MSG_T_ASK_LIST, "t", "Which?", 0, none);
  postmaster.expect(MSG_UI_CANCEL);
  postmaster.send(MSG_T_ASK_SIGNAL_PARAM, "t", "Press", 1, none);
  postmaster.expect(MSG_UI_CANCEL);
  // A half-filled list goes with its question.
  postmaster.send(MSG_T_ASK_LIST, "t", "first", 1, List{"a"});
  postmaster.send(MSG_T_ASK_LIST, "t", "first", 0, none);
  postmaster.expect(MSG_UI_CANCEL);
  postmaster.send(MSG_T_ASK_LIST, "t", "second", 0, List{"b"});
  answer(kPromptTitle);
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");
  user.expectText(mainWindow,
                  "< No timer values available >\n"
                  "< Error: invalid Signalparameter-Definition >\n"
                  "< No timer values available >\n");
}

TEST_F(QuestionTest, CollectListsFromSeveralMessagesAlsoWhileTheyAreShown) {
  connect();
  postmaster.send(MSG_T_ASK_LIST, "t", "One of these", 1, List{"m", "k"});
  postmaster.send(MSG_T_ASK_SIGNAL_PARAM, "t", "Press", 1, List{"p"});
  command("still here");
  postmaster.send(MSG_T_ASK_LIST, "t", "", 0, List{"z", "a"});
  const Window list = user.awaitWindow(kPromptTitle);
  for (int i = 0; i < 20; ++i) {
    List items;
    for (int j = 0; j < 100; ++j) {
      items.push_back("item " + std::to_string(i * 100 + j));
    }
    postmaster.send(MSG_T_ASK_LIST, "t", "", 1, items);
  }
  expectAnswer();
  for (const screen::KeySymbol key : {XK_End, XK_Up, XK_Return}) {
    user.press(key);
  }
  postmaster.expect(MSG_UI_LIST_CHOICE, "m");
  user.awaitGone(list);
  // The other one has waited unseen.
  postmaster.send(MSG_T_ASK_SIGNAL_PARAM, "t", "", 0, List{"q"});
  answer(kPromptTitle, "v");
  postmaster.expect(MSG_UI_SIGNAL_PARAM, "v");
}

TEST_F(QuestionTest, ThatShareTheDialogAreBothAnsweredInTheOrderInWhichTheUserEndsThem) {
  connect();
  postmaster.send(MSG_T_ASK_LIST, "t", "Which?", 0, List{"b"});
  Window first = user.awaitWindow(kPromptTitle);
  postmaster.send(MSG_T_ASK_LIST, "t", "Which?", 0, List{"c"});
  postmaster.send(MSG_T_ASK_SIGNAL_PARAM, "t", "", 0, List{});
  postmaster.expect(MSG_UI_CANCEL);
  user.press(XK_Return);
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");
  user.awaitGone(first);

  postmaster.send(MSG_T_ASK_LIST, "t", "first", 0, List{"a"});
  first = user.awaitWindow(kPromptTitle);
  postmaster.send(MSG_T_ASK_STRING, "t", "second");
  const Window second = user.awaitWindow(kPromptTitle, first);
  user.close(first);
  postmaster.expect(MSG_UI_CANCEL);
  postmaster.send(MSG_T_ASK_LIST, "t", "third", 0, List{"b"});
  const Window third = user.awaitWindow(kPromptTitle, second);
  user.press(XK_Return);
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");
  user.awaitGone(third);
  EXPECT_EQ(user.awaitWindow(kPromptTitle), second);
  // Text, boxes and other questions go on under an open one.
  postmaster.send(MSG_T_TEXT, "text goes on\n");
  postmaster.send(MSG_T_ERROR_BOX, "Error", "text");
  answer("Error");
  postmaster.expect(MSG_UI_ACK);
  postmaster.send(MSG_T_ASK_RANGE, "t", "inner", 1, 9);
  const Window inner = user.awaitWindow(kPromptTitle, second);
  user.type("5\n");
  postmaster.expect(MSG_UI_VALUE, "5");
  user.awaitGone(inner);
  answer(kPromptTitle, "c");
  postmaster.expect(MSG_UI_STRING, "c");
  awaitCommandLine();
}

TEST_F(QuestionTest, TakeNoKeysThatWereTypedAheadAndBringAnIconBack) {
  constexpr int kForEver = 1 << 30;
  connect(kForEver);
  user.iconify(mainWindow);
  postmaster.send(MSG_T_ASK_STRING, "t", "Name?");
  const Window prompt = user.awaitWindow(kPromptTitle);
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
  answer("About Korvane");
  user.awaitWindow(kMainTitle);
  user.press(XK_Return);
  postmaster.expect(MSG_UI_COMMAND, "c");
}

TEST_F(QuestionTest, ForASearchFindOnceWhatWasAskedForTwiceAndGoOn) {
  connect();
  tell("0 Timer\n1 Timer\n");
  postmaster.send(MSG_T_FIND, 0, 1, kItems);
  const Window dialog = user.awaitWindow(kPromptTitle);
  postmaster.send(MSG_T_FIND, 0, 1, kItems);
  expectAnswer();
  user.type("none\n");
  user.awaitGone(dialog);
  answer(kMainTitle);
  expectAnswer();
  EXPECT_EQ(user.awaitWindow(kMainTitle), mainWindow);

  postmaster.send(MSG_T_FIND, 1, 1, List{"Process"});
  postmaster.send(MSG_T_FIND, 1, 2, List{});
  postmaster.send(MSG_T_FIND, 0, 3, List{"Timer"});
  answer(kPromptTitle, "Timer");
  expectAnswer();
  awaitCommandLine();
  user.press(XK_F3);
  answer(kMainTitle);  // the box that says: not found; finds the same from the start
  // OK with nothing to search for is a cancelled search.
  postmaster.send(MSG_T_FIND, 0, 2, List{});
  user.awaitWindow(kPromptTitle);
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

TEST_F(QuestionTest, OfTheUserOpenTheSystemThatHeChooses) {
  const TemporaryFolder folder;
  const std::string path = folder.write("my system.sym", "symbols\n").string();
  connect();
  folder.write("nelkv.btn", "");
  openSystemIn(folder.path());
  expectAnswer();
  user.press(XK_o, screen::kControl);
  answer("Open Symbol File", "my system.sym");
  postmaster.expect(MSG_UI_COMMAND, "system " + path);
  awaitCommandLine();
}

}  // namespace
