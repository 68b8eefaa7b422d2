#pragma once
// What a record class adds to the fields and calls of its shape: block accessors with
// their index rules, computed fields, and calls of its own. A record's class derives
// from RecordExtras<its traits, itself>, empty unless specialised here.
#include <cstdint>

namespace ostin {

template <class Traits, class Self> class RecordExtras {};

} // namespace ostin
