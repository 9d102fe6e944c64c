#pragma once

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <type_traits>
#include <utility>

namespace trellivar {

/// A list that keeps its first `InlineCapacity` elements inside itself and turns to the heap only
/// for more. For lists that are short in practice and live on the event path; elsewhere use
/// std::vector. Iterators and references end with every growth, and with every move of the list.
template <class T, std::size_t InlineCapacity> class InlineVector {
  static_assert(InlineCapacity > 0);
  static_assert(std::is_nothrow_move_constructible_v<T>, "growing must not lose elements");

public:
  using value_type = T;
  using iterator = T*;
  using const_iterator = const T*;

  InlineVector() noexcept {} // NOLINT(modernize-use-equals-default): the storage stays raw
  // Both delegate, so that the destructor cleans up when copying an element throws.
  InlineVector(std::initializer_list<T> items) : InlineVector() { append(items); }
  InlineVector(const InlineVector& other) : InlineVector() { append(other); }
  InlineVector(InlineVector&& other) noexcept { take(other); }
  InlineVector& operator=(const InlineVector& other) {
    if (this == &other) return *this;
    clear();
    append(other);
    return *this;
  }
  InlineVector& operator=(InlineVector&& other) noexcept {
    if (this == &other) return *this;
    release();
    take(other);
    return *this;
  }
  ~InlineVector() { release(); }

  bool empty() const noexcept { return size_ == 0; }
  std::size_t size() const noexcept { return size_; }
  T* begin() noexcept { return data_; }
  T* end() noexcept { return data_ + size_; }
  const T* begin() const noexcept { return data_; }
  const T* end() const noexcept { return data_ + size_; }
  T& operator[](std::size_t index) noexcept { return data_[index]; }
  const T& operator[](std::size_t index) const noexcept { return data_[index]; }
  T& back() noexcept { return data_[size_ - 1]; }

  void push_back(T item) {
    if (size_ == capacity_) grow();
    std::construct_at(data_ + size_, std::move(item));
    ++size_;
  }

  /// `items` must not be this list.
  template <class Range> void append(const Range& items) {
    for (const T& item : items)
      push_back(item);
  }

  /// Keeps the capacity.
  void clear() noexcept {
    std::destroy_n(data_, size_);
    size_ = 0;
  }

  /// Removes one element by moving the last into its place; the order of the others may change.
  void eraseUnordered(T* position) noexcept {
    *position = std::move(back());
    std::destroy_at(data_ + --size_);
  }

  /// Removes what satisfies `condition`; the order of the others may change.
  template <class Condition> void eraseUnorderedIf(const Condition& condition) {
    for (T* each = begin(); each != end();) {
      if (condition(*each))
        eraseUnordered(each);
      else
        ++each;
    }
  }

  friend bool operator==(const InlineVector& a, const InlineVector& b) {
    return std::ranges::equal(a, b);
  }

private:
  T* inlineData() noexcept { return reinterpret_cast<T*>(storage_); }
  bool isInline() noexcept { return data_ == inlineData(); }

  void grow() {
    T* const bigger = std::allocator<T>{}.allocate(capacity_ * 2);
    std::uninitialized_move_n(data_, size_, bigger);
    std::destroy_n(data_, size_);
    if (!isInline()) std::allocator<T>{}.deallocate(data_, capacity_);
    data_ = bigger;
    capacity_ *= 2;
  }

  /// Ends as a new, empty list.
  void release() noexcept {
    clear();
    if (!isInline()) std::allocator<T>{}.deallocate(data_, capacity_);
    data_ = inlineData();
    capacity_ = InlineCapacity;
  }

  /// Requires: this list is new and empty. Leaves `other` empty.
  void take(InlineVector& other) noexcept {
    if (other.isInline()) {
      std::uninitialized_move_n(other.data_, other.size_, data_);
      size_ = other.size_;
      other.clear();
      return;
    }
    data_ = std::exchange(other.data_, other.inlineData());
    capacity_ = std::exchange(other.capacity_, InlineCapacity);
    size_ = std::exchange(other.size_, 0);
  }

  alignas(T) std::byte storage_[InlineCapacity * sizeof(T)];
  T* data_ = inlineData();
  std::size_t size_ = 0;
  std::size_t capacity_ = InlineCapacity;
};

} // namespace trellivar
