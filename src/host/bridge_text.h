#pragma once
// Bridge calls of texts and fonts.
#include <cstdint>
#include <string>
