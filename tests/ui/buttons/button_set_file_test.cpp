#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

#include "link/message_codec.h"
#include "resources/resource_ids.h"
#include "tests/ui/buttons/panes_fixture.h"
#include "tests/ui/furniture/menu_view.h"

#include <X11/keysym.h>
#include <Xm/XmAll.h>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

class ButtonSetFile : public ButtonPanes {
 protected:
  ButtonSetFile() {
    std::filesystem::create_directories(directory / "bin");
    std::filesystem::current_path(directory);
  }
  ~ButtonSetFile() override {
    std::filesystem::current_path("/");
    std::filesystem::remove_all(directory);
  }

  static void write(const std::string& name, const std::string& text) {
    std::ofstream(name) << text;
  }
  static std::string read(const std::string& name) {
    std::ostringstream text;
    text << std::ifstream(name).rdbuf();
    return text.str();
  }
  /// Types a name into a file form, in place of what it shows.
  static ui::ModalScript& name(ui::ModalScript& script, const std::string& title,
                               const std::string& file) {
    return script.onDialog(title, [file] {
      ui::pressKey(XK_slash, ui::kControl);
      ui::typeText(file + "\n");
    });
  }
  bool isSaveEnabled() const { return frame->bar->isItemEnabled(kCommandSaveButtons) != 0; }
  std::vector<std::string> barLabels() const { return menuLabels(frame->bar->widget()); }

  const std::filesystem::path directory =
      std::filesystem::temp_directory_path() / ("nel_panes_" + std::to_string(getpid()));
  const std::string text =
      ":Run\nGo\ngo\n:COLLAPSED Trace\nOn\ntrace 1\n:MENU Extra\nFirst\nfirst; x\n"
      "separator\nseparator\n";
};

TEST_F(ButtonSetFile, IsLoadedAppendedAndSaved) {
  const std::string file = (directory / "a.btn").string();
  const std::string saved = (directory / "saved.btn").string();
  write(file, text);
  ui::ModalScript load;
  name(load, "App Load Buttons", (directory / "none.btn").string())
      .onDialog("App Error", XK_Return);
  name(load, "App Load Buttons", file);
  EXPECT_EQ(load.run([] { return set().loadButtons(0); }), 1);
  EXPECT_FALSE(document().isModified());
  EXPECT_EQ(document().fileName(), "") << "a load leaves no name to save to: intended";
  EXPECT_THAT(barLabels(), ElementsAre("Menu", "Menu", "Menu", "Extra"));
  EXPECT_THAT(frame->help, ElementsAre("8001 Execute Command: first; x", "8002 "));
  ui::ModalScript append;
  name(append, "App Append Buttons", file);
  EXPECT_EQ(append.run([] { return set().loadButtons(1); }), 1);
  EXPECT_TRUE(document().isModified());
  EXPECT_EQ(set().groups().size(), 4);
  EXPECT_EQ(frame->help.back(), "8004 ");
  EXPECT_THAT(barLabels(), ElementsAre("Menu", "Menu", "Menu", "Extra", "Extra"));
  ui::ModalScript save;
  name(save, "App Save Buttons", (directory / "no/where.btn").string())
      .onDialog("App Error", XK_Return);
  name(save, "App Save Buttons", "saved.btn");
  EXPECT_EQ(save.run([] { return set().save(); }), 1);
  EXPECT_FALSE(document().isModified());
  EXPECT_EQ(read(saved).size(), 2 * text.size());
  // Cancel does not keep it from writing over a file: intended.
  write(saved, "");
  ui::ModalScript again;
  name(again, "App Save Buttons", "saved.btn").onDialog("App Error", XK_Escape);
  EXPECT_EQ(again.run([] { return set().saveButtonsAs(); }), 1);
  EXPECT_EQ(read(saved).size(), 2 * text.size());
  EXPECT_EQ(log(), "");
  write(file, "early\n" + text);
  ui::ModalScript reload;
  name(reload, "App Load Buttons", file);
  EXPECT_EQ(reload.run([] { return set().loadButtons(0); }), 1);
  EXPECT_EQ(log(), "a.btn: 1 remark: line 1: before the first header, so it is ignored\n");
  EXPECT_THAT(frame->help, ElementsAre("8001 Execute Command: first; x", "8002 "));
  EXPECT_THAT(barLabels(), ElementsAre("Menu", "Menu", "Menu", "Extra"));
  set().setModified();
  std::filesystem::remove(saved);
  std::filesystem::current_path(directory / "bin");
  EXPECT_EQ(set().save(), 1) << "the name of the last save is still there";
  EXPECT_EQ(read(saved), text);
  document().read(file, ButtonSetDocument::Reading::start);
  ui::ModalScript proposed;
  proposed.onDialog("App Save Buttons", XK_Return).onDialog("App Error", XK_Return);
  EXPECT_EQ(proposed.run([] { return set().saveButtonsAs(); }), 1);
  EXPECT_THAT(read(file), testing::StartsWith(text)) << "what was loaded last is proposed";
}

TEST_F(ButtonSetFile, IsFoundAtTheStart) {
  write("bin/nelkv.btn", ":Beside\n:MENU M\n");
  set().setModified();
  document().readDefault(directory.string(), "./bin/nelkvui");
  EXPECT_EQ(group(0).group().name, "Beside");
  write("nelkv.btn", text);
  loadDefaultButtons(directory.c_str());
  EXPECT_EQ(set().groups().size(), 2);
  EXPECT_EQ(group(0).group().name, "Run");
  EXPECT_TRUE(document().isModified());
  EXPECT_THAT(barLabels(), ElementsAre("Menu", "Menu", "Menu", "M", "Extra"))
      << "menus are not taken away: intended";
  ui::ModalScript script;
  script.onDialog("App Load Buttons", XK_Escape);
  script.run([] {
    loadDefaultButtons("/nowhere");
    return 0;
  });
  EXPECT_EQ(set().groups().size(), 2);
}

TEST_F(ButtonSetFile, SendsMenuEntriesUncut) {
  write("nelkv.btn", text);
  loadDefaultButtons(directory.c_str());
  zEvent chosen = zEvent::of(kMsgCommand, 8001);
  EXPECT_NE(frame->bar->dispatch(&chosen), 0);
  EXPECT_THAT(std::string(g_EncodeBuffer.begin(), g_EncodeBuffer.end()),
              testing::HasSubstr("first; x"));
}

TEST_F(ButtonSetFile, IsAskedForAtTheEnd) {
  EXPECT_EQ(set().queryExit(), 1);
  addGroup("Group", 1);
  set().setModified();
  EXPECT_TRUE(isSaveEnabled());
  const struct {
    const char* keys;
    const char* formKeys;
    int mayEnd;
  } rows[] = {{"\x1b", nullptr, 0}, {"\n", "\x1b", 0}, {"\t\n", nullptr, 1}, {"\n", "\n", 1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.keys);
    EXPECT_FALSE(std::filesystem::exists("nelkv.btn"));
    ui::ModalScript script;
    script.onDialog("App Exit", [&] {
      for (const char* key = row.keys; *key != 0; ++key) {
        ui::pressKey(*key == '\t' ? XK_Tab : *key == '\n' ? XK_Return : XK_Escape);
      }
    });
    if (row.formKeys != nullptr) {
      script.onDialog("App Save Buttons", *row.formKeys == '\n' ? XK_Return : XK_Escape);
    }
    EXPECT_EQ(script.run([] { return set().queryExit(); }), row.mayEnd);
  }
  EXPECT_EQ(read("nelkv.btn"), ":Group\nB1\nb1\n");
  EXPECT_FALSE(isSaveEnabled());
}

}  // namespace
