#pragma once

#include <memory>

#include "framework/core/pane.h"

class RetEditLine;
class TextPane;
class zStaticText;

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
