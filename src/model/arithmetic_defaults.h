#pragma once
// The document defaults that the mappings fall back on, read from the preference records, and
// the default vertical place of directions.
#include <cstdint>
#include <string_view>

#include "xml/xml_node.h"

namespace ostin {

// Quarter notes per minute of the document's metronome; 0 when a record is absent.
int16_t DefaultTempo();

// The default opening of hairpins, host units; 0 when the record is absent.
int16_t DefaultWedgeSpread();

int16_t DefaultEnclosureLineWidth();

void DefaultClefChange(int16_t& percent, int16_t& offset);

void DefaultEndingTextOffsets(int16_t& x, int16_t& y);

// Whether common and cut time are shown as their symbols.
void TimeSignatureAbbreviations(bool& common, bool& cut);

// Tenths above the staff of a direction-type element (an empty node for none) at a placement.
int16_t DefaultYPosition(const xml::XmlNode& element, std::string_view placement);

} // namespace ostin
