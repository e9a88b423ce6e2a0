#include "app/main_toolbar.h"

#include "framework/draw/bitmap.h"
#include "framework/draw/measure.h"
#include "framework/visuals/tool_button.h"
#include "resources/command_ids.h"
#include "resources/resource_ids.h"

int g_ToolBarHeight = 0;

namespace {

constexpr int kBarStyle = kToolbarEdgeByGravity | kToolbarLineTop | kToolbarLineBottom;
constexpr int kButtonTop = 4;  // pixels, as all of the places below
constexpr zDimension kButtonSize = {24, 22};
constexpr int kUnitsBelowButtons = 5;

struct ButtonRow {
  int left;
  std::uint32_t picture;
  int command;
};

constexpr ButtonRow kButtons[] = {
    {5, kBitmapOpen, kCommandOpen},      {35, kBitmapZoomOut, kCommandZoomOut},
    {60, kBitmapZoomIn, kCommandZoomIn}, {90, kBitmapOrganizer, kCommandOrganizer},
    {120, kBitmapHelp, kCommandHelpUi},
};

constexpr zToolTipText kTips[] = {
    {kCommandOpen, "Open an SDL-System (Symbol-file)"},
    {kCommandHelpUi, "Help on Korvane user interface"},
    {kCommandOrganizer, "Organizer"},
    {kCommandZoomIn, "Zoom in"},
    {kCommandZoomOut, "Zoom out"},
    {0, nullptr},
};

}  // namespace

ClMainToolBar::ClMainToolBar(zWindow* parent, zSizer* sizer, int barFlags)
    : zToolbar(parent, sizer, kBarStyle, nullptr),
      flags(barFlags),
      toolTips(std::make_unique<zToolTipCtrl>(parent)) {
  toolTips->setTable(kTips);
  for (const ButtonRow& row : kButtons) {
    auto* place = new zSizer({row.left, kButtonTop}, kButtonSize, this->sizer());
    auto* button = new zToolButton(this, place, 0, row.command, new zBitmap(zResId(row.picture)));
    button->show();
    toolTips->add(button);
    buttons.push_back(button);
  }
  g_ToolBarHeight = kButtonSize.height + zDialogUnit(0, kUnitsBelowButtons).height();
}

void ClMainToolBar::setPossible(int command, bool possible) {
  for (zToolButton* button : buttons) {
    if (button->id() == command && button->isEnabled() != possible) {
      possible ? button->enable() : button->disable();
    }
  }
}
