#include "fuzz/documents.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  trellivar::fuzz::roundTrip<trellivar::StoredDeviceSignatures>(data, size);
  return 0;
}
