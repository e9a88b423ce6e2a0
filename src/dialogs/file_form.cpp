// The file forms on Motif's file selection dialog. While a form waits everything may happen: other
// dialogs, the end of the application, the end of the parent and with it of the dialog. Nothing
// refers to the form's object once its constructor returns, although Motif may destroy the widgets
// later.

#include "dialogs/file_form.h"

#include <filesystem>
#include <system_error>

#include <sys/stat.h>

#include "dialogs/directory_tree.h"
#include "framework/core/application.h"
#include "framework/core/desktop_properties.h"
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

/// The dialog of one form, from its creation to its end.
class ziFileSelection {
 public:
  ziFileSelection(zFileForm& form, zFileForm::Target target, Widget shell, const char* title,
                  const ziFilePreset& preset);
  ziFileSelection(const ziFileSelection&) = delete;
  ziFileSelection& operator=(const ziFileSelection&) = delete;
  ~ziFileSelection();

  void show();
  bool isFinished() const { return form.isFinished; }

 private:
  void create(Widget shell, const ziFilePreset& preset);
  void addName(const std::string& name);
  void onOk();
  void goTo(const std::string& directory);
  void onCancel() { form.isFinished = true; }
  void onDestroy();
  Widget selectionField() const { return XmFileSelectionBoxGetChild(box, XmDIALOG_TEXT); }

  zFileForm& form;
  zFileForm::Target target;
  Widget box = nullptr;  ///< null once Motif has destroyed it
  ziModalShell modalShell;
};

ziFileSelection::ziFileSelection(zFileForm& owner, zFileForm::Target wanted, Widget shell,
                                 const char* title, const ziFilePreset& preset)
    : form(owner), target(wanted) {
  create(shell, preset);
  // A long name in a list makes the whole dialog wide.
  Screen* screen = XtScreen(shell);
  XtVaSetValues(XtParent(box), XmNtitle, title == nullptr ? "" : title, XmNmaxWidth,
                WidthOfScreen(screen) - kScreenMargin, XmNmaxHeight,
                HeightOfScreen(screen) - kScreenMargin, nullptr);
  announceWindow(XtParent(box), ziWindowType::dialog, title == nullptr ? "" : title);
  XtUnmanageChild(XmFileSelectionBoxGetChild(box, XmDIALOG_HELP_BUTTON));
  addName(preset.name);
  connect<&ziFileSelection::onOk>(box, callback::ok, this);
  connect<&ziFileSelection::onCancel>(box, callback::cancel, this);
  connect<&ziFileSelection::onDestroy>(box, callback::destroy, this);
  connect<&ziFileSelection::onCancel>(XtParent(box), kCloseRequest, this);
}

void ziFileSelection::create(Widget shell, const ziFilePreset& preset) {
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
  box = XmCreateFileSelectionDialog(shell, const_cast<char*>("FileSelectionBox"), arguments, count);
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
  form.chosenPath = name;
  form.isAccepted = true;
  form.isFinished = true;
}

void ziFileSelection::goTo(const std::string& directory) {
  std::error_code error;
  const zXmString place(std::filesystem::absolute(directory, error).c_str());
  XtVaSetValues(box, XmNdirectory, place.get(), nullptr);
  Widget field = selectionField();
  XmTextFieldSetInsertionPosition(field, XmTextFieldGetLastPosition(field));
}

void ziFileSelection::onDestroy() {
  box = nullptr;
  form.isFinished = true;
}

void ziFileSelection::show() {
  modalShell.up(XtParent(box));
  XtManageChild(box);
  XtPopup(XtParent(box), XtGrabNone);
}

ziFileSelection::~ziFileSelection() {
  if (box == nullptr) {
    return;
  }
  // Inside a callback the widgets are only marked and live on, with late events under way to them.
  disconnect<&ziFileSelection::onCancel>(XtParent(box), kCloseRequest, this);
  disconnect<&ziFileSelection::onOk>(box, callback::ok, this);
  disconnect<&ziFileSelection::onCancel>(box, callback::cancel, this);
  disconnect<&ziFileSelection::onDestroy>(box, callback::destroy, this);
  modalShell.down();
  XtUnmanageChild(box);
  XtDestroyWidget(box);
}

zFileForm::zFileForm(zWindow* parent, const char* title, const char* preset,
                     const char* const* filter, Target target) {
  Widget shell = shellAbove(parent);
  if (shell == nullptr) {
    isFinished = true;
    return;
  }
  zApp* app = zApp::instance();
  {
    const zApp::ModalScope scope;
    ziFileSelection selection(*this, target, shell, title,
                              makeFilePreset(preset == nullptr ? "" : preset, filter));
    selection.show();
    app->pumpWhile([this] { return !isFinished; });
  }
  isFinished = true;
  // An outer loop may stand in an idle pass, which hides the end of this form from it.
  app->wake();
}
