#include "dialogs/ddirselec.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/core/application.h"
#include "tests/support/basics.h"
#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>

namespace {

namespace fs = std::filesystem;

constexpr const char* kTitle = Ddirselec::kTitle;
constexpr int kFullModal = 1;

class DirectorySelection : public testing::Test {
 protected:
  DirectorySelection() {
    frame->show();
    ui::waitForDialog("Parent");
    fs::create_directories(at("a/b"));
    fs::create_directory(at(" [odd]"));
  }
  ~DirectorySelection() override {
    dialog.reset();
    frame.reset();
    ui::waitForNoDialog("Parent");
  }

  std::optional<std::string> run(ui::ModalScript& script, const std::string& start) {
    dialog = std::make_unique<Ddirselec>(frame.get(), start);
    script.run([&] { return dialog->run(kFullModal); });
    ui::waitForNoDialog(kTitle);
    EXPECT_EQ(zApp::instance()->modalDepth(), 0);
    return dialog->chosen();
  }
  std::optional<std::string> run(ui::ModalScript& script) {
    return run(script, folder.path().string());
  }

  std::string at(const std::string& name) const { return (folder.path() / name).string(); }
  zListBox& list() const { return *windowCast<zListBox>(dialog->childById(Ddirselec::kDirList)); }
  zEditLine& edit() const {
    return *windowCast<zEditLine>(dialog->childById(Ddirselec::kPathEdit));
  }
  std::string shown() const { return edit().text().c_str(); }
  void press(Ddirselec::Control id) const { ui::click(dialog->childById(id)->widget()); }
  /// Replaces the path and presses OK.
  void enter(const std::string& text) const {
    edit().setText(text.c_str());
    press(Ddirselec::kOk);
  }
  /// Chooses the row with this text and presses Return in the list.
  void open(const std::string& line) const {
    list().setFocus();
    ui::waitForFocus(list().innerWidget());
    EXPECT_GE(list().selectString(line.c_str()), 0) << line;
    ui::pressKey(XK_Return);
  }

  TemporaryFolder folder;
  std::unique_ptr<zAppFrame> frame =
      std::make_unique<zAppFrame>(nullptr, new zSizer(200, 150, 400, 300), 0xCF0000, "Parent");
  std::unique_ptr<Ddirselec> dialog;
};

TEST_F(DirectorySelection, GoesToATypedPathByTheFirstReturnAndEndsByTheSecond) {
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    ui::waitForFocus(edit().widget());
    ui::typeText("a\n");
    EXPECT_EQ(shown(), at("a/"));
    ui::typeText("\n");
  });
  EXPECT_EQ(run(script), at("a/"));
}

TEST_F(DirectorySelection, WalksThroughItsListByRows) {
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    open(" [odd]");
    EXPECT_EQ(shown(), at(" [odd]/"));
    const std::string top = folder.path().filename().string();
    RWCString line;
    list().itemText(line, list().count() - 2);
    open(line.c_str());
    EXPECT_EQ(shown(), at(""));
    open("[root]");
    EXPECT_EQ(shown(), "/");
    enter(at("a"));
    open("b");
    press(Ddirselec::kOk);
  });
  EXPECT_EQ(run(script), at("a/b/"));
}

TEST_F(DirectorySelection, OpensTheRowThatIsDoubleClicked) {
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    enter("/");
    enter("/usr/");
    EXPECT_EQ(shown(), "/usr/");
    // The list is longer than its window: "[usr]" is near its upper edge, and the middle below.
    ui::doubleClick(list().innerWidget());
    EXPECT_THAT(shown(), testing::MatchesRegex("/usr/.+/"));
    press(Ddirselec::kOk);
  });
  EXPECT_TRUE(run(script).has_value());
}

TEST_F(DirectorySelection, AnswersNothingOnTheDirectoryThatItOpenedWith) {
  ui::ModalScript confirm;
  confirm.onDialog(kTitle, XK_Return);
  EXPECT_EQ(run(confirm), std::nullopt);

  ui::ModalScript current;
  current.onDialog(kTitle, [&] {
    enter("/");
    press(Ddirselec::kCurrent);
    EXPECT_EQ(shown(), at(""));
    press(Ddirselec::kOk);
  });
  EXPECT_EQ(run(current), std::nullopt);
}

TEST_F(DirectorySelection, AnswersNothingUnlessEndedByOk) {
  const std::function<void()> ends[] = {
      [&] { press(Ddirselec::kCancel); },
      [] { ui::pressKey(XK_Escape); },
      [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); },
  };
  for (const std::function<void()>& end : ends) {
    ui::ModalScript script;
    script.onDialog(kTitle, [&] {
      enter("/");
      end();
    });
    EXPECT_EQ(run(script), std::nullopt);
  }
}

TEST_F(DirectorySelection, TellsWhatCannotBeOpenedAndNeverAnswersIt) {
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    enter(at("none"));
    EXPECT_EQ(shown(), "-- Invalid path --");
    enter(at("a/b"));
    fs::remove(at("a/b"));
    open("[root]");
    enter(at("a"));
    EXPECT_EQ(shown(), at("a/"));
    fs::remove(at("a"));
    open(std::string(static_cast<std::size_t>(list().count() - 1), ' ') + "[a]");
    EXPECT_EQ(shown(), "Error: Cannot open directory!");
    press(Ddirselec::kOk);
    EXPECT_EQ(shown(), "-- Invalid path --");
    enter(at("a/"));
    EXPECT_EQ(shown(), "-- Invalid path --");
    press(Ddirselec::kCancel);
  });
  EXPECT_EQ(run(script), std::nullopt);
}

TEST_F(DirectorySelection, OpensOnTheTopWithoutAStart) {
  ui::ModalScript script;
  script.onDialog(kTitle, XK_Return);
  EXPECT_EQ(run(script, ""), "/");
}

}  // namespace
