#pragma once
// Binds each record shape to its bridge calls: the traits that the Record pattern is
// written against, one struct per record, made from the shapes.
#include "host/bridge.h"
#include "host/record.h"
#include "host/record_places.h"

#define OSTIN_TRAIT_CREATE(C, B, K, S, P, Y)                                                       \
  static int16_t Create(bool variant, Key* cmper, int16_t* inci) {                                 \
    return variant ? OSTIN_CAT(Create, OSTIN_CAT(B, Y))(cmper, inci) : Create##B(cmper, inci);     \
  }
#define OSTIN_TRAIT_LOAD(C, B, K, S, P, Y)                                                         \
  static int16_t Load(bool variant, Key cmper, int16_t inci, Fields& f) {                          \
    return variant ? OSTIN_CAT(Load, OSTIN_CAT(B, Y))(cmper, inci S(OSTIN_PTR_ARG))                \
                   : Load##B(cmper, inci P(OSTIN_PTR_ARG));                                        \
  }
#define OSTIN_TRAIT_SAVE(C, B, K, S, P, Y)                                                         \
  static int16_t Save(bool variant, Key cmper, int16_t inci, Fields& f) {                          \
    return variant ? OSTIN_CAT(Save, OSTIN_CAT(B, Y))(cmper, inci S(OSTIN_VAL_ARG))                \
                   : Save##B(cmper, inci P(OSTIN_VAL_ARG));                                        \
  }
#define OSTIN_TRAIT_NEXT(C, B, K, S, P, Y)                                                         \
  static int16_t Next(bool variant, Key* cmper, int16_t* inci, Fields& f) {                        \
    return variant ? OSTIN_CAT(Next, OSTIN_CAT(B, Y))(cmper, inci S(OSTIN_PTR_ARG))                \
                   : Next##B(cmper, inci P(OSTIN_PTR_ARG));                                        \
  }
#define OSTIN_TRAIT_DELETE(C, B, K, S, P, Y)                                                       \
  static int16_t Delete(bool variant, Key cmper, int16_t inci) {                                   \
    return variant ? OSTIN_CAT(Delete, OSTIN_CAT(B, Y))(cmper, inci) : Delete##B(cmper, inci);     \
  }

// Plain records call the same function whichever the host; their variant branch is dead.
#define OSTIN_PLAIN_CREATE(C, B, K, S)                                                             \
  static int16_t Create(bool, Key* cmper, int16_t* inci) {                                         \
    return Create##B(cmper, inci);                                                                 \
  }
#define OSTIN_PLAIN_LOAD(C, B, K, S)                                                               \
  static int16_t Load(bool, Key cmper, int16_t inci, Fields& f) {                                  \
    return Load##B(cmper, inci S(OSTIN_PTR_ARG));                                                  \
  }
#define OSTIN_PLAIN_SAVE(C, B, K, S)                                                               \
  static int16_t Save(bool, Key cmper, int16_t inci, Fields& f) {                                  \
    return Save##B(cmper, inci S(OSTIN_VAL_ARG));                                                  \
  }
#define OSTIN_PLAIN_NEXT(C, B, K, S)                                                               \
  static int16_t Next(bool, Key* cmper, int16_t* inci, Fields& f) {                                \
    return Next##B(cmper, inci S(OSTIN_PTR_ARG));                                                  \
  }
#define OSTIN_PLAIN_DELETE(C, B, K, S)                                                             \
  static int16_t Delete(bool, Key cmper, int16_t inci) {                                           \
    return Delete##B(cmper, inci);                                                                 \
  }
#define OSTIN_PLAIN_OP(op, C, B, K, S) OSTIN_PLAIN_##op(C, B, K, S)

#define OSTIN_TRAITS_HEAD(C, K, S, Y)                                                              \
  static constexpr const char* kClass = #C;                                                        \
  static constexpr int32_t kVariantYear = Y;                                                       \
  static constexpr const RecordPlaces& kPlaces = k##C##Places;                                     \
  using Key = OSTIN_KEYTYPE_##K;                                                                   \
  struct Fields {                                                                                  \
    S(OSTIN_MEMBER)                                                                                \
  };

#define OSTIN_PLAIN_TRAITS(C, B, K, S, ops)                                                        \
  struct C##Traits {                                                                               \
    OSTIN_TRAITS_HEAD(C, K, S, 0)                                                                  \
    OSTIN_OPS(ops, OSTIN_PLAIN_OP, C, B, K, S)                                                     \
  };

#define OSTIN_VARIANT_TRAITS(C, B, K, S, P, Y, ops)                                                \
  struct C##Traits {                                                                               \
    OSTIN_TRAITS_HEAD(C, K, S, Y)                                                                  \
    OSTIN_VARIANT_OPS_##ops(C, B, K, S, P, Y)                                                      \
  };
#define OSTIN_VARIANT_OPS_CLS(C, B, K, S, P, Y)                                                    \
  OSTIN_TRAIT_CREATE(C, B, K, S, P, Y)                                                             \
  OSTIN_TRAIT_LOAD(C, B, K, S, P, Y) OSTIN_TRAIT_SAVE(C, B, K, S, P, Y)
#define OSTIN_VARIANT_OPS_CLSN(C, B, K, S, P, Y)                                                   \
  OSTIN_VARIANT_OPS_CLS(C, B, K, S, P, Y) OSTIN_TRAIT_NEXT(C, B, K, S, P, Y)
#define OSTIN_VARIANT_OPS_CLSD(C, B, K, S, P, Y)                                                   \
  OSTIN_VARIANT_OPS_CLS(C, B, K, S, P, Y) OSTIN_TRAIT_DELETE(C, B, K, S, P, Y)
#define OSTIN_VARIANT_OPS_CLSND(C, B, K, S, P, Y)                                                  \
  OSTIN_VARIANT_OPS_CLSN(C, B, K, S, P, Y) OSTIN_TRAIT_DELETE(C, B, K, S, P, Y)

namespace ostin {
OSTIN_PLAIN_RECORDS(OSTIN_PLAIN_TRAITS)
OSTIN_VARIANT_RECORDS(OSTIN_VARIANT_TRAITS)
} // namespace ostin
