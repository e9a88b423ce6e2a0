#include "frames/recording_file.h"

#include "frames/lines.h"
#include "support/descriptor.h"

#include <array>
#include <cerrno>
#include <cstring>

namespace frames {

namespace {

class Loader {
 public:
  explicit Loader(bool isForHead) : endsWithHead(isForHead) {}

  /// False once the rest of the file does not matter, as that of one that cannot be read.
  bool take(std::string_view bytes) {
    Line line;
    lines.append(bytes);
    while (isGood() && lines.next(line)) {
      takeLine(line);
    }
    // What is endless must not be read to its end.
    if (isGood() && !hasHead && lines.isInOverlong() && lines.rest(line)) {
      takeLine(line);
    }
    return isGood() && !(hasHead && endsWithHead);
  }

  LoadedRecording finish() {
    Line line;
    if (isGood() && lines.rest(line)) {
      takeLine(line);
    }
    if (isGood() && !hasHead) {
      loaded.fault = "it is empty";
    }
    if (damagedLines > 0) {
      loaded.damage = std::to_string(damagedLines) +
                      (damagedLines == 1 ? " damaged line" : " damaged lines") +
                      " left out, the first is line " + firstDamage;
    }
    return std::move(loaded);
  }

 private:
  bool isGood() const { return loaded.fault.empty(); }

  void takeLine(const Line& line) {
    if (!hasHead) {
      loaded.fault = parseRecordingHead(line.text).fault;
      hasHead = true;
      return;
    }
    ParsedRecord record = parseRecordingLine(line.text);
    if (record.frame) {
      loaded.frames.push_back(std::move(*record.frame));
    } else if (damagedLines++ == 0) {
      firstDamage = std::to_string(line.number) + ": " + std::string(record.fault);
    }
  }

  bool endsWithHead;
  LineSplitter lines;
  LoadedRecording loaded;
  bool hasHead = false;
  std::size_t damagedLines = 0;
  std::string firstDamage;
};

LoadedRecording load(const std::string& fileName, bool isForHead) {
  constexpr std::size_t kReadBytes = std::size_t{64} * 1024;
  const UniqueFile file(std::fopen(fileName.c_str(), "re"));
  std::array<char, kReadBytes> bytes;
  Loader loader(isForHead);
  std::size_t count = 1;
  while (file && count > 0) {
    count = std::fread(bytes.data(), 1, bytes.size(), file.get());
    if (!loader.take({bytes.data(), count})) {
      return loader.finish();
    }
  }
  if (!file || std::ferror(file.get()) != 0) {
    return {{}, std::strerror(errno), {}};
  }
  return loader.finish();
}

}  // namespace

LoadedRecording loadRecording(const std::string& fileName) {
  return load(fileName, false);
}

std::string recordingFault(const std::string& fileName) {
  return load(fileName, true).fault;
}

}  // namespace frames
