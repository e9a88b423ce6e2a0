// What asks the user about the button set: the menu of a group, files, the end; and the set's
// menus.

#include <filesystem>

#include "framework/core/application.h"
#include "link/message_codec.h"
#include "tests/ui/buttons/panes_fixture.h"

namespace {

using enum ButtonSetDocument::Reading;
using Pieces = std::vector<std::string>;
using Step = std::function<void()>;

/// An item of a group's menu: its key, and the title of what it opens.
struct Command {
  const char* key;
  const char* title;
};
constexpr Command kAdd = {"a", "App Add Button"};
constexpr Command kEdit = {"e", "App Edit Button"};
constexpr Command kDelete = {"d", "App Delete Button"};
constexpr Command kRename = {"n", "App Rename Group"};
constexpr Command kRemove = {"l", "App Delete Group"};

const std::string kSecond = ":COLLAPSED Second\nA\n1\nB\n2\nC\n3\n";

/// The set of these tests; with another second group, and others behind that.
std::string setWith(const std::string& second) {
  return ":First\nA\na\n" + second + ":MENU Extra\n&One\nfirst; x\nseparator\nseparator\n";
}

class ButtonFlows : public ButtonPanes {
 protected:
  ButtonFlows() { loadSet(); }

  void loadSet() const { document().read(file, load); }
  static std::string text() { return formatButtonSet(document().set()); }
  bool isSaveEnabled() const { return frame->bar->isItemEnabled(kCommandSaveButtons) != 0; }

  /// Types into the dialogs with a title that come, each piece when the dialog has the focus, and
  /// so has its first line of text if there is one. Escape is \x1b; \v is Down, \a with Shift.
  static void type(
      ui::ModalScript& script, const std::string& title, const Pieces& pieces,
      const Step& beforeLast = [] {}) {
    const auto isReady = [=] {
      if (!ui::hasInputFocus(ui::windowWithTitle(title))) {
        return false;
      }
      const std::string seen = ui::look(title);
      const std::size_t end = seen.find('>');
      return end == std::string::npos || seen.find("> focus\n") == end;
    };
    for (const std::string& piece : pieces) {
      const bool isLast = &piece == &pieces.back();
      script.when(isReady, title, [=] {
        if (isLast) {
          beforeLast();
        }
        typeKeys(piece);
      });
    }
  }
  static void typeKeys(const std::string& keys) {
    for (const char key : keys) {
      if (std::string_view("\x1b\v\a").find(key) != std::string_view::npos) {
        ui::pressKey(key == '\x1b' ? XK_Escape : XK_Down,
                     key == '\a' ? ui::kShift : ui::kNoModifier);
      } else {
        ui::typeText({&key, 1});
      }
    }
  }

  /// Presses a key in the menu of the second group and types into the dialogs that come.
  static void choose(
      const Command& command, const Pieces& pieces, const Step& beforeLast = [] {}) {
    bool hasBeenOpen = false;
    ui::ModalScript script;
    script.when(
        [] {
          const zPopupMenu* menu = zPopupMenu::active();
          return menu != nullptr && menu->widget() != nullptr && ui::isViewable(menu->widget());
        },
        "the menu",
        [&] {
          hasBeenOpen = true;
          if (pieces.empty()) {
            beforeLast();
          }
          typeKeys(command.key);
        });
    type(script, command.title, pieces, beforeLast);
    script.run([&] {
      ui::click(ui::childOf<zPushButton>(pane(1))->widget());
      // Everything else happens in loops inside this one.
      zApp::instance()->pumpWhile([&] { return !hasBeenOpen; });
    });
    ui::waitForDialog(PanesFrame::kTitle);
    awaitCommandLine();
  }

  const TemporaryFolder folder;
  const std::string file = folder.write("a.btn", setWith(kSecond));
};

TEST_F(ButtonFlows, EditAGroupByTheCommandsOfItsMenu) {
  const std::string rest = "A\n1\nB\n2\nC\n3\n";
  // The command, what is typed, and what the second group becomes.
  const std::tuple<Command, Pieces, std::string> rows[] = {
      {kAdd, {"New\tnew; x\n"}, ":Second\n" + rest + "New\nnew; x\n"},
      {kAdd, {"New\x1b"}, kSecond},
      // By Apply. A definition stays as long as there is no label.
      {kAdd, {"X\tx\t\t ", "  \ty\t\t ", "Y\t\t\t ", "\x1b"}, ":Second\n" + rest + "X\nx\nY\ny\n"},
      {kEdit, {"\v\n", "Other\n"}, ":Second\nA\n1\nOther\n2\nC\n3\n"},
      {kEdit, {"\n", "  \t\n", "Run\t\n"}, ":Second\nRun\n1\nB\n2\nC\n3\n"},
      {kEdit, {"\v\n", "Other\x1b"}, kSecond},
      {kDelete, {"\v \a\n"}, ":Second\nA\n1\n"},
      {kDelete, {"\n", "\v \n"}, ":Second\nA\n1\nC\n3\n"},
      {kDelete, {" \x1b"}, kSecond},
      {kRename, {"New name\n"}, ":COLLAPSED New name\n" + rest},
      {kRename, {"  \n", " x\n"}, ":COLLAPSED  x\n" + rest},
      {kRename, {"New\t\t\n"}, kSecond},
      {kRemove, {"\n"}, ""},
      {kRemove, {"\x1b"}, kSecond},
  };
  for (const auto& [command, pieces, second] : rows) {
    loadSet();
    choose(command, pieces);
    EXPECT_EQ(text(), setWith(second)) << command.title << pieces.front();
    EXPECT_EQ(isSaveEnabled(), second != kSecond);
  }
  EXPECT_EQ(theTextPane->text(), "");
  loadSet();
  choose(kEdit, {"\n", "\n"}, [] {
    EXPECT_EQ(ui::look(kEdit.title), "Label:\n<A> focus\nDefinition:\n<1>\n[OK]\n[Cancel]\n");
    ui::setText(ui::part(kEdit.title, "TextField"), "two\r\nlines");
  });
  choose(kDelete, {""}, [] { ui::doubleClickRow(ui::part(kDelete.title, "ScrolledListBox"), 1); });
  EXPECT_EQ(text(), setWith(":Second\ntwo lines\n1\nC\n3\n"));
}

TEST_F(ButtonFlows, DropWhatIsForAGroupThatHasGone) {
  const std::string other = folder.write("other", ":Other\nA\na\n:Third\nA\na\n");
  const auto replace = [&] { document().read(other, load); };
  const std::pair<Command, Pieces> rows[] = {
      {kRename, {}},      {kAdd, {"X\n"}},    {kEdit, {"\n"}},  {kEdit, {"\n", "Y\n"}},
      {kDelete, {" \n"}}, {kRename, {"Z\n"}}, {kRemove, {"\n"}}};
  for (const auto& [command, pieces] : rows) {
    loadSet();
    choose(command, pieces, replace);
    EXPECT_EQ(text(), readFile(other)) << command.title;
  }
  const std::string end = " dropped: there is no group \"Second\" any more\n";
  EXPECT_EQ(theTextPane->text().str(), "Button \"X\"" + end + "Selection" + end + "Button \"Y\"" +
                                           end + "Deletion" + end + "Name \"Z\"" + end +
                                           "Deletion" + end);
}

TEST_F(ButtonFlows, AddGroupsOfWhichThoseByApplyDoNotCount) {
  ui::ModalScript script;
  type(script, "App Add Group", {"New\t\t ", " \t\t ", "\x1b", "Last\n"});
  script.run([&] {
    set().addGroup();
    EXPECT_FALSE(isSaveEnabled()) << "intended";
    set().addGroup();
  });
  awaitCommandLine();
  EXPECT_EQ(text(), setWith(kSecond + ":New\n:Last\n"));
  EXPECT_TRUE(isSaveEnabled());
}

TEST_F(ButtonFlows, ShowTheirMenusAndSendEntriesUncut) {
  const auto barText = [&] {
    ui::drain();
    return ui::look(frame->bar->widget()) + frame->help;
  };
  const std::string ownHelp = "8001 Execute Command: first; x|8002 |";
  EXPECT_EQ(barText(), "Menu\nMenu\nMenu\nExtra\n" + ownHelp);
  EXPECT_EQ(ui::look(ui::widgetResource(ui::partsOf(frame->bar->widget()).at(3), "subMenuId")),
            "( ) &One\n---\n");
  zEvent chosen = zEvent::of(kMsgCommand, 8001);
  EXPECT_NE(frame->bar->dispatch(&chosen), 0);
  const std::string sent(g_EncodeBuffer.begin(), g_EncodeBuffer.end());
  EXPECT_NE(sent.find("first; x"), std::string::npos);
  awaitCommandLine();
  document().append({{}, {{"Late", {{"a", "b"}}}}});
  EXPECT_EQ(barText(), "Menu\nMenu\nMenu\nExtra\nLate\n" + ownHelp + "8003 Execute Command: b|");
  document().read(folder.write("none", ":G\n"), load);
  EXPECT_EQ(barText(), "Menu\nMenu\nMenu\n");
  EXPECT_EQ(frame->bar->dispatch(&chosen), 0);
}

TEST_F(ButtonFlows, ReadAndWriteTheFilesThatTheUserNames) {
  ui::ModalScript script;
  // Types a name into a file form, in place of what it shows.
  const auto name = [&](const std::string& title, const std::string& path) {
    script.onDialog("App " + title + " Buttons", [=] {
      ui::setText(ui::part("App " + title + " Buttons", "Text"), path);
      ui::pressKey(XK_Return);
    });
  };
  const auto box = [&](const std::string& seen, ui::KeySymbol key) {
    script.when([] { return ui::look("App Error").find(" focus") != std::string::npos; }, seen,
                [=] {
                  EXPECT_EQ(ui::look("App Error"), seen);
                  ui::pressKey(key);
                });
  };
  const std::string ok = ".\n---\n[OK] default focus\n";
  const std::string other = folder.write("b.btn", ":Other\n");
  const std::string none = folder / "no/where.btn";
  const std::string saved = folder / "saved.btn";
  const std::string tooLong = folder / std::string(250, 'x');
  name("Append", none);
  box("{error}\nFile does not exist\n" + none + ok, XK_Return);
  name("Append", other);
  script.onDialog("App Load Buttons", XK_Escape);
  name("Save", none);
  box("{error}\nPermission denied!\nCannot write to file\n" + none + ok, XK_Return);
  name("Save", tooLong);
  box("{error}\n<Cannot write to file\n" + tooLong + ".>\nbar 0 of 0 to 30 by 30" + ok.substr(1),
      XK_Return);
  name("Save", saved);
  // Cancel does not keep it from writing over a file: intended.
  script.onDialog("App Save Buttons", XK_Return);
  box("{}\nFile already exist!\nOK for writing\n---\n[OK] default focus\n[Cancel]\n", XK_Escape);
  // The end: Cancel, Save without a name, Discard, Save.
  script.onDialog("App Exit", XK_Escape);
  type(script, "App Exit", {"\n"});
  script.onDialog("App Save Buttons", XK_Escape);
  type(script, "App Exit", {"\t\n"});
  name("Load", other);
  std::string results;  // with "*" while there is something to save
  const auto note = [&](int result) {
    results += std::to_string(result) + (isSaveEnabled() ? "* " : " ");
  };
  script.run([&] {
    note(set().loadButtons(1));
    EXPECT_EQ(text(), setWith(kSecond + ":Other\n"));
    loadDefaultButtons("/nowhere");
    note(set().save());
    EXPECT_EQ(readFile(saved), text());
    std::filesystem::remove(saved);
    note(set().save());  // nobody is asked again
    note(set().queryExit());
    document().addGroup("New");
    note(set().saveButtonsAs());
    EXPECT_EQ(readFile(saved), text());
    set().setModified();
    note(set().queryExit());
    document().setFileName("");
    note(set().queryExit());
    note(set().queryExit());
    note(set().loadButtons(0));
  });
  EXPECT_EQ(text(), ":Other\n");
  EXPECT_EQ(results, "1* 1 1 1 1 0* 0* 1* 1 ");
}

}  // namespace
