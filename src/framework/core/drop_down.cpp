#include "framework/core/drop_down.h"

ziDropDown* openCombo = nullptr;

void closeOpenDropDown() {
  if (openCombo != nullptr) {
    openCombo->hideDropDown();
  }
}
