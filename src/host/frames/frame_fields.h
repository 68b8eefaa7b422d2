#pragma once
// Fields of the frame classes: values that only their owner writes, and values whose
// every write marks the owner changed.
#include <cstdint>

namespace ostin {

// Read by everyone, written only by Owner (from the bridge).
template <class T, class Owner> class ReadOnly {
public:
  ReadOnly() = default;
  ReadOnly(const ReadOnly&) = default;
  ReadOnly& operator=(const ReadOnly&) = delete;
  operator T() const { return value_; }

private:
  friend Owner;
  ReadOnly& operator=(T value) {
    value_ = value;
    return *this;
  }
  T* Slot() { return &value_; }
  T value_{};
};

// Every write sets the owner's changed flag; Owner fills it from the bridge without that.
template <class T, class Owner> class Tracked {
public:
  explicit Tracked(bool& changed) : changed_(changed) {}
  Tracked(const Tracked&) = delete;
  Tracked& operator=(const Tracked&) = delete;

  operator T() const { return value_; }
  Tracked& operator=(T value) {
    value_ = value;
    changed_ = true;
    return *this;
  }
  Tracked& operator|=(T bits) { return *this = static_cast<T>(value_ | bits); }
  Tracked& operator&=(T bits) { return *this = static_cast<T>(value_ & bits); }

private:
  friend Owner;
  T* Slot() { return &value_; }
  bool& changed_;
  T value_{};
};

} // namespace ostin
