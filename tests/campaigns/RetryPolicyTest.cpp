#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "orlan/campaigns/ReliabilityStatus.hpp"
#include "orlan/campaigns/RetryPolicy.hpp"

namespace orlan::reliability {
namespace {

using namespace std::chrono_literals;

TEST(RetryPolicy, TakesAnyCountThatWasStored) {
  using Limits = std::numeric_limits<std::int64_t>;
  EXPECT_EQ(afterFailure(Limits::max()), std::nullopt);
  EXPECT_EQ(afterFailure(Limits::min()), (Retry{Limits::min() + 1, 0s}));
}

TEST(RetryPolicy, TakesTheUrgentThenTheOld) {
  const auto event = [](const char* id, EventPriority priority, int second) {
    return PendingEvent{id, "", {}, TimePoint(std::chrono::seconds(second)), 0, priority};
  };
  std::vector<PendingEvent> events{event("low", EventPriority::low, 1),
                                   event("high, late", EventPriority::high, 9),
                                   event("high, early", EventPriority::high, 2),
                                   event("normal", EventPriority::normal, 0),
                                   event("critical", EventPriority::critical, 99),
                                   event("high, early, second", EventPriority::high, 2)};
  sortForProcessing(events);
  std::vector<std::string> order;
  for (const auto& each : events) order.push_back(each.id);
  EXPECT_EQ(order, (std::vector<std::string>{"critical", "high, early", "high, early, second", "high, late",
                                             "normal", "low"}));
}

TEST(ReliabilityStatus, FollowsTheMeanAccuracy) {
  using S = ReliabilityStatus;
  struct Row {
    double mean;
    S status;
  };
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const Row row : {Row{0.0, S::optimal},
                        {9.99, S::optimal},
                        {10.0, S::degraded},
                        {49.9, S::degraded},
                        {50.0, S::poor},
                        {99.9, S::poor},
                        {100.0, S::critical},
                        {-0.1, S::critical},
                        {nan, S::critical}}) {
    EXPECT_EQ(statusForMeanAccuracy(row.mean), row.status) << row.mean;
  }
}

TEST(AccuracyHistory, HoldsTheLastFifty) {
  AccuracyHistory history;
  EXPECT_EQ(history.add(1000.0), 1000.0);
  EXPECT_EQ(history.add(500.0), 750.0);
  double mean = 0.0;
  for (int i = 0; i < 49; ++i) mean = history.add(10.0);
  EXPECT_EQ(mean, (500.0 + 49 * 10.0) / 50.0);  // the first is forgotten with the 51st
  EXPECT_EQ(history.add(10.0), 10.0);
}

TEST(ReliabilityEvents, KeepValuesAsTexts) {
  const json::Object data{
      {"text", "as it is"}, {"integer", 42}, {"double", 1000000.0}, {"list", json::Array{1, "a"}}};
  EXPECT_EQ(texts(data),
            (std::map<std::string, std::string>{
                {"text", "as it is"}, {"integer", "42"}, {"double", "1000000.0"}, {"list", "[1, \"a\"]"}}));
}

}  // namespace
}  // namespace orlan::reliability
