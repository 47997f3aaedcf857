#pragma once

#include <span>
#include <string_view>

#include "tools/orlan/simulate/Files.hpp"
#include "tools/orlan/simulate/Item.hpp"
#include "tools/orlan/simulate/Steps.hpp"

namespace orlan::simulate {

/// What a step's "do" may say, and how the step is read: an object, its "at" and "do" checked already.
struct StepKind {
  std::string_view name;
  Action (*read)(const Item& step, const Files& files);  // null: not available yet
};

/// Every step that the format knows.
[[nodiscard]] std::span<const StepKind> stepKinds();

// Host calls, which stand in a file of their own.
[[nodiscard]] Action readStart(const Item& step, const Files& files);
[[nodiscard]] Action readStartBridged(const Item& step, const Files& files);
[[nodiscard]] Action readGetNotificationStats(const Item& step, const Files& files);
[[nodiscard]] Action readResetNotificationStats(const Item& step, const Files& files);
[[nodiscard]] Action readClearCooldown(const Item& step, const Files& files);

}  // namespace orlan::simulate
