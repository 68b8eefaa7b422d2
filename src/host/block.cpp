#include "host/block.h"

#include <cstring>

namespace ostin {

namespace {
constexpr StrictBlockOwner kStrictOwners[] = {
    {"AccidentalAmount", Code(0x800405E9), Code(0x800405EB)},
    {"AccidentalOrder", Code(0x800405EC), Code(0x800405ED)},
    {"ToneCenter", Code(0x800405EE), Code(0x800405EF)},
    {"KeyMap", Code(0x800405F0), Code(0x800405F2)},
    {"MidiPatch", Code(0x800405F3), Code(0x800405F4)},
    {"PatchList", Code(0x800405F5), Code(0x800405F6)},
};
} // namespace

const StrictBlockOwner* FindStrictBlockOwner(const char* className) {
  for (const StrictBlockOwner& owner : kStrictOwners)
    if (std::strcmp(owner.Class, className) == 0) return &owner;
  return nullptr;
}

void RaiseSubscript(const StrictBlockOwner& owner, const char* verb, const char* field, int first,
                    int last, int index) {
  RaiseLogged(std::string(owner.Class) + " " + verb + " " + field + " subscript must be between " +
                  std::to_string(first) + " and " + std::to_string(last) + ", not " +
                  std::to_string(index),
              std::string(verb) == "Get" ? owner.GetNumber : owner.SetNumber);
}

} // namespace ostin
