#include "tools/orlan/run/RunSession.hpp"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <system_error>

#include "orlan/sdk/Runtime.hpp"
#include "phones/linux/LinuxPhone.hpp"
#include "phones/linux/directories.hpp"
#include "tools/orlan/backend/DevBackend.hpp"
#include "tools/orlan/output/OutputFile.hpp"
#include "tools/orlan/report/Report.hpp"
#include "tools/orlan/report/ReportCollector.hpp"
#include "tools/orlan/run/Addresses.hpp"
#include "tools/orlan/run/Inputs.hpp"
#include "tools/orlan/run/Narrator.hpp"
#include "tools/orlan/run/ReplayStart.hpp"
#include "tools/orlan/run/TerminalHost.hpp"
#include "tools/orlan/run/complain.hpp"

namespace orlan::run {

namespace {

Voice voiceFor(const RunOptions& options) {
  const bool terminal = isatty(STDOUT_FILENO) == 1;
  return {options.json, options.showLog, terminal && !options.json,
          terminal && !options.json && (options.speed > 1.0 || isatty(STDIN_FILENO) == 1)};
}

linuxphone::PhoneConfig phoneConfig(const RunOptions& options, const linuxphone::Track& track,
                                    TimePoint begin) {
  linuxphone::PhoneConfig config;
  config.home = options.home.value_or("");
  if (options.background) config.state = ApplicationState::background;
  config.bundle.identifier = options.bundleIdentifier;
  config.bundle.info = {{"CFBundleName", "orlan run"}, {"CFBundleShortVersionString", "1.0"}};
  if (options.config) config.bundle.propertyListFiles.emplace("OrlanConfig", *options.config);
  config.location.position = track.fixes.front();
  config.wallClock = begin;
  config.console = {};  // the narrator prints what of it is wanted
  config.trouble = [](const std::string& line) { complain(line); };
  return config;
}

/// The development backend of a run that names no other; what it finds wrong with our requests is our fault,
/// so it is said loudly.
Result<std::unique_ptr<devbackend::DevBackend>> startOwnBackend(const Inputs& inputs) {
  devbackend::DevBackendConfig config;
  if (inputs.campaigns) config.answers.emplace(devbackend::Endpoint::geofenceCheck, *inputs.campaigns);
  config.observer = [](const devbackend::Exchange& exchange) {
    for (const auto& line : devbackend::complaints(exchange)) complain("backend: " + line);
  };
  auto backend = std::make_unique<devbackend::DevBackend>(std::move(config));
  if (auto port = backend->start(); !port) return Unexpected(port.error());
  return backend;
}

std::string fileName(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

bool writeReport(output::OutputFile& file, const report::ReportData& data) {
  file.write(report::renderReport(data));
  const auto written = file.finish();
  return written || complain(written.error().description) == 0;
}

int play(const RunOptions& options, Inputs inputs, const BaseUrls& urls, const std::string& where,
         std::optional<output::OutputFile> report) {
  const ReplayStart replayStart(linuxphone::directories(options.home.value_or(""), "orlan").data);
  const TimePoint begin = replayStart.choose(inputs.track.fixes.front().timestamp);
  linuxphone::LinuxPhone phone(phoneConfig(options, inputs.track, begin));
  const auto offset = phone.clock().offsetFromUtc(begin);
  Narrator narrator(voiceFor(options), begin, offset);
  report::ReportCollector collector(
      fileName(options.track), begin, offset, [&phone, begin] { return phone.clock().now() - begin; },
      &narrator);
  phone.observe(collector);

  bool started = false;
  std::string logFile;
  {
    Runtime runtime(phone.platform(), {urls});
    const Runtime::Scope scope(runtime);
    collector.watch(runtime.services(), phone.application().state());
    collector.note("backend", where);
    const auto host =
        std::make_shared<TerminalHost>(options, std::move(inputs), phone, runtime, collector, narrator);
    started = host->run();
    logFile = runtime.services().logger.logFileURL();
  }
  replayStart.keep(phone.clock().now());

  const auto data = collector.data();
  std::vector<std::pair<std::string, std::string>> files{{"log", logFile}};
  bool reported = true;
  if (report) {
    reported = writeReport(*report, data);
    if (reported) files.emplace_back("report", *options.report);
  }
  narrator.summary(data, files);
  if (const int why = narrator.trouble(); why != 0 && why != EPIPE) {
    return complain("cannot write standard output: " + std::generic_category().message(why));
  }
  return started && reported ? 0 : 1;
}

}  // namespace

int runSession(const RunOptions& options) {
  auto inputs = readInputs(options);
  if (!inputs) return complain(inputs.error().description, 2);
  auto report = output::OutputFile::openIfNamed(options.report);  // before the walk, which may take hours
  if (!report) return complain(report.error().description, 2);
  std::unique_ptr<devbackend::DevBackend> own;
  if (!options.hasBackend()) {
    auto started = startOwnBackend(*inputs);
    if (!started) return complain(started.error().description);
    own = std::move(started).value();
  }
  const auto urls = addresses(options, own ? own->url() : "");
  if (!urls) return complain(urls.error().description, 2);
  const std::string where =
      own ? "of our own for development, at " + own->url() : urls->platformUrl(options.environment);
  return play(options, std::move(inputs).value(), *urls, where, std::move(report).value());
}

}  // namespace orlan::run
