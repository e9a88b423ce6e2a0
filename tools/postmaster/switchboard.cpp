// A client's id is its descriptor. Clients that are done for are only marked while frames are on
// their way and deleted at the end of each public operation: routing can reach any client, also
// the one whose frame is being handled.
#include "postmaster/switchboard.h"

#include "link/message_numbers.h"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace postmaster {

namespace {

constexpr std::size_t kMaxClients = 64;

}  // namespace

Switchboard::Switchboard(Identity identity, Complaints& complaintsOut,
                         const Witnesses& witnessesOfAll, WindowService windowService)
    : router(std::move(identity)),
      complaints(complaintsOut),
      witnesses(witnessesOfAll),
      window(std::move(windowService)) {}

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
  const bool isConverted = window.charset && router.toolTypeOf(client.fd()) == NELKVUI;
  const Message message = isConverted ? window.charset->fromWindow(parsed.message) : parsed.message;
  const Routing routing = router.frameCame(client.fd(), message);
  showToWitnesses(message, routing.refusal);
  if (message->header.tag == MSG_SHUTDOWN_ACK && routing.refusal.empty()) {
    answeredProcesses.insert(client.pid());
  }
  if (!routing.refusal.empty() && routing.isNews) {
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
    showToWitnesses(delivery.message, {});
  }
  const bool isWindow = router.toolTypeOf(client.fd()) == NELKVUI;
  if (!(isWindow ? sendToWindow(client, delivery.message) : client.send(delivery.message))) {
    complaints.say(nameOf(client) + " dropped: it does not read, and more than " +
                   std::to_string(kMaxQueuedBytes) + " bytes wait for it");
    drop(client, LeaveReason::kDropped);
    return;
  }
  if (delivery.closeAfterwards) {
    client.closeAfterFlush();
  }
}

bool Switchboard::sendToWindow(Client& client, const Message& message) {
  const std::vector<Message> messages =
      window.charset ? window.charset->toWindow(message) : std::vector{message};
  return std::all_of(messages.begin(), messages.end(), [&](const Message& one) {
    return window.joinsTexts ? client.sendJoined(one) : client.send(one);
  });
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

void Switchboard::tellUser(const Message& message) {
  deliver(router.tellUser(message).deliveries);
  bury();
}

void Switchboard::play(const Message& message) {
  showToWitnesses(message, {});
  tellUser(message);
}

bool Switchboard::canPlay() const {
  return std::any_of(clients.begin(), clients.end(), [this](const auto& entry) {
    return router.toolTypeOf(entry.first) == NELKVUI && entry.second->queuedBytes() <= kHoldBytes;
  });
}

void Switchboard::warnUser(const std::string& caption, const std::string& text) {
  deliver(router.warnUser(caption, text).deliveries);
  bury();
}

bool Switchboard::askUser(const std::string& caption, const std::string& text) {
  const Routing routing = router.askUser(caption, text);
  deliver(routing.deliveries);
  bury();
  return !routing.deliveries.empty();
}

void Switchboard::awaitTester(bool comes) {
  deliver(router.awaitTester(comes).deliveries);
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

void Switchboard::showToWitnesses(const Message& message, std::string_view refusal) {
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
