// The tester's questions: every one by the keyboard, answered and cancelled, and what happens when
// something else happens while one is open.

#include "tests/e2e/app/app_fixture.h"

namespace {

using List = Parameter::List;

const List kItems{"beta", "alpha", "gamma"};

struct QuestionRow {
  int question;
  std::vector<Parameter> parameters;
  const char* typed;  ///< before Return; "\t" and " " walk through the controls
  int answer;
  Parameter value;
  const char* title = kPromptTitle;
};

const QuestionRow kQuestions[] = {
    {MSG_T_ASK_STRING, {"t", "Name?"}, "a \"name\"", MSG_UI_STRING, "a \"name\""},
    {MSG_T_ASK_STRING, {"", std::string(3000, 'x')}, "", MSG_UI_STRING, ""},
    {MSG_T_ASK_INTEGER, {"t", "Number?"}, "x17", MSG_UI_VALUE, "17"},
    // Of the fixed answers only the text fits.
    {MSG_T_ASK_INTEGER, {"Other", "Instance number (0)"}, "", MSG_UI_VALUE, "0"},
    {MSG_T_ASK_RANGE, {"t", "Which?", -1, 5}, "\t ", MSG_UI_VALUE, "*"},
    {MSG_T_ASK_LIST, {"t", "One\nof", 0, kItems}, "", MSG_UI_LIST_CHOICE, "alpha"},
    {MSG_T_ASK_BITS, {"t", "Any of", kItems}, " ", MSG_UI_BITS, List{"beta"}},
    {MSG_T_ASK_BITS, {"t", "Any of", kItems}, "", MSG_UI_BITS, List{}},
    {MSG_T_ASK_SIGNAL_PARAM,
     {"t", "Press", 0, kItems},
     "1, (. 2 .)",
     MSG_UI_SIGNAL_PARAM,
     "1, (. 2 .)"},
    {MSG_T_ASK_FILE, {"F", "/", "log", "Logs"}, "no such.log", MSG_UI_FILE, "/no such.log", "F"},
};

class QuestionTest : public AppTest {
 protected:
  void ask(const QuestionRow& row) {
    postmaster.sendRaw(toWire({kFrameDirected, row.question, NELKV, NELKVUI, row.parameters},
                              MessageDirection::kReceivedByUi));
  }
  /// A list of items, or of signal parameters, or a part of one.
  void askList(const char* text, int isToBeContinued, const List& items,
               int question = MSG_T_ASK_LIST) {
    postmaster.send(question, "t", text, isToBeContinued, items);
  }
};

TEST_F(QuestionTest, AreAnsweredByReturnAndCancelledByEscapeAndClose) {
  connect();
  for (const QuestionRow& row : kQuestions) {
    SCOPED_TRACE(describe(Message{0, row.question, 0, 0, row.parameters}));
    ask(row);
    answer(row.title, row.typed);
    postmaster.expect(row.answer, row.value);
    for (const screen::KeySymbol key : {screen::KeySymbol{XK_Escape}, kClose}) {
      ask(row);
      answer(row.title, "", key);
      postmaster.expect(MSG_UI_CANCEL);
    }
  }
  awaitCommandLine();
}

TEST_F(QuestionTest, AreAnsweredByTheProgramWhereThereIsNothingToAsk) {
  connect();
  // Of the title and of the text only the beginnings count. Intended.
  ask({MSG_T_ASK_INTEGER, {"Korvane Se", "Instance number (*) of"}, "", 0, ""});
  postmaster.expect(MSG_UI_VALUE, "*");
  askList("Which?", 0, {});
  postmaster.expect(MSG_UI_CANCEL);
  askList("Press", 1, {}, MSG_T_ASK_SIGNAL_PARAM);
  postmaster.expect(MSG_UI_CANCEL);
  // A half-filled list goes with its question.
  askList("first", 1, {"a"});
  askList("first", 0, {});
  postmaster.expect(MSG_UI_CANCEL);
  askList("second", 0, {"b"});
  answer(kPromptTitle);
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");
  user.expectText(mainWindow,
                  "< No timer values available >\n"
                  "< Error: invalid Signalparameter-Definition >\n"
                  "< No timer values available >\n");
}

TEST_F(QuestionTest, CollectListsFromSeveralMessagesAlsoWhileTheyAreShown) {
  connect();
  askList("One of these", 1, {"m", "k"});
  askList("Press", 1, {"p"}, MSG_T_ASK_SIGNAL_PARAM);
  command("still here");
  askList("", 0, {"z", "a"});
  const Window list = user.awaitWindow(kPromptTitle);
  askList("", 1, List(2000, "item"));
  expectAnswer();
  for (const screen::KeySymbol key : {XK_End, XK_Up, XK_Return}) {
    user.press(key);
  }
  postmaster.expect(MSG_UI_LIST_CHOICE, "m");
  user.awaitGone(list);
  // The other one has waited unseen.
  askList("", 0, {"q"}, MSG_T_ASK_SIGNAL_PARAM);
  answer(kPromptTitle, "v");
  postmaster.expect(MSG_UI_SIGNAL_PARAM, "v");
}

TEST_F(QuestionTest, ThatShareTheDialogAreBothAnsweredInTheOrderInWhichTheUserEndsThem) {
  connect();
  askList("Which?", 0, {"b"});
  user.awaitWindow(kPromptTitle);
  askList("Which?", 0, {"c"});
  askList("", 0, {}, MSG_T_ASK_SIGNAL_PARAM);
  postmaster.expect(MSG_UI_CANCEL);
  answer(kPromptTitle);
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");

  askList("first", 0, {"a"});
  const Window first = user.awaitWindow(kPromptTitle);
  postmaster.send(MSG_T_ASK_STRING, "t", "second");
  const Window second = user.awaitWindow(kPromptTitle, first);
  user.close(first);
  postmaster.expect(MSG_UI_CANCEL);
  askList("third", 0, {"b"});
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
  user.awaitWindow(kPromptTitle);
  command("ab");
  user.press(XK_Escape);
  answer(kPromptTitle, "", kClose);
  postmaster.expect(MSG_UI_CANCEL);
  user.awaitWindow(kMainTitle);
  postmaster.send(MSG_T_ERROR_BOX, "Error", "text");
  answer("Error", "c", kClose);
  postmaster.expect(MSG_UI_ACK);
  user.awaitWindow(kMainTitle);
  // The user's own dialogs are his at once.
  choose(XK_h, XK_a);
  answer("About Korvane");
  user.awaitWindow(kMainTitle);
  command("", {"c"});
}

TEST_F(QuestionTest, ForASearchFindOnceWhatWasAskedForTwiceAndGoOn) {
  connect();
  tell("0 Timer\n1 Timer\n");
  postmaster.send(MSG_T_FIND, 0, 1, kItems);
  user.awaitWindow(kPromptTitle);
  postmaster.send(MSG_T_FIND, 0, 1, kItems);
  expectAnswer();
  answer(kPromptTitle, "none");
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
  answer(kPromptTitle);
  postmaster.expect(MSG_UI_CANCEL);
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
  hear({"system " + path});
  awaitCommandLine();
}

}  // namespace
