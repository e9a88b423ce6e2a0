// Commands that ask for what they need: the question, what an answer does, and that a cancelled
// one does nothing.

#include "tests/support/temporary_folder.h"
#include "tests/unit/tester/debugger_fixture.h"

namespace tester {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr char kWrongAnswer[] = "! Korvane - Wrong answer|";

/// A command, the question it asks and an answer.
struct Exchange {
  std::string command;
  std::string question;  ///< its beginning
  Answer answer;
  std::string effect;  ///< part of what the answer prints, or of the error box it leads to
  bool isRefused = false;
};

void PrintTo(const Exchange& exchange, std::ostream* stream) {
  *stream << exchange.command << " <- " << exchange.answer.text;
}

class PromptTest : public DebuggerTest {
 protected:
  PromptTest() {
    run("set-trace 0");
    run("proceed-until 1");
    run("set-breakpoint Button");
    run("set-breakpoint Controller");
    run("add-mark here");
  }

  std::string answer(const Answer& reply) {
    dialogue.text.clear();
    debugger.takeAnswer(reply);
    return dialogue.text;
  }
  /// The question that the command asks before it is confirmed.
  std::string ask(const std::string& command) {
    dialogue.boxes.clear();
    dialogue.confirmed.clear();
    run(command);
    EXPECT_TRUE(dialogue.confirmed.empty());
    return dialogue.boxes.empty() ? "none" : dialogue.boxes.back();
  }
};

class ExchangeTest : public PromptTest, public testing::WithParamInterface<Exchange> {};

TEST_P(ExchangeTest, TakesTheAnswerAndEndsCleanlyWhenCancelled) {
  const Exchange& row = GetParam();
  const Answer cancelled{AnswerKind::kCancelled};
  EXPECT_THAT(ask(row.command), StartsWith(row.question));
  EXPECT_EQ(answer({AnswerKind::kAcknowledged}), "");
  EXPECT_EQ(answer(cancelled), "Cancelled.\n");
  EXPECT_THAT(dialogue.confirmed, ElementsAre(row.command));
  // Asked again, it finds all as it was.
  EXPECT_THAT(ask(row.command), StartsWith(row.question));
  const std::string text = answer(row.answer);
  if (row.isRefused) {
    EXPECT_THAT(dialogue.boxes.back(), StartsWith(kWrongAnswer));
    EXPECT_THAT(dialogue.boxes.back(), HasSubstr(row.effect));
    answer({AnswerKind::kAcknowledged});
  } else {
    EXPECT_THAT(text, HasSubstr(row.effect));
  }
  EXPECT_THAT(dialogue.confirmed, ElementsAre(row.command));
}

constexpr AnswerKind kText = AnswerKind::kText;
constexpr AnswerKind kNumber = AnswerKind::kNumber;
constexpr AnswerKind kChoice = AnswerKind::kChoice;
constexpr AnswerKind kBits = AnswerKind::kBits;
constexpr AnswerKind kDirectory = AnswerKind::kDirectory;
constexpr AnswerKind kFile = AnswerKind::kFile;
constexpr AnswerKind kParameters = AnswerKind::kParameters;

INSTANTIATE_TEST_SUITE_P(
    Prompts, ExchangeTest,
    testing::Values(
        Exchange{"show-instance",
                 "choice Instance:|Supervisor:1",
                 {kChoice, "Controller:1"},
                 "timer Phase at 15.000"},
        Exchange{"show-instance", "choice", {kChoice, "-"}, "\"-\" is none of the choices", true},
        Exchange{"print Button",
                 "range Instance number of Button:|1|2",
                 {kNumber, "2"},
                 "Button:2 in Idle"},
        Exchange{"print Button", "range", {kNumber, "0"}, "\"0\" is no number from 1 to 2.", true},
        Exchange{"list-queue Button",
                 "number Instance number (*) of Button",
                 {kNumber, "*"},
                 "Button:1 is empty.\nThe queue of Button:2 is empty."},
        Exchange{"send Press Button",
                 "number Instance number of Button\n(Button:1, Button:2)",
                 {kNumber, "2"},
                 "Press sent to Button:2"},
        Exchange{"send Press Button", "number", {kNumber, "*"}, "not all", true},
        Exchange{"send SetAspect TrafficLight:1",
                 "parameters Parameters of SetAspect to TrafficLight:1:|1  Aspect: one of",
                 {kParameters, " green"},
                 "SetAspect(Green) sent"},
        Exchange{"send Arrive Button:1", "parameters", {kParameters, "'1"}, "not closed", true},
        Exchange{"reset-timer",
                 "choice Timer to stop:|Supervisor:1  ",
                 {kChoice, "Controller:1  Phase  at 15.000"},
                 "Phase of Controller:1 is reset"},
        Exchange{"assign-variable Controller cycles",
                 "text Value of cycles of Controller:1, now 0",
                 {kText, "9"},
                 "Controller:1 cycles := 9"},
        Exchange{"remove-breakpoint", "range Number of the", {kNumber, "1"}, "1 is removed."},
        Exchange{"mask-trace",
                 "bits Processes to trace:|Supervisor|Controller",
                 {kBits, "", {"Button", "Pedestrian"}},
                 "Only traced: Button, Pedestrian"},
        Exchange{"add-mark",
                 "text Name of the mark at 1.000:",
                 {kText, " there "},
                 "Mark \"there\" at 1.000"},
        Exchange{"add-mark", "text", {kText, "HERE"}, "mark \"HERE\" already", true},
        Exchange{"select-event",
                 "choice Transition, the last one first:|10  ",
                 {kChoice, "1  0.000  Supervisor:1  start  -> Watching"},
                 "All of Supervisor:1:\n"},
        Exchange{
            "change-directory", "directory /", {kDirectory, "/x/"}, "/x is no directory.", true},
        Exchange{"open-log", "file Open Log", {kFile, "/x/y"}, "cannot be opened: No such", true}));

TEST_F(PromptTest, AsksOneQuestionAfterTheOtherForWhatACommandLeavesOut) {
  EXPECT_THAT(ask("send"), StartsWith("choice Signal to send:|Press|Arrive(Integer)"));
  answer({kChoice, "Arrive(Integer)"});
  EXPECT_THAT(dialogue.boxes.back(), StartsWith("choice Instance:"));
  answer({kChoice, "Button:2"});
  EXPECT_THAT(answer({kParameters, "4"}), "Arrive(4) sent to Button:2\n");
  EXPECT_THAT(dialogue.confirmed, ElementsAre("send"));
  ask("assign-variable Button:2");
  EXPECT_EQ(dialogue.boxes.back(), "choice Variable of Button:2:|party|peopleCrossed");
  answer({kChoice, "peopleCrossed"});
  EXPECT_EQ(answer({kText, "5"}), "Button:2 peopleCrossed := 5\n");
}

TEST_F(PromptTest, TracesOnlyTheProcessesOfTheMask) {
  run("remove-breakpoint *");
  run("set-trace 1");
  run("mask-trace Superv");
  EXPECT_THAT(run("list-trace"), HasSubstr("Button           1  masked\n"));
  const std::string text = run("proceed-until 30");
  EXPECT_THAT(text, HasSubstr("Supervisor:1       Watching"));
  EXPECT_THAT(text, Not(HasSubstr("Controller:1  ")));
  run("mask-trace *");
  EXPECT_THAT(run("proceed-until 60"), HasSubstr("Controller:1  "));
}

TEST_F(PromptTest, OpensASystemByItsSymbolFile) {
  const TemporaryFolder folder;
  const std::string good =
      folder.write("a 'b.sym", "# symbols\n\n System  pedestrian crossing #\n");
  const std::string other = folder.write("c.sym", "system Lift\n");
  const std::string none = folder.write("d.sym", std::string("\0system\n", 8));
  for (const auto& [file, problem] : {std::pair{other, "the system \"Lift\""},
                                      {none, "is no symbol file"},
                                      {folder.path().string(), "cannot be read"},
                                      {good + "x", "cannot be read"}}) {
    run("system " + file);
    EXPECT_THAT(dialogue.boxes.back(), StartsWith("! Korvane - Open system|"));
    EXPECT_THAT(dialogue.boxes.back(), HasSubstr(problem));
    answer({AnswerKind::kAcknowledged});
  }
  EXPECT_EQ(system.now(), kSecond);
  EXPECT_THAT(ask("system"), HasSubstr("|sym|Symbol Files (*.sym)"));
  answer({AnswerKind::kFile, good});
  EXPECT_EQ(dialogue.boxes.back(), "system " + folder.path().string() + "|Pedestrian Crossing");
  EXPECT_EQ(dialogue.title, "Pedestrian Crossing (a 'b.sym), now 0.000");
  EXPECT_EQ(run("list-mark"), "There is no mark.\n");
  EXPECT_EQ(run("change-directory ."), "Source directory: " + folder.path().string() + '\n');
}

TEST_F(PromptTest, OffersASearchAfterTheOpenQuestionAndTellsWhenItIsCancelled) {
  ask("mask-trace");
  debugger.offerSearch();
  EXPECT_THAT(dialogue.boxes.back(), StartsWith("bits"));
  answer({AnswerKind::kCancelled});
  EXPECT_THAT(dialogue.boxes.back(), StartsWith("search Supervisor, Controller"));
  EXPECT_THAT(dialogue.boxes.back(), HasSubstr("Fault|Watchdog, Phase"));
  EXPECT_EQ(answer({AnswerKind::kCancelled}), "Search cancelled.\n");
  EXPECT_EQ(answer({AnswerKind::kCancelled}), "");
}

}  // namespace
}  // namespace tester
