#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// Data of the system under test: virtual time, process instances, sorts and their values.
namespace tester {

/// Virtual time in milliseconds since the start of the system; also used for durations.
using Time = std::int64_t;

inline constexpr Time kSecond = 1000;
/// A time that no timer reaches.
inline constexpr Time kForever = INT64_MAX;
/// Largest duration that a user can give, in milliseconds: about three thousand years.
inline constexpr Time kLongestDuration = 100'000'000'000 * kSecond;

/// Seconds with three decimals, "12.500".
std::string formatTime(Time time);

/// A time in seconds with at most three decimals ("12", "12.5"); nothing for any other text, a
/// negative one, or one above kLongestDuration.
std::optional<Time> parseTime(std::string_view text);

/// `time` plus a duration; stops short of kForever.
Time addTime(Time time, Time duration);

/// Name of a process instance; an empty process name is the null instance.
struct InstanceId {
  std::string process;
  int number = 0;

  bool isNull() const { return process.empty(); }
  auto operator<=>(const InstanceId&) const = default;
};

/// "Button:2", or "null".
std::string formatInstance(const InstanceId& id);

/// One literal of an enumerated sort.
struct Literal {
  std::string name;
  bool operator==(const Literal&) const = default;
};

using Value = std::variant<std::int64_t, bool, std::string, Literal, InstanceId>;

enum class SortKind { kInteger, kBoolean, kCharstring, kLiteral, kPid };

/// The type of a variable or of a signal's parameter.
struct Sort {
  std::string name;
  SortKind kind = SortKind::kInteger;
  std::vector<std::string> literals = {};  ///< only of the kind kLiteral
};

/// The predefined sorts.
Sort integerSort();
Sort booleanSort();
Sort charstringSort();
Sort pidSort();

/// The value as a user reads and, quotes of a charstring aside, writes it.
std::string formatValue(const Value& value);

/// "(1, true)", or nothing when there is no value.
std::string formatParameters(const std::vector<Value>& values);

/// The value of `sort` that `text` means; Booleans and literals match in any case, a PId is
/// "Process:1" or "null". Nothing when the text is no value of the sort.
std::optional<Value> parseValue(const Sort& sort, std::string_view text);

/// Whether the value may stand in a variable or parameter of `sort`.
bool isOfSort(const Value& value, const Sort& sort);

/// What a user may write for the sort, for a message about a wrong value: "true or false".
std::string expectedText(const Sort& sort);

/// Compares without regard to the case of ASCII letters.
bool equalIgnoringCase(std::string_view left, std::string_view right);

}  // namespace tester
