#include "tests/support/script_failure.h"

#include <gtest/gtest.h>

void failScript(const std::string& text, SourceLine where) {
  ADD_FAILURE_AT(where.file, where.line) << text;
  throw testing::AssertionException(testing::TestPartResult(testing::TestPartResult::kFatalFailure,
                                                            where.file, where.line, text.c_str()));
}
