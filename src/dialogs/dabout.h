#pragma once

#include "dialogs/icon_pane.h"
#include "framework/core/dialog_frame.h"

/// Base of the boxes that only tell something: texts, a line below them and OK. All places are in
/// dialog units of the box's own font, so that what fits at one resolution fits at each.
class ziTellingBox : public zFormDialog {
 protected:
  /// A place in dialog units.
  struct Place {
    int x, y, width, height;
  };

  /// `size` is the client's; `title` and the font are set when it is made.
  ziTellingBox(zWindow* parent, const char* title, const Place& size);

  /// Puts a centred text of one or several lines there; in `face` unless it is empty.
  void addText(const Place& place, const char* shown, const zRCFont& face = {});
  /// Puts OK across the middle at `top`, and the line above it at `ruleTop`. Ends the layout.
  void addOk(int ruleTop, int top);

  zRect toPixels(const Place& place) const;
  zSizer* sizerAt(const Place& place) const;

 private:
  int onOk(zEvent* event);
};

/// The program's icon, name, version and legal notice. To be run by run(0).
class DAbout : public ziTellingBox {
 public:
  static constexpr const char* kTitle = "About Korvane";

  explicit DAbout(zWindow* parent);
};

/// Who programmed the program. To be run by run(0). No command opens it. Intended.
class DCredits : public ziTellingBox {
 public:
  static constexpr const char* kTitle = "Tessil Credits";

  explicit DCredits(zWindow* parent);
};
