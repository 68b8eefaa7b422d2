#include "sim/staff_styles.h"

#include <algorithm>
#include <vector>

#include "sim/record_store.h"

namespace ostin::sim {

namespace {
constexpr int16_t kLastMeasure = 32767;
constexpr int32_t kLastEdu = 0x7FFFFFFF;

struct Point {
  int32_t Measure;
  int32_t Edu;
  auto operator<=>(const Point&) const = default;
};

// What a style's mask bit carries over to the staff.
struct MaskedField {
  const char* Mask;
  int16_t Bit;
  const char* Field;
};
constexpr MaskedField kMaskedFields[] = {
    {"Mask1", 0x0100, "Transposition"},
    {"Mask2", 0x1000, "AltFlag"},
};

struct Assignment {
  int16_t Style;
  Point Start, End;
};

int32_t Number(const RecordShape& shape, const StoredRecord& record, const char* field) {
  return record[shape.FieldIndex(field)].Numbers[0];
}

std::vector<Assignment> AssignmentsOf(int16_t staff) {
  const RecordShape& shape = ShapeOf("StaffStyleAssign");
  std::vector<Assignment> assignments;
  const RecordTable* table = TableOf(shape);
  if (!table) return assignments;
  for (auto it = table->Rows.lower_bound(RecordKey{staff, INT16_MIN, INT16_MIN});
       it != table->Rows.end() && it->first.Cmper == staff; ++it) {
    auto n = [&](const char* field) { return Number(shape, it->second, field); };
    assignments.push_back({static_cast<int16_t>(n("Style")),
                           {n("StartMeas"), n("StartEdu")},
                           {n("EndMeas"), n("EndEdu")}});
  }
  return assignments;
}

// The point just behind an inclusive end.
Point After(Point end) {
  return end.Edu == kLastEdu ? Point{end.Measure + 1, 0} : Point{end.Measure, end.Edu + 1};
}
// The point just before a start.
Point Before(Point start) {
  return start.Edu == 0 ? Point{start.Measure - 1, kLastEdu} : Point{start.Measure, start.Edu - 1};
}

void ApplyStyle(StoredRecord& staff, int16_t styleNumber) {
  const RecordShape& staffShape = ShapeOf("StaffSpec");
  const RecordShape& styleShape = ShapeOf("StaffStyle");
  const StoredRecord* style = FindRecord(styleShape, RecordKey{styleNumber, 0});
  if (!style) return;
  for (const MaskedField& masked : kMaskedFields)
    if (Number(styleShape, *style, masked.Mask) & masked.Bit)
      staff[staffShape.FieldIndex(masked.Field)] = (*style)[styleShape.FieldIndex(masked.Field)];
}

void SetRange(StoredRecord& staff, Point start, Point end) {
  const RecordShape& shape = ShapeOf("StaffSpec");
  staff[shape.FieldIndex("RangeStartMeas")].Numbers = {start.Measure};
  staff[shape.FieldIndex("RangeStartEdu")].Numbers = {start.Edu};
  staff[shape.FieldIndex("RangeEndMeas")].Numbers = {std::min<int32_t>(end.Measure, kLastMeasure)};
  staff[shape.FieldIndex("RangeEndEdu")].Numbers = {end.Edu};
}
} // namespace

std::optional<StoredRecord> CurrentStaffSpec(int16_t staff, int16_t measure, int32_t edu) {
  const StoredRecord* own = FindRecord(ShapeOf("StaffSpec"), RecordKey{staff, 0});
  if (!own) return std::nullopt;
  StoredRecord current = *own;
  Point at{measure, edu};
  // The state holds from the last change at or before the point to the next change after it.
  Point start{1, 0}, end{kLastMeasure, kLastEdu};
  for (const Assignment& a : AssignmentsOf(staff)) {
    bool covers = a.Start <= at && at <= a.End;
    if (covers) ApplyStyle(current, a.Style);
    for (Point change : {a.Start, After(a.End)}) {
      if (change <= at) start = std::max(start, change);
      if (change > at) end = std::min(end, Before(change));
    }
  }
  SetRange(current, start, end);
  return current;
}

} // namespace ostin::sim
