#include "tools/orlan/backend/Verdict.hpp"

#include <fmt/format.h>

#include "tools/orlan/backend/BodyChecks.hpp"
#include "tools/orlan/backend/HeaderCheck.hpp"

namespace orlan::devbackend {
namespace {

void checkBody(Endpoint endpoint, const Request& request, Problems& problems) {
  switch (endpoint) {
    case Endpoint::registration:
      return checkDeviceRecord(request, problems);
    case Endpoint::segments:
      return checkSegments(request, problems);
    case Endpoint::activities:
      return checkActivityUpload(request, problems);
    case Endpoint::pluginActivity:
      return checkPluginActivity(request, problems);
    case Endpoint::surveyResponse:
      return checkSurveyResponse(request, problems);
    case Endpoint::geofenceCheck:
      return checkGeofenceQuestion(request, problems);
    case Endpoint::configuration:
      if (!request.body.empty()) problems.push_back("body: expected none");
      return;
  }
}

}  // namespace

Verdict judge(const Request& request) {
  Verdict verdict{.endpoint = endpointOf(request.target), .problems = {}};
  if (!verdict.endpoint) {
    verdict.status = 404;
    verdict.problems.push_back(
        fmt::format("path: no such endpoint {}; there are {}", excerpt(request.target), knownPaths()));
    return verdict;
  }
  const auto endpoint = *verdict.endpoint;
  if (request.method != methodOf(endpoint)) {
    verdict.status = 405;
    verdict.problems.push_back(
        fmt::format("method: expected {}, found {}", methodOf(endpoint), excerpt(request.method)));
    return verdict;
  }
  checkHeaders(request, expectedHeaders(endpoint, request), verdict.problems);
  checkKeys(endpoint, request, verdict.problems);
  if (request.isWhole) {
    checkBody(endpoint, request, verdict.problems);
  } else {
    verdict.problems.push_back("body: too large, or broken off");
  }
  if (!verdict.problems.empty()) verdict.status = hasKey(endpoint, request) ? 400 : 401;
  return verdict;
}

}  // namespace orlan::devbackend
