#include "tools/orlan/backend/BackendCommand.hpp"

#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <string>
#include <vector>

#include "orlan/base/json.hpp"
#include "orlan/base/text.hpp"
#include "tools/orlan/backend/DevBackend.hpp"
#include "tools/orlan/backend/Files.hpp"

namespace orlan::devbackend {
namespace {

constexpr char description[] =
    "A development backend: every endpoint, on the loopback, strict about what it is sent";
constexpr char footer[] = R"(Faults strike at one endpoint, all requests or the first COUNT of them (*COUNT):
  --fault /check-geofence=status:500*3     this status
  --fault /check-geofence=delay:2.5        so many seconds later
  --fault /get-config=cut                  the connection ends without an answer
  --fault /get-config=cut:40               … after so many bytes of it
  --fault /get-config=body:@wrong.json     this body (a text, or the content of a file)
  --fault /get-config=raw:SMTP             these bytes instead of an HTTP answer
Transmission layer paths also answer behind /api (staging) and /api/ (nightly).)";

/// What stood on the command line, not yet looked at.
struct Options {
  int port = 0;
  std::string campaigns;
  std::vector<std::string> answers;
  std::vector<std::string> faults;
  std::string record;
  bool push = false;
  bool lenient = false;
  bool json = false;
  bool quiet = false;
};

Result<void> addAnswer(const std::string& text, DevBackendConfig& config) {
  std::string_view file = text;
  const auto endpoint = takeEndpoint(file);
  if (!endpoint) {
    return Unexpected(Error{"orlan backend", -1,
                            fmt::format("answer {}: {}", excerpt(text), endpoint.error().description)});
  }
  auto content = readFile(std::string(file));
  if (!content) return Unexpected(content.error());
  config.answers[*endpoint] = std::move(content).value();
  return {};
}

Result<DevBackendConfig> configOf(const Options& options) {
  DevBackendConfig config{.port = options.port, .push = options.push, .lenient = options.lenient};
  if (!options.campaigns.empty()) {
    auto campaigns = readCampaigns(options.campaigns);
    if (!campaigns) return Unexpected(campaigns.error());
    config.answers[Endpoint::geofenceCheck] = std::move(campaigns).value();
  }
  for (const auto& answer : options.answers) {
    if (auto added = addAnswer(answer, config); !added) return Unexpected(added.error());
  }
  for (const auto& text : options.faults) {
    auto fault = parseFault(text);
    if (!fault) return Unexpected(fault.error());
    config.faults.push_back(std::move(fault).value());
  }
  if (!options.record.empty()) config.recordFile = options.record;
  return config;
}

/// A whole line at once, so that those of several threads never mix.
void print(std::FILE* out, std::string line) {
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), out);
  std::fflush(out);
}

void announce(const DevBackend& backend, bool asJson) {
  if (asJson) return print(stdout, json::print(json::Object{{"event", "listening"}, {"url", backend.url()}}));
  print(stdout,
        fmt::format("orlan backend listens on {0}\n"
                    "  platform      {0}\n"
                    "  transmission  {0} (development, production), {0}/api (staging), {0}/api/ (nightly)\n"
                    "Ctrl-C ends it.",
                    backend.url()));
}

void conclude(const DevBackend& backend, bool asJson) {
  json::Array list;
  for (const auto& tally : backend.summary()) {
    const auto path = tally.path.empty() ? "(no endpoint)" : tally.path;
    const auto status = tally.status ? fmt::format("{}", *tally.status) : "no answer";
    if (!asJson) print(stdout, fmt::format("{:>6} × {} {}", tally.count, path, status));
    const auto code = tally.status ? json::Value(*tally.status) : json::Value();
    list.push_back(json::Object{{"path", tally.path}, {"status", code}, {"count", tally.count}});
  }
  if (asJson) print(stdout, json::print(json::Object{{"event", "summary"}, {"requests", std::move(list)}}));
}

void tell(const Exchange& exchange, const Options& options) {
  if (options.json) {
    print(stdout, recordLine(exchange));
  } else if (!options.quiet) {
    print(stdout, describe(exchange));
  }
  for (auto& line : complaints(exchange)) print(stderr, std::move(line));
}

int refuse(const Error& error, int status) {
  print(stderr, fmt::format("orlan backend: {}", text::escapedControls(error.description)));
  return status;
}

int runBackend(const Options& options) {
  auto config = configOf(options);
  if (!config) return refuse(config.error(), 2);
  config->observer = [&options](const Exchange& exchange) { tell(exchange, options); };
  ::sigset_t ending;  // held back from the backend's threads, too
  ::sigemptyset(&ending);
  ::sigaddset(&ending, SIGINT);
  ::sigaddset(&ending, SIGTERM);
  ::pthread_sigmask(SIG_BLOCK, &ending, nullptr);
  DevBackend backend(std::move(config).value());
  if (auto port = backend.start(); !port) return refuse(port.error(), 1);
  announce(backend, options.json);
  int signal = 0;
  ::sigwait(&ending, &signal);
  backend.stop();
  if (options.json || !options.quiet) conclude(backend, options.json);
  return 0;
}

}  // namespace

void addBackendCommand(CLI::App& program, int& exitStatus) {
  auto* command = program.add_subcommand("backend", description);
  command->footer(footer);
  auto options = std::make_shared<Options>();
  command->add_option("--port", options->port, "Port to listen on (default: a free one, which is printed)")
      ->check(CLI::Range(0, 65535));
  command
      ->add_option("--campaigns", options->campaigns,
                   "Answer to /check-geofence (default: made up around the caller)")
      ->type_name("FILE");
  command->add_option("--answer", options->answers, "Body of the answer at an endpoint; may be repeated")
      ->type_name("PATH=FILE")
      ->allow_extra_args(false);
  command->add_option("--fault", options->faults, "Something that goes wrong, see below; may be repeated")
      ->type_name("PATH=FAULT")
      ->allow_extra_args(false);
  command->add_option("--record", options->record, "Write what arrives to this file, one JSON object a line")
      ->type_name("FILE");
  command->add_flag("--push", options->push, "Add a push campaign to the campaigns that are made up");
  command->add_flag("--lenient", options->lenient,
                    "Answer as if nothing were wrong; problems are still told");
  command->add_flag("--json", options->json, "Tell everything as JSON, one object a line");
  command->add_flag("--quiet", options->quiet, "Print problems only");
  command->callback([options, &exitStatus] { exitStatus = runBackend(*options); });
}

}  // namespace orlan::devbackend
