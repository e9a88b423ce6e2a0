#include "dialogs/directory_tree.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "dialogs/file_form.h"
#include "tests/support/basics.h"

namespace {

namespace fs = std::filesystem;
using Result = ziDirectoryTree::Result;
using testing::EndsWith;

class DirectoryTree : public testing::Test {
 protected:
  std::string at(const std::string& below) const { return (folder.path() / below).string(); }
  std::string lines() const {
    std::string all;
    for (const std::string& line : tree.lines()) {
      all += line + '\n';
    }
    return all;
  }

  TemporaryFolder folder;
  ziDirectoryTree tree;
};

TEST_F(DirectoryTree, ListsTheWayAndTheSubDirectoriesAndGoesUpWhenItsDirectoryIsLost) {
  for (const char* name : {"b", "a", "B", ".hidden", " [x]", "\xC3\xA4", "a/gone"}) {
    fs::create_directory(at(name));
  }
  fs::create_directory_symlink(at("a"), at("link"));
  folder.write("file", "no directory");
  EXPECT_EQ(tree.loadDirectory(folder.path().string()), Result::ok);
  EXPECT_EQ(tree.current(), at(""));
  EXPECT_THAT(lines(), testing::StartsWith("[root]\n ["));
  EXPECT_THAT(lines(), EndsWith(" [" + folder.path().filename().string() +
                                "]\n [x]\n.hidden\nB\na\nb\nlink\n\xC3\xA4\n"));
  tree.loadDirectory(at("a/gone"));
  fs::remove(at("a/gone"));
  EXPECT_EQ(tree.loadDirectory("gone"), Result::cannotOpen);
  EXPECT_FALSE(tree.isLoaded());
  EXPECT_THAT(lines(), EndsWith("  [gone]\n"));
  EXPECT_EQ(tree.loadDirectory("a"), Result::ok);
  EXPECT_TRUE(tree.isLoaded());
  EXPECT_EQ(tree.current(), at("a/"));
}

// A sub-directory goes before a component, of which the last one of the name counts. "root" stands
// for "/" even where there is a directory called so: intended.
TEST_F(DirectoryTree, GoesByASubDirectoryOrAComponentOrToWhatIsTyped) {
  fs::create_directories(at("a/b/a/c"));
  fs::create_directory(at("a/b/b"));
  fs::create_directory(at("a/root"));
  const std::string rows[][3] = {{"a", "b", at("a/b/")},      {"a/b/a/c", "b", at("a/b/")},
                                 {"a/b", "b", at("a/b/b/")},  {"a/b/a/c", "a", at("a/b/a/")},
                                 {"a/b", "none", at("a/b/")}, {"a/b", "", at("a/b/")},
                                 {"a", "root", "/"}};
  for (const auto& [from, name, to] : rows) {
    tree.loadDirectory(at(from));
    EXPECT_EQ(tree.loadDirectory(name), Result::ok);
    EXPECT_EQ(tree.current(), to) << from << " and " << name;
  }
  folder.write("file", "");
  tree.loadDirectory(at("a"));
  const std::string above = fs::canonical(folder.path()).string();
  const std::string typed[][2] = {{"b", at("a/b")},
                                  {"..", above},
                                  {at("a//b"), above + "/a/b"},
                                  {"b/./", above + "/a/b"},
                                  {at("a/b/"), at("a/b/")},
                                  {"", "none"},
                                  {"none", "none"},
                                  {at("file"), "none"}};
  for (const auto& [text, to] : typed) {
    EXPECT_EQ(tree.resolve(text).value_or("none"), to) << text;
  }
}

TEST(Directories, AreTheSameWithAndWithoutASlashAtTheEndAndNoneWhenTheyHaveVanished) {
  EXPECT_TRUE(isSameDirectory("/a/", "/a") && isSameDirectory("/", "/"));
  EXPECT_FALSE(isSameDirectory("/", "") || isSameDirectory("/a/b/", "/a"));
  const fs::path before = fs::current_path();
  {
    const TemporaryFolder folder;
    fs::current_path(folder.path());
    EXPECT_EQ(workingDirectory(), fs::canonical(folder.path()).string());
  }
  EXPECT_EQ(workingDirectory(), std::nullopt);
  fs::current_path(before);
}

TEST(FilePreset, IsTakenApartAtItsLastSlash) {
  const char* const filter[] = {"Sources", "*.c", "All", "*", nullptr, nullptr};
  const char* const empty[] = {nullptr, nullptr};
  const std::tuple<const char*, const char* const*, ziFilePreset> rows[] = {
      {"", nullptr, {"", "", "*"}},          {"nelkv.btn", filter, {"", "nelkv.btn", "*.c"}},
      {"/b", nullptr, {"/", "b", "*"}},      {"/a/*.h", nullptr, {"/a", "", "*.h"}},
      {"/a/?.h", filter, {"/a", "", "*.c"}}, {"/a*/b", nullptr, {"/a*", "b", "*"}},
      {"x*", empty, {"", "", "*"}}};
  for (const auto& [preset, filters, wanted] : rows) {
    EXPECT_EQ(makeFilePreset(preset, filters), wanted) << preset;
  }
}

}  // namespace
