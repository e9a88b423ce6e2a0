#include "tester_link/user_link.h"

#include <gmock/gmock.h>

namespace tester_link {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

/// "a,b"
std::string itemText(const Items& items) {
  std::string text;
  for (const std::string& item : items) {
    text += (&item == &items.front() ? "" : ",") + item;
  }
  return text;
}

/// "2005|caption|text|0|a,b"
std::string messageText(const OutgoingMessage& message) {
  struct Describe {
    std::string operator()(const std::string& text) const { return text; }
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(const Items& items) const { return itemText(items); }
  };
  std::string text = std::to_string(message.tag);
  for (const OutgoingParameter& parameter : message.parameters) {
    text += '|' + std::visit(Describe{}, parameter);
  }
  return text;
}

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

/// A question, its message, what the user interface answers and what the asker gets.
struct Exchange {
  std::function<void()> ask;
  std::string message;
  Answer reply;
  std::string answer;
};

TEST_F(UserLinkTest, AsksEachQuestionByItsMessageAndChecksTheAnswer) {
  using enum AnswerKind;
  const auto yesNo = [this] { user.askYesNo("c", "t", keep()); };
  const auto error = [this] { user.showError("c", "t", keep()); };
  const auto text = [this] { user.askText("t", keep()); };
  const auto number = [this] { user.askNumber("t", keep()); };
  const auto range = [this] { user.askNumberInRange("t", {2, 5, true}, keep()); };
  const auto strict = [this] { user.askNumberInRange("t", {2, 5}, keep()); };
  const auto choice = [this] { user.askChoice("t", {"a", "b"}, keep()); };
  const auto empty = [this] { user.askChoice("t", {}, keep()); };
  const auto bits = [this] { user.askBits("t", {"a", "b"}, keep()); };
  const auto values = [this] { user.askParameters("t", {"a"}, keep()); };
  const auto file = [this] { user.askFile({"T", "x", "X Files"}, "/d", keep()); };
  const auto directory = [this] { user.askDirectory("/d", keep()); };
  const std::string select = "|Korvane Select|t";
  const std::string wrong = " is no number from 2 to 5.";
  const std::string none = " is none of the choices.";
  const Exchange rows[] = {
      {yesNo, "2001|c|t", {kNo}, kept(kNo, "")},
      {error, "2013|c|t", {kAcknowledged}, kept(kAcknowledged, "")},
      {text, "2003" + select, {kText, "x"}, kept(kText, "x")},
      {number, "2004" + select, {kNumber, "x"}, kept(kNumber, "x")},
      {strict, "2019" + select + "|2|5", {kNumber, "2"}, kept(kNumber, "2")},
      {strict, "2019" + select + "|2|5", {kNumber, "*"}, kept(kWrong, "\"*\"" + wrong)},
      {strict, "2019" + select + "|2|5", {kNumber, "6"}, kept(kWrong, "\"6\"" + wrong)},
      {range, "2019" + select + "|-1|5", {kNumber, "*"}, kept(kNumber, "*")},
      {range, "2019" + select + "|-1|5", {kNumber, "5"}, kept(kNumber, "5")},
      {range, "2019" + select + "|-1|5", {kNumber, "1"}, kept(kWrong, "\"1\"" + wrong)},
      {range, "2019" + select + "|-1|5", {kNumber, "3x"}, kept(kWrong, "\"3x\"" + wrong)},
      {choice, "2005" + select + "|0|a,b", {kChoice, "b"}, kept(kChoice, "b", 1)},
      {choice, "2005" + select + "|0|a,b", {kChoice, "-"}, kept(kWrong, "\"-\"" + none)},
      {choice, "2005" + select + "|0|a,b", {kCancelled}, kept(kCancelled, "")},
      {empty, "2005" + select + "|0|", {kCancelled}, kept(kCancelled, "")},
      {bits, "2010" + select + "|a,b", {kBits, "", {"b", "a"}}, kept(kBits, "b,a")},
      {bits, "2010" + select + "|a,b", {kBits, "", {"b", "c"}}, kept(kWrong, "\"c\"" + none)},
      {values, "2018" + select + "|0|a", {kParameters, "1"}, kept(kParameters, "1")},
      {file, "2009|T|/d|x|X Files", {kFile, "/f"}, kept(kFile, "/f")},
      {directory, "2011|Select Source Directory|/d", {kDirectory, "/e"}, kept(kDirectory, "/e")},
  };
  for (const Exchange& row : rows) {
    SCOPED_TRACE(row.message + " <- " + row.reply.text);
    row.ask();
    EXPECT_THAT(pump(), ElementsAre(row.message));
    EXPECT_TRUE(user.isAsking());
    answers.clear();
    user.takeAnswer({row.reply.kind == kFile ? kText : kFile});
    user.takeAnswer(row.reply);
    user.takeAnswer(row.reply);
    EXPECT_THAT(answers, ElementsAre(row.answer));
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
