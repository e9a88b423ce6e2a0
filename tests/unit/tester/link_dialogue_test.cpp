#include "tester/link_side/link_dialogue.h"

#include <gmock/gmock.h>

#include "link/message_numbers.h"

namespace tester {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class LinkDialogueTest : public testing::Test {
 protected:
  /// Numbers of the messages that go out now, their texts being collected.
  std::vector<int> pump(LinkDialogue::Clock::duration later = {}) {
    std::vector<int> tags;
    now += later;
    dialogue.pump(now, [&](const OutgoingMessage& message) {
      if (!linkTakes) {
        return false;
      }
      tags.push_back(message.tag);
      for (const OutgoingParameter& parameter : message.parameters) {
        std::visit([&](const auto& value) { texts.push_back(describe(value)); }, parameter);
      }
      return true;
    });
    return tags;
  }

  /// The one message that goes out now.
  std::string pumpOne() {
    texts.clear();
    const std::vector<int> tags = pump();
    EXPECT_THAT(tags, SizeIs(1));
    return std::to_string(tags.front()) + '|' + describe(texts, "|");
  }

  static std::string describe(const std::string& text) { return text; }
  static std::string describe(std::int32_t number) { return std::to_string(number); }
  static std::string describe(const std::vector<std::string>& items, const char* between = ",") {
    std::string all;
    for (const std::string& item : items) {
      all += (all.empty() ? "" : between) + item;
    }
    return all;
  }

  LinkDialogue dialogue;
  LinkDialogue::Clock::time_point now{std::chrono::hours(1)};
  std::vector<std::string> texts;
  bool linkTakes = true;
};

TEST_F(LinkDialogueTest, SendsTheTextOfACommandBeforeItsConfirmation) {
  dialogue.print("> now\n");
  dialogue.print("now = 1.000\n");
  dialogue.showTitle("T");
  dialogue.confirm("now");
  dialogue.showTitle("T");
  EXPECT_THAT(pump(), ElementsAre(MSG_T_TEXT, MSG_T_TITLE, MSG_T_PROMPT));
  EXPECT_THAT(texts, ElementsAre("> now\nnow = 1.000\n", "T", "now"));
}

TEST_F(LinkDialogueTest, CutsLongTextAtLineEndsOnly) {
  const std::string line = std::string(98, 'x') + "\n";
  std::string all;
  for (int i = 0; i < 500; ++i) {
    dialogue.print(line);
    all += line;
  }
  pump();
  std::string together;
  for (const std::string& text : texts) {
    EXPECT_LE(text.size(), TextBatch::kMaxPiece);
    EXPECT_EQ(text.back(), '\n');
    together += text;
  }
  EXPECT_EQ(together, all);
  EXPECT_THAT(texts, SizeIs(13));
}

TEST_F(LinkDialogueTest, CutsALineThatIsTooLongBetweenCharacters) {
  // The byte before the limit begins a character of two.
  const std::string text = std::string(TextBatch::kMaxPiece - 1, 'x') + "\xC3\xA4\n";
  dialogue.print(text);
  pump();
  EXPECT_THAT(texts, ElementsAre(std::string(TextBatch::kMaxPiece - 1, 'x'), "\xC3\xA4\n"));
}

TEST_F(LinkDialogueTest, SendsTheTextOfARunAtABoundedRateAndHoldsTheRunMeanwhile) {
  dialogue.print("> go\n");
  dialogue.showBusy(true);
  EXPECT_THAT(pump(), ElementsAre(MSG_T_TEXT, MSG_T_BUSY));
  const std::string fullBatch(TextBatch::kMaxPiece, 'x');
  dialogue.print(fullBatch + fullBatch + '\n');
  EXPECT_FALSE(dialogue.acceptsTrace());
  EXPECT_THAT(pump(), ElementsAre(MSG_T_TEXT));
  EXPECT_FALSE(dialogue.acceptsTrace());
  EXPECT_THAT(pump(LinkDialogue::kTextPeriod / 2), IsEmpty());
  EXPECT_THAT(pump(LinkDialogue::kTextPeriod / 2), ElementsAre(MSG_T_TEXT));
  EXPECT_TRUE(dialogue.acceptsTrace());
  // The rest of the text does not wait for a full batch for ever, and not at all after the run.
  EXPECT_THAT(pump(LinkDialogue::kTextPeriod), ElementsAre(MSG_T_TEXT));
  dialogue.print("Interrupted\n");
  dialogue.showBusy(false);
  dialogue.confirm("go");
  EXPECT_THAT(pump(), ElementsAre(MSG_T_TEXT, MSG_T_IDLE, MSG_T_PROMPT));
}

TEST_F(LinkDialogueTest, KeepsMessagesInOrderWhileTheLinkTakesNone) {
  linkTakes = false;
  dialogue.print("one\n");
  dialogue.confirm("one");
  EXPECT_THAT(pump(), IsEmpty());
  EXPECT_TRUE(dialogue.isBlocked());
  dialogue.print("two\n");
  dialogue.confirm("two");
  linkTakes = true;
  EXPECT_THAT(pump(), ElementsAre(MSG_T_TEXT, MSG_T_PROMPT, MSG_T_TEXT, MSG_T_PROMPT));
  EXPECT_THAT(texts, ElementsAre("one\n", "one", "two\n", "two"));
  EXPECT_FALSE(dialogue.isBlocked());
}

TEST_F(LinkDialogueTest, AsksToExitAfterTheConfirmationAndForgetsItWithTheNextCommand) {
  dialogue.askToExit();
  dialogue.confirm("exit");
  EXPECT_THAT(pump(), ElementsAre(MSG_T_PROMPT, MSG_T_EXIT_CONFIRM));
  EXPECT_TRUE(dialogue.isExitAsked());
  dialogue.confirm("now");
  EXPECT_FALSE(dialogue.isExitAsked());
}

TEST_F(LinkDialogueTest, SendsBoxesWithTheirCaptionsAfterTheTextBeforeThem) {
  dialogue.print("list\n");
  dialogue.askYesNo("C1", "more?");
  EXPECT_THAT(pump(), ElementsAre(MSG_T_TEXT, MSG_T_QUESTION));
  dialogue.showError("C2", "wrong");
  dialogue.showWarning("C3", "lost");
  EXPECT_THAT(pump(), ElementsAre(MSG_T_ERROR_BOX, MSG_T_WARNING_BOX));
  EXPECT_THAT(texts, ElementsAre("list\n", "C1", "more?", "C2", "wrong", "C3", "lost"));
}

TEST_F(LinkDialogueTest, AsksEachQuestionByItsMessage) {
  const std::pair<std::function<void()>, const char*> questions[] = {
      {[&] { dialogue.askText("t"); }, "2003|Korvane Select|t"},
      {[&] { dialogue.askNumber("t"); }, "2004|Korvane Select|t"},
      {[&] {
         dialogue.askNumberInRange("t", {2, 5, false});
       },
       "2019|Korvane Select|t|2|5"},
      {[&] {
         dialogue.askNumberInRange("t", {2, 5, true});
       },
       "2019|Korvane Select|t|-1|5"},
      {[&] {
         dialogue.askChoice("t", {"a", "b"});
       },
       "2005|Korvane Select|t|0|a,b"},
      {[&] { dialogue.askChoice("t", {}); }, "2005|Korvane Select|t|0|"},
      {[&] {
         dialogue.askBits("t", {"a", "b"});
       },
       "2010|Korvane Select|t|a,b"},
      {[&] {
         dialogue.askParameters("t", {"a", "b"});
       },
       "2018|Korvane Select|t|0|a,b"},
      {[&] {
         dialogue.askFile({"T", "x", "X Files"}, "/d");
       },
       "2009|T|/d|x|X Files"},
      {[&] { dialogue.askDirectory("/d"); }, "2011|Select Source Directory|/d"},
      {[&] { dialogue.showSystem("/d", "S"); }, "2012|/d|S"},
  };
  for (const auto& [ask, message] : questions) {
    ask();
    EXPECT_EQ(pumpOne(), message);
  }
  dialogue.offerSearch({{"p", "q"}, {}, {"t"}});
  texts.clear();
  EXPECT_THAT(pump(), ElementsAre(MSG_T_FIND, MSG_T_FIND, MSG_T_FIND));
  EXPECT_EQ(describe(texts, "|"), "1|1|p,q|1|2||0|3|t");
}

TEST_F(LinkDialogueTest, SendsALongListOverSeveralMessagesInItsOrder) {
  constexpr std::size_t kLargestList = 10000;
  std::vector<std::string> items(250);
  for (std::size_t i = 0; i < items.size(); ++i) {
    items[i] = std::to_string(i) + std::string(i < 150 ? 0 : 200, 'x');
  }
  dialogue.askChoice("t", items);
  const std::size_t messages = pump().size();
  ASSERT_EQ(messages, 4U);  // cut by number at first, by size then
  std::string together;
  for (std::size_t i = 0; i < messages; ++i) {
    EXPECT_EQ(texts[4 * i + 2], i + 1 == messages ? "0" : "1");
    EXPECT_LT(texts[4 * i + 3].size(), kLargestList);
    together += (i == 0 ? "" : ",") + texts[4 * i + 3];
  }
  EXPECT_EQ(together, describe(items));
}

TEST(OutgoingRecordTest, HoldsTextsNumbersAndAListInTheirOrder) {
  const std::vector<std::string> items{"a", "b"};
  const OutgoingMessage message{MSG_T_ASK_LIST, {"caption", "text", 1, items}};
  const OutgoingRecord record(message);
  EXPECT_STREQ(record.words().text(0), "caption");
  EXPECT_STREQ(record.words().text(1), "text");
  EXPECT_EQ(record.words().number(2), 1);
  const StringListNode* first = record.words().list(3);
  ASSERT_NE(first, nullptr);
  EXPECT_STREQ(first->text, "a");
  ASSERT_NE(first->next, nullptr);
  EXPECT_STREQ(first->next->text, "b");
  EXPECT_EQ(first->next->next, nullptr);
}

TEST_F(LinkDialogueTest, DropsEverythingWhileThereIsNoUserInterface) {
  dialogue.print("old\n");
  dialogue.setUserPresent(false);
  dialogue.print("lost\n");
  dialogue.confirm("lost");
  EXPECT_THAT(pump(), IsEmpty());
  dialogue.setUserPresent(true);
  dialogue.print("new\n");
  EXPECT_THAT(pump(), ElementsAre(MSG_T_TEXT));
  EXPECT_THAT(texts, ElementsAre("new\n"));
}

}  // namespace
}  // namespace tester
