#pragma once

class Session;
struct ToolMessage;

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
void dropUnfinishedQuestions(Session& session);
