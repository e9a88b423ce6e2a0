#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "framework/draw/image/picture.h"

using Bytes = std::vector<std::uint8_t>;

/// Writes numbers of either byte order behind each other.
struct ByteWriter {
  enum class Order : std::uint8_t { kLittle, kBig };

  explicit ByteWriter(Order byteOrder) : order(byteOrder) {}

  ByteWriter& number(std::uint32_t value, int size) {
    for (int i = 0; i < size; ++i) {
      const int place = order == Order::kLittle ? i : size - 1 - i;
      bytes.push_back(static_cast<std::uint8_t>(value >> (8 * place)));
    }
    return *this;
  }
  ByteWriter& words(std::initializer_list<std::uint32_t> values) {
    for (const std::uint32_t value : values) {
      number(value, 4);
    }
    return *this;
  }
  ByteWriter& append(const Bytes& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
    return *this;
  }

  Order order;
  Bytes bytes;
};

/// The info header and the colour table of a picture. Colour i is blue i, green 2 * i, red 3 * i.
struct Dib {
  std::uint32_t length = 40;
  std::uint32_t width = 1;
  std::uint32_t height = 1;
  std::uint32_t bits = 8;
  std::uint32_t compression = 0;
  std::uint32_t coloursUsed = 0;
  std::uint32_t colours = 256;  ///< entries that are there
  Bytes pixels;

  Bytes bytes() const {
    ByteWriter out(ByteWriter::Order::kLittle);
    out.words({length, width, height}).number(1, 2).number(bits, 2);
    out.words({compression, 0, 0, 0, coloursUsed, 0});
    for (std::uint32_t i = 0; i < colours; ++i) {
      out.number(i, 1).number(2 * i, 1).number(3 * i, 1).number(0, 1);
    }
    return out.append(pixels).bytes;
  }
};

/// Bytes from hexadecimal digits; blanks count for nothing.
inline Bytes fromHex(const std::string& digits) {
  Bytes bytes;
  std::string byte;
  for (const char digit : digits) {
    byte += digit == ' ' ? "" : std::string(1, digit);
    if (byte.size() == 2) {
      bytes.push_back(static_cast<std::uint8_t>(std::stoi(byte, nullptr, 16)));
      byte.clear();
    }
  }
  return bytes;
}

/// The rows from the top, "/" between them: a letter from "a" on for each index, "." for blank.
inline std::string shown(const ziPicture& picture) {
  std::string text;
  for (int y = 0; y < picture.height(); ++y) {
    text += y == 0 ? "" : "/";
    for (int x = 0; x < picture.width(); ++x) {
      const std::uint16_t index = picture.at(x, y);
      text += index == ziPicture::kBlank ? '.' : static_cast<char>('a' + index);
    }
  }
  return text;
}

/// What decoding gave, in one text: the rows of the picture, then the messages, "|" before each.
inline std::string told(const ziPicture& picture, const ziMessages& messages) {
  std::string text = shown(picture);
  for (const std::string& message : messages) {
    text += '|' + message;
  }
  return text;
}

/// BMP data with a file header that nothing can be learnt from.
inline Bytes bmpOf(const Dib& dib, std::uint32_t pixelOffset = 0) {
  ByteWriter out(ByteWriter::Order::kLittle);
  out.number(0x1234, 2).words({0xFFFFFFFF, 0xFFFFFFFF, pixelOffset});
  return out.append(dib.bytes()).bytes;
}
