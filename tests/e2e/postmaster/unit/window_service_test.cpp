#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

#include "link/message_numbers.h"
#include "postmaster/charset.h"
#include "postmaster/client.h"
#include "postmaster/router.h"
#include "postmaster/tester_watch.h"
#include "tests/support/basics.h"
#include "tests/support/message.h"

using namespace postmaster;
using namespace std::chrono_literals;

namespace {

postmaster::Message frame(int sender, int dest, int tag, std::vector<Parameter> parameters = {}) {
  const int kind = dest == 0 ? kFrameUndirected : kFrameDirected;
  const auto direction =
      sender == NELKVUI ? MessageDirection::kSentByUi : MessageDirection::kReceivedByUi;
  return parseText(toWire({kind, tag, sender, dest, std::move(parameters)}, direction)).message;
}

postmaster::Message fromTester(int tag, std::vector<Parameter> parameters = {}) {
  return frame(NELKV, NELKVUI, tag, std::move(parameters));
}

postmaster::Message fromUi(int tag, std::vector<Parameter> parameters = {}) {
  return frame(NELKVUI, NELKV, tag, std::move(parameters));
}

/// Number and parameters, "2000 "text"".
std::string told(const postmaster::Message& message) {
  const std::string line = describeMessage(*message);
  return line.substr(line.find('(') + 1) + "\n";
}

TEST(Charsets, ShowTheWindowLatinAndTheToolsWhatTheySent) {
  const auto charset = Charset::open("UTF-8");
  const auto window = [&](int tag, std::vector<Parameter> parameters) {
    std::string all;
    for (const postmaster::Message& one : charset->toWindow(fromTester(tag, parameters))) {
      EXPECT_EQ(told(one), told(parseText(one->text).message)) << "both forms agree";
      all += told(one);
    }
    return all;
  };
  const auto tool = [&](int tag, std::vector<Parameter> parameters) {
    return told(charset->fromWindow(fromUi(tag, std::move(parameters))));
  };
  EXPECT_EQ(window(MSG_T_TEXT, {"gr\u00fcn \u201c\u20ac\u201d \xff \u4e2d\n"}),
            R"(2000) "gr\xfcn \"EUR\" \xff ?\n")"
            "\n");
  // A character that two messages share, and one that another message ends.
  std::string shared = window(MSG_T_TEXT, {"a\xe2\x82"});
  shared += window(MSG_T_TEXT, {"\xac!\xc3"});
  shared += window(MSG_T_TITLE, {"\u00e9"});
  shared += window(MSG_T_TEXT, {"\xa9"});
  EXPECT_EQ(shared, R"(2000) "a"
2000) "EUR!"
2000) "\xc3"
2008) "\xe9"
2000) "\xa9"
)");
  // Equal looks are told apart, and each choice is what was sent.
  EXPECT_EQ(
      window(MSG_T_ASK_LIST,
             {"\u4e2d", "", 0, Parameter::List{"\u4e2d", "?", "\u6587", "\u00e9", "\xe9", "x"}}),
      R"-(2005) "?" "" 0 ["? (2)", "?", "? (3)", "\xe9", "\xe9 (2)", "x"])-"
      "\n");
  std::string choices;
  for (const char* choice : {"? (2)", "?", "? (3)", "\xe9", "\xe9 (2)", "x"}) {
    choices += tool(MSG_UI_LIST_CHOICE, {choice});
  }
  EXPECT_EQ(choices, R"(1006) "\xe4\xb8\xad"
1006) "?"
1006) "\xe6\x96\x87"
1006) "\xc3\xa9"
1006) "\xe9"
1006) "x"
)");
  EXPECT_EQ(tool(MSG_UI_BITS, {Parameter::List{"? (3)", "\xfc"}}),
            R"(1009) ["\xe6\x96\x87", "\xc3\xbc"])"
            "\n");
  // A command from the window's list, one that was typed, one with a path that a dialog gave.
  EXPECT_EQ(window(MSG_T_PROMPT, {"go \u4e2d"}), "2002) \"go ?\"\n");
  EXPECT_EQ(tool(MSG_UI_COMMAND, {"go ?"}) + tool(MSG_UI_COMMAND, {"say \xe9"}) +
                tool(MSG_UI_COMMAND, {"open \xc3\xa9.sym"}),
            R"(1002) "go \xe4\xb8\xad"
1002) "say \xc3\xa9"
1002) "open \xc3\xa9.sym"
)");
  // Paths are bytes.
  EXPECT_EQ(window(MSG_T_SYSTEM_OPENED, {"/\u00e9", "\u00e9"}), R"(2012) "/\xc3\xa9" "\xe9")"
                                                                "\n");
  EXPECT_EQ(window(MSG_T_ASK_FILE, {"\u00e9", "/\u00e9", "s\u00e9", "\u00e9"}),
            R"(2009) "\xe9" "/\xc3\xa9" "s\xc3\xa9" "\xe9")"
            "\n");
  EXPECT_EQ(tool(MSG_UI_FILE, {"/\xe9"}) + tool(MSG_UI_DIRECTORY, {"/\xe9"}),
            "1008) \"/\\xe9\"\n1010) \"/\\xe9\"\n");
  const postmaster::Message odd = parseText(wireText({0, MSG_T_TITLE, 1, 2, 3}, "abc")).message;
  EXPECT_EQ(charset->toWindow(odd).front(), odd) << "what is no title passes as it is";
  EXPECT_EQ(Charset::open("no-such-set"), nullptr);
  EXPECT_EQ(told(Charset::open("ISO-8859-15")->fromWindow(fromUi(MSG_UI_COMMAND, {"\xc3\xa9"}))),
            "1002) \"\\xc3\\xa9\"\n")
      << "every byte is a character";
}

TEST(Joining, MakesOneMessageOfTextsThatWait) {
  std::array<int, 2> ends{};
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends.data()), 0);
  Client client{UniqueDescriptor(ends[0])};
  const UniqueDescriptor reader(ends[1]);
  const postmaster::Message filler = fromTester(MSG_T_TITLE, {std::string(8000, 'x')});
  while (!client.hasQueued()) {
    client.send(filler);
  }
  client.sendJoined(fromTester(MSG_T_TEXT, {"a"}));
  client.sendJoined(fromTester(MSG_T_TEXT, {"b"}));
  client.sendJoined(frame(NELGATE, NELKVUI, MSG_T_TEXT, {"other"}));
  client.sendJoined(fromTester(MSG_T_IDLE));
  client.sendJoined(fromTester(MSG_T_TEXT, {std::string(kMaxSentText - 1, 'c')}));
  client.sendJoined(fromTester(MSG_T_TEXT, {"d"}));
  client.sendJoined(fromTester(MSG_T_TEXT, {"e"}));
  FrameSplitter frames;
  std::string journal;
  std::array<char, 65536> bytes;
  for (ssize_t count = 0; (count = read(reader.get(), bytes.data(), bytes.size())) > 0;) {
    frames.append({bytes.data(), static_cast<std::size_t>(count)});
    for (std::string text; frames.next(text) == FrameSplitter::Item::kFrame;) {
      const postmaster::Message message = parseText(text).message;
      journal += message->header.tag == MSG_T_TITLE
                     ? ""
                     : std::to_string(message->payload.size()) +
                           message->payload.substr(message->payload.empty() ? 0 : 4, 2) + " ";
    }
    client.flush();
  }
  EXPECT_EQ(journal, "6ab 9ot 0 16372cc 5e ");
}

TEST(TesterWatch, IsImpatientWithATesterThatOwesAnAnswerAndIsNotBusy) {
  TesterWatch::TimePoint time{};
  TesterWatch watch(5s, [&] { return time; });
  std::string journal;
  const auto saw = [&](const postmaster::Message& message, const char* refusal = "") {
    time += 1s;
    watch.saw(message, refusal);
    const auto due = watch.deadline();
    journal += (due ? std::to_string((*due - TesterWatch::TimePoint{}) / 1s) : "-") + " ";
  };
  saw(fromUi(MSG_UI_COMMAND, {"a"}));
  saw(fromUi(MSG_UI_COMMAND, {"b"}));
  saw(fromTester(MSG_T_TEXT, {"x"}));
  saw(fromUi(MSG_UI_COMMAND, {"c"}), "no tester");
  saw(fromTester(MSG_T_BUSY));
  saw(fromUi(MSG_UI_COMMAND, {"d"}));
  saw(fromTester(MSG_T_TEXT, {"x"}));
  saw(fromUi(MSG_UI_COMMAND, {"e"}));
  saw(fromTester(MSG_T_IDLE));
  saw(fromUi(MSG_UI_COMMAND, {"f"}));
  watch.reset();
  saw(fromUi(MSG_UI_CANCEL));
  EXPECT_EQ(journal, "6 6 - - - - - - - 15 - ");
  EXPECT_FALSE(watch.hasEndedSession());
  watch.saw(fromTester(MSG_T_EXIT), "");
  EXPECT_TRUE(watch.hasEndedSession());
}

TEST(Router, LosesNoCommandAndAsksInItsOwnName) {
  constexpr ClientId kUi = 10;
  constexpr ClientId kKv = 11;
  Router router{{77, 1234, "it"}};
  const auto come = [&](ClientId client, const postmaster::Message& message) {
    std::string all;
    for (const Delivery& delivery : router.frameCame(client, message).deliveries) {
      all += std::to_string(delivery.client) + ": " + told(delivery.message);
    }
    return all;
  };
  EXPECT_TRUE(router.askUser("C", "nobody is there").deliveries.empty());
  come(kUi, frame(NELKVUI, NELMPM, MSG_CONNECT));
  come(kUi, frame(NELKVUI, 0, MSG_TOOL_READY));
  EXPECT_EQ(come(kUi, fromUi(MSG_UI_COMMAND, {"early"})),
            R"(10: 2000) "< \"early\" was not sent: there is no tester >\n")"
            "\n10: 2002) \"early\"\n");
  router.awaitTester(true);
  EXPECT_EQ(come(kUi, fromUi(MSG_UI_COMMAND, {"kept"})), "");
  EXPECT_THAT(come(kKv, frame(NELKV, NELMPM, MSG_CONNECT)),
              testing::EndsWith("11: 1002) \"kept\"\n"));
  EXPECT_EQ(come(kUi, fromUi(MSG_UI_COMMAND, {"last"})), "11: 1002) \"last\"\n");
  EXPECT_EQ(come(kKv, fromTester(MSG_T_PROMPT, {"kept"})), "10: 2002) \"kept\"\n");
  // The tester's question lies below that of the Postmaster.
  come(kKv, fromTester(MSG_T_QUESTION, {"a", "b"}));
  EXPECT_EQ(router.askUser("C", "sure").deliveries.size(), 1U);
  EXPECT_EQ(come(kUi, fromUi(MSG_UI_NOT_OK)), "");
  EXPECT_EQ(router.takeAnswer(), std::optional(false));
  EXPECT_EQ(router.takeAnswer(), std::nullopt);
  EXPECT_EQ(come(kUi, fromUi(MSG_UI_OK)), "11: 1000)\n");
  std::string news;
  for (const Delivery& delivery : router.connectionLost(kKv, LeaveReason::kHungUp).deliveries) {
    news += told(delivery.message);
  }
  EXPECT_EQ(news, R"(8002) 1 2 "NELKV"
2000) "< \"last\" was not confirmed: the tester has left >\n"
2002) "last"
)");
  // A visitor hears what follows his command, and that there is nobody to take it.
  constexpr ClientId kVisitor = 12;
  const auto visit = [&](const char* text) {
    return come(kVisitor, frame(EXTERNAL, NELKV, MSG_UI_COMMAND, {text}));
  };
  come(kVisitor, frame(EXTERNAL, NELMPM, MSG_CONNECT));
  EXPECT_EQ(visit("v"), "12: 8002) 1 2 \"\"\n");
  come(kKv, frame(NELKV, NELMPM, MSG_CONNECT));
  visit("v");
  std::string heard;
  for (const auto& [tag, text] : {std::pair{MSG_T_PROMPT, "u"},
                                  {MSG_T_TEXT, "t"},
                                  {MSG_T_TITLE, "x"},
                                  {MSG_T_PROMPT, "v"},
                                  {MSG_T_TEXT, "late"}}) {
    heard += come(kKv, fromTester(tag, {text}));
  }
  EXPECT_EQ(heard, R"(10: 2002) "u"
12: 2002) "u"
10: 2000) "t"
12: 2000) "t"
10: 2008) "x"
10: 2002) "v"
12: 2002) "v"
10: 2000) "late"
)");
  // What he did not wait for is not told to the next one.
  visit("w");
  router.connectionLost(kVisitor, LeaveReason::kHungUp);
  come(kVisitor, frame(EXTERNAL, NELMPM, MSG_CONNECT));
  EXPECT_EQ(come(kKv, fromTester(MSG_T_TEXT, {"t"})), "10: 2000) \"t\"\n");
  router.connectionLost(kKv, LeaveReason::kHungUp);
  router.awaitTester(true);
  come(kUi, fromUi(MSG_UI_COMMAND, {"given up"}));
  EXPECT_EQ(router.awaitTester(false).deliveries.size(), 2U);
}

TEST(ButtonKeeper, CopiesTheSetOfEachOpenedSystemAsItWasAtFirst) {
  const TemporaryFolder folder;
  std::ostringstream complaints;
  Complaints out(complaints);
  ButtonKeeper keeper(out);
  const auto opened = fromTester(MSG_T_SYSTEM_OPENED, {folder.path().string(), "s"});
  keeper.saw(opened, "");
  folder.write("nelkv.btn", "first");
  ButtonKeeper other(out);
  other.saw(opened, "");
  folder.write("nelkv.btn", "second");
  other.saw(opened, "");
  EXPECT_EQ(readFile(folder / "nelkv.btn~"), "first");
  EXPECT_EQ(complaints.str(), "");
}

}  // namespace
