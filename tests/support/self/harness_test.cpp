// What no passing test of a program shows: that the conversation fails when nothing comes.

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "tests/support/scripted_postmaster.h"

namespace {

TEST(ScriptedPostmaster, FailsAndNamesWhatDidNotCome) {
  ScriptedPostmaster postmaster;
  postmaster.start({"/bin/true"});
  EXPECT_NONFATAL_FAILURE(EXPECT_THROW(postmaster.expectConnect(), testing::AssertionException),
                          "awaited: 7000 MSG_CONNECT\ncame: nothing");
}

}  // namespace
