// The growable array behind every list of the library.

#ifndef VEXEL_PLATFORM_ARRAY_H_
#define VEXEL_PLATFORM_ARRAY_H_

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

#include "platform/exceptions.h"

namespace vexel {

// True for types whose objects may be moved as bytes, without a call. A type that only owns memory
// says so by a specialisation.
template <typename T>
inline constexpr bool kIsRelocatable = std::is_trivially_copyable_v<T>;

// A typed array with a size, a capacity and a grow-by that is fixed at construction.
//
// The capacity follows these rules and no others:
//   - size 0 frees the storage; size and capacity are 0;
//   - the first storage has room for the larger of the new size and the grow-by;
//   - growth beyond the capacity adds the grow-by, or, where that is 0, an eighth of the size but
//     at least 4 and at most 1024; a new size beyond that sum becomes the capacity itself.
// The capacity is what the owner reckons with; the storage behind it follows the elements. It grows
// by halves, so that appending one by one stays linear in time where steps of 25 or 1024 would
// not, and a list of one element, which is what most nodes of a map hold, does not pay for 25.
//
// Element access tests the index and throws CInvalidArgException. New elements are zero, empty or
// default-constructed. Pointers into the array do not survive growth.
template <typename T>
class GrowArray {
 public:
  explicit GrowArray(int growBy = 0) noexcept : growBy_(growBy) {}

  GrowArray(GrowArray&& other) noexcept { Take(other); }
  GrowArray& operator=(GrowArray&& other) noexcept {
    if (this != &other) {
      Free();
      Take(other);
    }
    return *this;
  }
  GrowArray(const GrowArray&) = delete;
  GrowArray& operator=(const GrowArray&) = delete;
  ~GrowArray() { Free(); }

  int GetSize() const noexcept { return size_; }
  int GetCapacity() const noexcept { return capacity_; }
  bool IsEmpty() const noexcept { return size_ == 0; }

  T& operator[](int index) {
    CheckIndex(index);
    return data_[index];
  }
  const T& operator[](int index) const {
    CheckIndex(index);
    return data_[index];
  }

  T* GetData() noexcept { return data_; }
  const T* GetData() const noexcept { return data_; }
  std::span<T> Elements() noexcept { return {data_, static_cast<std::size_t>(size_)}; }
  std::span<const T> Elements() const noexcept { return {data_, static_cast<std::size_t>(size_)}; }
  T* begin() noexcept { return data_; }
  T* end() noexcept { return data_ + size_; }
  const T* begin() const noexcept { return data_; }
  const T* end() const noexcept { return data_ + size_; }

  void SetSize(int newSize) {
    if (newSize < 0) AfxThrowInvalidArgException();
    if (newSize == 0) {
      RemoveAll();
    } else if (newSize <= size_) {
      std::destroy(data_ + newSize, data_ + size_);
      size_ = newSize;
    } else {
      MakeRoom(newSize);
      std::uninitialized_value_construct(data_ + size_, data_ + newSize);
      size_ = newSize;
    }
  }

  void RemoveAll() noexcept {
    Free();
    data_ = nullptr;
    size_ = capacity_ = allocated_ = 0;
  }

  // Appends one element and gives its index.
  int Add(T value) {
    if (size_ == capacity_) SetCapacity(NextSize(1));
    if (size_ == allocated_) Reallocate(StepFrom(allocated_));
    std::construct_at(data_ + size_, std::move(value));
    return size_++;
  }

  // Makes room for `count` further elements, with the capacity that adding them one at a time
  // would give, and returns the place of the first. The caller fills them all.
  T* Extend(int count) requires std::is_trivially_copyable_v<T> {
    MakeRoomAsIfAdded(NextSize(static_cast<std::size_t>(count)));
    T* first = data_ + size_;
    size_ += count;
    return first;
  }

  // Inserts before `index`; at or beyond the size the array is extended to index + 1 first.
  void InsertAt(int index, T value) {
    if (index < 0) AfxThrowInvalidArgException();
    if (index >= size_) {
      if (index == std::numeric_limits<int>::max()) throw std::bad_alloc();
      SetSize(index + 1);
      data_[index] = std::move(value);
      return;
    }
    Add(std::move(value));
    std::rotate(data_ + index, data_ + size_ - 1, data_ + size_);
  }

  // Closes the gap; the capacity stays.
  void RemoveAt(int index) {
    CheckIndex(index);
    std::move(data_ + index + 1, data_ + size_, data_ + index);
    std::destroy_at(data_ + --size_);
  }

 private:
  // Room for this many bytes at least, when elements come one by one: what the smallest block of
  // usual allocators holds, which is all that most nodes of a map need.
  static constexpr int kLeastBytes = 24;

  void CheckIndex(int index) const {
    if (index < 0 || index >= size_) AfxThrowInvalidArgException();
  }

  int NextSize(std::size_t count) const {
    if (count > static_cast<std::size_t>(std::numeric_limits<int>::max() - size_)) {
      throw std::bad_alloc();
    }
    return size_ + static_cast<int>(count);
  }

  // The capacity after a growth from `capacity` at `size` elements to `newSize`.
  int NextCapacity(int size, int capacity, int newSize) const {
    if (capacity == 0) return std::max(newSize, growBy_);
    const int step = growBy_ != 0 ? growBy_ : std::clamp(size / 8, 4, 1024);
    const int most = std::numeric_limits<int>::max();
    return std::max(capacity > most - step ? most : capacity + step, newSize);
  }

  void SetCapacity(int newSize) {
    if (newSize > capacity_) capacity_ = NextCapacity(size_, capacity_, newSize);
  }

  void MakeRoom(int newSize) {
    SetCapacity(newSize);
    if (newSize > allocated_) Reallocate(std::max(newSize, size_ == 0 ? 0 : StepFrom(allocated_)));
  }

  void MakeRoomAsIfAdded(int newSize) {
    while (capacity_ < newSize) capacity_ = NextCapacity(capacity_, capacity_, capacity_ + 1);
    if (newSize > allocated_) Reallocate(std::max(newSize, size_ == 0 ? 0 : StepFrom(allocated_)));
  }

  // The next size of the storage when elements come one by one.
  static int StepFrom(int allocated) {
    constexpr long long kLeast = std::max<long long>(1, kLeastBytes / static_cast<int>(sizeof(T)));
    const long long grown = std::max(kLeast, allocated + (allocated + 1) / 2LL);
    return static_cast<int>(std::min<long long>(grown, std::numeric_limits<int>::max()));
  }

  void Reallocate(int allocated) {
    MoveTo(allocated);
    allocated_ = allocated;
  }

  void MoveTo(int allocated) {
    const std::size_t bytes = static_cast<std::size_t>(allocated) * sizeof(T);
    // The allocator can often grow a block where it stands, and moves large ones page by page.
    if constexpr (kIsRelocatable<T>) {
      void* moved = std::realloc(static_cast<void*>(data_), bytes);
      if (moved == nullptr) throw std::bad_alloc();
      data_ = static_cast<T*>(moved);
    } else {
      T* moved = static_cast<T*>(std::malloc(bytes));
      if (moved == nullptr) throw std::bad_alloc();
      static_assert(std::is_nothrow_move_constructible_v<T>);
      std::uninitialized_move(data_, data_ + size_, moved);
      std::destroy(data_, data_ + size_);
      std::free(static_cast<void*>(data_));
      data_ = moved;
    }
  }

  void Free() noexcept {
    std::destroy(data_, data_ + size_);
    std::free(static_cast<void*>(data_));
  }

  void Take(GrowArray& other) noexcept {
    data_ = std::exchange(other.data_, nullptr);
    size_ = std::exchange(other.size_, 0);
    capacity_ = std::exchange(other.capacity_, 0);
    allocated_ = std::exchange(other.allocated_, 0);
    growBy_ = other.growBy_;
  }

  T* data_ = nullptr;
  int size_ = 0;
  int capacity_ = 0;
  int allocated_ = 0;
  int growBy_ = 0;
};

}  // namespace vexel

#endif  // VEXEL_PLATFORM_ARRAY_H_
