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
  // The absence numbers of the year's variant call, where they differ from the plain ones.
  int32_t LoadVariant = 0, NextVariant = 0;
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

// The key of a record: Cmper (or Cmper1, or Entnum), Inci (or Cmper2), and a third part
// for the records that have one.
template <class Key> struct RecordKeyOf {
  Key Cmper = 0;
  int16_t Inci = 0;
  int16_t Third = 0;
};

template <class Traits> class Record : public Traits::Fields {
public:
  using KeyType = typename Traits::Key;
  using Fields = typename Traits::Fields;

  Record() { Traits::NameBlocks(*this); }

  // Host year; the variant call is made from Traits::kVariantYear on.
  int32_t FinaleVersion = 2000;

  KeyType Cmper() const { return key_.Cmper; }
  int16_t Inci() const { return key_.Inci; }
  int16_t Third() const { return key_.Third; }

  // Makes the record with the host's defaults and reads them back; -1 in the key takes
  // the next free number.
  void Create(KeyType cmper, int16_t inci, int16_t third = 0) {
    Guarded(HandlerText("Create"), Places().CreateHandler, [&] {
      key_ = {cmper, inci, third};
      std::string given = KeyText();
      if (!Traits::Create(Variant(), key_))
        RaiseLogged("Finale create of " + CallName() + " " + given + " failed", Places().Create);
      if (!Traits::Load(Variant(), key_, AsFields()))
        RaiseLogged("Finale load of new " + CallName() + " " + KeyText() + " failed",
                    Places().CreateLoad);
    });
  }

  // False when there is no such record.
  [[nodiscard]] bool Load(KeyType cmper, int16_t inci, int16_t third = 0) {
    return Guarded(HandlerText("Load"), Places().LoadHandler, [&] {
      key_ = {cmper, inci, third};
      return Traits::Load(Variant(), key_, AsFields()) != 0;
    });
  }

  // Load that needs the record: absence raises the class's number for it.
  void MustLoad(KeyType cmper, int16_t inci, int16_t third = 0) {
    if (!Load(cmper, inci, third))
      throw Failure::Internal(Variant() && Places().LoadVariant ? Places().LoadVariant
                                                                : Places().Load);
  }

  void Save() {
    Guarded(HandlerText("Save"), Places().SaveHandler, [&] {
      if (!Traits::Save(Variant(), key_, AsFields()))
        RaiseLogged("Finale save of " + CallName() + " " + KeyText() + " failed", Places().Save);
    });
  }

  // False when no record follows the key.
  [[nodiscard]] bool GetNext(KeyType cmper, int16_t inci, int16_t third = 0) {
    return Guarded(std::string("Finale GetNext") + Traits::kClass + " error ", Places().NextHandler,
                   [&] {
                     key_ = {cmper, inci, third};
                     return Traits::Next(Variant(), key_, AsFields()) != 0;
                   });
  }

  void Delete() {
    Guarded(HandlerText("Delete"), Places().DeleteHandler, [&] {
      if (!Traits::Delete(Variant(), key_))
        RaiseLogged("Finale deletion of " + CallName() + " " + KeyText() + " failed",
                    Places().Delete);
    });
  }

  static constexpr const RecordPlaces& Places() { return Traits::kPlaces; }
  // The host year's variant call is made.
  bool Variant() const {
    return Traits::kVariantYear != 0 && FinaleVersion >= Traits::kVariantYear;
  }

protected:
  RecordKeyOf<KeyType> key_;

  template <class, class> friend class RecordExtras;

private:
  Fields& AsFields() { return *this; }
  std::string CallName() const {
    return Variant() ? std::string(Traits::kClass) + std::to_string(Traits::kVariantYear)
                     : std::string(Traits::kClass);
  }
  static std::string HandlerText(const char* verb) {
    return std::string("Finale ") + verb + Traits::kClass + " error ";
  }
  std::string KeyText() const {
    std::string key = std::to_string(key_.Cmper);
    if (Places().TwoPartKey) key += ", " + std::to_string(key_.Inci);
    return key;
  }
};

} // namespace ostin
