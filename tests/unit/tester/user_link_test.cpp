#include "tester_link/user_link.h"

#include <gmock/gmock.h>

#include "tests/unit/tester/message_text.h"

namespace tester_link {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class UserLinkTest : public testing::Test {
 protected:
  /// The messages that go out now.
  std::vector<std::string> pump(UserLink::Clock::duration later = {}) {
    std::vector<std::string> sent;
    now += later;
    user.pump(now, [&](const OutgoingMessage& message) {
      if (!linkTakes) {
        return UserLink::SendResult::kLater;
      }
      if (message.tag == refusedTag) {
        refusedTag = 0;
        return UserLink::SendResult::kRefused;
      }
      sent.push_back(messageText(message));
      return UserLink::SendResult::kSent;
    });
    return sent;
  }
  /// Keeps the answer.
  AnswerHandler keep() {
    return [this](const Answer& answer) {
      answers.push_back(std::to_string(static_cast<int>(answer.kind)) + ' ' + answer.text +
                        itemText(answer.items) + ' ' + std::to_string(answer.index));
    };
  }
  static std::string kept(AnswerKind kind, const std::string& text, int index = 0) {
    return std::to_string(static_cast<int>(kind)) + ' ' + text + ' ' + std::to_string(index);
  }

  UserLink user;
  UserLink::Clock::time_point now{std::chrono::hours(1)};
  std::vector<std::string> answers;
  bool linkTakes = true;
  int refusedTag = 0;  ///< of the next message that the link refuses
};

TEST_F(UserLinkTest, CutsTextAtLineEndsAndLongLinesAnywhere) {
  const std::string line(UserLink::kMaxText / 2 + 1, 'a');
  const std::string tooLong(UserLink::kMaxText, 'b');
  user.print(line + '\n' + line + '\n' + tooLong + "cc\n");
  EXPECT_THAT(pump(), ElementsAre("2000|" + line + '\n', "2000|" + line + '\n', "2000|" + tooLong,
                                  "2000|cc\n"));
}

TEST_F(UserLinkTest, SendsTheTextOfABusyTesterAtABoundedRateAndHoldsItMeanwhile) {
  user.print("> go\n");
  user.showBusy(true);
  EXPECT_THAT(pump(), ElementsAre("2000|> go\n", "2014"));
  const std::string full(UserLink::kMaxText, 'x');
  user.print(full + full + '\n');
  EXPECT_FALSE(user.acceptsText());
  EXPECT_THAT(pump(), ElementsAre("2000|" + full));
  EXPECT_FALSE(user.acceptsText());
  EXPECT_THAT(pump(UserLink::kTextPeriod / 2), IsEmpty());
  EXPECT_THAT(pump(UserLink::kTextPeriod / 2), ElementsAre("2000|" + full));
  EXPECT_TRUE(user.acceptsText());
  EXPECT_EQ(user.nextTextTime(), now + UserLink::kTextPeriod);
  // The rest does not wait for a full text for ever, and not at all after the work.
  EXPECT_THAT(pump(UserLink::kTextPeriod), ElementsAre("2000|\n"));
  user.print("Interrupted\n");
  user.showBusy(false);
  user.confirm("go");
  EXPECT_THAT(pump(), ElementsAre("2000|Interrupted\n", "2015", "2002|go"));
}

TEST_F(UserLinkTest, TellsInOrderWhatTheLinkDidNotTakeAtOnce) {
  linkTakes = false;
  user.showTitle("t");
  user.showTitle("t");
  user.print("one\n");
  user.showWarning("c", "w");
  user.askToLeave(UserLink::Leave::kAfterSaving);
  user.confirm("exit");
  EXPECT_THAT(pump(), IsEmpty());
  EXPECT_TRUE(user.isBlocked());
  EXPECT_TRUE(user.isLeaving());
  user.confirm("now");
  EXPECT_FALSE(user.isLeaving()) << "the user stayed";
  user.askToLeave(UserLink::Leave::kAtOnce);
  user.confirm("quit");
  linkTakes = true;
  EXPECT_THAT(pump(), ElementsAre("2008|t", "2000|one\n", "2016|c|w", "2002|exit", "2006",
                                  "2002|now", "2002|quit", "2007"));
  EXPECT_FALSE(user.isBlocked());
}

/// A question, its messages, what the user interface answers and what the asker gets.
struct Exchange {
  void (*ask)(UserLink&, const AnswerHandler&);
  std::vector<std::string> messages;
  Answer reply;
  AnswerKind kind;
  std::string text;
  int index = 0;
};

TEST_F(UserLinkTest, AsksEachQuestionByItsMessageAndChecksTheAnswer) {
  using User = UserLink&;
  using Handler = const AnswerHandler&;
  const auto choice = [](User u, Handler h) { u.askChoice("t", {"a", "b"}, h); };
  const auto bits = [](User u, Handler h) { u.askBits("t", {"a", "b"}, h); };
  const auto range = [](User u, Handler h) { u.askNumberInRange("t", {2, 5, true}, h); };
  const auto strict = [](User u, Handler h) { u.askNumberInRange("t", {2, 5, false}, h); };
  const std::vector<std::string> choiceText{"2005|Korvane Select|t|0|a,b"};
  const std::vector<std::string> bitsText{"2010|Korvane Select|t|a,b"};
  const std::vector<std::string> rangeText{"2019|Korvane Select|t|-1|5"};
  const std::vector<std::string> strictText{"2019|Korvane Select|t|2|5"};
  using enum AnswerKind;
  const Exchange rows[] = {
      {[](User u, Handler h) { u.askYesNo("c", "t", h); }, {"2001|c|t"}, {kNo}, kNo, ""},
      {[](User u, Handler h) { u.showError("c", "t", h); },
       {"2013|c|t"},
       {kAcknowledged},
       kAcknowledged,
       ""},
      {[](User u, Handler h) { u.askText("t", h); },
       {"2003|Korvane Select|t"},
       {kText, "x"},
       kText,
       "x"},
      {[](User u, Handler h) { u.askNumber("t", h); },
       {"2004|Korvane Select|t"},
       {kNumber, "x"},
       kNumber,
       "x"},
      {strict, strictText, {kNumber, "2"}, kNumber, "2"},
      {strict, strictText, {kNumber, "*"}, kWrong, "\"*\" is no number from 2 to 5."},
      {strict, strictText, {kNumber, "6"}, kWrong, "\"6\" is no number from 2 to 5."},
      {range, rangeText, {kNumber, "*"}, kNumber, "*"},
      {range, rangeText, {kNumber, "5"}, kNumber, "5"},
      {range, rangeText, {kNumber, "1"}, kWrong, "\"1\" is no number from 2 to 5."},
      {range, rangeText, {kNumber, "3x"}, kWrong, "\"3x\" is no number from 2 to 5."},
      {choice, choiceText, {kChoice, "b"}, kChoice, "b", 1},
      {choice, choiceText, {kChoice, "-"}, kWrong, "\"-\" is none of the choices."},
      {choice, choiceText, {kCancelled}, kCancelled, ""},
      {bits, bitsText, {kBits, "", {"b", "a"}}, kBits, "b,a"},
      {bits, bitsText, {kBits, "", {"b", "c"}}, kWrong, "\"c\" is none of the choices."},
      {[](User u, Handler h) { u.askChoice("t", {}, h); },
       {"2005|Korvane Select|t|0|"},
       {kCancelled},
       kCancelled,
       ""},
      {[](User u, Handler h) { u.askParameters("t", {"a"}, h); },
       {"2018|Korvane Select|t|0|a"},
       {kParameters, "1"},
       kParameters,
       "1"},
      {[](User u, Handler h) {
         u.askFile({"T", "x", "X Files"}, "/d", h);
       },
       {"2009|T|/d|x|X Files"},
       {kFile, "/f"},
       kFile,
       "/f"},
      {[](User u, Handler h) { u.askDirectory("/d", h); },
       {"2011|Select Source Directory|/d"},
       {kDirectory, "/e"},
       kDirectory,
       "/e"},
  };
  for (const Exchange& row : rows) {
    SCOPED_TRACE(row.messages.front() + " <- " + row.reply.text);
    row.ask(user, keep());
    EXPECT_EQ(pump(), row.messages);
    EXPECT_TRUE(user.isAsking());
    answers.clear();
    user.takeAnswer({row.reply.kind == kFile ? kText : kFile});
    user.takeAnswer(row.reply);
    user.takeAnswer(row.reply);
    EXPECT_THAT(answers, ElementsAre(kept(row.kind, row.text, row.index)));
    EXPECT_FALSE(user.isAsking());
  }
}

TEST_F(UserLinkTest, SendsALongListOverSeveralMessagesInItsOrder) {
  Items items(250);
  for (std::size_t i = 0; i < items.size(); ++i) {
    items[i] = std::to_string(i) + std::string(i < 150 ? 0 : 200, 'x');
  }
  const auto part = [&items](std::size_t from, std::size_t to) {
    return itemText({items.begin() + static_cast<std::ptrdiff_t>(from),
                     items.begin() + static_cast<std::ptrdiff_t>(to)});
  };
  user.askChoice("t", items, keep());
  // Cut by number at first, by size then.
  EXPECT_THAT(pump(), ElementsAre("2005|Korvane Select|t|1|" + part(0, 100),
                                  "2005|Korvane Select|t|1|" + part(100, 188),
                                  "2005|Korvane Select|t|1|" + part(188, 227),
                                  "2005|Korvane Select|t|0|" + part(227, 250)));
}

TEST_F(UserLinkTest, EndsAQuestionThatTheLinkRefuses) {
  refusedTag = 2005;
  user.askChoice("t", Items(250, "x"), keep());
  EXPECT_THAT(pump(), ElementsAre(StartsWith("2000|What there is to ask")));
  EXPECT_THAT(answers, ElementsAre(kept(AnswerKind::kTooLong, "")));
  refusedTag = 2008;
  user.showTitle("t");
  EXPECT_THAT(pump(), IsEmpty()) << "nobody waits for a title";
}

TEST_F(UserLinkTest, OffersASearchAfterTheOpenQuestionAndTellsWhenItIsCancelled) {
  const Answer cancelled;
  user.askText("t", keep());
  user.offerSearch({{"p", "q"}, {}, {"t"}});
  EXPECT_THAT(pump(), SizeIs(1));
  user.takeAnswer(cancelled);
  EXPECT_THAT(pump(), ElementsAre("2017|1|1|p,q", "2017|1|2|", "2017|0|3|t"));
  user.takeAnswer(cancelled);
  user.takeAnswer(cancelled);
  EXPECT_THAT(pump(), ElementsAre("2000|Search cancelled.\n"));
}

TEST_F(UserLinkTest, KeepsNothingForAUserInterfaceThatIsNotThere) {
  user.print("old\n");
  user.showTitle("t");
  user.askText("t", keep());
  user.offerSearch({});
  user.setUserPresent(false);
  user.print("lost\n");
  user.confirm("lost");
  user.askText("lost", keep());
  EXPECT_FALSE(user.isAsking());
  EXPECT_THAT(pump(), IsEmpty());
  user.setUserPresent(true);
  user.showTitle("t");
  user.takeAnswer({});
  EXPECT_THAT(pump(), ElementsAre("2008|t"));
  EXPECT_THAT(answers, IsEmpty());
}

}  // namespace
}  // namespace tester_link
