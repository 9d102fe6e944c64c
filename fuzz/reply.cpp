#include "core/utf8.h"
#include "engine/orlo3_reply_parser.h"
#include "fuzz/check.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <cstdint>
#include <string>

using namespace trellivar;

namespace {

std::string written(const Orlo3Reply& reply) {
  return nlohmann::json{{"o", reply.op}, {"t", reply.target}, {"v", reply.value}}.dump();
}

} // namespace

/// Whatever arrives: a reply is valid text, comes from one object, and is read back as it is,
/// behind noise without braces too; and two of it in a row are none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const auto reply = parseReply(bytes);
  if (!reply) return 0;
  FUZZ_CHECK(utf8::isValid(bytes));
  FUZZ_CHECK(bytes.find('{') < bytes.rfind('}'));
  for (const std::string* text : {&reply->op, &reply->target, &reply->value})
    FUZZ_CHECK(utf8::isValid(*text));
  FUZZ_CHECK(parseReply(written(*reply)) == reply);
  FUZZ_CHECK(parseReply("boot\r\n" + bytes + "\r\n") == reply);
  FUZZ_CHECK(!parseReply(bytes + bytes));
  return 0;
}
