// The main window's menus, accelerators, toolbar and status line.

#include <map>

#include "app/main_bars.h"
#include "buttons/button_pane.h"
#include "buttons/control_pane.h"
#include "buttons/dyn_button.h"
#include "framework/draw/measure.h"
#include "resources/resource_ids.h"
#include "tests/ui/app/main_window.h"

namespace {

TEST_F(MainWindow, HasItsPartsInTheirStripsWhichMakeRoomWhenTheyAreHidden) {
  zRect inner;
  window->getInterior(inner);
  const zDialogUnit margin(2, 2);
  const int line = inner.height() - part<zStatusLine>()->neededHeight();
  const int left = margin.width() + zDialogUnit(160, 0).width();
  EXPECT_EQ(part<ClMainToolBar>()->sizer()->rect(), zRect(0, 0, inner.width(), 30));
  EXPECT_EQ(part<zStatusLine>()->sizer()->rect(), zRect(0, line, inner.width(), inner.height()));
  EXPECT_EQ(part<ControlPane>()->sizer()->rect(),
            zRect(margin.width(), 30 + margin.height(), left, line - margin.height()));
  using Step = std::tuple<int, int, int>;
  for (const auto& [toggled, above, below] :
       {Step{kCommandToggleToolBar, 0, line}, Step{kCommandToggleStatusLine, 0, inner.height()},
        Step{kCommandToggleToolBar, 30, inner.height()},
        Step{kCommandToggleStatusLine, 30, line}}) {
    choose(toggled);
    EXPECT_EQ(part<MyPane>()->sizer()->rect(),
              zRect(left, above + margin.height(), inner.width() - margin.width(),
                    below - margin.height()));
  }
}

TEST_F(MainWindow, HasItsIconAndALeastSizeAndPastesIntoAHistoryThatHasSomethingOrGetsIt) {
  EXPECT_NE(ui::resource(window->shell(), "iconPixmap"), 0);
  EXPECT_EQ((zDimension{ui::resource(window->shell(), "minWidth"),
                        ui::resource(window->shell(), "minHeight")}),
            zDialogUnit(260, 90).size());
  std::string rows;
  for (const char* buffer : {"", "a", ""}) {
    theSession.copyBuffer = buffer;
    choose(kCommandPaste);
    rows += std::to_string(theCommandLine->count());
  }
  EXPECT_EQ(rows, "012");
}

constexpr const char* kLog = "word word word word\n";

/// With something in the log, a button and a history.
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

  /// Opens a pulldown, looks at it and closes it.
  static std::string pulldown(int position) {
    Widget bar = theGroupPane->mainWindow().mainMenu().widget();
    Widget cascade = ui::partsOf(bar).at(static_cast<std::size_t>(position));
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
  void prepare(zWindow& focused) {
    window->findFirst({"word", true, false});
    theTextPane->setSelection(5, 9);
    theSession.copyBuffer = "pasted";
    theCommandLine->setText("");
    theTextPane->takeFocus();
    theCommandLine->startFocusTimer();  // in place of one that an earlier command has left
    ui::waitForFocus(theCommandLine->widget());
    ui::focus(focused);
  }
  /// What differs from that, in lines.
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
  /// The same after `act`, or the title of the window that is expected to come up by it.
  std::string outcomeOf(const std::function<void()>& act, const std::string& expected = "\n") {
    const bool isTitle = !expected.ends_with('\n');
    ui::ModalScript script;
    if (isTitle) {
      script.onDialog(expected, XK_Escape);
    }
    script.run(act);
    ui::waitForDialog(g_AppTitle);
    return (isTitle ? expected : "") + outcome();
  }
};

TEST_F(Commands, AreExplainedInTheStatusLineAndGreyedInTheMenusWhereTheyAreImpossible) {
  const auto buttons = [](const std::string& save) {
    return "&Buttons:\n( ) &Load... focus\n( ) A&ppend...\n( ) &Save" + save +
           "\n( ) Save &As...\n---\n( ) &Expand Groups\n( ) &Collapse Groups\n---\n"
           "( ) Add &Group...\n";
  };
  const auto view = [](const std::string& findNext, const std::string& selection,
                       const std::string& numbering) {
    return "&View:\n( ) &Find ... focus\n( ) Find next\tF3" + findNext + "\n( ) Find &selection" +
           selection + "\n---\n( ) &Copy from text area\tCtrl+C" + selection +
           "\n( ) &Paste into command line\tCtrl+V\n---\n" + numbering +
           "&Line numbering\n---\n( ) Clear &text area\n";
  };
  EXPECT_EQ(pulldown(kFileMenu),
            "&File:\n( ) &Open...\tCtrl+O focus\n( ) Set &Directory\n---\n( ) E&xit\tCtrl+Q\n");
  EXPECT_EQ(pulldown(kHelpMenu),
            "&Help:\n( ) On T&essil focus\n( ) On &UI\tCtrl+H\n( ) On &Korvane\n"
            "( ) On Korvane &Commands\n---\n( ) &About UI...\n");
  EXPECT_EQ(pulldown(kButtonsMenu), buttons(" greyed"));
  theGroupPane->setModified();
  EXPECT_EQ(pulldown(kButtonsMenu), buttons(""));
  EXPECT_EQ(pulldown(kViewMenu), view(" greyed", " greyed", "( ) "));
  theTextPane->setSelection(5, 9);
  EXPECT_EQ(pulldown(kViewMenu), view(" greyed", "", "( ) "));
  window->findFirst({"word", true, false});
  for (const char* set : {"(x) ", "( ) "}) {
    choose(kCommandLineNumbering);
    EXPECT_EQ(pulldown(kViewMenu), view("", " greyed", set));
    EXPECT_EQ(ui::textOf(theTextPane->widget()),
              std::string(kLog) + (set[1] == 'x' ? "     1: " : ""));
  }
  zMenu& bar = theGroupPane->mainWindow().mainMenu();
  EXPECT_EQ(bar.isItemEnabled(kCommandCopy), 1) << "its key is judged when it is pressed";
  std::map<int, std::string> help;
  for (const zHelpText& row : mainCommandHelp()) {
    zEvent armed = zEvent::of(kMsgMenuSelect, row.id);
    bar.dispatch(&armed);
    EXPECT_TRUE(help.emplace(row.id, part<zStatusLine>()->textAt(0).str()).second);
  }
  EXPECT_EQ(help.size(), 31U);
  EXPECT_EQ(help[kCommandOpen] + help[kCommandPopupTitle] + help[kCommandDeleteGroup],
            "Open an SDL-System (Symbol File)Delete this button group");
}

TEST_F(Commands, WorkByTheirKeysWhereverTheFocusIsButInADialog) {
  const std::tuple<ui::KeySymbol, unsigned, const char*> keys[] = {
      {XK_o, ui::kControl, "Open Symbol File"},
      {XK_q, ui::kControl, "Korvane UI Exit"},
      {XK_h, ui::kControl, "10004 MSG_HELP_REQUEST \"tessil-testerui\"\n"},
      {XK_t, ui::kControl, "no toolbar\n"},
      {XK_f, ui::kControl, "no status line\n"},
      {XK_1, ui::kControl, "10007 MSG_SHOW_ORGANIZER\n"},
      {XK_c, ui::kControl, "copied word\n"},
      {XK_v, ui::kControl, "entry pasted\n"},
      {XK_F1, 0, "10004 MSG_HELP_REQUEST \"tessil-generator\"\n"},
      {XK_F3, 0, "found at 10\n"}};
  theGroupPane->setModified();
  zWindow* const button = theGroupPane->groups().at(0)->commands().at(0).window;
  for (const auto& [key, modifiers, expected] : keys) {
    const auto press = [key = key, modifiers = modifiers] { ui::pressKey(key, modifiers); };
    for (zWindow* focused :
         std::initializer_list<zWindow*>{theCommandLine, button, theTextPane, nullptr}) {
      prepare(focused == nullptr ? *theCommandLine : *focused);
      if (focused == nullptr) {
        theCommandLine->showDropDown();
      }
      EXPECT_EQ(outcomeOf(press, expected), expected) << (focused == nullptr ? -1 : focused->id());
      theCommandLine->hideDropDown();
      if (std::string_view(expected).starts_with("no ")) {
        EXPECT_EQ(outcomeOf(press), "") << "it comes back";
      }
    }
  }
  prepare(*theCommandLine);
  // Others are chosen from outside.
  for (const auto& [command, title] : {std::pair{kCommandAbout, "About Korvane"},
                                       {kCommandAppendButtons, "Korvane UI Append Buttons"},
                                       {kCommandSaveButtons, "Korvane UI Save Buttons"}}) {
    EXPECT_EQ(outcomeOf([command = command] { choose(command); }, title), title);
  }
  const auto pressAll = [&] {
    for (const auto& [key, modifiers, expected] : keys) {
      ui::pressKey(key, modifiers);
      EXPECT_EQ(outcome(), "") << expected;
    }
    ui::pressKey(XK_Escape);
  };
  ui::inDialog(kPrompt, pressAll, [] { receive(MSG_T_ASK_STRING, {"title", "Name?"}); });
  EXPECT_EQ(sent(), "1003 MSG_UI_CANCEL\n");
  // From the start, for what is selected now.
  theTextPane->setSelection(10, 14);
  choose(kCommandFindSelection);
  EXPECT_EQ(outcome(), "") << "the one that prepare() found";
  theTextPane->appendText("Find find\n");
  theTextPane->setSelection(25, 29);
  choose(kCommandFindSelection);
  EXPECT_EQ(outcome(), "found at 25\n");
  for (const int command : {kCommandCollapseGroups, kCommandExpandGroups}) {
    choose(command);
    EXPECT_EQ(theGroupPane->groups().at(0)->group().expanded, command == kCommandExpandGroups);
  }
}

TEST_F(Commands, OfTheToolBarHaveTipsAndTheZoomIsGreyedAtItsLimits) {
  zToolTipCtrl::setDelays({1, 5500});
  std::string row;
  std::vector<zWindow*> buttons;
  const auto tip = [&] {
    const auto* const helper = part<ziToolHelper>();
    return helper != nullptr && helper->isShown() ? helper->tipText().str() : "";
  };
  zWindowDlist::Iter walk(part<ClMainToolBar>()->children());
  while (zWindow* button = walk.next()) {
    buttons.push_back(button);
    ui::moveTo(button->widget(), 3, 3);
    ui::waitFor([&] { return !tip().empty() && !row.ends_with(tip() + "\n"); }, "the tip");
    const zRect place = button->sizer()->rect();
    row += std::to_string(place.left) + "," + std::to_string(place.top) + " " + tip() + "\n";
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
  }
}

}  // namespace
