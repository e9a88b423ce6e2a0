#include "dialogs/directory_tree.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "dialogs/file_form.h"
#include "tests/support/basics.h"

namespace {

namespace fs = std::filesystem;
using Result = ziDirectoryTree::Result;
using ::testing::ElementsAre;

class DirectoryTree : public testing::Test {
 protected:
  std::string at(const std::string& below) const { return (folder.path() / below).string(); }
  std::vector<std::string> children() const {
    std::vector<std::string> names;
    for (const ziDirectoryRecord& record : tree.records()) {
      if (record.isChild) {
        names.push_back(record.name);
      }
    }
    return names;
  }

  TemporaryFolder folder;
  ziDirectoryTree tree;
};

TEST_F(DirectoryTree, ListsThePathAndTheSubDirectoriesInByteOrder) {
  for (const char* name : {"b", "a", "B", ".hidden", " [x]", "\xC3\xA4"}) {
    fs::create_directory(at(name));
  }
  fs::create_directory_symlink(at("a"), at("link"));
  folder.write("file", "no directory");
  EXPECT_EQ(tree.loadDirectory(folder.path().string()), Result::ok);
  EXPECT_EQ(tree.current(), at(""));
  EXPECT_THAT(children(), ElementsAre(" [x]", ".hidden", "B", "a", "b", "link", "\xC3\xA4"));
  const std::vector<std::string> lines = tree.lines();
  const auto depth = static_cast<std::size_t>(tree.componentCount());
  EXPECT_EQ(lines.front(), "[root]");
  EXPECT_EQ(lines[depth - 1],
            std::string(depth - 1, ' ') + "[" + folder.path().filename().string() + "]");
  EXPECT_EQ(lines[depth], " [x]");
}

// A sub-directory goes before a component, of which the last one of the name counts. "root" stands
// for "/" even where there is a directory called so: intended.
TEST_F(DirectoryTree, GoesDownByASubDirectoryAndUpByAComponent) {
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
  EXPECT_THAT(tree.records().front(), (ziDirectoryRecord{"root", false}));
  EXPECT_EQ(tree.componentCount(), 1);
}

TEST_F(DirectoryTree, WithoutItsDirectoryItKeepsThePathAndTheWayUp) {
  fs::create_directories(at("a/gone"));
  tree.loadDirectory(at("a/gone"));
  const int depth = tree.componentCount();
  fs::remove(at("a/gone"));
  EXPECT_EQ(tree.loadDirectory("gone"), Result::cannotOpen);
  EXPECT_FALSE(tree.isLoaded());
  EXPECT_EQ(tree.componentCount(), depth);
  EXPECT_THAT(children(), ElementsAre());
  EXPECT_EQ(tree.loadDirectory("a"), Result::ok);
  EXPECT_EQ(tree.current(), at("a/"));
  EXPECT_EQ(tree.loadDirectory("/" + std::string(70000, 'x')), Result::cannotOpen);
}

TEST_F(DirectoryTree, ResolvesWhatIsTypedFromWhereItIs) {
  fs::create_directories(at("a/b"));
  folder.write("file", "");
  tree.loadDirectory(at("a"));
  EXPECT_EQ(tree.resolve("b"), at("a/b"));
  EXPECT_EQ(tree.resolve(".."), fs::canonical(folder.path()).string());
  EXPECT_EQ(tree.resolve(at("a//b/.")), fs::canonical(at("a/b")).string());
  EXPECT_EQ(tree.resolve(at("a/b/")), at("a/b/"));
  for (const std::string& bad : {std::string(), std::string("none"), at("file"),
                                 std::string("Error: Cannot open directory!")}) {
    EXPECT_EQ(tree.resolve(bad), std::nullopt) << bad;
  }
}

TEST_F(DirectoryTree, WalksPathsOfAnyLengthAsFarAsTheSystemDoes) {
  const std::string name(200, 'd');
  tree.loadDirectory(folder.path().string());
  for (int depth = 0; depth < 10; ++depth) {
    fs::create_directory(tree.current() + name);
    ASSERT_EQ(tree.loadDirectory(tree.current() + name), Result::ok);
  }
  EXPECT_GT(tree.current().size(), 2000U);
}

TEST(Directories, AreTheSameWithAndWithoutASlashAtTheEnd) {
  EXPECT_TRUE(isSameDirectory("/a/", "/a") && isSameDirectory("/", "/"));
  EXPECT_FALSE(isSameDirectory("/", "") || isSameDirectory("/a/b/", "/a"));
}

TEST(Directories, AVanishedWorkingDirectoryIsNone) {
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
  const struct {
    const char* preset;
    const char* const* filter;
    ziFilePreset wanted;
  } rows[] = {{"", nullptr, {"", "", "*"}},
              {"", filter, {"", "", "*.c"}},
              {"nelkv.btn", filter, {"", "nelkv.btn", "*.c"}},
              {"/b", nullptr, {"/", "b", "*"}},
              {"/a/*.h", nullptr, {"/a", "", "*.h"}},
              {"/a/?.h", filter, {"/a", "", "*.c"}},
              {"x?", nullptr, {"", "", "x?"}},
              {"/a*/b", nullptr, {"/a*", "b", "*"}},
              {"x*", empty, {"", "", "*"}}};
  for (const auto& row : rows) {
    EXPECT_EQ(makeFilePreset(row.preset, row.filter), row.wanted) << row.preset;
  }
}

}  // namespace
