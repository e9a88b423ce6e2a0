// How button files are opened, and how they are replaced.

#include "button_file/file_access.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <iterator>

#include "tests/support/basics.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

class ButtonFileAccess : public testing::Test {
 protected:
  ButtonFileAccess() { folder.write("a.btn", "old"); }

  std::string at(const std::string& name) const { return (folder / name).string(); }
  std::string content(const std::string& name) const { return readFile(folder / name); }
  mode_t mode(const std::string& name) const {
    struct stat about = {};
    EXPECT_EQ(stat(at(name).c_str(), &about), 0);
    return about.st_mode & 07777;
  }
  long files() const {
    return std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator());
  }

  TemporaryFolder folder;
};

TEST_F(ButtonFileAccess, ReplacesWhatAPathOrItsLinkStandsFor) {
  chmod(at("a.btn").c_str(), 0640);
  EXPECT_TRUE(replaceFile(at("a.btn"), "new"));
  EXPECT_EQ(content("a.btn"), "new");
  EXPECT_EQ(mode("a.btn"), 0640U);
  const mode_t mask = umask(027);
  EXPECT_TRUE(replaceFile(at("b.btn"), "made"));
  umask(mask);
  EXPECT_EQ(mode("b.btn"), 0640U);
  fs::create_symlink("a.btn", folder / "link");
  fs::create_symlink("link", folder / "second");
  fs::create_symlink("missing", folder / "dangling");
  EXPECT_TRUE(replaceFile(at("second"), "linked"));
  EXPECT_TRUE(fs::is_symlink(folder / "second") && fs::is_symlink(folder / "link"));
  EXPECT_EQ(content("a.btn"), "linked");
  EXPECT_TRUE(replaceFile(at("dangling"), "there"));
  EXPECT_EQ(content("missing"), "there");
  fs::create_hard_link(folder / "a.btn", folder / "other name");
  EXPECT_TRUE(replaceFile(at("a.btn"), "all"));
  EXPECT_EQ(content("other name"), "all");
  EXPECT_EQ(files(), 7) << "nothing is left behind";
}

// What another user owns and what stands in a folder that takes no file more is written in place.
TEST_F(ButtonFileAccess, WritesInPlaceWhatItCannotReplace) {
  const auto inode = [&] {
    struct stat about = {};
    stat(at("a.btn").c_str(), &about);
    return about.st_ino;
  };
  const ino_t before = inode();
  chmod(at("a.btn").c_str(), 0666);
  // Nothing is forbidden to the superuser.
  const bool isSuperuser = geteuid() == 0;
  for (const mode_t folderMode : {isSuperuser ? 0777U : 0555U, 0555U}) {
    chmod(folder.path().c_str(), folderMode);
    EXPECT_TRUE(!isSuperuser || seteuid(65534) == 0);
    EXPECT_TRUE(replaceFile(at("a.btn"), folderMode == 0777 ? "longer than before" : "short"));
    const bool isOpen = folderMode == 0777;
    EXPECT_EQ(replaceFile(at(isOpen ? "b.btn" : "c.btn"), "made"), isOpen);
    EXPECT_TRUE(!isSuperuser || seteuid(0) == 0);
    EXPECT_EQ(content("a.btn"), folderMode == 0777 ? "longer than before" : "short");
    EXPECT_EQ(inode(), before);
  }
  chmod(folder.path().c_str(), 0755);
  EXPECT_EQ(files(), isSuperuser ? 2 : 1);
  chmod(at("a.btn").c_str(), 0444);
  EXPECT_TRUE(!isSuperuser || seteuid(65534) == 0);
  EXPECT_FALSE(replaceFile(at("a.btn"), "new"));
  EXPECT_TRUE(!isSuperuser || seteuid(0) == 0);
}

TEST_F(ButtonFileAccess, KeepsTheOldFileWhenTheDiskTakesNoMore) {
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit full = {8, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  const bool isReplaced = replaceFile(at("a.btn"), "more than eight bytes");
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_DFL);
  EXPECT_FALSE(isReplaced);
  EXPECT_EQ(content("a.btn"), "old");
  EXPECT_EQ(files(), 1);
}

TEST_F(ButtonFileAccess, TakesRegularFilesOnlyAndWaitsForNone) {
  ASSERT_EQ(mkfifo(at("pipe").c_str(), 0600), 0);
  for (const std::string& path :
       {at("pipe"), folder.path().string(), std::string("/dev/null"), at("none/a.btn")}) {
    EXPECT_EQ(openRegularFile(path), nullptr) << path;
    EXPECT_FALSE(replaceFile(path, "new")) << path;
  }
  EXPECT_NE(openRegularFile(at("a.btn")), nullptr);
}

}  // namespace
