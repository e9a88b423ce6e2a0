#pragma once

#include "framework/core/dialog_frame.h"

/// How a question that a dialog asked has ended.
enum class zDialogEnd {
  kAccepted,  ///< confirmed: with a status other than 0
  kRefused,
  kGone,  ///< the dialog was destroyed by what happened in its run
};

/// The way in which every dialog is run, read and deleted:
///
///   zQuestion question(new RenameGroupDlg(...));
///   if (question.run() == zDialogEnd::kAccepted) {
///     use(question->name());
///   }
///
/// Takes over the dialog, which is on the heap, and deletes it with its own end; of several
/// questions that share one dialog, the one whose run is the last to return does so. That the
/// dialog may be destroyed at any time, as a child of its window, is no matter.
template <class Dialog>
class zQuestion {
 public:
  explicit zQuestion(Dialog* made) : dialog(made), alive(made) {}
  zQuestion(const zQuestion&) = delete;
  zQuestion& operator=(const zQuestion&) = delete;
  ~zQuestion() {
    if (alive && !dialog->isInUse()) {
      delete dialog;
    }
  }

  /// Runs the dialog. With kGone it must not be touched any more, and perhaps nor must its window.
  zDialogEnd run() {
    const int status = dialog->run(0);
    return status == zDialogFrame::kDialogGone ? zDialogEnd::kGone : endOf(status);
  }

  /// The same for one who can't wait for the return, which inner loops may hold up: `atEnd` gets
  /// the answer at the moment at which it is given, with the dialog still there unless it is kGone.
  /// Called once.
  template <class AtEnd>
  void run(AtEnd atEnd) {
    bool hasEnded = false;
    dialog->run(0, [&] {
      hasEnded = true;
      atEnd(endOf(dialog->status));
    });
    if (!hasEnded) {
      atEnd(zDialogEnd::kGone);
    }
  }

  Dialog* operator->() const { return dialog; }
  Dialog& operator*() const { return *dialog; }

 private:
  static zDialogEnd endOf(int status) {
    return status != 0 ? zDialogEnd::kAccepted : zDialogEnd::kRefused;
  }

  Dialog* dialog;
  ziAlive alive;
};
