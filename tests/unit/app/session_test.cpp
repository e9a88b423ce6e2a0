// What the program knows and decides without a window.

#include "session/session.h"

#include <gmock/gmock.h>

#include "app/message_handler.h"
#include "link/message_codec.h"
#include "link/message_numbers.h"

namespace {

// Intended: a path or another option's value counts like an option, and an option that ends the
// line loses its last character.
TEST(CommandLineOptions, AreFoundAnywhereInTheLineWithTheTextUpToTheNext) {
  const std::tuple<std::string, int, const char*> rows[] = {
      {"nelkvui -t/a/b -post", 8, "/a/b"},  {"nelkvui -t  /a b   -post", 8, "/a b"},
      {"nelkvui -t/home/x", 8, "/home/"},   {"nelkvui -t", 8, ""},
      {"nelkvui -t -post", 8, ""},          {"-t", 0, ""},
      {"/opt/a-tb/nelkvui", 6, "b/nelkvu"}, {"nelkvui -T t -", -1, "unset"}};
  for (const auto& [line, position, expected] : rows) {
    CommandLineOptions options(line);
    std::string value = "unset";
    EXPECT_EQ(options.getOptionValue('t', value), position >= 0 ? 1 : 0);
    EXPECT_EQ(options.position(), position) << line;
    EXPECT_EQ(value, expected) << line;
    EXPECT_EQ(options.hasOption("post"), line.ends_with("-post") ? 1 : 0);
  }
}

TEST(Session, RemembersSearchesAndHowTheNewestWasMadeAndCountsPollsInVain) {
  Session session;
  EXPECT_FALSE(session.newestSearch().has_value());
  for (const Search& search : {Search{"a", true, false}, {"b", false, true}}) {
    session.rememberSearch(search);
    const auto [text, matchCase, useRegexp] = *session.newestSearch();
    EXPECT_EQ(std::tuple(text, matchCase, useRegexp),
              std::tuple(search.text, search.matchCase, search.useRegexp));
  }
  EXPECT_THAT(session.searchesNewestFirst(), testing::ElementsAre("b", "a"));
  for (int poll = 1; poll <= 200; ++poll) {
    EXPECT_EQ(session.hasPolledInVain(), poll % 100 == 0) << poll;
  }
}

// The answers are used up from the front; the last one asked stays for ever.
TEST(Session, AsksForTheEndUntilAYesAndWithoutALinkUntilNobodyCanAnswer) {
  const std::tuple<bool, std::vector<int>, int, std::vector<int>, std::size_t> rows[] = {
      {false, {0, 0, 1}, 9, {0, 0, 1, 1}, 3},
      {true, {0, 0, 1}, 9, {1, 1}, 3},
      {true, {0, 0}, 1, {0}, 2}};
  for (const auto& [isLinkLost, answers, mayAskAgain, results, questions] : rows) {
    Session session;
    session.isLinkLost = isLinkLost;
    std::size_t asked = 0;
    const auto ask = [&, &answers = answers] {
      EXPECT_TRUE(session.isAskingToExit());
      EXPECT_EQ(session.confirmExit([] { return 1; }, [] { return true; }), 0) << "while it is up";
      return answers.at(asked++);
    };
    for (int left = mayAskAgain; const int result : results) {
      EXPECT_EQ(session.confirmExit(ask, [&] { return left-- > 0; }), result);
      EXPECT_FALSE(session.isAskingToExit());
      EXPECT_EQ(session.exitConfirmed, result);
    }
    EXPECT_EQ(asked, questions);
  }
}

// Of the title and of the text only the beginnings count. Intended.
TEST(OnlyAnswer, IsGivenToARangeOfOneAndToInstancesWithoutAChoice) {
  const std::tuple<int, const char*, const char*, int, const char*> rows[] = {
      {MSG_T_ASK_INTEGER, "Korvane Se", "Instance number (0) of X", -7, "0"},
      {MSG_T_ASK_INTEGER, "Korvane Select", "Instance number (*)", 0, "*"},
      {MSG_T_ASK_INTEGER, "Korvane S", "Instance number (0)", -7, "none"},
      {MSG_T_ASK_INTEGER, "Korvane Select", "Instance number (0", -7, "none"},
      {MSG_T_ASK_RANGE, "Korvane Select", "Instance number (0)", -7, "-7"},
      {MSG_T_ASK_RANGE, "Korvane Select", "Instance number (0)", 0, "none"}};
  for (const auto& [tag, title, text, low, answer] : rows) {
    ToolMessage message;
    message.setText(0, title).setText(1, text).setNumber(2, low).setNumber(3, -7);
    EXPECT_EQ(onlyAnswer(tag, message).value_or("none"), answer) << title << ": " << text;
  }
}

TEST(Messages, ThatFillTheSessionNeedNoWindow) {
  serveMessages(theSession = Session());
  EXPECT_EQ(g_SymbolName + g_Identification2 + g_Identification3,
            "- unknown -- unknown -- unknown -");
  ToolMessage message;
  message.setText(0, "ident").setText(4, "connected");
  for (const int tag : {MSG_LINK_IDENT, MSG_CONNECT_OK, MSG_T_BUSY}) {
    EXPECT_EQ(PROCESS_MESSAGE(tag, message), 0);
  }
  EXPECT_EQ(g_Identification2 + g_Identification3, "identconnected");
  EXPECT_EQ(g_TesterBusy, 1);
  // Every one begins the count of silent polls anew.
  for (const int tag : {MSG_TOOL_STARTED, MSG_TOOL_READY, MSG_TOOL_ACTIVE, MSG_T_IDLE}) {
    g_IdleCount = 50;
    MessageHandler(0, tag, 0, "");
    EXPECT_EQ(g_IdleCount, 0);
  }
  EXPECT_EQ(g_TesterBusy, 0);
  EXPECT_EQ(decodeErrorText(kDecodeNoMemory, 7, 12), "Decode Memory Error: Tag 7");
  EXPECT_EQ(decodeErrorText(kDecodeNoMethod, 7, 12), "Decode Error: No method for tag 7");
  EXPECT_EQ(decodeErrorText(kDecodeFailed, 7, 12), "Decode Error: Tag 7");
}

}  // namespace
