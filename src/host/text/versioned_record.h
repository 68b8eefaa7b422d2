#pragma once
// A record whose call of a host year raises numbers of its own: each operation runs through
// a record of the plain or of the year's traits, which share this object's fields and key.
#include <cstdint>

#include "host/record.h"

namespace ostin {

template <class Plain, class Variant> class VersionedRecord : public Plain::Fields {
public:
  using KeyType = typename Plain::Key;
  using Fields = typename Plain::Fields;

  // Host year; the year's traits are taken from Plain::kVariantYear on.
  int32_t FinaleVersion = 2000;

  KeyType Cmper() const { return key_.Cmper; }
  int16_t Inci() const { return key_.Inci; }

  void Create(KeyType cmper, int16_t inci) {
    Run([&](auto& record) { record.Create(cmper, inci); });
  }
  // False when there is no such record.
  [[nodiscard]] bool Load(KeyType cmper, int16_t inci) {
    return Run([&](auto& record) { return record.Load(cmper, inci); });
  }
  // Load that needs the record: absence raises the number of the call made.
  void MustLoad(KeyType cmper, int16_t inci) {
    Run([&](auto& record) { record.MustLoad(cmper, inci); });
  }
  void Save() {
    Run([](auto& record) { record.Save(); });
  }

private:
  // A record of one traits whose key this object may read and set.
  template <class Traits> struct Call : Record<Traits> { using Record<Traits>::key_; };

  // Copies the call's fields and key back when the operation ends, also by a failure.
  template <class Traits> struct TakeBack {
    VersionedRecord& owner;
    Call<Traits>& call;
    ~TakeBack() {
      static_cast<Fields&>(owner) = static_cast<Fields&>(call);
      owner.key_ = call.key_;
    }
  };

  template <class Op> decltype(auto) Run(Op op) {
    if (FinaleVersion >= Plain::kVariantYear) return RunAs<Variant>(op);
    return RunAs<Plain>(op);
  }

  template <class Traits, class Op> decltype(auto) RunAs(Op op) {
    Call<Traits> call;
    call.FinaleVersion = FinaleVersion;
    static_cast<Fields&>(call) = static_cast<const Fields&>(*this);
    call.key_ = key_;
    TakeBack<Traits> back{*this, call};
    return op(call);
  }

  RecordKeyOf<KeyType> key_;
};

} // namespace ostin
