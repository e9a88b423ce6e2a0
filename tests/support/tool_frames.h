#pragma once

#include <string>
#include <vector>

#include "frames/recording.h"
#include "tests/support/basics.h"
#include "tests/support/message.h"

/// A message of the tester's or the user interface's table, as the tools take it.
inline frames::Message frameOf(int sender, int dest, int tag, std::vector<Parameter> values = {}) {
  const int kind = dest == 0 ? kFrameUndirected : kFrameDirected;
  return frames::parseText(toWire({kind, tag, sender, dest, std::move(values)})).message;
}

inline frames::Message toWindow(int tag, std::vector<Parameter> values = {}) {
  return frameOf(NELKV, NELKVUI, tag, std::move(values));
}
inline frames::Message ofWindow(int tag, std::vector<Parameter> values = {}) {
  return frameOf(NELKVUI, NELKV, tag, std::move(values));
}
