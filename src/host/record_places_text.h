#pragma once
// Failure numbers of the raising places of the text and font records.
#include "host/record.h"

namespace ostin {} // namespace ostin
