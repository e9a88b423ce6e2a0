#pragma once

#include "link/message_table.h"
#include "link/tool_message.h"

/// Sends by kind of message, each through g_EncodeBuffer and ToolSend. All return what ToolSend
/// does, or kEncodeFailed after a line on standard error when the parameters do not fit a frame;
/// nothing is sent then. A null text counts as empty, a null list too.

int sendCommand(const char* command);                  ///< 1002 to the tester
int sendFileAnswer(const char* path);                  ///< 1008 to the tester
int sendStringAnswer(const char* text);                ///< 1004 to the tester
int sendValueAnswer(const char* digits);               ///< 1005 to the tester
int sendListAnswer(const char* choice);                ///< 1006 to the tester
int sendDirectoryAnswer(const char* directory);        ///< 1010 to the tester
int sendSignalParameterAnswer(const char* parameter);  ///< 1013 to the tester
int sendBitsAnswer(const StringListNode* bits);        ///< 1009 to the tester
int sendHelpRequest(const char* topic);                ///< 10004 to the link tool

/// Any message of the table, for tools whose messages have more parameters.
int sendMessage(MessageDirection direction, int dest, int tag, const ToolMessage& message);
