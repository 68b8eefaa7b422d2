#pragma once
// Binds each record shape to its bridge calls: the traits that the Record pattern is
// written against, one struct per record, made from the shapes.
#include "host/bridge.h"
#include "host/record.h"
#include "host/record_places.h"

// The call of the host year's variant, or the plain call below that year.
#define OSTIN_VARIANT_CALL(verb, B, Y, args, plainArgs)                                            \
  (variant ? OSTIN_CAT(verb, OSTIN_CAT(B, Y)) args : OSTIN_CAT(verb, B) plainArgs)

#define OSTIN_TRAIT_CREATE(B, K, S, P, Y)                                                          \
  static int16_t Create(bool variant, KeyOf& k) {                                                  \
    return OSTIN_VARIANT_CALL(Create, B, Y, (OSTIN_KEYARGP_##K(k)), (OSTIN_KEYARGP_##K(k)));       \
  }
#define OSTIN_TRAIT_LOAD(B, K, S, P, Y)                                                            \
  static int16_t Load(bool variant, const KeyOf& k, Fields& f) {                                   \
    return OSTIN_VARIANT_CALL(Load, B, Y, (OSTIN_KEYARGV_##K(k) S(OSTIN_PTR_ARG)),                 \
                              (OSTIN_KEYARGV_##K(k) P(OSTIN_PTR_ARG)));                            \
  }
#define OSTIN_TRAIT_SAVE(B, K, S, P, Y)                                                            \
  static int16_t Save(bool variant, const KeyOf& k, Fields& f) {                                   \
    return OSTIN_VARIANT_CALL(Save, B, Y, (OSTIN_KEYARGV_##K(k) S(OSTIN_VAL_ARG)),                 \
                              (OSTIN_KEYARGV_##K(k) P(OSTIN_VAL_ARG)));                            \
  }
#define OSTIN_TRAIT_NEXT(B, K, S, P, Y)                                                            \
  static int16_t Next(bool variant, KeyOf& k, Fields& f) {                                         \
    return OSTIN_VARIANT_CALL(Next, B, Y, (OSTIN_KEYARGP_##K(k) S(OSTIN_PTR_ARG)),                 \
                              (OSTIN_KEYARGP_##K(k) P(OSTIN_PTR_ARG)));                            \
  }
#define OSTIN_TRAIT_DELETE(B, K, S, P, Y)                                                          \
  static int16_t Delete(bool variant, const KeyOf& k) {                                            \
    return OSTIN_VARIANT_CALL(Delete, B, Y, (OSTIN_KEYARGV_##K(k)), (OSTIN_KEYARGV_##K(k)));       \
  }
#define OSTIN_TRAIT(op, B, K, S, P, Y) OSTIN_TRAIT_##op(B, K, S, P, Y)

#define OSTIN_TRAITS_OPS_CLS(B, K, S, P, Y)                                                        \
  OSTIN_TRAIT(CREATE, B, K, S, P, Y)                                                               \
  OSTIN_TRAIT(LOAD, B, K, S, P, Y) OSTIN_TRAIT(SAVE, B, K, S, P, Y)
#define OSTIN_TRAITS_OPS_CLSN(B, K, S, P, Y)                                                       \
  OSTIN_TRAITS_OPS_CLS(B, K, S, P, Y) OSTIN_TRAIT(NEXT, B, K, S, P, Y)
#define OSTIN_TRAITS_OPS_CLSD(B, K, S, P, Y)                                                       \
  OSTIN_TRAITS_OPS_CLS(B, K, S, P, Y) OSTIN_TRAIT(DELETE, B, K, S, P, Y)
#define OSTIN_TRAITS_OPS_CLSND(B, K, S, P, Y)                                                      \
  OSTIN_TRAITS_OPS_CLSN(B, K, S, P, Y) OSTIN_TRAIT(DELETE, B, K, S, P, Y)

#define OSTIN_TRAITS_HEAD(C, K, S, Y)                                                              \
  static constexpr const char* kClass = #C;                                                        \
  static constexpr int32_t kVariantYear = Y;                                                       \
  static constexpr const RecordPlaces& kPlaces = k##C##Places;                                     \
  using Key = OSTIN_KEYTYPE_##K;                                                                   \
  using KeyOf = RecordKeyOf<Key>;                                                                  \
  struct Fields {                                                                                  \
    S(OSTIN_MEMBER)                                                                                \
  };                                                                                               \
  static void NameBlocks(Fields& f) {                                                              \
    S(OSTIN_NAME_BLOCK)                                                                            \
  }

// A plain record: both branches make the same call, year 0 never picks the variant.
#define OSTIN_PLAIN_TRAITS(C, B, K, S, ops)                                                        \
  struct C##Traits {                                                                               \
    OSTIN_TRAITS_HEAD(C, K, S, 0)                                                                  \
    OSTIN_TRAITS_OPS_##ops(B, K, S, S, )                                                           \
  };
#define OSTIN_VARIANT_TRAITS(C, B, K, S, P, Y, ops)                                                \
  struct C##Traits {                                                                               \
    OSTIN_TRAITS_HEAD(C, K, S, Y)                                                                  \
    OSTIN_TRAITS_OPS_##ops(B, K, S, P, Y)                                                          \
  };

namespace ostin {
OSTIN_PLAIN_RECORDS(OSTIN_PLAIN_TRAITS)
OSTIN_VARIANT_RECORDS(OSTIN_VARIANT_TRAITS)
} // namespace ostin
