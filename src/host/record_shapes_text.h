#pragma once
// Text blocks and fonts.

#define OSTIN_TEXT_RECORDS(R)
#define OSTIN_TEXT_VARIANTS(V)
#define OSTIN_TEXT_HANDMADE(H)
