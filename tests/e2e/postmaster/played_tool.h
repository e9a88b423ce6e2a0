#pragma once

#include <string>
#include <string_view>

inline constexpr std::string_view kPlayTool = "--play-tool";

/// What a played tool does once it is connected.
enum class ToolManner {
  kObedient,  ///< answers 13000 and ends with status 0
  kDeciding,  ///< answers 13000 and stays until it is killed
  kCrashing,  ///< kills itself on the first message
  kDeaf,      ///< never reads again and ignores SIGTERM
};

/// The command that makes nelmpm start this test program as a tool of `toolType`.
std::string playedTool(int toolType, ToolManner manner);

/// Entry of the played tool.
int playTool(int argc, char** argv);
