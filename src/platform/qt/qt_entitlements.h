#pragma once

#include <QJsonObject>

#include "platform/entitlements.h"

namespace brimlo {

/// The entitlements that are built into the executable: a JSON object of names and values.
class QtEntitlements : public Entitlements {
 public:
  QtEntitlements();

  std::optional<std::vector<std::string>> stringList(std::string_view name) const override;

 private:
  QJsonObject values_;
};

}  // namespace brimlo
