#pragma once

#include <memory>

#include "framework/core/dialog_frame.h"
#include "framework/core/pane.h"
#include "framework/draw/pictures.h"

/// "version patch-level " of the product, in one buffer of the process.
///
/// The patch level is read from a file that the reading itself empties, so it is always empty; a
/// file of that name is made or emptied if it can be. Intended.
const char* VersionText();

/// Writes the version line to standard output.
void PrintVersion();

/// Draws an icon at its upper left corner; empty until it is given one.
class IconPane : public zPane {
 public:
  IconPane(zWindow* parent, zSizer* sizer, std::uint32_t style, int id)
      : zPane(parent, sizer, style, id) {}

  /// Replaces the icon, null for none, and asks for a repaint.
  void setIcon(std::unique_ptr<zIcon> newIcon);

  int draw(zEvent* event) override;

 private:
  std::unique_ptr<zIcon> icon;
};

/// Base of the boxes that only tell something: texts, a line below them and OK. All places are in
/// dialog units of the box's own font, so that what fits at one resolution fits at each.
class ziTellingBox : public zFormDialog {
 protected:
  /// `size` is the client's; `title` and the font are set when it is made.
  ziTellingBox(zWindow* parent, const char* title, const zDialogPlace& size);

  /// Puts a centred text of one or several lines there; in `face` unless it is empty.
  void addText(const zDialogPlace& place, const char* shown, const zRCFont& face = {});
  /// Puts OK across the middle at `top`, and the line above it at `ruleTop`. Ends the layout.
  void addOk(int ruleTop, int top);

 private:
  int onOk(zEvent* event);
};

/// The program's icon, name, version and legal notice. To be run by run(0).
class DAbout : public ziTellingBox {
 public:
  static constexpr const char* kTitle = "About Korvane";

  explicit DAbout(zWindow* parent);
};
