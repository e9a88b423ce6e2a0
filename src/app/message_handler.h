#pragma once

#include "link/tool_message.h"

class zTimer;

/// Takes every message that the link does not keep for itself, decodes it and has it carried out.
/// The handler that the tool interface is given.
void MessageHandler(int sender, int tag, int length, const char* payload);

/// Carries a decoded message out: writes to the log, opens a box or a dialog, answers the tester,
/// ends the program. May run nested inside a dialog that an earlier message opened. Always 0.
int PROCESS_MESSAGE(int tag, ToolMessage message);

/// 1 while the tester says that it is busy; read by nothing.
extern int g_TesterBusy;

/// The timer that polls the link; null until a message asks for it. Owned by appMain.
extern zTimer* g_PollTimer;
