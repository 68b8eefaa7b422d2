// The stand-in's bridge calls of the records whose calls do not follow the pattern.
#include <algorithm>
#include <vector>

#include "host/bridge.h"
#include "sim/fault_point.h"
#include "sim/host.h"
#include "sim/record_store.h"
#include "sim/staff_styles.h"

using ostin::sim::Host;
using ostin::sim::RecordKey;
using ostin::sim::Slot;

namespace {
// The pass numbers stored for a record, resized to the count the record holds.
std::vector<int32_t>& PassesOf(const ostin::sim::RecordShape& shape, const RecordKey& key) {
  return ostin::sim::RecordForWrite(shape, key)[shape.FieldIndex("Passes")].Numbers;
}

// A loaded fretted instrument hands over its tuning block: from then on the plug-in writes
// the tuning into the host's own block of that record.
void BindTuningBlock(const RecordKey& key, int16_t* block) {
  Host::Instance().FretTuningBlocks[key] = block;
}

const std::vector<int32_t>* StoredPasses(const ostin::sim::RecordShape& shape,
                                         const RecordKey& key) {
  const ostin::sim::StoredRecord* record = ostin::sim::FindRecord(shape, key);
  return record ? &(*record)[shape.FieldIndex("Passes")].Numbers : nullptr;
}
} // namespace

int16_t LoadHeader(OSTIN_NOFIRST(OSTIN_SHAPE_Header(OSTIN_PTR_PARAM))) {
  OSTIN_SHAPE_OF(Header);
  OSTIN_FAULT_POINT("LoadHeader");
  return ostin::sim::LoadRecord(shape, RecordKey{}, {OSTIN_SHAPE_Header(OSTIN_SLOT)});
}

int16_t SaveHeader(OSTIN_NOFIRST(OSTIN_SHAPE_Header(OSTIN_VAL_PARAM))) {
  OSTIN_SHAPE_OF(Header);
  OSTIN_FAULT_POINT("SaveHeader");
  return ostin::sim::SaveRecord(shape, RecordKey{}, {OSTIN_SHAPE_Header(OSTIN_VSLOT)});
}

// Endings and text repeat styles: the plain load fills only the first pass number.
#define OSTIN_DEFINE_PASSES_CALLS(C)                                                               \
  int16_t Create##C(int16_t* cmper, int16_t* inci) {                                               \
    OSTIN_SHAPE_OF(C);                                                                             \
    OSTIN_FAULT_POINT("Create" #C);                                                                \
    ostin::sim::PointerKey<int16_t> key(cmper, inci, nullptr);                                     \
    return ostin::sim::CreateRecord(shape, key.Key);                                               \
  }                                                                                                \
  int16_t Load##C(int16_t cmper, int16_t inci OSTIN_SHAPE_##C(OSTIN_PTR_PARAM)) {                  \
    OSTIN_SHAPE_OF(C);                                                                             \
    OSTIN_FAULT_POINT("Load" #C);                                                                  \
    const std::vector<int32_t>* stored = StoredPasses(shape, RecordKey{cmper, inci});              \
    if (!stored) return 0;                                                                         \
    std::vector<int16_t> all(stored->size());                                                      \
    int16_t* first = Passes;                                                                       \
    Passes = all.data();                                                                           \
    int16_t found =                                                                                \
        ostin::sim::LoadRecord(shape, RecordKey{cmper, inci}, {OSTIN_SHAPE_##C(OSTIN_SLOT)});      \
    *first = all.empty() ? 0 : all[0];                                                             \
    return found;                                                                                  \
  }                                                                                                \
  int16_t Load##C##Array(int16_t cmper, int16_t inci, int16_t* Passes) {                           \
    OSTIN_SHAPE_OF(C);                                                                             \
    OSTIN_FAULT_POINT("Load" #C "Array");                                                          \
    const std::vector<int32_t>* stored = StoredPasses(shape, RecordKey{cmper, inci});              \
    if (!stored) return 0;                                                                         \
    std::transform(stored->begin(), stored->end(), Passes,                                         \
                   [](int32_t pass) { return static_cast<int16_t>(pass); });                       \
    return 1;                                                                                      \
  }                                                                                                \
  int16_t Save##C(int16_t cmper, int16_t inci OSTIN_SHAPE_##C(OSTIN_VAL_PARAM)) {                  \
    OSTIN_SHAPE_OF(C);                                                                             \
    OSTIN_FAULT_POINT("Save" #C);                                                                  \
    PassesOf(shape, RecordKey{cmper, inci}).assign(std::max<int>(1, NumTotalPasses), 0);           \
    return ostin::sim::SaveRecord(shape, RecordKey{cmper, inci}, {OSTIN_SHAPE_##C(OSTIN_VSLOT)});  \
  }
OSTIN_DEFINE_PASSES_CALLS(EndingRepeat)
OSTIN_DEFINE_PASSES_CALLS(TextRepeatStyle)

// Text expressions: the 2004 host describes a new definition.
int16_t CreateTextExpression(int16_t* cmper, int16_t* inci, int16_t) {
  OSTIN_SHAPE_OF(TextExpression);
  OSTIN_FAULT_POINT("CreateTextExpression");
  ostin::sim::PointerKey<int16_t> key(cmper, inci, nullptr);
  return ostin::sim::CreateRecord(shape, key.Key);
}

int16_t CreateTextExpression2004(int16_t* cmper, int16_t* inci, int16_t value) {
  OSTIN_SHAPE_OF(TextExpression);
  OSTIN_FAULT_POINT("CreateTextExpression2004");
  ostin::sim::PointerKey<int16_t> key(cmper, inci, nullptr);
  bool made = !ostin::sim::FindRecord(shape, key.Key);
  int16_t created = ostin::sim::CreateRecord(shape, key.Key);
  if (made && created && value == 22)
    ostin::sim::RecordForWrite(shape, key.Key)[shape.FieldIndex("Text")].Text =
        "Imported from MusicXML";
  return created;
}

#define OSTIN_DEFINE_TEXT_EXPRESSION_CALLS(Suffix, S)                                              \
  int16_t LoadTextExpression##Suffix(int16_t cmper, int16_t inci S(OSTIN_PTR_PARAM)) {             \
    OSTIN_SHAPE_OF(TextExpression);                                                                \
    OSTIN_FAULT_POINT("LoadTextExpression" #Suffix);                                               \
    return ostin::sim::LoadRecord(shape, RecordKey{cmper, inci}, {S(OSTIN_SLOT)});                 \
  }                                                                                                \
  int16_t SaveTextExpression##Suffix(int16_t cmper, int16_t inci S(OSTIN_VAL_PARAM)) {             \
    OSTIN_SHAPE_OF(TextExpression);                                                                \
    OSTIN_FAULT_POINT("SaveTextExpression" #Suffix);                                               \
    return ostin::sim::SaveRecord(shape, RecordKey{cmper, inci}, {S(OSTIN_VSLOT)});                \
  }                                                                                                \
  int16_t NextTextExpression##Suffix(int16_t* cmper, int16_t* inci S(OSTIN_PTR_PARAM)) {           \
    OSTIN_SHAPE_OF(TextExpression);                                                                \
    OSTIN_FAULT_POINT("NextTextExpression" #Suffix);                                               \
    ostin::sim::PointerKey<int16_t> key(cmper, inci, nullptr);                                     \
    return ostin::sim::NextRecord(shape, key.Key, {S(OSTIN_SLOT)});                                \
  }
OSTIN_DEFINE_TEXT_EXPRESSION_CALLS(, OSTIN_SHAPE_TextExpressionPlain)
OSTIN_DEFINE_TEXT_EXPRESSION_CALLS(2004, OSTIN_SHAPE_TextExpression2004)

// Percussion staves: a record is found only under the tag it was made with.
int16_t CreateDrumStaff(int16_t* cmper, int16_t* inci, int32_t Tag) {
  OSTIN_SHAPE_OF(DrumStaff);
  OSTIN_FAULT_POINT("CreateDrumStaff");
  ostin::sim::PointerKey<int16_t> key(cmper, inci, nullptr);
  int16_t created = ostin::sim::CreateRecord(shape, key.Key);
  ostin::sim::RecordForWrite(shape, key.Key)[shape.FieldIndex("Tag")].Numbers = {Tag};
  return created;
}

int16_t LoadDrumStaff(int16_t cmper, int16_t inci, int32_t Tag, int16_t* PercMap,
                      int16_t* PlayMap) {
  OSTIN_SHAPE_OF(DrumStaff);
  OSTIN_FAULT_POINT("LoadDrumStaff");
  const ostin::sim::StoredRecord* record = ostin::sim::FindRecord(shape, RecordKey{cmper, inci});
  if (!record || (*record)[shape.FieldIndex("Tag")].Numbers[0] != Tag) return 0;
  return ostin::sim::LoadRecord(
      shape, RecordKey{cmper, inci},
      {Slot::Value("PercMap", 0, PercMap), Slot::Block("PlayMap", PlayMap)});
}

int16_t SaveDrumStaff(int16_t cmper, int16_t inci, int32_t Tag, int16_t PercMap,
                      const int16_t* PlayMap) {
  OSTIN_SHAPE_OF(DrumStaff);
  OSTIN_FAULT_POINT("SaveDrumStaff");
  return ostin::sim::SaveRecord(shape, RecordKey{cmper, inci},
                                {Slot::Value("Tag", 0, &Tag), Slot::Value("PercMap", 0, &PercMap),
                                 Slot::Block("PlayMap", PlayMap)});
}

int16_t CreateFretInstrument(int16_t* cmper, int16_t* inci) {
  OSTIN_SHAPE_OF(FretInstrument);
  OSTIN_FAULT_POINT("CreateFretInstrument");
  ostin::sim::PointerKey<int16_t> key(cmper, inci, nullptr);
  return ostin::sim::CreateRecord(shape, key.Key);
}

int16_t LoadFretInstrument(int16_t cmper,
                           int16_t inci OSTIN_SHAPE_FretInstrument(OSTIN_PTR_PARAM)) {
  OSTIN_SHAPE_OF(FretInstrument);
  OSTIN_FAULT_POINT("LoadFretInstrument");
  const RecordKey key{cmper, inci};
  const int16_t found =
      ostin::sim::LoadRecord(shape, key, {OSTIN_SHAPE_FretInstrument(OSTIN_SLOT)});
  if (found) BindTuningBlock(key, StringTuning);
  return found;
}

int16_t SaveFretInstrument(int16_t cmper,
                           int16_t inci OSTIN_SHAPE_FretInstrumentSave(OSTIN_VAL_PARAM)) {
  OSTIN_SHAPE_OF(FretInstrument);
  OSTIN_FAULT_POINT("SaveFretInstrument");
  const RecordKey key{cmper, inci};
  const int16_t saved =
      ostin::sim::SaveRecord(shape, key, {OSTIN_SHAPE_FretInstrumentSave(OSTIN_VSLOT)});
  // The save carries no tuning: the host keeps what was written into its own block.
  const auto block = Host::Instance().FretTuningBlocks.find(key);
  if (saved && block != Host::Instance().FretTuningBlocks.end())
    ostin::sim::SaveRecord(shape, key, {Slot::Block("StringTuning", block->second)});
  return saved;
}

int16_t NextFretInstrument(int16_t* cmper,
                           int16_t* inci OSTIN_SHAPE_FretInstrument(OSTIN_PTR_PARAM)) {
  OSTIN_SHAPE_OF(FretInstrument);
  OSTIN_FAULT_POINT("NextFretInstrument");
  ostin::sim::PointerKey<int16_t> key(cmper, inci, nullptr);
  const int16_t found =
      ostin::sim::NextRecord(shape, key.Key, {OSTIN_SHAPE_FretInstrument(OSTIN_SLOT)});
  if (found) BindTuningBlock(key.Key, StringTuning);
  return found;
}

#define OSTIN_DEFINE_LOAD_CURRENT(Suffix, S)                                                       \
  int16_t LoadCurrentStaffSpec##Suffix(int16_t staff, int16_t measure,                             \
                                       int32_t edu S(OSTIN_PTR_PARAM)) {                           \
    OSTIN_SHAPE_OF(StaffSpec);                                                                     \
    OSTIN_FAULT_POINT("LoadCurrentStaffSpec" #Suffix);                                             \
    std::optional<ostin::sim::StoredRecord> current =                                              \
        ostin::sim::CurrentStaffSpec(staff, measure, edu);                                         \
    if (!current) return 0;                                                                        \
    ostin::sim::FillFromRecord(shape, *current, {S(OSTIN_SLOT)});                                  \
    return 1;                                                                                      \
  }
OSTIN_DEFINE_LOAD_CURRENT(2003, OSTIN_SHAPE_StaffSpec)
OSTIN_DEFINE_LOAD_CURRENT(, OSTIN_SHAPE_StaffSpecPlain)
