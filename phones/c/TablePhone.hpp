#pragma once

#include <memory>

#include "orlan/c/Phone.hpp"
#include "orlan/c/phone.h"
#include "phones/c/TableHttp.hpp"
#include "phones/c/TableLocations.hpp"
#include "phones/c/TableLoop.hpp"
#include "phones/c/TableNotifications.hpp"
#include "phones/c/TableStorage.hpp"
#include "phones/c/TableSystem.hpp"

namespace orlan::c {

/// A phone made of a host's function tables. Members stand in the order in which they may use one another.
class TablePhone final : public PhoneModel {
 public:
  explicit TablePhone(const orlan_phone_parts& parts);

  [[nodiscard]] Platform platform() override;

  const std::shared_ptr<Tasks> tasks = std::make_shared<Tasks>();
  TableLoop main;
  TableQueues queues;
  TableClock clock;
  TableRandom random;
  TableStore store;
  TableFiles files;
  TableLocations locations;
  TableNotifications notifications;
  TableApplication application;
  TableDevice device;
  TableBundle bundle;
  TableLog log;
  TableHttp http;
};

}  // namespace orlan::c
