// What is done to the button set, what those hear who show it, and what becomes of its file.

#include "button_file/button_set_document.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "button_file/button_file_reader.h"
#include "button_file/chosen_group.h"
#include "tests/support/basics.h"
#include "tests/unit/buttons/button_set_text.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using enum ButtonSetDocument::Reading;

/// Notes what it is told, each with what the set is like at that moment.
class Notes : public ButtonSetObserver {
 public:
  explicit Notes(ButtonSetDocument& shown) : document(&shown) { shown.addObserver(*this); }
  ~Notes() override {
    if (document != nullptr) {
      document->removeObserver(*this);
    }
  }
  void appended() override { note("appended " + show(document->set())); }
  void groupAdded(const ButtonGroup& group) override { note("added " + show(group)); }
  void groupGoes(const ButtonGroup& group) override { note("goes " + show(group)); }
  void allMenusGo() override { note("menus go " + show(document->set())); }
  void groupRenamed(const ButtonGroup& group) override { note("renamed " + show(group)); }
  void groupFolded(const ButtonGroup& group) override { note("folded " + show(group)); }
  void buttonAdded(const ButtonGroup& group) override { note("button in " + show(group)); }
  void buttonChanged(const ButtonGroup& group, const Button& button) override {
    note("now " + show(button) + " in " + show(group));
  }
  void buttonGoes(const ButtonGroup& group, const Button& button) override {
    note("goes " + show(button) + " of " + show(group));
  }
  void buttonsGone(const ButtonGroup& group) override { note("left " + show(group)); }
  void changed() override { note("changed"); }
  void modifiedChanged() override { note(document->isModified() ? "modified" : "unmodified"); }
  void told(const std::string& line) override { note("\"" + line + "\""); }
  void documentGoes() override {
    note("the document goes");
    document = nullptr;
  }

  std::string text;

 private:
  void note(const std::string& line) { text += line + '\n'; }

  ButtonSetDocument* document;
};

constexpr const char* kFile =
    ":A\na\n1\nb\n2\na\n3\n:COLLAPSED B\nc\n4\n:MENU M\nx\ny\nseparator\nseparator\n";
constexpr const char* kShown = "+A{a=1;b=2;a=3;}-B{c=4;}*M{x=y;--;}";

class ButtonSetDocumentTest : public testing::Test {
 protected:
  ButtonSetDocumentTest() { document->append(readButtonFile(kFile)); }

  const ButtonGroup& a() const { return document->set().groups.front(); }
  const ButtonGroup& b() const { return document->set().groups.back(); }
  std::string shown() const { return show(document->set()); }
  std::string at(const char* name) const { return (folder / name).string(); }

  TemporaryFolder folder;
  std::unique_ptr<ButtonSetDocument> document = std::make_unique<ButtonSetDocument>();
};

TEST_F(ButtonSetDocumentTest, CarriesOutEachChangeAndSaysSoStepByStep) {
  const struct {
    std::function<void()> change;
    const char* told;
  } rows[] = {
      {[&] { document->addGroup("N"); }, "added +N{}\nchanged\nmodified\n"},
      {[&] { document->addGroupUncounted("N"); }, "added +N{}\nchanged\n"},
      {[&] { document->setExpanded(b(), true); }, "folded +B{c=4;}\nchanged\n"},
      {[&] { document->setExpanded(a(), false); }, "folded -A{a=1;b=2;a=3;}\nchanged\n"},
      {[&] { document->setAllExpanded(false); },
       "folded -A{a=1;b=2;a=3;}\nfolded -B{c=4;}\nchanged\n"},
      {[&] { document->setAllExpanded(true); },
       "folded +A{a=1;b=2;a=3;}\nfolded +B{c=4;}\nchanged\n"},
      {[&] { document->renameGroup(b(), ""); }, "renamed -{c=4;}\nchanged\nmodified\n"},
      {[&] { document->removeGroup(b()); }, "goes -B{c=4;}\nchanged\nmodified\n"},
      {[&] {
         document->addButton(b(), {"d", ""});
       },
       "button in -B{c=4;d=;}\nfolded +B{c=4;d=;}\nchanged\nmodified\n"},
      {[&] {
         document->changeButton(a(), a().buttons.back(), {"e", "5"});
       },
       "now e=5; in +A{a=1;b=2;e=5;}\nfolded +A{a=1;b=2;e=5;}\nchanged\nmodified\n"},
      {[&] {
         document->removeButtons(a(), {"a", "none", "a", "a", "A"});
       },
       "goes a=1; of +A{a=1;b=2;a=3;}\ngoes a=3; of +A{b=2;a=3;}\n"
       "left +A{b=2;}\nfolded +A{b=2;}\nchanged\nmodified\n"},
      {[&] { document->removeButtons(b(), {"none"}); },
       "left -B{c=4;}\nfolded +B{c=4;}\nchanged\nmodified\n"},
      {[&] { document->define(a().buttons.back(), "??"); }, ""},
      {[&] { document->setModified(); }, "modified\n"},
      {[&] { document.reset(); }, "the document goes\n"},
  };
  for (const auto& row : rows) {
    document = std::make_unique<ButtonSetDocument>();
    document->append(readButtonFile(kFile));
    ASSERT_EQ(shown(), kShown);
    Notes notes(*document);
    row.change();
    EXPECT_EQ(notes.text, row.told);
  }
}

TEST_F(ButtonSetDocumentTest, ChangesNothingElse) {
  EXPECT_EQ(document->currentGroup(), nullptr);
  document->setCurrentGroup(a());
  document->removeGroup(a());
  EXPECT_EQ(document->currentGroup(), nullptr);
  document->setCurrentGroup(a());
  EXPECT_EQ(shown(), "-B{c=4;}*M{x=y;--;}");
  document->addGroup("B");
  document->addButton(a(), {"c", "5"});
  document->define(a().buttons.back(), "??");
  EXPECT_EQ(shown(), "+B{c=4;c=??;}+B{}*M{x=y;--;}");
  document->removeGroup(b());
  EXPECT_EQ(document->currentGroup(), &a());
  EXPECT_EQ(shown(), "+B{c=4;c=??;}*M{x=y;--;}");
}

TEST_F(ButtonSetDocumentTest, ReadsAFileInPlaceOfTheSetOrBehindIt) {
  const std::string path = folder.write("new.btn", "early\n:N\n:MENU O\n");
  const struct {
    ButtonSetDocument::Reading reading;
    const char* told;
    const char* proposal;
  } rows[] = {
      {load,
       "goes -B{c=4;}\ngoes +A{a=1;b=2;a=3;}\nmenus go *M{x=y;--;}\nunmodified\n"
       "appended +N{}*O{}\n",
       path.c_str()},
      {append, "modified\nappended +A{a=1;b=2;a=3;}-B{c=4;}+N{}*M{x=y;--;}*O{}\n", "nelkv.btn"},
      {start, "goes -B{c=4;}\ngoes +A{a=1;b=2;a=3;}\nappended +N{}*M{x=y;--;}*O{}\n", path.c_str()},
  };
  for (const auto& row : rows) {
    document = std::make_unique<ButtonSetDocument>();
    document->append(readButtonFile(kFile));
    document->setModified();
    Notes notes(*document);
    EXPECT_FALSE(document->read(at("none.btn"), row.reading));
    EXPECT_FALSE(document->read(folder.path().string(), row.reading));
    EXPECT_EQ(notes.text, "");
    EXPECT_TRUE(document->read(path, row.reading));
    EXPECT_EQ(notes.text,
              std::string(row.told) +
                  "\"new.btn: 1 remark: line 1: before the first header, so it is ignored\"\n");
    EXPECT_EQ(document->isModified(), row.reading != load);
    EXPECT_EQ(document->fileName(), "") << "no file to save to: intended";
    EXPECT_EQ(document->proposal(), row.proposal);
  }
}

TEST_F(ButtonSetDocumentTest, TakesNamesOf255CharactersOnlyAtTheStart) {
  folder.write("a.btn", ":N\n");
  const auto path = [&](std::size_t length) {
    const std::string name = "/a.btn";
    std::string way = folder.path().string();
    way.append(length - way.size() - name.size(), '/');
    return way + name;
  };
  EXPECT_TRUE(document->read(path(254), load));
  EXPECT_FALSE(document->read(path(255), load));
  EXPECT_FALSE(document->read(path(255), append));
  EXPECT_TRUE(document->read(path(255), start));
  EXPECT_FALSE(ButtonSaveTarget(path(250)).isTooLong);
  EXPECT_TRUE(ButtonSaveTarget(path(251)).isTooLong);
}

TEST_F(ButtonSetDocumentTest, StartsWithTheFileOfTheDirectoryOrElseWithTheProgramsOwn) {
  fs::create_directory(folder / "bin");
  const std::string directory = folder.path().string();
  const std::string program = at("bin/nelkvui");
  EXPECT_FALSE(document->readDefault(directory, program));
  EXPECT_EQ(shown(), kShown);
  folder.write("bin/nelkv.btn", ":Beside\n");
  EXPECT_TRUE(document->readDefault(directory, program));
  EXPECT_EQ(shown(), "+Beside{}*M{x=y;--;}");
  folder.write("nelkv.btn", ":In\n");
  EXPECT_TRUE(document->readDefault(directory, program));
  EXPECT_EQ(shown(), "+In{}*M{x=y;--;}");
  const fs::path before = fs::current_path();
  fs::current_path(folder.path());
  EXPECT_FALSE(document->readDefault("/none", "nelkvui"));
  EXPECT_TRUE(document->readDefault("/none", "./nelkvui"));
  fs::current_path(before);
}

TEST_F(ButtonSetDocumentTest, SavesToTheFileThatItWasSavedToLast) {
  const fs::path before = fs::current_path();
  fs::current_path(folder.path());
  folder.write("there.btn", "");
  const ButtonSaveTarget target("new.btn");
  EXPECT_EQ(target.path, at("new.btn"));
  EXPECT_FALSE(target.isThere);
  EXPECT_TRUE(ButtonSaveTarget("there.btn").isThere);
  fs::current_path(before);
  document->setFileName(target.path);
  document->setModified();
  EXPECT_TRUE(document->save());
  EXPECT_EQ(readFile(target.path), kFile);
  EXPECT_FALSE(document->isModified());
  EXPECT_EQ(document->proposal(), target.path);
  document->setModified();
  document->setFileName(at("no/where.btn"));
  EXPECT_FALSE(document->save());
  EXPECT_TRUE(document->isModified());
  EXPECT_EQ(document->fileName(), "");
  EXPECT_EQ(document->proposal(), target.path);
}

TEST_F(ButtonSetDocumentTest, ProposesNoFileThatTheUserMayNotWrite) {
  const std::string path = folder.write("shipped.btn", ":N\n");
  chmod(path.c_str(), 0444);
  // The superuser may write everything.
  const uid_t user = getuid();
  const bool isSuperuser = user == 0 && setreuid(65534, 0) == 0;
  EXPECT_TRUE(document->read(path, load));
  EXPECT_TRUE(!isSuperuser || setreuid(user, 0) == 0);
  EXPECT_EQ(document->proposal(), "nelkv.btn");
}

/// What the user may do to a group, and what comes of it when the group is as it was, when it has
/// another place, and when it has gone.
struct GroupCommand {
  std::function<void(ChosenGroup& chosen)> carryOut;
  const char* result;
  const char* moved;
  const char* told;
};

class GroupCommands : public ButtonSetDocumentTest {
 protected:
  const std::vector<GroupCommand> rows = {
      {[](ChosenGroup& chosen) {
         chosen.addButton({"n", "9"});
       },
       "+A{a=1;b=2;a=3;n=9;}-B{c=4;}*M{x=y;--;}", "-O{}+A{b=7;a=8;n=9;}+A{}*M{x=y;--;}",
       "Button \"n\" dropped: there is no group \"A\" any more"},
      {[](ChosenGroup& chosen) { chosen.removeButtons({"a"}); }, "+A{b=2;a=3;}-B{c=4;}*M{x=y;--;}",
       "-O{}+A{b=7;}+A{}*M{x=y;--;}", "Deletion dropped: there is no group \"A\" any more"},
      {[](ChosenGroup& chosen) { chosen.rename("n"); }, "+n{a=1;b=2;a=3;}-B{c=4;}*M{x=y;--;}",
       "-O{}-n{b=7;a=8;}+A{}*M{x=y;--;}", "Name \"n\" dropped: there is no group \"A\" any more"},
      {[](ChosenGroup& chosen) { chosen.remove(); }, "-B{c=4;}*M{x=y;--;}", "-O{}+A{}*M{x=y;--;}",
       "Deletion dropped: there is no group \"A\" any more"},
      {[](ChosenGroup& chosen) {
         chosen.changeButton({"n", "9"});
       },
       "+A{a=1;n=9;a=3;}-B{c=4;}*M{x=y;--;}", "-O{}+A{n=9;a=8;}+A{}*M{x=y;--;}",
       "Button \"n\" dropped: there is no group \"A\" any more"},
  };
};

TEST_F(GroupCommands, GoToTheGroupOrToTheFirstOfItsNameOrAreDropped) {
  const std::string moved = folder.write("moved", ":COLLAPSED O\n:COLLAPSED A\nb\n7\na\n8\n:A\n");
  const std::string gone = folder.write("gone", ":B\n");
  for (const GroupCommand& row : rows) {
    SCOPED_TRACE(row.result);
    for (const std::string& file : {std::string(), moved, gone, std::string("/")}) {
      document = std::make_unique<ButtonSetDocument>();
      document->append(readButtonFile(kFile));
      ChosenGroup chosen(*document, a());
      EXPECT_EQ(chosen.choose(1), (Button{"b", "2"}));
      document->removeGroup(b());
      document->append(readButtonFile(":COLLAPSED B\nc\n4\n"));
      if (file == "/") {
        document.reset();
        row.carryOut(chosen);
        continue;
      }
      if (!file.empty()) {
        document->read(file, start);
      }
      document->clearModified();
      Notes notes(*document);
      row.carryOut(chosen);
      if (file == gone) {
        EXPECT_EQ(notes.text, "\"" + std::string(row.told) + "\"\n");
        EXPECT_EQ(shown(), "+B{}*M{x=y;--;}");
      } else {
        EXPECT_EQ(shown(), file.empty() ? row.result : row.moved);
        EXPECT_TRUE(document->isModified());
        EXPECT_EQ(notes.text.find("dropped"), std::string::npos);
      }
    }
  }
}

TEST_F(GroupCommands, GoToTheChosenOneOfTwoGroupsOfAName) {
  document->renameGroup(b(), "A");
  document->addGroup("Third");
  ChosenGroup chosen(*document, *std::next(document->set().groups.begin()));
  document->removeGroup(b());
  chosen.rename("n");
  EXPECT_EQ(shown(), "+A{a=1;b=2;a=3;}-n{c=4;}*M{x=y;--;}");
}

TEST_F(GroupCommands, ChooseTheButtonOfARowOrTheFirstOfItsLabel) {
  ChosenGroup chosen(*document, a());
  EXPECT_EQ(chosen.name(), "A");
  EXPECT_EQ(chosen.labels(), (std::vector<std::string>{"a", "b", "a"}));
  EXPECT_EQ(chosen.choose(-1), (Button{"a", "1"}));
  EXPECT_EQ(chosen.choose(2), (Button{"a", "3"}));
  EXPECT_EQ(chosen.choose(3), std::nullopt);
  document->removeButtons(a(), {"b"});
  EXPECT_EQ(chosen.choose(2), (Button{"a", "1"}));
  EXPECT_EQ(chosen.choose(1), std::nullopt);
  EXPECT_EQ(chosen.choose(0), (Button{"a", "1"}));
  document->removeButtons(a(), {"a", "a"});
  Notes notes(*document);
  chosen.changeButton({"n", "9"});
  EXPECT_EQ(notes.text, "\"Button \"n\" dropped: there is no button \"a\" any more\"\n");
  document->removeGroup(a());
  EXPECT_EQ(chosen.choose(0), std::nullopt);
}

}  // namespace
