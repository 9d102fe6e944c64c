#include "engine/orlo3_reply_parser.h"

#include "core/json/decoding_error.h"
#include "core/json/parse_json.h"
#include "core/utf8.h"

#include <nlohmann/json.hpp>

#include <string>

namespace trellivar {

namespace {

/// None also for what the strict reader refuses: nesting without end, a key that stands twice.
std::optional<Json> parsed(std::string_view text) {
  try {
    return parseJson(text);
  } catch (const DecodingError&) {
    return std::nullopt;
  }
}

std::string target(const Json& reply) {
  const auto member = reply.find("t");
  return member != reply.end() && member->is_string() ? member->get<std::string>() : std::string();
}

std::string value(const Json& reply) {
  const auto member = reply.find("v");
  if (member == reply.end()) return {};
  return member->is_string() ? member->get<std::string>() : member->dump();
}

} // namespace

std::optional<Orlo3Reply> parseReply(std::string_view bytes) {
  if (!utf8::isValid(bytes)) return std::nullopt;
  const std::size_t first = bytes.find('{');
  const std::size_t last = bytes.rfind('}');
  if (first == std::string_view::npos || last == std::string_view::npos || last < first)
    return std::nullopt;
  const auto reply = parsed(bytes.substr(first, last - first + 1));
  if (!reply || !reply->is_object()) return std::nullopt;
  const auto op = reply->find("o");
  if (op == reply->end() || !op->is_string()) return std::nullopt;
  return Orlo3Reply{op->get<std::string>(), target(*reply), value(*reply)};
}

} // namespace trellivar
