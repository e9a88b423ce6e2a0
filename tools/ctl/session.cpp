#include "ctl/session.h"

#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/port_control.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <variant>

namespace ctl {

namespace {

namespace fs = std::filesystem;

/// The socket of the session that is running: "<prefix><port>.<process id>", of which there is one.
std::optional<sockaddr_un> findSocket() {
  int port = 0;
  std::ifstream(portFileName()) >> port;
  const fs::path start = rendezvousPrefix() + std::to_string(port) + ".";
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(start.parent_path(), error)) {
    const std::string name = entry.path().string();
    sockaddr_un address{AF_UNIX, {}};
    if (name.starts_with(start.string()) && name.size() < sizeof address.sun_path &&
        entry.is_socket(error)) {
      std::copy(name.begin(), name.end(), std::begin(address.sun_path));
      return address;
    }
  }
  return std::nullopt;
}

bool hasTesterLeft(const frames::Envelope& news) {
  const frames::Parameters parameters = frames::parametersOf(news);
  const auto* tool =
      parameters.values.empty() ? nullptr : std::get_if<std::int32_t>(&parameters.values.front());
  return tool != nullptr && *tool == NELKV;
}

}  // namespace

std::string Session::open(TimePoint deadline) {
  const std::optional<sockaddr_un> address = findSocket();
  socket = UniqueDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!address ||
      connect(socket.get(), reinterpret_cast<const sockaddr*>(&*address), sizeof *address) != 0) {
    return "no session is running";
  }
  send(NELMPM, MSG_CONNECT, {});
  const frames::Message answer = receive(deadline);
  if (!answer) {
    return "the Postmaster does not answer";
  }
  return answer->header.tag == MSG_CONNECT_OK ? "" : "another command is under way";
}

int Session::run(const std::string& command, TimePoint deadline, std::ostream& output) {
  if (!send(NELKV, MSG_UI_COMMAND, ToolMessage().setText(0, command.c_str()))) {
    return fail(kExitFailure, "the command is too long");
  }
  while (const frames::Message message = receive(deadline)) {
    switch (message->header.tag) {
      case MSG_T_TEXT:
        output << frames::parametersOf(*message).text(0) << std::flush;
        break;
      case MSG_T_PROMPT:
        if (frames::parametersOf(*message).text(0) == command) {
          return kExitConfirmed;
        }
        break;
      case MSG_TOOL_LEFT:
        if (hasTesterLeft(*message)) {
          return fail(kExitFailure, "there is no tester");
        }
        break;
      case MSG_SHUTDOWN:
        return fail(kExitFailure, "the session ends");
      default:
        break;
    }
  }
  return isTimedOut ? fail(kExitTimeout, "the command was not confirmed in time")
                    : fail(kExitFailure, "the session has ended");
}

bool Session::send(int dest, int tag, const ToolMessage& parameters) {
  std::array<char, kMaxPayloadBytes> payload;
  const int length = EncodeMessage(tag, parameters, payload, MessageDirection::kSentByUi);
  if (length < 0) {
    return false;
  }
  std::array<char, kMaxSentFrameText> text;
  const int used = encodeFrame({kFrameDirected, tag, EXTERNAL, dest, length}, payload.data(), text);
  // A send that fails shows in the reading that follows.
  ::send(socket.get(), text.data(), static_cast<std::size_t>(used), MSG_NOSIGNAL);
  return true;
}

/// The next message; null at the end of the connection and at the deadline.
frames::Message Session::receive(TimePoint deadline) {
  while (true) {
    std::string text;
    while (frames.next(text) == postmaster::FrameSplitter::Item::kFrame) {
      if (frames::Message message = frames::parseText(std::move(text)).message) {
        return message;
      }
    }
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    pollfd entry{socket.get(), POLLIN, 0};
    constexpr std::int64_t kLongest = 1'000'000'000;
    const int ready =
        poll(&entry, 1, static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, kLongest)));
    if (ready == 0) {
      isTimedOut = true;
      return nullptr;
    }
    std::array<char, 65536> bytes;
    const ssize_t count = ready < 0 ? -1 : recv(socket.get(), bytes.data(), bytes.size(), 0);
    if (count == 0 || (count < 0 && errno != EINTR)) {
      return nullptr;
    }
    frames.append({bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))});
  }
}

int Session::fail(int status, std::string text) {
  why = std::move(text);
  return status;
}

}  // namespace ctl
