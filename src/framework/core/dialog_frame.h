#pragma once

#include <functional>
#include <vector>

#include "framework/core/frame.h"
#include "framework/core/modal_shell.h"

struct DialogResource;

/// A place in dialog units.
struct zDialogPlace {
  int x, y, width, height;
};

/// A top-level dialog: a dialog shell and in it two boards, of which the inner one holds the
/// controls. It comes up only while it runs; made and shown before that, it waits unseen.
class zDialogFrame : public zFrameWin {
 public:
  static constexpr int kClassNumber = kClassDialogFrame;
  /// What run returns when the dialog was destroyed while it ran.
  static constexpr int kDialogGone = -1;

  /// An empty dialog of the place and size of `sizer`, which it takes; pixels.
  zDialogFrame(zWindow* parent, zSizer* sizer, std::uint32_t style);
  /// Filled from a dialog resource, in its size. A missing one is told on standard error, and the
  /// dialog stays empty.
  zDialogFrame(zWindow* parent, std::uint32_t resourceId, std::uint32_t style);
  ~zDialogFrame() override;

  /// Keeps the modality bits of `flags` and makes the dialog ready to run unless the others are 0.
  virtual void setup(int flags);
  /// Ends the modal run and takes the dialog off the screen, unless a handler of kMsgClose or close
  /// refuses. The dialog may be gone afterwards (see setDeleteOnUnmap).
  virtual void endDialog();

  /// Runs the dialog in a nested event loop until endDialog or the end of the application. Modal to
  /// the program's windows; with `fullModal` 1 to all windows of the screen that ask for it.
  /// Returns `status` as it was at the end, or kDialogGone.
  ///
  /// May be called again by an event during a run: the dialog is raised, and one end then ends
  /// both. A run that has ended may have to wait for inner loops before it returns; the next one is
  /// of its own then. `onEnd` is called at the end itself, with what the user chose still in the
  /// dialog.
  int run(int fullModal, const std::function<void()>& onEnd = nullptr);

  /// Places the dialog in the middle of its parent, or of the screen, all of it on the screen.
  void centre(bool overParent);
  /// A place by the dialog's own font, which must have been set.
  zRect inPixels(const zDialogPlace& place) const;
  /// A sizer for a control there; for the control to take.
  zSizer* sizerAt(const zDialogPlace& place) const;
  /// The control that has the focus when the dialog comes up; otherwise the first that can.
  void setFirstFocus(zWindow& control) { firstFocus = &control; }

  /// 1 after a positive end, 0 at first and after Cancel and the window manager's close.
  int status = 0;
  /// Id of the default push button; kNoDefaultButton for none.
  static constexpr int kNoDefaultButton = 0xFFFF;
  int defaultButtonId();
  /// Whether the dialog is on the screen and waits for the user.
  bool isRunning() const { return !runs.empty(); }
  /// Whether a run has not returned yet, so that the dialog must not be deleted but by its caller.
  bool isInUse() const { return runDepth > 0; }

  void createWidgets() override;
  void show(int state = kShowNormal) override;
  void moveResize(int x, int y, int width, int height) override;

 protected:
  /// Ends the dialog with this status. 1; the dialog may be gone.
  int endWith(int result);

 private:
  /// One call of run, on the stack of that call.
  struct Run {
    const std::function<void()>& onEnd;
    bool isOver = false;
    int result = 0;
  };

  void endRuns();
  /// What the window manager's frame adds to the size of the main window; nothing while that has
  /// none.
  static zDimension decorationOfOwner();
  static zDimension clientSize(const zFrameWin& frame);
  void fill(const DialogResource& resource);
  void chooseFont(const DialogResource& resource);
  void popUp(int fullModal);
  void popDown();
  void shellFocus(XEvent& event);
  void focusFirst();
  int onKey(zEvent* event);
  int press(zWindow* button);
  zWindow* buttonForReturn(zWindow* focused);

  std::uint32_t modality = 0;
  zWindow* firstFocus = nullptr;
  bool focusPending = false;  ///< up, but the window manager's focus has not come yet
  std::vector<Run*> runs;     ///< those that have not ended
  int runDepth = 0;           ///< those that have not returned
  ziModalShell modalShell;
};

/// A dialog with the buttons OK (id 1) and Cancel (id 2) and data exchange with its controls.
class zFormDialog : public zDialogFrame {
 public:
  static constexpr int kClassNumber = kClassFormDialog;

  zFormDialog(zWindow* parent, zSizer* sizer, std::uint32_t style);
  zFormDialog(zWindow* parent, std::uint32_t resourceId, std::uint32_t style);

  /// Binds the two buttons first.
  void setup(int flags) override;
  /// Stores every enabled control's data in what it is bound to. Sets `status` to the result: 1
  /// when all of them agree, else 0.
  virtual int storeData();

 protected:
  /// Handlers of the two buttons.
  int onOkClicked(zEvent* event);
  int onCancelClicked(zEvent* event);
};
