#pragma once
// The sample documents that ship in data/examples, each a short piece that shows one side
// of a score: piano writing, transposing instruments, percussion, repeats, a pickup.
#include <vector>

#include "sim/document.h"

namespace ostin::tools {

struct Example {
  const char* FileName;
  const char* Holds;
  sim::Document (*Make)();
};

const std::vector<Example>& Examples();

sim::Document PianoExample();
sim::Document TransposingExample();
sim::Document PercussionExample();
sim::Document RepeatsExample();
sim::Document PickupExample();

} // namespace ostin::tools
