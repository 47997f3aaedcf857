#include "phones/c/TablePhone.hpp"

#include "orlan/c/Guard.hpp"
#include "orlan/c/Values.hpp"

namespace orlan::c {

TablePhone::TablePhone(const orlan_phone_parts& parts)
    : main(tableFrom(parts.loop, "loop"), tasks),
      queues(tableFrom(parts.queues, "queues"), tasks),
      clock(tableFrom(parts.clock, "clock")),
      random(tableFrom(parts.random, "random")),
      store(tableFrom(parts.store, "store")),
      files(tableFrom(parts.files, "files")),
      locations(tableFrom(parts.location, "location"), main, tasks),
      notifications(tableFrom(parts.notifications, "notifications"), main, tasks),
      application(tableFrom(parts.application, "application"), main),
      device(tableFrom(parts.device, "device")),
      bundle(tableFrom(parts.bundle, "bundle")),
      log(tableFrom(parts.log, "log")),
      http(tableFrom(parts.http, "http"), queues, tasks) {}

Platform TablePhone::platform() {
  return {main,      queues,        clock,       random, store,  files, http,
          locations, notifications, application, device, bundle, log,   log};
}

}  // namespace orlan::c

orlan_status orlan_phone_new(const orlan_phone_parts* parts, orlan_phone** phone) {
  using namespace orlan::c;
  return guarded(__func__, [&] {
    needed(phone, "phone");
    const auto table = tableFrom(&needed(parts, "parts"), "parts");
    *phone = handleOf(std::make_shared<TablePhone>(table));
  });
}
