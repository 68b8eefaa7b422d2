#pragma once
// A text block: a text with its caret commands and its frame. From host 2004 on the calls
// carry the text's tag, and raise numbers of their own.
#include "host/record_traits.h"
#include "host/text/versioned_record.h"

namespace ostin {

struct TextBlock2004Traits : TextBlockTraits {
  static constexpr const RecordPlaces& kPlaces = kTextBlock2004Places;
};

class TextBlock : public VersionedRecord<TextBlockTraits, TextBlock2004Traits> {
public:
  // TextID -1: the block has no raw text of its own yet.
  TextBlock() { TextID = -1; }
};

} // namespace ostin
