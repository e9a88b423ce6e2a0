// The seam through which tests keep away from the machine-wide rendezvous files and long waits.

#include "link/link_settings.h"

LinkSettings& linkSettings() {
  static LinkSettings settings;
  return settings;
}
