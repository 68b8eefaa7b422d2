#pragma once
// Host durations (EDUs, 1024 to a quarter note) against MusicXML note types and divisions.
#include <cstdint>
#include <string_view>

#include "shell/failure.h"
#include "xml/xml_node.h"

namespace ostin {

inline constexpr int32_t kEdusPerQuarter = 1024;

// Raised by GetActualDuration when no divisions are in force.
inline constexpr int32_t kDivisionsMissing = Code(0x80040313);
// Raised by EdusPerBeatType for a beat type that is not a power of two up to 4096.
inline constexpr int32_t kUnknownBeatType = Code(0x800402E1);

// EDUs of a MusicXML note type with its dots; 0 for an unknown type.
int32_t GetSymbolicDuration(std::string_view type, int dots);

// EDUs of a MusicXML duration in the divisions given, with the written value of a tuplet
// note when its time-modification element is given (an empty node for none).
int32_t GetActualDuration(int32_t duration, int32_t divisions,
                          const xml::XmlNode& timeModification = {});

// EDUs of one beat of a time signature's beat type.
int32_t EdusPerBeatType(int32_t beatType);

} // namespace ostin
