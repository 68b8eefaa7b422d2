#pragma once
// The record classes whose bridge calls do not follow the pattern of their shape: the
// header without a key, endings and text repeat styles with their arrays of passes, text
// expressions with two field lists, percussion staves with a packed play map, fretted
// instruments, lyrics with their syllables, and the lyric baselines.
#include <algorithm>
#include <array>
#include <string>

#include "host/records.h"
#include "host/text/caret.h"

namespace ostin {

// Traits of a handmade record: its class name, places, key and fields; its calls follow.
#define OSTIN_HANDMADE_HEAD(C, KeyT, S, Y)                                                         \
  static constexpr const char* kClass = #C;                                                        \
  static constexpr int32_t kVariantYear = Y;                                                       \
  static constexpr const RecordPlaces& kPlaces = k##C##Places;                                     \
  using Key = KeyT;                                                                                \
  using KeyOf = RecordKeyOf<Key>;                                                                  \
  struct Fields {                                                                                  \
    S(OSTIN_MEMBER)                                                                                \
  };                                                                                               \
  static void NameBlocks(Fields& f) {                                                              \
    S(OSTIN_NAME_BLOCK)                                                                            \
  }

struct HeaderTraits {
  OSTIN_HANDMADE_HEAD(Header, int16_t, OSTIN_SHAPE_Header, 0)
  static int16_t Load(bool, const KeyOf&, Fields& f) {
    return LoadHeader(OSTIN_NOFIRST(OSTIN_SHAPE_Header(OSTIN_PTR_ARG)));
  }
  static int16_t Save(bool, const KeyOf&, Fields& f) {
    return SaveHeader(OSTIN_NOFIRST(OSTIN_SHAPE_Header(OSTIN_VAL_ARG)));
  }
};

// The document header: one per document, without a key.
class Header : public Record<HeaderTraits> {
public:
  [[nodiscard]] bool Load() { return Record::Load(0, 0); }
  void Save();
};

#define OSTIN_PASSES_TRAITS(C)                                                                     \
  struct C##Traits {                                                                               \
    OSTIN_HANDMADE_HEAD(C, int16_t, OSTIN_SHAPE_##C, 0)                                            \
    static constexpr int32_t kArrayNewNumber = k##C##ArrayNewFailed;                               \
    static constexpr int32_t kArrayNumber = k##C##ArrayFailed;                                     \
    static int16_t Create(bool, KeyOf& k) { return Create##C(&k.Cmper, &k.Inci); }                 \
    static int16_t Load(bool, const KeyOf& k, Fields& f) {                                         \
      f.Passes.assign(1, 0);                                                                       \
      return Load##C(k.Cmper, k.Inci OSTIN_SHAPE_##C(OSTIN_PTR_ARG));                              \
    }                                                                                              \
    static int16_t LoadArray(const KeyOf& k, Fields& f) {                                          \
      return Load##C##Array(k.Cmper, k.Inci, f.Passes.data());                                     \
    }                                                                                              \
    static int16_t Save(bool, const KeyOf& k, Fields& f) {                                         \
      f.Passes.resize(std::max<int>(1, f.NumTotalPasses), 0);                                      \
      return Save##C(k.Cmper, k.Inci OSTIN_SHAPE_##C(OSTIN_VAL_ARG));                              \
    }                                                                                              \
  };
OSTIN_PASSES_TRAITS(EndingRepeat)
OSTIN_PASSES_TRAITS(TextRepeatStyle)
#undef OSTIN_PASSES_TRAITS

// A record whose passes come in a second call when there is more than one.
template <class Traits> class WithPasses : public Record<Traits> {
public:
  void Create(int16_t cmper, int16_t inci) {
    Record<Traits>::Create(cmper, inci);
    LoadPasses("Finale load of new ", Traits::kArrayNewNumber);
  }
  [[nodiscard]] bool Load(int16_t cmper, int16_t inci) {
    if (!Record<Traits>::Load(cmper, inci)) return false;
    LoadPasses("Finale load of ", Traits::kArrayNumber);
    return true;
  }
  // Pass i from 1; 0 out of range.
  int16_t Pass(int i) const {
    return i >= 1 && i <= static_cast<int>(this->Passes.size()) ? this->Passes[i - 1] : 0;
  }

private:
  // More than one pass: the block grows and the array call fills it.
  void LoadPasses(const char* head, int32_t number) {
    if (this->NumTotalPasses <= 1) return;
    this->Passes.resize(this->NumTotalPasses, 0);
    if (!Traits::LoadArray(this->key_, *this))
      RaiseLogged(head + std::string(Traits::kClass) + " array", number);
  }
};

class EndingRepeat : public WithPasses<EndingRepeatTraits> {};
class TextRepeatStyle : public WithPasses<TextRepeatStyleTraits> {};

struct TextExpressionTraits {
  OSTIN_HANDMADE_HEAD(TextExpression, int16_t, OSTIN_SHAPE_TextExpression, 2004)
  // The value the plain create call takes from its caller; the 2004 call always takes 22.
  static inline int16_t CreateValue = 0;
  static int16_t Create(bool variant, KeyOf& k) {
    return variant ? CreateTextExpression2004(&k.Cmper, &k.Inci, 22)
                   : CreateTextExpression(&k.Cmper, &k.Inci, CreateValue);
  }
  static int16_t Load(bool variant, const KeyOf& k, Fields& f) {
    return variant
               ? LoadTextExpression2004(k.Cmper,
                                        k.Inci OSTIN_SHAPE_TextExpression2004(OSTIN_PTR_ARG))
               : LoadTextExpression(k.Cmper, k.Inci OSTIN_SHAPE_TextExpressionPlain(OSTIN_PTR_ARG));
  }
  static int16_t Save(bool variant, const KeyOf& k, Fields& f) {
    return variant
               ? SaveTextExpression2004(k.Cmper,
                                        k.Inci OSTIN_SHAPE_TextExpression2004(OSTIN_VAL_ARG))
               : SaveTextExpression(k.Cmper, k.Inci OSTIN_SHAPE_TextExpressionPlain(OSTIN_VAL_ARG));
  }
  static int16_t Next(bool variant, KeyOf& k, Fields& f) {
    return variant ? NextTextExpression2004(&k.Cmper,
                                            &k.Inci OSTIN_SHAPE_TextExpression2004(OSTIN_PTR_ARG))
                   : NextTextExpression(&k.Cmper,
                                        &k.Inci OSTIN_SHAPE_TextExpressionPlain(OSTIN_PTR_ARG));
  }
};

// A text expression definition; before 2004 it holds its text, from 2004 on its description.
class TextExpression : public Record<TextExpressionTraits> {
public:
  // Creates a definition; before 2004 the create call takes `value` from the caller.
  void Create(int16_t cmper, int16_t inci, int16_t value = 0);
};

struct DrumStaffTraits {
  OSTIN_HANDMADE_HEAD(DrumStaff, int16_t, OSTIN_SHAPE_DrumStaff, 0)
  static int16_t Create(bool, KeyOf& k, int32_t tag) {
    return CreateDrumStaff(&k.Cmper, &k.Inci, tag);
  }
  static int16_t Load(bool, const KeyOf& k, Fields& f) {
    return LoadDrumStaff(k.Cmper, k.Inci, f.Tag, &f.PercMap, f.PlayMap.data());
  }
  static int16_t Save(bool, const KeyOf& k, Fields& f) {
    return SaveDrumStaff(k.Cmper, k.Inci, f.Tag, f.PercMap, f.PlayMap.data());
  }
};

// A percussion staff's assignment. PlayMap(key) holds one boolean per MIDI key, packed
// into 8 words on the bridge.
class DrumStaff : public Record<DrumStaffTraits> {
public:
  void Create(int16_t cmper, int16_t inci, int32_t tag);
  // Loads the record of that tag.
  [[nodiscard]] bool Load(int16_t cmper, int16_t inci, int32_t tag);
  void Save();

  bool PlayMap(int key) const;
  void SetPlayMap(int key, bool on);

private:
  void Unpack();
  void Pack();
  std::array<bool, 128> playMap_{};
};

struct FretInstrumentTraits {
  OSTIN_HANDMADE_HEAD(FretInstrument, int16_t, OSTIN_SHAPE_FretInstrument, 0)
  static int16_t Create(bool, KeyOf& k) { return CreateFretInstrument(&k.Cmper, &k.Inci); }
  static int16_t Load(bool, const KeyOf& k, Fields& f) {
    return LoadFretInstrument(k.Cmper, k.Inci OSTIN_SHAPE_FretInstrument(OSTIN_PTR_ARG));
  }
  static int16_t Save(bool, const KeyOf& k, Fields& f) {
    return SaveFretInstrument(k.Cmper, k.Inci OSTIN_SHAPE_FretInstrumentSave(OSTIN_VAL_ARG));
  }
  static int16_t Next(bool, KeyOf& k, Fields& f) {
    return NextFretInstrument(&k.Cmper, &k.Inci OSTIN_SHAPE_FretInstrument(OSTIN_PTR_ARG));
  }
};

// A fretted instrument; StringTuning(i) from 1 to 24 reads 0 out of range.
class FretInstrument : public Record<FretInstrumentTraits> {
public:
  int16_t Tuning(int string) const {
    return string >= 1 && string <= 24 ? StringTuning[string - 1] : 0;
  }
};

#define OSTIN_LYRIC_TRAITS(Kind)                                                                   \
  struct Kind##LyricTraits {                                                                       \
    OSTIN_HANDMADE_HEAD(Kind##Lyric, int32_t, OSTIN_SHAPE_Lyric, 0)                                \
    static constexpr int32_t kSyllableNumber = k##Kind##SyllableFailed;                            \
    static constexpr int32_t kTextTag = k##Kind##TextTag;                                          \
    static int16_t Create(bool, KeyOf& k) { return Create##Kind##Lyric(&k.Cmper, &k.Inci); }       \
    static int16_t Load(bool, const KeyOf& k, Fields& f) {                                         \
      return Load##Kind##Lyric(k.Cmper, k.Inci OSTIN_SHAPE_Lyric(OSTIN_PTR_ARG));                  \
    }                                                                                              \
    static int16_t Save(bool, const KeyOf& k, Fields& f) {                                         \
      return Save##Kind##Lyric(k.Cmper, k.Inci OSTIN_SHAPE_Lyric(OSTIN_VAL_ARG));                  \
    }                                                                                              \
    static int16_t Syllable(int16_t raw, int16_t syll, std::string* text, int16_t* font,           \
                            int16_t* size, int16_t* efx, int16_t* hyphen) {                        \
      int32_t unused1 = 0, unused2 = 0;                                                            \
      return Kind##LyricSyllableInfo(raw, syll, text, &unused1, font, size, efx, hyphen,           \
                                     &unused2);                                                    \
    }                                                                                              \
  };                                                                                               \
  struct Kind##BaselineTraits {                                                                    \
    OSTIN_HANDMADE_HEAD(Kind##Baseline, int16_t, OSTIN_SHAPE_Baseline, 0)                          \
    static int16_t Create(bool, KeyOf& k) {                                                        \
      return Create##Kind##Baseline(k.Cmper, &k.Inci, &k.Third);                                   \
    }                                                                                              \
    static int16_t Load(bool, const KeyOf& k, Fields& f) {                                         \
      return Load##Kind##Baseline(k.Cmper, k.Inci, k.Third, &f.Offset);                            \
    }                                                                                              \
    static int16_t Save(bool, const KeyOf& k, Fields& f) {                                         \
      return Save##Kind##Baseline(k.Cmper, k.Inci, k.Third, f.Offset);                             \
    }                                                                                              \
  };
OSTIN_LYRIC_TRAITS(Verse)
OSTIN_LYRIC_TRAITS(Chorus)
OSTIN_LYRIC_TRAITS(Section)
#undef OSTIN_LYRIC_TRAITS

// A syllable of a lyric on an entry: after the record, the syllable's own text, font and
// hyphen come from the raw text RawTextNum.
template <class Traits> class LyricRecord : public Record<Traits> {
public:
  [[nodiscard]] bool Load(int32_t entnum, int16_t inci) {
    return Record<Traits>::Load(entnum, inci) && ReadSyllable();
  }
  [[nodiscard]] bool GetNext(int32_t entnum, int16_t inci) {
    return Record<Traits>::GetNext(entnum, inci) && ReadSyllable();
  }

  std::string Text; // the syllable without its caret commands
  int16_t Font = 0, Size = 0, Efx = 0;
  bool IsHyphen = false;

private:
  bool ReadSyllable() {
    std::string bytes;
    int16_t hyphen = 0;
    if (!Traits::Syllable(this->RawTextNum, this->Syll, &bytes, &Font, &Size, &Efx, &hyphen))
      RaiseLogged("Finale syllable " + std::to_string(this->Syll) + " of " + Traits::kClass +
                      " raw text " + std::to_string(this->RawTextNum) + " not found",
                  Traits::kSyllableNumber);
    Text = ParseCaretCommands(Traits::kTextTag, HostToUtf8(bytes));
    IsHyphen = hyphen != 0;
    return true;
  }
};

class VerseLyric : public LyricRecord<VerseLyricTraits> {};
class ChorusLyric : public LyricRecord<ChorusLyricTraits> {};
class SectionLyric : public LyricRecord<SectionLyricTraits> {};

// Baselines: the key is Number, Cmper1, Cmper2; create takes Number and gives the others.
class VerseBaseline : public Record<VerseBaselineTraits> {};
class ChorusBaseline : public Record<ChorusBaselineTraits> {};
class SectionBaseline : public Record<SectionBaselineTraits> {};

// Makes a raw lyric text of each kind; the id it gives is the RawTextNum of later syllables.
// Text over 32000 characters is cut.
int16_t CreateLyricText(int kind, const std::string& text);
inline constexpr int kVerse = 0, kChorus = 1, kSection = 2;
// The document has any lyric of the kind.
bool AnyLyric(int kind);

} // namespace ostin
