#pragma once

#include <string>

#include "framework/core/timer.h"
#include "link/tool_message.h"

class FindDlg;
class Session;
class UIPopUpListDlg;
class UIPopUpSigParDlg;
class zIdleList;

/// How messages come in. First an idle handler reads the link, and once the tester's side has asked
/// for it a repeating timer does. Each poll takes one message at most; while there is more, the
/// next one follows as soon as no X event waits.

/// Has the messages of the link carried out on `session`, which outlives the link. To be called
/// before the first message.
void serveMessages(Session& session);

/// Takes every message that the link does not keep for itself, decodes it and has it carried out.
void MessageHandler(int sender, int tag, int length, const char* payload);

/// Carries a decoded message out: writes to the log, opens a box or a dialog, answers the tester,
/// ends the program. May run nested inside a dialog that an earlier message opened. Always 0.
int PROCESS_MESSAGE(int tag, ToolMessage message);

/// What a box says about a message that could not be decoded; empty for any other result.
std::string decodeErrorText(int result, int tag, int length);

/// Idle handler; `owner` is the window over which the loss of the link is told. Takes itself off
/// the idle list after 100 polls without a message. Returns 0.
int PollLinkIdle(zEvH* owner);

/// Handler of the poll timer: one poll, without the counting.
int PollLinkTimer(zEvH* owner);

/// The timer that polls the link; null until a message asks for it. Owned by appMain.
extern zTimer* g_PollTimer;
/// The application's idle handlers.
extern zIdleList* g_IdleList;

/// Questions of the tester: each opens a dialog, which blocks in a nested event loop, and sends one
/// answer. Further messages, questions among them, are carried out meanwhile.

void askString(Session& session, const ToolMessage& message);
void askInteger(Session& session, const ToolMessage& message);
void askRange(Session& session, const ToolMessage& message);
void askList(Session& session, const ToolMessage& message);
void askBits(Session& session, const ToolMessage& message);
void askSignalParameters(Session& session, const ToolMessage& message);
void askFile(Session& session, const ToolMessage& message);
void askDirectory(Session& session, const ToolMessage& message);
void askFind(Session& session, const ToolMessage& message);

/// Destroys the dialogs that still wait for their last message.
void dropUnfinishedQuestions();

/// The dialogs of questions that wait for the rest of their items, or for their answer; null while
/// there is none. Children of the main window.
extern UIPopUpListDlg* g_ListDialog;
extern UIPopUpSigParDlg* g_SigParDialog;
extern FindDlg* g_FindDialog;
