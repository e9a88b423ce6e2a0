#pragma once

#include "postmaster/message.h"

#include <iconv.h>

#include <deque>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace postmaster {

/// Converts between two character sets of the C library; see iconv(3).
class Converter {
 public:
  /// Null when the library does not know one of the sets. Characters that `to` has not are written
  /// as something similar, or as "?".
  static std::unique_ptr<Converter> open(const std::string& to, const std::string& from);

  struct Result {
    std::string text;
    bool isExact = true;  ///< no byte was passed on as it came
    std::size_t tailBytes =
        0;  ///< at the end of the input: the begin of a character, not converted
  };
  /// Converts what is valid; other bytes pass unchanged.
  Result convert(std::string_view text);

 private:
  struct Close {
    void operator()(iconv_t opened) const { iconv_close(opened); }
  };
  using Handle = std::unique_ptr<std::remove_pointer_t<iconv_t>, Close>;

  explicit Converter(Handle opened) : handle(std::move(opened)) {}

  Handle handle;
};

/// Stands between the window, which shows and sends ISO 8859-1, and tools that write another
/// character set. Paths are bytes and pass unchanged in both directions. An answer that repeats a
/// text which the window was sent leaves as that text, also where the window could not show it.
class Charset {
 public:
  /// Null when the C library does not know the set `name`.
  static std::unique_ptr<Charset> open(const std::string& name);

  /// The messages for the window that stand for `message`: itself when nothing changes. A text of
  /// the log that ends in the middle of a character goes without that end, which the next text gets
  /// or, when another message follows, a message of its own before it.
  std::vector<Message> toWindow(const Message& message);

  /// The message for the tools that stands for one of the window's.
  Message fromWindow(const Message& message);

 private:
  Charset(std::unique_ptr<Converter> in, std::unique_ptr<Converter> out);

  Message logText(const Message& message);
  std::string shown(std::string_view text);
  bool comesBack(const std::string& seen, std::string_view sent);
  std::string shownInList(std::string_view text, const std::set<std::string>& plain);
  std::string forTools(std::string_view text);
  void remember(const std::string& seen, std::string_view sent);

  static constexpr std::size_t kMaxRemembered = 100'000;

  std::unique_ptr<Converter> toLatin;
  std::unique_ptr<Converter> toTools;
  bool isMultibyte = false;                                   ///< the tools' set
  std::map<int, std::string> tails;                           ///< by the tool type that sent them
  std::map<std::string, std::string, std::less<>> sentTexts;  ///< by what the window shows
  std::deque<std::string> seenTexts;  ///< the keys of sentTexts, oldest first
};

}  // namespace postmaster
