// The main window's menus, accelerators, toolbar and status line.

#include "tests/ui/app/main_window.h"

#include <filesystem>
#include <map>

#include "app/main_bars.h"
#include "buttons/button_pane.h"
#include "buttons/control_pane.h"
#include "buttons/dyn_button.h"
#include "buttons/group_pane.h"
#include "framework/draw/measure.h"
#include "resources/resource_ids.h"
#include "tests/support/basics.h"

namespace {

constexpr const char* kLog = "word word word word\n";

class Commands : public MainWindow {
 protected:
  Commands() {
    theTextPane->appendText(kLog);
    const TemporaryFolder folder;
    folder.write("nelkv.btn", ":Group\nlabel\ncommand\n");
    receive(MSG_T_SYSTEM_OPENED, {folder.path().string(), "name"});
    EXPECT_EQ(g_SymbolName, "name");
    std::filesystem::current_path("/");
    theCommandLine->addToHistory("old");
  }

  static zMenu& menuBar() { return theGroupPane->mainWindow().mainMenu(); }
  static void choose(int command) {
    zEvent event = zEvent::of(kMsgCommand, command);
    menuBar().dispatch(&event);
  }
  /// Opens a pulldown, looks at it and closes it.
  static std::string pulldown(int position) {
    Widget cascade = ui::partsOf(menuBar().widget()).at(static_cast<std::size_t>(position));
    Widget menu = ui::widgetResource(cascade, "subMenuId");
    ui::click(cascade);
    ui::waitFor([&] { return ui::isViewable(menu); }, "the menu");
    const std::string seen = ui::textOf(cascade) + ":\n" + ui::look(menu);
    ui::pressKey(XK_Escape);
    ui::pressKey(XK_Escape);
    ui::waitFor([&] { return !ui::isViewable(menu); }, "the menu's end");
    return seen;
  }

  /// Sets the scene: a selection, a text to paste, a search to go on with.
  void prepare(zWindow* focused = nullptr) {
    window->findFirst({"word", true, false});
    theTextPane->setSelection(5, 9);
    theSession.copyBuffer = "pasted";
    theCommandLine->setText("");
    theTextPane->takeFocus();
    theCommandLine->startFocusTimer();
    ui::waitForFocus(theCommandLine->widget());
    if (focused != nullptr) {
      focused->takeFocus();
      ui::waitForFocus(focused->widget());
    }
  }
  std::string outcome() {
    std::string seen = sent();
    seen += ui::isViewable(part<ClMainToolBar>()->widget()) ? "" : "no toolbar\n";
    seen += ui::isViewable(part<zStatusLine>()->widget()) ? "" : "no status line\n";
    seen += copyBuffer == "pasted" ? "" : "copied " + copyBuffer.str() + "\n";
    const std::string entry = theCommandLine->text().str();
    seen += entry.empty() ? "" : "entry " + entry + "\n";
    const int end = ui::caretOf(theTextPane->widget());
    return seen + (end == 9 ? "" : "found at " + std::to_string(end - 4) + "\n");
  }
};

TEST_F(Commands, AreGreyedInTheMenusWhereTheyAreImpossible) {
  const auto view = [](const std::string& findNext, const std::string& selection,
                       const std::string& numbering) {
    return "&View:\n( ) &Find ... focus\n( ) Find next\tF3" + findNext + "\n( ) Find &selection" +
           selection + "\n---\n( ) &Copy from text area\tCtrl+C" + selection +
           "\n( ) &Paste into command line\tCtrl+V\n---\n" + numbering +
           "&Line numbering\n---\n( ) Clear &text area\n";
  };
  const std::string buttons =
      "\n( ) Save &As...\n---\n( ) &Expand Groups\n( ) &Collapse Groups\n---\n"
      "( ) Add &Group...\n";
  EXPECT_EQ(pulldown(kFileMenu),
            "&File:\n( ) &Open...\tCtrl+O focus\n( ) Set &Directory\n---\n( ) E&xit\tCtrl+Q\n");
  EXPECT_EQ(pulldown(kHelpMenu),
            "&Help:\n( ) On T&essil focus\n( ) On &UI\tCtrl+H\n( ) On &Korvane\n"
            "( ) On Korvane &Commands\n---\n( ) &About UI...\n");
  EXPECT_EQ(pulldown(kButtonsMenu),
            "&Buttons:\n( ) &Load... focus\n( ) A&ppend...\n( ) &Save greyed" + buttons);
  theGroupPane->setModified();
  EXPECT_EQ(pulldown(kButtonsMenu),
            "&Buttons:\n( ) &Load... focus\n( ) A&ppend...\n( ) &Save" + buttons);
  EXPECT_EQ(pulldown(kViewMenu), view(" greyed", " greyed", "( ) "));
  EXPECT_EQ(menuBar().isItemEnabled(kCommandCopy), 1) << "its key is judged when it is pressed";
  theTextPane->setSelection(5, 9);
  EXPECT_EQ(pulldown(kViewMenu), view(" greyed", "", "( ) "));
  window->findFirst({"word", true, false});
  choose(kCommandLineNumbering);
  EXPECT_EQ(pulldown(kViewMenu), view("", " greyed", "(x) "));
  EXPECT_EQ(ui::textOf(theTextPane->widget()), "word word word word\n     1: ");
  choose(kCommandLineNumbering);
  EXPECT_EQ(pulldown(kViewMenu), view("", " greyed", "( ) "));
  EXPECT_EQ(ui::textOf(theTextPane->widget()), kLog);

  auto* const line = part<zStatusLine>();
  std::map<int, std::string> help;
  for (const zHelpText& row : mainCommandHelp()) {
    zEvent armed = zEvent::of(kMsgMenuSelect, row.id);
    menuBar().dispatch(&armed);
    EXPECT_TRUE(help.emplace(row.id, line->textAt(0).str()).second);
  }
  EXPECT_EQ(help.size(), 31U);
  EXPECT_EQ(help[kCommandOpen] + help[kCommandPopupTitle] + help[kCommandDeleteGroup],
            "Open an SDL-System (Symbol File)Delete this button group");
}

TEST_F(MainWindow, HasItsPartsInTheirStripsWhichMakeRoomWhenTheyAreHidden) {
  zRect inner;
  window->getInterior(inner);
  const zDialogUnit margin(2, 2);
  const int line = inner.height() - part<zStatusLine>()->neededHeight();
  const int left = margin.width() + zDialogUnit(160, 0).width();
  const int right = inner.width() - margin.width();
  const auto expectLog = [&](int above, int below) {
    EXPECT_EQ(part<MyPane>()->sizer()->rect(),
              zRect(left, above + margin.height(), right, below - margin.height()));
  };
  const auto toggle = [](int command) {
    zEvent event = zEvent::of(kMsgCommand, command);
    theGroupPane->mainWindow().mainMenu().dispatch(&event);
  };
  EXPECT_EQ(part<ClMainToolBar>()->sizer()->rect(), zRect(0, 0, inner.width(), 30));
  EXPECT_EQ(part<zStatusLine>()->sizer()->rect(), zRect(0, line, inner.width(), inner.height()));
  EXPECT_EQ(part<ControlPane>()->sizer()->rect(),
            zRect(margin.width(), 30 + margin.height(), left, line - margin.height()));
  expectLog(30, line);
  toggle(kCommandToggleToolBar);
  expectLog(0, line);
  toggle(kCommandToggleStatusLine);
  expectLog(0, inner.height());
  toggle(kCommandToggleToolBar);
  toggle(kCommandToggleStatusLine);
  expectLog(30, line);
}

/// A command, the key that asks for it, the window that comes up and is escaped from, and what
/// comes of it.
struct Deed {
  int command;
  ui::KeySymbol key;
  unsigned modifiers;
  const char* title;
  const char* outcome;
};

TEST_F(Commands, WorkByTheirKeysWhereverTheFocusIsButInADialog) {
  constexpr Deed kDeeds[] = {
      {kCommandOpen, XK_o, ui::kControl, "Open Symbol File", ""},
      {kCommandExit, XK_q, ui::kControl, "Korvane UI Exit", ""},
      {kCommandHelpUi, XK_h, ui::kControl, "", "10004 MSG_HELP_REQUEST \"tessil-testerui\"\n"},
      {kCommandToggleToolBar, XK_t, ui::kControl, "", "no toolbar\n"},
      {kCommandToggleStatusLine, XK_f, ui::kControl, "", "no status line\n"},
      {kCommandOrganizer, XK_1, ui::kControl, "", "10007 MSG_SHOW_ORGANIZER\n"},
      {kCommandCopy, XK_c, ui::kControl, "", "copied word\n"},
      {kCommandPaste, XK_v, ui::kControl, "", "entry pasted\n"},
      {kCommandHelpTessil, XK_F1, 0, "", "10004 MSG_HELP_REQUEST \"tessil-generator\"\n"},
      {kCommandFindNext, XK_F3, 0, "", "found at 10\n"},
      // Without keys; others are chosen from outside.
      {kCommandAbout, 0, 0, "About Korvane", ""},
      {kCommandAppendButtons, 0, 0, "Korvane UI Append Buttons", ""},
      {kCommandSaveButtons, 0, 0, "Korvane UI Save Buttons", ""},
  };
  theGroupPane->setModified();
  const auto expectOutcome = [&](const Deed& deed, const char* where) {
    SCOPED_TRACE(where + std::to_string(deed.command));
    const auto press = [&] {
      deed.key != 0 ? ui::pressKey(deed.key, deed.modifiers) : choose(deed.command);
    };
    if (const std::string title = deed.title; !title.empty()) {
      ui::ModalScript script;
      script.onDialog(title, XK_Escape);
      script.run(press);
      ui::waitForNoDialog(title);
      ui::waitForDialog(g_AppTitle);
    } else {
      press();
    }
    EXPECT_EQ(outcome(), deed.outcome);
    if (std::string_view(deed.outcome).starts_with("no ")) {
      press();
      EXPECT_EQ(outcome(), "") << "it comes back";
    }
  };
  zWindow* const button = theGroupPane->groups().at(0)->commands().at(0).window;
  for (const Deed& deed : kDeeds) {
    prepare();
    expectOutcome(deed, "in the command line ");
    if (deed.key != 0) {
      prepare();
      theCommandLine->showDropDown();
      expectOutcome(deed, "over the open history ");
      theCommandLine->hideDropDown();
      prepare(theTextPane);
      expectOutcome(deed, "in the log ");
      prepare(button);
      expectOutcome(deed, "on a button ");
    }
  }
  prepare();
  ui::ModalScript script;
  script.onDialog("Korvane Select", [&] {
    for (const Deed& deed : kDeeds) {
      deed.key != 0 ? ui::pressKey(deed.key, deed.modifiers) : ui::drain();
      EXPECT_EQ(outcome(), "") << "none in a dialog: " << deed.command;
    }
    ui::pressKey(XK_Escape);
  });
  script.run([] { receive(MSG_T_ASK_STRING, {"title", "Name?"}); });
  EXPECT_EQ(sent(), "1003 MSG_UI_CANCEL\n");
  // From the start, for what is selected now.
  theTextPane->setSelection(10, 14);
  choose(kCommandFindSelection);
  EXPECT_EQ(outcome(), "") << "the one that prepare() found";
  const auto isExpanded = [] { return theGroupPane->groups().at(0)->group().expanded; };
  choose(kCommandCollapseGroups);
  EXPECT_FALSE(isExpanded());
  choose(kCommandExpandGroups);
  EXPECT_TRUE(isExpanded());
}

TEST_F(Commands, OfTheToolBarHaveTipsAndTheZoomIsGreyedAtItsLimits) {
  zToolTipCtrl::setDelays({1, 5500});
  std::string row;
  std::vector<zWindow*> buttons;
  const auto isTipShown = [&] {
    return part<ziToolHelper>() != nullptr && part<ziToolHelper>()->isShown();
  };
  zWindowDlist::Iter walk(part<ClMainToolBar>()->children());
  while (zWindow* button = walk.next()) {
    buttons.push_back(button);
    ui::moveTo(button->widget(), 3, 3);
    ui::waitFor(isTipShown, "the tip");
    const zRect place = button->sizer()->rect();
    row += std::to_string(place.left) + "," + std::to_string(place.top) + " " +
           part<ziToolHelper>()->tipText().str() + "\n";
    ui::moveTo(theTextPane->widget(), 50, 50);
    ui::waitFor([&] { return !isTipShown(); }, "its end");
  }
  zToolTipCtrl::setDelays({});
  EXPECT_EQ(row,
            "5,4 Open an SDL-System (Symbol-file)\n35,4 Zoom out\n60,4 Zoom in\n"
            "90,4 Organizer\n120,4 Help on Korvane user interface\n");
  EXPECT_EQ(g_ToolBarHeight, 22 + zDialogUnit(0, 5).height());
  for (const auto& [button, other, limit] :
       {std::tuple(buttons[1], buttons[2], 0), {buttons[2], buttons[1], TextPane::kMaxZoomLevel}}) {
    while (theTextPane->zoomLevel() != limit) {
      ASSERT_TRUE(button->isEnabled());
      ui::click(button->widget());
      EXPECT_TRUE(other->isEnabled());
    }
    EXPECT_FALSE(button->isEnabled());
    ui::click(button->widget());
    EXPECT_EQ(theTextPane->zoomLevel(), limit);
  }
}

}  // namespace
