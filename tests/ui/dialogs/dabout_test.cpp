#include "dialogs/dabout.h"

#include <gmock/gmock.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "framework/controls/button.h"
#include "resources/dialogs.h"
#include "support/version.h"
#include "tests/support/basics.h"
#include "tests/ui/support/ui_test.h"

#include <X11/keysym.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class AboutBox : public testing::Test {
 protected:
  AboutBox() {
    frame.show();
    ui::waitForDialog("Parent");
  }

  template <class End>
  void run(const End& end) {
    DAbout box(&frame);
    ui::ModalScript script;
    script.onDialog(DAbout::kTitle, [&] { end(box); });
    EXPECT_EQ(script.run([&] { return box.run(0); }), 0);
    ui::waitForNoDialog(DAbout::kTitle);
  }

  zAppFrame frame{nullptr, new zSizer(200, 150, 400, 300), 0xCF0000, "Parent"};
};

// The texts of a box, each of which has the room that it needs.
std::vector<std::string> textsOf(zWindow& box) {
  std::vector<std::string> texts;
  zWindowDlist::Iter walk(box.children());
  while (zWindow* child = walk.next()) {
    auto* label = windowCast<zStaticText>(child);
    if (label == nullptr) {
      continue;
    }
    texts.push_back(label->text().str());
    int height = 0;
    std::istringstream lines(texts.back());
    for (std::string line; std::getline(lines, line);) {
      const zDimension needed =
          label->fontObject()->measure(line.c_str(), static_cast<int>(line.size()));
      EXPECT_LT(needed.width, label->sizer()->size().width) << line;
      height += needed.height;
    }
    EXPECT_LE(height, label->sizer()->size().height) << texts.back();
  }
  return texts;
}

TEST_F(AboutBox, ClosesByEachOfTheFourRoads) {
  run([](DAbout& box) { ui::click(box.childById(kDialogOk)->widget()); });
  run([](DAbout&) { ui::pressKey(XK_Return); });
  run([](DAbout&) { ui::pressKey(XK_Escape); });
  run([](DAbout& box) { ui::closeByWindowManager(ui::windowOf(box.shell())); });
}

TEST_F(AboutBox, ShowsItsTextsInFull) {
  const TemporaryFolder folder;
  setenv("neldir", (folder / "nel").c_str(), 1);
  const auto patchLevel = folder.write("nel\\patchlevel.txt", "17");
  run([&patchLevel](DAbout& box) {
    EXPECT_THAT(textsOf(box), ElementsAre("Korvane", std::string(kProductVersion) + "  ",
                                          HasSubstr("Korvane UI")));
    EXPECT_EQ(readFile(patchLevel), "") << "asking for the version empties the file";
    ui::pressKey(XK_Return);
  });
}

TEST_F(AboutBox, LeavesNothingBehindInTheServer) {
  const auto openAndClose = [&](int times) {
    for (int i = 0; i < times; ++i) {
      DAbout box(&frame);
      ui::ModalScript script;
      script.when([&] { return ui::isViewable(box.shell()); }, "the box", [&] { box.endDialog(); });
      script.run([&] { return box.run(0); });
    }
    return ui::serverResources();
  };
  constexpr int kWarmUp = 3;  // fonts and the like stay
  constexpr int kManyTimes = 200;
  const auto before = openAndClose(kWarmUp);
  EXPECT_GT(before.at("PIXMAP"), 0U);
  EXPECT_EQ(openAndClose(kManyTimes), before);
}

}  // namespace
