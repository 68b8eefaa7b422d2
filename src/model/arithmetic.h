#pragma once
// The arithmetic between the host's units and MusicXML's, theme by theme.
#include "model/arithmetic_defaults.h"
#include "model/arithmetic_duration.h"
#include "model/arithmetic_key.h"
#include "model/arithmetic_midi.h"
#include "model/arithmetic_numbers.h"
#include "model/arithmetic_pitch.h"
