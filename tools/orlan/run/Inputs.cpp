#include "tools/orlan/run/Inputs.hpp"

#include "orlan/base/text.hpp"
#include "orlan/campaigns/GeofenceResponse.hpp"
#include "phones/linux/PropertyList.hpp"
#include "phones/linux/disk.hpp"

namespace orlan::run {

namespace {

Error mistake(const std::string& path, const std::string& what) {
  return {"orlan run", 2, text::escapedControls(path + ": " + what)};
}

Result<std::string> readFile(const std::string& path) {
  auto bytes = linuxphone::disk::read(path);
  if (!bytes) return Unexpected(mistake(path, bytes.error().message()));
  if (bytes->empty()) return Unexpected(mistake(path, "the file is empty"));
  return std::move(bytes).value();
}

Result<std::string> readCampaigns(const std::string& path) {
  auto bytes = readFile(path);
  if (!bytes) return bytes;
  const auto answer = NewGeofenceResponse::decode(*bytes);
  if (!answer) return Unexpected(mistake(path, answer.error().description));
  return bytes;
}

}  // namespace

Result<Inputs> readInputs(const RunOptions& options) {
  Inputs inputs;
  auto track = linuxphone::readTrack(options.track);
  if (!track) return Unexpected(track.error());
  inputs.track = std::move(track).value();
  if (options.campaigns) {
    auto campaigns = readCampaigns(*options.campaigns);
    if (!campaigns) return Unexpected(campaigns.error());
    inputs.campaigns = std::move(campaigns).value();
  }
  if (options.config) {
    const auto content = linuxphone::readPropertyList(*options.config);
    if (!content) return Unexpected(content.error());
  }
  return inputs;
}

}  // namespace orlan::run
