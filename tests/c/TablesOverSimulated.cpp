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

using Self = TablesOverSimulated;

Self& of(void* context) {
  return *static_cast<Self*>(context);
}
std::string_view view(orlan_string text) {
  return {text.data, text.length};
}
LocationManager& manager(void* context, orlan_id id) {
  return *of(context).clients.at(id).manager;
}
orlan_region lend(const CircularRegion& region) {
  return {c::lent(region.identifier), c::to(region.circle), region.notifyOnEntry, region.notifyOnExit};
}

/// What the hub tells one of its managers, on its way to the library's manager of that number. Number 0 tells
/// of the authorization alone.
struct Relay final : LocationManagerDelegate {
  Relay(Self& host, orlan_id number) : self(host), id(number) {}
  void didChangeAuthorization(LocationManager&) override {
    if (id == 0) orlan_phone_location_authorization_changed(self.handle);
  }
  void didUpdateLocations(LocationManager&, std::span<const Location> batch) override {
    std::vector<orlan_location> fixes;
    for (const Location& fix : batch) fixes.push_back(c::to(fix));
    orlan_phone_fixes(self.handle, id, fixes.data(), fixes.size());
  }
  void didFail(LocationManager&, const Error& error) override {
    const orlan_error out = c::lent(error);
    orlan_phone_location_failed(self.handle, id, &out);
  }
  void didEnterRegion(LocationManager&, const CircularRegion& region) override {
    const orlan_region out = lend(region);
    if (id != 0) orlan_phone_region_entered(self.handle, id, &out);
  }
  void didExitRegion(LocationManager&, const CircularRegion& region) override {
    const orlan_region out = lend(region);
    if (id != 0) orlan_phone_region_exited(self.handle, id, &out);
  }
  Self& self;
  orlan_id id;
};

void addClient(Self& self, orlan_id id, std::string_view name) {
  Self::Client made{self.phone.locations().makeManager(name), std::make_shared<Relay>(self, id)};
  made.manager->setDelegate(made.relay);
  self.clients[id] = std::move(made);
}

orlan_loop_functions loopTable(Self& host) {
  orlan_loop_functions table{sizeof table, &host};
  table.post = [](void* context, orlan_id task) {
    Self& self = of(context);
    self.lastTask = task;
    self.phone.platform().main.async([&self, task] { orlan_phone_run(self.handle, task); });
  };
  table.post_after = [](void* context, std::int64_t delay, orlan_id task) {
    Self& self = of(context);
    self.timers[task] = self.phone.platform().main.after(
        Duration(delay), [&self, task] { orlan_phone_run(self.handle, task); });
  };
  table.cancel = [](void* context, orlan_id task) { of(context).timers.erase(task); };
  table.is_main_thread = [](void* context) { return of(context).phone.platform().main.isCurrent(); };
  return table;
}

orlan_queue_functions queueTable(Self& host) {
  orlan_queue_functions table{sizeof table, &host};
  table.made = [](void* context, orlan_id queue, orlan_string label) {
    const std::lock_guard lock(of(context).mutex);
    of(context).queues[queue] = of(context).phone.platform().queues.make(view(label));
  };
  table.gone = [](void* context, orlan_id queue) {
    const std::lock_guard lock(of(context).mutex);
    of(context).queues.erase(queue);
  };
  table.post = [](void* context, orlan_id queue, orlan_id task) {
    Self& self = of(context);
    const std::lock_guard lock(self.mutex);
    self.queues.at(queue)->async([&self, task] { orlan_phone_run(self.handle, task); });
  };
  return table;
}

orlan_store_functions storeTable(Self& host) {
  orlan_store_functions table{sizeof table, &host};
  table.get = [](void* context, orlan_string key, orlan_answer* answer) {
    const std::lock_guard lock(of(context).mutex);
    const auto found = of(context).store.find(view(key));
    if (found != of(context).store.end()) orlan_answer_value(answer, &found->second.value);
  };
  table.set = [](void* context, orlan_string key, const orlan_value* value) {
    const std::lock_guard lock(of(context).mutex);
    Self::Kept& kept = of(context).store[copy(key)];
    kept = {copy(value->text), *value};
    kept.value.text = c::lent(kept.text);
  };
  table.remove = [](void* context, orlan_string key) {
    const std::lock_guard lock(of(context).mutex);
    of(context).store.erase(copy(key));
  };
  table.list = [](void* context, orlan_answer* answer) {
    const std::lock_guard lock(of(context).mutex);
    for (const auto& [key, kept] : of(context).store) orlan_answer_entry(answer, c::lent(key), &kept.value);
  };
  return table;
}

orlan_file_functions fileTable(Self& host) {
  orlan_file_functions table{sizeof table, &host, c::lent(host.caches)};
  table.exists = [](void* context, orlan_string path) {
    return of(context).phone.files().exists(copy(path));
  };
  table.read = [](void* context, orlan_string path, orlan_answer* answer) {
    const auto found = of(context).phone.files().read(copy(path));
    if (found) orlan_answer_bytes(answer, c::lent(*found));
    return found.has_value();
  };
  table.write = [](void* context, orlan_string path, orlan_string bytes) {
    return of(context).phone.files().writeAtomically(copy(path), view(bytes)).has_value();
  };
  table.append = [](void* context, orlan_string path, orlan_string bytes) {
    return of(context).phone.files().append(copy(path), view(bytes)).has_value();
  };
  table.remove = [](void* context, orlan_string path) {
    return of(context).phone.files().remove(copy(path)).has_value();
  };
  return table;
}

orlan_http_functions httpTable(Self& host) {
  orlan_http_functions table{sizeof table, &host};
  table.send = [](void* context, orlan_id call, const orlan_http_request* given) {
    Self& self = of(context);
    HttpRequest request{copy(given->method), copy(given->url)};
    request.timeout = Duration(given->timeout);
    if (given->body.data != nullptr) request.body = view(given->body);
    self.lastCall = call;
    for (std::size_t i = 0; i < given->header_count; ++i) {
      request.addHeader(copy(given->headers[i].name), copy(given->headers[i].value));
    }
    self.calls[call] = self.phone.http().send(std::move(request), [&self, call](Result<HttpReply> outcome) {
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
  table.cancel = [](void* context, orlan_id call) { of(context).calls.erase(call); };
  return table;
}

orlan_location_functions locationTable(Self& host) {
  orlan_location_functions table{sizeof table, &host};
  table.authorization = [](void* context) {
    return static_cast<std::int32_t>(rawValue(of(context).phone.locations().authorization()));
  };
  table.request_authorization = [](void* context, bool) { manager(context, 0).requestAlwaysAuthorization(); };
  table.made = [](void* context, orlan_id id, orlan_string name) { addClient(of(context), id, view(name)); };
  table.gone = [](void* context, orlan_id id) { of(context).clients.erase(id); };
  table.set_distance_filter = [](void* context, orlan_id id, double metres) {
    manager(context, id).setDistanceFilter(metres);
  };
  table.set_updating = [](void* context, orlan_id id, bool running) {
    auto& one = manager(context, id);
    running ? one.startUpdatingLocation() : one.stopUpdatingLocation();
  };
  table.set_significant_changes = [](void* context, orlan_id id, bool running) {
    auto& one = manager(context, id);
    running ? one.startMonitoringSignificantChanges() : one.stopMonitoringSignificantChanges();
  };
  table.last_location = [](void* context, orlan_location* location) {
    const auto position = of(context).phone.locations().position();
    if (position) *location = c::to(*position);
    return position.has_value();
  };
  table.start_region = [](void* context, const orlan_region* region) {
    manager(context, 0)
        .startMonitoring({copy(region->identifier), c::from(region->circle), region->notify_on_entry,
                          region->notify_on_exit});
  };
  table.stop_region = [](void* context, orlan_string identifier) {
    manager(context, 0).stopMonitoring(view(identifier));
  };
  table.regions = [](void* context, orlan_answer* answer) {
    for (const auto& region : of(context).phone.locations().monitoredRegions()) {
      const orlan_region out = lend(region);
      orlan_answer_region(answer, &out);
    }
  };
  return table;
}

orlan_notification_functions notificationTable(Self& host) {
  orlan_notification_functions table{sizeof table, &host};
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

orlan_log_functions logTable(Self& host) {
  orlan_log_functions table{sizeof table, &host};
  table.print = [](void* context, orlan_string level, orlan_string message, orlan_string line) {
    of(context).seen.consoleLines({view(level), view(line), line.length - message.length - 1, 1});
  };
  return table;
}

}  // namespace

TablesOverSimulated::TablesOverSimulated(const Change& change) {
  answer("/api/device-registerd/create",
         sim::HttpAnswer::reply(200, R"({"data":{"device_id":"D1","orlan_id":"O1"}})"));
  for (const char* path : {"/api/plugin-activity/create", "/api/activities", "/api/segments"}) {
    answer(path, sim::HttpAnswer::reply(200, "ok"));
  }
  answer("/api/survey-response", sim::HttpAnswer::reply(201, "ok"));
  answer("/api/check-geofence", sim::HttpAnswer::reply(200, market));
  const auto loop = loopTable(*this);
  const auto queue = queueTable(*this);
  const auto values = storeTable(*this);
  const auto files = fileTable(*this);
  const auto http = httpTable(*this);
  const auto location = locationTable(*this);
  const auto notification = notificationTable(*this);
  const auto log = logTable(*this);
  const orlan_clock_functions clock{
      sizeof clock, this,
      [](void* context) { return of(context).phone.clock().now().time_since_epoch().count(); },
      [](void*, std::int64_t) { return std::int64_t{0}; }};
  orlan_phone_parts parts{sizeof parts, &loop,  &queue, &clock,    nullptr,
                          &values,      &files, &http,  &location, &notification};
  parts.log = &log;
  if (change) change(parts);
  EXPECT_EQ(orlan_phone_new(&parts, &handle), ORLAN_OK) << orlan_last_problem();
  addClient(*this, 0, "any");
  world.settle();
  seen = {};
}

}  // namespace orlan::test
