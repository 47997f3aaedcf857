#pragma once

#include <optional>
#include <vector>

#include "orlan/backend/Config.hpp"
#include "tools/orlan/simulate/Files.hpp"
#include "tools/orlan/simulate/Item.hpp"
#include "tools/orlan/simulate/Scenario.hpp"

/// The parts of a scenario. Mistakes are noted on the items.
namespace orlan::simulate {

/// `device`; without it an ordinary phone.
[[nodiscard]] sim::PhoneSettings readDevice(const Item& device, TimePoint start, const Files& files);
[[nodiscard]] std::vector<Route> readBackend(const Item& backend, const Files& files);
[[nodiscard]] BaseUrls readHosts(const Item& hosts);
[[nodiscard]] std::vector<Step> readSteps(const Item& steps, const Files& files);

[[nodiscard]] Track readTrack(const Members& members, const Files& files);

/// A fix among members that may hold more than that.
[[nodiscard]] Fix readFix(const Members& members);

[[nodiscard]] LocationAuthorization readLocationAuthorization(const Item& status);
[[nodiscard]] NotificationAuthorization readNotificationAuthorization(const Item& status);
[[nodiscard]] ApplicationState readApplicationState(const Item& state);

/// A value that a key-value store can hold: a plain one as itself, bytes as {"base64": …} or {"text": …}.
[[nodiscard]] json::Value readStorable(const Item& value);

/// Hexadecimal text of bytes.
[[nodiscard]] std::string readHex(const Item& item);

/// The name of a file in the caches directory: `item` is read as a string, or is the key `name` itself.
[[nodiscard]] std::string readFileName(const Item& item);
void checkFileName(const std::string& name, const Item& item);

}  // namespace orlan::simulate
