#include "textarea/my_pane.h"

#include <algorithm>

#include "framework/controls/static_text.h"
#include "framework/draw/displays.h"
#include "framework/layout/grav_sizer.h"
#include "textarea/command_line_place.h"
#include "textarea/ret_edit_line.h"
#include "textarea/text_pane.h"

namespace {

// Without the tab stop no control inside could take the focus.
constexpr std::uint32_t kMyPaneStyle = kStyleChild | kStyleTabStop;
constexpr std::uint32_t kPanelStyle = kStyleChild | kStyleGroup | kStyleTabStop;
constexpr std::uint32_t kLabelStyle = kStyleControl;
constexpr int kEntryWidthAtFirst = 10;
constexpr int kPanelFont = 11;

int panelHeight() {
  ziInfoDisplay measuring;
  measuring.setFont(zRCFont(kPanelFont));
  zDimension letter;
  measuring.lock();
  measuring.textSize(letter, "D", 1);
  measuring.unlock();
  return 2 * letter.height;
}

}  // namespace

MyPane::MyPane(zWindow* parent, zSizer* sizer) : zPane(parent, sizer, kMyPaneStyle, -1) {
  setStyle(style() & ~kStyleColourFromParent);
  takeBackgroundOf(*parent);
  createCommandPanel();
  textPane =
      std::make_unique<TextPane>(this, new zGravSizer(kGravityCentre, zDimension{}, this->sizer()));
  theTextPane = textPane.get();
  show();
}

void MyPane::createCommandPanel() {
  commandPanel = std::make_unique<zPane>(
      this, new zGravSizer(kGravityBottom, panelHeight(), sizer()), kPanelStyle, -1);
  commandPanel->takeBackgroundOf(*this);
  zSizer* strip = commandPanel->sizer();
  auto* labelSizer = new zGravSizer(kGravityLeft, kCommandLineLeft, strip);
  label = std::make_unique<zStaticText>(commandPanel.get(), labelSizer, kLabelStyle, "Command:");
  const int left = std::max(kCommandLineLeft, label->textSize().width + 2 * kCommandLabelMargin);
  labelSizer->setExtent({left, 0});
  commandLine = std::make_unique<RetEditLine>(
      commandPanel.get(), new zSizer(left, 0, kEntryWidthAtFirst, kCommandLineHeight, strip), -1);
  commandLine->setFont(zRCFont(kPanelFont), 1);
  commandLine->show();
  commandPanel->show();
  theCommandLine = commandLine.get();
}

MyPane::~MyPane() {
  textPane.reset();
  commandLine.reset();
  label.reset();
  commandPanel.reset();
}
