#include <gtest/gtest.h>

#include "link/port_control.h"

TEST(RendezvousPrefix, liesInTmpUnlessAFolderIsNamed) {
  EXPECT_EQ(rendezvousPrefix(nullptr), "/tmp/.nel.tessil.");
  EXPECT_EQ(rendezvousPrefix(""), "/tmp/.nel.tessil.");
  EXPECT_EQ(rendezvousPrefix("/var/tmp"), "/var/tmp/.nel.tessil.");
}
