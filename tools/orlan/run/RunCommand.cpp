#include "tools/orlan/run/RunCommand.hpp"

#include <CLI/CLI.hpp>
#include <memory>

#include "tools/orlan/run/RunOptions.hpp"
#include "tools/orlan/run/RunSession.hpp"

namespace orlan::run {

namespace {

constexpr const char* description =
    R"(Be a host application in a terminal: start the library on the Linux phone,
replay a recorded track and show what the person holding the phone would see.

Without --backend a development backend is started on a free loopback port. The replay keeps the
times of the track; cooldowns and timers follow them at any --speed. State is kept below --home, so
that a second run continues where the first one ended. Ctrl-C ends the run and keeps the state.)";

constexpr const char* footer =
    R"(In a terminal the person holding the phone obeys your keys: b sends the application to the
background, f brings it to the front, s stands still (time runs as in the world), w walks on, q quits.
A number and Enter tap the notification of that number: its details are shown, and the answers to its
questions are sent (Escape leaves them unanswered); l opens its link, m its media.

A script does it by itself: a scenario with nothing but its steps (and a name), "at" in seconds since
the walk began, of those that a person can take or a host for them: application, tap,
locationAuthorization, notificationAuthorization, submitSurveyResponse, trackSurveyEvent,
trackMediaView, trackCTAEngagement. The run goes on until walk and script are over:
  {"steps": [{"at": 750, "do": "application", "to": "background"},
             {"at": 3720, "do": "tap", "delivered": 0}]}

Examples:
  $ orlan run --track ride.gpx --speed 500 --report ride.html
  $ orlan run --track walk.gpx --background --speed 60
  $ orlan run --track walk.nmea --campaigns answer.json --config OrlanConfig.plist --json
  $ orlan run --track walk.gpx --backend https://api.example.com --transmission-url https://tl.example.com

Exit status: 0 the walk was replayed (or ended with Ctrl-C, or because nobody read on); 2 a file or an
option is not usable; 1 the library could not start, or anything else.)";

const std::map<std::string, Config::Environment>& environments() {
  static const std::map<std::string, Config::Environment> byName = [] {
    std::map<std::string, Config::Environment> names;
    for (const auto environment : allCases<Config::Environment>()) {
      names.emplace(rawValue(environment), environment);
    }
    return names;
  }();
  return byName;
}

}  // namespace

void addRunCommand(CLI::App& app, int& exitCode) {
  auto options = std::make_shared<RunOptions>();
  CLI::App* command = app.add_subcommand("run", description);
  command->footer(footer);
  command->add_option("--track", options->track, "GPX or NMEA file to replay")->required()->type_name("FILE");
  command
      ->add_option("--campaigns", options->campaigns,
                   "what the development backend answers to /check-geofence")
      ->type_name("FILE");
  command->add_option("--backend", options->backend, "base address of a running backend, for both families")
      ->type_name("URL")
      ->excludes("--campaigns");
  command->add_option("--platform-url", options->platformUrl, "base address of the platform API alone")
      ->type_name("URL");
  command
      ->add_option("--transmission-url", options->transmissionUrl,
                   "base address of the transmission layer alone")
      ->type_name("URL");
  command->add_option("--config", options->config, "credentials: OrlanConfig.plist, XML or binary")
      ->type_name("FILE");
  command->add_option("--api-key", options->apiKey, "API key when there is no --config")->type_name("KEY");
  command->add_option("--env", options->environment, "development, nightly, staging (default) or production")
      ->transform(CLI::CheckedTransformer(environments()))
      ->type_name("NAME");
  command->add_option("--segments", options->segments, "segmentation tags, separated by commas")
      ->delimiter(',')
      ->type_name("TAGS");
  command->add_option("--bundle", options->bundleIdentifier, "bundle identifier of this host")
      ->capture_default_str()
      ->type_name("ID");
  command->add_option("--home", options->home, "keep state, cache and log below this directory")
      ->type_name("DIR");
  command->add_option("--speed", options->speed, "times as fast as it was recorded")
      ->capture_default_str()
      ->check(CLI::Range(0.01, 100000.0))
      ->type_name("N");
  command->add_flag(
      "--background", options->background,
      "launch the application in the background, where circles are watched instead of polygons");
  command
      ->add_option("--script", options->script,
                   "what the person does on the way, as steps of a scenario (see below)")
      ->type_name("FILE.json");
  command->add_option("--report", options->report, "write a self-contained HTML page")
      ->type_name("FILE.html");
  command->add_flag("--json", options->json, "one JSON object a line instead of text for a person");
  command->add_flag("--log", options->showLog, "print the library's own log lines, too")->excludes("--json");
  command->callback([options, &exitCode] { exitCode = runSession(*options); });
}

}  // namespace orlan::run
