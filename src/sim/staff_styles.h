#pragma once
// A staff at a point of the score: its own record with the staff styles assigned at that
// point applied through their masks, and the range over which that state holds.
#include <cstdint>
#include <optional>

#include "sim/document.h"

namespace ostin::sim {

std::optional<StoredRecord> CurrentStaffSpec(int16_t staff, int16_t measure, int32_t edu);

} // namespace ostin::sim
