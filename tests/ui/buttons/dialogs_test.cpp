#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

#include "buttons/dialogs/button_dialogs.h"
#include "framework/controls/button.h"
#include "framework/controls/control.h"
#include "framework/controls/edit.h"
#include "resources/dialogs.h"
#include "tests/ui/buttons/panes_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kTitle = "Buttons";

zControl& control(zWindow& dialog, int id) {
  return *windowCast<zControl>(dialog.childById(id));
}

class ButtonDialogs : public testing::Test {
 protected:
  ButtonDialogs() {
    registerRecordControls();
    frame->show();
    ui::waitForDialog("Parent");
  }
  ~ButtonDialogs() override {
    frame.reset();
    ui::waitForNoDialog("Parent");
  }

  int run(zFormDialog& dialog, ui::ModalScript& script) {
    dialog.setCaption(kTitle);
    const int result = script.run([&] { return dialog.run(0); });
    ui::waitForNoDialog(kTitle);
    return result;
  }
  int run(zFormDialog& dialog, const std::string& keys) {
    ui::ModalScript script;
    script.onDialog(kTitle, [&] { typeKeys(keys); });
    return run(dialog, script);
  }
  // Each piece of keys is typed when the first edit line has the focus (again).
  int runByPieces(zFormDialog& dialog, const std::vector<std::string>& pieces) {
    ui::ModalScript script;
    for (const std::string& keys : pieces) {
      script.when([&] { return ui::focusIs(control(dialog, kDialogFirstEdit).widget()); },
                  "the focus in the first line", [keys] { typeKeys(keys); });
    }
    return run(dialog, script);
  }

  std::unique_ptr<zAppFrame> frame =
      std::make_unique<zAppFrame>(nullptr, new zSizer(200, 150, 400, 300), 0xCF0000, "Parent");
  zWindow* const parent = frame.get();
  const std::vector<std::string> labels = {"Go", "Step", "Go", "Stop"};
};

TEST_F(ButtonDialogs, TakeANameThatHasMoreThanBlanks) {
  const struct {
    const char* initial;
    const char* keys;
    int status;
    const char* name;
  } rows[] = {
      {"Old", "\n", 1, "Old"},    {"Old", "New one\n", 1, "New one"}, {"", "\n x\n", 1, " x"},
      {"   ", "\nx\n", 1, "x"},   {"Old", "  \ny\n", 1, "y"},         {"\t", "\n", 1, "\t"},
      {"Old", "z\x1b", 0, "Old"}, {"Old", "z\t\t\n", 0, "Old"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << '"' << row.initial << "\" \"" << row.keys << '"');
    RenameGroupDlg dialog(parent, row.initial);
    EXPECT_EQ(run(dialog, row.keys), row.status);
    EXPECT_EQ(dialog.name(), row.name);
  }
}

TEST_F(ButtonDialogs, GoBackToANameOfBlanksAndMakeOneLineOfPastedOnes) {
  EditButtonDlg dialog(parent, "Go", "");
  windowCast<zEditBase>(dialog.childById(kDialogSecondEdit))->insertAt(0, "next\r\n2");
  EXPECT_EQ(runByPieces(dialog, {"  \t\n", "Run\t\n"}), 1);
  EXPECT_EQ(dialog.label(), "Run");
  EXPECT_EQ(dialog.definition(), "next 2");
}

TEST_F(ButtonDialogs, LetNobodyTypeA256thCharacter) {
  const std::string almostFull(254, 'x');
  EditButtonDlg dialog(parent, almostFull, almostFull);
  ui::ModalScript script;
  script.onDialog(kTitle, [] {
    ui::pressKey(XK_End);
    typeKeys("ab\t");
    ui::pressKey(XK_End);
    typeKeys("cd\n");
  });
  EXPECT_EQ(run(dialog, script), 1);
  EXPECT_EQ(dialog.label(), almostFull + "a");
  EXPECT_EQ(dialog.definition(), almostFull + "c");
}

TEST_F(ButtonDialogs, AddButtonsByApplyThatCancelDoesNotTakeBack) {
  std::vector<std::string> added;
  AddButtonDlg dialog(parent, [&](const RWCString& label, const RWCString& definition) {
    added.push_back(label.str() + "=" + definition.str());
  });
  // Without a label the definition stays for the next time.
  EXPECT_EQ(runByPieces(dialog, {"A\ta 1\t\t ", "  \tb\t\t ", "B\t\t\t ", "C\t\t\t ", "\x1b"}), 0);
  EXPECT_THAT(added, ElementsAre("A=a 1", "B=b", "C="));
}

TEST_F(ButtonDialogs, AddGroupsByApplyAndTheLastByOk) {
  std::vector<RWCString> added;
  AddGroupDlg dialog(parent, [&](const RWCString& name) { added.push_back(name); });
  EXPECT_EQ(runByPieces(dialog, {"A\t\t ", "\t\t ", " \t\t ", "A\t\t ", "B\n"}), 1);
  EXPECT_THAT(added, ElementsAre("A", "A"));
  EXPECT_EQ(dialog.name(), "B");
}

TEST_F(ButtonDialogs, SelectARow) {
  const struct {
    std::vector<std::string> shown;
    const char* keys;
    int row;
  } rows[] = {{labels, "\n", 0}, {labels, "\v\v\n", 2}, {{}, "\n", -1}};
  for (const auto& row : rows) {
    SelectButtonDlg dialog(parent, row.shown);
    EXPECT_EQ(run(dialog, row.keys), 1);
    EXPECT_EQ(dialog.chosenRow(), row.row);
  }
}

TEST_F(ButtonDialogs, TakeADoubleClickOnARowForTheDefaultButton) {
  DeleteButtonDlg dialog(parent, std::vector<std::string>(40, "Same"));
  ui::ModalScript script;
  script.onDialog(kTitle, [&] { ui::doubleClick(control(dialog, kDialogList).innerWidget()); });
  EXPECT_EQ(run(dialog, script), 1);
  EXPECT_THAT(dialog.chosenLabels(), ElementsAre("Same"));
}

TEST_F(ButtonDialogs, DeleteNothingAsLongAsNothingIsSelected) {
  DeleteButtonDlg dialog(parent, labels);
  ui::ModalScript script;
  script.onDialog(kTitle, XK_Return).onDialog(kTitle, [] {
    ui::closeByWindowManager(ui::windowWithTitle(kTitle));
  });
  EXPECT_EQ(run(dialog, script), 0);
  EXPECT_THAT(dialog.chosenLabels(), IsEmpty());
}

TEST_F(ButtonDialogs, DeleteTheSelectedLabelsAlsoEqualOnes) {
  DeleteButtonDlg dialog(parent, labels);
  ui::ModalScript script;
  script.onDialog(kTitle, [] {
    typeKeys(" ");
    ui::pressKey(XK_Down, ui::kShift);
    ui::pressKey(XK_Down, ui::kShift);
    typeKeys("\n");
  });
  EXPECT_EQ(run(dialog, script), 1);
  EXPECT_THAT(dialog.chosenLabels(), ElementsAre("Go", "Step", "Go"));
}

TEST_F(ButtonDialogs, AskWhetherToSave) {
  const struct {
    const char* keys;
    int status;
    int save;
  } rows[] = {{"\n", 1, 1}, {"\t\n", 1, 0}, {"\t\t\n", 0, 0}, {"\x1b", 0, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.keys);
    SaveChangesDlg dialog(parent, "Save it?");
    EXPECT_EQ(control(dialog, kDialogText).text(), "Save it?");
    EXPECT_EQ(run(dialog, row.keys), row.status);
    EXPECT_EQ(dialog.saveRequested, row.save);
  }
}

TEST_F(ButtonDialogs, ShowTheirLabelsWholeAndARuleOverTheFullWidth) {
  EditButtonDlg dialog(parent, "Go", "go");
  zWindowDlist::Iter walk(dialog.children());
  while (zWindow* child = walk.next()) {
    const zRect place = child->sizer()->rect();
    if (auto* label = windowCast<zStaticText>(child)) {
      const std::string text = label->text().str();
      const int length = static_cast<int>(text.size());
      EXPECT_LT(dialog.fontObject()->measure(text.data(), length).width, place.width()) << text;
      EXPECT_LE(place.right, control(dialog, kDialogFirstEdit).sizer()->pos().x) << text;
    } else if (child->isA(kClassGroupBox)) {
      EXPECT_GT(place.right, dialog.sizer()->size().width)
          << "the rule is cut at the edge: intended";
      const int above = control(dialog, kDialogSecondEdit).sizer()->rect().bottom;
      const int middle = (above + control(dialog, kDialogOk).sizer()->pos().y) / 2;
      EXPECT_NEAR(place.top, middle, 3) << "half way, in whole dialog units";
    }
  }
}

}  // namespace
