#include <utility>

#include "orlan/c/Delegates.hpp"
#include "orlan/c/Host.hpp"
#include "orlan/c/Values.hpp"
#include "orlan/c/plugin.h"

namespace {

using namespace orlan::c;

struct StartArguments {
  orlan::Config::Environment environment;
  std::vector<std::string> segmentations;
  std::shared_ptr<orlan::OrlanPluginDelegate> delegate;
};

/// Everything is looked at before anything changes; then the delegate takes the former one's place.
StartArguments arguments(Host& host, int64_t environment, const orlan_string* segmentations,
                         std::size_t count, const orlan_plugin_delegate* delegate) {
  StartArguments all{orlan::environmentFromBridged(environment), texts(segmentations, count, "segmentations"),
                     delegateFrom(delegate)};
  host.pluginDelegate = all.delegate;
  return all;
}

}  // namespace

orlan_status orlan_start_with_api_key(orlan_string api_key, int64_t environment,
                                      const orlan_string* segmentations, size_t segmentation_count,
                                      const orlan_plugin_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    const std::string key(text(api_key, "api_key"));
    const auto all = arguments(host, environment, segmentations, segmentation_count, delegate);
    Host::plugin().start(key, all.environment, all.segmentations, all.delegate);
  });
}

orlan_status orlan_start(int64_t environment, const orlan_string* segmentations, size_t segmentation_count,
                         const orlan_plugin_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    const auto all = arguments(host, environment, segmentations, segmentation_count, delegate);
    Host::plugin().start(all.environment, all.segmentations, all.delegate);
  });
}

orlan_status orlan_start_with_app_credentials(orlan_string company_api_key, orlan_string app_id,
                                              orlan_string app_api_key, orlan_string bundle_id,
                                              int64_t environment, const orlan_string* segmentations,
                                              size_t segmentation_count, bool include_legacy_api_key_header,
                                              const orlan_plugin_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    const std::string company(text(company_api_key, "company_api_key"));
    const std::string app(text(app_id, "app_id"));
    const std::string key(text(app_api_key, "app_api_key"));
    const std::string bundle(text(bundle_id, "bundle_id"));
    const auto all = arguments(host, environment, segmentations, segmentation_count, delegate);
    Host::plugin().start(company, app, key, bundle, all.environment, all.segmentations,
                         include_legacy_api_key_header, all.delegate);
  });
}

orlan_status orlan_forget_plugin_delegate(void) {
  return onMain(__func__, [](Host& host) { host.pluginDelegate.reset(); });
}
