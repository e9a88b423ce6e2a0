// What is done to the button set, what those hear who show it, and what becomes of its file.

#include "button_file/button_set_document.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <utility>

#include "button_file/button_file_reader.h"
#include "button_file/chosen_group.h"
#include "tests/support/basics.h"

namespace {

namespace fs = std::filesystem;
using enum ButtonSetDocument::Reading;

/// As it is saved, in one line.
std::string line(const ButtonSet& set) {
  std::string text = formatButtonSet(set);
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

constexpr const char* kFile =
    ":A\na\n1\nb\n2\na\n3\n:COLLAPSED B\nc\n4\n:MENU M\nx\ny\nseparator\nseparator\n";

/// Observes a document, and notes what it is told with what the group or the set is like then.
class ButtonSetDocumentTest : public testing::Test, public ButtonSetObserver {
 public:
  ButtonSetDocumentTest() { renew(); }
  ~ButtonSetDocumentTest() override { document.reset(); }

  void appended() override { notes += "appended" + set(); }
  void groupAdded(const ButtonGroup& group) override { note("added", group); }
  void groupGoes(const ButtonGroup& group) override { note("goes", group); }
  void allMenusGo() override { notes += "menus go" + set(); }
  void groupRenamed(const ButtonGroup& group) override { note("renamed", group); }
  void groupFolded(const ButtonGroup& group) override { note("folded", group); }
  void buttonAdded(const ButtonGroup& group) override { note("button in", group); }
  void buttonChanged(const ButtonGroup& group, const Button& button) override {
    note("now " + button.definition + " in", group);
  }
  void buttonGoes(const ButtonGroup& group, const Button& button) override {
    note(button.definition + " goes from", group);
  }
  void buttonsGone(const ButtonGroup& group) override { note("left", group); }
  void changed() override { notes += "changed\n"; }
  void modifiedChanged() override {
    notes += document->isModified() ? "modified; " : "unmodified; ";
  }
  void told(const std::string& text) override { notes += text + "; "; }
  void documentGoes() override { notes += "end"; }

 protected:
  /// Begins again with kFile.
  void renew() {
    document = std::make_unique<ButtonSetDocument>();
    document->append(readButtonFile(kFile));
    document->addObserver(*this);
    notes = "";
  }
  void note(const std::string& what, const ButtonGroup& group) {
    notes += what + " " + line({{group}, {}}) + "; ";
  }
  const ButtonGroup& a() const { return document->set().groups.front(); }
  const ButtonGroup& b() const { return document->set().groups.back(); }
  std::string set() const { return " " + line(document->set()) + "; "; }
  /// What was told since the last call.
  std::string heard() { return std::exchange(notes, ""); }
  std::string at(const char* name) const { return folder / name; }

  TemporaryFolder folder;
  std::string notes;
  std::unique_ptr<ButtonSetDocument> document;
};

TEST_F(ButtonSetDocumentTest, CarriesOutEachChangeAndSaysSoStepByStep) {
  document->setExpanded(b(), true);
  document->setAllExpanded(false);
  document->addButton(a(), {"c", ""});
  document->changeButton(a(), a().buttons.back(), {"a", "5"});
  document->removeButtons(a(), {"a", "none", "a", "A"});
  document->setCurrentGroup(b());
  document->renameGroup(a(), "B");
  document->removeGroup(a());
  EXPECT_EQ(document->currentGroup(), &b());
  document->addGroupUncounted("B");
  document->addGroup("N");
  document->define(a().buttons.back(), "??");
  EXPECT_EQ(set(), " :COLLAPSED B c ?? :B :N :MENU M x y separator separator ; ");
  document->removeGroup(a());
  EXPECT_EQ(document->currentGroup(), nullptr);
  document.reset();
  EXPECT_EQ(heard(), R"(folded :B c 4 ; changed
folded :COLLAPSED A a 1 b 2 a 3 ; folded :COLLAPSED B c 4 ; changed
button in :COLLAPSED A a 1 b 2 a 3 c  ; folded :A a 1 b 2 a 3 c  ; changed
modified; now 5 in :A a 1 b 2 a 3 a 5 ; folded :A a 1 b 2 a 3 a 5 ; changed
modified; 1 goes from :A a 1 b 2 a 3 a 5 ; 3 goes from :A b 2 a 3 a 5 ; left :A b 2 a 5 ; folded :A b 2 a 5 ; changed
modified; renamed :B b 2 a 5 ; changed
modified; goes :B b 2 a 5 ; changed
modified; added :B ; changed
added :N ; changed
modified; goes :COLLAPSED B c ?? ; changed
modified; end)");
}

TEST_F(ButtonSetDocumentTest, ReadsFilesInPlaceOfTheSetOrBehindItAndForgetsOneThatItCannotWrite) {
  const std::string path = folder.write("new.btn", "early\n:N\n:MENU O\n");
  const std::string oldMenu = ":MENU M x y separator separator ";
  const std::string goes = "goes :COLLAPSED B c 4 ; goes :A a 1 b 2 a 3 ; ";
  const std::string wanted[] = {
      goes + "menus go " + oldMenu + "; unmodified; appended :N :MENU O ",
      "modified; appended :A a 1 b 2 a 3 :COLLAPSED B c 4 :N " + oldMenu + ":MENU O ",
      goes + "appended :N " + oldMenu + ":MENU O "};
  for (const auto reading : {load, append, start}) {
    renew();
    document->setModified();
    EXPECT_FALSE(document->read(at("none.btn"), reading));
    EXPECT_FALSE(document->read(folder.path(), reading));
    EXPECT_TRUE(document->read(path, reading));
    EXPECT_EQ(heard(), "modified; " + wanted[static_cast<int>(reading)] +
                           "; new.btn: 1 remark: line 1: before the first header, so it is "
                           "ignored; ");
    EXPECT_EQ(document->isModified(), reading != load);
    EXPECT_EQ(document->fileName(), "") << "no file to save to: intended";
    EXPECT_EQ(document->proposal(), reading == append ? "nelkv.btn" : path);
  }
  EXPECT_FALSE(ButtonSaveTarget("/" + std::string(249, 'x')).isTooLong);
  EXPECT_TRUE(ButtonSaveTarget("/" + std::string(250, 'x')).isTooLong);
  EXPECT_EQ(ButtonSaveTarget("new.btn").path, fs::current_path() / "new.btn");
  document->setFileName(at("no/where.btn"));
  EXPECT_FALSE(document->save());
  EXPECT_EQ(document->fileName(), "");
}

TEST_F(ButtonSetDocumentTest, StartsWithTheFileOfTheDirectoryOrElseWithTheProgramsOwn) {
  fs::create_directory(folder / "bin");
  const std::string program = at("bin/nelkvui");
  folder.write("bin/nelkv.btn", ":Beside\n");
  EXPECT_TRUE(document->readDefault(folder.path(), program));
  EXPECT_EQ(a().name, "Beside");
  folder.write("nelkv.btn", ":In\n");
  EXPECT_TRUE(document->readDefault(folder.path(), program));
  EXPECT_EQ(a().name, "In");
}

TEST_F(ButtonSetDocumentTest, CarriesOutCommandsOnTheFirstGroupOfTheNameOrDropsThem) {
  // All that the user may do to a group, and what the set is like behind each step.
  const auto commandAll = [&](ChosenGroup& chosen) {
    std::string steps = chosen.choose(1).value_or(Button{"none", ""}).label;
    chosen.addButton({"n", "9"});
    steps += set();
    chosen.removeButtons({"a"});
    steps += set();
    chosen.changeButton({"m", "8"});
    steps += set();
    chosen.rename("N");
    steps += set();
    chosen.remove();
    return steps + set();
  };
  ChosenGroup moved(*document, a());
  document->read(folder.write("new", ":COLLAPSED O\n:COLLAPSED A\nb\n7\na\n8\n:A\n"), load);
  EXPECT_EQ(
      commandAll(moved),
      "b :COLLAPSED O :A b 7 a 8 n 9 :A ;  :COLLAPSED O :A b 7 n 9 :A ; "
      " :COLLAPSED O :A m 8 n 9 :A ;  :COLLAPSED O :N m 8 n 9 :A ;  :COLLAPSED O :N m 8 n 9 ; ");
  renew();
  ChosenGroup gone(*document, a());
  document->read(folder.write("new", ":B\n"), load);
  heard();
  EXPECT_EQ(commandAll(gone), "none :B ;  :B ;  :B ;  :B ;  :B ; ");
  const std::string end = " dropped: there is no group \"A\" any more; ";
  EXPECT_EQ(heard().find("Selection" + end + "Button \"n\"" + end + "Deletion" + end), 0U);
}

TEST_F(ButtonSetDocumentTest, ChoosesTheButtonOfARowOrTheFirstOfItsLabel) {
  ChosenGroup chosen(*document, a());
  const auto choose = [&](int row) { return chosen.choose(row).value_or(Button()).definition; };
  EXPECT_EQ(choose(-1) + choose(2) + choose(3), "13");
  document->removeButtons(a(), {"b"});
  EXPECT_EQ(choose(2) + choose(1) + choose(0), "11");
  document->removeButtons(a(), {"a", "a"});
  heard();
  chosen.changeButton({"n", "9"});
  EXPECT_EQ(heard(), "Button \"n\" dropped: there is no button \"a\" any more; ");
}

}  // namespace
