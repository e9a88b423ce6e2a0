#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "tests/e2e/postmaster/postmaster_fixture.h"

using testing::HasSubstr;

namespace {

int accessOf(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & 0777) : -1;
}

void writePortFile(const std::string& contents) {
  std::ofstream(portFileName()) << contents;
}

}  // namespace

TEST_F(PostmasterTest, PublishesItsNumberForItsOwnUserAndTakesItBackInTheEnd) {
  EXPECT_EQ(readFile(portFileName()), std::to_string(publishedPort()) + "\n");
  EXPECT_EQ(accessOf(portFileName()), 0600);
  EXPECT_EQ(accessOf(mpm.socketPath()), 0600);

  mpm.signal(SIGINT);
  EXPECT_EQ(mpm.exitStatus(), 0);
  EXPECT_FALSE(exists(portFileName()));
  EXPECT_FALSE(exists(mpm.socketPath()));
  EXPECT_EQ(mpm.errors(), "");
}

TEST_F(PostmasterTest, LeavesALivingOneAlone) {
  // Even when a tool has removed the name of the living one's socket.
  TestClient ui = tool(NELKVUI);
  unlink(mpm.socketPath().c_str());
  const std::string before = readFile(portFileName());

  NelmpmProcess second;
  EXPECT_EQ(second.exitStatus(), 1);
  EXPECT_THAT(second.errors(), HasSubstr("another Postmaster is running, port " +
                                         before.substr(0, before.size() - 1)));
  EXPECT_EQ(second.complaintCount(), 1);
  EXPECT_EQ(readFile(portFileName()), before);
}

TEST(RendezvousTest, KnowsALivingPostmasterThatDoesNotLockByItsSocket) {
  const std::string path = socketFileName(4711, getpid());
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  const UniqueDescriptor listener(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  ASSERT_EQ(bind(listener.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(listener.get(), 1), 0);
  writePortFile("4711\n");

  NelmpmProcess mpm;
  EXPECT_EQ(mpm.exitStatus(), 1);
  EXPECT_TRUE(exists(path));
  EXPECT_EQ(readFile(portFileName()), "4711\n");
  unlink(path.c_str());
  unlink(portFileName().c_str());
}

TEST(RendezvousTest, ReplacesWhatADeadOneLeft) {
  NelmpmProcess dead;
  ASSERT_TRUE(dead.isUp());
  dead.signal(SIGKILL);
  EXPECT_EQ(dead.exitStatus(), 128 + SIGKILL);
  ASSERT_TRUE(exists(portFileName()) && exists(dead.socketPath()));

  NelmpmProcess mpm;
  EXPECT_TRUE(mpm.isUp());
  EXPECT_FALSE(exists(dead.socketPath()));
}

TEST(RendezvousTest, ReplacesAPortFileWithoutANumber) {
  for (const char* contents : {"", "rubbish\n", "99999999999999999999\n", "-1"}) {
    writePortFile(contents);
    NelmpmProcess mpm;
    EXPECT_TRUE(mpm.isUp()) << contents;
  }
}

TEST(RendezvousTest, FollowsNoLinkAndTouchesNoOtherFile) {
  const TemporaryFolder folder;
  const std::string victim = folder.write("victim", "precious");
  std::filesystem::create_symlink(victim, portFileName());

  NelmpmProcess mpm;
  EXPECT_EQ(mpm.exitStatus(), 1);
  EXPECT_EQ(mpm.complaintCount(), 1);
  EXPECT_THAT(mpm.errors(), HasSubstr(portFileName()));
  EXPECT_EQ(readFile(victim), "precious");
  EXPECT_TRUE(std::filesystem::is_symlink(portFileName()));
  unlink(portFileName().c_str());
}

TEST(RendezvousTest, OfSeveralThatStartAtOnceOverAStaleFileOneWins) {
  writePortFile("4711\n");
  std::vector<std::unique_ptr<NelmpmProcess>> rivals(6);
  for (auto& rival : rivals) {
    rival = std::make_unique<NelmpmProcess>();
  }
  ASSERT_TRUE(waitUntil([] { return publishedPort() != 0 && publishedPort() != 4711; }));
  int running = 0;
  int refused = 0;
  for (const auto& rival : rivals) {
    const auto settled = [&] {
      return rival->complaintCount() > 0 || exists(socketFileName(publishedPort(), rival->pid()));
    };
    EXPECT_TRUE(waitUntil(settled));
    if (rival->complaintCount() == 0) {
      ++running;
    } else {
      refused += rival->exitStatus() == 1 ? 1 : 0;
    }
  }
  EXPECT_EQ(running, 1);
  EXPECT_EQ(refused, 5);
}
