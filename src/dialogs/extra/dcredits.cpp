// Part of the interface of the side dialogs that this program does not use; compiled, its behaviour
// is not under test.

#include "dialogs/extra/dcredits.h"

DCredits::DCredits(zWindow* parent) : ziTellingBox(parent, kTitle, {0, 0, 156, 104}) {
  constexpr zDialogPlace kTextPlace = {8, 12, 140, 56};
  constexpr int kRuleTop = 78;
  constexpr int kOkTop = 86;
  addText(kTextPlace, "Programmed by:\n\nThe Korvane UI developers");
  addOk(kRuleTop, kOkTop);
}
