#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Data of the system under test: virtual time, process instances, sorts and their values.
namespace tester {

/// Virtual time in milliseconds since the start of the system; also used for durations.
using Time = std::int64_t;

inline constexpr Time kSecond = 1000;
/// A time that no timer reaches.
inline constexpr Time kForever = INT64_MAX;

/// Seconds with three decimals, "12.500".
std::string formatTime(Time time);

/// A time in seconds with at most three decimals ("12", "12.5"); nothing for any other text, a
/// negative time, or one of more than nine digits of seconds.
std::optional<Time> parseTime(std::string_view text);

/// A whole number of at least `least`.
std::optional<std::int64_t> parseNumber(std::string_view text, std::int64_t least);

/// Name of a process instance; an empty process name is the null instance.
struct InstanceId {
  std::string process;
  int number = 0;

  bool isNull() const { return process.empty(); }
  auto operator<=>(const InstanceId&) const = default;
};

/// "Button:2", or "null".
std::string formatInstance(const InstanceId& id);

/// What formatInstance() writes; nothing for other texts.
std::optional<InstanceId> parseInstance(std::string_view text);

/// A value as the user reads and writes it; each has one form. "1", "true", "Red", "Button:2".
using Value = std::string;

/// The type of a variable or of a signal's parameter: one of a list of literals, or, without any,
/// of the predefined sort of its name.
struct Sort {
  std::string name;
  std::vector<std::string> literals = {};
};

Sort integerSort();
Sort booleanSort();
Sort pidSort();

/// The value of `sort` that `text` means; literals match in any case. Nothing when it is none.
std::optional<Value> parseValue(const Sort& sort, std::string_view text);

/// What a user may write for the sort, for a message about a wrong value: "a whole number".
std::string expectedText(const Sort& sort);

/// "(1, true)", or nothing when there is no value.
std::string formatParameters(const std::vector<Value>& values);

/// "a, b, c"
std::string joinNames(const std::vector<std::string>& names);

}  // namespace tester
