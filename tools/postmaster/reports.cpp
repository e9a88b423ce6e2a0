#include "postmaster/reports.h"

#include <utility>

namespace postmaster {

namespace {

constexpr std::chrono::seconds kQuietTime{1};
constexpr std::size_t kMaxRemembered = 64;

}  // namespace

Complaints::Complaints(std::ostream& stream, Clock timeSource)
    : output(stream), clock(std::move(timeSource)) {}

Complaints::~Complaints() {
  flush();
}

void Complaints::say(const std::string& line) {
  const TimePoint now = clock();
  const auto known = recent.find(line);
  if (known == recent.end()) {
    if (recent.size() >= kMaxRemembered) {
      flush();
    }
    write(line, 0);
    recent[line] = {now, 0};
    return;
  }
  Entry& entry = known->second;
  if (now - entry.written < kQuietTime) {
    ++entry.repetitions;
    return;
  }
  write(line, entry.repetitions);
  entry = {now, 0};
}

void Complaints::flush() {
  for (const auto& [line, entry] : recent) {
    if (entry.repetitions > 0) {
      write(line, entry.repetitions);
    }
  }
  recent.clear();
}

void Complaints::write(const std::string& line, int repetitions) {
  output << "nelmpm: " << line;
  if (repetitions > 0) {
    output << " [" << repetitions << " more since the last]";
  }
  output << std::endl;
}

}  // namespace postmaster
