#pragma once

#include <string>

struct ToolMessage;
class FindDlg;
class UIPopUpListDlg;
class UIPopUpSigParDlg;

/// Questions of the tester: each opens a dialog, which blocks in a nested event loop, and sends one
/// answer. Further messages, questions among them, are carried out meanwhile.

void askString(const ToolMessage& message);
void askInteger(const ToolMessage& message);
void askRange(const ToolMessage& message);
void askList(const ToolMessage& message);
void askBits(const ToolMessage& message);
void askSignalParameters(const ToolMessage& message);
void askFile(const ToolMessage& message);
void askDirectory(const ToolMessage& message);
void askFind(const ToolMessage& message);

/// Destroys the dialogs that still wait for their last message.
void dropUnfinishedQuestions();

/// Dialogs that a run of messages fills; null while there is none. The main window owns them.
extern UIPopUpListDlg* g_ListDialog;
extern UIPopUpSigParDlg* g_SigParDialog;
extern FindDlg* g_FindDialog;

/// The directory as the directory dialog left it, with "/" at its end.
extern std::string g_CurrentDirectory;
