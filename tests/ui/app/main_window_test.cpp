// The main window's menus, accelerators, toolbar and status line.

#include "tests/ui/app/main_window.h"

#include <unistd.h>

#include <filesystem>

#include "app/main_bars.h"
#include "buttons/button_pane.h"
#include "buttons/control_pane.h"
#include "buttons/dyn_button.h"
#include "framework/draw/measure.h"
#include "resources/resource_ids.h"

namespace {

constexpr const char* kLog = "word word word word\n";

/// With something in the log.
class Commands : public MainWindow {
 protected:
  Commands() { theTextPane->appendText(kLog); }
};

constexpr const char* kFileLook =
    "&File:\n( ) &Open...\tCtrl+O focus\n( ) Set &Directory\n---\n( ) E&xit\tCtrl+Q\n";
constexpr const char* kButtonsLook =
    "&Buttons:\n( ) &Load... focus\n( ) A&ppend...\n( ) &Save greyed\n( ) Save &As...\n---\n"
    "( ) &Expand Groups\n( ) &Collapse Groups\n---\n( ) Add &Group...\n";
constexpr const char* kHelpLook =
    "&Help:\n( ) On T&essil focus\n( ) On &UI\tCtrl+H\n( ) On &Korvane\n"
    "( ) On Korvane &Commands\n---\n( ) &About UI...\n";

std::string viewLook(const std::string& findNext, const std::string& selection,
                     const std::string& numbering) {
  return "&View:\n( ) &Find ... focus\n( ) Find next\tF3" + findNext + "\n( ) Find &selection" +
         selection + "\n---\n( ) &Copy from text area\tCtrl+C" + selection +
         "\n( ) &Paste into command line\tCtrl+V\n---\n" + numbering +
         "&Line numbering\n---\n( ) Clear &text area\n";
}

TEST_F(Commands, AreGreyedInTheMenusWhereTheyAreImpossible) {
  EXPECT_EQ(pulldown(kFileMenu), kFileLook);
  EXPECT_EQ(pulldown(kButtonsMenu), kButtonsLook);
  EXPECT_EQ(pulldown(kHelpMenu), kHelpLook);
  EXPECT_EQ(pulldown(kViewMenu), viewLook(" greyed", " greyed", "( ) "));
  EXPECT_EQ(menuBar().isItemEnabled(kCommandCopy), 1) << "its key is judged when it is pressed";
  theTextPane->setSelection(5, 9);
  EXPECT_EQ(pulldown(kViewMenu), viewLook(" greyed", "", "( ) "));
  window->findFirst({"word", true, false});
  choose(kCommandLineNumbering);
  EXPECT_EQ(pulldown(kViewMenu), viewLook("", " greyed", "(x) "));
  EXPECT_EQ(ui::textOf(theTextPane->widget()), "word word word word\n     1: ");
  choose(kCommandLineNumbering);
  EXPECT_EQ(pulldown(kViewMenu), viewLook("", " greyed", "( ) "));
  EXPECT_EQ(ui::textOf(theTextPane->widget()), kLog);
}

TEST_F(Commands, AreExplainedInTheStatusLine) {
  auto& line = part<zStatusLine>();
  std::string help;
  for (const zHelpText& row : mainCommandHelp()) {
    zEvent armed = zEvent::of(kMsgMenuSelect, row.id);
    menuBar().dispatch(&armed);
    help += std::to_string(row.id) + " " + line.textAt(0).str() + "\n";
  }
  EXPECT_EQ(help,
            "1001 Open an SDL-System (Symbol File)\n"
            "1002 Select a new target directory\n"
            "1003 Exit the application\n"
            "1101 Search for text\n"
            "1102 Search for next text\n"
            "1103 Search for the selected text\n"
            "1104 Place a copy of the selected text into the clipboard\n"
            "1105 Insert text from the clipboard into the command line\n"
            "1106 Show line numbering\n"
            "1107 Clear the Text Area\n"
            "1201 Clear the current button definition and load new definitions from a file\n"
            "1203 Append button definition from a file to current definition\n"
            "1204 Save current button definition\n"
            "1205 Save current button definition to a file\n"
            "1206 Expand all button groups\n"
            "1207 Collapse all button groups\n"
            "1208 Add a new button group\n"
            "1301 Show help on Tessil\n"
            "1302 Show help on Korvane User Interface\n"
            "1303 Show help on Korvane\n"
            "1304 Show help on Korvane Commands\n"
            "1305 About Korvane UI\n"
            "1902 Show the Organizer\n"
            "1903 Zoom in text area\n"
            "1904 Zoom out text area\n"
            "500 \n"
            "2200 Add a new button to this button group\n"
            "2201 Edit a button of this button group\n"
            "2202 Delete a button of this button group\n"
            "2203 Rename this button group\n"
            "2204 Delete this button group\n");
  zEvent closed = zEvent::of(kMsgMenuSelect);
  closed.lparam = kMenuClosed;
  menuBar().dispatch(&closed);
  window->showStatus("ready");
  EXPECT_EQ(line.textAt(0), "ready");
}

TEST_F(MainWindow, HasItsPartsInTheirStripsWhichMakeRoomWhenTheyAreHidden) {
  const zDialogUnit margin(2, 2);
  const zRect bar = part<ClMainToolBar>().sizer()->rect();
  const zRect line = part<zStatusLine>().sizer()->rect();
  const zRect buttons = part<ControlPane>().sizer()->rect();
  const auto log = [&] { return part<MyPane>().sizer()->rect(); };
  zRect inner;
  window->getInterior(inner);
  EXPECT_EQ(bar, zRect(0, 0, inner.width(), 30));
  const int lineHeight = part<zStatusLine>().neededHeight();
  EXPECT_EQ(line, zRect(0, inner.height() - lineHeight, inner.width(), inner.height()));
  const int top = bar.bottom + margin.height();
  const int bottom = line.top - margin.height();
  const int left = margin.width() + zDialogUnit(160, 0).width();
  const int right = inner.width() - margin.width();
  EXPECT_EQ(buttons, zRect(margin.width(), top, left, bottom));
  EXPECT_EQ(log(), zRect(left, top, right, bottom));
  choose(kCommandToggleToolBar);
  EXPECT_EQ(log(), zRect(left, margin.height(), right, bottom));
  choose(kCommandToggleStatusLine);
  EXPECT_EQ(log(), zRect(left, margin.height(), right, inner.height() - margin.height()));
  choose(kCommandToggleToolBar);
  choose(kCommandToggleStatusLine);
  EXPECT_EQ(log(), zRect(left, top, right, bottom));
}

/// A command, the key that asks for it, and what comes of it.
struct Deed {
  int command;
  ui::KeySymbol key;
  unsigned modifiers;
  const char* title;  ///< of the window that comes up and is escaped from
  const char* outcome;
};

constexpr Deed kAccelerators[] = {
    {kCommandOpen, XK_o, ui::kControl, "Open Symbol File", ""},
    {kCommandExit, XK_q, ui::kControl, "Korvane UI Exit", ""},
    {kCommandHelpUi, XK_h, ui::kControl, nullptr, "10004 MSG_HELP_REQUEST \"tessil-testerui\"\n"},
    {kCommandToggleToolBar, XK_t, ui::kControl, nullptr, "no toolbar\n"},
    {kCommandToggleStatusLine, XK_f, ui::kControl, nullptr, "no status line\n"},
    {kCommandOrganizer, XK_1, ui::kControl, nullptr, "10007 MSG_SHOW_ORGANIZER\n"},
    {kCommandCopy, XK_c, ui::kControl, nullptr, "copied word\n"},
    {kCommandPaste, XK_v, ui::kControl, nullptr, "entry pasted\n"},
    {kCommandHelpTessil, XK_F1, 0, nullptr, "10004 MSG_HELP_REQUEST \"tessil-generator\"\n"},
    {kCommandFindNext, XK_F3, 0, nullptr, "found at 10\n"},
};

constexpr Deed kOthers[] = {
    {kCommandSetDirectory, 0, 0, nullptr, "1002 MSG_UI_COMMAND \"Change-Directory\"\n"},
    {kCommandFind, 0, 0, nullptr, "1012 MSG_UI_FIND\n"},
    {kCommandHelpKorvane, 0, 0, nullptr, "10004 MSG_HELP_REQUEST \"tessil-tester\"\n"},
    {kCommandHelpCommands, 0, 0, nullptr, "10004 MSG_HELP_REQUEST \"tessil-tester-commands\"\n"},
    {kCommandAbout, 0, 0, "About Korvane", ""},
    {kCommandLoadButtons, 0, 0, "Korvane UI Load Buttons", ""},
    {kCommandAppendButtons, 0, 0, "Korvane UI Append Buttons", ""},
    {kCommandSaveButtonsAs, 0, 0, "Korvane UI Save Buttons", ""},
    {kCommandSaveButtons, 0, 0, "Korvane UI Save Buttons", ""},
    {kCommandAddGroup, 0, 0, "Korvane UI Add Group", ""},
};

class Accelerators : public Commands {
 protected:
  Accelerators() {
    const TemporaryFolder folder;
    folder.write("nelkv.btn", ":Group\nlabel\ncommand\n");
    const auto before = std::filesystem::current_path();
    receive(MSG_T_SYSTEM_OPENED, {folder.path().string(), "name"});
    EXPECT_EQ(std::filesystem::current_path(), folder.path());
    EXPECT_EQ(g_SymbolName, "name");
    std::filesystem::current_path(before);
    theGroupPane->setModified();
    theCommandLine->addToHistory("old");
  }
  static zWindow* commandButton() { return theGroupPane->groups().at(0)->commands().at(0).window; }

  /// Sets the scene: a selection, a text to paste, a search to go on with.
  void prepare() {
    window->findFirst({"word", true, false});
    theTextPane->setSelection(5, 9);
    theSession.copyBuffer = "pasted";
    theCommandLine->setText("");
  }
  std::string outcome() {
    std::string seen = sent();
    seen += ui::isViewable(part<ClMainToolBar>().widget()) ? "" : "no toolbar\n";
    seen += ui::isViewable(part<zStatusLine>().widget()) ? "" : "no status line\n";
    seen += copyBuffer == "pasted" ? "" : "copied " + copyBuffer.str() + "\n";
    const std::string entry = theCommandLine->text().str();
    seen += entry.empty() ? "" : "entry " + entry + "\n";
    const int end = ui::caretOf(theTextPane->widget());
    return seen + (end == 9 ? "" : "found at " + std::to_string(end - 4) + "\n");
  }
  void expectOutcome(const Deed& deed) {
    SCOPED_TRACE(deed.command);
    const auto press = [&] {
      deed.key != 0 ? ui::pressKey(deed.key, deed.modifiers) : choose(deed.command);
    };
    if (deed.title != nullptr) {
      ui::ModalScript script;
      script.onDialog(deed.title, XK_Escape);
      script.run(press);
      ui::waitForNoDialog(deed.title);
      ui::waitForDialog(g_AppTitle);
    } else {
      press();
    }
    EXPECT_EQ(outcome(), deed.outcome);
    if (std::string_view(deed.outcome).starts_with("no ")) {
      press();
      EXPECT_EQ(outcome(), "") << "it comes back";
    }
  }
};

TEST_F(Accelerators, WorkWhereverTheFocusIs) {
  for (const Deed& deed : kAccelerators) {
    SCOPED_TRACE("in the command line");
    prepare();
    expectOutcome(deed);
  }
  for (const Deed& deed : kAccelerators) {
    SCOPED_TRACE("over the open history");
    prepare();
    settleFocus();
    theCommandLine->showDropDown();
    expectOutcome(deed);
    theCommandLine->hideDropDown();
  }
  const std::pair<const char*, zWindow*> windows[] = {{"in the log", theTextPane},
                                                      {"on a button", commandButton()}};
  for (const auto& [where, focused] : windows) {
    for (const Deed& deed : kAccelerators) {
      SCOPED_TRACE(where);
      prepare();
      settleFocus();
      focused->takeFocus();
      ui::waitForFocus(focused->widget());
      expectOutcome(deed);
    }
  }
  ui::ModalScript script;
  script.onDialog("Korvane Select", [&] {
    prepare();
    for (const Deed& deed : kAccelerators) {
      ui::pressKey(deed.key, deed.modifiers);
      EXPECT_EQ(outcome(), "") << "none in a dialog: " << deed.command;
    }
    ui::pressKey(XK_Escape);
  });
  script.run([] { receive(MSG_T_ASK_STRING, {"title", "Name?"}); });
  EXPECT_EQ(sent(), "1003 MSG_UI_CANCEL\n");
}

TEST_F(Accelerators, AreNotAllThatThereIsToChoose) {
  for (const Deed& deed : kOthers) {
    prepare();
    expectOutcome(deed);
    settleFocus();
  }
  // From the start, for what is selected now.
  theTextPane->setSelection(10, 14);
  choose(kCommandFindSelection);
  EXPECT_EQ(outcome(), "") << "the one that prepare() found";
  const auto isExpanded = [] { return theGroupPane->groups().at(0)->group().expanded; };
  choose(kCommandCollapseGroups);
  EXPECT_FALSE(isExpanded());
  choose(kCommandExpandGroups);
  EXPECT_TRUE(isExpanded());
  // The keyboard is back at the command line after each command.
  theTextPane->takeFocus();
  choose(kCommandClearText);
  EXPECT_EQ(ui::textOf(theTextPane->widget()), "------------- Text Log Cleared --------------\r\n");
  ui::waitForFocus(theCommandLine->widget());
}

class ToolBar : public Accelerators {
 protected:
  ToolBar() {
    zToolTipCtrl::setDelays({1, 5500});
    zWindowDlist::Iter walk(part<ClMainToolBar>().children());
    while (zWindow* child = walk.next()) {
      buttons.push_back(child);
    }
  }
  ~ToolBar() override { zToolTipCtrl::setDelays({}); }
  ziToolHelper* tip() {
    ziToolHelper* shown = nullptr;
    zWindowDlist::Iter walk(window->children());
    while (zWindow* child = walk.next()) {
      auto* helper = dynamic_cast<ziToolHelper*>(child);
      shown = helper != nullptr && helper->isShown() ? helper : shown;
    }
    return shown;
  }

  std::vector<zWindow*> buttons;
};

TEST_F(ToolBar, HasButtonsWithTipsThatDoWhatTheMenusDo) {
  std::string row;
  for (zWindow* button : buttons) {
    const zRect place = button->sizer()->rect();
    row += std::to_string(place.left) + "," + std::to_string(place.top) + " " +
           std::to_string(place.width()) + "x" + std::to_string(place.height()) + " ";
    ui::moveTo(button->widget(), 3, 3);
    ui::waitFor([&] { return tip() != nullptr; }, "the tip");
    row += tip()->tipText().str() + "\n";
    ui::moveTo(theTextPane->widget(), 50, 50);
    ui::waitFor([&] { return tip() == nullptr; }, "its end");
  }
  EXPECT_EQ(row,
            "5,4 24x22 Open an SDL-System (Symbol-file)\n35,4 24x22 Zoom out\n60,4 24x22 Zoom in\n"
            "90,4 24x22 Organizer\n120,4 24x22 Help on Korvane user interface\n");
  EXPECT_EQ(g_ToolBarHeight, 22 + zDialogUnit(0, 5).height());
  prepare();
  ui::ModalScript script;
  script.onDialog("Open Symbol File", XK_Escape);
  script.run([&] { ui::click(buttons[0]->widget()); });
  ui::waitForDialog(g_AppTitle);
  ui::click(buttons[3]->widget());
  ui::click(buttons[4]->widget());
  EXPECT_EQ(outcome(), "10007 MSG_SHOW_ORGANIZER\n10004 MSG_HELP_REQUEST \"tessil-testerui\"\n");
}

TEST_F(ToolBar, GreysTheZoomButtonsAtTheirLimitsAndBringsThemBack) {
  zWindow* const zoomOut = buttons[1];
  zWindow* const zoomIn = buttons[2];
  const auto zoomTo = [](zWindow* button, zWindow* other, int limit) {
    while (theTextPane->zoomLevel() != limit) {
      ASSERT_TRUE(button->isEnabled());
      ui::click(button->widget());
      EXPECT_TRUE(other->isEnabled());
    }
    EXPECT_FALSE(button->isEnabled());
    ui::click(button->widget());
    EXPECT_EQ(theTextPane->zoomLevel(), limit);
  };
  zoomTo(zoomOut, zoomIn, 0);
  zoomTo(zoomIn, zoomOut, TextPane::kMaxZoomLevel);
}

}  // namespace
