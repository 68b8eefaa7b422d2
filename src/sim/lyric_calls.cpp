// The stand-in's lyric calls: syllables on entries, the raw lyric texts they come from,
// and the baselines of verses, choruses and sections.
#include <string>
#include <vector>

#include "host/bridge.h"
#include "sim/fault_point.h"
#include "sim/host.h"
#include "sim/record_store.h"

using ostin::sim::Host;
using ostin::sim::RecordKey;

namespace {

struct Syllable {
  std::string Text; // with the font commands in force before it
  bool Hyphen = false;
};

// Splits a raw lyric text as the host does: blanks end a syllable, a hyphen ends one that
// goes on in the next; caret commands (^font(...), ^size(...), ^efx(...)) stay with the
// syllables that follow them, and "^^" is a plain caret.
std::vector<Syllable> SplitSyllables(const std::string& raw) {
  std::vector<Syllable> syllables;
  std::string fonts, current;
  auto finish = [&](bool hyphen) {
    if (!current.empty() || hyphen) syllables.push_back({fonts + current, hyphen});
    current.clear();
  };
  for (size_t i = 0; i < raw.size(); ++i) {
    char c = raw[i];
    if (c == '^' && i + 1 < raw.size() && raw[i + 1] == '^') {
      current += "^^";
      ++i;
    } else if (c == '^') {
      size_t close = raw.find(')', i);
      size_t end = close == std::string::npos ? raw.size() : close + 1;
      fonts += raw.substr(i, end - i);
      i = end - 1;
    } else if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
      finish(false);
    } else if (c == '-') {
      finish(true);
    } else {
      current += c;
    }
  }
  finish(false);
  return syllables;
}

int16_t CreateLyric(const char* kind, int32_t* entnum, int16_t* inci) {
  ostin::sim::PointerKey<int32_t> key(entnum, inci, nullptr);
  return ostin::sim::CreateRecord(ostin::sim::ShapeOf(kind), key.Key);
}

int16_t SyllableInfo(const char* textKind, int16_t rawTextNum, int16_t syll, std::string* text,
                     int16_t* font, int16_t* size, int16_t* efx, int16_t* isHyphen) {
  const ostin::sim::RecordShape& shape = ostin::sim::ShapeOf(textKind);
  const ostin::sim::StoredRecord* raw = ostin::sim::FindRecord(shape, RecordKey{rawTextNum, 0});
  if (!raw) return 0;
  std::vector<Syllable> syllables = SplitSyllables((*raw)[0].Text);
  if (syll < 1 || syll > static_cast<int>(syllables.size())) return 0;
  *text = syllables[syll - 1].Text;
  *isHyphen = syllables[syll - 1].Hyphen ? -1 : 0;
  // The font comes with the text as caret commands; the numbers stand for none.
  *font = *size = *efx = 0;
  return 1;
}

int16_t CreateLyricText(const char* textKind, int16_t* id, const std::string& text) {
  const ostin::sim::RecordShape& shape = ostin::sim::ShapeOf(textKind);
  RecordKey key{-1, 0};
  if (!ostin::sim::CreateRecord(shape, key)) return 0;
  ostin::sim::RecordForWrite(shape, key)[0].Text = text;
  *id = static_cast<int16_t>(key.Cmper);
  return 1;
}

int16_t AnyLyric(const char* kind) {
  const ostin::sim::RecordTable* table = ostin::sim::TableOf(ostin::sim::ShapeOf(kind));
  return table && !table->Rows.empty() ? 1 : 0;
}

// The host gives a new baseline the next free pair under its number.
int16_t CreateBaseline(const char* kind, int16_t number, int16_t* cmper1, int16_t* cmper2) {
  RecordKey key{number, 0, -1};
  int16_t created = ostin::sim::CreateRecord(ostin::sim::ShapeOf(kind), key);
  *cmper1 = key.Inci;
  *cmper2 = key.Third;
  return created;
}
} // namespace

#define OSTIN_DEFINE_LYRIC_CALLS(Kind)                                                             \
  int16_t Create##Kind##Lyric(int32_t* entnum, int16_t* inci) {                                    \
    OSTIN_FAULT_POINT("Create" #Kind "Lyric");                                                     \
    return CreateLyric(#Kind "Lyric", entnum, inci);                                               \
  }                                                                                                \
  int16_t Load##Kind##Lyric(int32_t entnum, int16_t inci OSTIN_SHAPE_Lyric(OSTIN_PTR_PARAM)) {     \
    OSTIN_FAULT_POINT("Load" #Kind "Lyric");                                                       \
    return ostin::sim::LoadRecord(ostin::sim::ShapeOf(#Kind "Lyric"), RecordKey{entnum, inci},     \
                                  {OSTIN_SHAPE_Lyric(OSTIN_SLOT)});                                \
  }                                                                                                \
  int16_t Save##Kind##Lyric(int32_t entnum, int16_t inci OSTIN_SHAPE_Lyric(OSTIN_VAL_PARAM)) {     \
    OSTIN_FAULT_POINT("Save" #Kind "Lyric");                                                       \
    return ostin::sim::SaveRecord(ostin::sim::ShapeOf(#Kind "Lyric"), RecordKey{entnum, inci},     \
                                  {OSTIN_SHAPE_Lyric(OSTIN_VSLOT)});                               \
  }                                                                                                \
  int16_t Kind##LyricSyllableInfo(int16_t rawTextNum, int16_t syll, std::string* text,             \
                                  int32_t* unused1, int16_t* Font, int16_t* Size, int16_t* Efx,    \
                                  int16_t* IsHyphen, int32_t* unused2) {                           \
    OSTIN_FAULT_POINT(#Kind "LyricSyllableInfo");                                                  \
    *unused1 = *unused2 = 0;                                                                       \
    return SyllableInfo(#Kind "LyricText", rawTextNum, syll, text, Font, Size, Efx, IsHyphen);     \
  }                                                                                                \
  int16_t Create##Kind##LyricText(int16_t* id, const std::string& text) {                          \
    OSTIN_FAULT_POINT("Create" #Kind "LyricText");                                                 \
    return CreateLyricText(#Kind "LyricText", id, text);                                           \
  }                                                                                                \
  int16_t Any##Kind##Lyric() {                                                                     \
    return AnyLyric(#Kind "Lyric");                                                                \
  }                                                                                                \
  int16_t Create##Kind##Baseline(int16_t number, int16_t* cmper1, int16_t* cmper2) {               \
    OSTIN_FAULT_POINT("Create" #Kind "Baseline");                                                  \
    return CreateBaseline(#Kind "Baseline", number, cmper1, cmper2);                               \
  }                                                                                                \
  int16_t Load##Kind##Baseline(int16_t number, int16_t cmper1, int16_t cmper2, int32_t* Offset) {  \
    OSTIN_FAULT_POINT("Load" #Kind "Baseline");                                                    \
    return ostin::sim::LoadRecord(ostin::sim::ShapeOf(#Kind "Baseline"),                           \
                                  RecordKey{number, cmper1, cmper2},                               \
                                  {ostin::sim::Slot::Value("Offset", 0, Offset)});                 \
  }                                                                                                \
  int16_t Save##Kind##Baseline(int16_t number, int16_t cmper1, int16_t cmper2, int32_t Offset) {   \
    OSTIN_FAULT_POINT("Save" #Kind "Baseline");                                                    \
    return ostin::sim::SaveRecord(ostin::sim::ShapeOf(#Kind "Baseline"),                           \
                                  RecordKey{number, cmper1, cmper2},                               \
                                  {ostin::sim::Slot::Value("Offset", 0, &Offset)});                \
  }
OSTIN_DEFINE_LYRIC_CALLS(Verse)
OSTIN_DEFINE_LYRIC_CALLS(Chorus)
OSTIN_DEFINE_LYRIC_CALLS(Section)
