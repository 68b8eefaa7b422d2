#pragma once
// Which way a stem goes: from the positions of the notes on the staff in force and the stem
// flags of the entry, and the side of an articulation that follows from it. Serves export
// (with the host's metrics when UseMetrics is set) and import (to know the default).
#include <cstdint>
#include <string>
#include <string_view>

#include "host/frames/entry.h"
#include "host/frames/metrics.h"
#include "host/frames/tgf.h"
#include "host/gfhold.h"
#include "model/xml_part.h"

namespace ostin {

class Stemming {
public:
  // "above" or "below" for an articulation placement (0 notehead side, 1 stem side,
  // 2 above, 3 below); empty when it cannot be told.
  static std::string ConvertPlacement(int32_t thisPlacement, bool reversed,
                                      std::string_view thisStem);
  // Diatonic steps of a host pitch from the middle line of the clef; positive is above.
  static int16_t ForFinale(int16_t tcd, int16_t finaleClef, const XmlPart& thisPart);
  // The same for a MusicXML pitch.
  static int16_t ForXml(std::string_view pitchStep, int16_t octave, int16_t finaleClef);

  // Default direction of the beam group that starts at an entry (from 1), and how many
  // entries with notes it holds. With freezeOK a frozen stem decides.
  std::string DefaultStem(Tgf& thisTgf, int16_t entryIndex, Gfhold& thisGfhold,
                          const XmlPart& thisPart, int16_t thisStaff, bool freezeOK,
                          int16_t& howManyEntries) const;
  // Direction of one entry: the MusicXML stem, the direction that articulations follow,
  // and whether the entry starts a beam group.
  void GetEntryStem(Tgf& thisTgf, int16_t entryIndex, Gfhold& thisGfhold, const XmlPart& thisPart,
                    int16_t thisStaff, std::string_view layerStem, std::string_view lastBeam,
                    std::string& xmlStem, std::string& finaleStem, bool& beamStart);
  // Default direction of one entry by itself.
  static std::string SingleEntryStem(Tgf& thisTgf, Entry& entry, int16_t entryIndex,
                                     const XmlPart& thisPart, int16_t thisStaff, int16_t clef);

  bool UseMetrics = false;
  // Declared last, as it takes the class's name.
  ostin::EntryMetrics EntryMetrics;
};

} // namespace ostin
