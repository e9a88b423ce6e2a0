#pragma once

class zEvH;

/// How the socket meets the event loop: first an idle handler reads the link, and once the tester's
/// side has asked for it a repeating timer does.

/// Polls without a message since the last one; the idle handler gives up at its limit.
extern int g_IdleCount;

/// Idle handler; `owner` is the window over which the loss of the link is told. Takes itself off
/// the idle list after 100 polls without a message. Returns 0.
int PollLinkIdle(zEvH* owner);

/// Handler of the poll timer, the same without the counting.
int PollLinkTimer(zEvH* owner);
