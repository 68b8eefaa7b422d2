#pragma once
// The record classes with the plain pattern: one class per record shape.
#include "host/record_traits.h"

namespace ostin {

#define OSTIN_PLAIN_CLASS(C, B, K, S, ops)                                                         \
  class C : public Record<C##Traits> {};

OSTIN_PLAIN_RECORDS(OSTIN_PLAIN_CLASS)

#undef OSTIN_PLAIN_CLASS

} // namespace ostin
