#pragma once
// The rows of the message table, one text for each language's table.
#include <cstdint>
#include <span>

namespace ostin {

struct MessageRow {
  int32_t Id;
  const char* Main;    // table 1033; every row has it
  const char* German;  // table 1031; nullptr where that table lacks the row
  const char* Italian; // table 1040; nullptr where that table lacks the row
};

// All rows, in ascending order of id.
std::span<const MessageRow> MessageRows();

// The row with this id, or nullptr where there is none.
const MessageRow* FindMessageRow(int32_t id);

// The row's text in the table of that language, or nullptr where that table lacks the row.
// A language without a table of its own reads the main table.
const char* TextIn(const MessageRow& row, int32_t language);

} // namespace ostin
