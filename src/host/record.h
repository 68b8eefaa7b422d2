#pragma once
// The pattern every record class follows: Create, Load, Save, GetNext and Delete over
// one bridge record, with the logged texts and failure numbers of each raising place.
// Absence is a result: Load and GetNext answer false and leave the key as they set it.
#include <cstdint>
#include <string>

#include "platform/code_page.h"
#include "shell/failure.h"

namespace ostin {

// The failure numbers of a record class's raising places, and how its key is written.
struct RecordPlaces {
  int32_t Create, CreateLoad, CreateHandler;
  int32_t Load, LoadHandler;
  int32_t Save, SaveHandler;
  int32_t Next, NextHandler;
  int32_t Delete, DeleteHandler;
  bool TwoPartKey = false; // Cmper1, Cmper2: logs name both parts
};

// A text field on its way to the bridge: host bytes in, UTF-8 back after the call.
class HostText {
public:
  explicit HostText(std::string& text) : text_(text), bytes_(Utf8ToHost(text)) {}
  ~HostText() { text_ = HostToUtf8(bytes_); }
  HostText(const HostText&) = delete;
  HostText& operator=(const HostText&) = delete;
  std::string* Slot() { return &bytes_; }

private:
  std::string& text_;
  std::string bytes_;
};

inline std::string ToHostText(const std::string& text) {
  return Utf8ToHost(text);
}

template <class Traits> class Record : public Traits::Fields {
public:
  using Key = typename Traits::Key;
  using Fields = typename Traits::Fields;

  // Host year; the variant call is made from Traits::kVariantYear on.
  int32_t FinaleVersion = 2000;

  Key Cmper() const { return cmper_; }
  int16_t Inci() const { return inci_; }

  // Makes the record with the host's defaults and reads them back.
  void Create(Key cmper, int16_t inci) {
    Guarded(Text("Create"), Places().CreateHandler, [&] {
      cmper_ = cmper;
      inci_ = inci;
      if (!Traits::Create(Variant(), &cmper_, &inci_))
        RaiseLogged("Finale create of " + Name() + " " + KeyText(cmper, inci), Places().Create);
      if (!Traits::Load(Variant(), cmper_, inci_, AsFields()))
        RaiseLogged("Finale load of new " + Name() + " " + KeyText(cmper_, inci_),
                    Places().CreateLoad);
    });
  }

  // False when there is no such record.
  [[nodiscard]] bool Load(Key cmper, int16_t inci) {
    return Guarded(Text("Load"), Places().LoadHandler, [&] {
      cmper_ = cmper;
      inci_ = inci;
      return Traits::Load(Variant(), cmper_, inci_, AsFields()) != 0;
    });
  }

  // Load that needs the record: absence raises the class's number for it.
  void MustLoad(Key cmper, int16_t inci) {
    if (!Load(cmper, inci)) throw Failure::Internal(Places().Load);
  }

  void Save() {
    Guarded(Text("Save"), Places().SaveHandler, [&] {
      if (!Traits::Save(Variant(), cmper_, inci_, AsFields()))
        RaiseLogged("Finale save of " + Name() + " " + KeyText(cmper_, inci_), Places().Save);
    });
  }

  // False when no record follows the key.
  [[nodiscard]] bool GetNext(Key cmper, int16_t inci) {
    return Guarded(std::string("Finale GetNext") + Traits::kClass + " error ", Places().NextHandler,
                   [&] {
                     cmper_ = cmper;
                     inci_ = inci;
                     return Traits::Next(Variant(), &cmper_, &inci_, AsFields()) != 0;
                   });
  }

  void Delete() {
    Guarded(Text("Delete"), Places().DeleteHandler, [&] {
      if (!Traits::Delete(Variant(), cmper_, inci_))
        RaiseLogged("Finale deletion of " + Name() + " " + KeyText(cmper_, inci_), Places().Delete);
    });
  }

  static constexpr const RecordPlaces& Places() { return Traits::kPlaces; }

protected:
  Key cmper_ = 0;
  int16_t inci_ = 0;

private:
  Fields& AsFields() { return *this; }
  bool Variant() const {
    return Traits::kVariantYear != 0 && FinaleVersion >= Traits::kVariantYear;
  }
  std::string Name() const {
    return Variant() ? std::string(Traits::kClass) + std::to_string(Traits::kVariantYear)
                     : std::string(Traits::kClass);
  }
  static std::string Text(const char* verb) {
    return std::string("Finale ") + verb + Traits::kClass + " error ";
  }
  std::string KeyText(Key cmper, int16_t inci) const {
    std::string key = std::to_string(cmper);
    if (Places().TwoPartKey) key += ", " + std::to_string(inci);
    return key + " failed";
  }
};

} // namespace ostin
