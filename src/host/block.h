#pragma once
// A fixed block of a record, addressed from its first index (1, or 0 for KeyMap.Steps).
// Out of range, most blocks read 0 and write nothing; the blocks of a few records log
// the subscript and raise instead.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "shell/failure.h"

namespace ostin {

// Blocks count from 1, but for the twelve steps of a key map.
constexpr int FirstIndex(std::string_view field) {
  return field == "Steps" ? 0 : 1;
}

// The records whose blocks refuse an index out of range, with the numbers they raise
// on reading and on writing.
struct StrictBlockOwner {
  const char* Class;
  int32_t GetNumber;
  int32_t SetNumber;
};
const StrictBlockOwner* FindStrictBlockOwner(const char* className);

[[noreturn]] void RaiseSubscript(const StrictBlockOwner& owner, const char* verb, const char* field,
                                 int first, int last, int index);

template <class T, int N, int First = 1> class Block {
public:
  // Names the block for its messages; the record's class decides whether it is strict.
  void Name(const char* className, const char* field) {
    owner_ = FindStrictBlockOwner(className);
    field_ = field;
  }

  T operator()(int index) const {
    if (InRange(index)) return values_[index - First];
    if (owner_) RaiseSubscript(*owner_, "Get", field_, First, First + N - 1, index);
    return T{};
  }
  void Set(int index, T value) {
    if (InRange(index)) {
      values_[index - First] = value;
      return;
    }
    if (owner_) RaiseSubscript(*owner_, "Let", field_, First, First + N - 1, index);
  }

  // The block as the bridge passes it, element by element or as one pointer.
  T& operator[](size_t i) { return values_[i]; }
  const T& operator[](size_t i) const { return values_[i]; }
  T* data() { return values_.data(); }
  auto begin() { return values_.begin(); }
  auto end() { return values_.end(); }
  static constexpr int size() { return N; }
  bool operator==(const Block& other) const { return values_ == other.values_; }

private:
  static bool InRange(int index) { return index >= First && index < First + N; }
  std::array<T, N> values_{};
  const StrictBlockOwner* owner_ = nullptr;
  const char* field_ = "";
};

} // namespace ostin
