// Frames and dialogs without end in one window: it stays as small and as quick as it was.

#include <map>

#include "tests/e2e/app/app_fixture.h"
#include "tests/soak/soak.h"

#include <X11/Xlib.h>

#include <X11/extensions/XRes.h>

namespace {

using List = Parameter::List;
using Figures = std::map<std::string, long>;

constexpr int kFramesIn = 1000000;
constexpr int kFramesOut = 100000;
constexpr int kDialogsOfAKind = 1000;
constexpr int kMostRounds = 100;
constexpr int kLeastRounds = 3;

const List kItems{"beta", "alpha", "gamma"};

struct Kind {
  int question;
  std::vector<Parameter> parameters;
  int answer = 0;  ///< none
  int cancel = MSG_UI_CANCEL;
  const char* typed = "";
  const char* title = kPromptTitle;
  const char* after = nullptr;  ///< a box behind the answer
};

const Kind kKinds[] = {
    {MSG_T_QUESTION, {"Box", "Go on?"}, MSG_UI_OK, MSG_UI_NOT_OK, "", "Box"},
    {MSG_T_ERROR_BOX, {"Error", "text"}, MSG_UI_ACK, MSG_UI_ACK, "", "Error"},
    {MSG_T_WARNING_BOX, {"Warning", "text"}, 0, 0, "", "Warning"},
    {MSG_T_ASK_STRING, {"t", "Name?"}, MSG_UI_STRING},
    {MSG_T_ASK_INTEGER, {"Other", "Number?"}, MSG_UI_VALUE},
    {MSG_T_ASK_RANGE, {"t", "Which?", -1, 5}, MSG_UI_VALUE},
    {MSG_T_ASK_LIST, {"t", "One\nof", 0, kItems}, MSG_UI_LIST_CHOICE},
    {MSG_T_ASK_BITS, {"t", "Any of", kItems}, MSG_UI_BITS},
    {MSG_T_ASK_SIGNAL_PARAM, {"t", "Of", 0, kItems}, MSG_UI_SIGNAL_PARAM},
    {MSG_T_ASK_FILE, {"File", "/", "log", "Logs"}, MSG_UI_FILE, MSG_UI_CANCEL, "a.log", "File"},
    // The directory that it opens with is no answer.
    {MSG_T_ASK_DIRECTORY, {"", ""}, MSG_UI_CANCEL, MSG_UI_CANCEL, "", "Select Source Directory"},
    {MSG_T_FIND, {0, 1, kItems}, 0, MSG_UI_CANCEL, "nowhere", kPromptTitle, kMainTitle},
};

class LongUse : public AppTest {
 protected:
  void sendFrames(int count);
  void sendCommands(int count);
  void answerDialogs(int ofAKind);
  Figures measure();

  long dialogs = 0;
};

std::string wire(int tag, const std::vector<Parameter>& parameters) {
  return toWire({kFrameDirected, tag, NELKV, NELKVUI, parameters});
}

const std::string kAsking = wire(MSG_T_ASK_RANGE, {"t", "Only one", 7, 7});

/// Texts mostly, and all else that asks nobody.
std::string anyFrame(int number) {
  switch (theSoak.random(20)) {
    case 0:
      return wire(MSG_T_TITLE, {"system " + std::to_string(number)});
    case 1:
      return wire(theSoak.random(2) == 0 ? MSG_T_BUSY : MSG_T_IDLE, {});
    case 2:
      return wire(MSG_TOOL_STARTED + theSoak.random(2), {});
    case 3:
      return wire(MSG_LINK_IDENT, {std::string(theSoak.random(5000), 'i')});
    case 4:
      return kAsking;
    default:
      return wire(MSG_T_TEXT, {std::string(theSoak.random(200), static_cast<char>(number)) + "\n"});
  }
}

void LongUse::sendFrames(int count) {
  std::string bytes;
  int asked = 0;
  for (int i = 0; i < count; ++i) {
    const std::string frame = anyFrame(i);
    asked += frame == kAsking ? 1 : 0;
    bytes += frame;
  }
  for (postmaster.sendRaw(bytes); asked > 0; --asked) {
    postmaster.expect(MSG_UI_VALUE, "7");
  }
  postmaster.send(MSG_T_TITLE, "long use");
  expectAnswer();
}

/// One line of many commands, brought back from the history and released at once.
void LongUse::sendCommands(int count) {
  std::string line = "c";
  for (int i = 1; i < count; ++i) {
    line += ";c";
  }
  postmaster.send(MSG_T_PROMPT, line);
  expectAnswer();
  user.press(XK_Down);
  user.press(XK_Return);
  hear({"c"});
  tell("done\n");
  postmaster.send(MSG_T_PROMPT, line);
  hear(std::vector<std::string>(static_cast<std::size_t>(count - 1), "c"));
}

void LongUse::answerDialogs(int ofAKind) {
  for (int i = 0; i < ofAKind; ++i) {
    const bool isAnswered = i % 2 == 0;
    for (const Kind& kind : kKinds) {
      SCOPED_TRACE(kind.question);
      postmaster.sendRaw(wire(kind.question, kind.parameters));
      answer(kind.title, isAnswered ? kind.typed : "", isAnswered ? XK_Return : XK_Escape);
      if (const int tag = isAnswered ? kind.answer : kind.cancel; tag != 0) {
        postmaster.expect(tag);
      }
      if (isAnswered && kind.after != nullptr) {
        answer(kind.after);
      }
      ++dialogs;
    }
  }
}

Figures LongUse::measure() {
  awaitSleep();
  long pages = 0;
  std::istringstream(readFile(procFolder() / "statm").substr()) >> pages >> pages;
  int types = 0;
  XResType* list = nullptr;
  XResQueryClientResources(user.display(), mainWindow, &types, &list);
  Figures figures;
  for (int i = 0; i < types; ++i) {
    char* name = XGetAtomName(user.display(), list[i].resource_type);
    figures[std::string("X resources ") + name] = list[i].count;
    XFree(name);
  }
  XFree(list);
  const std::filesystem::directory_iterator descriptors(procFolder() / "fd");
  figures["memory, kB"] = pages * ::getpagesize() / 1024;
  figures["open files"] = std::distance(begin(descriptors), end(descriptors));
  return figures;
}

TEST_F(LongUse, LeavesTheProgramAsItWas) {
  // Without menus, which each opening adds anew.
  folder.write("nelkv.btn", ":Mine\nOne\ndo One\n:COLLAPSED Second\nTwo\ndo Two\n");
  connect();
  const int rounds = std::clamp(kMostRounds / theSoak.divisor, kLeastRounds, kMostRounds);
  Figures first;
  for (int round = 0; round < rounds; ++round) {
    openSystem();
    sendFrames(theSoak.share(kFramesIn) / rounds);
    awaitCommandLine("Korvane UI - long use");
    sendCommands(std::max(2, theSoak.share(kFramesOut) / rounds));
    answerDialogs(std::max(2, theSoak.share(kDialogsOfAKind) / rounds));
    awaitCommandLine("Korvane UI - long use");
    choose(XK_v, XK_t);
    if (round == 0) {
      first = measure();
    }
  }
  theSoak.figure("rounds of long use", rounds);
  theSoak.figure("dialogs", dialogs);
  for (const auto& [name, value] : measure()) {
    theSoak.figure(name, value, ", after the first round " + std::to_string(first[name]));
#ifndef __SANITIZE_ADDRESS__  // which keeps what was freed
    // The toolkit keeps a drawing context of each window that it writes text into.
    const long kept = name.starts_with("memory") ? dialogs : 0;
    EXPECT_LE(value, first[name] + first[name] / 20 + kept) << name;
#endif
  }
  postmaster.send(MSG_T_EXIT);
  postmaster.expect(MSG_DISCONNECT);
  expectEnd();
}

}  // namespace
