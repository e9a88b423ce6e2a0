#include "support/rwc_string.h"

#include <utility>

namespace {

const std::shared_ptr<std::string>& emptyData() {
  static const auto empty = std::make_shared<std::string>();
  return empty;
}

}  // namespace

RWCString::RWCString() : data(emptyData()) {}

RWCString::RWCString(const char* text)
    : data(text != nullptr && *text != '\0' ? std::make_shared<std::string>(text) : emptyData()) {}

RWCString::RWCString(std::string_view text)
    : data(text.empty() ? emptyData() : std::make_shared<std::string>(text)) {}

RWCString::RWCString(std::string text)
    : data(text.empty() ? emptyData() : std::make_shared<std::string>(std::move(text))) {}

void RWCString::setAt(std::size_t index, char c) {
  unshared()[index] = c;
}

RWCString& RWCString::append(std::string_view text) {
  if (!text.empty()) {
    // `text` may point into the very characters that are about to be copied or to grow.
    const std::shared_ptr<std::string> kept = data;
    unshared().append(text);
  }
  return *this;
}

std::string& RWCString::unshared() {
  if (isShared()) {
    data = std::make_shared<std::string>(*data);
  }
  return *data;
}
