#include "tester_link/user_link.h"

#include <gtest/gtest.h>

#include <utility>

namespace tester_link {
namespace {

/// "a,b"
std::string textOf(const Items& items) {
  std::string text;
  for (const std::string& item : items) {
    text += (text.empty() ? "" : ",") + item;
  }
  return text;
}
std::string textOf(const std::string& text) {
  return text;
}
std::string textOf(std::int32_t number) {
  return std::to_string(number);
}

/// "2005|caption|text|0|a,b"
std::string messageText(const OutgoingMessage& message) {
  std::string text = std::to_string(message.tag);
  for (const OutgoingParameter& parameter : message.parameters) {
    text += '|' + std::visit([](const auto& value) { return textOf(value); }, parameter);
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
      if (result != UserLink::SendResult::kSent) {
        return std::exchange(result, UserLink::SendResult::kSent);
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
                 textOf(answer.items) + ' ' + std::to_string(answer.index) + ';';
    };
  }
  static std::string kept(AnswerKind kind, const std::string& text, int index = 0) {
    return std::to_string(static_cast<int>(kind)) + ' ' + text + ' ' + std::to_string(index) + ';';
  }

  UserLink user;
  UserLink::Clock::time_point now{std::chrono::hours(1)};
  std::string answers;
  UserLink::SendResult result = UserLink::SendResult::kSent;  ///< of the next message
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

TEST_F(UserLinkTest, MakesUpForAPauseWhereAllTextIsPaced) {
  user.paceAllText(UserLink::kTextPeriod);
  const auto send = [this](UserLink::Clock::duration later) {
    user.print("l\n");
    return pump(later).empty() ? '-' : 't';
  };
  std::string sent;
  for (int i = 0; i < 6; ++i) {
    sent += send({});
  }
  EXPECT_EQ(sent, "tttt--") << "a few at once";
  EXPECT_EQ(pump(UserLink::kTextPeriod), "2000|l\nl\n;");
  EXPECT_EQ(send(UserLink::kTextPeriod / 2), '-') << "and then at the pace";
  EXPECT_EQ(send(UserLink::kTextPeriod / 2), 't');
}

TEST_F(UserLinkTest, TellsInOrderWhatTheLinkDidNotTakeAtOnce) {
  user.showTitle("t");
  user.showTitle("t");
  user.print("one\n");
  user.showWarning("c", "w");
  user.askToLeave(UserLink::Leave::kAfterSaving);
  user.confirm("exit");
  result = UserLink::SendResult::kLater;
  EXPECT_EQ(pump(), "");
  EXPECT_TRUE(user.isBlocked() && user.isLeaving());
  user.confirm("now");
  EXPECT_FALSE(user.isLeaving()) << "the user stayed";
  user.askToLeave(UserLink::Leave::kAtOnce);
  user.confirm("quit");
  EXPECT_EQ(pump(), "2008|t;2000|one\n;2016|c|w;2002|exit;2006;2002|now;2002|quit;2007;");
  EXPECT_FALSE(user.isBlocked());
  user.askText("t", keep());
  user.setUserPresent(false);
  user.print("lost\n");
  user.setUserPresent(true);
  user.showTitle("t");
  user.takeAnswer({});
  EXPECT_EQ(pump() + answers, "2008|t;") << "nothing is left of the user before";
}

TEST_F(UserLinkTest, TakesOneAnswerOfTheRightKindAndChecksIt) {
  using enum AnswerKind;
  const auto range = [this] { user.askNumberInRange("t", {2, 5, true}, keep()); };
  const auto strict = [this] { user.askNumberInRange("t", {2, 5}, keep()); };
  const auto choice = [this] { user.askChoice("t", {"a", "b"}, keep()); };
  const auto bits = [this] { user.askBits("t", {"a", "b"}, keep()); };
  const std::string select = "|Korvane Select|t";
  const std::string wrong = " is no number from 2 to 5.";
  const std::string none = " is none of the choices.";
  // A question, its message, what the user interface answers and what the asker gets.
  const std::tuple<std::function<void()>, std::string, Answer, std::string> rows[] = {
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
  for (const auto& [ask, message, reply, answer] : rows) {
    SCOPED_TRACE(message + " <- " + reply.text);
    ask();
    EXPECT_EQ(pump(), message + ';');
    EXPECT_TRUE(user.isAsking());
    answers.clear();
    user.takeAnswer({kFile});
    user.takeAnswer(reply);
    user.takeAnswer(reply);
    EXPECT_EQ(answers, answer);
    EXPECT_FALSE(user.isAsking());
  }
}

TEST_F(UserLinkTest, SendsALongListInPartsOrEndsTheQuestionThatTheLinkRefuses) {
  Items items(150, "x");
  items.resize(190, std::string(200, 'y'));
  user.askChoice("t", items, keep());
  const std::string head = "2005|Korvane Select|t|";
  const auto part = [&](int from, int to) {
    return textOf(Items(items.begin() + from, items.begin() + to)) + ';';
  };
  // Cut by number at first, by size then.
  EXPECT_EQ(pump(), head + "1|" + part(0, 100) + head + "1|" + part(100, 189) + head + "0|" +
                        part(189, 190));
  // The next question waits for the answer to this one.
  user.askChoice("u", {"z"}, keep());
  EXPECT_EQ(pump(), "");
  user.takeAnswer({AnswerKind::kChoice, "x"});
  EXPECT_EQ(pump(), "2005|Korvane Select|u|0|z;");
  user.takeAnswer({AnswerKind::kChoice, "z"});
  EXPECT_EQ(std::exchange(answers, ""),
            kept(AnswerKind::kChoice, "x") + kept(AnswerKind::kChoice, "z"));
  EXPECT_FALSE(user.isAsking());
  result = UserLink::SendResult::kRefused;
  user.askChoice("t", items, keep());
  EXPECT_EQ(pump(), "2000|What there is to ask or to tell is too long for a message.\n;");
  EXPECT_EQ(answers, kept(AnswerKind::kTooLong, ""));
}

}  // namespace
}  // namespace tester_link
