// The seam through which tests keep away from long waits.

#include "link/link_settings.h"

LinkSettings& linkSettings() {
  static LinkSettings settings;
  return settings;
}
