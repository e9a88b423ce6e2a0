#pragma once

#include <cstdint>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

/// Bytes from hexadecimal digits; blanks count for nothing.
inline Bytes fromHex(std::string digits) {
  std::erase(digits, ' ');
  Bytes bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
  }
  return bytes;
}

/// The digits of a number of four bytes, the highest first.
inline std::string word(std::size_t number) {
  std::string digits(8, '0');
  for (std::size_t i = digits.size(); i-- > 0; number /= 16) {
    digits[i] = "0123456789ABCDEF"[number % 16];
  }
  return digits;
}

struct ResourceRecord {
  std::uint32_t type;
  std::uint32_t id;
  std::string data;  ///< digits without blanks
};

/// A resource file: header, data, index, and the record that ends it.
inline Bytes resourceFileOf(const std::vector<ResourceRecord>& records) {
  constexpr std::size_t kDataAt = 100 - 5;  // offsets are told five too low
  std::string data;
  std::string index;
  for (const ResourceRecord& record : records) {
    index += word(record.type) + word(record.id) + word(kDataAt + data.size() / 2);
    index += word(record.data.size() / 2);
    data += record.data;
  }
  const std::string header = "7A53696734343838323200000100" + std::string(164, '0');
  return fromHex(header + word(kDataAt + data.size() / 2) + data + index + word(99) + word(0) +
                 word(0) + word(0));
}
