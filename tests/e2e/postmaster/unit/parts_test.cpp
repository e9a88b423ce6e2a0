#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

#include "link/message_numbers.h"
#include "postmaster/charset.h"
#include "postmaster/client.h"
#include "postmaster/postmaster.h"
#include "postmaster/tester_watch.h"
#include "tests/support/tool_frames.h"

using namespace postmaster;
using namespace std::chrono_literals;
using testing::HasSubstr;

namespace {

constexpr ClientId kUi = 10, kKv = 11, kVisitor = 12;

/// Number and parameters, "2000 "text"".
std::string told(const postmaster::Message& message) {
  const std::string line = describeMessage(*message);
  return line.substr(line.find('(') + 1) + "\n";
}

TEST(Charsets, ShowTheWindowLatinAndTheToolsWhatTheySent) {
  const auto charset = Charset::open("UTF-8");
  std::string passed;
  const auto window = [&](int tag, const std::vector<Parameter>& parameters) {
    for (const postmaster::Message& one : charset->toWindow(toWindow(tag, parameters))) {
      EXPECT_EQ(told(one), told(parseText(one->text).message)) << "both forms agree";
      passed += told(one);
    }
  };
  const auto tool = [&](int tag, const std::vector<Parameter>& parameters) {
    passed += told(charset->fromWindow(ofWindow(tag, parameters)));
  };
  window(MSG_T_TEXT, {"gr\u00fcn \u201c\u20ac\u201d \xff \u4e2d\n"});
  // A character that two messages share, and one that another message ends.
  window(MSG_T_TEXT, {"a\xe2\x82"});
  window(MSG_T_TEXT, {"\xac!\xc3"});
  window(MSG_T_TITLE, {"\u00e9"});
  window(MSG_T_TEXT, {"\xa9"});
  // Equal looks are told apart, and each choice is what was sent.
  window(MSG_T_ASK_LIST,
         {"\u4e2d", "", 0, Parameter::List{"\u4e2d", "?", "\u6587", "\u00e9", "\xe9", "x"}});
  for (const char* choice : {"? (2)", "?", "? (3)", "\xe9", "\xe9 (2)", "x"}) {
    tool(MSG_UI_LIST_CHOICE, {choice});
  }
  tool(MSG_UI_BITS, {Parameter::List{"? (3)", "\xfc"}});
  // A command from the window's list, one that was typed, one with a path that a dialog gave.
  window(MSG_T_PROMPT, {"go \u4e2d"});
  for (const char* command : {"go ?", "say \xe9", "open \xc3\xa9.sym"}) {
    tool(MSG_UI_COMMAND, {command});
  }
  // Paths are bytes.
  window(MSG_T_SYSTEM_OPENED, {"/\u00e9", "\u00e9"});
  window(MSG_T_ASK_FILE, {"\u00e9", "/\u00e9", "s\u00e9", "\u00e9"});
  tool(MSG_UI_FILE, {"/\xe9"});
  tool(MSG_UI_DIRECTORY, {"/\xe9"});
  EXPECT_EQ(passed, R"-(2000) "gr\xfcn \"EUR\" \xff ?\n"
2000) "a"
2000) "EUR!"
2000) "\xc3"
2008) "\xe9"
2000) "\xa9"
2005) "?" "" 0 ["? (2)", "?", "? (3)", "\xe9", "\xe9 (2)", "x"]
1006) "\xe4\xb8\xad"
1006) "?"
1006) "\xe6\x96\x87"
1006) "\xc3\xa9"
1006) "\xe9"
1006) "x"
1009) ["\xe6\x96\x87", "\xc3\xbc"]
2002) "go ?"
1002) "go \xe4\xb8\xad"
1002) "say \xc3\xa9"
1002) "open \xc3\xa9.sym"
2012) "/\xc3\xa9" "\xe9"
2009) "\xe9" "/\xc3\xa9" "s\xc3\xa9" "\xe9"
1008) "/\xe9"
1010) "/\xe9"
)-");
  const postmaster::Message odd = parseText(wireText({0, MSG_T_TITLE, 1, 2, 3}, "abc")).message;
  EXPECT_EQ(charset->toWindow(odd).front(), odd) << "what is no title passes as it is";
  EXPECT_EQ(Charset::open("no-such-set"), nullptr);
  EXPECT_EQ(told(Charset::open("ISO-8859-15")->fromWindow(ofWindow(MSG_UI_COMMAND, {"\xc3\xa9"}))),
            "1002) \"\\xc3\\xa9\"\n")
      << "every byte is a character";
}

TEST(Joining, MakesOneMessageOfTextsThatWait) {
  std::array<int, 2> ends{};
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK, 0, ends.data()), 0);
  Client client{UniqueDescriptor(ends[0])};
  const UniqueDescriptor reader(ends[1]);
  const postmaster::Message filler = toWindow(MSG_T_TITLE, {std::string(8000, 'x')});
  while (!client.hasQueued()) {
    client.send(filler);
  }
  for (const auto& message :
       {toWindow(MSG_T_TEXT, {"a"}), toWindow(MSG_T_TEXT, {"b"}),
        frameOf(NELGATE, NELKVUI, MSG_T_TEXT, {"other"}), toWindow(MSG_T_IDLE),
        toWindow(MSG_T_TEXT, {std::string(kMaxSentText - 1, 'c')}), toWindow(MSG_T_TEXT, {"d"}),
        toWindow(MSG_T_TEXT, {"e"})}) {
    client.sendJoined(message);
  }
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
  saw(ofWindow(MSG_UI_COMMAND, {"a"}));
  saw(ofWindow(MSG_UI_COMMAND, {"b"}));
  saw(toWindow(MSG_T_TEXT, {"x"}));
  saw(ofWindow(MSG_UI_COMMAND, {"c"}), "no tester");
  saw(toWindow(MSG_T_BUSY));
  saw(ofWindow(MSG_UI_COMMAND, {"d"}));
  saw(toWindow(MSG_T_TEXT, {"x"}));
  saw(ofWindow(MSG_UI_COMMAND, {"e"}));
  saw(toWindow(MSG_T_IDLE));
  saw(ofWindow(MSG_UI_COMMAND, {"f"}));
  watch.reset();
  saw(ofWindow(MSG_UI_CANCEL));
  EXPECT_EQ(journal, "6 6 - - - - - - - 15 - ");
  EXPECT_FALSE(watch.hasEndedSession());
  watch.saw(toWindow(MSG_T_EXIT), "");
  EXPECT_TRUE(watch.hasEndedSession());
}

TEST(Router, LosesNoCommandKeepsWarningsAndAsksInItsOwnName) {
  Router router{{77, 1234, "it"}};
  std::string heard;
  const auto hear = [&](const Routing& routing) {
    for (const Delivery& delivery : routing.deliveries) {
      heard += std::to_string(delivery.client) + ": " + told(delivery.message);
    }
  };
  const auto come = [&](ClientId client, const postmaster::Message& message) {
    hear(router.frameCame(client, message));
  };
  const auto command = [&](const char* text) { come(kUi, ofWindow(MSG_UI_COMMAND, {text})); };
  const auto visit = [&](const char* text) {
    come(kVisitor, frameOf(EXTERNAL, NELKV, MSG_UI_COMMAND, {text}));
  };
  hear(router.askUser("C", "nobody is there"));
  hear(router.warnUser("C", "early"));
  come(kUi, frameOf(NELKVUI, NELMPM, MSG_CONNECT));
  come(kUi, frameOf(NELKVUI, 0, MSG_TOOL_READY));
  hear(router.warnUser("C", "late"));
  command("early");
  router.awaitTester(true);
  command("kept");
  come(kKv, frameOf(NELKV, NELMPM, MSG_CONNECT));
  command("last");
  come(kKv, toWindow(MSG_T_PROMPT, {"kept"}));
  // The tester's question lies below that of the Postmaster.
  come(kKv, toWindow(MSG_T_QUESTION, {"a", "b"}));
  hear(router.askUser("C", "sure"));
  come(kUi, ofWindow(MSG_UI_NOT_OK));
  EXPECT_EQ(router.takeAnswer(), std::optional(false));
  EXPECT_EQ(router.takeAnswer(), std::nullopt);
  come(kUi, ofWindow(MSG_UI_OK));
  hear(router.connectionLost(kKv, LeaveReason::kHungUp));
  // A visitor hears what follows his command, and that there is nobody to take it.
  come(kVisitor, frameOf(EXTERNAL, NELMPM, MSG_CONNECT));
  visit("v");
  come(kKv, frameOf(NELKV, NELMPM, MSG_CONNECT));
  visit("v");
  for (const auto& [tag, text] : {std::pair{MSG_T_PROMPT, "u"},
                                  {MSG_T_TEXT, "t"},
                                  {MSG_T_TITLE, "x"},
                                  {MSG_T_PROMPT, "v"},
                                  {MSG_T_TEXT, "late"}}) {
    come(kKv, toWindow(tag, {text}));
  }
  // What he did not wait for is not told to the next one.
  visit("w");
  router.connectionLost(kVisitor, LeaveReason::kHungUp);
  come(kVisitor, frameOf(EXTERNAL, NELMPM, MSG_CONNECT));
  come(kKv, toWindow(MSG_T_TEXT, {"t"}));
  router.connectionLost(kKv, LeaveReason::kHungUp);
  router.awaitTester(true);
  command("given up");
  hear(router.awaitTester(false));
  EXPECT_EQ(heard, R"(10: 8000) 2 77 1234 1 "it"
10: 9002)
10: 11006) "C" "early"
10: 11006) "C" "late"
10: 2000) "< \"early\" was not sent: there is no tester >\n"
10: 2002) "early"
11: 8000) 1 77 1234 2 "it"
11: 1002) "kept"
11: 1002) "last"
10: 2002) "kept"
10: 2001) "a" "b"
10: 2001) "C" "sure"
11: 1000)
10: 8002) 1 2 "NELKV"
10: 2000) "< \"last\" was not confirmed: the tester has left >\n"
10: 2002) "last"
12: 8000) 7 77 1234 2 "it"
12: 8002) 1 2 ""
11: 8000) 1 77 1234 3 "it"
11: 1002) "v"
10: 2002) "u"
12: 2002) "u"
10: 2000) "t"
12: 2000) "t"
10: 2008) "x"
10: 2002) "v"
12: 2002) "v"
10: 2000) "late"
11: 1002) "w"
12: 8000) 7 77 1234 3 "it"
10: 2000) "t"
10: 2000) "< \"given up\" was not sent: there is no tester >\n"
10: 2002) "given up"
)");
}

TEST(ButtonKeeper, CopiesTheSetOfEachOpenedSystemAsItWasAtFirst) {
  const TemporaryFolder folder;
  std::ostringstream complaints;
  Complaints out(complaints);
  ButtonKeeper keeper(out);
  const auto opened = toWindow(MSG_T_SYSTEM_OPENED, {folder.path().string(), "s"});
  keeper.saw(opened, "");
  folder.write("nelkv.btn", "first");
  ButtonKeeper other(out);
  other.saw(opened, "");
  folder.write("nelkv.btn", "second");
  other.saw(opened, "");
  EXPECT_EQ(readFile(folder / "nelkv.btn~"), "first");
  EXPECT_EQ(complaints.str(), "");
}

postmaster::Message message(int sender, int dest, int tag, const std::string& payload = {}) {
  const int kind = dest == 0 ? kFrameUndirected : kFrameDirected;
  return std::make_shared<Envelope>(Envelope{{kind, tag, sender, dest, 0}, payload, {}});
}

TEST(TraceFormat, ShowsParametersAsFarAsTheyGoAndCutsLongOnes) {
  const std::string item = wireString("i");
  const std::tuple<int, std::string, std::string> rows[] = {
      {2000, wireString(std::string_view("a\"\\\n\t\r\0\x7f\xe4", 9)),
       R"("a\"\\\n\t\r\x00\x7f\xe4")"},
      {2000, wireString(std::string(121, 'x')), '"' + std::string(120, 'x') + "\"... 121 bytes"},
      {2001, item + wireWord(-9), "\"i\" <malformed, 9 bytes in all>"},
      {2017, wireWord(-1) + wireWord(0) + wireWord(2) + item + item, "-1 0 [\"i\", \"i\"]"},
      {2017, wireWord(0) + wireWord(0) + wireWord(9) + item,
       "0 0 [\"i\"]<malformed, 17 bytes in all>"},
      {2014, "abc", "<3 bytes more>"},
      {4711, "abc", "<3 bytes more>"},
  };
  for (const auto& [tag, payload, text] : rows) {
    const std::string line = describeMessage(*message(NELKV, NELKVUI, tag, payload));
    EXPECT_EQ(line.substr(line.find(')') + 2), text);
  }
}

TEST(CommandSplitting, FollowsQuotesAndBackslashes) {
  EXPECT_THAT(splitCommand("  a\t-b 'c \"d\\' \"e 'f\\\"\" g\\ h '' x\"y\"z ").words,
              testing::ElementsAre("a", "-b", "c \"d\\", "e 'f\"", "g h", "", "xyz"));
  for (const auto& [wrong, fault] : {std::pair{"a 'b", "a ' is not closed"},
                                     {"a \"b", "a \" is not closed"},
                                     {"a\\", "nothing follows the \\ at its end"},
                                     {" ", "it names no program"}}) {
    EXPECT_EQ(splitCommand(wrong).fault, fault) << wrong;
  }
}

/// What is done in twelve seconds and when, each with the time up to which it is waited then.
std::string steps(const ShutdownSequence::Situation& situation, int hastened = -1) {
  ShutdownSequence sequence;
  const ShutdownSequence::TimePoint start{};
  EXPECT_EQ(sequence.advance(start + 24h, situation), ShutdownSequence::Action::kNone);
  sequence.begin(start);
  std::string all;
  for (int ms = 0; ms < 12000; ++ms) {
    const auto now = start + std::chrono::milliseconds(ms);
    if (ms == hastened) {
      sequence.hasten(now);
    }
    const auto action = static_cast<std::size_t>(sequence.advance(now, situation));
    if (action != 0) {
      const char* const names[] = {"", "order", "tell", "terminate", "kill", "finish"};
      const auto due = sequence.deadline();
      all += std::to_string(ms) + " " + names[action] +
             (due ? " " + std::to_string((*due - start) / 1ms) : "") + ", ";
    }
  }
  return all;
}

TEST(ShutdownSteps, ComeInOrderAndWaitForThoseThatHaveAnswered) {
  EXPECT_EQ(steps({false, true, false, true}),
            "1000 order 3000, 3000 terminate 4000, 4000 kill 6000, 6000 finish, ");
  EXPECT_EQ(steps({true, true, true, false}, 5000),
            "0 order 2000, 2000 tell, 5000 terminate 6000, 6000 kill 8000, 8000 finish, ");
  EXPECT_EQ(steps({true, false, true, true}), "0 order 2000, 2000 terminate 3000, 2001 finish, ");
}

TEST(Router, RefusesWhatMakesNoSense) {
  Router router{{77, 1234, "it"}};
  const std::tuple<ClientId, int, int, int, const char*> rows[] = {
      {kKv, NELKV, 0, MSG_CONNECT, "before the connection"},
      {kKv, NELMPM, NELMPM, MSG_CONNECT, "no tool of this type"},
      {kUi, NELKVUI, NELMPM, MSG_CONNECT, ""},
      {kKv, NELKV, NELMPM, MSG_CONNECT, ""},
      {kKv, NELKVUI, NELKV, MSG_UI_COMMAND, "in the name of NELKVUI"},
      {kKv, NELKV, NELKVUI, MSG_CONNECT_OK, "only the Postmaster"},
      {kKv, NELKV, NELKVUI, MSG_SHUTDOWN_NOW, "only the Postmaster"},
      {kKv, NELKV, NELMPM, MSG_CONNECT, "a second time"},
      {kKv, NELKV, NELMPM, MSG_SHUTDOWN_ACK, "without a shutdown"},
      {kKv, NELKV, NELMPM, MSG_T_TEXT, "does not know"},
      {kKv, NELKV, NELKVUI, MSG_DISCONNECT, "to others"},
  };
  for (const auto& [client, sender, dest, tag, refusal] : rows) {
    EXPECT_THAT(router.frameCame(client, message(sender, dest, tag)).refusal, HasSubstr(refusal));
  }
}

}  // namespace
