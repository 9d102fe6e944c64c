#include "simulator/firmware/command_reader.h"

#include "engine/orlo3_protocol.h"

#include <utility>

namespace trellivar::firmware {

namespace {

/// How every command begins; told from the middle of one by it.
constexpr std::string_view commandStart = R"({"o":")";
constexpr std::size_t mostDigits = 3;

/// Reads the parts of a header one after another, up to the end of the bytes.
class HeaderText {
public:
  explicit HeaderText(std::string_view bytes) : rest_(bytes), size_(bytes.size()) {}

  void expect(char c) {
    if (isCutOff_ || isWrong_) return;
    isCutOff_ = rest_.empty();
    isWrong_ = !isCutOff_ && rest_.front() != c;
    if (!isCutOff_ && !isWrong_) rest_.remove_prefix(1);
  }

  /// A number from 1 without leading zeros.
  int number(std::size_t digits) {
    int value = 0;
    std::size_t count = 0;
    while (count < digits && !rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9') {
      value = value * 10 + (rest_.front() - '0');
      rest_.remove_prefix(1);
      ++count;
      if (value == 0) break;
    }
    if (value == 0 && (count > 0 || !rest_.empty())) isWrong_ = true;
    return value;
  }

  bool isCutOff() const noexcept { return isCutOff_ && !isWrong_; }
  bool isWrong() const noexcept { return isWrong_; }
  std::size_t size() const noexcept { return size_ - rest_.size(); }

private:
  std::string_view rest_;
  std::size_t size_;
  bool isCutOff_ = false;
  bool isWrong_ = false;
};

} // namespace

std::vector<std::string> CommandReader::receive(std::string_view bytes) {
  unread_ += bytes;
  Commands commands;
  while (!unread_.empty() && readOne(commands)) {
  }
  return commands;
}

void CommandReader::dropUnfinished() {
  if (assembly_)
    dropAssembly();
  else if (!unread_.empty() && !isLost_)
    ++dropped_;
  unread_.clear();
  isLost_ = false;
}

bool CommandReader::readOne(Commands& commands) {
  if (isLost_) return findBeginning();
  const char first = unread_.front();
  if (first == '\r' || first == '\n' || first == ' ') {
    unread_.erase(0, 1);
    return true;
  }
  if (first == '{') return readWhole(commands);
  const Beginning beginning = beginningOf(unread_);
  if (beginning.header) return readFrame(*beginning.header, commands);
  if (beginning.isUndecided) return false;
  if (assembly_)
    dropAssembly();
  else
    ++dropped_;
  loseTrack(1);
  return true;
}

bool CommandReader::readWhole(Commands& commands) {
  JsonScanner scanner;
  const std::size_t size =
      scanner.scan(std::string_view(unread_).substr(0, Orlo3Protocol::longestUnframed));
  if (!scanner.isComplete() && size < Orlo3Protocol::longestUnframed) return false;
  if (assembly_) dropAssembly();
  if (scanner.isComplete()) {
    commands.push_back(unread_.substr(0, size));
    unread_.erase(0, size);
    totals_.clear();
  } else {
    ++dropped_;
    loseTrack(1);
  }
  return true;
}

bool CommandReader::readFrame(const Header& header, Commands& commands) {
  if (header.isFirst() || continuesAssembly(header)) return readPayload(header, commands);
  if (assembly_) dropAssembly();
  dropFrame(header);
  loseTrack(header.size);
  return true;
}

bool CommandReader::readPayload(const Header& header, Commands& commands) {
  const std::string_view payload =
      std::string_view(unread_).substr(header.size, Orlo3Protocol::framePayload);
  if (payload.empty()) return false;
  JsonScanner scanner = header.isFirst() ? JsonScanner() : assembly_->scanner;
  const bool isObject = !header.isFirst() || payload.front() == '{';
  const std::size_t size = scanner.scan(payload);
  const bool isFull = size == Orlo3Protocol::framePayload;
  if (isObject && !scanner.isComplete() && !isFull) return false;

  // From here on the frame is read, one way or another.
  if (header.isFirst()) {
    if (assembly_) dropAssembly();
    totals_.erase(header.seq);
  }
  std::string object = assembly_ ? std::move(assembly_->object) : std::string();
  assembly_.reset();
  const bool isAsAnnounced = isObject && scanner.isComplete() == header.isLast();
  if (!isAsAnnounced) {
    dropFrame(header);
    loseTrack(header.size + (isObject && scanner.isComplete() ? size : 0));
    return true;
  }
  object += payload.substr(0, size);
  unread_.erase(0, header.size + size);
  if (header.isLast())
    commands.push_back(std::move(object));
  else
    assembly_ = Assembly{header, std::move(object), scanner};
  return true;
}

bool CommandReader::findBeginning() {
  std::string_view rest = unread_;
  for (; !rest.empty(); rest.remove_prefix(1)) {
    const Beginning beginning = beginningOf(rest);
    const bool isCommand = rest.starts_with(commandStart);
    const bool isUndecided = beginning.isUndecided || commandStart.starts_with(rest);
    if (!isCommand && !beginning.header && !isUndecided) continue;
    unread_.erase(0, unread_.size() - rest.size());
    isLost_ = !isCommand && !beginning.header;
    return !isLost_;
  }
  unread_.clear();
  return false;
}

bool CommandReader::continuesAssembly(const Header& header) const {
  return assembly_ && assembly_->last.seq == header.seq && assembly_->last.total == header.total &&
         assembly_->last.index + 1 == header.index;
}

void CommandReader::dropAssembly() {
  const Header last = assembly_->last;
  assembly_.reset();
  dropFrame(last);
}

/// A command counts once, however many of its frames follow.
void CommandReader::dropFrame(const Header& header) {
  const auto known = totals_.find(header.seq);
  if (known != totals_.end() && known->second == header.total) return;
  totals_[header.seq] = header.total;
  ++dropped_;
}

void CommandReader::loseTrack(std::size_t skipped) {
  unread_.erase(0, skipped);
  isLost_ = true;
}

CommandReader::Beginning CommandReader::beginningOf(std::string_view bytes) {
  HeaderText text(bytes);
  Header header;
  text.expect('S');
  header.seq = text.number(1);
  text.expect('[');
  header.index = text.number(mostDigits);
  text.expect('/');
  header.total = text.number(mostDigits);
  text.expect(']');
  header.size = text.size();
  if (text.isWrong()) return {};
  if (text.isCutOff()) return {true, std::nullopt};
  if (header.index > header.total || header.total < 2) return {};
  return {false, header};
}

} // namespace trellivar::firmware
