// The dialogs of the button set on their own: what they take and what they make of it.

#include <functional>
#include <utility>

#include "buttons/dialogs/button_dialogs.h"
#include "framework/controls/edit.h"
#include "resources/dialogs.h"
#include "tests/ui/buttons/panes_fixture.h"

namespace {

constexpr const char* kTitle = "Buttons";
using Pieces = std::vector<std::string>;

class ButtonDialogs : public testing::Test {
 protected:
  ButtonDialogs() {
    registerRecordControls();
    frame.show();
    ui::waitForDialog("Parent");
  }

  /// Runs a dialog. Each piece of keys is typed when its first control has the focus (again).
  /// Gives `end`, with "refused" in front when the dialog was not confirmed.
  static std::string run(zFormDialog& dialog, int first, const Pieces& pieces,
                         const std::function<std::string()>& end) {
    ui::ModalScript script;
    for (const std::string& keys : pieces) {
      script.when(
          [&, first] {
            zWindow* line = windowCast<zEditBase>(dialog.childById(first));
            return ui::hasInputFocus(ui::windowWithTitle(kTitle)) &&
                   (line == nullptr || ui::focusIs(line->widget()));
          },
          "the focus in the first control", [keys] { typeKeys(keys); });
    }
    dialog.setCaption(kTitle);
    const int status = script.run([&] { return dialog.run(0); });
    ui::waitForNoDialog(kTitle);
    return (status == 0 ? "refused" : "") + end();
  }

  // What becomes of each dialog.
  std::string rename(const char* name, const Pieces& pieces) {
    RenameGroupDlg dialog(&frame, name);
    return run(dialog, kDialogFirstEdit, pieces, [&] { return dialog.name().str(); });
  }
  std::string edit(const std::string& label, const std::string& definition, const Pieces& pieces) {
    EditButtonDlg dialog(&frame, label, "");
    windowCast<zEditBase>(dialog.childById(kDialogSecondEdit))->insertAt(0, definition.c_str());
    return run(dialog, kDialogFirstEdit, pieces,
               [&] { return dialog.label().str() + "=" + dialog.definition().str(); });
  }
  std::string select(const Pieces& pieces) {
    SelectButtonDlg dialog(&frame, labels);
    return run(dialog, kDialogList, pieces, [&] { return std::to_string(dialog.chosenRow()); });
  }
  std::string remove(const Pieces& pieces) {
    DeleteButtonDlg dialog(&frame, labels);
    return run(dialog, kDialogList, pieces,
               [&] { return testing::PrintToString(dialog.chosenLabels()); });
  }
  std::string save(const char* keys) {
    SaveChangesDlg dialog(&frame, "Save it?");
    return run(dialog, kDialogSave, {keys}, [&] { return std::to_string(dialog.saveRequested); });
  }

  zAppFrame frame{nullptr, new zSizer(200, 150, 400, 300), 0xCF0000, "Parent"};
  const Pieces labels = {"Go", "Step", "Go", "Stop"};
};

TEST_F(ButtonDialogs, TakeANameThatHasMoreThanBlanks) {
  EXPECT_EQ(rename("Old", {"\n"}), "Old");
  EXPECT_EQ(rename("Old", {"New one\n"}), "New one");
  EXPECT_EQ(rename("", {"\n x\n"}), " x");
  EXPECT_EQ(rename("   ", {"\nx\n"}), "x");
  EXPECT_EQ(rename("Old", {"  \ny\n"}), "y");
  EXPECT_EQ(rename("\t", {"\n"}), "\t");
  EXPECT_EQ(rename("Old", {"z\x1b"}), "refusedOld");
  EXPECT_EQ(rename("Old", {"z\t\t\n"}), "refusedOld");
  EXPECT_EQ(edit("Go", "next\r\n2", {"  \t\n", "Run\t\n"}), "Run=next 2");
  const std::string full(254, 'x');
  EXPECT_EQ(edit(full, full,
                 {"\x05"
                  "ab\t\x05"
                  "cd\n"}),
            full + "a=" + full + "c");
}

TEST_F(ButtonDialogs, AddByApplyWhatCancelDoesNotTakeBack) {
  std::string applied;
  AddButtonDlg button(&frame, [&](const RWCString& label, const RWCString& definition) {
    applied += label.str() + "=" + definition.str() + ",";
  });
  AddGroupDlg group(&frame, [&](const RWCString& name) { applied += name.str() + ","; });
  // Without a label the definition stays for the next time.
  EXPECT_EQ(
      run(button, kDialogFirstEdit, {"A\ta 1\t\t ", "  \tb\t\t ", "B\t\t\t ", "C\t\t\t ", "\x1b"},
          [&] { return std::exchange(applied, ""); }),
      "refusedA=a 1,B=b,C=,");
  EXPECT_EQ(run(group, kDialogFirstEdit, {"A\t\t ", "\t\t ", " \t\t ", "A\t\t ", "B\n"},
                [&] { return applied + group.name().str(); }),
            "A,A,B");
}

TEST_F(ButtonDialogs, TakeRowsOfTheirList) {
  EXPECT_EQ(select({"\n"}), "0");
  EXPECT_EQ(select({"\v\v\n"}), "2");
  EXPECT_EQ(remove({" \a\a\n"}), R"({ "Go", "Step", "Go" })");
  EXPECT_EQ(remove({"\n", "\v \n"}), R"({ "Step" })")
      << "nothing is deleted as long as nothing is selected";
  DeleteButtonDlg dialog(&frame, labels);
  ui::ModalScript script;
  script.onDialog(kTitle, [&] {
    ui::doubleClickRow(windowCast<zControl>(dialog.childById(kDialogList))->innerWidget(), 1);
  });
  dialog.setCaption(kTitle);
  EXPECT_EQ(script.run([&] { return dialog.run(0); }), 1);
  EXPECT_EQ(dialog.chosenLabels(), Pieces{"Step"});
  ui::waitForNoDialog(kTitle);
}

TEST_F(ButtonDialogs, AskWhetherToSave) {
  EXPECT_EQ(save("\n"), "1");
  EXPECT_EQ(save("\t\n"), "0");
  EXPECT_EQ(save("\t\t\n"), "refused0");
  EXPECT_EQ(save("\x1b"), "refused0");
}

TEST_F(ButtonDialogs, ShowTheirLabelsWholeAndARuleOverTheFullWidth) {
  EditButtonDlg dialog(&frame, "Go", "go");
  zWindowDlist::Iter walk(dialog.children());
  while (zWindow* child = walk.next()) {
    const zRect place = child->sizer()->rect();
    if (auto* label = windowCast<zStaticText>(child)) {
      const std::string text = label->text().str();
      const int length = static_cast<int>(text.size());
      EXPECT_LT(dialog.fontObject()->measure(text.data(), length).width, place.width()) << text;
      EXPECT_LE(place.right, dialog.childById(kDialogFirstEdit)->sizer()->pos().x) << text;
    } else if (child->isA(kClassGroupBox)) {
      EXPECT_GT(place.right, dialog.sizer()->size().width)
          << "the rule is cut at the edge: intended";
      const int above = dialog.childById(kDialogSecondEdit)->sizer()->rect().bottom;
      const int middle = (above + dialog.childById(kDialogOk)->sizer()->pos().y) / 2;
      EXPECT_NEAR(place.top, middle, 3) << "half way, in whole dialog units";
    }
  }
  dialog.setCaption(kTitle);
  ui::ModalScript script;
  script.onDialog(kTitle, [] {
    EXPECT_EQ(ui::look(kTitle), "Label:\n<Go> focus\nDefinition:\n<go>\n[OK]\n[Cancel]\n");
    ui::pressKey(XK_Escape);
  });
  script.run([&] { return dialog.run(0); });
}

}  // namespace
