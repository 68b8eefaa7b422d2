#pragma once
// The document's texts and fonts as the host keeps them.
#include <nlohmann/json_fwd.hpp>

namespace ostin::sim {

class TextStore {
public:
  nlohmann::json ToJson() const;
  // Reads the "texts" section of a document; throws DocumentError naming what is wrong.
  static TextStore FromJson(const nlohmann::json& json);
  bool operator==(const TextStore&) const = default;
};

} // namespace ostin::sim
