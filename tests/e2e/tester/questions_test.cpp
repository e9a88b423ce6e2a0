// Boxes that the tester opens on the user's screen, and his answers.

#include "tests/e2e/tester/tester_fixture.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class TesterQuestionTest : public TesterProcessTest {
 protected:
  static constexpr char kPageCaption[] = "Korvane - Page file";

  /// Lists the 18 signals, up to the question after the tenth.
  void openQuestion() {
    run("set-page-length 10");
    postmaster.send(MSG_UI_COMMAND, "list-signal");
    EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), StartsWith("> list-signal\nPress\n"));
    postmaster.expect(MSG_T_QUESTION, kPageCaption, "10 of 18 lines shown.\nShow the next page?");
  }

  /// Runs into a signal to a party that does not live, up to the box about it.
  void openErrorBox() {
    run("set-trace 0");
    run("assign-variable Button:1 party Pedestrian:7");
    run("send Arrive Button:1 2");
    postmaster.send(MSG_UI_COMMAND, "go");
    postmaster.expect(MSG_T_TEXT, "> go\n");
    postmaster.expect(MSG_T_BUSY);
    EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), HasSubstr("\nStopped; transitions: "));
    postmaster.expect(MSG_T_IDLE);
    const std::string error =
        "Dynamic error in Button:1 in Idle at Arrive, now 0.000:\n"
        "Signal Join is sent to Pedestrian:7, which does not live.";
    postmaster.expect(MSG_T_ERROR_BOX, "Korvane - Dynamic error", error);
  }
};

TEST_F(TesterQuestionTest, GoesOnWithAListAfterYesAndStopsItAfterNo) {
  connectWithUi();
  openQuestion();
  postmaster.send(MSG_UI_OK);
  EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), EndsWith("Fault(Integer)\n"));
  postmaster.expect(MSG_T_PROMPT, "list-signal");
  openQuestion();
  postmaster.send(MSG_UI_NOT_OK);
  postmaster.expect(MSG_T_TEXT, "Stopped; 8 of 18 lines not shown.\n");
  postmaster.expect(MSG_T_PROMPT, "list-signal");
}

TEST_F(TesterQuestionTest, CarriesOutCommandsThatCameBeforeTheAnswerAfterIt) {
  connectWithUi();
  openQuestion();
  postmaster.send(MSG_UI_COMMAND, "now");
  postmaster.send(MSG_UI_COMMAND, "list-breakpoint");
  postmaster.send(MSG_UI_NOT_OK);
  postmaster.expect(MSG_T_TEXT, "Stopped; 8 of 18 lines not shown.\n");
  postmaster.expect(MSG_T_PROMPT, "list-signal");
  postmaster.expect(MSG_T_TEXT, "> now\nnow = 0.000\n");
  postmaster.expect(MSG_T_PROMPT, "now");
  postmaster.expect(MSG_T_TEXT, "> list-breakpoint\nNo breakpoint is set.\n");
  postmaster.expect(MSG_T_PROMPT, "list-breakpoint");
}

TEST_F(TesterQuestionTest, ConfirmsARunThatFailedAfterItsErrorIsAcknowledged) {
  connectWithUi();
  openErrorBox();
  postmaster.send(MSG_UI_COMMAND, "now");
  postmaster.send(MSG_UI_ACK);
  postmaster.expect(MSG_T_PROMPT, "go");
  postmaster.expect(MSG_T_TEXT, "> now\nnow = 0.000\n");
  postmaster.expect(MSG_T_PROMPT, "now");
}

TEST_F(TesterQuestionTest, WarnsWithoutWaitingForAnAnswer) {
  connectWithUi();
  run("set-breakpoint Button:1");
  postmaster.send(MSG_UI_COMMAND, "reset-system");
  postmaster.expect(MSG_T_TEXT, "> reset-system\nThe system stands at its start again.\n");
  postmaster.expect(MSG_T_WARNING_BOX, "Korvane - Reset system",
                    "Lost by the reset:\n1 breakpoint");
  postmaster.expect(MSG_T_PROMPT, "reset-system");
}

TEST_F(TesterQuestionTest, EndsAQuestionWhoseUserInterfaceHasLeft) {
  connectWithUi();
  openQuestion();
  postmaster.send(MSG_UI_COMMAND, "set-breakpoint Button");
  uiLeaves();
  uiComes();
  expectGreeting();
  postmaster.send(MSG_UI_OK);
  EXPECT_EQ(run("list-breakpoint"), "> list-breakpoint\nNo breakpoint is set.\n");
}

TEST_F(TesterQuestionTest, LeavesWithItsUserInterfaceInTheMiddleOfAQuestion) {
  connectWithUi();
  openErrorBox();
  postmaster.send(MSG_UI_EXIT);
  expectOrderlyEnd();
}

}  // namespace
