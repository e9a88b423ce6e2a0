// The Postmaster's end at any moment, by any cause: the window ends in its stated way.

#include <sys/prctl.h>
#include <sys/wait.h>

#include <csignal>

#include "tests/e2e/app/app_fixture.h"
#include "tests/soak/soak.h"

namespace {

constexpr int kDeaths = 1000;

enum Moment { kIdle, kFlood, kDialog, kFileForm, kMenu, kDropDown, kHalfFrame, kMoments };
enum Cause { kKill, kShutdown, kShutdownNow, kCauses };

/// A Postmaster with its window, up to the moment of its death.
class Scene : public AppTest {
 public:
  /// With `isSeen` it has come about what the moment is named for; otherwise it is about to.
  void reach(Moment moment, bool isSeen);
  /// Announces the end, if that is its cause.
  void announce(Cause cause);

 private:
  void TestBody() override {}
};

void Scene::reach(Moment moment, bool isSeen) {
  // Unlike other children, it outlives its parent.
  postmaster.start([] {
    ::prctl(PR_SET_PDEATHSIG, 0);
    return ::execl(builtProgram("nelkvui").c_str(), "nelkvui", "-xrm", "nelkvui.promptKeyDelay:0",
                   nullptr);
  });
  shakeHands();
  user.awaitWindow(kMainTitle);
  postmaster.send(MSG_T_PROMPT, "known");
  expectAnswer();
  if (moment == kFlood) {
    for (int i = 0; i < 500; ++i) {
      tell("text\n");
    }
  } else if (moment == kHalfFrame) {
    postmaster.sendRaw("00000000");
  } else if (moment == kDialog) {
    postmaster.send(MSG_T_ASK_STRING, "t", "Name?");
  } else if (moment == kFileForm) {
    postmaster.send(MSG_T_ASK_FILE, "File", "/", "log", "Logs");
  } else if (moment == kMenu || moment == kDropDown) {
    user.press(moment == kMenu ? XK_f : XK_Down, screen::kAlt);
  }
  if (isSeen && (moment == kDialog || moment == kFileForm)) {
    user.awaitWindow(moment == kDialog ? kPromptTitle : "File");
  } else if (isSeen && (moment == kMenu || moment == kDropDown)) {
    user.awaitMenu();
  }
}

void Scene::announce(Cause cause) {
  if (cause == kShutdownNow) {
    postmaster.send(MSG_SHUTDOWN_NOW);
  } else if (cause == kShutdown) {
    postmaster.send(MSG_SHUTDOWN, 0, 0, 0, 0);
    postmaster.expectLater(MSG_SHUTDOWN_ACK);
  }
}

/// Whether a name of a Postmaster's socket is anywhere in the folder.
bool hasSocket(const std::filesystem::path& folder) {
  return std::ranges::any_of(std::filesystem::recursive_directory_iterator(folder),
                             [](const auto& entry) { return entry.is_socket(); });
}

class Deaths : public testing::Test {
 protected:
  void dieOnce(Moment moment, Cause cause, bool isSeen);
  /// Waits for the window's end; its user wants to go on and presses keys, unless it ends by
  /// itself. How it ended.
  int awaitEnd(Cause cause);

  User user;
};

int Deaths::awaitEnd(Cause cause) {
  int status = -1;
  const auto hasEnded = [&] { return ::waitpid(-1, &status, WNOHANG) != 0; };
  const auto pressOn = [&] {
    for (const screen::KeySymbol key : {XK_Escape, XK_Return}) {
      if (hasEnded()) {
        return true;
      }
      if (cause != kShutdownNow) {
        user.press(key);
      }
    }
    return false;
  };
  user.waitFor(pressOn, "the end of the program");
  return WEXITSTATUS(status);
}

void Deaths::dieOnce(Moment moment, Cause cause, bool isSeen) {
  // What a killed one leaves goes with this folder.
  const TemporaryFolder folder;
  ::setenv("TMPDIR", folder.path().c_str(), 1);
  ChildProcess player([&]() -> int {
    Scene scene;
    scene.reach(moment, isSeen);
    scene.announce(cause);
    return ::raise(SIGKILL);
  });
  ASSERT_EQ(player.exitStatus(), 128 + SIGKILL) << player.report();
  EXPECT_EQ(awaitEnd(cause), cause == kShutdownNow ? 154 : 0);
  // Who asks for an immediate end cleans up himself.
  EXPECT_EQ(hasSocket(folder.path()), cause == kShutdownNow);
  ::unsetenv("TMPDIR");
}

TEST_F(Deaths, EndTheWindowInTheStatedWay) {
  ::prctl(PR_SET_CHILD_SUBREAPER, 1);
  for (int i = 0; i < theSoak.share(kDeaths) && !HasFailure(); ++i) {
    const auto moment = static_cast<Moment>(theSoak.random(kMoments));
    // In the middle of a word nothing else can be told.
    const auto cause = static_cast<Cause>(moment == kHalfFrame ? 0 : theSoak.random(kCauses));
    const bool isSeen = theSoak.random(3) != 0;
    SCOPED_TRACE(testing::Message() << "death " << i << " at moment " << moment << " by cause "
                                    << cause << " seen " << isSeen);
    dieOnce(moment, cause, isSeen);
  }
  theSoak.figure("deaths of the Postmaster", theSoak.share(kDeaths));
}

}  // namespace
