// The bridge calls as the host stand-in answers them.
#include "host/bridge.h"

#include "sim/fault_point.h"
#include "sim/host.h"
#include "sim/record_store.h"

namespace {
using ostin::sim::Host;
} // namespace

#define OSTIN_DEF_CREATE(C, B, K, S)                                                               \
  int16_t Create##B(OSTIN_KEYP_##K) {                                                              \
    OSTIN_SHAPE_OF(C);                                                                             \
    OSTIN_FAULT_POINT("Create" #B);                                                                \
    ostin::sim::PointerKey<OSTIN_KEYTYPE_##K> key(OSTIN_SIMKEYP_##K);                              \
    return ostin::sim::CreateRecord(shape, key.Key);                                               \
  }
#define OSTIN_DEF_LOAD(C, B, K, S)                                                                 \
  int16_t Load##B(OSTIN_KEYV_##K S(OSTIN_PTR_PARAM)) {                                             \
    OSTIN_SHAPE_OF(C);                                                                             \
    OSTIN_FAULT_POINT("Load" #B);                                                                  \
    return ostin::sim::LoadRecord(shape, OSTIN_SIMKEYV_##K, {S(OSTIN_SLOT)});                      \
  }
#define OSTIN_DEF_SAVE(C, B, K, S)                                                                 \
  int16_t Save##B(OSTIN_KEYV_##K S(OSTIN_VAL_PARAM)) {                                             \
    OSTIN_SHAPE_OF(C);                                                                             \
    OSTIN_FAULT_POINT("Save" #B);                                                                  \
    return ostin::sim::SaveRecord(shape, OSTIN_SIMKEYV_##K, {S(OSTIN_VSLOT)});                     \
  }
#define OSTIN_DEF_NEXT(C, B, K, S)                                                                 \
  int16_t Next##B(OSTIN_KEYP_##K S(OSTIN_PTR_PARAM)) {                                             \
    OSTIN_SHAPE_OF(C);                                                                             \
    OSTIN_FAULT_POINT("Next" #B);                                                                  \
    ostin::sim::PointerKey<OSTIN_KEYTYPE_##K> key(OSTIN_SIMKEYP_##K);                              \
    return ostin::sim::NextRecord(shape, key.Key, {S(OSTIN_SLOT)});                                \
  }
#define OSTIN_DEF_DELETE(C, B, K, S)                                                               \
  int16_t Delete##B(OSTIN_KEYV_##K) {                                                              \
    OSTIN_SHAPE_OF(C);                                                                             \
    OSTIN_FAULT_POINT("Delete" #B);                                                                \
    return ostin::sim::DeleteRecord(shape, OSTIN_SIMKEYV_##K);                                     \
  }
#define OSTIN_DEF(op, C, B, K, S) OSTIN_DEF_##op(C, B, K, S)
#define OSTIN_DEFINE_PLAIN(C, B, K, S, ops) OSTIN_OPS(ops, OSTIN_DEF, C, B, K, S)
#define OSTIN_DEFINE_VARIANT(C, B, K, S, P, Y, ops)                                                \
  OSTIN_OPS(ops, OSTIN_DEF, C, B, K, P) OSTIN_OPS(ops, OSTIN_DEF, C, OSTIN_CAT(B, Y), K, S)

OSTIN_PLAIN_RECORDS(OSTIN_DEFINE_PLAIN)
OSTIN_VARIANT_RECORDS(OSTIN_DEFINE_VARIANT)

int16_t LoadLayerPrefs(int16_t number, int16_t* Restoffset, int16_t* Flag) {
  // The four layer preferences are records of their own under the layer's number.
  OSTIN_SHAPE_OF(LayerPrefs);
  return ostin::sim::LoadRecord(shape, ostin::sim::RecordKey{number, 0, 0},
                                {ostin::sim::Slot::Value("Restoffset", 0, Restoffset),
                                 ostin::sim::Slot::Value("Flag", 0, Flag)});
}

int16_t LoadDefaultFontPrefs(int16_t number OSTIN_SHAPE_DefaultFontPrefs(OSTIN_PTR_PARAM)) {
  OSTIN_SHAPE_OF(DefaultFontPrefs);
  OSTIN_FAULT_POINT("LoadDefaultFontPrefs");
  return ostin::sim::LoadRecord(shape, ostin::sim::RecordKey{number, 0, 0},
                                {OSTIN_SHAPE_DefaultFontPrefs(OSTIN_SLOT)});
}

int16_t LoadTupletPrefs(int16_t number OSTIN_SHAPE_TupletPrefs(OSTIN_PTR_PARAM)) {
  OSTIN_SHAPE_OF(TupletPrefs);
  OSTIN_FAULT_POINT("LoadTupletPrefs");
  return ostin::sim::LoadRecord(shape, ostin::sim::RecordKey{number, 0, 0},
                                {OSTIN_SHAPE_TupletPrefs(OSTIN_SLOT)});
}

int32_t FtxFinaleVersion() {
  return Host::Instance().Version();
}

int32_t FtxCountItems(int16_t kind) {
  // Kind 1 counts the measures of the document.
  if (kind != 1) return 0;
  const ostin::sim::RecordTable* table = Host::Instance().Doc().FindTable("MeasureSpec");
  return table ? static_cast<int32_t>(table->Rows.size()) : 0;
}

namespace {
// The staff list of the score: the InstrumentUsed records of list 0, in order.
const std::map<ostin::sim::RecordKey, ostin::sim::StoredRecord>* ScoreStaffList() {
  const ostin::sim::RecordTable* table = Host::Instance().Doc().FindTable("InstrumentUsed");
  return table ? &table->Rows : nullptr;
}
} // namespace

int16_t FtxCountInstruments(int16_t iuList, int16_t mode) {
  const auto* rows = ScoreStaffList();
  if (!rows) return 0;
  int16_t count = 0;
  for (const auto& [key, record] : *rows)
    if (key.Cmper == iuList) ++count;
  return count;
}

int16_t FxSlotToInst(int16_t slot, int16_t iuList) {
  const auto* rows = ScoreStaffList();
  if (!rows || slot < 1) return 0;
  auto it = rows->find(ostin::sim::RecordKey{iuList, static_cast<int16_t>(slot - 1)});
  return it == rows->end() ? 0 : static_cast<int16_t>(it->second[0].Numbers[0]);
}

int16_t FxInstToSlot(int16_t inst, int16_t iuList) {
  const auto* rows = ScoreStaffList();
  if (!rows) return 0;
  for (const auto& [key, record] : *rows)
    if (key.Cmper == iuList && record[0].Numbers[0] == inst)
      return static_cast<int16_t>(key.Inci + 1);
  return 0;
}

int16_t FxStartFinaleEdit(const std::string& title) {
  OSTIN_FAULT_POINT("FxStartFinaleEdit");
  return Host::Instance().StartEdit(title);
}
int16_t FxEndFinaleEdit() {
  return Host::Instance().EndEdit();
}
int16_t FxCancelFinaleEdit() {
  OSTIN_FAULT_POINT("FxCancelFinaleEdit");
  return Host::Instance().CancelEdit();
}
int16_t FxUpdateLayout(int16_t, int16_t) {
  return 1;
}

int32_t FxStartMassEdit(int32_t region, int32_t jobSize) {
  OSTIN_FAULT_POINT("FxStartMassEdit");
  return Host::Instance().StartMassEdit(region, jobSize);
}

int16_t FxMassEditProgress(int32_t handle, int16_t increment, int16_t, int16_t, int16_t) {
  OSTIN_FAULT_POINT("FxMassEditProgress");
  return Host::Instance().MassEditProgress(handle, increment);
}

int16_t FxEndMassEdit(int32_t handle, int16_t cancel) {
  OSTIN_FAULT_POINT("FxEndMassEdit");
  return Host::Instance().EndMassEdit(handle, cancel != 0);
}

int32_t FxGetCurrentEnigmaDocument() {
  return 1;
}

int16_t FxGetDocumentPath(int32_t document, std::string* path) {
  OSTIN_FAULT_POINT("FxGetDocumentPath");
  if (document != 1) return 0;
  const ostin::sim::Document& doc = Host::Instance().Doc();
  // A document never saved is known by its title, as the host shows it.
  *path = doc.Path.empty() ? (doc.Title.empty() ? "Untitled" : doc.Title) : doc.Path;
  return 1;
}

int16_t FxGetFinalePath(int16_t kind, std::string* path) {
  OSTIN_FAULT_POINT("FxGetFinalePath");
  if (kind != 3) return 0;
  *path = Host::Instance().MusicFolder();
  return path->empty() ? 0 : 1;
}

int16_t FtxGetIniFileName(std::string* name) {
  *name = Host::Instance().IniFileName();
  return 1;
}

int16_t FtxExtractedPartIsUsed() {
  return 0;
}
int16_t FxGetMaxLayers() {
  return Host::Instance().Doc().MaxLayers;
}
