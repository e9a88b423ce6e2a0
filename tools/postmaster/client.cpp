#include "postmaster/client.h"

#include "link/message_numbers.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

namespace postmaster {

namespace {

constexpr std::size_t kReadBytes = std::size_t{64} * 1024;

bool wouldBlock() {
  return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

pid_t peerOf(int socket) {
  ucred credentials{};
  socklen_t size = sizeof credentials;
  const int failed = getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &credentials, &size);
  return failed != 0 ? 0 : credentials.pid;
}

/// Whether the message is a text of the log and its payload in order.
bool isLogText(const Envelope& message) {
  std::int32_t length = 0;
  if (message.header.tag != MSG_T_TEXT || message.payload.size() < sizeof length) {
    return false;
  }
  std::memcpy(&length, message.payload.data(), sizeof length);
  return length >= 0 && message.payload.size() == sizeof length + static_cast<std::size_t>(length);
}

/// Both texts as one message; null when they are not of one kind or too long for a frame.
Message join(const Envelope& first, const Envelope& second) {
  const FrameHeader& a = first.header;
  const FrameHeader& b = second.header;
  if (a.kind != b.kind || a.sender != b.sender || a.dest != b.dest) {
    return nullptr;
  }
  const auto length = static_cast<std::int32_t>(first.payload.size() + second.payload.size() -
                                                std::size_t{2} * kWordBytes);
  std::string payload(reinterpret_cast<const char*>(&length), sizeof length);
  payload.append(first.payload, kWordBytes).append(second.payload, kWordBytes);
  return withPayload(first, std::move(payload));
}

}  // namespace

Client::Client(UniqueDescriptor connected)
    : socket(std::move(connected)), peer(peerOf(socket.get())) {}

Client::ReadResult Client::read() {
  std::array<char, kReadBytes> bytes;
  const ssize_t count = ::recv(socket.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
  if (count > 0) {
    splitter.append({bytes.data(), static_cast<std::size_t>(count)});
    return ReadResult::kSome;
  }
  return count < 0 && wouldBlock() ? ReadResult::kNothing : ReadResult::kEnd;
}

bool Client::send(const Message& message) {
  if (queuedBytes() + message->text.size() > kMaxQueuedBytes) {
    return false;
  }
  append(message->text);
  lastText = isLogText(*message) ? message : nullptr;
  return true;
}

bool Client::sendJoined(const Message& message) {
  const bool isUnsent = lastText && queuedBytes() >= lastText->text.size();
  const Message joined = isUnsent && isLogText(*message) ? join(*lastText, *message) : nullptr;
  if (!joined || queuedBytes() + message->text.size() > kMaxQueuedBytes) {
    return send(message);
  }
  queue.resize(queue.size() - lastText->text.size());
  append(joined->text);
  lastText = joined;
  return true;
}

void Client::append(std::string_view text) {
  if (sent > queue.size() / 2) {
    queue.erase(0, std::exchange(sent, 0));
  }
  queue += text;
  // A broken connection shows in reading as well, after what the client sent last.
  flush();
}

bool Client::flush() {
  while (hasQueued()) {
    const ssize_t count =
        ::send(socket.get(), queue.data() + sent, queue.size() - sent, MSG_DONTWAIT | MSG_NOSIGNAL);
    if (count < 0) {
      return wouldBlock();
    }
    sent += static_cast<std::size_t>(count);
  }
  queue.clear();
  sent = 0;
  return true;
}

}  // namespace postmaster
