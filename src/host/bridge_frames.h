#pragma once
// Bridge calls of the music frames: frames, entries, notes and their metrics.
#include <cstdint>
