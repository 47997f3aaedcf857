#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "orlan/campaigns/CampaignData.hpp"
#include "orlan/logging/Logger.hpp"
#include "phones/simulated/Recorder.hpp"
#include "phones/simulated/SimulatedPhone.hpp"

namespace orlan::test {

/// A logger on a simulated phone, whose lines are remembered.
class WithLogger : public ::testing::Test {
 protected:
  WithLogger() { phone.observe(seen); }

  sim::World world;
  sim::SimulatedPhone phone{world};
  sim::Recorder seen;
  Logger logger{phone.platform().clock, phone.platform().console, phone.platform().files,
                phone.platform().queues};
};

inline CampaignPolygon campaignPolygon(std::int64_t id, std::vector<Coordinate> ring) {
  return {Polygon(std::move(ring)), CampaignData::Campaign{{"", id}, {id + 1000, {}}, {}}};
}

}  // namespace orlan::test
