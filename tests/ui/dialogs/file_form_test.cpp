#include "dialogs/file_form.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>

#include "framework/core/application.h"
#include "framework/core/frame.h"
#include "tests/support/basics.h"
#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>

namespace {

namespace fs = std::filesystem;

constexpr const char* kTitle = "Open a File";
constexpr int kFullApplicationModal = 2;
const char* const kFilter[] = {"Button Files (*.btn)", "*.btn", "All", "*.*", nullptr, nullptr};

class FileForms : public testing::Test {
 protected:
  FileForms() {
    frame->show();
    ui::waitForDialog("Parent");
    fs::current_path(folder.path());
  }
  ~FileForms() override {
    fs::current_path(before);
    frame.reset();
    ui::waitForNoDialog("Parent");
  }

  template <class Form>
  std::unique_ptr<Form> run(ui::ModalScript& script, const char* preset = nullptr,
                            const char* const* filter = kFilter) {
    auto form =
        script.run([&] { return std::make_unique<Form>(frame.get(), kTitle, preset, filter); });
    ui::waitForNoDialog(kTitle);
    EXPECT_EQ(zApp::instance()->modalDepth(), 0);
    return form;
  }

  /// Opens the form, puts `text` into the selection field and presses Return.
  template <class Form>
  std::string enter(const std::string& text) {
    ui::ModalScript script;
    script.onDialog(kTitle, [&] {
      ui::setText(field(), text);
      ui::pressKey(XK_Return);
    });
    return run<Form>(script)->path();
  }

  static Widget field() { return ui::part(kTitle, "Text"); }
  static std::vector<std::string> files() { return ui::rowsOf(ui::part(kTitle, "ItemsList")); }

  std::string at(const std::string& name) const { return (folder.path() / name).string(); }

  fs::path before = fs::current_path();
  TemporaryFolder folder;
  std::unique_ptr<zAppFrame> frame =
      std::make_unique<zAppFrame>(nullptr, new zSizer(200, 150, 400, 300), 0xCF0000, "Parent");
};

TEST_F(FileForms, ShowTheWorkingDirectoryWithThePresetNameAndTheFirstPattern) {
  folder.write("a b.btn", "");
  folder.write("other.txt", "");
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    EXPECT_EQ(ui::textOf(field()), at("nelkv.btn"));
    EXPECT_EQ(ui::textOf(ui::part(kTitle, "FilterText")), at("*.btn"));
    EXPECT_EQ(files().size(), 1U);
    ui::waitFor([&] { return ui::focusIs(field()); }, "the focus in the selection field");
    EXPECT_EQ(ui::look(kTitle).find("[Help]"), std::string::npos);
    EXPECT_TRUE(ui::isOnTheScreen(ui::windowWithTitle(kTitle)));
    EXPECT_EQ(ui::resource(ui::part(kTitle, "FileSelectionBox"), "dialogStyle"),
              kFullApplicationModal);
    ui::typeText("x\n");
  });
  const auto form = run<zFileSaveForm>(script, "nelkv.btn");
  EXPECT_EQ(form->accepted(), 1);
  EXPECT_STREQ(*form, at("nelkv.btnx").c_str());
}

TEST_F(FileForms, TakeEveryNameAsItStands) {
  const std::string longName(3000, 'n');
  for (const std::string& name : {at("missing"), std::string("a 'b' \"c\".btn"),
                                  std::string("\xC3\xA4\xE4.btn"), longName, std::string("a\tb")}) {
    EXPECT_EQ(enter<zFileOpenForm>(name), name);
  }
  EXPECT_EQ(enter<zFileSaveForm>(folder.path().string()), folder.path().string());
}

TEST_F(FileForms, TakeANameFromTheList) {
  folder.write("\xC3\xA4 b.btn", "");
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    EXPECT_EQ(files().size(), 1U);
    ui::click(ui::part(kTitle, "ItemsList"), 10, 8);
    EXPECT_EQ(ui::textOf(field()), at("\xC3\xA4 b.btn"));
    ui::pressKey(XK_Return);
  });
  EXPECT_EQ(run<zFileOpenForm>(script)->path(), at("\xC3\xA4 b.btn"));
}

TEST_F(FileForms, StayOpenWithoutANameAndTheOpeningOneGoesIntoADirectory) {
  fs::create_directory("sub");
  folder.write("sub/in.btn", "");
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    for (const char* text : {"", "sub"}) {
      ui::setText(field(), text);
      ui::click(ui::part(kTitle, "OK"));
    }
    EXPECT_EQ(ui::textOf(field()), at("sub/"));
    EXPECT_EQ(files().size(), 1U);
    ui::setText(field(), "");
    ui::pressKey(XK_Escape);
  });
  const auto form = run<zFileOpenForm>(script);
  EXPECT_EQ(form->accepted(), 0);
  EXPECT_EQ(form->path(), "");
}

TEST_F(FileForms, KeepTheTypedNameWhenHomeAndEndMoveInIt) {
  folder.write("a.btn", "");
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    ui::waitFor([&] { return ui::focusIs(field()); }, "the focus in the selection field");
    ui::setText(field(), "");
    ui::typeText("b");
    ui::pressKey(XK_Home);
    ui::typeText("/");
    ui::pressKey(XK_End);
    ui::typeText("c");
    EXPECT_EQ(ui::textOf(field()), "/bc");
    ui::pressKey(XK_Down);
    EXPECT_EQ(ui::textOf(field()), at("a.btn"));
    ui::pressKey(XK_Escape);
  });
  run<zFileSaveForm>(script);
}

TEST_F(FileForms, EndUnacceptedWithTheirWindowOrTheirParent) {
  ui::ModalScript close;
  close.onDialog(kTitle, [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); });
  EXPECT_EQ(run<zFileSaveForm>(close, "/usr/x*")->accepted(), 0);

  auto second = std::make_unique<zFrameWin>(nullptr, new zSizer(10, 10, 90, 90), 0xCF0000, "Two");
  second->createWidgets();
  second->show();
  ui::ModalScript destroy;
  destroy.onDialog(kTitle, [&] { second.reset(); });
  const int accepted =
      destroy.run([&] { return zFileOpenForm(second.get(), kTitle, nullptr, nullptr).accepted(); });
  EXPECT_EQ(accepted, 0);
  ui::waitForNoDialog(kTitle);
}

TEST_F(FileForms, ManagesInAVanishedWorkingDirectory) {
  fs::create_directory("gone");
  fs::current_path("gone");
  fs::remove(at("gone"));
  ui::ModalScript script;
  script.onDialog(kTitle, XK_Escape);
  EXPECT_EQ(run<zFileSaveForm>(script, "nelkv.btn")->accepted(), 0);
}

}  // namespace
