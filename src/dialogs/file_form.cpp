// The file forms on Motif's file selection dialog. While a form waits everything may happen: other
// dialogs, the end of the application, the end of the parent and with it of the dialog. Nothing
// refers to the form's object once its constructor returns, although Motif may destroy the widgets
// later.

#include "dialogs/file_form.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include <sys/stat.h>

#include "dialogs/directory_tree.h"
#include "framework/core/application.h"
#include "framework/core/frame.h"
#include "framework/core/modal_shell.h"

#include "framework/core/connect_xm.h"
#include "framework/core/xm_handles_xm.h"

namespace {

constexpr short kTextColumns = 50;
constexpr int kVisibleFiles = 12;
// What the window manager's decoration may need.
constexpr int kScreenMargin = 40;

// Keys of the selection field that act on the list of files. Home and End are not among them: they
// would replace the name that the user has typed.
XtAccelerators listKeys() {
  static XtAccelerators const table = XtParseAcceleratorTable(
      "#override\n"
      "<Key>osfUp: SelectionBoxUpOrDown(0)\n"
      "<Key>osfDown: SelectionBoxUpOrDown(1)\n"
      "<Key>osfRestore: SelectionBoxRestore()");
  return table;
}

bool isDirectory(const std::string& path) {
  struct stat about = {};
  return stat(path.c_str(), &about) == 0 && S_ISDIR(about.st_mode);
}

Widget createBox(Widget shell, const ziFilePreset& preset) {
  const zXmString pattern(preset.pattern.c_str());
  const std::string start =
      preset.directory.empty() ? workingDirectory().value_or("") : preset.directory;
  const zXmString directory(start.c_str());
  Arg arguments[] = {
      {const_cast<char*>(XmNdeleteResponse), XmDO_NOTHING},
      {const_cast<char*>(XmNdialogStyle), XmDIALOG_FULL_APPLICATION_MODAL},
      {const_cast<char*>(XmNautoUnmanage), False},
      {const_cast<char*>(XmNtextColumns), kTextColumns},
      {const_cast<char*>(XmNlistVisibleItemCount), kVisibleFiles},
      {const_cast<char*>(XmNtextAccelerators), reinterpret_cast<XtArgVal>(listKeys())},
      {const_cast<char*>(XmNpattern), reinterpret_cast<XtArgVal>(pattern.get())},
      {const_cast<char*>(XmNdirectory), reinterpret_cast<XtArgVal>(directory.get())},
  };
  const Cardinal count = XtNumber(arguments) - (start.empty() ? 1 : 0);
  return XmCreateFileSelectionDialog(shell, const_cast<char*>("FileSelectionBox"), arguments,
                                     count);
}

}  // namespace

ziFilePreset makeFilePreset(std::string_view preset, const char* const* filter) {
  ziFilePreset result{{}, {}, "*"};
  const bool hasFilter = filter != nullptr && filter[0] != nullptr && filter[1] != nullptr;
  if (hasFilter) {
    result.pattern = filter[1];
  }
  const std::size_t slash = preset.rfind('/');
  if (slash != std::string_view::npos) {
    result.directory = slash == 0 ? "/" : preset.substr(0, slash);
    preset.remove_prefix(slash + 1);
  }
  const bool isWild = preset.find_first_of("*?") != std::string_view::npos;
  if (!isWild) {
    result.name = preset;
  } else if (filter == nullptr) {
    result.pattern = preset;
  }
  return result;
}

/// The dialog of one form.
class ziFileSelection final : public ziModalBox {
 public:
  ziFileSelection(zFileForm::Target wanted, Widget shell, const char* title,
                  const ziFilePreset& preset);

  std::optional<std::string> chosen;
  bool isFinished = false;

 private:
  void addName(const std::string& name);
  void onOk() override;
  void goTo(const std::string& directory);
  void onCancel() override { isFinished = true; }
  void onGone() override { isFinished = true; }
  Widget selectionField() const { return XmFileSelectionBoxGetChild(box, XmDIALOG_TEXT); }

  zFileForm::Target target;
};

ziFileSelection::ziFileSelection(zFileForm::Target wanted, Widget shell, const char* title,
                                 const ziFilePreset& preset)
    : target(wanted) {
  take(createBox(shell, preset), title == nullptr ? "" : title);
  // A long name in a list makes the whole dialog wide.
  Screen* screen = XtScreen(shell);
  XtVaSetValues(XtParent(box), XmNtitle, title == nullptr ? "" : title, XmNmaxWidth,
                WidthOfScreen(screen) - kScreenMargin, XmNmaxHeight,
                HeightOfScreen(screen) - kScreenMargin, nullptr);
  XtUnmanageChild(XmFileSelectionBoxGetChild(box, XmDIALOG_HELP_BUTTON));
  addName(preset.name);
}

void ziFileSelection::addName(const std::string& name) {
  Widget field = selectionField();
  XmTextFieldInsert(field, XmTextFieldGetLastPosition(field), const_cast<char*>(name.c_str()));
  XmTextFieldSetInsertionPosition(field, XmTextFieldGetLastPosition(field));
}

void ziFileSelection::onOk() {
  const std::string name = takeXtText(XmTextFieldGetString(selectionField()));
  if (name.empty()) {
    return;
  }
  if (target == zFileForm::Target::anythingButDirectory && isDirectory(name)) {
    goTo(name);
    return;
  }
  chosen = name;
  isFinished = true;
}

void ziFileSelection::goTo(const std::string& directory) {
  std::error_code error;
  const zXmString place(std::filesystem::absolute(directory, error).c_str());
  XtVaSetValues(box, XmNdirectory, place.get(), nullptr);
  Widget field = selectionField();
  XmTextFieldSetInsertionPosition(field, XmTextFieldGetLastPosition(field));
}

zFileForm::zFileForm(zWindow* parent, const char* title, const char* preset,
                     const char* const* filter, Target target) {
  Widget shell = shellAbove(parent);
  if (shell == nullptr) {
    return;
  }
  zApp* app = zApp::instance();
  {
    const zApp::ModalScope scope;
    ziFileSelection selection(target, shell, title,
                              makeFilePreset(preset == nullptr ? "" : preset, filter));
    selection.show();
    app->pumpWhile([&] { return !selection.isFinished; });
    isAccepted = selection.chosen.has_value();
    chosenPath = selection.chosen.value_or("");
  }
  // An outer loop may stand in an idle pass, which hides the end of this form from it.
  app->wake();
}
