// The end of a button set that was changed and not saved.

#include "tests/e2e/app/app_fixture.h"

namespace {

constexpr const char* kExitTitle = "Korvane UI Exit";
constexpr const char* kSaveTitle = "Korvane UI Save Buttons";
constexpr const char* kErrorTitle = "Korvane UI Error";
constexpr const char* kSet = ":Mine\nOne\ndo One\n:MENU &More\n&First\nsend;as one\n";

class ButtonSetTest : public AppTest {
 protected:
  /// Starts with a set in the system's folder, to which the user adds a group.
  void startAndChangeTheSet() {
    folder.write("nelkv.btn", kSet);
    connect();
    openSystem();
    choose(XK_m, XK_f);
    hear({"send;as one"});
    choose(XK_b, XK_g);
    answer("Korvane UI Add Group", "Second");
    awaitCommandLine();
  }
  std::string savedSet() const { return readFile(folder / "nelkv.btn"); }
};

TEST_F(ButtonSetTest, IsAskedForBeforeAnyOtherEndAndNotWrittenWithoutAnAnswer) {
  startAndChangeTheSet();
  postmaster.send(MSG_T_EXIT_CONFIRM);
  answer(kExitTitle, "", XK_Escape);
  awaitCommandLine();
  choose(XK_b, XK_a);
  answer(kSaveTitle);
  user.awaitWindow(kErrorTitle);
  postmaster.send(MSG_SHUTDOWN, 0, 0, 0, 0);
  postmaster.expect(MSG_SHUTDOWN_ACK);
  answer(kLostTitle);
  answer(kExitTitle, "", XK_Escape);
  answer(kExitTitle, "\t", XK_space);  // Discard: nothing else is possible
  expectEnd();
  EXPECT_EQ(savedSet(), kSet);
}

}  // namespace
