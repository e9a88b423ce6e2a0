#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

/// Searching the log, free of widgets. A search goes forward from the last hit and does not wrap.

/// Where the last search hit. Stays between searches, also when the log changes.
struct FindState {
  std::size_t lastFindOffset = 0;
  std::size_t lastFindLength = 0;
};

struct FindRequest {
  std::string_view text;   ///< what to look for
  bool goOn = false;       ///< from the last hit on; otherwise from the start, forgetting it
  bool matchCase = false;  ///< of a plain search; a regular expression always does
  bool regexp = false;     ///< the text is a regular expression, of which kPatternLength count
};

enum class FindResult {
  kFound,
  kNotFound,
  kPatternError,  ///< the text is no regular expression
  kGaveUp,        ///< the regular expression needs more work or memory than a search may spend
  kStopped,       ///< mayGoOn said no
};

inline constexpr std::size_t kPatternLength = 255;

/// What one search may spend on a regular expression with references, in the units of
/// regexp::workSpent: so much and so much more for each character of the log. Together that is at
/// most about three seconds and half a second a megabyte. A search that needs more gives up, also
/// when one line needs more than regexp::kWorkLimit or regexp::kMemoryLimit.
inline constexpr std::int64_t kFindWork = std::int64_t{1} << 28;
inline constexpr std::int64_t kFindWorkPerCharacter = 64;

/// Looks for the next place in `log` (no NUL in it) and puts it into `state`, which keeps the last
/// one when there is none. Every few milliseconds of a longer search it asks whether it may go on.
FindResult findInLog(std::string_view log, const FindRequest& request, FindState& state,
                     const std::function<bool()>& mayGoOn = {});
