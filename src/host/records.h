#pragma once
// The record classes: one class per record shape, with what record_extras.h adds to it.
#include "host/record_extras.h"
#include "host/record_traits.h"

namespace ostin {

#define OSTIN_RECORD_CLASS(C)                                                                      \
  class C : public Record<C##Traits>, public RecordExtras<C##Traits, C> {};
#define OSTIN_PLAIN_CLASS(C, B, K, S, ops) OSTIN_RECORD_CLASS(C)
#define OSTIN_VARIANT_CLASS(C, B, K, S, P, Y, ops) OSTIN_RECORD_CLASS(C)

OSTIN_PLAIN_RECORDS(OSTIN_PLAIN_CLASS)
OSTIN_FAMILY_VARIANTS(OSTIN_VARIANT_CLASS)

#undef OSTIN_PLAIN_CLASS
#undef OSTIN_VARIANT_CLASS
#undef OSTIN_RECORD_CLASS

} // namespace ostin
