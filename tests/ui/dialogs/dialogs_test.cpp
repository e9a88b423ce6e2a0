// The dialogs beside the main window: the box about the program, directories, files.

#include "resources/dialogs.h"
#include "dialogs/dabout.h"
#include "dialogs/ddirselec.h"
#include "dialogs/file_form.h"
#include "framework/controls/button.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "support/version.h"
#include "tests/ui/draw/picture.h"

namespace {

namespace fs = std::filesystem;
using Action = std::function<void()>;

class SideDialogs : public testing::Test {
 protected:
  SideDialogs() {
    ui::bringUp(*frame);
    fs::current_path(folder.path());
  }
  ~SideDialogs() override { fs::current_path(before); }

  std::string at(const std::string& name) const { return (folder.path() / name).string(); }

  const fs::path before = fs::current_path();
  const TemporaryFolder folder;
  std::unique_ptr<zAppFrame> frame =
      std::make_unique<zAppFrame>(nullptr, new zSizer(200, 150, 400, 300), 0xCF0000, "Parent");
};

TEST_F(SideDialogs, AboutShowsItsTextsUntilOk) {
  setenv("neldir", (folder / "nel").c_str(), 1);
  const auto patchLevel = folder.write("nel\\patchlevel.txt", "17");
  DAbout box(frame.get());
  const auto leave = [&] {
    const Widget ok = box.childById(kDialogOk)->widget();
    ui::waitForFocus(ok);
    EXPECT_THAT(ui::look(DAbout::kTitle),
                testing::StartsWith(std::string("Korvane\n") + kProductVersion + "  \nKorvane"));
    for (zWindowDlist::Iter walk(box.children()); zWindow* child = walk.next();) {
      auto* text = windowCast<zStaticText>(child);
      EXPECT_TRUE(!text || text->textSize().width <= text->sizer()->rect().width());
    }
    const Window icon = ui::windowOf(ui::part(DAbout::kTitle, "DrawingArea"));
    EXPECT_THAT(pictureOf(icon, {0, 0, 32, 32}), testing::HasSubstr("wwwwww"));
    ui::click(ok);
  };
  EXPECT_EQ(ui::inDialog(DAbout::kTitle, leave, [&] { return box.run(0); }), 0);
  EXPECT_EQ(readFile(patchLevel), "") << "asking for the version empties the file";
}

class DirectorySelection : public SideDialogs {
 protected:
  DirectorySelection() {
    for (const char* name : {"a/b", " [odd]", "c", "d", "e", "f", "g", "h", "i"}) {
      fs::create_directories(at(name));
    }
  }

  std::optional<std::string> run(const std::string& start, const Action& act) {
    Ddirselec opened(frame.get(), start);
    dialog = &opened;
    ui::inDialog(Ddirselec::kTitle, act, [&] { return opened.run(1); });
    return opened.chosen();
  }
  zListBox& list() const { return *windowCast<zListBox>(dialog->childById(Ddirselec::kDirList)); }
  zEditLine& edit() const {
    return *windowCast<zEditLine>(dialog->childById(Ddirselec::kPathEdit));
  }
  std::string path() const { return edit().text().str(); }
  /// These do something and return the path that is shown then: a click,
  std::string press(Ddirselec::Control id) const {
    ui::click(dialog->childById(id)->widget());
    return path();
  }
  /// replacing the path and OK,
  std::string enter(const std::string& text) const {
    edit().setText(text.c_str());
    return press(Ddirselec::kOk);
  }
  /// and choosing the row with this text and Return in the list.
  std::string open(const std::string& line) const {
    ui::focus(list());
    EXPECT_GE(list().selectString(line.c_str()), 0) << line;
    ui::pressKey(XK_Return);
    return path();
  }

  Ddirselec* dialog = nullptr;
};

TEST_F(DirectorySelection, GoesToWhatIsTypedAndToRowsUntilItIsConfirmed) {
  const auto walk = [&] {
    ui::waitForFocus(edit().widget());
    EXPECT_THAT(ui::look(list().innerWidget()),
                testing::MatchesRegex("[|] .root.\n.*[|][*] +.nel_.*"));
    list().setCurSel(0);
    zEvent again = zEvent::of(kMsgActivate, 1);
    static_cast<zFrameWin*>(dialog)->activate(&again);
    EXPECT_EQ(list().selection(), 0);
    ui::typeText("a\n");
    EXPECT_EQ(path(), at("a/"));
    EXPECT_EQ(open("b"), at("a/b/"));
    RWCString line;
    list().itemText(line, list().count() - 3);
    EXPECT_EQ(open(line.c_str()), at(""));
    ui::doubleClickRow(list().innerWidget(), list().selectString(" [odd]"));
    EXPECT_EQ(path(), at(" [odd]/"));
    EXPECT_EQ(open("[root]"), "/");
    EXPECT_EQ(enter(at("none")), "-- Invalid path --");
    EXPECT_EQ(enter(at("a")), at("a/"));
    fs::remove_all(at("a"));
    const std::string way = at("");
    const auto depth = static_cast<std::size_t>(std::count(way.begin(), way.end(), '/'));
    EXPECT_EQ(open(std::string(depth, ' ') + "[a]"), "Error: Cannot open directory!");
    EXPECT_EQ(enter(at(" [odd]")), at(" [odd]/"));
    ui::focus(edit());
    ui::typeText("\n");
  };
  EXPECT_EQ(run(at(""), walk), at(" [odd]/"));
}

TEST_F(DirectorySelection, AnswersNothingUnlessAnotherDirectoryIsConfirmed) {
  const Action ends[] = {
      [] { ui::pressKey(XK_Return); },
      [&] { press(Ddirselec::kCurrent), press(Ddirselec::kOk); },
      [&] { press(Ddirselec::kCancel); },
      [] { ui::pressKey(XK_Escape); },
  };
  EXPECT_EQ(run("", ends[0]), "/");
  EXPECT_EQ(run(at(""), ends[0]), std::nullopt);
  for (std::size_t i = 1; i < std::size(ends); ++i) {
    const auto leaveFromElsewhere = [&] {
      EXPECT_EQ(enter("/"), "/");
      ends[i]();
    };
    EXPECT_EQ(run(folder.path().string(), leaveFromElsewhere), std::nullopt);
  }
}

class FileForms : public SideDialogs {
 protected:
  static constexpr const char* kTitle = "Open a File";

  /// What the form accepts, which opens on the filter's first pattern.
  template <class Form>
  std::string run(const char* preset, const Action& act) {
    static constexpr const char* kFilter[] = {"Button Files", "*.btn", "All",
                                              "*.*",          nullptr, nullptr};
    const auto form = ui::inDialog(
        kTitle, act, [&] { return std::make_unique<Form>(frame.get(), kTitle, preset, kFilter); });
    EXPECT_EQ(form->accepted(), form->path().empty() ? 0 : 1);
    return static_cast<const char*>(*form);
  }
  static Widget field() { return ui::part(kTitle, "Text"); }
  static std::size_t files() { return ui::rowsOf(ui::part(kTitle, "ItemsList")).size(); }
};

TEST_F(FileForms, ShowTheWorkingDirectoryWithThePresetNameAndTheFirstPattern) {
  folder.write("\xC3\xA4 b.btn", "");
  folder.write("other.txt", "");
  const auto look = [&] {
    EXPECT_EQ(ui::textOf(field()), at("nelkv.btn"));
    EXPECT_EQ(ui::textOf(ui::part(kTitle, "FilterText")), at("*.btn"));
    EXPECT_EQ(files(), 1U);
    ui::waitForFocus(field());
    ui::click(ui::windowWithTitle("Parent"), 1, 1);  // does not get the keyboard
    EXPECT_EQ(ui::look(kTitle).find("[Help]"), std::string::npos);
    ui::pressKey(XK_Home);
    ui::typeText("/");
    EXPECT_EQ(ui::textOf(field()), "/" + at("nelkv.btn")) << "Home keeps the name";
    ui::pressKey(XK_Down);
    EXPECT_EQ(ui::textOf(field()), at("\xC3\xA4 b.btn"));
    ui::pressKey(XK_Return);
  };
  EXPECT_EQ(run<zFileSaveForm>("nelkv.btn", look), at("\xC3\xA4 b.btn"));
}

TEST_F(FileForms, TakeEveryNameAsItStandsButNoneAndForOpeningADirectory) {
  const auto enter = [](const std::string& text) {
    return [text] {
      ui::setText(field(), text);
      ui::pressKey(XK_Return);
    };
  };
  for (const std::string& name : {at("missing"), std::string("a 'b' \"c\".btn\t\xC3\xA4\xE4")}) {
    EXPECT_EQ(run<zFileOpenForm>(nullptr, enter(name)), name);
  }
  fs::create_directory("sub");
  folder.write("sub/in.btn", "");
  const auto enterDirectory = [&] {
    enter("")();
    enter("sub")();
    EXPECT_EQ(ui::textOf(field()), at("sub/"));
    EXPECT_EQ(files(), 1U);
    ui::pressKey(XK_Escape);
  };
  EXPECT_EQ(run<zFileOpenForm>(nullptr, enterDirectory), "");
}

TEST_F(FileForms, EndUnacceptedWithTheirWindowOrTheirParent) {
  const Action close = [] { ui::closeByWindowManager(ui::windowWithTitle(kTitle)); };
  EXPECT_EQ(run<zFileSaveForm>("/usr/x*", close), "");
  EXPECT_EQ(run<zFileSaveForm>("x", [&] { frame.reset(); }), "");
}

}  // namespace
