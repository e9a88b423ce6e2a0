// The dialogs beside the main window: the box about the program, directories, files.

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <sstream>

#include "dialogs/dabout.h"
#include "dialogs/ddirselec.h"
#include "dialogs/file_form.h"
#include "framework/controls/button.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/core/application.h"
#include "resources/dialogs.h"
#include "support/version.h"
#include "tests/support/basics.h"
#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>

namespace {

namespace fs = std::filesystem;
using Action = std::function<void()>;

constexpr int kFullModal = 1;

class SideDialogs : public testing::Test {
 protected:
  SideDialogs() {
    frame->show();
    ui::waitForDialog("Parent");
  }
  ~SideDialogs() override {
    frame.reset();
    ui::waitForNoDialog("Parent");
  }

  /// Runs what opens the dialog, and `act` in there.
  template <class Call>
  static auto script(const std::string& title, const Action& act, const Call& call) {
    ui::ModalScript script;
    script.onDialog(title, act);
    auto result = script.run(call);
    ui::waitForNoDialog(title);
    EXPECT_EQ(zApp::instance()->modalDepth(), 0);
    return result;
  }
  std::string at(const std::string& name) const { return (folder.path() / name).string(); }

  TemporaryFolder folder;
  std::unique_ptr<zAppFrame> frame =
      std::make_unique<zAppFrame>(nullptr, new zSizer(200, 150, 400, 300), 0xCF0000, "Parent");
};

// Each text of the box has the room that it needs.
void expectRoom(zWindow& box) {
  zWindowDlist::Iter walk(box.children());
  while (zWindow* child = walk.next()) {
    auto* label = windowCast<zStaticText>(child);
    int height = 0;
    std::istringstream lines(label == nullptr ? "" : label->text().str());
    for (std::string line; std::getline(lines, line);) {
      const int length = static_cast<int>(line.size());
      const zDimension needed = label->fontObject()->measure(line.c_str(), length);
      EXPECT_LT(needed.width, label->sizer()->size().width) << line;
      height += needed.height;
    }
    EXPECT_LE(height, child->sizer()->size().height);
  }
}

TEST_F(SideDialogs, AboutShowsItsTextsInFullAndClosesByEachOfTheFourRoads) {
  setenv("neldir", (folder / "nel").c_str(), 1);
  const auto patchLevel = folder.write("nel\\patchlevel.txt", "17");
  for (const int road : {0, 1, 2, 3}) {
    DAbout box(frame.get());
    const auto leave = [&] {
      EXPECT_EQ(ui::look(DAbout::kTitle),
                "Korvane\n" + std::string(kProductVersion) +
                    "  \nKorvane UI, the graphical front end of the tester.\n"
                    "Comes as it is, without warranty of any kind.\n"
                    "[OK] focus\n");
      expectRoom(box);
      road == 0   ? ui::click(box.childById(kDialogOk)->widget())
      : road == 1 ? ui::pressKey(XK_Return)
      : road == 2 ? ui::pressKey(XK_Escape)
                  : ui::closeByWindowManager(ui::windowOf(box.shell()));
    };
    EXPECT_EQ(script(DAbout::kTitle, leave, [&] { return box.run(0); }), 0);
  }
  EXPECT_EQ(readFile(patchLevel), "") << "asking for the version empties the file";
}

TEST_F(SideDialogs, AboutLeavesNothingBehindInTheServer) {
  const auto openAndClose = [&](int times) {
    for (int i = 0; i < times; ++i) {
      DAbout box(frame.get());
      ui::ModalScript script;
      script.when([&] { return ui::isViewable(box.shell()); }, "the box", [&] { box.endDialog(); });
      script.run([&] { return box.run(0); });
    }
    return ui::serverResources();
  };
  const auto before = openAndClose(3);  // fonts and the like stay
  EXPECT_GT(before.at("PIXMAP"), 0U);
  EXPECT_EQ(openAndClose(200), before);
}

class DirectorySelection : public SideDialogs {
 protected:
  DirectorySelection() {
    fs::create_directories(at("a/b"));
    fs::create_directory(at(" [odd]"));
  }

  std::optional<std::string> run(const std::string& start, const Action& act) {
    Ddirselec opened(frame.get(), start);
    dialog = &opened;
    script(Ddirselec::kTitle, act, [&] { return opened.run(kFullModal); });
    return opened.chosen();
  }
  zListBox& list() const { return *windowCast<zListBox>(dialog->childById(Ddirselec::kDirList)); }
  zEditLine& edit() const {
    return *windowCast<zEditLine>(dialog->childById(Ddirselec::kPathEdit));
  }
  void press(Ddirselec::Control id) const { ui::click(dialog->childById(id)->widget()); }
  /// These do something and return the path that is shown then: replacing the path and OK,
  std::string enter(const std::string& text) const {
    edit().setText(text.c_str());
    press(Ddirselec::kOk);
    return edit().text().str();
  }
  /// and choosing the row with this text and Return in the list.
  std::string open(const std::string& line) const {
    list().setFocus();
    ui::waitForFocus(list().innerWidget());
    EXPECT_GE(list().selectString(line.c_str()), 0) << line;
    ui::pressKey(XK_Return);
    return edit().text().str();
  }

  Ddirselec* dialog = nullptr;
};

TEST_F(DirectorySelection, GoesToWhatIsTypedAndToRowsUntilItIsConfirmed) {
  const auto walk = [&] {
    ui::waitForFocus(edit().widget());
    ui::typeText("a\n");
    EXPECT_EQ(edit().text().str(), at("a/"));
    EXPECT_EQ(open("b"), at("a/b/"));
    RWCString line;
    list().itemText(line, list().count() - 3);
    EXPECT_EQ(open(line.c_str()), at(""));
    EXPECT_EQ(open(" [odd]"), at(" [odd]/"));
    EXPECT_EQ(open("[root]"), "/");
    EXPECT_EQ(enter("/usr/"), "/usr/");
    // The list is longer than its window: "[usr]" is near its upper edge, and the middle below.
    ui::doubleClick(list().innerWidget());
    EXPECT_THAT(edit().text().str(), testing::MatchesRegex("/usr/.+/"));
    EXPECT_EQ(enter(at("a")), at("a/"));
    edit().setFocus();
    ui::waitForFocus(edit().widget());
    ui::typeText("\n");
  };
  EXPECT_EQ(run(at(""), walk), at("a/"));
}

TEST_F(DirectorySelection, AnswersNothingUnlessAnotherDirectoryIsConfirmed) {
  const Action ends[] = {[] { ui::pressKey(XK_Return); },
                         [&] {
                           EXPECT_EQ(enter("/"), "/");
                           press(Ddirselec::kCurrent);
                           EXPECT_EQ(edit().text().str(), at(""));
                           press(Ddirselec::kOk);
                         },
                         [&] {
                           enter("/");
                           press(Ddirselec::kCancel);
                         },
                         [&] {
                           enter("/");
                           ui::pressKey(XK_Escape);
                         },
                         [&] {
                           enter("/");
                           ui::closeByWindowManager(ui::windowWithTitle(Ddirselec::kTitle));
                         }};
  for (const Action& end : ends) {
    EXPECT_EQ(run(folder.path().string(), end), std::nullopt);
  }
  EXPECT_EQ(run("", ends[0]), "/");
}

TEST_F(DirectorySelection, TellsWhatCannotBeOpenedAndNeverAnswersIt) {
  const auto fail = [&] {
    EXPECT_EQ(enter(at("none")), "-- Invalid path --");
    EXPECT_EQ(enter(at("a")), at("a/"));
    fs::remove_all(at("a"));
    const std::string way = at("");
    const auto depth = static_cast<std::size_t>(std::count(way.begin(), way.end(), '/'));
    EXPECT_EQ(open(std::string(depth, ' ') + "[a]"), "Error: Cannot open directory!");
    EXPECT_EQ(enter("Error: Cannot open directory!"), "-- Invalid path --");
    EXPECT_EQ(enter(at("a/")), "-- Invalid path --");
    press(Ddirselec::kCancel);
  };
  EXPECT_EQ(run(folder.path().string(), fail), std::nullopt);
}

class FileForms : public SideDialogs {
 protected:
  static constexpr const char* kTitle = "Open a File";
  static constexpr const char* kFilter[] = {"Button Files", "*.btn", "All",
                                            "*.*",          nullptr, nullptr};

  FileForms() { fs::current_path(folder.path()); }
  ~FileForms() override { fs::current_path(before); }

  /// What the form accepts, which opens on the filter's first pattern.
  template <class Form>
  std::string run(const char* preset, const Action& act, const char* const* filter = kFilter) {
    const auto form = script(
        kTitle, act, [&] { return std::make_unique<Form>(frame.get(), kTitle, preset, filter); });
    EXPECT_EQ(form->accepted(), form->path().empty() ? 0 : 1);
    return static_cast<const char*>(*form);
  }
  /// Puts a name into the selection field and presses Return.
  static void enter(const std::string& text) {
    ui::setText(field(), text);
    ui::pressKey(XK_Return);
  }
  static Widget field() { return ui::part(kTitle, "Text"); }
  static std::size_t files() { return ui::rowsOf(ui::part(kTitle, "ItemsList")).size(); }

  fs::path before = fs::current_path();
};

TEST_F(FileForms, ShowTheWorkingDirectoryWithThePresetNameAndTheFirstPattern) {
  folder.write("\xC3\xA4 b.btn", "");
  folder.write("other.txt", "");
  const auto look = [&] {
    EXPECT_EQ(ui::textOf(field()), at("nelkv.btn"));
    EXPECT_EQ(ui::textOf(ui::part(kTitle, "FilterText")), at("*.btn"));
    EXPECT_EQ(files(), 1U);
    ui::waitFor([&] { return ui::focusIs(field()); }, "the focus in the selection field");
    EXPECT_EQ(ui::look(kTitle).find("[Help]"), std::string::npos);
    EXPECT_TRUE(ui::isOnTheScreen(ui::windowWithTitle(kTitle)));
    EXPECT_EQ(ui::resource(ui::part(kTitle, "FileSelectionBox"), "dialogStyle"), 2) << "full modal";
    ui::typeText("x");
    ui::pressKey(XK_Home);
    ui::typeText("/");
    ui::pressKey(XK_End);
    ui::typeText("c");
    EXPECT_EQ(ui::textOf(field()), "/" + at("nelkv.btnxc")) << "Home and End keep the name";
    ui::pressKey(XK_Down);
    EXPECT_EQ(ui::textOf(field()), at("\xC3\xA4 b.btn"));
    ui::setText(field(), "");
    ui::click(ui::part(kTitle, "ItemsList"), 10, 8);
    ui::pressKey(XK_Return);
  };
  EXPECT_EQ(run<zFileSaveForm>("nelkv.btn", look), at("\xC3\xA4 b.btn"));
}

TEST_F(FileForms, TakeEveryNameAsItStandsButNoneAndForOpeningADirectory) {
  for (const std::string& name :
       {at("missing"), std::string("a 'b' \"c\".btn\t\xC3\xA4\xE4"), std::string(3000, 'n')}) {
    EXPECT_EQ(run<zFileOpenForm>(nullptr, [&] { enter(name); }), name);
  }
  EXPECT_EQ(run<zFileSaveForm>(nullptr, [&] { enter(at("")); }), at(""));
  fs::create_directory("sub");
  folder.write("sub/in.btn", "");
  const auto enterDirectory = [&] {
    for (const char* text : {"", "sub"}) {
      ui::setText(field(), text);
      ui::click(ui::part(kTitle, "OK"));
    }
    EXPECT_EQ(ui::textOf(field()), at("sub/"));
    EXPECT_EQ(files(), 1U);
    ui::pressKey(XK_Escape);
  };
  EXPECT_EQ(run<zFileOpenForm>(nullptr, enterDirectory), "");
}

TEST_F(FileForms, EndUnacceptedWithTheirWindowOrTheirParentOrWithoutADirectory) {
  EXPECT_EQ(
      run<zFileSaveForm>("/usr/x*", [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); }),
      "");
  auto second = std::make_unique<zFrameWin>(nullptr, new zSizer(10, 10, 90, 90), 0xCF0000, "Two");
  second->createWidgets();
  second->show();
  EXPECT_EQ(script(
                kTitle, [&] { second.reset(); },
                [&] { return zFileOpenForm(second.get(), kTitle, nullptr, nullptr).accepted(); }),
            0);
  fs::create_directory("gone");
  fs::current_path("gone");
  fs::remove(at("gone"));
  EXPECT_EQ(run<zFileSaveForm>("nelkv.btn", [] { ui::pressKey(XK_Escape); }), "");
}

}  // namespace
