#include "benchmarks/bench_postmaster.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <stdexcept>
#include <utility>

using std::chrono::ceil;
using std::chrono::milliseconds;

void BenchPostmaster::serve(milliseconds limit) {
  const std::size_t before = arrived.size();
  const auto end = Clock::now() + limit;
  for (auto left = limit; arrived.size() == before && left >= milliseconds(0);
       left = ceil<milliseconds>(end - Clock::now())) {
    const bool isWriting = sent < outgoing.size();
    pollfd entry = {connection.isOpen() ? connection.get() : rendezvous.listener(), POLLIN, 0};
    if (connection.isOpen() && isWriting) {
      entry.events |= POLLOUT;
    }
    ::poll(&entry, 1, static_cast<int>(left.count()));
    if (!connection.isOpen()) {
      connection = rendezvous.accept();
    }
    if (connection.isOpen()) {
      readAll();
      takeApart();
      writeAll();
    }
    if (left == milliseconds(0)) {
      return;
    }
  }
}

void BenchPostmaster::pause(milliseconds time) {
  const auto end = Clock::now() + time;
  for (auto left = time; left > milliseconds(0); left = ceil<milliseconds>(end - Clock::now())) {
    serve(left);
  }
}

std::string BenchPostmaster::frame(int tag, std::vector<Parameter> parameters) {
  if (tag >= MSG_UI_OK && tag <= MSG_UI_SIGNAL_PARAM) {
    return toWire({kFrameDirected, tag, NELKVUI, NELKV, std::move(parameters)});
  }
  const int sender = tag >= MSG_T_TEXT && tag <= MSG_T_ASK_RANGE ? NELKV : NELMPM;
  return toWire({kFrameDirected, tag, sender, NELKVUI, std::move(parameters)});
}

void BenchPostmaster::send(int tag, std::vector<Parameter> parameters) {
  outgoing += frame(tag, std::move(parameters));
}

bool BenchPostmaster::take(int tag, const std::string& text) {
  const auto found = std::find_if(arrived.begin(), arrived.end(), [&](const Arrived& one) {
    return one.message.tag == tag && (text.empty() || one.message.text() == text);
  });
  if (found == arrived.end()) {
    return false;
  }
  taken = found->when;
  arrived.erase(found);
  return true;
}

BenchPostmaster::Clock::time_point BenchPostmaster::await(int tag, std::chrono::seconds limit,
                                                          const std::string& text) {
  const auto end = Clock::now() + limit;
  while (!take(tag, text)) {
    if (Clock::now() > end) {
      throw std::runtime_error("no message " + std::to_string(tag) + " came");
    }
    serve(milliseconds(1000));
  }
  return taken;
}

std::string BenchPostmaster::takeTexts(int tag) {
  std::string texts;
  std::erase_if(arrived, [&](const Arrived& one) {
    if (one.message.tag == tag) {
      texts += one.message.text();
    }
    return one.message.tag == tag;
  });
  return texts;
}

void BenchPostmaster::readAll() {
  std::array<char, 65536> chunk;
  for (;;) {
    const ssize_t count = ::recv(connection.get(), chunk.data(), chunk.size(), MSG_DONTWAIT);
    if (count <= 0) {
      if (count == 0 || errno == ECONNRESET) {
        throw std::runtime_error("the program has hung up");
      }
      return;
    }
    received.append(chunk.data(), static_cast<std::size_t>(count));
  }
}

void BenchPostmaster::writeAll() {
  while (sent < outgoing.size()) {
    const ssize_t count = ::send(connection.get(), outgoing.data() + sent, outgoing.size() - sent,
                                 MSG_DONTWAIT | MSG_NOSIGNAL);
    if (count <= 0) {
      return;
    }
    sent += static_cast<std::size_t>(count);
  }
  outgoing.clear();
  sent = 0;
}

void BenchPostmaster::takeApart() {
  for (std::size_t end = 0; (end = received.find('\0')) != std::string::npos;) {
    Message message = fromWire(received.substr(0, end));
    received.erase(0, end + 1);
    if (message.tag == MSG_CONNECT) {
      // The start of the poll timer goes out with the acceptance, as the tester's does at once. Of
      // the two tools that are told of the other one is the partner.
      send(MSG_CONNECT_OK, {0, 0, 0, 2, "bench"});
      send(MSG_START_POLL_TIMER, {});
    }
    arrived.push_back({std::move(message), Clock::now()});
  }
}
