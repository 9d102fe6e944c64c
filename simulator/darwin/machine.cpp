#include "simulator/darwin/machine.h"

#include "simulator/darwin/hid_manager.h"
#include "simulator/darwin/io_object.h"
#include "simulator/darwin/notifications.h"
#include "simulator/darwin/run_loop.h"

#include <IOKit/IOKitLib.h>

namespace trellivar::darwin_double {

namespace {

Machine* current = nullptr;

} // namespace

Machine* currentMachine() noexcept { return current; }

Machine& machine(const char* call) {
  if (current == nullptr) fail(call, "there is no platform");
  return *current;
}

Machine::Machine(desk::Desk& on)
    : desk(on),
      firstObject(lastObjectNumber()),
      firstIOName(lastIOName()),
      openError(kIOReturnNotPermitted) {
  if (current != nullptr) fail("Platform", "there is one already");
  current = this;
  registryObserver =
      desk.registry().observe([this](desk::Registry::Change change, const desk::Entry& entry) {
        rememberLastState(change, entry);
        notify(*this, change, entry);
        for (HIDManager* manager : std::vector(managers))
          manager->devicesChanged();
      });
  hidListener = desk.hid().listen([this](const desk::HIDValue& value) {
    for (HIDManager* manager : std::vector(managers))
      manager->hear(value);
  });
}

Machine::~Machine() {
  for (RunLoopTimer* timer : std::vector(timers)) {
    const Held held(timer);
    timer->invalidate();
  }
  for (MachPort* port : std::vector(ports)) {
    const Held held(port);
    port->invalidate();
  }
  for (RunLoopSource* source : std::vector(sources)) {
    const Held held(source);
    source->invalidate();
  }
  for (HIDManager* manager : std::vector(managers))
    manager->close();
  current = nullptr;
}

void Machine::inModes(Modes modes, std::function<void()> block) {
  auto guarded = [platform = std::weak_ptr(alive), block = std::move(block)] {
    if (!platform.expired()) block();
  };
  if (modes.isCommon)
    desk.queue().async(std::move(guarded));
  else
    desk.inDefaultMode(std::move(guarded));
}

Platform::Platform(desk::Desk& desk) : machine_(std::make_unique<Machine>(desk)) {}
Platform::~Platform() = default;

std::vector<std::string> Platform::liveReferences() const {
  std::vector<std::string> result = ownedObjects(machine_->firstObject);
  for (std::string& line : ownedIOObjects(machine_->firstIOName))
    result.push_back(std::move(line));
  for (const auto& port : machine_->notificationPorts) {
    if (!port->isDestroyed()) result.push_back(port->title() + ": not destroyed");
  }
  for (const RunLoopSource* source : machine_->sources) {
    if (source->owned() == 0) result.push_back(source->title() + ": still in the main run loop");
  }
  return result;
}

std::size_t Platform::taps() const {
  std::size_t count = 0;
  for (const MachPort* port : machine_->ports)
    count += port->isValid() ? 1 : 0;
  return count;
}

std::size_t Platform::scheduledTimers() const {
  std::size_t count = 0;
  for (const RunLoopTimer* timer : machine_->timers)
    count += timer->isScheduled() ? 1 : 0;
  return count;
}

void Platform::setUntrustedTap(UntrustedTap behaviour) { machine_->untrustedTap = behaviour; }
void Platform::setDevicePerDictionary(bool each) { machine_->devicePerDictionary = each; }
void Platform::setPostedSender(std::int64_t sender) { machine_->postedSender = sender; }
void Platform::setProcessId(std::int64_t processId) { machine_->processId = processId; }
std::int64_t Platform::processId() const { return machine_->processId; }
void Platform::setOpenError(int error) { machine_->openError = error; }

void Platform::setPointer(double x, double y) {
  machine_->pointerX = x;
  machine_->pointerY = y;
}

void Platform::duringNextIteration(std::function<void()> block) {
  machine_->duringIteration = std::move(block);
}

const std::vector<Platform::Prompt>& Platform::prompts() const { return machine_->prompts; }

} // namespace trellivar::darwin_double
