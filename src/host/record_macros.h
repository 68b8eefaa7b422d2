#pragma once
// Expansions of the record shapes: parameter lists of the bridge calls, argument lists
// of the record classes, members of the record classes and slots of the stand-in.
#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "host/block.h"

// The list without its first element: a field list of a call that has no key.
#define OSTIN_NOFIRST(...) OSTIN_NOFIRST_(__VA_ARGS__)
#define OSTIN_NOFIRST_(first, ...) __VA_ARGS__

#define OSTIN_CAT_(a, b) a##b
#define OSTIN_CAT(a, b) OSTIN_CAT_(a, b)

// Element k (from 1) of a block of n, for blocks passed one pointer per element.
#define OSTIN_REPEAT_2(M, name) M(name, 1) M(name, 2)
#define OSTIN_REPEAT_3(M, name) OSTIN_REPEAT_2(M, name) M(name, 3)
#define OSTIN_REPEAT_4(M, name) OSTIN_REPEAT_3(M, name) M(name, 4)
#define OSTIN_REPEAT_5(M, name) OSTIN_REPEAT_4(M, name) M(name, 5)
#define OSTIN_REPEAT_6(M, name) OSTIN_REPEAT_5(M, name) M(name, 6)
#define OSTIN_REPEAT_7(M, name) OSTIN_REPEAT_6(M, name) M(name, 7)
#define OSTIN_REPEAT_8(M, name) OSTIN_REPEAT_7(M, name) M(name, 8)
#define OSTIN_REPEAT_12(M, name)                                                                   \
  OSTIN_REPEAT_8(M, name) M(name, 9) M(name, 10) M(name, 11) M(name, 12)
#define OSTIN_REPEAT(n, M, name) OSTIN_REPEAT_##n(M, name)

// Key parameters: by pointer (Create, Next) and by value (Load, Save, Delete).
#define OSTIN_KEYP_K2 int16_t *cmper, int16_t *inci
#define OSTIN_KEYV_K2 int16_t cmper, int16_t inci
#define OSTIN_KEYP_KE int32_t *cmper, int16_t *inci
#define OSTIN_KEYV_KE int32_t cmper, int16_t inci
#define OSTIN_KEYP_K3 int16_t *cmper, int16_t *inci, int16_t *third
#define OSTIN_KEYV_K3 int16_t cmper, int16_t inci, int16_t third
#define OSTIN_KEYTYPE_K2 int16_t
#define OSTIN_KEYTYPE_KE int32_t
#define OSTIN_KEYTYPE_K3 int16_t

// Key arguments of a record class's calls, from its key `k`.
#define OSTIN_KEYARGP_K2(k) &k.Cmper, &k.Inci
#define OSTIN_KEYARGP_KE(k) &k.Cmper, &k.Inci
#define OSTIN_KEYARGP_K3(k) &k.Cmper, &k.Inci, &k.Third
#define OSTIN_KEYARGV_K2(k) k.Cmper, k.Inci
#define OSTIN_KEYARGV_KE(k) k.Cmper, k.Inci
#define OSTIN_KEYARGV_K3(k) k.Cmper, k.Inci, k.Third

// The stand-in's key, from a call's key parameters.
#define OSTIN_SIMKEYV_K2                                                                           \
  ::ostin::sim::RecordKey {                                                                        \
    cmper, inci, 0                                                                                 \
  }
#define OSTIN_SIMKEYV_KE                                                                           \
  ::ostin::sim::RecordKey {                                                                        \
    cmper, inci, 0                                                                                 \
  }
#define OSTIN_SIMKEYV_K3                                                                           \
  ::ostin::sim::RecordKey {                                                                        \
    cmper, inci, third                                                                             \
  }
#define OSTIN_SIMKEYP_K2 cmper, inci, nullptr
#define OSTIN_SIMKEYP_KE cmper, inci, nullptr
#define OSTIN_SIMKEYP_K3 cmper, inci, third

// Pointer parameters (Load, Next).
#define OSTIN_PTR_PARAM(kind, name, n) OSTIN_PTR_PARAM_##kind(name, n)
#define OSTIN_PTR_PARAM_I16(name, n) , int16_t* name
#define OSTIN_PTR_PARAM_I32(name, n) , int32_t* name
#define OSTIN_PTR_PARAM_TXT(name, n) , std::string* name
#define OSTIN_PTR_PARAM_P16(name, n) , int16_t* name
#define OSTIN_PTR_PARAM_B16(name, n) OSTIN_REPEAT(n, OSTIN_PTR_ELEM16, name)
#define OSTIN_PTR_PARAM_B32(name, n) OSTIN_REPEAT(n, OSTIN_PTR_ELEM32, name)
#define OSTIN_PTR_ELEM16(name, k) , int16_t* name##_##k
#define OSTIN_PTR_ELEM32(name, k) , int32_t* name##_##k

// Value parameters (Save).
#define OSTIN_VAL_PARAM(kind, name, n) OSTIN_VAL_PARAM_##kind(name, n)
#define OSTIN_VAL_PARAM_I16(name, n) , int16_t name
#define OSTIN_VAL_PARAM_I32(name, n) , int32_t name
#define OSTIN_VAL_PARAM_TXT(name, n) , const std::string& name
#define OSTIN_VAL_PARAM_P16(name, n) , const int16_t* name
#define OSTIN_VAL_PARAM_B16(name, n) OSTIN_REPEAT(n, OSTIN_VAL_ELEM16, name)
#define OSTIN_VAL_PARAM_B32(name, n) OSTIN_REPEAT(n, OSTIN_VAL_ELEM32, name)
#define OSTIN_VAL_ELEM16(name, k) , int16_t name##_##k
#define OSTIN_VAL_ELEM32(name, k) , int32_t name##_##k

// Members of a record class. Blocks are indexed from 0 here; the classes' accessors
// give each block its own first index.
#define OSTIN_MEMBER(kind, name, n) OSTIN_MEMBER_##kind(name, n)
#define OSTIN_MEMBER_I16(name, n) int16_t name = 0;
#define OSTIN_MEMBER_I32(name, n) int32_t name = 0;
#define OSTIN_MEMBER_TXT(name, n) std::string name;
#define OSTIN_MEMBER_P16(name, n) std::vector<int16_t> name = std::vector<int16_t>(n);
#define OSTIN_MEMBER_B16(name, n) ::ostin::Block<int16_t, n, ::ostin::FirstIndex(#name)> name;
#define OSTIN_MEMBER_B32(name, n) ::ostin::Block<int32_t, n, ::ostin::FirstIndex(#name)> name;
// Names each block of a record for its messages.
#define OSTIN_NAME_BLOCK(kind, name, n) OSTIN_NAME_BLOCK_##kind(name)
#define OSTIN_NAME_BLOCK_I16(name)
#define OSTIN_NAME_BLOCK_I32(name)
#define OSTIN_NAME_BLOCK_TXT(name)
#define OSTIN_NAME_BLOCK_P16(name)
#define OSTIN_NAME_BLOCK_B16(name) f.name.Name(kClass, #name);
#define OSTIN_NAME_BLOCK_B32(name) f.name.Name(kClass, #name);

// Arguments of a record class's calls, from its fields `f`.
#define OSTIN_PTR_ARG(kind, name, n) OSTIN_PTR_ARG_##kind(name, n)
#define OSTIN_PTR_ARG_I16(name, n) , &f.name
#define OSTIN_PTR_ARG_I32(name, n) , &f.name
#define OSTIN_PTR_ARG_TXT(name, n) , ::ostin::HostText(f.name).Slot()
#define OSTIN_PTR_ARG_P16(name, n) , f.name.data()
#define OSTIN_PTR_ARG_B16(name, n) OSTIN_REPEAT(n, OSTIN_PTR_ARG_ELEM, name)
#define OSTIN_PTR_ARG_B32(name, n) OSTIN_REPEAT(n, OSTIN_PTR_ARG_ELEM, name)
#define OSTIN_PTR_ARG_ELEM(name, k) , &f.name[k - 1]

#define OSTIN_VAL_ARG(kind, name, n) OSTIN_VAL_ARG_##kind(name, n)
#define OSTIN_VAL_ARG_I16(name, n) , f.name
#define OSTIN_VAL_ARG_I32(name, n) , f.name
#define OSTIN_VAL_ARG_TXT(name, n) , ::ostin::ToHostText(f.name)
#define OSTIN_VAL_ARG_P16(name, n) , f.name.data()
#define OSTIN_VAL_ARG_B16(name, n) OSTIN_REPEAT(n, OSTIN_VAL_ARG_ELEM, name)
#define OSTIN_VAL_ARG_B32(name, n) OSTIN_REPEAT(n, OSTIN_VAL_ARG_ELEM, name)
#define OSTIN_VAL_ARG_ELEM(name, k) , f.name[k - 1]

// The field list of a shape as the stand-in's storage describes it.
#define OSTIN_FIELD_SHAPE(kind, name, n) ::ostin::FieldShape{#name, ::ostin::FieldKind::kind, n},

// Slots of a stand-in call, one per argument, from the call's parameters.
#define OSTIN_SLOT(kind, name, n) OSTIN_SLOT_##kind(name, n)
#define OSTIN_SLOT_I16(name, n) ::ostin::sim::Slot::Value(#name, 0, name),
#define OSTIN_SLOT_I32(name, n) ::ostin::sim::Slot::Value(#name, 0, name),
#define OSTIN_SLOT_TXT(name, n) ::ostin::sim::Slot::Text(#name, name),
#define OSTIN_SLOT_P16(name, n) ::ostin::sim::Slot::Block(#name, name),
#define OSTIN_SLOT_B16(name, n) OSTIN_REPEAT(n, OSTIN_SLOT_ELEM, name)
#define OSTIN_SLOT_B32(name, n) OSTIN_REPEAT(n, OSTIN_SLOT_ELEM, name)
#define OSTIN_SLOT_ELEM(name, k) ::ostin::sim::Slot::Value(#name, k - 1, name##_##k),

#define OSTIN_VSLOT(kind, name, n) OSTIN_VSLOT_##kind(name, n)
#define OSTIN_VSLOT_I16(name, n) ::ostin::sim::Slot::Value(#name, 0, &name),
#define OSTIN_VSLOT_I32(name, n) ::ostin::sim::Slot::Value(#name, 0, &name),
#define OSTIN_VSLOT_TXT(name, n) ::ostin::sim::Slot::Text(#name, &name),
#define OSTIN_VSLOT_P16(name, n) ::ostin::sim::Slot::Block(#name, name),
#define OSTIN_VSLOT_B16(name, n) OSTIN_REPEAT(n, OSTIN_VSLOT_ELEM, name)
#define OSTIN_VSLOT_B32(name, n) OSTIN_REPEAT(n, OSTIN_VSLOT_ELEM, name)
#define OSTIN_VSLOT_ELEM(name, k) ::ostin::sim::Slot::Value(#name, k - 1, &name##_##k),

// The calls a record offers.
#define OSTIN_OPS_CLS(M, C, B, K, S) M(CREATE, C, B, K, S) M(LOAD, C, B, K, S) M(SAVE, C, B, K, S)
#define OSTIN_OPS_CLSD(M, C, B, K, S) OSTIN_OPS_CLS(M, C, B, K, S) M(DELETE, C, B, K, S)
#define OSTIN_OPS_CLSN(M, C, B, K, S) OSTIN_OPS_CLS(M, C, B, K, S) M(NEXT, C, B, K, S)
#define OSTIN_OPS_CLSND(M, C, B, K, S) OSTIN_OPS_CLSN(M, C, B, K, S) M(DELETE, C, B, K, S)
#define OSTIN_OPS(ops, M, C, B, K, S) OSTIN_OPS_##ops(M, C, B, K, S)
