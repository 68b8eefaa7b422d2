#include "model/measure_items.h"

#include <stdexcept>
#include <utility>

#include "shell/error_log.h"
#include "shell/failure.h"

namespace ostin {

MeasureItem::MeasureItem(std::string itemType, int16_t cmper, int16_t inci, int16_t measure,
                         int32_t edu)
    : Edu(edu), itemType_(std::move(itemType)), cmper_(cmper), inci_(inci), measure_(measure) {
  Rebuild();
}

void MeasureItem::SetItemType(std::string itemType) {
  itemType_ = std::move(itemType);
  Rebuild();
}

void MeasureItem::SetCmper(int16_t cmper) {
  cmper_ = cmper;
  Rebuild();
}

void MeasureItem::SetInci(int16_t inci) {
  inci_ = inci;
  Rebuild();
}

void MeasureItem::SetMeasure(int16_t measure) {
  measure_ = measure;
  Rebuild();
}

void MeasureItem::Rebuild() {
  id_ = itemType_ + "," + std::to_string(cmper_) + "," + std::to_string(inci_) + "," +
        std::to_string(measure_);
}

// Own failures pass up; any other is logged with the item and becomes this operation's number.
template <class Body>
void MeasureItems::Handled(const char* operation, int32_t number, const MeasureItem& item,
                           Body body) {
  try {
    body();
  } catch (...) {
    Failure failure = CurrentFailure();
    Register(failure);
    if (failure.IsOwn()) throw failure;
    WriteLog(std::string("MeasureItems ") + operation + " error " + std::to_string(failure.Number) +
             " for MeasureItem " + item.ID() + " in measure " + std::to_string(item.Measure()) +
             ": " + failure.Description);
    throw Failure::Internal(number);
  }
}

void MeasureItems::ClaimKey(const MeasureItem& newItem) {
  if (!keys_.insert(newItem.ID()).second)
    throw std::invalid_argument("This key is already associated with an element of this "
                                "collection");
}

void MeasureItems::InsertAt(int32_t index, const MeasureItem& newItem) {
  items_.insert(items_.begin() + (index - 1), newItem);
}

void MeasureItems::Add(const MeasureItem& newItem) {
  Handled("Add", kAddFailure, newItem, [&] {
    ClaimKey(newItem);
    items_.push_back(newItem);
    if (newItem.Measure() != lastMeasure_) {
      lastMeasureStart_ = static_cast<int16_t>(Count());
      lastMeasureFirstEdu_ = newItem.Edu;
    }
    lastMeasure_ = newItem.Measure();
    lastMeasureLastEdu_ = newItem.Edu;
  });
}

void MeasureItems::AddSorted(const MeasureItem& newItem) {
  Handled("AddSorted", kAddSortedFailure, newItem, [&] {
    ClaimKey(newItem);
    const int16_t measure = newItem.Measure();
    const int32_t edu = newItem.Edu;
    if (items_.empty() || measure > lastMeasure_) {
      items_.push_back(newItem);
      lastMeasure_ = measure;
      lastMeasureStart_ = static_cast<int16_t>(Count());
      lastMeasureFirstEdu_ = edu;
      lastMeasureLastEdu_ = edu;
    } else if (measure < lastMeasure_) {
      // Earlier measures keep the order of their arrival.
      InsertAt(lastMeasureStart_, newItem);
      ++lastMeasureStart_;
    } else if (edu > lastMeasureLastEdu_) {
      items_.push_back(newItem);
      lastMeasureLastEdu_ = edu;
    } else if (edu < lastMeasureFirstEdu_) {
      InsertAt(lastMeasureStart_, newItem);
      lastMeasureFirstEdu_ = edu;
    } else {
      for (int32_t index = lastMeasureStart_ + 1; index <= Count(); ++index) {
        if (items_[index - 1].Edu > edu) {
          InsertAt(index, newItem);
          return;
        }
      }
      items_.push_back(newItem);
      lastMeasureLastEdu_ = edu;
    }
  });
}

const MeasureItem& MeasureItems::Item(int32_t index) const {
  if (index < 1 || index > Count()) throw std::out_of_range("Subscript out of range");
  return items_[index - 1];
}

void MeasureItems::Remove(int32_t index) {
  if (index < 1 || index > Count()) throw std::out_of_range("Subscript out of range");
  keys_.erase(items_[index - 1].ID());
  items_.erase(items_.begin() + (index - 1));
  // The memory keeps pointing at the same first item of the last measure.
  if (index < lastMeasureStart_) --lastMeasureStart_;
}

} // namespace ostin
