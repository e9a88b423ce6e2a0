#pragma once

#include "framework/core/timer.h"

/// How the socket meets the event loop: first an idle handler reads the link, and once the tester's
/// side has asked for it a repeating timer does. Each poll takes one message at most; while there
/// is more, the next one follows as soon as no X event waits.

/// Polls without a message since the last one; the idle handler gives up at its limit.
extern int g_IdleCount;

/// Idle handler; `owner` is the window over which the loss of the link is told. Takes itself off
/// the idle list after 100 polls without a message. Returns 0.
int PollLinkIdle(zEvH* owner);

/// Handler of the poll timer: one poll, without the counting.
int PollLinkTimer(zEvH* owner);

/// Has the poll timer fire at once while there is input, and sleep while there is none.
extern const zTimerWatch g_LinkWatch;
