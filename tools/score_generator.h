#pragma once
// Generates large scores for tests and benchmarks: any number of staves and measures, with
// chords, rests, dotted notes, ties, a second layer on every third staff, a second voice in
// every other measure of the staves after those, clefs and transpositions by staff, and key and
// time changes through the piece, under a header titled "Generated score S x M". The same size
// and seed give the same score.
#include <cstdint>

#include "sim/document.h"

namespace ostin::tools {

struct ScoreSize {
  int16_t Staves = 4;
  int16_t Measures = 16;
  uint32_t Seed = 1;
};

// Throws BuildError for a size the host cannot hold.
sim::Document GenerateScore(const ScoreSize& size);

} // namespace ostin::tools
