#include "sim/text_store.h"

#include <nlohmann/json.hpp>

namespace ostin::sim {

nlohmann::json TextStore::ToJson() const {
  return nlohmann::json::object();
}

TextStore TextStore::FromJson(const nlohmann::json&) {
  return TextStore{};
}

} // namespace ostin::sim
