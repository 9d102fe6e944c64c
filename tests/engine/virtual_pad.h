#pragma once

#include "engine/orlo3_serial_link.h"
#include "simulator/firmware/faulty_pad.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// A link to a pad without a port of the system and without waiting.
namespace trellivar {

/// Time that passes only by sleeping.
class VirtualClock : public LinkClock {
public:
  Instant now() override { return now_; }
  void sleep(Seconds duration) override {
    if (++sleeps_ > 100'000) throw std::logic_error("this never ends");
    now_ += duration;
  }
  Seconds elapsed() const { return now_.time_since_epoch(); }

private:
  Instant now_{};
  int sleeps_ = 0;
};

/// How the computer's side of a port misbehaves.
struct PortFaults {
  std::size_t mostPerWrite = std::numeric_limits<std::size_t>::max();
  std::size_t room = std::numeric_limits<std::size_t>::max(); ///< for bytes that the pad leaves
  Seconds fullFrom{0};                                        ///< takes nothing from this time on
  Seconds fullUntil{0};                                       ///< and before this one
  std::optional<int> failsFrom = {}; ///< the write, counted from 1, from which on none succeeds
};

/// What a test looks at afterwards.
struct PortRecord {
  struct Write {
    double at;
    std::string bytes; ///< as far as they were taken
    friend bool operator==(const Write&, const Write&) = default;
  };
  std::vector<Write> writes;
  int attempts = 0;
  int opened = 0;
  int closed = 0;

  std::vector<std::string> lines() const {
    std::vector<std::string> all;
    for (const Write& write : writes)
      all.push_back(write.bytes);
    return all;
  }
};

class MemoryPort : public SerialPort {
public:
  MemoryPort(firmware::FaultyPad& pad, LinkClock& clock, const PortFaults& faults,
             PortRecord& record, std::string pending)
      : pad_(pad), clock_(clock), faults_(faults), record_(record) {
    ++record_.opened;
    if (!pending.empty()) coming_.push_back({clock.now(), std::move(pending)});
  }
  ~MemoryPort() override { ++record_.closed; }

  void discardInput() override {
    while (hasArrived())
      coming_.pop_front();
  }

  std::optional<std::size_t> write(std::string_view bytes) override {
    ++record_.attempts;
    if (pad_.isUnplugged() || (faults_.failsFrom && record_.attempts >= *faults_.failsFrom))
      return std::nullopt;
    const Seconds time = clock_.now().time_since_epoch();
    if (time >= faults_.fullFrom && time < faults_.fullUntil) return 0;
    const std::size_t taken = std::min({bytes.size(), faults_.mostPerWrite, room()});
    if (taken > 0) record_.writes.push_back({time.count(), std::string(bytes.substr(0, taken))});
    unread_ += bytes.substr(0, taken);
    const std::size_t eaten = std::min(unread_.size(), pad_.appetite());
    for (std::string& text : pad_.receive(unread_.substr(0, eaten)))
      coming_.push_back({clock_.now() + Seconds(pad_.faults().delay), std::move(text)});
    unread_.erase(0, eaten);
    return taken;
  }

  std::string read() override {
    if (!hasArrived()) return {};
    std::string text = std::move(coming_.front().text);
    coming_.pop_front();
    return text;
  }

private:
  struct Coming {
    Instant at;
    std::string text;
  };
  std::size_t room() const {
    constexpr auto endless = std::numeric_limits<std::size_t>::max();
    const std::size_t appetite = pad_.appetite();
    return (appetite > endless - faults_.room ? endless : appetite + faults_.room) - unread_.size();
  }
  bool hasArrived() const { return !coming_.empty() && coming_.front().at <= clock_.now(); }

  firmware::FaultyPad& pad_;
  LinkClock& clock_;
  PortFaults faults_;
  PortRecord& record_;
  std::string unread_; ///< by the pad
  std::deque<Coming> coming_;
};

/// A pad on the cable, and a link to it.
class VirtualPad {
public:
  explicit VirtualPad(firmware::Faults faults = {}, PortFaults portFaults = {})
      : pad_(firmware, faults), portFaults_(portFaults) {}
  explicit VirtualPad(PortFaults portFaults) : VirtualPad(firmware::Faults{}, portFaults) {}
  VirtualPad(const VirtualPad&) = delete;
  VirtualPad& operator=(const VirtualPad&) = delete;

  VirtualClock clock;
  firmware::PadFirmware firmware;
  PortRecord record;
  std::string pending; ///< bytes that wait in the port when it is opened
  Orlo3SerialLink link{[] { return "/dev/pad"; }, clock,
                       [this](const std::string&) {
                         return std::make_unique<MemoryPort>(pad_, clock, portFaults_, record,
                                                             pending);
                       }};

private:
  firmware::FaultyPad pad_;
  PortFaults portFaults_;
};

} // namespace trellivar
