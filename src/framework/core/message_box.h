#pragma once

class zWindow;

/// Style of a message box: one value of each group, ORed.
enum zMessageStyle : int {
  kBoxOk = 0,
  kBoxOkCancel = 1,
  kBoxAbortRetryIgnore = 2,
  kBoxYesNoCancel = 3,
  kBoxYesNo = 4,
  kBoxRetryCancel = 5,
  kBoxButtonsMask = 0x000F,

  kBoxPlain = 0,
  kBoxStop = 0x10,
  kBoxQuestion = 0x20,
  kBoxWarning = 0x30,
  kBoxInformation = 0x40,
  kBoxIconMask = 0x00F0,

  kBoxSystemModal = 0x1000,
  kBoxFullModal = 0x2000,
  kBoxModalityMask = 0xF000,
};

/// Answers of a message box.
enum zMessageResult : int {
  kAnswerNone = 0,  ///< ended without a button: the application stopped, or the parent went away
  kAnswerOk = 1,
  kAnswerCancel = 2,
  kAnswerAbort = 3,
  kAnswerRetry = 4,
  kAnswerIgnore = 5,
  kAnswerYes = 6,
  kAnswerNo = 7,
};

/// A modal message box. Constructing it shows the text and waits for the answer in a nested event
/// loop; the answer is then read from it. Return presses the first button. Escape and the window
/// manager's close give the answer of the button Cancel, or of the second button when none is
/// called so; a box with one button is closed by them.
///
/// All boxes share one flag that ends their wait: the end of a box that opened over another one
/// ends the other one too, with kAnswerNone. This is intended.
class zMessage {
 public:
  /// `parent` may be null or without a widget; the box then belongs to the main window, and where
  /// there is none either, nothing is shown and the answer is kAnswerNone.
  zMessage(zWindow* parent, const char* text, const char* title, int style);
  zMessage(const zMessage&) = delete;
  zMessage& operator=(const zMessage&) = delete;

  /// A zMessageResult.
  int result = kAnswerNone;
  bool isOk() const { return result == kAnswerOk; }
};
