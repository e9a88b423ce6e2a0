#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "support/long_work.h"
#include "support/regular_expression_elements.h"

/// The two matchers behind step and advance. Both find the same match: the leftmost one, in which
/// each item takes as much as the rest of the pattern allows. Both set loc1, loc2, braslist and
/// braelist. Both answer nothing when they gave up, which they do when the longer work is to end.
namespace regexp {

enum class Start {
  kAnywhere,
  kAtSubject,  ///< the match starts where the subject does
};

/// Matches any pattern within a limit of work and tells what it `spent`.
std::optional<bool> matchByBacktracking(const char* subject, const char* compiled, Start start,
                                        std::int64_t limit, std::int64_t& spent,
                                        LongWork& longWork);

/// Matches a pattern without references in a time that is the product of the lengths of subject and
/// pattern, and within kMemoryLimit.
std::optional<bool> matchLinearly(const char* subject, const std::vector<Element>& elements,
                                  Start start, LongWork& longWork);

}  // namespace regexp
