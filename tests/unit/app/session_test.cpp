// What the program knows and decides without a window.

#include "app/session.h"

#include <gmock/gmock.h>

#include "app/message_handler.h"
#include "link/message_codec.h"
#include "link/message_numbers.h"

namespace {

using testing::ElementsAre;

// Intended: a path or another option's value counts like an option, and an option that ends the
// line loses its last character.
TEST(CommandLineOptions, AreFoundAnywhereInTheLineWithTheTextUpToTheNext) {
  struct Row {
    const char* line;
    int position;
    const char* value;
  };
  for (const Row& row :
       {Row{"nelkvui -t/a/b -post", 8, "/a/b"}, Row{"nelkvui -t  /a b   -post", 8, "/a b"},
        Row{"nelkvui -t/home/x", 8, "/home/"}, Row{"nelkvui -t", 8, ""}, Row{"nelkvui -tx", 8, ""},
        Row{"nelkvui -t -post", 8, ""}, Row{"nelkvui -t a-b -", 8, "a-b"}, Row{"-t", 0, ""},
        Row{"/opt/a-tb/nelkvui", 6, "b/nelkvu"}, Row{"nelkvui -T", -1, "unset"},
        Row{"nelkvui t -", -1, "unset"}, Row{"", -1, "unset"}}) {
    SCOPED_TRACE(row.line);
    CommandLineOptions options(row.line);
    EXPECT_EQ(options.position(), -1);
    std::string value = "unset";
    EXPECT_EQ(options.getOptionValue('t', value), row.position >= 0 ? 1 : 0);
    EXPECT_EQ(options.position(), row.position);
    EXPECT_EQ(value, row.value);
    EXPECT_EQ(options.hasOption("post"), std::string_view(row.line).ends_with("-post") ? 1 : 0);
  }
  CommandLineOptions& first = CommandLineOptions::instance("nelkvui -v");
  EXPECT_EQ(&CommandLineOptions::instance(""), &first);
  EXPECT_EQ(first.hasOptionChar('v'), 1);
}

TEST(Session, RemembersSearchesAndHowTheNewestWasMade) {
  Session session;
  EXPECT_FALSE(session.newestSearch().has_value());
  session.rememberSearch({"a", true, false});
  session.rememberSearch({"b", false, true});
  session.rememberSearch({"b", true, true});
  EXPECT_THAT(session.searchesNewestFirst(), ElementsAre("b", "b", "a"));
  const auto [text, matchCase, useRegexp] = *session.newestSearch();
  EXPECT_EQ(text, "b");
  EXPECT_TRUE(matchCase && useRegexp);
  session.rememberSearch({"c", false, false});
  EXPECT_FALSE(session.newestSearch()->matchCase || session.newestSearch()->useRegexp);
}

TEST(Session, CountsSilentPollsToAHundred) {
  Session session;
  for (int round = 0; round < 2; ++round) {
    int polls = 1;
    while (!session.hasPolledInVain() && polls < 1000) {
      ++polls;
    }
    EXPECT_EQ(polls, 100);
    EXPECT_EQ(session.idleCount, 0);
  }
}

// The answers are used up from the front; the last one asked stays for ever.
TEST(Session, AsksForTheEndUntilAYesAndWithoutALinkUntilNobodyCanAnswer) {
  struct Row {
    bool isLinkLost;
    std::vector<int> answers;
    int mayAskAgain;  ///< how often
    std::vector<int> results;
    std::size_t asked;
  };
  for (const Row& row : {Row{false, {1}, 0, {1, 1}, 1}, Row{false, {0, 0, 1}, 9, {0, 0, 1, 1}, 3},
                         Row{true, {0, 0, 1}, 9, {1, 1}, 3}, Row{true, {0, 0}, 1, {0}, 2}}) {
    Session session;
    session.isLinkLost = row.isLinkLost;
    std::size_t asked = 0;
    int left = row.mayAskAgain;
    const auto ask = [&] {
      EXPECT_TRUE(session.isAskingToExit());
      EXPECT_EQ(session.confirmExit([] { return 1; }, [] { return true; }), 0) << "while it is up";
      return row.answers.at(asked++);
    };
    for (const int result : row.results) {
      EXPECT_EQ(session.confirmExit(ask, [&] { return left-- > 0; }), result);
      EXPECT_FALSE(session.isAskingToExit());
      EXPECT_EQ(session.exitConfirmed, result);
    }
    EXPECT_EQ(asked, row.asked);
  }
}

TEST(OnlyAnswer, IsGivenToARangeOfOneAndToInstancesWithoutAChoice) {
  struct Row {
    int tag;
    const char* title;
    const char* text;
    int low, high;
    std::optional<std::string> answer;
  };
  // Of the title and of the text only the beginnings count. Intended.
  for (const Row& row :
       {Row{MSG_T_ASK_INTEGER, "Korvane Se", "Instance number (0) of X", 0, 0, "0"},
        Row{MSG_T_ASK_INTEGER, "Korvane Select", "Instance number (*)", 0, 0, "*"},
        Row{MSG_T_ASK_INTEGER, "Korvane S", "Instance number (0)", 0, 0, {}},
        Row{MSG_T_ASK_INTEGER, "Korvane Select", "Instance number (0", 0, 0, {}},
        Row{MSG_T_ASK_INTEGER, "Korvane Select", "Instance number (1)", 0, 0, {}},
        Row{MSG_T_ASK_RANGE, "Korvane Select", "Instance number (0)", -7, -7, "-7"},
        Row{MSG_T_ASK_RANGE, "Korvane Select", "Instance number (0)", 0, 1, {}}}) {
    ToolMessage message;
    message.setText(0, row.title).setText(1, row.text).setNumber(2, row.low);
    message.setNumber(3, row.high);
    EXPECT_EQ(onlyAnswer(row.tag, message), row.answer) << row.title << ": " << row.text;
  }
}

TEST(Messages, ThatFillTheSessionNeedNoWindow) {
  theSession = Session();
  EXPECT_EQ(g_SymbolName + g_Identification2 + g_Identification3,
            "- unknown -- unknown -- unknown -");
  EXPECT_EQ(theSession.windowTitle("system"), "Korvane UI - system");
  ToolMessage message;
  message.setText(0, "ident").setText(4, "connected");
  const auto carryOut = [&](int tag) { return PROCESS_MESSAGE(tag, message); };
  EXPECT_EQ(carryOut(MSG_LINK_IDENT) + carryOut(MSG_CONNECT_OK) + carryOut(MSG_T_BUSY), 0);
  EXPECT_EQ(g_Identification2 + g_Identification3, "identconnected");
  EXPECT_EQ(g_TesterBusy, 1);
  // Nor do those that are taken undecoded; every one begins the count of silent polls anew.
  for (const int tag : {MSG_TOOL_STARTED, MSG_TOOL_READY, MSG_TOOL_ACTIVE, MSG_T_IDLE}) {
    g_IdleCount = 50;
    MessageHandler(0, tag, 0, "");
    EXPECT_EQ(g_IdleCount, 0);
  }
  EXPECT_EQ(g_TesterBusy, 0);
  // One that nothing is done on, or that is not decoded, is named on standard output.
  for (const int tag : {4711, static_cast<int>(MSG_TOOL_READY)}) {
    testing::internal::CaptureStdout();
    carryOut(tag);
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "PROCESS_MESSAGE: " + std::to_string(tag));
  }
}

TEST(Messages, ThatCannotBeDecodedAreNamedByTheirFault) {
  const std::map<int, std::string> texts = {
      {kDecodeNoMemory, "Decode Memory Error: Tag 7"},
      {kDecodeLengthWrong, "Decode Error in message length:\nTag 7\nLength 12"},
      {kDecodeNoMethod, "Decode Error: No method for tag 7"},
      {kDecodeFailed, "Decode Error: Tag 7"},
      {kDecodeFailed - 10, ""},
      {0, ""}};
  for (const auto& [result, text] : texts) {
    EXPECT_EQ(decodeErrorText(result, 7, 12), text);
  }
}

}  // namespace
