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
  struct stat about(const char* name = "a.btn") const {
    struct stat known = {};
    EXPECT_EQ(stat((folder / name).c_str(), &known), 0);
    return known;
  }
  long files() const {
    return std::distance(fs::directory_iterator(folder.path()), fs::directory_iterator());
  }

  TemporaryFolder folder;
  const std::string path = folder.write("a.btn", "old");
};

TEST_F(ButtonFileAccess, ReplacesWhatAPathOrItsLinkStandsFor) {
  chmod(path.c_str(), 0640);
  fs::create_symlink("a.btn", folder / "link");
  fs::create_symlink("link", folder / "second");
  EXPECT_TRUE(replaceFile(folder / "second", "new"));
  EXPECT_TRUE(fs::is_symlink(folder / "second") && fs::is_symlink(folder / "link"));
  EXPECT_EQ(readFile(path), "new");
  EXPECT_EQ(about().st_mode & 07777, 0640U);
  fs::create_symlink("missing", folder / "dangling");
  const mode_t mask = umask(027);
  EXPECT_TRUE(replaceFile(folder / "dangling", "made"));
  umask(mask);
  EXPECT_EQ(readFile(folder / "missing"), "made");
  EXPECT_EQ(about("missing").st_mode & 07777, 0640U);
  fs::create_hard_link(path, folder / "other name");
  EXPECT_TRUE(replaceFile(path, "all"));
  EXPECT_EQ(readFile(folder / "other name"), "all");
  EXPECT_EQ(files(), 6) << "nothing is left behind";
}

// What another user owns, and what stands in a folder that takes no file more.
TEST_F(ButtonFileAccess, WritesInPlaceWhatItCannotReplace) {
  const struct stat before = about();
  chmod(path.c_str(), 0666);
  // To the superuser nothing is forbidden.
  const bool isSuperuser = geteuid() == 0;
  for (const mode_t folderMode : {isSuperuser ? 0777U : 0555U, 0555U}) {
    chmod(folder.path().c_str(), folderMode);
    EXPECT_TRUE(!isSuperuser || seteuid(65534) == 0);
    EXPECT_TRUE(replaceFile(path, folderMode == 0777 ? "longer than before" : "short"));
    EXPECT_FALSE(folderMode != 0777 && replaceFile(folder / "b.btn", "made"));
    EXPECT_TRUE(!isSuperuser || seteuid(0) == 0);
    EXPECT_EQ(readFile(path), folderMode == 0777 ? "longer than before" : "short");
    EXPECT_EQ(about().st_ino, before.st_ino);
    EXPECT_EQ(files(), 1);
  }
  chmod(folder.path().c_str(), 0755);
}

TEST_F(ButtonFileAccess, KeepsTheOldFileWhenTheDiskTakesNoMore) {
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit full = {8, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &full);
  EXPECT_FALSE(replaceFile(path, "more than eight bytes"));
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_DFL);
  EXPECT_EQ(readFile(path), "old");
  EXPECT_EQ(files(), 1);
}

TEST_F(ButtonFileAccess, TakesRegularFilesOnlyAndWaitsForNone) {
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  // No device: a fault here would put a file in its place.
  for (const fs::path& other : {folder / "pipe", folder.path(), folder / "none/a.btn"}) {
    EXPECT_EQ(openRegularFile(other), nullptr) << other;
    EXPECT_FALSE(replaceFile(other, "new")) << other;
  }
  EXPECT_NE(openRegularFile(path), nullptr);
}

}  // namespace
