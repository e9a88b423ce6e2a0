// What asks the user about the button set: the menu of a group, files, the end; and the set's
// menus.

#include <filesystem>
#include <utility>

#include "framework/core/application.h"
#include "framework/menus/menu.h"
#include "link/message_codec.h"
#include "tests/ui/buttons/panes_fixture.h"

namespace {

using testing::Contains;
using enum ButtonSetDocument::Reading;

constexpr const char* kSet =
    ":First\nA\na\n:COLLAPSED Second\nA\n1\nB\n2\nC\n3\n:MENU Extra\n&One\nfirst; x\n"
    "separator\nseparator\n";

class ButtonFlows : public ButtonPanes {
 protected:
  ButtonFlows() { loadSet(); }

  void loadSet() const { document().read(file, load); }
  static std::string text() { return formatButtonSet(document().set()); }
  std::string barText() const {
    ui::drain();
    return ui::look(frame->bar->widget());
  }
  bool isSaveEnabled() const { return frame->bar->isItemEnabled(kCommandSaveButtons) != 0; }

  const TemporaryFolder folder;
  const std::string file = folder.write("a.btn", kSet);
};

class GroupMenu : public ButtonFlows {
 protected:
  using Dialogs = std::vector<std::pair<std::string, std::string>>;

  static bool isOpen() {
    const zPopupMenu* menu = zPopupMenu::active();
    return menu != nullptr && menu->widget() != nullptr && ui::isViewable(menu->widget());
  }
  using Step = std::function<void(ui::ModalScript& script)>;

  /// Opens the menu of the second group, does `inMenu` there, goes through the further steps and
  /// waits until all is over.
  static void withMenu(
      const std::function<void()>& inMenu, const Step& further = [](auto&) {}) {
    bool hasBeenOpen = false;
    ui::ModalScript script;
    script.when(isOpen, "the menu", [&] {
      hasBeenOpen = true;
      inMenu();
    });
    further(script);
    script.run([&] {
      ui::click(childOf<zPushButton>(pane(1))->widget());
      // Everything else happens in loops inside this one.
      zApp::instance()->pumpWhile([&] { return !hasBeenOpen; });
      return 0;
    });
    ui::waitForDialog(PanesFrame::kTitle);
    awaitCommandLine();
  }
  /// Presses the key of an item, and types into the dialogs that come, after `meanwhile`.
  static void choose(
      const std::string& key, const Dialogs& dialogs,
      const std::function<void()>& meanwhile = [] {}) {
    withMenu([&] { ui::typeText(key); },
             [&](ui::ModalScript& script) {
               for (const auto& [title, keys] : dialogs) {
                 script.onDialog(title, [keys = keys, &meanwhile] {
                   meanwhile();
                   typeKeys(keys);
                 });
               }
             });
  }
};

TEST_F(GroupMenu, EditsItsGroup) {
  const std::string rest = "A\n1\nB\n2\nC\n3\n";
  const std::string whole = ":COLLAPSED Second\n" + rest;
  const struct {
    const char* key;
    const char* title;
    std::vector<std::string> keys;  ///< for each dialog
    std::string second;             ///< what the second group becomes
  } rows[] = {
      {"a", "App Add Button", {"New\tnew; x\n"}, ":Second\n" + rest + "New\nnew; x\n"},
      {"a", "App Add Button", {"New\x1b"}, whole},
      {"e", "App Edit Button", {"\v\n", "Other\n"}, ":Second\nA\n1\nOther\n2\nC\n3\n"},
      {"e", "App Edit Button", {"\v\n", "Other\x1b"}, whole},
      {"e", "App Edit Button", {"\x1b"}, whole},
      {"d", "App Delete Button", {"\v \a\n"}, ":Second\nA\n1\n"},
      {"d", "App Delete Button", {" \x1b"}, whole},
      {"n", "App Rename Group", {"Renamed\n"}, ":COLLAPSED Renamed\n" + rest},
      {"n", "App Rename Group", {"Renamed\x1b"}, whole},
      {"l", "App Delete Group", {"\n"}, ""},
      {"l", "App Delete Group", {"\x1b"}, whole},
  };
  for (const auto& row : rows) {
    loadSet();
    Dialogs dialogs;
    for (const std::string& keys : row.keys) {
      dialogs.emplace_back(row.title, keys);
    }
    choose(row.key, dialogs);
    std::string wanted = kSet;
    EXPECT_EQ(text(), wanted.replace(wanted.find(whole), whole.size(), row.second));
    EXPECT_EQ(isSaveEnabled(), row.second != whole);
  }
  ASSERT_THAT(frame->explained, Contains(kCommandAddButton)) << "the status line hears of it";
  EXPECT_EQ(frame->explained.back(), 0);
  EXPECT_EQ(log(), "");
}

TEST_F(GroupMenu, DropsWhatIsForAGroupThatHasGone) {
  const std::string other = folder.write("other", ":Other\nA\na\n:Third\nA\na\n");
  const auto replace = [&] { document().read(other, load); };
  choose("l", {{"App Delete Group", "\n"}}, replace);
  EXPECT_EQ(log(), "Deletion dropped: there is no group \"Second\" any more\n");
  EXPECT_EQ(text(), readFile(other));
  loadSet();
  withMenu([&] {
    replace();
    ui::typeText("n");
  });
  EXPECT_EQ(ui::windowWithTitle("App Rename Group"), 0);
}

TEST_F(GroupMenu, OpensBelowItsButtonAtEveryScrollPosition) {
  addGroup("Third", 90);
  set().expandAll();
  const int inset = zDialogUnit(5, 0).width();
  for (const int position : {0, 20}) {
    frame->pane->moveResize(0, 0, frame->pane->sizer()->size().width, 200);
    zScrollBarCtrl& down = *childOf<zScrollBarCtrl>(*frame->pane);
    down.scrollPos()->setPosition(position);
    set().scrolled(down);
    ui::drain();
    zPoint place;
    withMenu([&] {
      place = zPopupMenu::active()->position();
      ui::pressKey(XK_Escape);
    });
    EXPECT_EQ(place.x,
              inset + set().sizer()->pos().x + childOf<zPushButton>(pane(1))->sizer()->pos().x + 6);
    EXPECT_EQ(place.y, inset - position + pane(1).yPosition + set().metrics().headerHeight - 2 +
                           frame->barHeight);
  }
}

TEST_F(ButtonFlows, AddGroupsOfWhichThoseByApplyDoNotCount) {
  for (const bool isConfirmed : {false, true}) {
    loadSet();
    ui::ModalScript script;
    script.onDialog("App Add Group", [] { ui::typeText("New\t\t "); })
        .when([] { return ui::look("App Add Group").find("<> focus") != std::string::npos; },
              "the emptied line", [&] { typeKeys(isConfirmed ? "Last\n" : "\x1b"); });
    script.run([] {
      set().addGroup();
      return 0;
    });
    awaitCommandLine();
    std::string wanted = kSet;
    wanted.insert(wanted.find(":MENU"), isConfirmed ? ":New\n:Last\n" : ":New\n");
    EXPECT_EQ(text(), wanted);
    EXPECT_EQ(isSaveEnabled(), isConfirmed) << "intended";
  }
}

TEST_F(ButtonFlows, ShowTheirMenusAndSendEntriesUncut) {
  EXPECT_EQ(barText(), "Menu\nMenu\nMenu\nExtra\n");
  EXPECT_EQ(ui::look(ui::widgetResource(ui::partsOf(frame->bar->widget()).at(3), "subMenuId")),
            "( ) &One\n---\n");
  EXPECT_EQ(frame->help, "8001 Execute Command: first; x|8002 |");
  zEvent chosen = zEvent::of(kMsgCommand, 8001);
  EXPECT_NE(frame->bar->dispatch(&chosen), 0);
  EXPECT_THAT(std::string(g_EncodeBuffer.begin(), g_EncodeBuffer.end()),
              testing::HasSubstr("first; x"));
  awaitCommandLine();
  document().append({{}, {{"Late", {{"a", "b"}}}}});
  EXPECT_EQ(barText(), "Menu\nMenu\nMenu\nExtra\nLate\n");
  EXPECT_EQ(frame->help, "8001 Execute Command: first; x|8002 |8003 Execute Command: b|");
  document().read(folder.write("none", ":G\n"), load);
  EXPECT_EQ(barText(), "Menu\nMenu\nMenu\n");
  EXPECT_EQ(frame->help, "");
  EXPECT_EQ(frame->bar->dispatch(&chosen), 0);
  loadSet();
  EXPECT_EQ(frame->help, "8001 Execute Command: first; x|8002 |") << "the ids begin again";
}

class ButtonFiles : public ButtonFlows {
 protected:
  /// Types a name into a file form, in place of what it shows; without one, Escape.
  static void answer(ui::ModalScript& script, const std::string& title, const std::string& name) {
    script.onDialog(title, [=] {
      ui::setText(ui::part(title, "Text"), name);
      ui::pressKey(name.empty() ? XK_Escape : XK_Return);
    });
  }
  static void answerBox(ui::ModalScript& script, const std::string& seen, ui::KeySymbol key) {
    script.when([] { return ui::look("App Error").find(" focus") != std::string::npos; }, seen,
                [=] {
                  EXPECT_EQ(ui::look("App Error"), seen);
                  ui::pressKey(key);
                });
  }
  std::string at(const std::string& name) const { return (folder / name).string(); }
};

TEST_F(ButtonFiles, AreLoadedAndAppendedOnceThereIsOne) {
  const std::string other = folder.write("b.btn", ":Other\n");
  ui::ModalScript script;
  answer(script, "App Append Buttons", at("none.btn"));
  answerBox(script,
            "{error}\nFile does not exist\n" + at("none.btn") + ".\n---\n[OK] default focus\n",
            XK_Return);
  answer(script, "App Append Buttons", other);
  EXPECT_EQ(script.run([] { return set().loadButtons(1); }), 1);
  awaitCommandLine();
  EXPECT_EQ(group(2).name, "Other");
  EXPECT_TRUE(isSaveEnabled());
  ui::ModalScript loading;
  answer(loading, "App Load Buttons", other);
  EXPECT_EQ(loading.run([] { return set().loadButtons(0); }), 1);
  EXPECT_EQ(text(), ":Other\n");
  EXPECT_FALSE(isSaveEnabled());
  ui::ModalScript refused;
  refused.onDialog("App Load Buttons", XK_Escape);
  refused.run([] {
    loadDefaultButtons("/nowhere");
    return 0;
  });
  EXPECT_EQ(text(), ":Other\n");
}

TEST_F(ButtonFiles, AreSavedWhereTheUserSays) {
  const std::string saved = at("saved.btn");
  set().setModified();
  ui::ModalScript script;
  answer(script, "App Save Buttons", at("no/where.btn"));
  answerBox(script,
            "{error}\nPermission denied!\nCannot write to file\n" + at("no/where.btn") +
                ".\n---\n[OK] default focus\n",
            XK_Return);
  answer(script, "App Save Buttons", "/" + std::string(250, 'x'));
  script.onDialog("App Error", XK_Return);
  answer(script, "App Save Buttons", saved);
  EXPECT_EQ(script.run([] { return set().save(); }), 1);
  EXPECT_FALSE(isSaveEnabled());
  EXPECT_EQ(readFile(saved), kSet);
  std::filesystem::remove(saved);
  EXPECT_EQ(set().save(), 1) << "nobody is asked again";
  // Cancel does not keep it from writing over a file: intended.
  document().addGroup("New");
  ui::ModalScript again;
  again.onDialog("App Save Buttons", XK_Return);
  answerBox(again, "{}\nFile already exist!\nOK for writing\n---\n[OK] default focus\n[Cancel]\n",
            XK_Escape);
  EXPECT_EQ(again.run([] { return set().saveButtonsAs(); }), 1);
  EXPECT_EQ(readFile(saved), text());
  ui::ModalScript refused;
  refused.onDialog("App Save Buttons", XK_Escape);
  EXPECT_EQ(refused.run([] { return set().saveButtonsAs(); }), 0);
  EXPECT_EQ(document().fileName(), saved);
}

TEST_F(ButtonFiles, AreAskedForAtTheEnd) {
  EXPECT_EQ(set().queryExit(), 1);
  const std::string target = at("saved.btn");
  const struct {
    const char* keys;
    const char* name;  ///< null without a form, empty for Cancel there
    int mayEnd;
  } rows[] = {{"\x1b", nullptr, 0}, {"\n", "", 0}, {"\t\n", nullptr, 1}, {"\n", target.c_str(), 1}};
  for (const auto& row : rows) {
    set().setModified();
    ui::ModalScript script;
    script.onDialog("App Exit", [&] { typeKeys(row.keys); });
    if (row.name != nullptr) {
      answer(script, "App Save Buttons", row.name);
    }
    EXPECT_EQ(script.run([] { return set().queryExit(); }), row.mayEnd);
    EXPECT_NE(document().isModified(), row.name == target.c_str());
    EXPECT_NE(std::filesystem::exists(target), document().isModified());
  }
  EXPECT_EQ(readFile(target), kSet);
}

}  // namespace
