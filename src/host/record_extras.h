#pragma once
// What a record class adds to the fields and calls of its shape: accessors of blocks
// whose elements the call interleaves, computed fields, and calls of its own. A record's
// class derives from RecordExtras<its traits, itself>, empty unless specialised here.
#include <cstdint>

#include "host/bridge.h"
#include "host/name_text.h"
#include "host/record_traits.h"

namespace ostin {

template <class Traits, class Self> class RecordExtras {};

// Elements of a block that the call interleaves with another, addressed from 1; out of
// range they read 0 and write nothing, or log and raise for a strict owner.
template <class Fields, class T, int N> struct Interleaved {
  T Fields::*Members[N];
  const char* Owner = nullptr; // a strict owner's class, or nullptr
  const char* Name = "";

  T Get(const Fields& f, int i) const {
    if (i >= 1 && i <= N) return f.*Members[i - 1];
    Refuse("Get", i);
    return T{};
  }
  void Set(Fields& f, int i, T value) const {
    if (i >= 1 && i <= N)
      f.*Members[i - 1] = value;
    else
      Refuse("Let", i);
  }
  void Refuse(const char* verb, int i) const {
    if (const StrictBlockOwner* owner = Owner ? FindStrictBlockOwner(Owner) : nullptr)
      RaiseSubscript(*owner, verb, Name, 1, N, i);
  }
};

#define OSTIN_INTERLEAVED(Type, Name, ...)                                                         \
  Type Name(int i) const {                                                                         \
    return k##Name.Get(Fields(), i);                                                               \
  }                                                                                                \
  void Set##Name(int i, Type value) {                                                              \
    k##Name.Set(Fields(), i, value);                                                               \
  }

template <class Self> class RecordExtras<TimeUpperTraits, Self> {
  using F = TimeUpperTraits::Fields;
  static constexpr Interleaved<F, int16_t, 2> kMain{{&F::Main_1, &F::Main_2}};
  static constexpr Interleaved<F, int16_t, 2> kFract{{&F::Fract_1, &F::Fract_2}};
  static constexpr Interleaved<F, int16_t, 2> kFlag{{&F::Flag_1, &F::Flag_2}};
  const F& Fields() const { return static_cast<const Self&>(*this); }
  F& Fields() { return static_cast<Self&>(*this); }

public:
  OSTIN_INTERLEAVED(int16_t, Main)
  OSTIN_INTERLEAVED(int16_t, Fract)
  OSTIN_INTERLEAVED(int16_t, Flag)
};

template <class Self> class RecordExtras<TimeLowerTraits, Self> {
  using F = TimeLowerTraits::Fields;
  static constexpr Interleaved<F, int16_t, 3> kMain{{&F::Main_1, &F::Main_2, &F::Main_3}};
  static constexpr Interleaved<F, int16_t, 3> kFlag{{&F::Flag_1, &F::Flag_2, &F::Flag_3}};
  const F& Fields() const { return static_cast<const Self&>(*this); }
  F& Fields() { return static_cast<Self&>(*this); }

public:
  OSTIN_INTERLEAVED(int16_t, Main)
  OSTIN_INTERLEAVED(int16_t, Flag)
};

template <class Self> class RecordExtras<MidiPatchTraits, Self> {
  using F = MidiPatchTraits::Fields;
  static constexpr Interleaved<F, int16_t, 3> kPatchAndPatchType{
      {&F::PatchAndPatchType_1, &F::PatchAndPatchType_2, &F::PatchAndPatchType_3},
      "MidiPatch",
      "PatchAndPatchType"};
  static constexpr Interleaved<F, int16_t, 3> kBankData{
      {&F::BankData_1, &F::BankData_2, &F::BankData_3}, "MidiPatch", "BankData"};
  const F& Fields() const { return static_cast<const Self&>(*this); }
  F& Fields() { return static_cast<Self&>(*this); }

public:
  OSTIN_INTERLEAVED(int16_t, PatchAndPatchType)
  OSTIN_INTERLEAVED(int16_t, BankData)
};

template <class Self> class RecordExtras<SmartShapeTraits, Self> {
  using F = SmartShapeTraits::Fields;
  static constexpr Interleaved<F, int16_t, 2> kStartControlX{
      {&F::StartControlX_1, &F::StartControlX_2}};
  static constexpr Interleaved<F, int16_t, 2> kStartControlY{
      {&F::StartControlY_1, &F::StartControlY_2}};
  static constexpr Interleaved<F, int16_t, 2> kStopControlX{
      {&F::StopControlX_1, &F::StopControlX_2}};
  static constexpr Interleaved<F, int16_t, 2> kStopControlY{
      {&F::StopControlY_1, &F::StopControlY_2}};
  static constexpr Interleaved<F, int16_t, 2> kFullCtrlX{{&F::FullCtrlX_1, &F::FullCtrlX_2}};
  static constexpr Interleaved<F, int16_t, 2> kFullCtrlY{{&F::FullCtrlY_1, &F::FullCtrlY_2}};
  const F& Fields() const { return static_cast<const Self&>(*this); }
  F& Fields() { return static_cast<Self&>(*this); }

public:
  OSTIN_INTERLEAVED(int16_t, StartControlX)
  OSTIN_INTERLEAVED(int16_t, StartControlY)
  OSTIN_INTERLEAVED(int16_t, StopControlX)
  OSTIN_INTERLEAVED(int16_t, StopControlY)
  OSTIN_INTERLEAVED(int16_t, FullCtrlX)
  OSTIN_INTERLEAVED(int16_t, FullCtrlY)
  // A working copy for the import of slurs, passed by no call.
  int16_t SlurX = 0, SlurY = 0, SlurFlag = 0;
};

template <class Self> class RecordExtras<CenterShapeTraits, Self> {
  using F = CenterShapeTraits::Fields;
  static constexpr Interleaved<F, int16_t, 2> kCtlPtAdjX{{&F::CtlPtAdjX_1, &F::CtlPtAdjX_2}};
  static constexpr Interleaved<F, int16_t, 2> kCtlPtAdjY{{&F::CtlPtAdjY_1, &F::CtlPtAdjY_2}};
  const F& Fields() const { return static_cast<const Self&>(*this); }
  F& Fields() { return static_cast<Self&>(*this); }

public:
  OSTIN_INTERLEAVED(int16_t, CtlPtAdjX)
  OSTIN_INTERLEAVED(int16_t, CtlPtAdjY)
};

template <class Self> class RecordExtras<ClefElementTraits, Self> {
public:
  // The clef's position: 16-bit on the call, an unsigned value in the measure.
  uint32_t ClefEduValue() const {
    return static_cast<uint16_t>(static_cast<const Self&>(*this).ClefEdu);
  }
};

template <class Self> class RecordExtras<StaffSpecTraits, Self> {
public:
  // The staff at a point of the score with the staff styles assigned there applied; its
  // Range fields tell how far that state holds. False when the staff has no record.
  [[nodiscard]] bool LoadCurrent(int16_t staff, int16_t measure, int32_t edu) {
    Self& self = static_cast<Self&>(*this);
    return Guarded("Finale LoadCurrentStaffSpec error ", kLoadCurrentHandlerFailed, [&] {
      self.key_ = {staff, 0, 0};
      MeasNum = measure;
      EduPos = edu;
      StaffSpecTraits::Fields& f = self;
      return (self.Variant()
                  ? LoadCurrentStaffSpec2003(staff, measure,
                                             edu OSTIN_SHAPE_StaffSpec(OSTIN_PTR_ARG))
                  : LoadCurrentStaffSpec(staff, measure,
                                         edu OSTIN_SHAPE_StaffSpecPlain(OSTIN_PTR_ARG))) != 0;
    });
  }
  // The absence number of LoadCurrent for the call that was made.
  int32_t LoadCurrentAbsent() const {
    return static_cast<const Self&>(*this).Variant() ? Code(0x80040675) : Code(0x8004062C);
  }

  int16_t MeasNum = 0; // the point given to LoadCurrent
  int32_t EduPos = 0;

  // The staff's names as plain text, read once; writing makes new name text blocks.
  std::string FullNameText() {
    return full_.Get(Self_().FinaleVersion, Self_().FullName, kStaffFullName);
  }
  void SetFullNameText(const std::string& text) {
    Self_().FullName = full_.Let(Self_().FinaleVersion, Self_().FullName, text, kStaffFullName);
  }
  std::string AbbrvNameText() {
    return abbrv_.Get(Self_().FinaleVersion, Self_().AbbrvName, kStaffAbbrvName);
  }
  void SetAbbrvNameText(const std::string& text) {
    Self_().AbbrvName = abbrv_.Let(Self_().FinaleVersion, Self_().AbbrvName, text, kStaffAbbrvName);
  }

private:
  Self& Self_() { return static_cast<Self&>(*this); }
  NameText full_, abbrv_;
};

template <class Self> class RecordExtras<StaffStyleTraits, Self> {
public:
  std::string FullNameText() {
    return full_.Get(Self_().FinaleVersion, Self_().FullName, kStyleFullName);
  }
  void SetFullNameText(const std::string& text) {
    Self_().FullName = full_.Let(Self_().FinaleVersion, Self_().FullName, text, kStyleFullName);
  }
  std::string AbbrvNameText() {
    return abbrv_.Get(Self_().FinaleVersion, Self_().AbbrvName, kStyleAbbrvName);
  }
  void SetAbbrvNameText(const std::string& text) {
    Self_().AbbrvName = abbrv_.Let(Self_().FinaleVersion, Self_().AbbrvName, text, kStyleAbbrvName);
  }

private:
  Self& Self_() { return static_cast<Self&>(*this); }
  NameText full_, abbrv_;
};

template <class Self> class RecordExtras<GroupSpecTraits, Self> {
public:
  // The group's names as plain text; the text blocks take the group's host year.
  std::string FullNameText() {
    return full_.Get(Self_().FinaleVersion, Self_().FullNameID, kGroupFullName);
  }
  void SetFullNameText(const std::string& text) {
    Self_().FullNameID = full_.Let(Self_().FinaleVersion, Self_().FullNameID, text, kGroupFullName);
  }
  std::string AbrvNameText() {
    return abbrv_.Get(Self_().FinaleVersion, Self_().AbrvNameID, kGroupAbrvName);
  }
  void SetAbrvNameText(const std::string& text) {
    Self_().AbrvNameID =
        abbrv_.Let(Self_().FinaleVersion, Self_().AbrvNameID, text, kGroupAbrvName);
  }

private:
  Self& Self_() { return static_cast<Self&>(*this); }
  NameText full_, abbrv_;
};

#undef OSTIN_INTERLEAVED

} // namespace ostin
