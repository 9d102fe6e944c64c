#include "cli/input.h"

#include "core/json/quoted.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <fstream>
#include <istream>
#include <system_error>

namespace trellivar::cli {

namespace {

[[noreturn]] void failWithSystemReason(const std::string& file) {
  throw Failure(file + ": " + std::generic_category().message(errno));
}

std::string contentOf(std::istream& stream, const std::string& file) {
  std::string content;
  std::array<char, 65536> chunk{};
  do {
    stream.read(chunk.data(), chunk.size());
    content.append(chunk.data(), static_cast<std::size_t>(stream.gcount()));
  } while (stream);
  if (stream.bad()) failWithSystemReason(file);
  return content;
}

bool isBlank(std::string_view line) {
  return line.find_first_not_of(" \t\r") == std::string_view::npos;
}

} // namespace

std::string readInput(Context& context, const std::string& file) {
  if (file == "-") return contentOf(context.in, file);
  std::ifstream stream(file, std::ios::binary);
  if (!stream) failWithSystemReason(file);
  return contentOf(stream, file);
}

Json readDocument(Context& context, const std::string& file) {
  const std::string text = readInput(context, file);
  return decodingFile(file, [&] { return parseJson(text); });
}

void forEachRecord(Context& context, const std::string& file,
                   const std::function<void(const JsonReader&, std::size_t line)>& visit) {
  const std::string text = readInput(context, file);
  std::string_view rest = text;
  for (std::size_t line = 1; !rest.empty(); ++line) {
    const std::string_view record = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(record.size() + 1, rest.size()));
    if (isBlank(record)) continue;
    try {
      const Json json = parseJson(record);
      visit(JsonReader(json), line);
    } catch (const DecodingError& error) {
      std::string message = file;
      message.append(":").append(std::to_string(line)).append(": ");
      if (error.isAtPath()) message.append(error.where()).append(": ");
      throw BadInput(message.append(error.reason()));
    }
  }
}

int parseInteger(std::string_view name, std::string_view text) {
  const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
  const std::string_view digits = isHexadecimal ? text.substr(2) : text;
  int value = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, isHexadecimal ? 16 : 10);
  const bool isSignedHexadecimal = isHexadecimal && digits.starts_with('-');
  if (error != std::errc{} || end != digits.data() + digits.size() || isSignedHexadecimal)
    throw BadInput(std::string(name) +
                   ": expected an integer from -2147483648 to 2147483647, found " +
                   quotedJson(text));
  return value;
}

} // namespace trellivar::cli
