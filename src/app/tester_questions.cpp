// The dialogs behind the tester's questions, and their answers.
//
// Lists may come in several messages: the dialog is made by the first and run by the last. A
// complete question that arrives while the same dialog runs adds its items and runs it a second
// time inside; the one OK or Cancel then answers both, and the outer run destroys the dialog.
// Questions may be answered in any order, whatever the order in which their loops are nested.

#include "app/message_handler.h"

#include <array>
#include <cstdlib>
#include <optional>
#include <utility>

#include <unistd.h>

#include "app/wmain.h"
#include "dialogs/ddirselec.h"
#include "dialogs/file_form.h"
#include "framework/core/message_box.h"
#include "framework/core/question.h"
#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "prompts/find_dlg.h"
#include "prompts/pop_up_list_dlgs.h"
#include "prompts/pop_up_value_dlgs.h"
#include "session/session.h"
#include "textarea/text_pane.h"

UIPopUpListDlg* g_ListDialog = nullptr;
UIPopUpSigParDlg* g_SigParDialog = nullptr;
FindDlg* g_FindDialog = nullptr;

namespace {

void answerCancel() {
  ToolSend(NELKV, MSG_UI_CANCEL, nullptr, 0);
}

/// What became of an answer: one that is too long for a frame, and was not sent, is told to the
/// user and leaves no question open.
void settle(int result) {
  if (result == kEncodeFailed) {
    answerCancel();
    const zMessage box(g_MainWindow, "The answer is too long to be sent.", g_AppTitle,
                       kBoxStop | kBoxOk);
  }
}

/// Runs a dialog of this call's own and hands it to `reply` when the user has confirmed it; any
/// other end is answered by Cancel. Both are done as soon as the run has ended, even if other
/// questions that came up meanwhile still keep the loop from returning.
template <class Dialog, class Reply>
void runQuestion(Dialog* dialog, Reply reply) {
  zQuestion(dialog).run(
      [&](zDialogEnd end) { end == zDialogEnd::kAccepted ? reply(*dialog) : answerCancel(); });
}

/// The same for a dialog that several messages have filled. With its end the next question has a
/// new one; until then questions share it.
template <class Dialog, class Reply>
void runBuiltUp(Dialog*& kept, Reply reply) {
  Dialog* dialog = kept;
  zQuestion(dialog).run([&](zDialogEnd end) {
    if (kept == dialog) {
      kept = nullptr;
    }
    end == zDialogEnd::kAccepted ? reply(*dialog) : answerCancel();
  });
}

/// A message that should have filled `kept` brought nothing: the tester is told so by Cancel, the
/// user by `notice`. With the last message of a question the dialog goes that waits for it.
template <class Dialog>
void refuseEmptyList(Dialog*& kept, bool isLast, const char* notice) {
  theTextPane->appendText(notice);
  answerCancel();
  if (isLast && kept != nullptr && !kept->isInUse()) {
    delete std::exchange(kept, nullptr);
  }
}

FindSettings findSettings(const Session& session) {
  const Search newest = session.newestSearch().value_or(Search{});
  return {.history = session.searchesNewestFirst(),
          .offersRegexp = std::getenv("KV_REGEXP") != nullptr,
          .useRegexp = newest.useRegexp,
          .matchCase = newest.matchCase};
}

}  // namespace

void askString(Session& /*session*/, const ToolMessage& message) {
  runQuestion(new UIPopUpStringDlg(g_MainWindow, message.text(1)),
              [](UIPopUpStringDlg& dialog) { settle(sendStringAnswer(dialog.answer().c_str())); });
}

void askInteger(Session& /*session*/, const ToolMessage& message) {
  if (const auto known = onlyAnswer(MSG_T_ASK_INTEGER, message)) {
    sendValueAnswer(known->c_str());
    return;
  }
  runQuestion(new UIPopUpIntegerDlg(g_MainWindow, message.text(1)),
              [](const UIPopUpIntegerDlg& dialog) { sendValueAnswer(dialog.answer().c_str()); });
}

void askRange(Session& /*session*/, const ToolMessage& message) {
  if (const auto known = onlyAnswer(MSG_T_ASK_RANGE, message)) {
    sendValueAnswer(known->c_str());
    return;
  }
  runQuestion(new UIPopUpIntegerLimitDlg(g_MainWindow, message.text(1), message.number(2),
                                         message.number(3)),
              [](const UIPopUpIntegerLimitDlg& dialog) {
                const RWCString answer = dialog.answer();
                sendValueAnswer(answer == UIPopUpIntegerLimitDlg::kAll ? "*" : answer.c_str());
              });
}

void askList(Session& /*session*/, const ToolMessage& message) {
  const bool isLast = message.number(2) == 0;
  if (message.list(3) == nullptr) {
    refuseEmptyList(g_ListDialog, isLast, "< No timer values available >\n");
    return;
  }
  const PromptItems items = promptItems(message.list(3));
  if (g_ListDialog == nullptr) {
    g_ListDialog = new UIPopUpListDlg(g_MainWindow, message.text(1), items, true);
  } else {
    g_ListDialog->addItems(items);
  }
  if (!isLast) {
    return;
  }
  runBuiltUp(g_ListDialog, [](UIPopUpListDlg& dialog) {
    const RWCString& answer = dialog.answer();
    settle(sendListAnswer(answer.isEmpty() ? "-" : answer.c_str()));
  });
}

void askBits(Session& /*session*/, const ToolMessage& message) {
  runQuestion(new UIPopUpBitDlg(g_MainWindow, message.text(1), promptItems(message.list(2))),
              [](const UIPopUpBitDlg& dialog) { settle(sendBitsAnswer(dialog.answer())); });
}

void askSignalParameters(Session& /*session*/, const ToolMessage& message) {
  const bool isLast = message.number(2) == 0;
  if (message.list(3) == nullptr) {
    refuseEmptyList(g_SigParDialog, isLast, "< Error: invalid Signalparameter-Definition >\n");
    return;
  }
  const PromptItems items = promptItems(message.list(3));
  if (g_SigParDialog == nullptr) {
    g_SigParDialog = new UIPopUpSigParDlg(g_MainWindow, message.text(1), items);
  } else {
    g_SigParDialog->addDefinitions(items, 0);
  }
  if (!isLast) {
    return;
  }
  runBuiltUp(g_SigParDialog, [](UIPopUpSigParDlg& dialog) {
    settle(sendSignalParameterAnswer(dialog.answer().c_str()));
  });
}

void askFile(Session& /*session*/, const ToolMessage& message) {
  const std::string pattern = std::string("*.") + message.text(2);
  const std::array<const char*, 6> filter = {message.text(3), pattern.c_str(), "All Files (*.*)",
                                             "*.*",           nullptr,         nullptr};
  // The program stays in the directory; one that cannot be entered leaves it where it is. Intended.
  static_cast<void>(!chdir(message.text(1)));
  const zFileOpenForm form(g_MainWindow, message.text(0), nullptr, filter.data());
  if (form.accepted() != 0) {
    settle(sendFileAnswer(form.path().c_str()));
  } else {
    answerCancel();
  }
}

void askDirectory(Session& session, const ToolMessage& /*message*/) {
  const std::string start = workingDirectory().value_or("");
  session.currentDirectory = start;
  runQuestion(new Ddirselec(g_MainWindow, start), [&session](const Ddirselec& dialog) {
    const std::optional<std::string> chosen = dialog.chosen();
    if (!chosen) {
      answerCancel();
      return;
    }
    session.currentDirectory = *chosen;
    settle(sendDirectoryAnswer(chosen->c_str()));
    static_cast<void>(!chdir(chosen->c_str()));
  });
}

void askFind(Session& session, const ToolMessage& message) {
  const int list = message.number(1);
  const PromptItems items = promptItems(message.list(2));
  if (g_FindDialog == nullptr) {
    g_FindDialog = new FindDlg(g_MainWindow, findSettings(session), list, items);
  } else {
    g_FindDialog->addItems(list, items);
  }
  if (message.number(0) != 0) {
    return;
  }
  runBuiltUp(g_FindDialog, [&session](const FindDlg& dialog) {
    session.wantedSearch =
        Search{dialog.searchString, dialog.matchCase != 0, dialog.useRegexp != 0};
  });
  // The search may end in a box, which must not stand over a dialog that is done.
  if (const std::optional<Search> search = std::exchange(session.wantedSearch, std::nullopt)) {
    theTextPane->startFocusTimer();
    g_MainWindow->findFirst(*search);
  }
}

void dropUnfinishedQuestions() {
  delete std::exchange(g_ListDialog, nullptr);
  delete std::exchange(g_SigParDialog, nullptr);
  delete std::exchange(g_FindDialog, nullptr);
}
