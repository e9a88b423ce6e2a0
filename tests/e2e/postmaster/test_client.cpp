#include "tests/e2e/postmaster/test_client.h"

#include "link/message_numbers.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <array>

using postmaster::Envelope;
using postmaster::FrameSplitter;

TestClient::TestClient(const std::string& path)
    : socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  connected = connect(socket.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
}

void TestClient::sendBytes(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::send(socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count <= 0) {
      return;
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void TestClient::directed(int sender, int dest, int tag, std::string_view payload) {
  const auto length = static_cast<std::int32_t>(payload.size());
  sendBytes(wireText({kFrameDirected, tag, sender, dest, length}, payload));
}

void TestClient::broadcast(int sender, int tag) {
  sendBytes(wireText({kFrameUndirected, tag, sender, 0, 0}));
}

int TestClient::connectAs(int toolType) {
  directed(toolType, NELMPM, MSG_CONNECT);
  return receiveTag();
}

std::optional<Envelope> TestClient::receive() {
  std::string text;
  while (splitter.next(text) != FrameSplitter::Item::kFrame) {
    if (!readSome()) {
      return std::nullopt;
    }
  }
  const postmaster::Message message = postmaster::parseText(std::move(text)).message;
  return message != nullptr ? std::optional(*message) : std::nullopt;
}

int TestClient::receiveTag() {
  const std::optional<Envelope> message = receive();
  return message ? message->header.tag : 0;
}

bool TestClient::seesEnd() {
  while (readSome()) {
  }
  char byte = 0;
  return recv(socket.get(), &byte, 1, MSG_DONTWAIT) == 0;
}

bool TestClient::readSome() {
  pollfd entry{socket.get(), POLLIN, 0};
  if (poll(&entry, 1, std::chrono::milliseconds(kPatience).count()) != 1) {
    return false;
  }
  std::array<char, 65536> bytes;
  const ssize_t count = recv(socket.get(), bytes.data(), bytes.size(), 0);
  if (count > 0) {
    splitter.append({bytes.data(), static_cast<std::size_t>(count)});
  }
  return count > 0;
}
