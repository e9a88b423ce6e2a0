// The dialogs behind the tester's questions, and their answers.
//
// Lists may come in several messages: the dialog is made by the first and run by the last. A
// complete question that arrives while the same dialog runs adds its items and runs it a second
// time inside; the one OK or Cancel then answers both, and the outer run destroys the dialog.
// Questions may be answered in any order, whatever the order in which their loops are nested.

#include "app/tester_questions.h"

#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include <unistd.h>

#include "app/app_main.h"
#include "app/wmain.h"
#include "dialogs/ddirselec.h"
#include "dialogs/file_form.h"
#include "framework/core/message_box.h"
#include "framework/core/question.h"
#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "link/typed_senders.h"
#include "prompts/find_dlg.h"
#include "prompts/pop_up_list_dlgs.h"
#include "prompts/pop_up_value_dlgs.h"
#include "textarea/text_pane.h"

UIPopUpListDlg* g_ListDialog = nullptr;
UIPopUpSigParDlg* g_SigParDialog = nullptr;
FindDlg* g_FindDialog = nullptr;
std::string g_CurrentDirectory;

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

/// What the Find dialog asked for.
struct Search {
  RWCString text;
  bool matchCase = false;
  bool useRegexp = false;
};

/// The answer to a question for an instance that needs no dialog; null for any other question.
const char* fixedAnswer(const ToolMessage& message) {
  constexpr std::string_view kInstanceZero = "Instance number (0)";
  constexpr std::string_view kInstanceAny = "Instance number (*)";
  // The title counts without its last four characters. Intended.
  constexpr std::string_view kTitle = "Korvane Select";
  constexpr std::string_view kTitleStart = kTitle.substr(0, kTitle.size() - 4);
  if (!std::string_view(message.text(0)).starts_with(kTitleStart)) {
    return nullptr;
  }
  const std::string_view text = message.text(1);
  if (text.starts_with(kInstanceZero)) {
    return "0";
  }
  return text.starts_with(kInstanceAny) ? "*" : nullptr;
}

}  // namespace

void askString(const ToolMessage& message) {
  runQuestion(new UIPopUpStringDlg(g_MainWindow, message.text(1)),
              [](UIPopUpStringDlg& dialog) { settle(sendStringAnswer(dialog.answer().c_str())); });
}

void askInteger(const ToolMessage& message) {
  if (const char* fixed = fixedAnswer(message); fixed != nullptr) {
    sendValueAnswer(fixed);
    return;
  }
  runQuestion(new UIPopUpIntegerDlg(g_MainWindow, message.text(1)),
              [](const UIPopUpIntegerDlg& dialog) { sendValueAnswer(dialog.answer().c_str()); });
}

void askRange(const ToolMessage& message) {
  const int low = message.number(2);
  const int high = message.number(3);
  if (low == high) {
    sendValueAnswer(std::to_string(low).c_str());
    return;
  }
  runQuestion(new UIPopUpIntegerLimitDlg(g_MainWindow, message.text(1), low, high),
              [](const UIPopUpIntegerLimitDlg& dialog) {
                const RWCString answer = dialog.answer();
                sendValueAnswer(answer == UIPopUpIntegerLimitDlg::kAll ? "*" : answer.c_str());
              });
}

void askList(const ToolMessage& message) {
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

void askBits(const ToolMessage& message) {
  runQuestion(new UIPopUpBitDlg(g_MainWindow, message.text(1), promptItems(message.list(2))),
              [](const UIPopUpBitDlg& dialog) { settle(sendBitsAnswer(dialog.answer())); });
}

void askSignalParameters(const ToolMessage& message) {
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

void askFile(const ToolMessage& message) {
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

void askDirectory(const ToolMessage& /*message*/) {
  const std::string start = workingDirectory().value_or("");
  g_CurrentDirectory = start;
  runQuestion(new Ddirselec(g_MainWindow, start), [](const Ddirselec& dialog) {
    const std::optional<std::string> chosen = dialog.chosen();
    if (!chosen) {
      answerCancel();
      return;
    }
    g_CurrentDirectory = *chosen;
    settle(sendDirectoryAnswer(chosen->c_str()));
    static_cast<void>(!chdir(chosen->c_str()));
  });
}

void askFind(const ToolMessage& message) {
  const int list = message.number(1);
  const PromptItems items = promptItems(message.list(2));
  if (g_FindDialog == nullptr) {
    g_FindDialog = new FindDlg(g_MainWindow, g_MainWindow->findSettings(), list, items);
  } else {
    g_FindDialog->addItems(list, items);
  }
  if (message.number(0) != 0) {
    return;
  }
  // Shared by all runs that one end has ended: what was asked for twice is searched for once.
  static std::optional<Search> wanted;
  runBuiltUp(g_FindDialog, [](const FindDlg& dialog) {
    wanted = Search{dialog.searchString, dialog.matchCase != 0, dialog.useRegexp != 0};
  });
  // The search may end in a box, which must not stand over a dialog that is done.
  if (const std::optional<Search> search = std::exchange(wanted, std::nullopt)) {
    theTextPane->startFocusTimer();
    g_MainWindow->findFirst(search->text, search->matchCase, search->useRegexp);
  }
}

void dropUnfinishedQuestions() {
  delete std::exchange(g_ListDialog, nullptr);
  delete std::exchange(g_SigParDialog, nullptr);
  delete std::exchange(g_FindDialog, nullptr);
}
