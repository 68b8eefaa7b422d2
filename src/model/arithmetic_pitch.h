#pragma once
// Step letters against scale degrees, host pitches (Tcd) against steps and octaves, and MIDI keys.
#include <cstdint>
#include <string>
#include <string_view>

#include "xml/xml_node.h"

namespace ostin {

// 0 to 6 for "C" to "B" in either case; -1 for anything else.
int16_t StepXmlToFinale(std::string_view step);

// "C" to "B" for 0 to 6; empty otherwise.
std::string StepFinaleToXml(int number);

// The step and octave of a Tcd counted from a tonic at its octave; false, with step and
// octave untouched, for an unknown tonic.
bool PitchAndOctave(std::string_view tonic, int16_t tonicOctave, int16_t tcd, std::string& step,
                    int16_t& octave);

// Diatonic distance from the first pitch to the second; 0 when a step is unknown.
int16_t WholeSteps(std::string_view step1, int16_t octave1, std::string_view step2,
                   int16_t octave2);

// Semitones of a diatonic displacement with a chromatic alteration.
int16_t ChromaticTranspositionSteps(int16_t diatonic, int16_t alteration);

// Tcd from middle C and alteration of a MIDI key; black keys read as sharps.
void FromMidi(uint8_t key, int16_t& tcd, int16_t& alteration);

// The MIDI key of a pitch, staff-tuning or unpitched element.
uint8_t MidiNote(const xml::XmlNode& element);

// The host's clef number of a MusicXML clef element on a host year.
int16_t ClefValue(const xml::XmlNode& clefElement, int32_t finaleVersion);

} // namespace ostin
