#include "sim/record_store.h"

#include <cstring>
#include <stdexcept>

#include "sim/host.h"

namespace ostin::sim {

namespace {
Document& Doc() {
  return Host::Instance().Doc();
}

// What the host does after a record is deleted, by record type.
void AfterDelete(const RecordShape& shape, RecordTable& table, RecordKey key) {
  // Deleting an entry of a staff list moves the entries behind it up by one.
  if (shape.Class != "InstrumentUsed") return;
  auto it = table.Rows.upper_bound(key);
  while (it != table.Rows.end() && it->first.Cmper == key.Cmper) {
    RecordKey up{key.Cmper, static_cast<int16_t>(it->first.Inci - 1), it->first.Third};
    StoredRecord moved = std::move(it->second);
    it = table.Rows.erase(it);
    table.Rows.emplace(up, std::move(moved));
  }
}

void ReadSlot(const Slot& slot, const FieldValue& value) {
  switch (slot.Type) {
  case Slot::Kind::Short:
    *static_cast<int16_t*>(slot.Ptr) = static_cast<int16_t>(value.Numbers.at(slot.Index));
    break;
  case Slot::Kind::Long:
    *static_cast<int32_t*>(slot.Ptr) = value.Numbers.at(slot.Index);
    break;
  case Slot::Kind::Text:
    *static_cast<std::string*>(slot.Ptr) = value.Text;
    break;
  case Slot::Kind::Block: {
    int16_t* out = static_cast<int16_t*>(slot.Ptr);
    for (size_t i = 0; i < value.Numbers.size(); ++i)
      out[i] = static_cast<int16_t>(value.Numbers[i]);
    break;
  }
  }
}

void WriteSlot(const Slot& slot, FieldValue& value) {
  switch (slot.Type) {
  case Slot::Kind::Short:
    value.Numbers.at(slot.Index) = *static_cast<const int16_t*>(slot.Ptr);
    break;
  case Slot::Kind::Long:
    value.Numbers.at(slot.Index) = *static_cast<const int32_t*>(slot.Ptr);
    break;
  case Slot::Kind::Text:
    value.Text = *static_cast<const std::string*>(slot.Ptr);
    break;
  case Slot::Kind::Block: {
    const int16_t* in = static_cast<const int16_t*>(slot.Ptr);
    for (size_t i = 0; i < value.Numbers.size(); ++i)
      value.Numbers[i] = in[i];
    break;
  }
  }
}

int FieldOf(const RecordShape& shape, const Slot& slot) {
  int index = shape.FieldIndex(slot.Name);
  if (index < 0) throw std::logic_error("record " + shape.Class + " has no field " + slot.Name);
  return index;
}

void Fill(const RecordShape& shape, const StoredRecord& record, Slots slots) {
  for (const Slot& slot : slots)
    ReadSlot(slot, record[FieldOf(shape, slot)]);
}

int32_t NextFreeCmper(const RecordTable& table) {
  int32_t highest = 0;
  for (const auto& [key, record] : table.Rows)
    highest = std::max(highest, key.Cmper);
  return highest + 1;
}

// The next free number of one part of the key, under the parts before it.
int16_t NextFreeBelow(const RecordTable& table, const RecordKey& key, bool third) {
  int16_t highest = -1;
  for (const auto& [k, record] : table.Rows) {
    if (k.Cmper != key.Cmper || (third && k.Inci != key.Inci)) continue;
    highest = std::max(highest, third ? k.Third : k.Inci);
  }
  return static_cast<int16_t>(highest + 1);
}
} // namespace

const StoredRecord* FindRecord(const RecordShape& shape, const RecordKey& key) {
  const RecordTable* table = Doc().FindTable(shape.Class);
  if (!table) return nullptr;
  auto it = table->Rows.find(key);
  return it == table->Rows.end() ? nullptr : &it->second;
}

StoredRecord& RecordForWrite(const RecordShape& shape, const RecordKey& key) {
  RecordTable& table = Doc().Table(shape);
  return table.Rows.try_emplace(key, Doc().NewRecord(shape)).first->second;
}

const RecordTable* TableOf(const RecordShape& shape) {
  return Doc().FindTable(shape.Class);
}

void FillFromRecord(const RecordShape& shape, const StoredRecord& record, Slots slots) {
  Fill(shape, record, slots);
}

const RecordShape& ShapeOf(const char* className) {
  const RecordShape* shape = FindRecordShape(className);
  if (!shape) throw std::logic_error(std::string("no record shape ") + className);
  return *shape;
}

namespace {
// A staff made with number 0 takes the next free number and joins the end of the score's
// staff list, as a new staff of the host does.
constexpr int16_t kNewStaffAltFlag = 0x0700;

void NewStaffAtTheEnd(const RecordTable& staves, RecordKey& key) {
  key.Cmper = NextFreeCmper(staves);
  const RecordShape& listShape = ShapeOf("InstrumentUsed");
  RecordTable& list = Doc().Table(listShape);
  RecordKey entry{0, NextFreeBelow(list, RecordKey{0, 0}, false)};
  StoredRecord record = Doc().NewRecord(listShape);
  record[listShape.FieldIndex("Inst")].Numbers = {key.Cmper};
  list.Rows.emplace(entry, std::move(record));
}
} // namespace

int16_t CreateRecord(const RecordShape& shape, RecordKey& key) {
  RecordTable& table = Doc().Table(shape);
  if (shape.Class == "StaffSpec" && key.Cmper == 0 && key.Inci == 0) NewStaffAtTheEnd(table, key);
  if (key.Cmper == -1) key.Cmper = NextFreeCmper(table);
  if (key.Inci == -1) key.Inci = NextFreeBelow(table, key, false);
  if (key.Third == -1) key.Third = NextFreeBelow(table, key, true);
  auto [it, added] = table.Rows.try_emplace(key, Doc().NewRecord(shape));
  // The host's new staff is a plain staff of five lines with all its layers shown.
  if (added && shape.Class == "StaffSpec") {
    it->second[shape.FieldIndex("BotLines")].Numbers = {5};
    it->second[shape.FieldIndex("AltFlag")].Numbers = {kNewStaffAltFlag};
  }
  return 1;
}

int16_t LoadRecord(const RecordShape& shape, const RecordKey& key, Slots slots) {
  const RecordTable* table = Doc().FindTable(shape.Class);
  if (!table) return 0;
  auto it = table->Rows.find(key);
  if (it == table->Rows.end()) return 0;
  Fill(shape, it->second, slots);
  return 1;
}

int16_t SaveRecord(const RecordShape& shape, const RecordKey& key, Slots slots) {
  RecordTable& table = Doc().Table(shape);
  auto [it, added] = table.Rows.try_emplace(key, Doc().NewRecord(shape));
  for (const Slot& slot : slots)
    WriteSlot(slot, it->second[FieldOf(shape, slot)]);
  return 1;
}

int16_t NextRecord(const RecordShape& shape, RecordKey& key, Slots slots) {
  const RecordTable* table = Doc().FindTable(shape.Class);
  if (!table) return 0;
  auto it = table->Rows.upper_bound(key);
  if (it == table->Rows.end()) return 0;
  key = it->first;
  Fill(shape, it->second, slots);
  return 1;
}

int16_t DeleteRecord(const RecordShape& shape, const RecordKey& key) {
  RecordTable& table = Doc().Table(shape);
  if (table.Rows.erase(key) == 0) return 0;
  AfterDelete(shape, table, key);
  return 1;
}

} // namespace ostin::sim
