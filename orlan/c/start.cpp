#include <memory>
#include <utility>
#include <vector>

#include "orlan/c/Host.hpp"
#include "orlan/c/Values.hpp"
#include "orlan/c/plugin.h"

namespace {

using namespace orlan::c;

/// The host's delegate for one start.
class Delegate final : public orlan::OrlanPluginDelegate {
 public:
  explicit Delegate(const orlan_plugin_delegate* given) : table_(tableFrom(given, "delegate")) {}
  void didAuthenticate(orlan::OrlanPlugin&, const std::string& device, const std::string& orlan) override {
    call(table_.did_authenticate, table_.context, lent(device), lent(orlan));
  }
  void didFailWith(orlan::OrlanPlugin&, const orlan::Error& error) override {
    hasFailed = true;
    const orlan_error out = lent(error);
    call(table_.did_fail, table_.context, &out);
  }

  bool hasFailed = false;

 private:
  const orlan_plugin_delegate table_;
};

/// What every start is given besides its credentials. All of it is looked at before anything changes.
struct Arguments {
  Arguments(int64_t environmentGiven, const orlan_string* tags, size_t count,
            const orlan_plugin_delegate* given)
      : environment(orlan::environmentFromBridged(environmentGiven)),
        segmentations(texts(tags, count, "segmentations")),
        delegate(std::make_shared<Delegate>(given)) {}

  orlan::Config::Environment environment;
  std::vector<std::string> segmentations;
  std::shared_ptr<Delegate> delegate;
};

/// The delegate takes the former one's place, unless the start is refused: that fails inside the call. The
/// host may have started anew from there.
template <class Start>
void start(Host& host, const Arguments& all, Start&& start) {
  const auto former = std::exchange(host.pluginDelegate, all.delegate);
  start();
  if (all.delegate->hasFailed && host.pluginDelegate == all.delegate) host.pluginDelegate = former;
}

}  // namespace

orlan_status orlan_start_with_api_key(orlan_string api_key, int64_t environment,
                                      const orlan_string* segmentations, size_t segmentation_count,
                                      const orlan_plugin_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    const std::string key(text(api_key, "api_key"));
    const Arguments all(environment, segmentations, segmentation_count, delegate);
    start(host, all, [&] { Host::plugin().start(key, all.environment, all.segmentations, all.delegate); });
  });
}

orlan_status orlan_start(int64_t environment, const orlan_string* segmentations, size_t segmentation_count,
                         const orlan_plugin_delegate* delegate) {
  return onMain(__func__, [&](Host& host) {
    const Arguments all(environment, segmentations, segmentation_count, delegate);
    start(host, all, [&] { Host::plugin().start(all.environment, all.segmentations, all.delegate); });
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
    const Arguments all(environment, segmentations, segmentation_count, delegate);
    start(host, all, [&] {
      Host::plugin().start(company, app, key, bundle, all.environment, all.segmentations,
                           include_legacy_api_key_header, all.delegate);
    });
  });
}

orlan_status orlan_forget_plugin_delegate(void) {
  return onMain(__func__, [](Host& host) { host.pluginDelegate.reset(); });
}
