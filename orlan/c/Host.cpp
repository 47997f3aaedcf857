#include "orlan/c/Host.hpp"

#include <mutex>
#include <utility>

#include "orlan/c/Values.hpp"

namespace orlan::c {
namespace {

struct Installed {
  std::mutex mutex;
  std::shared_ptr<Host> host;
};

Installed& installed() {
  static auto* const one = new Installed;  // never destroyed: calls may come while the process ends
  return *one;
}

std::shared_ptr<Host> replaceHost(std::shared_ptr<Host> host) {
  const std::lock_guard lock(installed().mutex);
  return std::exchange(installed().host, std::move(host));
}

Config::Environment environmentOf(const orlan_base_url& base) {
  if (base.environment < ORLAN_DEVELOPMENT || base.environment > ORLAN_NIGHTLY) {
    throw Misuse{ORLAN_INVALID_ARGUMENT, "base_urls: there is no such environment"};
  }
  return environmentFromBridged(base.environment);
}

void set(BaseUrls& urls, const orlan_base_url& base) {
  const auto environment = environmentOf(base);
  std::string url(text(base.url, "base_urls.url"));
  Result<void> taken;
  if (base.family == ORLAN_PLATFORM_API) {
    taken = urls.setPlatform(environment, std::move(url));
  } else if (base.family == ORLAN_TRANSMISSION_LAYER) {
    taken = urls.setTransmission(environment, std::move(url));
  } else {
    throw Misuse{ORLAN_INVALID_ARGUMENT, "base_urls: there is no such family"};
  }
  if (!taken) throw Misuse{ORLAN_INVALID_ARGUMENT, "base_urls: " + taken.error().description};
}

RuntimeOptions optionsFrom(const orlan_options* given) {
  const auto table = tableFrom(given, "options");
  RuntimeOptions options;
  if (table.base_url_count > 0) needed(table.base_urls, "base_urls");
  for (std::size_t i = 0; i < table.base_url_count; ++i) set(options.urls, table.base_urls[i]);
  return options;
}

}  // namespace

std::shared_ptr<Host> installedHost() {
  const std::lock_guard lock(installed().mutex);
  return installed().host;
}

std::shared_ptr<Host> hostOnAnyThread() {
  InsideTable::refuse();
  auto host = installedHost();
  if (!host) throw Misuse{ORLAN_NOT_INSTALLED, "orlan_install comes first"};
  return host;
}

std::shared_ptr<Host> hostOnMain() {
  auto host = hostOnAnyThread();
  assertMain(*host->phone);
  return host;
}

}  // namespace orlan::c

using namespace orlan::c;

orlan_status orlan_install(orlan_phone* phone, const orlan_options* options) {
  const bool nested = Inside::any();
  return guarded(__func__, [&] {
    auto host = std::make_shared<Host>(phoneOf(phone));
    assertMain(*host->phone);
    if (nested) throw Misuse{ORLAN_BUSY, "inside a callback"};
    if (installedHost()) throw Misuse{ORLAN_BUSY, "a phone is installed already"};
    const auto done = orlan::Runtime::install(host->platform, optionsFrom(options));
    if (!done) throw Misuse{ORLAN_BUSY, done.error().description};
    replaceHost(std::move(host));
  });
}

orlan_status orlan_uninstall(void) {
  const bool nested = Inside::any();
  return guarded(__func__, [&] {
    static_cast<void>(hostOnMain());
    if (nested) throw Misuse{ORLAN_BUSY, "inside a callback"};
    const auto ending = replaceHost(nullptr);  // what is called meanwhile finds nothing
    orlan::Runtime::uninstall();
  });
}
