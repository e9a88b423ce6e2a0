#pragma once

// Part of the interface of the side dialogs that this program does not use; compiled, its behaviour
// is not under test.

#include "dialogs/dabout.h"

/// Who programmed the program. To be run by run(0). No command opens it. Intended.
class DCredits : public ziTellingBox {
 public:
  static constexpr const char* kTitle = "Tessil Credits";

  explicit DCredits(zWindow* parent);
};
