#include "textarea/text_pane.h"

#include <algorithm>
#include <string>
#include <utility>

#include "framework/draw/displays.h"
#include "framework/draw/measure.h"
#include "framework/layout/sizer.h"
#include "resources/resource_ids.h"
#include "textarea/my_pane.h"

TextPane* theTextPane = nullptr;

namespace {

constexpr std::uint32_t kLogStyle = kStyleControlStop | kStyleBorder | kStyleBothScrolls |
                                    kEditMultiLine | kEditFollowsDown | kEditFollowsAcross |
                                    kEditReadOnly;
constexpr int kStartZoomLevel = 4;
constexpr unsigned long kLongestHoldMs = 20;
constexpr char kClearedText[] = "------------- Text Log Cleared --------------\r\n";

// Of the right mouse button, in the message numbering.
constexpr int kMsgRightButtonDown = 516;
constexpr int kMsgRightDoubleClick = 518;

constexpr int kFirstFunctionKeysym = 0xFF00;

// The character must not be lost, nor the focus stay in the log.
int typeIntoCommandLine(const zEvent& press) {
  if (theCommandLine == nullptr) {
    return 0;
  }
  theCommandLine->takeKeyPress(press);
  return 1;
}

zFontSpec logFont(int level) {
  constexpr int kWidthStep = 14;
  constexpr int kSmallestWidth = 34;
  constexpr int kHeightStep = 16;
  constexpr int kSmallestHeight = 38;
  const zPrPoint size(level * kWidthStep + kSmallestWidth, level * kHeightStep + kSmallestHeight);
  return {"courier new", size, kFontNormal, kPitchFixed};
}

}  // namespace

TextPane::TextPane(zWindow* parent, zSizer* sizer)
    : zEditBox(parent, sizer, kLogStyle, "", -1), zoom(kStartZoomLevel) {
  setText("");
  setMaxLength(0);
  applyZoom();
  addPlainHandler(this, toHandler(&TextPane::handle), kMsgKeyDown);
}

TextPane::~TextPane() {
  if (theTextPane == this) {
    theTextPane = nullptr;
  }
}

void TextPane::appendText(const char* newText) {
  expandToHeld(newText);
  putHeld();
}

void TextPane::expandToHeld(const char* newText) {
  heldText += expandForLog(newText == nullptr ? "" : newText, counters);
}

void TextPane::holdText(const char* newText) {
  expandToHeld(newText);
  if (holdTimer == nullptr) {
    holdTimer =
        std::make_unique<zTimer>(this, &TextPane::heldLongEnough, kLongestHoldMs, zTimer::kOnce);
  }
}

int TextPane::heldLongEnough(zEvH* pane) {
  static_cast<TextPane*>(pane)->showHeld();
  return 0;
}

void TextPane::showHeld() {
  if (holdTimer != nullptr) {
    putHeld();
  }
}

void TextPane::putHeld() {
  holdTimer.reset();
  insertAtEnd(std::exchange(heldText, {}));
  update();
}

// What the widget has is a matter of speed; what the log has is the same.
void TextPane::settle() const {
  const_cast<TextPane*>(this)->showHeld();
}

void TextPane::insertAtEnd(const std::string& piece) {
  // An empty selection, too, takes the X selection from whoever has it, and waits for the server.
  if (selectionRange()) {
    setSelection(counters.textEnd + 1, counters.textEnd + 1);
  }
  insertAt(textLength(), piece.c_str());
}

void TextPane::clear() {
  setText(kClearedText);
  resetCounters();
}

void TextPane::resetCounters() {
  counters.lineCount = 1;
  counters.firstLineNumber = 1;
  counters.textEnd = textLength();
}

void TextPane::numberLines() {
  setText(addLineNumbers(text().view(), counters).c_str());
}

void TextPane::unnumberLines() {
  setText(removeLineNumbers(text().view(), counters).c_str());
}

void TextPane::zoomIn() {
  if (zoom < kMaxZoomLevel) {
    ++zoom;
    applyZoom();
  }
  if (zoomListener) {
    zoomListener(kCommandZoomIn, zoom < kMaxZoomLevel);
    zoomListener(kCommandZoomOut, true);
  }
  sizer()->parent()->update(nullptr);
}

void TextPane::zoomOut() {
  if (zoom > 0) {
    --zoom;
    applyZoom();
  }
  if (zoomListener) {
    zoomListener(kCommandZoomOut, zoom > 0);
    zoomListener(kCommandZoomIn, true);
  }
  sizer()->parent()->update(nullptr);
}

void TextPane::applyZoom() {
  changeView([this] { setFont(zRCFont(logFont(zoom)), 1); });
}

// Who sees the end of the log goes on seeing it.
template <class Change>
void TextPane::changeView(Change change) {
  const bool sawEnd = isInView(textLength());
  change();
  if (sawEnd) {
    bringIntoView(textLength());
  }
}

void TextPane::moveResize(int x, int y, int width, int height) {
  changeView([&] { zEditBox::moveResize(x, y, width, height); });
}

void TextPane::pageUp() {
  scroll(-pageLines);
}
void TextPane::pageDown() {
  scroll(pageLines);
}
void TextPane::scrollToTop() {
  scroll(-counters.lineCount);
}
void TextPane::scrollToEnd() {
  scroll(counters.lineCount);
}
void TextPane::selectAll() {
  setSelection(0, textLength());
}

int TextPane::size(zEvent* event) {
  zEditBox::size(event);
  // By the stock font and not by the zoomed one: a page does not follow the zoom. Intended.
  ziInfoDisplay measuring;
  measuring.setFont(zRCFont(11));
  zDimension letter;
  measuring.lock();
  measuring.textSize(letter, "X", 1);
  measuring.unlock();
  charHeight = std::max(letter.height, 1);
  charWidth = letter.width;
  pageLines = linesHeight() / charHeight;
  if (theCommandLine != nullptr) {
    theCommandLine->followWidth();
    // The toolkit takes the focus off an entry that a shrinking window hides until it is laid out.
    theCommandLine->startFocusTimer();
  }
  return 0;
}

int TextPane::handle(zEvent* event) {
  if (event->message == kMsgKeyDown) {
    showHeld();
    return handleKey(*event);
  }
  if (event->message < kMsgRightButtonDown || event->message > kMsgRightDoubleClick) {
    controlLatch = false;
  }
  return 1;
}

bool TextPane::takePagingKey(std::intptr_t code) {
  switch (code) {
    case kKeyPageUp:
      controlLatch ? scrollToTop() : pageUp();
      return true;
    case kKeyPageDown:
      controlLatch ? scrollToEnd() : pageDown();
      return true;
    case kKeyLeftControl:
      controlLatch = true;
      return true;
    default:
      return false;
  }
}

int TextPane::handleKey(const zEvent& event) {
  switch (event.wparam) {
    case 'A':
      // Reached only by a capital A with Alt; Control with a letter arrives as a control character.
      if (controlLatch) {
        selectAll();
      }
      return controlLatch ? 1 : 0;
    case kKeyReturn:
    case kKeyBackspace:
      // The keys of these names, not Control with the letter that gives the same character.
      return event.lparam >= kFirstFunctionKeysym ? typeIntoCommandLine(event) : 0;
    default:
      return takePagingKey(event.wparam) ? 1 : 0;
  }
}

int TextPane::typingArrived(zEvent& event) {
  return typeIntoCommandLine(event);
}
