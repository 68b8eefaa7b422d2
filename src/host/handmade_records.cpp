#include "host/handmade_records.h"

namespace ostin {

namespace {
constexpr size_t kLyricTextLimit = 32000;
constexpr const char* kLyricKinds[] = {"VerseLyric", "ChorusLyric", "SectionLyric"};
constexpr int32_t kLyricTextNumbers[] = {kVerseLyricTextFailed, kChorusLyricTextFailed,
                                         kSectionLyricTextFailed};
using CreateLyricTextCall = int16_t (*)(int16_t*, const std::string&);
constexpr CreateLyricTextCall kCreateLyricText[] = {CreateVerseLyricText, CreateChorusLyricText,
                                                    CreateSectionLyricText};
using AnyLyricCall = int16_t (*)();
constexpr AnyLyricCall kAnyLyric[] = {AnyVerseLyric, AnyChorusLyric, AnySectionLyric};
} // namespace

void Header::Save() {
  Guarded("Finale SaveHeader error ", Places().SaveHandler, [&] {
    if (!HeaderTraits::Save(false, key_, *this))
      RaiseLogged("Finale save of Header failed", Places().Save);
  });
}

void TextExpression::Create(int16_t cmper, int16_t inci, int16_t value) {
  TextExpressionTraits::CreateValue = value;
  Record::Create(cmper, inci);
}

void DrumStaff::Create(int16_t cmper, int16_t inci, int32_t tag) {
  Guarded("Finale CreateDrumStaff error ", Places().CreateHandler, [&] {
    key_ = {cmper, inci, 0};
    if (!DrumStaffTraits::Create(false, key_, tag))
      RaiseLogged("Finale create of DrumStaff " + std::to_string(cmper) + " failed",
                  Places().Create);
    Tag = tag;
    if (!DrumStaffTraits::Load(false, key_, *this))
      RaiseLogged("Finale load of new DrumStaff " + std::to_string(key_.Cmper) + " failed",
                  Places().CreateLoad);
    Unpack();
  });
}

bool DrumStaff::Load(int16_t cmper, int16_t inci, int32_t tag) {
  Tag = tag;
  if (!Record::Load(cmper, inci)) return false;
  Unpack();
  return true;
}

void DrumStaff::Save() {
  Pack();
  Record::Save();
}

bool DrumStaff::PlayMap(int key) const {
  return key >= 0 && key < 128 && playMap_[key];
}

void DrumStaff::SetPlayMap(int key, bool on) {
  if (key >= 0 && key < 128) playMap_[key] = on;
}

// Bit k of word w stands for key 16 * w + k; bit 15 is the sign bit.
void DrumStaff::Unpack() {
  for (int key = 0; key < 128; ++key)
    playMap_[key] = (static_cast<uint16_t>(Record::PlayMap[key / 16]) >> (key % 16)) & 1;
}

void DrumStaff::Pack() {
  for (int word = 0; word < 8; ++word) {
    uint16_t bits = 0;
    for (int bit = 0; bit < 16; ++bit)
      if (playMap_[word * 16 + bit]) bits |= static_cast<uint16_t>(1u << bit);
    Record::PlayMap[word] = static_cast<int16_t>(bits);
  }
}

int16_t CreateLyricText(int kind, const std::string& text) {
  std::string bytes = Utf8ToHost(text.substr(0, kLyricTextLimit));
  int16_t id = 0;
  if (!kCreateLyricText[kind](&id, bytes))
    RaiseLogged(std::string("Finale create of ") + kLyricKinds[kind] + " raw text " +
                    std::to_string(id) + " failed",
                kLyricTextNumbers[kind]);
  return id;
}

bool AnyLyric(int kind) {
  return kAnyLyric[kind]() != 0;
}

} // namespace ostin
