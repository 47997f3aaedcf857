#include "c/TablesOverSimulated.hpp"

#include <gtest/gtest.h>

#include <utility>

#include "orlan/c/Notifications.hpp"

namespace orlan::test {
namespace {

constexpr char market[] = R"({"geoCampaign":[{"campaignName":"Market","campaignId":42,"type":"geo",
  "locations":[7],"active":"true","testIds":"","segmentationTags":"","locationsArray":{"locationId":7,
  "_id":"l","geofence":[{"position":0,"latitude":"51.499","longitude":"-0.121","_id":"a"},
  {"position":1,"latitude":"51.499","longitude":"-0.119","_id":"b"},
  {"position":2,"latitude":"51.501","longitude":"-0.119","_id":"c"},
  {"position":3,"latitude":"51.501","longitude":"-0.121","_id":"d"}]},"notificationsArray":[{"id":1,
  "campaignId":[42],"headline":"Welcome","body":"Fresh bread.","type":"text","media":[],"questions":[],"cta":[],
  "segmentationTags":"","testIds":"","start":"","end":"","activation":"ON_ENTER"}]}],"pushCampaign":[]})";

}  // namespace

orlan_value TablesOverSimulated::lend(const json::Value& value) {
  orlan_value out{};
  if (value.boolean() != nullptr) out = {ORLAN_VALUE_BOOLEAN, *value.boolean(), 0, 0, {}};
  if (value.integer() != nullptr) out = {ORLAN_VALUE_INTEGER, false, *value.integer(), 0, {}};
  if (value.real() != nullptr) out = {ORLAN_VALUE_REAL, false, 0, *value.real(), {}};
  if (value.string() != nullptr) out = {ORLAN_VALUE_TEXT, false, 0, 0, c::lent(*value.string())};
  if (value.bytes() != nullptr) out = {ORLAN_VALUE_BYTES, false, 0, 0, c::lent(value.bytes()->data)};
  return out;
}

json::Value TablesOverSimulated::take(const orlan_value& value) {
  switch (value.kind) {
    case ORLAN_VALUE_BOOLEAN:
      return value.boolean;
    case ORLAN_VALUE_INTEGER:
      return value.integer;
    case ORLAN_VALUE_REAL:
      return value.real;
    case ORLAN_VALUE_TEXT:
      return view(value.text);
    default:
      return Bytes{std::string(view(value.text))};
  }
}

orlan_loop_functions TablesOverSimulated::loop() {
  orlan_loop_functions table{sizeof table, this};
  table.post = [](void* context, orlan_id task) {
    Self& self = of(context);
    self.lastTask = task;
    self.phone.platform().main.async([&self, task] { orlan_phone_run(self.handle, task); });
  };
  table.post_after = [](void* context, std::int64_t delay, orlan_id task) {
    Self& self = of(context);
    self.timers_[task] = self.phone.platform().main.after(
        Duration(delay), [&self, task] { orlan_phone_run(self.handle, task); });
  };
  table.cancel = [](void* context, orlan_id task) { of(context).timers_.erase(task); };
  table.is_main_thread = [](void* context) { return of(context).phone.platform().main.isCurrent(); };
  return table;
}

orlan_queue_functions TablesOverSimulated::queues() {
  orlan_queue_functions table{sizeof table, this};
  table.made = [](void* context, orlan_id queue, orlan_string label) {
    const std::lock_guard lock(of(context).mutex_);
    of(context).queues_[queue] = of(context).phone.platform().queues.make(view(label));
  };
  table.gone = [](void* context, orlan_id queue) {
    const std::lock_guard lock(of(context).mutex_);
    of(context).queues_.erase(queue);
  };
  table.post = [](void* context, orlan_id queue, orlan_id task) {
    Self& self = of(context);
    const std::lock_guard lock(self.mutex_);
    self.queues_.at(queue)->async([&self, task] { orlan_phone_run(self.handle, task); });
  };
  return table;
}

orlan_store_functions TablesOverSimulated::store() {
  orlan_store_functions table{sizeof table, this};
  table.get = [](void* context, orlan_string key, orlan_answer* answer) {
    const auto found = of(context).phone.store().get(view(key));
    if (!found) return;
    const orlan_value out = lend(*found);
    orlan_answer_value(answer, &out);
  };
  table.set = [](void* context, orlan_string key, const orlan_value* value) {
    of(context).phone.store().set(view(key), take(*value));
  };
  table.remove = [](void* context, orlan_string key) { of(context).phone.store().remove(view(key)); };
  table.list = [](void* context, orlan_answer* answer) {
    for (const auto& [key, value] : of(context).phone.store().contents()) {
      const orlan_value out = lend(value);
      orlan_answer_entry(answer, c::lent(key), &out);
    }
  };
  return table;
}

orlan_file_functions TablesOverSimulated::files() {
  orlan_file_functions table{sizeof table, this, c::lent(caches_)};
  table.exists = [](void* context, orlan_string path) {
    return of(context).phone.files().exists(std::string(view(path)));
  };
  table.read = [](void* context, orlan_string path, orlan_answer* answer) {
    const auto found = of(context).phone.files().read(std::string(view(path)));
    if (found) orlan_answer_bytes(answer, c::lent(*found));
    return found.has_value();
  };
  table.write = [](void* context, orlan_string path, orlan_string bytes) {
    return of(context).phone.files().writeAtomically(std::string(view(path)), view(bytes)).has_value();
  };
  table.append = [](void* context, orlan_string path, orlan_string bytes) {
    return of(context).phone.files().append(std::string(view(path)), view(bytes)).has_value();
  };
  table.remove = [](void* context, orlan_string path) {
    return of(context).phone.files().remove(std::string(view(path))).has_value();
  };
  return table;
}

orlan_http_functions TablesOverSimulated::http() {
  orlan_http_functions table{sizeof table, this};
  table.send = [](void* context, orlan_id call, const orlan_http_request* given) {
    Self& self = of(context);
    HttpRequest request{std::string(view(given->method)), std::string(view(given->url))};
    request.timeout = Duration(given->timeout);
    if (given->body.data != nullptr) request.body = view(given->body);
    self.lastCall = call;
    for (std::size_t i = 0; i < given->header_count; ++i) {
      request.addHeader(std::string(view(given->headers[i].name)),
                        std::string(view(given->headers[i].value)));
    }
    self.calls_[call] = self.phone.http().send(std::move(request), [&self, call](Result<HttpReply> outcome) {
      if (!outcome) {
        orlan_phone_http_failed(self.handle, call, outcome.error().code,
                                c::lent(outcome.error().description));
        return;
      }
      orlan_http_reply reply{sizeof reply, outcome->status.value_or(0)};
      reply.body = c::lent(outcome->body);
      orlan_phone_http_reply(self.handle, call, &reply);
    });
  };
  table.cancel = [](void* context, orlan_id call) { of(context).calls_.erase(call); };
  return table;
}

orlan_location_functions TablesOverSimulated::location() {
  orlan_location_functions table{sizeof table, this};
  table.authorization = [](void* context) {
    return static_cast<std::int32_t>(rawValue(of(context).phone.locations().authorization()));
  };
  table.request_authorization = [](void* context, bool) {
    of(context).manager(0).requestAlwaysAuthorization();
  };
  table.made = [](void* context, orlan_id id, orlan_string name) {
    of(context).clients_[id] = of(context).client(id, view(name));
  };
  table.gone = [](void* context, orlan_id id) { of(context).clients_.erase(id); };
  table.set_distance_filter = [](void* context, orlan_id id, double metres) {
    of(context).manager(id).setDistanceFilter(metres);
  };
  table.set_updating = [](void* context, orlan_id id, bool running) {
    auto& manager = of(context).manager(id);
    running ? manager.startUpdatingLocation() : manager.stopUpdatingLocation();
  };
  table.set_significant_changes = [](void* context, orlan_id id, bool running) {
    auto& manager = of(context).manager(id);
    running ? manager.startMonitoringSignificantChanges() : manager.stopMonitoringSignificantChanges();
  };
  table.last_location = [](void* context, orlan_location* location) {
    const auto position = of(context).phone.locations().position();
    if (position) *location = c::to(*position);
    return position.has_value();
  };
  table.start_region = [](void* context, const orlan_region* region) {
    of(context).manager(0).startMonitoring({std::string(view(region->identifier)), c::from(region->circle),
                                            region->notify_on_entry, region->notify_on_exit});
  };
  table.stop_region = [](void* context, orlan_string identifier) {
    of(context).manager(0).stopMonitoring(view(identifier));
  };
  table.regions = [](void* context, orlan_answer* answer) {
    for (const auto& region : of(context).phone.locations().monitoredRegions()) {
      const orlan_region out = lend(region);
      orlan_answer_region(answer, &out);
    }
  };
  return table;
}

orlan_notification_functions TablesOverSimulated::notifications() {
  orlan_notification_functions table{sizeof table, this};
  table.add = [](void* context, const orlan_notification* notification, orlan_id question) {
    of(context).phone.notifications().add(
        c::from(*notification), [handle = of(context).handle, question](const Result<void>& done) {
          const orlan_error error = done ? orlan_error{} : c::lent(done.error());
          orlan_phone_answer(handle, question, 0, done ? nullptr : &error);
        });
  };
  table.request_authorization = [](void* context, std::uint32_t options, orlan_id question) {
    of(context).phone.notifications().requestAuthorization(
        options, [handle = of(context).handle, question](const Result<bool>& granted) {
          orlan_phone_answer(handle, question, granted && *granted ? 1 : 0, nullptr);
        });
  };
  table.authorization = [](void* context, orlan_id question) {
    of(context).phone.notifications().authorizationStatus(
        [handle = of(context).handle, question](NotificationAuthorization status) {
          orlan_phone_answer(handle, question, rawValue(status), nullptr);
        });
  };
  return table;
}

orlan_log_functions TablesOverSimulated::log() {
  orlan_log_functions table{sizeof table, this};
  table.print = [](void* context, orlan_string level, orlan_string message, orlan_string) {
    of(context).seen.consoleLine(view(level), view(message));
  };
  return table;
}

TablesOverSimulated::Client TablesOverSimulated::client(orlan_id id, std::string_view name) {
  Client made{phone.locations().makeManager(name), std::make_shared<Relay>(*this, id)};
  made.manager->setDelegate(made.relay);
  return made;
}

TablesOverSimulated::TablesOverSimulated(const Change& change) {
  answer("/api/device-registerd/create",
         sim::HttpAnswer::reply(200, R"({"data":{"device_id":"D1","orlan_id":"O1"}})"));
  for (const char* path : {"/api/plugin-activity/create", "/api/activities", "/api/segments"}) {
    answer(path, sim::HttpAnswer::reply(200, "ok"));
  }
  answer("/api/survey-response", sim::HttpAnswer::reply(201, "ok"));
  answer("/api/check-geofence", sim::HttpAnswer::reply(200, market));
  const auto loopTable = loop();
  const auto queueTable = queues();
  const auto storeTable = store();
  const auto fileTable = files();
  const auto httpTable = http();
  const auto locationTable = location();
  const auto notificationTable = notifications();
  const auto logTable = log();
  const orlan_clock_functions clockTable{
      sizeof clockTable, this,
      [](void* context) { return of(context).phone.clock().now().time_since_epoch().count(); },
      [](void*, std::int64_t) { return std::int64_t{0}; }};
  orlan_phone_parts parts{sizeof parts, &loopTable, &queueTable, &clockTable,    nullptr,
                          &storeTable,  &fileTable, &httpTable,  &locationTable, &notificationTable};
  parts.log = &logTable;
  if (change) change(parts);
  EXPECT_EQ(orlan_phone_new(&parts, &handle), ORLAN_OK) << orlan_last_problem();
  clients_[0] = client(0, "any");
  world.settle();
  seen = {};
}

}  // namespace orlan::test
