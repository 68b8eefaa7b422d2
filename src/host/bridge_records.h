#pragma once
// Record calls of the bridge, one set per record shape: CreateX, LoadX, SaveX, NextX,
// DeleteX as the record offers them, and the year's variant for records that have one.
#include <cstdint>
#include <string>

#include "host/record_macros.h"
#include "host/record_shapes.h"

#define OSTIN_DECL_CREATE(C, B, K, S) int16_t Create##B(OSTIN_KEYP_##K);
#define OSTIN_DECL_LOAD(C, B, K, S) int16_t Load##B(OSTIN_KEYV_##K S(OSTIN_PTR_PARAM));
#define OSTIN_DECL_SAVE(C, B, K, S) int16_t Save##B(OSTIN_KEYV_##K S(OSTIN_VAL_PARAM));
#define OSTIN_DECL_NEXT(C, B, K, S) int16_t Next##B(OSTIN_KEYP_##K S(OSTIN_PTR_PARAM));
#define OSTIN_DECL_DELETE(C, B, K, S) int16_t Delete##B(OSTIN_KEYV_##K);
#define OSTIN_DECL(op, C, B, K, S) OSTIN_DECL_##op(C, B, K, S)

#define OSTIN_DECLARE_PLAIN(C, B, K, S, ops) OSTIN_OPS(ops, OSTIN_DECL, C, B, K, S)
#define OSTIN_DECLARE_VARIANT(C, B, K, S, P, Y, ops)                                               \
  OSTIN_OPS(ops, OSTIN_DECL, C, B, K, P) OSTIN_OPS(ops, OSTIN_DECL, C, OSTIN_CAT(B, Y), K, S)

OSTIN_PLAIN_RECORDS(OSTIN_DECLARE_PLAIN)
OSTIN_VARIANT_RECORDS(OSTIN_DECLARE_VARIANT)

// Layer preferences: one read-only record per layer.
int16_t LoadLayerPrefs(int16_t number, int16_t* Restoffset, int16_t* Flag);
