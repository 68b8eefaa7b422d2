#pragma once
// The staves of a MusicXML part on import: neutral records, clef, names, lines and flags.
#include <cstdint>

#include "host/records.h"
#include "model/xml_part.h"

namespace ostin {

// Takes a staff record back to a neutral staff: no alternate notation, font, clef or
// transposition, and the layout flags the import sets itself cleared.
void ClearStaffSpec(StaffSpec& staff);

// Sets the part's staff count from its staves elements, at least 1.
void ComputeStaves(XmlPart& part);

// Fills staff index of the part from its first measure and its content, and saves it. The
// staff's record is part.StaffSpecs(index). A tablature staff keeps its FretInstID.
void EditStaffSpec(XmlPart& part, int16_t index);

// Makes the bracketed group of a part of several staves, named after the part, and saves it.
void InitializeGroupSpec(XmlPart& part);

// Writes the transposition of staff index from a transpose element and saves the staff.
void TransposeStaffSpec(XmlPart& part, int16_t index, const xml::XmlNode& transpose);

} // namespace ostin
