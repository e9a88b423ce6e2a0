// The end of a button set that was changed and not saved.

#include "tests/e2e/app/app_fixture.h"

namespace {

constexpr const char* kSet = ":Mine\nOne\ndo One\n";

TEST_F(AppTest, AsksForAChangedSetBeforeAnyOtherEndAndWritesNothingWithoutAnAnswer) {
  folder.write("nelkv.btn", kSet);
  connect();
  openSystem();
  addGroup("Second");
  postmaster.send(MSG_T_EXIT_CONFIRM);
  answer(kExitTitle, "", XK_Escape);
  awaitCommandLine();
  choose(XK_b, XK_a);
  answer("Korvane UI Save Buttons");
  user.awaitWindow("Korvane UI Error");
  postmaster.send(MSG_SHUTDOWN, 0, 0, 0, 0);
  postmaster.expect(MSG_SHUTDOWN_ACK);
  answer(kLostTitle);
  answer(kExitTitle, "", XK_Escape);
  answer(kExitTitle, "\t", XK_space);  // Discard: nothing else is possible
  expectEnd();
  EXPECT_EQ(readFile(folder / "nelkv.btn"), kSet);
}

}  // namespace
