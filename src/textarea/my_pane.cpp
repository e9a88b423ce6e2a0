#include "textarea/my_pane.h"

#include <algorithm>

#include "framework/controls/button.h"
#include "framework/draw/displays.h"
#include "framework/layout/sizers.h"
#include "textarea/command_queue.h"
#include "textarea/text_pane.h"

RetEditLine* theCommandLine = nullptr;

namespace {

// Without the tab stop no control inside could take the focus.
constexpr std::uint32_t kMyPaneStyle = kStyleChild | kStyleTabStop;
constexpr std::uint32_t kPanelStyle = kStyleChild | kStyleGroup | kStyleTabStop;
constexpr std::uint32_t kLabelStyle = kStyleControl;
constexpr std::uint32_t kEntryStyle = kStyleChild | kStyleBorder | kStyleVertScroll |
                                      kStyleTabStop | kComboDropDown | kComboFollowsAcross;

// The place of the entry in its strip, pixels.
constexpr int kEntryLeft = 80;     // room for the label, unless it needs more
constexpr int kLabelMargin = 4;    // free beside the label's text, at least
constexpr int kEntryMargin = 2;    // free at the right
constexpr int kEntryHeight = 140;  // the entry and its open list
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
  auto* labelSizer = new zGravSizer(kGravityLeft, kEntryLeft, strip);
  label = std::make_unique<zStaticText>(commandPanel.get(), labelSizer, kLabelStyle, "Command:");
  const int left = std::max(kEntryLeft, label->textSize().width + 2 * kLabelMargin);
  labelSizer->setExtent({left, 0});
  commandLine = std::make_unique<RetEditLine>(
      commandPanel.get(), new zSizer(left, 0, kEntryWidthAtFirst, kEntryHeight, strip), -1);
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

RetEditLine::RetEditLine(zWindow* parent, zSizer* sizer, int id)
    : zComboBoxFull(parent, sizer, kEntryStyle, id) {
  addPlainHandler(this, toHandler(&RetEditLine::handle), kMsgKeyDown);
}

RetEditLine::~RetEditLine() {
  if (theCommandLine == this) {
    theCommandLine = nullptr;
  }
}

void RetEditLine::followWidth() {
  const int left = sizer()->pos().x;
  moveResize(left, 0, parent()->sizer()->size().width - left - kEntryMargin, kEntryHeight);
}

void RetEditLine::addToHistory(const RWCString& newest) {
  RWCString first;
  itemText(first, 0);
  if (first.view() == joinCommandLines(newest.view())) {
    return;
  }
  // What the user has begun to type stands in front of the confirmed command. Intended.
  insert(joinCommandLines((text() + newest).view()).c_str(), 0);
}

std::string RetEditLine::entryForm(std::string_view inserted, std::string_view before) const {
  return joinCommandLines(inserted, before);
}

int RetEditLine::handle(zEvent* event) {
  if (event->message == kMsgKeyDown) {
    return handleKey(event->wparam);
  }
  theTextPane->setControlHeld(false);
  return 0;
}

int RetEditLine::handleKey(std::intptr_t code) {
  if (code == kKeyReturn) {
    execute();
    return 1;
  }
  return theTextPane->takePagingKey(code) ? 1 : 0;
}

void RetEditLine::execute() {
  hideDropDown();
  const RWCString line = text();
  if (executeCommandLine(line.view())) {
    setCurSel(-1);
  }
}
