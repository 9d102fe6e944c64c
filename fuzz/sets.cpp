#include "cli/diagnostics_json.h"
#include "fuzz/documents.h"

using namespace trellivar;

/// A document that decodes also compiles, always to the same table, without identities that do
/// nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    const Json document = parseJson({reinterpret_cast<const char*>(data), size});
    const auto sets = cli::decodeSets(JsonReader(document));
    const MappingTable table = MappingTable::compile(sets);
    FUZZ_CHECK(table == MappingTable::compile(sets));
    for (const auto& [identity, compiled] : table.identities)
      FUZZ_CHECK(!compiled.isEmpty());
  } catch (const DecodingError& error) {
    fuzz::checkError(error);
  }
  return 0;
}
