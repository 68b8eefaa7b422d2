#pragma once
// The record calls of the bridge over the open document: one generic operation per
// verb, given the record's shape and one slot per argument of the call.
#include <cstdint>
#include <initializer_list>
#include <string>

#include "sim/document.h"
#include "sim/record_catalog.h"

namespace ostin::sim {

// One argument of a record call: a value, one element of a block, a text or a whole block.
struct Slot {
  enum class Kind { Short, Long, Text, Block };
  const char* Name;
  int Index; // element of a block passed element by element
  Kind Type;
  void* Ptr;

  static Slot Value(const char* name, int index, int16_t* p) {
    return {name, index, Kind::Short, p};
  }
  static Slot Value(const char* name, int index, int32_t* p) {
    return {name, index, Kind::Long, p};
  }
  static Slot Text(const char* name, std::string* p) { return {name, 0, Kind::Text, p}; }
  // Save calls only read from their slots.
  static Slot Text(const char* name, const std::string* p) {
    return {name, 0, Kind::Text, const_cast<std::string*>(p)};
  }
  static Slot Block(const char* name, int16_t* p) { return {name, 0, Kind::Block, p}; }
  static Slot Block(const char* name, const int16_t* p) {
    return {name, 0, Kind::Block, const_cast<int16_t*>(p)};
  }
};

using Slots = std::initializer_list<Slot>;

// A key passed by pointers: read on the way in, written back on the way out.
template <class K> class PointerKey {
public:
  PointerKey(K* cmper, int16_t* inci, int16_t* third)
      : cmper_(cmper), inci_(inci), third_(third), Key{*cmper, *inci, third ? *third : int16_t{0}} {
  }
  ~PointerKey() {
    *cmper_ = static_cast<K>(Key.Cmper);
    *inci_ = Key.Inci;
    if (third_) *third_ = Key.Third;
  }
  PointerKey(const PointerKey&) = delete;
  PointerKey& operator=(const PointerKey&) = delete;

private:
  K* cmper_;
  int16_t* inci_;
  int16_t* third_;

public:
  RecordKey Key;
};

// Create: -1 in a part of the key takes the next free number and writes it back.
int16_t CreateRecord(const RecordShape& shape, RecordKey& key);
int16_t LoadRecord(const RecordShape& shape, const RecordKey& key, Slots slots);
int16_t SaveRecord(const RecordShape& shape, const RecordKey& key, Slots slots);
// Next: the first record after the key; rewrites the key.
int16_t NextRecord(const RecordShape& shape, RecordKey& key, Slots slots);
int16_t DeleteRecord(const RecordShape& shape, const RecordKey& key);

// The stored record under a key, or nullptr; for writing, made with the host's defaults
// when it is missing.
const StoredRecord* FindRecord(const RecordShape& shape, const RecordKey& key);
StoredRecord& RecordForWrite(const RecordShape& shape, const RecordKey& key);
// Walks the records of a type in key order.
const RecordTable* TableOf(const RecordShape& shape);

// Fills the call's slots from a record.
void FillFromRecord(const RecordShape& shape, const StoredRecord& record, Slots slots);

// The shape of a record class the bridge serves; the class must exist.
const RecordShape& ShapeOf(const char* className);

} // namespace ostin::sim
