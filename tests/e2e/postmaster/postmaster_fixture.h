#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/message_numbers.h"
#include "link/port_control.h"
#include "tests/e2e/postmaster/nelmpm_process.h"
#include "tests/e2e/postmaster/test_client.h"
#include "tests/support/basics.h"

/// A running Postmaster without tools; the test connects clients of its own.
class PostmasterTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(mpm.isUp()) << mpm.errors(); }

  /// A client that is connected as `toolType`.
  TestClient tool(int toolType) {
    TestClient client(mpm.socketPath());
    EXPECT_EQ(client.connectAs(toolType), MSG_CONNECT_OK);
    return client;
  }

  NelmpmProcess mpm;
};
