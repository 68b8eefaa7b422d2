#pragma once
// The time-sorted list of things attached to the measures of one staff slot.
#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "shell/failure.h"

namespace ostin {

inline constexpr int32_t kAddSortedFailure = Code(0x800404A4);
inline constexpr int32_t kAddFailure = Code(0x80040665);

// One thing attached to a measure: its source record, its kind, and where it stands.
class MeasureItem {
public:
  MeasureItem() { Rebuild(); }
  MeasureItem(std::string itemType, int16_t cmper, int16_t inci, int16_t measure, int32_t edu);

  // ItemType, Cmper, Inci and Measure joined by commas: the key in a list.
  const std::string& ID() const { return id_; }

  const std::string& ItemType() const { return itemType_; }
  int16_t Cmper() const { return cmper_; }
  int16_t Inci() const { return inci_; }
  int16_t Measure() const { return measure_; }

  void SetItemType(std::string itemType);
  void SetCmper(int16_t cmper);
  void SetInci(int16_t inci);
  void SetMeasure(int16_t measure);

  // Position in the measure.
  int32_t Edu = 0;

private:
  void Rebuild();

  std::string itemType_;
  int16_t cmper_ = 0;
  int16_t inci_ = 0;
  int16_t measure_ = 0;
  std::string id_;
};

// Items keyed by ID, kept sorted by measure and, within the last measure, by position.
// A memory of the last measure's place makes the common, nearly ascending insert cheap.
class MeasureItems {
public:
  // Appends wherever the item belongs, and takes its measure as the last one.
  void Add(const MeasureItem& newItem);
  // Inserts in order; equal positions keep the order of their arrival.
  void AddSorted(const MeasureItem& newItem);

  int32_t Count() const { return static_cast<int32_t>(items_.size()); }
  // Index from 1; an index out of range raises a foreign failure.
  const MeasureItem& Item(int32_t index) const;
  void Remove(int32_t index);

  // Iteration in list order.
  std::vector<MeasureItem>::const_iterator begin() const { return items_.begin(); }
  std::vector<MeasureItem>::const_iterator end() const { return items_.end(); }

private:
  void InsertAt(int32_t index, const MeasureItem& newItem);
  void ClaimKey(const MeasureItem& newItem);
  template <class Body>
  void Handled(const char* operation, int32_t number, const MeasureItem& item, Body body);

  std::vector<MeasureItem> items_;
  std::unordered_set<std::string> keys_;
  int16_t lastMeasure_ = 0;
  int16_t lastMeasureStart_ = 0;
  int32_t lastMeasureFirstEdu_ = 0;
  int32_t lastMeasureLastEdu_ = 0;
};

} // namespace ostin
