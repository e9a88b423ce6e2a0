// A client's id is its descriptor. Clients that are done for are only marked while frames are on
// their way and deleted at the end of each public operation: routing can reach any client, also
// the one whose frame is being handled.
#include "postmaster/switchboard.h"

#include "link/message_numbers.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

namespace postmaster {

namespace {

constexpr std::size_t kMaxClients = 64;
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

bool Client::send(std::string_view text) {
  if (queuedBytes() + text.size() > kMaxQueuedBytes) {
    return false;
  }
  if (sent > queue.size() / 2) {
    queue.erase(0, std::exchange(sent, 0));
  }
  queue += text;
  // A broken connection shows in reading as well, after what the client sent last.
  flush();
  return true;
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

Switchboard::Switchboard(Identity identity, Complaints& complaintsOut,
                         const Witnesses& witnessesOfAll)
    : router(std::move(identity)), complaints(complaintsOut), witnesses(witnessesOfAll) {}

void Switchboard::acceptAll(int listener) {
  while (true) {
    UniqueDescriptor socket(accept4(listener, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC));
    if (!socket.isOpen()) {
      if (errno != EAGAIN && errno != EINTR && errno != ECONNABORTED) {
        complaints.say(std::string("cannot accept a connection: ") + std::strerror(errno));
      }
      return;
    }
    if (clients.size() >= kMaxClients) {
      complaints.say("too many connections, one more was closed");
      continue;
    }
    const ClientId id = socket.get();
    clients[id] = std::make_unique<Client>(std::move(socket));
  }
}

void Switchboard::appendPollEntries(std::vector<pollfd>& entries) const {
  for (const auto& [id, client] : clients) {
    const int reading = client->isHeld() ? 0 : POLLIN;
    const int writing = client->hasQueued() ? POLLOUT : 0;
    // Without either, a client that has hung up would not let poll sleep.
    if ((reading | writing) != 0) {
      entries.push_back({id, static_cast<short>(reading | writing), 0});
    }
  }
}

void Switchboard::serve(const pollfd& entry) {
  const auto found = clients.find(entry.fd);
  if (found == clients.end() || entry.revents == 0) {
    return;
  }
  Client& client = *found->second;
  const bool broken = (entry.revents & POLLOUT) != 0 && !client.flush();
  if (client.isHeld() && broken) {
    readToEnd(client);
  } else if (!client.isHeld() && (entry.revents & (POLLIN | POLLHUP | POLLERR)) != 0) {
    readFrom(client);
  } else if (broken) {
    hangUp(client);
  }
  releaseHeld();
  bury();
}

void Switchboard::readFrom(Client& client) {
  switch (client.read()) {
    case Client::ReadResult::kSome:
      takeFrames(client);
      break;
    case Client::ReadResult::kNothing:
      break;
    case Client::ReadResult::kEnd:
      hangUp(client);
      break;
  }
}

void Switchboard::hangUp(Client& client) {
  if (client.input().isMidFrame()) {
    complaints.say(nameOf(client) + " hung up in the middle of a frame");
  }
  drop(client, LeaveReason::kHungUp);
}

void Switchboard::takeFrames(Client& client) {
  std::string text;
  while (!client.isDead() && !client.isHeld()) {
    switch (client.input().next(text)) {
      case FrameSplitter::Item::kNone:
        return;
      case FrameSplitter::Item::kOversized:
        complaints.say("frame from " + nameOf(client) + " dropped: longer than " +
                       std::to_string(kMaxFrameText) + " bytes");
        break;
      case FrameSplitter::Item::kFrame:
        takeFrame(client, std::move(text));
        break;
    }
  }
}

void Switchboard::takeFrame(Client& client, std::string text) {
  if (client.isClosing()) {
    return;
  }
  const ParsedText parsed = parseText(std::move(text));
  if (parsed.message == nullptr) {
    complaints.say("frame from " + nameOf(client) + " dropped: " + std::string(parsed.fault));
    return;
  }
  const std::string sender = nameOf(client);
  const Routing routing = router.frameCame(client.fd(), parsed.message);
  showToWitnesses(*parsed.message, routing.refusal);
  if (parsed.message->header.tag == MSG_SHUTDOWN_ACK && routing.refusal.empty()) {
    answeredProcesses.insert(client.pid());
  }
  if (!routing.refusal.empty()) {
    complaints.say("frame from " + sender + " refused: " + routing.refusal);
  }
  deliver(routing.deliveries);
  holdBack(client, routing.deliveries);
}

/// Not at the end: what a tool has to say then must be heard.
void Switchboard::holdBack(Client& sender, const std::vector<Delivery>& deliveries) {
  for (const Delivery& delivery : deliveries) {
    const auto found = clients.find(delivery.client);
    const bool isSlow = found != clients.end() && !found->second->isDead() &&
                        found->second->queuedBytes() > kHoldBytes;
    if (isSlow && !ending && delivery.client != sender.fd()) {
      sender.holdFor(delivery.client);
    }
  }
}

bool Switchboard::isStillSlow(ClientId id) const {
  const auto found = clients.find(id);
  return found != clients.end() && !found->second->isDead() &&
         found->second->queuedBytes() > kHoldBytes / 2;
}

void Switchboard::releaseHeld() {
  for (const auto& [id, client] : clients) {
    if (client->isHeld() && (ending || !isStillSlow(client->slowOne()))) {
      client->release();
      takeFrames(*client);
    }
  }
}

/// Reads all that a client has left, however slow others are, and hangs up.
void Switchboard::readToEnd(Client& client) {
  while (!client.isDead()) {
    do {
      client.release();
      takeFrames(client);
    } while (client.isHeld());
    if (!client.isDead() && client.read() != Client::ReadResult::kSome) {
      hangUp(client);
    }
  }
}

void Switchboard::deliver(const std::vector<Delivery>& deliveries) {
  for (const Delivery& delivery : deliveries) {
    const auto found = clients.find(delivery.client);
    if (found != clients.end() && !found->second->isDead()) {
      writeTo(*found->second, delivery);
    }
  }
}

void Switchboard::writeTo(Client& client, const Delivery& delivery) {
  if (delivery.message->header.sender == NELMPM) {
    showToWitnesses(*delivery.message, {});
  }
  if (!client.send(delivery.message->text)) {
    complaints.say(nameOf(client) + " dropped: it does not read, and more than " +
                   std::to_string(kMaxQueuedBytes) + " bytes wait for it");
    drop(client, LeaveReason::kDropped);
    return;
  }
  if (delivery.closeAfterwards) {
    client.closeAfterFlush();
  }
}

void Switchboard::drop(Client& client, LeaveReason reason) {
  client.markDead();
  departures = true;
  deliver(router.connectionLost(client.fd(), reason).deliveries);
}

void Switchboard::bury() {
  for (auto it = clients.begin(); it != clients.end();) {
    const Client& client = *it->second;
    const bool finished = client.isClosing() && !client.hasQueued();
    departures = departures || finished;
    it = finished || client.isDead() ? clients.erase(it) : std::next(it);
  }
}

void Switchboard::processEnded(pid_t pid) {
  for (const auto& [id, client] : clients) {
    if (client->pid() == pid) {
      readToEnd(*client);
    }
  }
  releaseHeld();
  bury();
}

int Switchboard::toolTypeOf(pid_t pid) const {
  for (const auto& [id, client] : clients) {
    if (client->pid() == pid && router.toolTypeOf(id) != 0) {
      return router.toolTypeOf(id);
    }
  }
  return 0;
}

void Switchboard::warnUser(const std::string& caption, const std::string& text) {
  deliver(router.warnUser(caption, text).deliveries);
  bury();
}

void Switchboard::shutDown(ShutdownReason reason, int graceMilliseconds) {
  ending = true;
  releaseHeld();
  deliver(router.shutDown(reason, graceMilliseconds).deliveries);
  bury();
}

bool Switchboard::shutDownNow(Router::Targets targets) {
  const Routing routing = router.shutDownNow(targets);
  deliver(routing.deliveries);
  bury();
  return !routing.deliveries.empty();
}

bool Switchboard::takeDepartures() {
  return std::exchange(departures, false);
}

void Switchboard::showToWitnesses(const Envelope& message, std::string_view refusal) {
  for (const auto& witness : witnesses) {
    witness->saw(message, refusal);
  }
}

std::string Switchboard::nameOf(const Client& client) const {
  const int type = router.toolTypeOf(client.fd());
  const std::string process = "process " + std::to_string(client.pid());
  return type != 0 ? toolName(type) + " (" + process + ")" : process;
}

}  // namespace postmaster
