// The box that tells about the program, its icon and its version.

#include "dialogs/dabout.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

#include "framework/controls/button.h"
#include "framework/draw/measure.h"
#include "framework/draw/res_id.h"
#include "framework/layout/sizers.h"
#include "resources/dialogs.h"
#include "resources/resource_ids.h"
#include "support/version.h"

namespace {

constexpr std::uint32_t kAboutStyle = kStyleDialog;
constexpr std::uint32_t kCentredText = kStyleChild | kStyleVisible | kStaticCentred;
constexpr std::uint32_t kRuleStyle = kStyleVisible;
constexpr std::uint32_t kOkStyle = kStyleChild | kStyleVisible | kStyleTabStop | kButtonDefault;

constexpr const char* kAboutFace = "helv";
constexpr int kTextTenths = 100;
constexpr int kNameTenths = 140;
constexpr int kNameWeight = 900;

constexpr int kNoId = -1;
constexpr int kOkWidth = 37;
constexpr int kOkHeight = 12;
// The two lines of the etching, pixels.
constexpr int kRuleHeight = 2;

constexpr const char* kName = "Korvane";
constexpr const char* kLegalNotice =
    "Korvane UI, the front end of the tester.\n"
    "MIT licence, the Korvane UI authors.\n"
    "Comes as it is, without warranty of any kind.";

zRCFont fontOf(int tenthsOfPoint, int weight) {
  return zRCFont(zFontSpec(kAboutFace, zPrPoint(0, tenthsOfPoint), weight));
}

constexpr mode_t kNewFileMode = 0666;

// Makes or empties the file as mode "w+" does, but waits for nobody at a pipe or a device. What is
// then to be read is always empty, and so is not read.
void emptyPatchLevel() {
  const char* directory = std::getenv("neldir");
  const std::string path = std::string(directory == nullptr ? "" : directory) + "\\patchlevel.txt";
  const int file = open(
      path.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, kNewFileMode);
  if (file >= 0) {
    close(file);
  }
}

}  // namespace

const char* VersionText() {
  // The version, an empty patch level and an empty third part.
  static const std::string text = std::string(kProductVersion) + "  ";
  emptyPatchLevel();
  return text.c_str();
}

void PrintVersion() {
  std::printf("nelkvui: Korvane : %s\n", VersionText());
}

void IconPane::setIcon(std::unique_ptr<zIcon> newIcon) {
  icon = std::move(newIcon);
  invalidate(nullptr, 1);
}

int IconPane::draw(zEvent* /*event*/) {
  display()->lock();
  if (icon != nullptr) {
    display()->copyIcon(icon->pixmap(), icon->mask(), icon->size(), {0, 0});
  }
  display()->unlock();
  return 1;
}

ziTellingBox::ziTellingBox(zWindow* parent, const char* title, const zDialogPlace& size)
    : zFormDialog(parent, new zSizer(0, 0, 1, 1), kAboutStyle) {
  setCaption(title);
  setFont(fontOf(kTextTenths, kFontRegular), 0);
  const zRect whole = inPixels(size);
  moveResize(0, 0, whole.width(), whole.height());
}

void ziTellingBox::addText(const zDialogPlace& place, const char* shown, const zRCFont& face) {
  auto* label = new zStaticText(this, sizerAt(place), kCentredText, shown);
  label->setFont(face, 0);
}

void ziTellingBox::addOk(int ruleTop, int top) {
  zRect client;
  getInterior(client);
  const zRect ok = inPixels({0, top, kOkWidth, kOkHeight});
  auto* middle = new zLeafSizer((client.width() - ok.width()) / 2, ok.top, ok.width(), ok.height());
  auto* button = new zDefPushButton(this, middle, kOkStyle, "OK", kDialogOk);
  button->setNotify(this, toHandler(&ziTellingBox::onOk), kNotifyClicked);
  setFirstFocus(*button);
  const int ruleY = inPixels({0, ruleTop, 0, 0}).top;
  new zGroupBox(this, new zLeafSizer(0, ruleY, client.width(), kRuleHeight), kRuleStyle, "", kNoId);
  centre(true);
}

int ziTellingBox::onOk(zEvent* /*event*/) {
  endDialog();
  return 1;
}

DAbout::DAbout(zWindow* parent) : ziTellingBox(parent, kTitle, {0, 0, 247, 114}) {
  setIcon(zResId(kIconMain));
  constexpr zDialogPlace kIconPlace = {16, 16, 20, 20};
  constexpr zDialogPlace kNamePlace = {44, 10, 187, 20};
  constexpr zDialogPlace kVersionPlace = {44, 34, 187, 10};
  constexpr zDialogPlace kNoticePlace = {44, 52, 187, 24};
  constexpr int kRuleTop = 86;
  constexpr int kOkTop = 96;
  auto* iconPane = new IconPane(this, sizerAt(kIconPlace), kStyleChild | kStyleVisible, kNoId);
  iconPane->takeBackgroundOf(*this);
  iconPane->setIcon(std::make_unique<zIcon>(zResId(kIconMain)));
  iconPane->show();
  addText(kNamePlace, kName, fontOf(kNameTenths, kNameWeight));
  addText(kVersionPlace, VersionText());
  addText(kNoticePlace, kLegalNotice);
  addOk(kRuleTop, kOkTop);
}
