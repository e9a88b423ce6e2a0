#pragma once

#include "framework/controls/control.h"
#include "framework/core/pane.h"
#include "framework/draw/displays.h"
#include "framework/visuals/visual_compound.h"

/// A control whose widget is a drawing area, on which it paints.
class ziCtrlPane : public zControl, public ziPainted {
 public:
  static constexpr int kClassNumber = kClassCtrlPane;
  static constexpr const char* kWidgetName = "VisualCtrl";

  ziCtrlPane(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id,
             const char* areaName = kWidgetName);
  ~ziCtrlPane() override;

  int draw(zEvent* event) override;
  zDisplay* display() const { return ownDisplay.get(); }

  int size(zEvent* event) override;
  void setBackground(const zColor& colour) override;
  void setFont(const zRCFont& newFont, int redraw) override;
  void invalidate(zRect* rect, int erase) override;

 private:
  zDimension clientSize() const override { return sizer()->size(); }
};

/// A control made of visuals.
class ziVisualCtrlPane : public ziCtrlPane, public ziVisualHost {
 public:
  ziVisualCtrlPane(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id,
                   const char* areaName = kWidgetName);

  ziControlCompound& visuals() { return root; }

  int draw(zEvent* event) override;
  /// Takes the pointer's crossings as motion, so that a button knows when it is left.
  int handle(zEvent* event) override;
  int mouseMove(zEvent* event) override;
  int mouseButtonDown(zEvent* event) override;
  int mouseButtonUp(zEvent* event) override;

  zDisplay* visualDisplay() const override { return display(); }
  zWindow* visualWindow() override { return this; }

 private:
  ziControlCompound root;
};

/// A pane made of visuals: the base of the strips in a frame.
class ziVisualPane : public zPane, public ziVisualHost {
 public:
  ziVisualPane(zWindow* parent, zSizer* sizer, std::uint32_t style, int id);

  ziControlCompound& visuals() { return root; }

  int draw(zEvent* event) override;
  int size(zEvent* event) override;
  int mouseMove(zEvent* event) override;
  int mouseButtonDown(zEvent* event) override;
  int mouseButtonUp(zEvent* event) override;

  zDisplay* visualDisplay() const override { return display(); }
  zWindow* visualWindow() override { return this; }

 protected:
  /// The part of the interior in which the visuals are laid out.
  virtual zRect visualArea();

 private:
  ziControlCompound root;
};
