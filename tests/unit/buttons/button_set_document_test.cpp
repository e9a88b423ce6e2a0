// What is done to the button set, what those hear who show it, and what becomes of its file.

#include "button_file/button_set_document.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <utility>

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
  void appended() override { text += "appended " + show(document->set()) + ' '; }
  void groupAdded(const ButtonGroup& group) override { note("added", group); }
  void groupGoes(const ButtonGroup& group) override { note("goes", group); }
  void allMenusGo() override { text += "menus go " + show(document->set()) + ' '; }
  void groupRenamed(const ButtonGroup& group) override { note("renamed", group); }
  void groupFolded(const ButtonGroup& group) override { note("folded", group); }
  void buttonAdded(const ButtonGroup& group) override { note("button in", group); }
  void buttonChanged(const ButtonGroup& group, const Button& button) override {
    note("now " + show(button) + " in", group);
  }
  void buttonGoes(const ButtonGroup& group, const Button& button) override {
    note("goes " + show(button) + " of", group);
  }
  void buttonsGone(const ButtonGroup& group) override { note("left", group); }
  void changed() override { text += "changed "; }
  void modifiedChanged() override { text += document->isModified() ? "modified " : "unmodified "; }
  void told(const std::string& line) override { text += line + ' '; }
  void documentGoes() override {
    text += "end";
    document = nullptr;
  }

  std::string text;

 private:
  void note(const std::string& what, const ButtonGroup& group) {
    text += what + ' ' + show(group) + ' ';
  }

  ButtonSetDocument* document;
};

constexpr const char* kFile =
    ":A\na\n1\nb\n2\na\n3\n:COLLAPSED B\nc\n4\n:MENU M\nx\ny\nseparator\nseparator\n";

class ButtonSetDocumentTest : public testing::Test {
 protected:
  ButtonSetDocumentTest() { renew(); }

  /// Begins again with kFile.
  void renew() {
    document = std::make_unique<ButtonSetDocument>();
    document->append(readButtonFile(kFile));
    notes.emplace(*document);
  }
  const ButtonGroup& a() const { return document->set().groups.front(); }
  const ButtonGroup& b() const { return document->set().groups.back(); }
  std::string shown() const { return show(document->set()); }
  /// What the observers were told since the last call.
  std::string told() { return std::exchange(notes->text, ""); }
  std::string at(const char* name) const { return (folder / name).string(); }

  TemporaryFolder folder;
  std::unique_ptr<ButtonSetDocument> document;
  std::optional<Notes> notes;
};

TEST_F(ButtonSetDocumentTest, CarriesOutEachChangeAndSaysSoStepByStep) {
  document->setExpanded(b(), true);
  EXPECT_EQ(told(), "folded +B{c=4;} changed ");
  document->setAllExpanded(false);
  EXPECT_EQ(told(), "folded -A{a=1;b=2;a=3;} folded -B{c=4;} changed ");
  document->addButton(a(), {"c", ""});
  EXPECT_EQ(told(), "button in -A{a=1;b=2;a=3;c=;} folded +A{a=1;b=2;a=3;c=;} changed modified ");
  document->changeButton(a(), a().buttons.back(), {"a", "5"});
  EXPECT_EQ(told(),
            "now a=5; in +A{a=1;b=2;a=3;a=5;} folded +A{a=1;b=2;a=3;a=5;} changed modified ");
  document->removeButtons(a(), {"a", "none", "a", "A"});
  EXPECT_EQ(told(),
            "goes a=1; of +A{a=1;b=2;a=3;a=5;} goes a=3; of +A{b=2;a=3;a=5;} "
            "left +A{b=2;a=5;} folded +A{b=2;a=5;} changed modified ");
  document->removeButtons(b(), {"none"});
  EXPECT_EQ(told(), "left -B{c=4;} folded +B{c=4;} changed modified ");
  document->setCurrentGroup(b());
  document->renameGroup(a(), "B");
  EXPECT_EQ(told(), "renamed +B{b=2;a=5;} changed modified ");
  document->removeGroup(a());
  EXPECT_EQ(told(), "goes +B{b=2;a=5;} changed modified ");
  EXPECT_EQ(document->currentGroup(), &b());
  document->addGroupUncounted("B");
  EXPECT_EQ(told(), "added +B{} changed ");
  document->addGroup("N");
  EXPECT_EQ(told(), "added +N{} changed modified ");
  document->define(a().buttons.back(), "??");
  EXPECT_EQ(told(), "");
  EXPECT_EQ(shown(), "+B{c=??;}+B{}+N{}*M{x=y;--;}");
  document->removeGroup(a());
  EXPECT_EQ(document->currentGroup(), nullptr);
  EXPECT_EQ(shown(), "+B{}+N{}*M{x=y;--;}");
  document.reset();
  EXPECT_EQ(told(), "goes +B{c=??;} changed modified end");
}

TEST_F(ButtonSetDocumentTest, ReadsAFileInPlaceOfTheSetOrBehindIt) {
  const std::string path = folder.write("new.btn", "early\n:N\n:MENU O\n");
  const std::string goes = "goes -B{c=4;} goes +A{a=1;b=2;a=3;} ";
  const std::string wanted[] = {goes + "menus go *M{x=y;--;} unmodified appended +N{}*O{} ",
                                "modified appended +A{a=1;b=2;a=3;}-B{c=4;}+N{}*M{x=y;--;}*O{} ",
                                goes + "appended +N{}*M{x=y;--;}*O{} "};
  for (const auto reading : {load, append, start}) {
    renew();
    document->setModified();
    EXPECT_FALSE(document->read(at("none.btn"), reading));
    EXPECT_FALSE(document->read(folder.path().string(), reading));
    EXPECT_EQ(told(), "modified ");
    EXPECT_TRUE(document->read(path, reading));
    EXPECT_EQ(told(), wanted[static_cast<int>(reading)] +
                          "new.btn: 1 remark: line 1: before the first header, so it is ignored ");
    EXPECT_EQ(document->isModified(), reading != load);
    EXPECT_EQ(document->fileName(), "") << "no file to save to: intended";
    EXPECT_EQ(document->proposal(), reading == append ? "nelkv.btn" : path);
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
  EXPECT_EQ(told(), "");
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
  const ButtonSaveTarget target("new.btn");
  fs::current_path(before);
  EXPECT_EQ(target.path, at("new.btn"));
  EXPECT_FALSE(target.isThere);
  document->setFileName(target.path);
  EXPECT_TRUE(document->save());
  EXPECT_TRUE(ButtonSaveTarget(target.path).isThere);
  EXPECT_EQ(readFile(target.path), kFile);
  document->setModified();
  document->setFileName(at("no/where.btn"));
  EXPECT_FALSE(document->save());
  EXPECT_EQ(told(), "unmodified modified ");
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

/// All that the user may do to a group, and what the set is like behind each step.
std::string commandAll(ChosenGroup& chosen, const std::function<std::string()>& shown) {
  std::string steps = chosen.choose(1).value_or(Button{"none", ""}).label;
  chosen.addButton({"n", "9"});
  steps += '\n' + shown();
  chosen.removeButtons({"a"});
  steps += '\n' + shown();
  chosen.changeButton({"m", "8"});
  steps += '\n' + shown();
  chosen.rename("N");
  steps += '\n' + shown();
  chosen.remove();
  return steps + '\n' + shown();
}

TEST_F(ButtonSetDocumentTest, CarriesOutCommandsOnTheGroupOrTheFirstOfItsNameOrDropsThem) {
  const auto see = [&] { return shown(); };
  document->append(readButtonFile(":A\na\n1\nb\n2\na\n3\n"));
  ChosenGroup second(*document, b());
  document->removeGroup(*std::next(document->set().groups.begin()));
  EXPECT_EQ(commandAll(second, see), R"(b
+A{a=1;b=2;a=3;}+A{a=1;b=2;a=3;n=9;}*M{x=y;--;}
+A{a=1;b=2;a=3;}+A{b=2;a=3;n=9;}*M{x=y;--;}
+A{a=1;b=2;a=3;}+A{m=8;a=3;n=9;}*M{x=y;--;}
+A{a=1;b=2;a=3;}+N{m=8;a=3;n=9;}*M{x=y;--;}
+A{a=1;b=2;a=3;}*M{x=y;--;})");
  ChosenGroup moved(*document, a());
  document->read(folder.write("moved", ":COLLAPSED O\n:COLLAPSED A\nb\n7\na\n8\n:A\n"), start);
  EXPECT_EQ(commandAll(moved, see), R"(b
-O{}+A{b=7;a=8;n=9;}+A{}*M{x=y;--;}
-O{}+A{b=7;n=9;}+A{}*M{x=y;--;}
-O{}+A{m=8;n=9;}+A{}*M{x=y;--;}
-O{}+N{m=8;n=9;}+A{}*M{x=y;--;}
-O{}+N{m=8;n=9;}*M{x=y;--;})");
  renew();
  ChosenGroup gone(*document, a());
  document->read(folder.write("gone", ":B\n"), start);
  told();
  commandAll(gone, see);
  const std::string end = " dropped: there is no group \"A\" any more ";
  EXPECT_EQ(told(), "Selection" + end + "Button \"n\"" + end + "Deletion" + end + "Button \"m\"" +
                        end + "Name \"N\"" + end + "Deletion" + end);
  EXPECT_EQ(shown(), "+B{}*M{x=y;--;}");
  document.reset();
  commandAll(gone, [] { return ""; });
}

TEST_F(ButtonSetDocumentTest, ChoosesTheButtonOfARowOrTheFirstOfItsLabel) {
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
  told();
  chosen.changeButton({"n", "9"});
  EXPECT_EQ(told(), "Button \"n\" dropped: there is no button \"a\" any more ");
}

}  // namespace
