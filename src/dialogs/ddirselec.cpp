// The directory selection on the screen. A row of the list stands for the record of the same
// number, so that no name is read back from a text that has marks of its own.

#include "dialogs/ddirselec.h"

#include <utility>

#include "framework/controls/button.h"
#include "framework/controls/edit.h"
#include "framework/controls/list_box.h"
#include "framework/core/application.h"
#include "framework/core/event.h"
#include "framework/draw/measure.h"
#include "framework/layout/sizers.h"

namespace {

constexpr std::uint32_t kDialogStyle = kStyleDialog;
constexpr std::uint32_t kTextStyle = kStyleChild | kStyleVisible;
constexpr std::uint32_t kButtonStyle = kTextStyle | kStyleTabStop;
constexpr std::uint32_t kEditStyle = kStyleControlStop;
constexpr std::uint32_t kListStyle = kStyleControlStop | kStyleBothScrolls;

constexpr const char* kFace = "helv";
constexpr zPoint kFontTenths = {50, 100};

constexpr zDialogPlace kWhole = {0, 0, 200, 150};
constexpr zDialogPlace kLabelPlace = {15, 4, 170, 10};
constexpr zDialogPlace kListPlace = {15, 16, 170, 70};
constexpr zDialogPlace kPathPlace = {15, 95, 170, 11};
constexpr zDialogPlace kSeparatorPlace = {8, 115, 184, 1};
constexpr zDialogPlace kOkPlace = {15, 125, 50, 15};
constexpr zDialogPlace kCurrentPlace = {75, 125, 50, 15};
constexpr zDialogPlace kCancelPlace = {135, 125, 50, 15};

const char* errorText(ziDirectoryTree::Result result) {
  return result == ziDirectoryTree::Result::cannotOpen ? "Error: Cannot open directory!"
                                                       : "Error: Cannot close directory!";
}

}  // namespace

Ddirselec::Ddirselec(zWindow* parent, const std::string& startDirectory)
    : zFormDialog(parent, new zSizer(0, 0, 1, 1), kDialogStyle), startDir(startDirectory) {
  setCaption(kTitle);
  const zPrPoint size(kFontTenths.x, kFontTenths.y);
  setFont(zRCFont(zFontSpec(kFace, size, kFontBold, kPitchVariable)), 0);
  const zRect whole = inPixels(kWhole);
  moveResize(0, 0, whole.width(), whole.height());
  makeControls();
  load(startDir.empty() ? "/" : startDir);
  centre(true);
}

void Ddirselec::makeControls() {
  new zStaticText(this, sizerAt(kLabelPlace), kTextStyle, "Directories:");
  dirList = new zListBox(this, sizerAt(kListPlace), kListStyle, kDirList);
  pathEdit = new zEditLine(this, sizerAt(kPathPlace), kEditStyle, "", kPathEdit);
  new zGroupBox(this, sizerAt(kSeparatorPlace), kTextStyle | kButtonGroup, "", -1);
  auto* ok = new zDefPushButton(this, sizerAt(kOkPlace), kButtonStyle | kButtonDefault, "OK", kOk);
  auto* startAgain = new zPushButton(this, sizerAt(kCurrentPlace), kButtonStyle | kButtonPush,
                                     "Current", kCurrent);
  auto* cancel =
      new zPushButton(this, sizerAt(kCancelPlace), kButtonStyle | kButtonPush, "Cancel", kCancel);
  ok->setNotify(this, toHandler(&Ddirselec::onOk), kNotifyClicked);
  startAgain->setNotify(this, toHandler(&Ddirselec::onCurrent), kNotifyClicked);
  cancel->setNotify(this, toHandler(&Ddirselec::onCancel), kNotifyClicked);
  dirList->setNotify(this, toHandler(&Ddirselec::onDoubleClick), kListDoubleClick);
  dirList->addHandler(this, toHandler(&Ddirselec::onListKey), kMsgKeyDown);
  setFirstFocus(*pathEdit);
}

void Ddirselec::load(const std::string& name) {
  const ziDirectoryTree::Result result = tree.loadDirectory(name);
  showPath(result == ziDirectoryTree::Result::ok ? tree.current() : errorText(result));
  fillList();
}

void Ddirselec::fillList() {
  dirList->clear();
  const std::vector<std::string> lines = tree.lines();
  dirList->addAll({lines.begin(), lines.end()});
  selectCurrent();
}

void Ddirselec::selectCurrent() {
  // With the way to it above, as far as there is room.
  dirList->setCurSel(0);
  dirList->setCurSel(tree.componentCount() - 1);
}

int Ddirselec::activate(zEvent* event) {
  // Before it came up the list did not know how many rows it has room for.
  if (!std::exchange(hasBeenActive, true)) {
    selectCurrent();
  }
  return zFormDialog::activate(event);
}

void Ddirselec::showPath(const std::string& path) {
  pathEdit->setText(path.c_str());
  const int end = pathEdit->textLength();
  pathEdit->setSelection(end, end);
}

int Ddirselec::openChosenRow() {
  const auto row = static_cast<std::size_t>(dirList->selection());
  if (row < tree.records().size()) {
    load(std::string(tree.records()[row].name));
  }
  return 1;
}

int Ddirselec::onDoubleClick(zEvent* /*event*/) {
  return openChosenRow();
}

int Ddirselec::onListKey(zEvent* event) {
  return event->wparam == kKeyReturn ? openChosenRow() : 0;
}

int Ddirselec::onOk(zEvent* /*event*/) {
  const std::string typed = pathEdit->text().c_str();
  if (typed == tree.current() && tree.isLoaded()) {
    status = 1;
    endDialog();
  } else if (const std::optional<std::string> directory = tree.resolve(typed)) {
    load(*directory);
  } else {
    showPath("-- Invalid path --");
    zApp::instance()->beep();
  }
  return 1;
}

int Ddirselec::onCurrent(zEvent* /*event*/) {
  load(startDir.empty() ? "/" : startDir);
  return 1;
}

int Ddirselec::onCancel(zEvent* event) {
  return onCancelClicked(event);
}

std::optional<std::string> Ddirselec::chosen() const {
  if (status == 0 || isSameDirectory(tree.current(), startDir)) {
    return std::nullopt;
  }
  return tree.current();
}
