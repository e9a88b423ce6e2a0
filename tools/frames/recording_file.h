#pragma once

#include "frames/recording.h"

#include <string>
#include <vector>

namespace frames {

/// All of a recording. Damaged lines are left out.
struct LoadedRecording {
  std::vector<RecordedFrame> frames;
  std::string fault;   ///< why the file cannot be read as a recording; empty when it can
  std::string damage;  ///< what of it was left out and why, for people; empty for nothing
};
LoadedRecording loadRecording(const std::string& fileName);

/// That `fault` alone, by the beginning of the file.
std::string recordingFault(const std::string& fileName);

}  // namespace frames
