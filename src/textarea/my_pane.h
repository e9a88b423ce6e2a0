#pragma once

#include <memory>

#include "framework/controls/combo_box.h"
#include "framework/core/pane.h"

class TextPane;
class zStaticText;

/// The command line: an entry whose drop-down list is the history of confirmed commands, newest
/// first. Lines that are pasted or set become pieces of one line. It passes the keys that page the
/// log on to the text pane.
class RetEditLine : public zComboBoxFull {
 public:
  RetEditLine(zWindow* parent, zSizer* sizer, int id);
  ~RetEditLine() override;

  /// Makes `text` the newest entry, behind what the user has begun to type. Nothing happens if it
  /// is the newest entry already; older ones are not compared.
  void addToHistory(const RWCString& text);

  /// Takes the width that the parent gives it.
  void followWidth();

  int handle(zEvent* event) override;

 protected:
  std::string entryForm(std::string_view inserted, std::string_view before) const override;

 private:
  int handleKey(std::intptr_t code);
  void execute();
};

/// The command line of the program; null before it is made and after.
extern RetEditLine* theCommandLine;

/// The middle of the main window: the log, and below it a strip with the command line.
class MyPane : public zPane {
 public:
  MyPane(zWindow* parent, zSizer* sizer);
  ~MyPane() override;

 private:
  void createCommandPanel();

  // Made in this order, deleted from the log on.
  std::unique_ptr<zPane> commandPanel;
  std::unique_ptr<zStaticText> label;
  std::unique_ptr<RetEditLine> commandLine;
  std::unique_ptr<TextPane> textPane;
};
