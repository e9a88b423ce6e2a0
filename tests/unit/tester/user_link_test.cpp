#include "tester_link/user_link.h"

#include <gtest/gtest.h>

namespace tester_link {
namespace {

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
  /// The messages that go out now, each with a ";" behind it.
  std::string pump(UserLink::Clock::duration later = {}) {
    std::string sent;
    now += later;
    user.pump(now, [&](const OutgoingMessage& message) {
      if (!linkTakes) {
        return UserLink::SendResult::kLater;
      }
      if (message.tag == refusedTag) {
        refusedTag = 0;
        return UserLink::SendResult::kRefused;
      }
      sent += messageText(message) + ";";
      return UserLink::SendResult::kSent;
    });
    return sent;
  }
  /// Keeps the answer.
  AnswerHandler keep() {
    return [this](const Answer& answer) {
      answers += std::to_string(static_cast<int>(answer.kind)) + ' ' + answer.text +
                 itemText(answer.items) + ' ' + std::to_string(answer.index) + ';';
    };
  }
  static std::string kept(AnswerKind kind, const std::string& text, int index = 0) {
    return std::to_string(static_cast<int>(kind)) + ' ' + text + ' ' + std::to_string(index) + ';';
  }

  UserLink user;
  UserLink::Clock::time_point now{std::chrono::hours(1)};
  std::string answers;
  bool linkTakes = true;
  int refusedTag = 0;  ///< of the next message that the link refuses
};

TEST_F(UserLinkTest, SendsTextInWholeLinesAtABoundedRateWhileItIsBusy) {
  const std::string line(UserLink::kMaxText / 2 + 1, 'a');
  const std::string full(UserLink::kMaxText, 'b');
  user.print(line + '\n' + line + '\n' + full + "cc\n");
  EXPECT_EQ(pump(), "2000|" + line + "\n;2000|" + line + "\n;2000|" + full + ";2000|cc\n;");
  user.print("> go\n");
  user.showBusy(true);
  EXPECT_EQ(pump(), "2000|> go\n;2014;");
  user.print(full + full + '\n');
  EXPECT_EQ(pump(), "2000|" + full + ';');
  EXPECT_FALSE(user.acceptsText());
  EXPECT_EQ(pump(UserLink::kTextPeriod / 2), "");
  EXPECT_EQ(pump(UserLink::kTextPeriod / 2), "2000|" + full + ';');
  EXPECT_TRUE(user.acceptsText());
  EXPECT_EQ(user.nextTextTime(), now + UserLink::kTextPeriod);
  // The rest does not wait for a full text for ever, and not at all after the work.
  EXPECT_EQ(pump(UserLink::kTextPeriod), "2000|\n;");
  user.print("Interrupted\n");
  user.showBusy(false);
  user.confirm("go");
  EXPECT_EQ(pump(), "2000|Interrupted\n;2015;2002|go;");
}

TEST_F(UserLinkTest, TellsInOrderWhatTheLinkDidNotTakeAtOnce) {
  linkTakes = false;
  user.showTitle("t");
  user.showTitle("t");
  user.print("one\n");
  user.showWarning("c", "w");
  user.askToLeave(UserLink::Leave::kAfterSaving);
  user.confirm("exit");
  EXPECT_EQ(pump(), "");
  EXPECT_TRUE(user.isBlocked() && user.isLeaving());
  user.confirm("now");
  EXPECT_FALSE(user.isLeaving()) << "the user stayed";
  user.askToLeave(UserLink::Leave::kAtOnce);
  user.confirm("quit");
  linkTakes = true;
  EXPECT_EQ(pump(), "2008|t;2000|one\n;2016|c|w;2002|exit;2006;2002|now;2002|quit;2007;");
  EXPECT_FALSE(user.isBlocked());
}

/// A question, its message, what the user interface answers and what the asker gets.
struct Exchange {
  std::function<void()> ask;
  std::string message;
  Answer reply;
  std::string answer;
};

TEST_F(UserLinkTest, TakesOneAnswerOfTheRightKindAndChecksIt) {
  using enum AnswerKind;
  const auto range = [this] { user.askNumberInRange("t", {2, 5, true}, keep()); };
  const auto strict = [this] { user.askNumberInRange("t", {2, 5}, keep()); };
  const auto choice = [this] { user.askChoice("t", {"a", "b"}, keep()); };
  const auto bits = [this] { user.askBits("t", {"a", "b"}, keep()); };
  const std::string select = "|Korvane Select|t";
  const std::string wrong = " is no number from 2 to 5.";
  const std::string none = " is none of the choices.";
  const Exchange rows[] = {
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
      {bits, "2010" + select + "|a,b", {kBits, "", {"b", "a"}}, kept(kBits, "b,a")},
      {bits, "2010" + select + "|a,b", {kBits, "", {"b", "c"}}, kept(kWrong, "\"c\"" + none)},
  };
  for (const Exchange& row : rows) {
    SCOPED_TRACE(row.message + " <- " + row.reply.text);
    row.ask();
    EXPECT_EQ(pump(), row.message + ';');
    EXPECT_TRUE(user.isAsking());
    answers.clear();
    user.takeAnswer({kFile});
    user.takeAnswer(row.reply);
    user.takeAnswer(row.reply);
    EXPECT_EQ(answers, row.answer);
    EXPECT_FALSE(user.isAsking());
  }
}

TEST_F(UserLinkTest, SendsALongListOverSeveralMessagesOrEndsTheQuestionThatTheLinkRefuses) {
  Items items(250);
  for (std::size_t i = 0; i < items.size(); ++i) {
    items[i] = std::to_string(i) + std::string(i < 150 ? 0 : 200, 'x');
  }
  const auto part = [&items](int isMore, int from, int to) {
    return "2005|Korvane Select|t|" + std::to_string(isMore) + '|' +
           itemText({items.begin() + from, items.begin() + to}) + ';';
  };
  user.askChoice("t", items, keep());
  // Cut by number at first, by size then.
  EXPECT_EQ(pump(), part(1, 0, 100) + part(1, 100, 188) + part(1, 188, 227) + part(0, 227, 250));
  refusedTag = 2005;
  user.askChoice("t", items, keep());
  EXPECT_EQ(pump(), "2000|What there is to ask or to tell is too long for a message.\n;");
  EXPECT_EQ(answers, kept(AnswerKind::kTooLong, ""));
  refusedTag = 2008;
  user.showTitle("t");
  EXPECT_EQ(pump(), "") << "nobody waits for a title";
}

TEST_F(UserLinkTest, OffersASearchAfterTheOpenQuestionAndForgetsAllWithItsUser) {
  const Answer cancelled;
  user.askText("t", keep());
  user.offerSearch({{"p", "q"}, {}, {"t"}});
  EXPECT_EQ(pump(), "2003|Korvane Select|t;");
  user.takeAnswer(cancelled);
  EXPECT_EQ(pump(), "2017|1|1|p,q;2017|1|2|;2017|0|3|t;");
  user.takeAnswer(cancelled);
  user.takeAnswer(cancelled);
  EXPECT_EQ(pump(), "2000|Search cancelled.\n;");
  answers.clear();
  user.print("old\n");
  user.showTitle("t");
  user.askText("t", keep());
  user.offerSearch({});
  user.setUserPresent(false);
  user.print("lost\n");
  user.confirm("lost");
  user.askText("lost", keep());
  EXPECT_FALSE(user.isAsking());
  EXPECT_EQ(pump(), "");
  user.setUserPresent(true);
  user.showTitle("t");
  user.takeAnswer({});
  EXPECT_EQ(pump() + answers, "2008|t;");
}

}  // namespace
}  // namespace tester_link
