// Questions of the tester's commands on the wire, and their answers.

#include "tests/e2e/tester/tester_fixture.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;

class TesterPromptTest : public TesterProcessTest {
 protected:
  TesterPromptTest() { connectWithUi(); }

  /// Sends a command that asks; its question.
  Message ask(const std::string& command, int question) {
    postmaster.send(MSG_UI_COMMAND, command);
    postmaster.expect(MSG_T_TEXT, "> " + command + '\n');
    return postmaster.expect(question);
  }
  void expectEnd(const std::string& command, const std::string& text) {
    EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), HasSubstr(text));
    postmaster.expectLater(MSG_T_PROMPT, command);
  }
};

TEST_F(TesterPromptTest, EndsEveryQuestionWhenItIsCancelled) {
  run("set-breakpoint Button");
  for (const auto& [command, question] :
       {std::pair{"assign-variable Controller cycles", MSG_T_ASK_STRING},
        {"send Press Button", MSG_T_ASK_INTEGER},
        {"show-instance", MSG_T_ASK_LIST},
        {"open-log", MSG_T_ASK_FILE},
        {"mask-trace", MSG_T_ASK_BITS},
        {"Change-Directory", MSG_T_ASK_DIRECTORY},
        {"send Arrive Button:1", MSG_T_ASK_SIGNAL_PARAM},
        {"remove-breakpoint", MSG_T_ASK_RANGE}}) {
    ask(command, question);
    postmaster.send(MSG_UI_CANCEL);
    expectEnd(command, "Cancelled.\n");
  }
  postmaster.send(MSG_UI_FIND);
  while (postmaster.expect(MSG_T_FIND).number() != 0) {
  }
  postmaster.send(MSG_UI_CANCEL);
  postmaster.expect(MSG_T_TEXT, "Search cancelled.\n");
}

TEST_F(TesterPromptTest, TakesAnswersOfEachShape) {
  ask("send Arrive Button:1", MSG_T_ASK_SIGNAL_PARAM);
  postmaster.send(MSG_UI_SIGNAL_PARAM, "7");
  expectEnd("send Arrive Button:1", "Arrive(7) sent to Button:1\n");
  ask("mask-trace", MSG_T_ASK_BITS);
  postmaster.send(MSG_UI_BITS, Parameter::List{"Button", "Controller"});
  expectEnd("mask-trace", "Only traced: Button, Controller\n");
  ask("print Button", MSG_T_ASK_RANGE);
  postmaster.send(MSG_UI_VALUE, "9");
  postmaster.expect(MSG_T_TEXT, "\"9\" is no number from 1 to 2.\n");
  postmaster.expect(MSG_T_ERROR_BOX, "Korvane - Wrong answer", "\"9\" is no number from 1 to 2.");
}

TEST_F(TesterPromptTest, OpensASystemAndWritesALogInItsDirectory) {
  const TemporaryFolder folder;
  const std::string directory = folder.path().string();
  postmaster.send(MSG_UI_COMMAND,
                  "system " + folder.write("x y.sym", "system Pedestrian Crossing\n").string());
  EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), EndsWith("x y.sym.\n"));
  postmaster.expect(MSG_T_SYSTEM_OPENED, directory, "Pedestrian Crossing");
  postmaster.expectLater(MSG_T_TITLE, "Pedestrian Crossing (x y.sym), now 0.000");
  postmaster.expectLater(MSG_T_PROMPT);
  EXPECT_EQ(ask("open-log", MSG_T_ASK_FILE).text(1), directory);
  postmaster.send(MSG_UI_FILE, (folder / "copy.log").string());
  expectEnd("open-log", "copied to the log file");
  const std::string text = run("list-timer");
  EXPECT_THAT(readFile(folder / "copy.log"), EndsWith(text));
}

}  // namespace
