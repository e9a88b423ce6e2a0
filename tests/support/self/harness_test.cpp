// What no passing test of a program shows: how the helpers report failures.

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include <filesystem>

#include "tests/support/scripted_postmaster.h"

namespace {

using testing::HasSubstr;

TEST(ScriptedPostmaster, NamesWhatWasAwaitedAndWhatTheToolSaidAndLeavesNoFileBehind) {
  std::string socketName;
  testing::TestPartResultArray results;
  {
    const testing::ScopedFakeTestPartResultReporter reporter(
        testing::ScopedFakeTestPartResultReporter::INTERCEPT_ALL_THREADS, &results);
    ScriptedPostmaster postmaster;
    socketName = postmaster.socketName();
    postmaster.start({"/bin/sh", {"-c", "echo out of order >&2"}});
    EXPECT_THROW(postmaster.expectConnect(), testing::AssertionException);
  }
  ASSERT_EQ(results.size(), 1);
  const std::string failure = results.GetTestPartResult(0).message();
  EXPECT_THAT(failure, HasSubstr("awaited: 7000 MSG_CONNECT"));
  EXPECT_THAT(failure, HasSubstr("ended with status 0"));
  EXPECT_THAT(failure, HasSubstr("out of order"));
  EXPECT_FALSE(std::filesystem::exists(std::filesystem::path(socketName).parent_path()));
}

}  // namespace
