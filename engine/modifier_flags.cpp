#include "engine/modifier_flags.h"

#include "core/modifier.h"

namespace trellivar::modifier_flags {

namespace {

using Row = keytable::ModifierRow;

const Row* rowOf(KeyName name) noexcept {
  for (const Row& row : keytable::modifiers) {
    if (row.name == name.text()) return &row;
  }
  return nullptr;
}

/// The side-specific flags of both sides.
std::uint64_t sides(const Row& row) noexcept {
  return row.device | keytable::modifiers[row.opposite].device;
}

} // namespace

std::uint64_t all() noexcept {
  std::uint64_t flags = 0;
  for (const Row& row : keytable::modifiers)
    flags |= row.generic | row.device;
  return flags;
}

bool isDown(std::uint64_t flags, KeyName name) noexcept {
  const Row* row = rowOf(name);
  if (!row) return false;
  return (flags & ((flags & sides(*row)) != 0 ? row->device : row->generic)) != 0;
}

std::uint64_t pressing(std::uint64_t flags, KeyName name) noexcept {
  const Row* row = rowOf(name);
  return row ? flags | row->generic | row->device : flags;
}

std::uint64_t releasing(std::uint64_t flags, KeyName name) noexcept {
  const Row* row = rowOf(name);
  if (!row) return flags;
  flags &= ~row->device;
  return (flags & sides(*row)) != 0 ? flags : flags & ~row->generic;
}

} // namespace trellivar::modifier_flags
