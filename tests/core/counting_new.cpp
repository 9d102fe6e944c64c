#include "tests/core/counting_new.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace trellivar {

namespace {

std::atomic<std::size_t> count{0};

void* countedOrNull(std::size_t size) noexcept {
  ++count;
  return std::malloc(size == 0 ? 1 : size);
}

void* countedOrNull(std::size_t size, std::align_val_t alignment) noexcept {
  ++count;
  const auto step = static_cast<std::size_t>(alignment);
  return std::aligned_alloc(step, (size + step - 1) / step * step);
}

void* orThrow(void* memory) {
  if (!memory) throw std::bad_alloc();
  return memory;
}

} // namespace

std::size_t allocationCount() noexcept { return count; }

} // namespace trellivar

// Every form is replaced, since sanitizers bring forms of their own that do not end in these.

using trellivar::countedOrNull;
using trellivar::orThrow;

void* operator new(std::size_t size) { return orThrow(countedOrNull(size)); }
void* operator new[](std::size_t size) { return orThrow(countedOrNull(size)); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return countedOrNull(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return countedOrNull(size);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
  return orThrow(countedOrNull(size, alignment));
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
  return orThrow(countedOrNull(size, alignment));
}
void* operator new(std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return countedOrNull(size, alignment);
}
void* operator new[](std::size_t size, std::align_val_t alignment, const std::nothrow_t&) noexcept {
  return countedOrNull(size, alignment);
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
  std::free(memory);
}
void operator delete[](void* memory, std::align_val_t, const std::nothrow_t&) noexcept {
  std::free(memory);
}
