#pragma once

struct ToolMessage;

/// What the program does on one message of the tester, the Postmaster or the link tool. The record
/// is valid during the call only.
using TesterMessageFunction = void (*)(const ToolMessage& message);

/// The function of a message; null for a number that nothing is done on.
TesterMessageFunction testerMessageFunction(int tag);
