#pragma once
// The document's frames: the entries and notes of every layer of every staff and measure.
#include <nlohmann/json_fwd.hpp>

namespace ostin::sim {

class FrameStore {
public:
  nlohmann::json ToJson() const;
  // Reads the "frames" section of a document; throws DocumentError naming what is wrong.
  static FrameStore FromJson(const nlohmann::json& json);
  bool operator==(const FrameStore&) const = default;
};

} // namespace ostin::sim
