#include "tools/orlan/run/Inputs.hpp"

#include "phones/linux/PropertyList.hpp"
#include "tools/orlan/backend/Files.hpp"

namespace orlan::run {

Result<Inputs> readInputs(const RunOptions& options) {
  Inputs inputs;
  auto track = linuxphone::readTrack(options.track);
  if (!track) return Unexpected(track.error());
  inputs.track = std::move(track).value();
  if (options.campaigns) {
    auto campaigns = devbackend::readCampaigns(*options.campaigns);
    if (!campaigns) return Unexpected(campaigns.error());
    inputs.campaigns = std::move(campaigns).value();
  }
  if (options.config) {
    const auto content = linuxphone::readPropertyList(*options.config);
    if (!content) return Unexpected(content.error());
  }
  if (options.script) {
    auto script = readScript(*options.script);
    if (!script) return Unexpected(script.error());
    inputs.script = std::move(script).value();
  }
  return inputs;
}

}  // namespace orlan::run
