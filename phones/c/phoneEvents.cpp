// What happens to a phone of the host's, on its way into the library.
#include <utility>
#include <vector>

#include "orlan/c/Guard.hpp"
#include "orlan/c/Notifications.hpp"
#include "orlan/c/Values.hpp"
#include "phones/c/TablePhone.hpp"

namespace {

using namespace orlan::c;
using orlan::CircularRegion;

/// Events that nobody waits for are told apart without words for a person.
template <class Body>
orlan_status anywhere(orlan_phone* handle, const char* function, Body&& body) {
  bool waited = true;
  const orlan_status status = guarded(function, [&] { waited = body(*phoneOf<TablePhone>(handle)); });
  return status == ORLAN_OK && !waited ? ORLAN_UNKNOWN : status;
}

CircularRegion from(const orlan_region* region) {
  needed(region, "region");
  return {std::string(text(region->identifier, "region.identifier")), orlan::c::from(region->circle),
          region->notify_on_entry, region->notify_on_exit};
}

orlan::HttpReply from(const orlan_http_reply* given) {
  const auto in = tableFrom(&needed(given, "reply"), "reply");
  orlan::HttpReply reply;
  if (in.status != 0) reply.status = in.status;
  if (in.header_count > 0) needed(in.headers, "reply.headers");
  for (std::size_t i = 0; i < in.header_count; ++i) {
    reply.headers.emplace_back(bytes(in.headers[i].name, "reply.headers"),
                               bytes(in.headers[i].value, "reply.headers"));
  }
  const auto body = bytes(in.body, "reply.body");
  if (in.body.data != nullptr) reply.body = std::string(body);
  return reply;
}

orlan::Error transportFault(std::int64_t code, std::string_view why) {
  switch (code) {
    case ORLAN_HTTP_CANCELLED:
      return orlan::urlErrors::cancelled();
    case ORLAN_HTTP_BAD_URL:
      return orlan::urlErrors::badURL();
    case ORLAN_HTTP_TIMED_OUT:
      return orlan::urlErrors::timedOut();
    case ORLAN_HTTP_CANNOT_CONNECT:
      return orlan::urlErrors::cannotConnectToHost();
    default:
      orlan::Error error = orlan::urlErrors::other(std::string(why));
      error.code = code;
      return error;
  }
}

}  // namespace

orlan_status orlan_phone_run(orlan_phone* phone, orlan_id task) {
  return anywhere(phone, __func__, [&](TablePhone& on) {
    InsideTable::refuse();
    if (on.tasks->isOfMain(task)) assertMain(on);
    return on.tasks->run(task);
  });
}

void orlan_answer_region(orlan_answer* answer, const orlan_region* region) {
  if (answer == nullptr || region == nullptr) return;
  guarded(__func__, [&] { answer->regions.push_back(from(region)); });
}

orlan_status orlan_phone_http_reply(orlan_phone* phone, orlan_id call, const orlan_http_reply* reply) {
  return anywhere(phone, __func__, [&](TablePhone& on) { return on.http.answer(call, from(reply)); });
}

orlan_status orlan_phone_http_failed(orlan_phone* phone, orlan_id call, int64_t code, orlan_string why) {
  return anywhere(phone, __func__, [&](TablePhone& on) {
    return on.http.answer(call, orlan::Unexpected(transportFault(code, text(why, "why"))));
  });
}

orlan_status orlan_phone_fixes(orlan_phone* phone, orlan_id manager, const orlan_location* fixes,
                               size_t count) {
  return onMainOf<TablePhone>(phone, __func__, [&](TablePhone& on) {
    if (count > 0) needed(fixes, "fixes");
    std::vector<orlan::Location> batch;
    batch.reserve(count);
    for (std::size_t i = 0; i < count; ++i) batch.push_back(orlan::c::from(fixes[i]));
    on.locations.fixes(manager, batch);
  });
}

orlan_status orlan_phone_location_failed(orlan_phone* phone, orlan_id manager, const orlan_error* error) {
  return onMainOf<TablePhone>(phone, __func__, [&](TablePhone& on) {
    const auto why = orlan::c::error(needed(error, "error"));
    on.locations.tell(manager, [&](auto& each, auto& delegate) { delegate.didFail(each, why); });
  });
}

orlan_status orlan_phone_location_authorization_changed(orlan_phone* phone) {
  return onMainOf<TablePhone>(phone, __func__, [](TablePhone& on) {
    on.locations.tell(ORLAN_ALL_MANAGERS,
                      [](auto& each, auto& delegate) { delegate.didChangeAuthorization(each); });
  });
}

orlan_status orlan_phone_region_entered(orlan_phone* phone, orlan_id manager, const orlan_region* region) {
  return onMainOf<TablePhone>(phone, __func__, [&](TablePhone& on) {
    const auto entered = from(region);
    on.locations.tell(manager, [&](auto& each, auto& delegate) { delegate.didEnterRegion(each, entered); });
  });
}

orlan_status orlan_phone_region_exited(orlan_phone* phone, orlan_id manager, const orlan_region* region) {
  return onMainOf<TablePhone>(phone, __func__, [&](TablePhone& on) {
    const auto exited = from(region);
    on.locations.tell(manager, [&](auto& each, auto& delegate) { delegate.didExitRegion(each, exited); });
  });
}

orlan_status orlan_phone_answer(orlan_phone* phone, orlan_id question, int64_t value,
                                const orlan_error* error) {
  return anywhere(phone, __func__, [&](TablePhone& on) {
    if (error == nullptr) return on.notifications.answer(question, value);
    return on.notifications.answer(question, orlan::Unexpected(orlan::c::error(*error)));
  });
}

orlan_status orlan_phone_present(orlan_phone* phone, const orlan_notification* notification,
                                 orlan_shown_completion shown, void* context) {
  return onMainOf<TablePhone>(phone, __func__, [&](TablePhone& on) {
    on.notifications.present(orlan::c::from(needed(notification, "notification")),
                             [shown, context](std::uint32_t options) { call(shown, context, options); });
  });
}

orlan_status orlan_phone_tapped(orlan_phone* phone, const orlan_notification* notification,
                                orlan_string action, orlan_done_completion done, void* context) {
  return onMainOf<TablePhone>(phone, __func__, [&](TablePhone& on) {
    orlan::NotificationResponse response{orlan::c::from(needed(notification, "notification"))};
    if (auto named = optionalText(action, "action")) response.actionIdentifier = std::move(*named);
    on.notifications.tap(response, [done, context] { call(done, context); });
  });
}

orlan_status orlan_phone_signal(orlan_phone* phone, int32_t signal) {
  return onMainOf<TablePhone>(phone, __func__, [&](TablePhone& on) { on.application.signal(signal); });
}

orlan_status orlan_phone_move_to(orlan_phone* phone, int32_t state) {
  return onMainOf<TablePhone>(phone, __func__, [&](TablePhone& on) { on.application.moveTo(state); });
}
