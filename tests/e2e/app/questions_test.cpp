// The tester's questions: lists in several messages, and what happens when something else happens
// while one is open. One after the other a day of work has them.

#include "tests/e2e/app/app_fixture.h"

namespace {

using List = Parameter::List;

const List kChoices{"beta", "alpha", "gamma"};

class QuestionTest : public AppTest {
 protected:
  /// A list of items, or of signal parameters, or a part of one.
  void askList(const char* text, int isToBeContinued, const List& items,
               int question = MSG_T_ASK_LIST) {
    postmaster.send(question, "t", text, isToBeContinued, items);
  }
};

TEST_F(QuestionTest, CollectListsFromSeveralMessagesOrAreCancelledWithoutAnyItem) {
  connect();
  askList("One of these", 1, {"m", "k"});
  askList("Press", 1, {"p"}, MSG_T_ASK_SIGNAL_PARAM);
  askList("Press", 1, {}, MSG_T_ASK_SIGNAL_PARAM);
  postmaster.expect(MSG_UI_CANCEL);
  user.type("still here\n");
  hear({"still here"});
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
  expectInLog("< Error: invalid Signalparameter-Definition >");
  // A half-filled list goes with its question.
  askList("first", 1, {"a"});
  askList("first", 0, {});
  postmaster.expect(MSG_UI_CANCEL);
  askList("second", 0, {"b"});
  answer(kPromptTitle);
  postmaster.expect(MSG_UI_LIST_CHOICE, "b");
}

TEST_F(QuestionTest, AreEachAnsweredInTheOrderInWhichTheUserEndsThem) {
  connect();
  askList("Which?", 0, {"b"});
  user.awaitWindow(kPromptTitle);
  askList("Which?", 0, {"c"});  // shares the dialog
  for (const int question : {MSG_T_ASK_LIST, MSG_T_ASK_SIGNAL_PARAM}) {
    askList("", 0, {}, question);  // does not end what is up
    postmaster.expect(MSG_UI_CANCEL);
  }
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
  answer(kPromptTitle, "c");
  postmaster.expect(MSG_UI_STRING, "c");
  awaitCommandLine();
}

TEST_F(QuestionTest, ForASearchFindOnceWhatWasAskedForTwice) {
  connect();
  postmaster.send(MSG_T_FIND, 0, 1, kChoices);
  user.awaitWindow(kPromptTitle);
  postmaster.send(MSG_T_FIND, 0, 1, kChoices);
  expectAnswer();
  answer(kPromptTitle, "none");
  answer(kMainTitle);  // the box that says: not found
  expectAnswer();
  EXPECT_EQ(user.awaitWindow(kMainTitle), mainWindow);
}

}  // namespace
