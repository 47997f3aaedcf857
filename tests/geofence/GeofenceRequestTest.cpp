#include <gtest/gtest.h>

#include "orlan/geofence/GeofenceRequest.hpp"

namespace orlan {
namespace {

using namespace std::chrono_literals;

const TransmissionAppCredentials appScoped{.companyID = std::nullopt,
                                           .companyApiKey = "company",
                                           .appID = "app",
                                           .appName = std::nullopt,
                                           .appApiKey = "secret",
                                           .iosBundleID = "com.example.host"};

TEST(GeofenceRequest, AsksWithAppCredentials) {
  const auto request = GeofenceRequest::of({.baseUrl = "https://tl.example",
                                            .position = {51.0, -0.125},
                                            .segments = {"new", "très loyal"},
                                            .credentials = appScoped,
                                            .reason = "start"});
  EXPECT_EQ(request.http.method, "POST");
  EXPECT_EQ(request.http.url, "https://tl.example/check-geofence");
  EXPECT_EQ(request.http.timeout, 60s);
  EXPECT_EQ(request.http.headers, (std::vector<HttpHeader>{{"Content-Type", "application/json"},
                                                           {"Accept", "application/json"},
                                                           {"x-company-api-key", "company"},
                                                           {"x-app-id", "app"},
                                                           {"x-app-api-key", "secret"},
                                                           {"x-app-identifier", "com.example.host"},
                                                           {"x-platform", "ios"},
                                                           {"x-api-key", "company"}}));
  EXPECT_EQ(request.http.body,
            R"({"latitude":"51.0","longitude":"-0.125","segmentationTags":"new,très loyal","distance":10})");
  EXPECT_EQ(request.logLine,
            "🌐 /check-geofence (start) [app-scoped auth] → 51.0,-0.125 | segments: new,très loyal");
}

TEST(GeofenceRequest, AsksWithAnIncompleteSetTheOldWay) {
  auto credentials = appScoped;
  credentials.appApiKey.clear();
  const auto request = GeofenceRequest::of({.baseUrl = "https://tl.example/api/",
                                            .position = {1e-05, 100000.0},
                                            .segments = {},
                                            .credentials = credentials,
                                            .reason = "timer"});
  EXPECT_EQ(request.http.url, "https://tl.example/api//check-geofence") << "put together as they are";
  EXPECT_EQ(request.logLine, "🌐 /check-geofence (timer) [legacy auth] → 1e-05,100000.0 | segments: ");
}

}  // namespace
}  // namespace orlan
