#pragma once
// MIDI patch numbers and the sound elements of expressions' playback.
#include <cstdint>
#include <string>

#include "xml/xml_document.h"

namespace ostin {

// Program (from 1) and bank (0 for none) of a host patch slot.
void ConvertMidiPatchBank(int16_t patchAndPatchType, int16_t bankData, int32_t& program,
                          int32_t& bank);

// The sound element of an expression's playback, with its id; an empty node and an empty id
// when the playback has no MusicXML form.
xml::XmlNode CreateExpressionPlayback(int16_t flag, int16_t data1, int16_t data2,
                                      const xml::XmlDocument& document, std::string& id);

} // namespace ostin
