// Duration, pitch, key and MIDI arithmetic that needs neither document nor elements.
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "../xml/xml_test_support.h"
#include "model/arithmetic.h"

namespace ostin {
namespace {

TEST(ArithmeticNumbers, RoundingSendsHalvesToTheEvenNeighbour) {
  const std::vector<std::pair<double, int32_t>> cases = {
      {0.5, 0}, {1.5, 2}, {2.5, 2}, {-1.5, -2}, {-2.5, -2}, {2.5001, 3}, {-2.6, -3}};
  for (const auto& [value, expected] : cases)
    EXPECT_EQ(RoundHalfEven(value), expected) << value;
}

TEST(ArithmeticDuration, SymbolicDurationsAndBeatTypes) {
  struct Case {
    std::string Type;
    int Dots;
    int32_t Edus;
  };
  const std::vector<Case> cases = {{"long", 0, 16384},    {"breve", 0, 8192}, {"half", 3, 3840},
                                   {"quarter", 2, 1792},  {"whole", 1, 6144}, {"16th", 0, 256},
                                   {"sixteenth", 0, 256}, {"256th", 5, 31},   {"Quarter", 0, 0}};
  for (const Case& c : cases)
    EXPECT_EQ(GetSymbolicDuration(c.Type, c.Dots), c.Edus) << c.Type << " " << c.Dots;
  for (const auto& [beatType, edus] :
       std::vector<std::pair<int32_t, int32_t>>{{1, 4096}, {4, 1024}, {8, 512}, {4096, 1}})
    EXPECT_EQ(EdusPerBeatType(beatType), edus) << beatType;
  for (int32_t beatType : {0, 3, 8192, -4}) {
    Failure failure = xml::test_support::Raised([&] { EdusPerBeatType(beatType); });
    EXPECT_EQ(failure.Number, kUnknownBeatType) << beatType;
    EXPECT_EQ(failure.Description, "Unknown time signature beat type " + std::to_string(beatType));
  }
}

TEST(ArithmeticPitch, StepsOctavesAndDistances) {
  struct Case {
    std::string Tonic;
    int16_t TonicOctave, Tcd;
    std::string Step; // empty: unknown tonic, nothing returned
    int16_t Octave;
  };
  const std::vector<Case> cases = {{"D", 4, -2, "B", 3},   {"B", 3, 8, "C", 5},
                                   {"C", 4, -7, "C", 3},   {"A", 4, 2, "C", 5},
                                   {"e", 2, -20, "F", -1}, {"H", 4, 1, "", 9}};
  for (const Case& c : cases) {
    std::string step;
    int16_t octave = 9;
    EXPECT_EQ(PitchAndOctave(c.Tonic, c.TonicOctave, c.Tcd, step, octave), !c.Step.empty());
    EXPECT_EQ(step + std::to_string(octave), c.Step + std::to_string(c.Octave))
        << c.Tonic << c.TonicOctave << " " << c.Tcd;
  }
  EXPECT_EQ(StepFinaleToXml(7), "");
  EXPECT_EQ(WholeSteps("b", 3, "C", 4), 1);
  EXPECT_EQ(WholeSteps("A", 4, "C", 3), -12);
  EXPECT_EQ(WholeSteps("x", 4, "C", 5), 0);
}

TEST(ArithmeticPitch, ChromaticStepsOfDiatonicDisplacements) {
  const std::vector<std::array<int16_t, 3>> cases = {{-1, 0, -2},  {7, 1, 13},   {3, -1, 4},
                                                     {6, 0, 11},   {-6, 0, -11}, {-7, 0, -12},
                                                     {-8, 0, -14}, {14, 0, 24}};
  for (const auto& [diatonic, alteration, semitones] : cases)
    EXPECT_EQ(ChromaticTranspositionSteps(diatonic, alteration), semitones) << diatonic;
}

TEST(ArithmeticMidi, KeysToTcdWithBlackKeysAsSharps) {
  const std::vector<std::array<int16_t, 3>> cases = {{60, 0, 0},  {61, 0, 1},   {65, 3, 0},
                                                     {66, 3, 1},  {71, 6, 0},   {72, 7, 0},
                                                     {58, -2, 1}, {255, 113, 1}};
  for (const auto& [key, tcd, alteration] : cases) {
    int16_t gotTcd = 99, gotAlteration = 99;
    FromMidi(static_cast<uint8_t>(key), gotTcd, gotAlteration);
    EXPECT_EQ(std::make_pair(gotTcd, gotAlteration), std::make_pair(tcd, alteration)) << key;
  }
}

TEST(ArithmeticKey, DefaultDiatonicOfEveryChromaticTransposition) {
  const std::vector<int16_t> diatonic = {-6, -6, -5, -5, -4, -4, -3, -2, -2, -1, -1, 0,
                                         1,  1,  2,  2,  3,  3,  4,  4,  5,  6,  6};
  for (int16_t chromatic = -11; chromatic <= 11; ++chromatic)
    EXPECT_EQ(TransposeDefaultDiatonic(chromatic), diatonic[chromatic + 11]) << chromatic;
  EXPECT_EQ(TransposeDefaultDiatonic(12), 0);
}

TEST(ArithmeticKey, TransposeKeySigRows) {
  // Chromatic, diatonic, octave change; then key alteration, adjusted alteration, steps.
  const std::vector<std::array<int16_t, 6>> cases = {
      {-2, -1, 0, 2, 2, 1},   {-2, -1, 1, 2, 2, -6}, {-3, -1, 0, -3, 9, 2},  {3, 1, 0, 3, -9, -2},
      {2, 2, 0, -2, 10, -1},  {2, 5, 0, -2, -2, -5}, {4, -4, 0, -4, 8, 5},   {5, 2, 0, 1, -11, -3},
      {-5, -2, 0, -1, 11, 3}, {8, -3, 0, 4, -8, 2},  {10, -2, 0, 2, -10, 1}, {-11, 1, 0, 5, 5, -1},
      {-11, 0, 0, -7, -7, 0}, {-6, -3, 0, 6, 6, 3},  {6, 3, 0, -6, -6, -3},  {-1, 0, 0, 7, 7, 0},
      {11, 6, 0, -5, -5, -6}, {12, 2, 1, 4, -3, -9}, {0, 0, 0, 0, 0, 0}};
  for (const auto& c : cases) {
    int16_t keyAlter = 4, adjustedAlter = -3, steps = 99; // kept when chromatic is out of range
    TransposeKeySig(c[0], c[1], c[2], keyAlter, adjustedAlter, steps);
    EXPECT_EQ((std::array<int16_t, 3>{keyAlter, adjustedAlter, steps}),
              (std::array<int16_t, 3>{c[3], c[4], c[5]}))
        << c[0] << " " << c[1] << " " << c[2];
  }
}

TEST(ArithmeticMidi, PatchAndBankOfAPatchSlot) {
  // Patch and type, bank data; then program, bank.
  const std::vector<std::array<int32_t, 4>> cases = {
      {71, 500, 72, 0},          {255, 0, 256, 0},           {0x0100, 2, 1, 3},
      {0x0147, 0x0203, 72, 260}, {0x0100, 0x7F7F, 1, 16384}, {-251, 0, 6, 1}};
  for (const auto& c : cases) {
    int32_t program = -1, bank = -1;
    ConvertMidiPatchBank(static_cast<int16_t>(c[0]), static_cast<int16_t>(c[1]), program, bank);
    EXPECT_EQ(std::make_pair(program, bank), std::make_pair(c[2], c[3])) << c[0] << " " << c[1];
  }
}

} // namespace
} // namespace ostin
