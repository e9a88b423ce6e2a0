#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

/// String of 8-bit characters. A copy shares the characters until one side changes.
class RWCString {
 public:
  RWCString();
  /// A null pointer gives the empty string.
  RWCString(const char* text);
  RWCString(std::string_view text);
  RWCString(std::string text);

  const char* c_str() const { return data->c_str(); }
  /// The characters; the view lives until this string changes or dies.
  std::string_view view() const { return *data; }
  const std::string& str() const { return *data; }
  std::size_t length() const { return data->size(); }
  bool isEmpty() const { return data->empty(); }

  char operator[](std::size_t index) const { return (*data)[index]; }
  void setAt(std::size_t index, char c);
  RWCString& append(std::string_view text);
  RWCString& operator+=(const RWCString& other) { return append(other.view()); }

  /// True while another string uses the same characters.
  bool isShared() const { return data.use_count() > 1; }

  friend bool operator==(const RWCString& a, const RWCString& b) { return *a.data == *b.data; }
  friend auto operator<=>(const RWCString& a, const RWCString& b) { return *a.data <=> *b.data; }
  friend RWCString operator+(RWCString a, const RWCString& b) { return a.append(b.view()); }

 private:
  std::string& unshared();

  std::shared_ptr<std::string> data;
};

/// Root of the value classes that a stream could carry. This program streams none of them, so only
/// the common, virtual destructor is left.
class zStorable {
 public:
  zStorable() = default;
  zStorable(const zStorable&) = default;
  zStorable& operator=(const zStorable&) = default;
  virtual ~zStorable() = default;
};

/// A window caption or a text from the program's resources.
class zString : public zStorable {
 public:
  zString() = default;
  explicit zString(const char* initial) : text(initial) {}

  const char* c_str() const { return text.c_str(); }
  const RWCString& string() const { return text; }

 private:
  RWCString text;
};
