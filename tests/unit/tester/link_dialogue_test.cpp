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
        return LinkDialogue::SendResult::kLater;
      }
      if (message.tag == refusedTag) {
        refusedTag = 0;
        return LinkDialogue::SendResult::kRefused;
      }
      tags.push_back(message.tag);
      for (const OutgoingParameter& parameter : message.parameters) {
        std::visit([&](const auto& value) { texts.push_back(describe(value)); }, parameter);
      }
      return LinkDialogue::SendResult::kSent;
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
  int refusedTag = 0;  ///< of the next message that the link refuses
};

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
  dialogue.askNumber("t");
  EXPECT_EQ(pumpOne(), "2004|Korvane Select|t");
  dialogue.askNumberInRange("t", {2, 5, false});
  EXPECT_EQ(pumpOne(), "2019|Korvane Select|t|2|5");
  dialogue.askNumberInRange("t", {2, 5, true});
  EXPECT_EQ(pumpOne(), "2019|Korvane Select|t|-1|5");
  dialogue.askChoice("t", {});
  EXPECT_EQ(pumpOne(), "2005|Korvane Select|t|0|");
  dialogue.askBits("t", {"a", "b"});
  EXPECT_EQ(pumpOne(), "2010|Korvane Select|t|a,b");
  dialogue.askParameters("t", {"a", "b"});
  EXPECT_EQ(pumpOne(), "2018|Korvane Select|t|0|a,b");
  dialogue.askFile({"T", "x", "X Files"}, "/d");
  EXPECT_EQ(pumpOne(), "2009|T|/d|x|X Files");
  dialogue.askDirectory("/d");
  EXPECT_EQ(pumpOne(), "2011|Select Source Directory|/d");
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

TEST_F(LinkDialogueTest, LeavesOutAListThatTheLinkRefusesAndTells) {
  refusedTag = MSG_T_ASK_LIST;
  dialogue.askChoice("t", std::vector<std::string>(250, "x"));
  dialogue.print("next\n");
  EXPECT_THAT(pump(), ElementsAre(MSG_T_TEXT));
  EXPECT_TRUE(dialogue.takeRefusal());
  EXPECT_FALSE(dialogue.takeRefusal());
  refusedTag = MSG_T_TITLE;
  dialogue.showTitle("t");
  EXPECT_THAT(pump(), IsEmpty());
  EXPECT_FALSE(dialogue.takeRefusal()) << "nobody waits for a title";
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
